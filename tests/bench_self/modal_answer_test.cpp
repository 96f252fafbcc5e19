#include <bench/bench.h>

#include <gtest/gtest-spi.h>

namespace {

using namespace kx::test;

TEST(ModalAnswer, CancelsWhatAnAnswerLeavesOpen) {
    const ModalAnswer answer([](HWND) {});
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(MessageBoxW(nullptr, L"Anybody?", L"Question", MB_OKCANCEL), IDCANCEL),
                            "still open");
    EXPECT_EQ(answer.Dialogs()[0].title, L"Question");
}

}  // namespace
