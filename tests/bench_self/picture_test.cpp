#include <bench/bench.h>
#include <bench/window.h>

namespace {

using namespace kx::test;

// Two pictures of nothing would be the same.
TEST(PictureTest, ShowsTheWindowAndItsChildren) {
    RecordingParent parent{SIZE{200, 100}};
    const COLORREF white = RGB(255, 255, 255);
    parent.Answer(WM_CTLCOLOREDIT, reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH)));
    const HWND block = AddChild(parent.Window(), L"EDIT", 1, {60, 50, 80, 55});  // a STATIC prints astray
    BringToFront(parent.Window());
    const Picture shown = Picture::OnScreen(parent.Window());
    ShowWindow(block, SW_HIDE);
    const Picture hidden = Picture::OnScreen(parent.Window());
    EXPECT_EQ(shown.Width() * shown.Height(), 200 * 100);
    EXPECT_TRUE(shown.Count(white) == 100 && shown.Pixel(60, 50) == white && shown.Pixel(79, 54) == white);
    EXPECT_EQ(shown.Differences(hidden), 100);
    EXPECT_EQ(shown.Differences(Picture::Printed(block)), 200 * 100);
}

}  // namespace
