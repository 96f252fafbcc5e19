#include <bench/bench.h>

namespace {

using namespace kx::test;

// A window with a red block at 10, 10 of 20 x 5, drawn for WM_PAINT and WM_PRINTCLIENT alike.
LRESULT CALLBACK Draw(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto draw = [](HDC dc) {
        const RECT block{10, 10, 30, 15};
        SetDCBrushColor(dc, RGB(255, 0, 0));
        FillRect(dc, &block, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    };
    if (message == WM_PRINTCLIENT) {
        draw(reinterpret_cast<HDC>(wParam));
        return 0;
    }
    if (message == WM_PAINT) {
        PAINTSTRUCT paint;
        draw(BeginPaint(window, &paint));
        EndPaint(window, &paint);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class PictureTest : public testing::Test {
protected:
    PictureTest() {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Draw;
        windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"KxPictureTest";
        RegisterClassW(&windowClass);
        block = CreateWindowW(L"KxPictureTest", L"", WS_CHILD | WS_VISIBLE, 50, 40, 60, 30, parent.Window(), nullptr,
                              windowClass.hInstance, nullptr);
        BringToFront(parent.Window());
    }

    RecordingParent parent{SIZE{200, 100}};
    HWND block = nullptr;
};

TEST_F(PictureTest, ShowsTheWindowAndItsChildren) {
    for (const Picture& picture : {Picture::Printed(block), Picture::OnScreen(block)}) {
        EXPECT_EQ(picture.Width(), 60);
        EXPECT_EQ(picture.Height(), 30);
        EXPECT_EQ(picture.Pixel(29, 14), RGB(255, 0, 0));
        EXPECT_EQ(picture.Pixel(30, 14), RGB(255, 255, 255));
        EXPECT_EQ(picture.Pixel(60, 0), CLR_INVALID);
        EXPECT_EQ(picture.Count(RGB(255, 0, 0)), 100);
        EXPECT_EQ(picture.Differences(Picture::Printed(parent.Window())), 200 * 100);
        EXPECT_TRUE(picture == Picture::Printed(block));
    }
    for (const Picture& picture : {Picture::Printed(parent.Window()), Picture::OnScreen(parent.Window())}) {
        EXPECT_EQ(picture.Pixel(60, 50), RGB(255, 0, 0));
        EXPECT_EQ(picture.Pixel(49, 50), GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(picture.Count(RGB(255, 0, 0)), 100);
    }
    ShowWindow(block, SW_HIDE);
    EXPECT_EQ(Picture::Printed(parent.Window()).Count(RGB(255, 0, 0)), 0);
}

}  // namespace
