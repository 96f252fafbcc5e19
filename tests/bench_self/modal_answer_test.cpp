#include <bench/bench.h>

#include <gtest/gtest-spi.h>

namespace {

using namespace kx::test;

TEST(ModalAnswer, AnswersADialogThatAnAnswerOpens) {
    RecordingParent parent;
    int inner = 0;
    const ModalAnswer answer([&](HWND dialog) {
        if (inner == 0) {
            inner = -1;
            inner = MessageBoxW(dialog, L"inner", L"", MB_OKCANCEL);
            Pump();  // the outer dialog has been activated again
            EXPECT_TRUE(IsWindowVisible(dialog));
        }
        PressButton(dialog, IDCANCEL);
    });
    EXPECT_EQ(MessageBoxW(parent.Window(), L"outer", L"", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(inner, IDCANCEL);
    ASSERT_EQ(answer.Count(), 2u) << "an outer dialog that is activated again is not a new one";
    EXPECT_EQ(answer.Dialogs()[0].TextOf(0xFFFF), L"outer");
    EXPECT_EQ(answer.Dialogs()[1].TextOf(0xFFFF), L"inner");
}

TEST(ModalAnswer, CancelsWhatAnAnswerLeavesOpen) {
    const ModalAnswer answer([](HWND) {});
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(MessageBoxW(nullptr, L"Anybody?", L"Question", MB_OKCANCEL), IDCANCEL),
                            "still open");
    EXPECT_EQ(answer.Dialogs()[0].title, L"Question");
}

}  // namespace
