// The container against the same windows made and painted by hand.
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_container.h>

#include <cmath>
#include <vector>

#include "harness.h"
#include "bench_windows.h"

namespace kx::bench {

namespace {

constexpr SIZE kSmall{300, 200}, kLarge{570, 300};
constexpr int kMany = 50;

class Panel : public CKxDevUI_Container {
public:
    Panel(HWND parent, SIZE size, int children = 0) {
        Require(Create(parent, 0, 0, size.cx, size.cy, true, true) != nullptr, "there is no container");
        for (int i = 0; i < children; ++i)
            InsertWindow(MakeChild(*this, Child(i)));
    }
};

// The pixel shows that the window paints, and not over its children.
void RequirePicture(HWND window, POINT at, COLORREF colour) {
    Repaint(window);
    Require(GetPixel(kx::ui::WindowDC(window), at.x, at.y) == colour, "the window does not paint");
}

INT_PTR CALLBACK PlainDialog(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

// The platform's own dialog of that size, empty.
HWND MakeDialog(HWND parent, SIZE size) {
    struct {
        DLGTEMPLATE dialog;
        WORD menu, windowClass, title;
    } description{{WS_CHILD | WS_VISIBLE | DS_CONTROL, 0, 0, 0, 0, 10, 10}, 0, 0, 0};
    const HWND dialog =
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &description.dialog, parent, PlainDialog, 0);
    Require(dialog != nullptr, "there is no dialog");
    SetWindowPos(dialog, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    return dialog;
}

Ratio EmptyRepaint() {
    const Frame frame;
    const BareWindow bare(frame, kSmall);
    const Panel panel(frame, kSmall);
    RequirePicture(bare, {150, 100}, GetSysColor(COLOR_BTNFACE));
    RequirePicture(panel, {150, 100}, GetSysColor(COLOR_BTNFACE));
    return Measure([&] { Repaint(panel); }, [&] { Repaint(bare); });
}

Ratio FullRepaint() {
    const Frame frame;
    const HWND dialog = MakeDialog(frame, kLarge);
    for (int i = 0; i < kMany; ++i)
        MakeChild(dialog, Child(i));
    const Panel panel(frame, kLarge, kMany);
    RequirePicture(dialog, {2, 2}, GetSysColor(COLOR_BTNFACE));
    RequirePicture(panel, {2, 2}, GetSysColor(COLOR_BTNFACE));
    return Measure([&] { Repaint(panel); }, [&] { Repaint(dialog); });
}

Ratio CreateEmpty() {
    const Frame frame;
    return Measure([&] { Panel(frame, kSmall); }, [&] { DestroyWindow(MakeBareWindow(frame, kSmall)); });
}

Ratio CreateFilled() {
    const Frame frame;
    constexpr int children = 20;
    const auto byHand = [&] {
        const HWND parent = MakeBareWindow(frame, kSmall);
        for (int i = 0; i < children; ++i)
            MakeChild(parent, Child(2 * i + 1));
        DestroyWindow(parent);
    };
    const auto inserted = [&] {
        Panel panel(frame, kSmall);
        for (int i = 0; i < children; ++i)
            panel.InsertWindow(MakeChild(panel, Child(2 * i + 1)));
    };
    return Measure(inserted, byHand);
}

RECT At(const RECT& rect, double zoom) {
    const auto at = [zoom](long value) { return std::lround(static_cast<double>(value) * zoom); };
    return {at(rect.left), at(rect.top), at(rect.left) + at(rect.right - rect.left),
            at(rect.top) + at(rect.bottom - rect.top)};
}

void PlaceByHand(HWND window, const RECT& rect, HFONT font) {
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SetWindowPos(window, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// Both sides move the very same windows, so that neither has to tell windows of the other's that something has changed.
Ratio Zoom() {
    const Frame frame;
    const Panel panel(frame, kLarge, kMany);
    std::vector<HWND> windows;
    windows.reserve(kMany);
    for (int i = 0; i < kMany; ++i)
        windows.push_back(GetDlgItem(panel, Child(i).id));
    const auto byHand = [&](double zoom) {
        const HFONT font = KX_GetDefaultGuiFontZoom(zoom);
        PlaceByHand(panel, At({0, 0, kLarge.cx, kLarge.cy}, zoom), font);
        for (int i = 0; i < kMany; ++i)
            PlaceByHand(windows[static_cast<std::size_t>(i)], At(Child(i).place, zoom), font);
        RedrawWindow(panel, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
    };
    const auto byZoom = [](double zoom) { CKxGUILayoutManager::SetGuiZoom(zoom); };

    RECT zoomed{};
    byZoom(1.5);
    GetClientRect(windows.back(), &zoomed);
    byZoom(1.0);
    Require(zoomed.right == 150 && zoomed.bottom == 36, "the zoom does not reach the children");
    return Measure([&] { byZoom(1.5), byZoom(1.0); }, [&] { byHand(1.5), byHand(1.0); });
}

Ratio RepaintTwice() {
    const Frame frame;
    const BareWindow bare(frame, kSmall);
    const auto repaint = [&] { Repaint(bare); };
    return Measure(repaint, repaint);
}

// clang-format off
const Rows s_rows{{
    {"container, full repaint", "a bare window that copies a ready bitmap", 1.25, EmptyRepaint},
    {"container with 50 children, full repaint", "the platform's dialog with the same children", 1.25, FullRepaint},
    {"container, create and destroy", "a bare window with 16 extra bytes and a font", 1.3, CreateEmpty},
    {"container with 20 buttons, create and destroy", "the same windows made directly", 1.3, CreateFilled},
    {"container with 50 children, zoom to 1.5 and back", "the same windows moved, fonts set, by hand", 1.5, Zoom},
}};
// clang-format on

}  // namespace

Row SameWork() { return {"A/A: a bare window's repaint", "itself", kQuietHigh, RepaintTwice}; }

}  // namespace kx::bench
