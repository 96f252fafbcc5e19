#include <bench/bench.h>

#include <gtest/gtest-spi.h>

namespace {

using namespace kx::test;

int Ask(const wchar_t* text, UINT type = MB_YESNO) { return MessageBoxW(nullptr, text, L"Question", type); }

TEST(ModalAnswer, PressesAButtonAndKeepsTheTexts) {
    const ModalAnswer answer(IDNO);
    EXPECT_EQ(Ask(L"Delete?"), IDNO);
    ASSERT_EQ(answer.Count(), 1u);
    EXPECT_EQ(answer.Dialogs()[0].title, L"Question");
    EXPECT_EQ(answer.Dialogs()[0].TextOf(0xFFFF), L"Delete?");
}

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
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(Ask(L"Anybody?", MB_OKCANCEL), IDCANCEL), "still open");
}

}  // namespace
