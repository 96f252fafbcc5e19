#include <bench/bench.h>
#include <bench/window.h>

namespace {

using namespace kx::test;

TEST(PictureTest, ShowsTheWindowAndItsChildren) {
    RecordingParent parent{SIZE{200, 100}};
    const COLORREF red = RGB(255, 0, 0);
    const HBRUSH brush = CreateSolidBrush(red);
    parent.Answer(WM_CTLCOLOREDIT, reinterpret_cast<LRESULT>(brush));
    const HWND block = AddChild(parent.Window(), L"EDIT", 1, {60, 50, 80, 55});  // a STATIC prints astray
    BringToFront(parent.Window());
    for (const Picture& picture : {Picture::Printed(block), Picture::OnScreen(block)})
        EXPECT_EQ(picture.Count(red), 100);
    for (const Picture& picture : {Picture::Printed(parent.Window()), Picture::OnScreen(parent.Window())}) {
        EXPECT_EQ(picture.Width(), 200);
        EXPECT_EQ(picture.Height(), 100);
        EXPECT_EQ(picture.Pixel(60, 50), red);
        EXPECT_EQ(picture.Pixel(79, 54), red);
        EXPECT_EQ(picture.Pixel(59, 50), GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(picture.Pixel(200, 0), CLR_INVALID);
        EXPECT_EQ(picture.Count(red), 100);
        EXPECT_EQ(picture.Differences(Picture::Printed(block)), 200 * 100);
        EXPECT_TRUE(picture == Picture::Printed(parent.Window()));
    }
    ShowWindow(block, SW_HIDE);
    EXPECT_EQ(Picture::Printed(parent.Window()).Differences(Picture::OnScreen(parent.Window())), 0);
    EXPECT_EQ(Picture::Printed(parent.Window()).Count(red), 0);
    DeleteObject(brush);
}

}  // namespace
