// The colour slider against the platform's own slider, and against its windows made and its scale drawn by hand.
#include <windows.h>

#include <commctrl.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxsystem/kx_color.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr int kSlider = 190, kStrip = 15;  // its thumb control is 200 by 40

// A host that takes every value.
class Slider : public CKxDevUI_ColorSlider {
public:
    Slider(HWND parent, EColorSliderType type, EColorSliderLayoutType layout = eColorSliderLayout_OneRow,
           int width = kSlider) {
        std::vector<SColorSliderValue> table;
        for (int i = 0; i <= 300; ++i)
            table.push_back({400.0 + i, i % 10 == 0, i % 50 == 0});
        Init(width, kStrip, table.data(), static_cast<int>(table.size()), L"Line", false, L"nm", L"%.0f", true, type,
             layout, 40);
        Require(Create(parent, 0, 0, -1, -1, true, true) != nullptr, "there is no colour slider");
    }
    HWND Thumb() { return GetDlgItem(m_hWnd, eColorSliderId_HPot); }
    HWND Part(int id) { return GetDlgItem(m_hWnd, id); }
    int told = 0;

protected:
    void OnPowerChanged(double&, bool&) override { ++told; }
    void OnRangeChanged(double&, double&) override { ++told; }
};

Ratio DragStep(EColorSliderType type) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const Frame frame;
    Slider slider(frame, type);
    slider.SetPower(500, true);
    slider.SetRange(480, 690);
    const HWND trackbar = CreateWindowExW(0, TRACKBAR_CLASSW, nullptr, WS_CHILD | WS_VISIBLE | TBS_AUTOTICKS, 0, 220,
                                          200, 40, frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    Require(trackbar != nullptr, "there is no trackbar");
    const bool isRange = type == eColorSliderType_Range;
    const HWND thumb = slider.Thumb(), edit = GetWindow(slider.Part(isRange ? 10005 : 10001), GW_CHILD);
    const auto move = [&](int x) {
        SendMessageW(thumb, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, 8));
        UpdateWindow(edit);
    };
    const auto place = [&](int position) {
        SendMessageW(trackbar, TBM_SETPOS, TRUE, position);
        UpdateWindow(trackbar);
    };
    RedrawWindow(frame, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    SendMessageW(thumb, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 8));
    move(40), move(100);
    const UINT shown = GetDlgItemInt(slider, isRange ? 10005 : 10001, nullptr, FALSE);
    Require(slider.told == 2 && shown > 500, "the colour slider does not follow the mouse");
    Require(!GetUpdateRect(thumb, nullptr, FALSE) && !GetUpdateRect(edit, nullptr, FALSE), "a step is not painted");
    const Ratio ratio = Measure([&] { move(40), move(100); }, [&] { place(20), place(80); });
    SendMessageW(thumb, WM_LBUTTONUP, 0, MAKELPARAM(100, 8));
    return ratio;
}

void Rebuild(Slider& slider, double from) {
    slider.SetHorizontalRainbow(from, 700);
    UpdateWindow(slider.Thumb());
}

// The same strip and ticks in a bitmap of that size, and the window's paint.
Ratio RebuildScale() {
    const Frame frame;
    Slider slider(frame, eColorSliderType_HorizontalRainbow);
    const HWND bare = MakeBareWindow(frame, {kSlider + 10, kStrip + 25});
    const auto byHand = [&](double from) {
        const kx::ui::WindowDC window(bare);
        const kx::ui::MemoryDC dc(CreateCompatibleDC(window));
        const kx::ui::Bitmap bitmap(CreateCompatibleBitmap(window, kSlider + 10, kStrip + 25));
        const kx::ui::Selection selected(dc.get(), bitmap.get()), font(dc.get(), KX_GetDefaultGuiFont());
        const RECT all{0, 0, kSlider + 10, kStrip + 25};
        FillRect(dc.get(), &all, KX_GetSysColorBrush(COLOR_BTNFACE));
        for (int c = 0; c < kSlider; ++c) {
            const kx::ui::Pen pen(CreatePen(PS_SOLID, 3, KX_RGBFromWavelength2(from + c * (700 - from) / kSlider)));
            const kx::ui::Selection line(dc.get(), pen.get());
            MoveToEx(dc.get(), 5 + c, 1, nullptr);
            LineTo(dc.get(), 5 + c, kStrip);
        }
        for (int tick = 0; tick <= 30; ++tick) {
            const RECT place{5 + tick * 6, 20, 6 + tick * 6, 25};
            FillRect(dc.get(), &place, KX_GetSysColorBrush(COLOR_BTNTEXT));
            if (tick % 5 == 0) ExtTextOutW(dc.get(), tick * 6, 26, 0, nullptr, L"400", 3, nullptr);
        }
        BitBlt(window, 0, 0, all.right, all.bottom, dc.get(), 0, 0, SRCCOPY);
        InvalidateRect(bare, nullptr, FALSE);
        UpdateWindow(bare);
    };
    return Measure([&] { Rebuild(slider, 400), Rebuild(slider, 450); }, [&] { byHand(400), byHand(450); });
}

Ratio RebuildGrowth() {
    const Frame frame;
    Slider wide(frame, eColorSliderType_HorizontalRainbow, eColorSliderLayout_OneRow, 2 * kSlider);
    Slider narrow(frame, eColorSliderType_HorizontalRainbow);
    return Measure([&] { Rebuild(wide, 400), Rebuild(wide, 450); },
                   [&] { Rebuild(narrow, 400), Rebuild(narrow, 450); });
}

void AddPart(HWND window, HWND like, const wchar_t* windowClass, DWORD style) {
    const RECT at = RectInParent(like);
    const HWND part = CreateWindowExW(0, windowClass, L"1", WS_CHILD | WS_VISIBLE | style, at.left, at.top,
                                      at.right - at.left, at.bottom - at.top, window, nullptr, nullptr, nullptr);
    SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
}

// The windows of a colour slider: itself, labels, thumb, edit box with its edit, arrows.
void AddParts(HWND window, Slider& like, HWND thumb, HWND box) {
    AddPart(window, like.Part(10003), L"STATIC", 0);
    AddPart(window, like.Part(10002), L"STATIC", 0);
    const auto place = [&](HWND child, int id) {
        const RECT at = RectInParent(like.Part(id));
        SetParent(child, window);
        MoveWindow(child, at.left, at.top, at.right - at.left, at.bottom - at.top, FALSE);
    };
    if (thumb) place(thumb, 10000);
    if (box) place(box, 10001);
    if (box) AddPart(box, GetWindow(like.Part(10001), GW_CHILD), L"EDIT", ES_AUTOHSCROLL);
    if (like.Part(10004)) AddPart(window, like.Part(10004), UPDOWN_CLASSW, 0);
}

SIZE SizeOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

Ratio CreateColorSlider() {
    const Frame frame;
    Slider like(frame, eColorSliderType_Gradient, eColorSliderLayout_OneRowSpin);
    const auto byHand = [&] {
        const HWND window = MakeBareWindow(frame, SizeOf(like));
        AddParts(window, like, MakeBareWindow(window, SizeOf(like.Thumb())),
                 MakeBareWindow(window, SizeOf(like.Part(10001))));
        DestroyWindow(window);
    };
    return Measure([&] { const Slider made(frame, eColorSliderType_Gradient, eColorSliderLayout_OneRowSpin); }, byHand);
}

Ratio RepaintColorSlider() {
    const Frame frame;
    Slider slider(frame, eColorSliderType_HorizontalRainbow);
    slider.SetPower(500, true);
    const BareWindow bare(frame, SizeOf(slider)), thumb(bare, SizeOf(slider.Thumb())),
        box(bare, SizeOf(slider.Part(10001)));
    AddParts(bare, slider, thumb, box);
    return Measure([&] { Repaint(slider); }, [&] { Repaint(bare); });
}

// clang-format off
const Rows s_rows{{
    {"colour slider, drag step with edit box following", "a stock trackbar: TBM_SETPOS and update", 1.1, [] { return DragStep(eColorSliderType_Gradient); }},
    {"colour slider, the same with a line", "a stock trackbar: TBM_SETPOS and update", 1.1, [] { return DragStep(eColorSliderType_LineDraw); }},
    {"colour slider, drag step of a range's thumb", "a stock trackbar: TBM_SETPOS and update", 1.1, [] { return DragStep(eColorSliderType_Range); }},
    {"colour slider, rainbow made anew", "the same lines and ticks drawn by hand", 1.5, RebuildScale},
    {"colour slider, rainbow of twice the width", "one of the width", 2.2, RebuildGrowth},
    {"colour slider, full repaint", "the same windows, painted by hand", 1.25, RepaintColorSlider},
    {"colour slider, create and destroy", "the same windows made directly", 1.3, CreateColorSlider},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
