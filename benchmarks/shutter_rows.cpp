// The shutter against the same windows made and painted by hand.
#include <windows.h>

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/light/devgui_shutter.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr SIZE kSize{40, 40};

LRESULT CALLBACK CopyProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto bare = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != WM_DRAWITEM) return CallWindowProcW(bare, window, message, wParam, lParam);
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    BitBlt(item.hDC, 0, 0, item.rcItem.right, item.rcItem.bottom, reinterpret_cast<HDC>(GetWindowLongPtrW(window, 0)),
           0, 0, SRCCOPY);
    return 1;
}

// Title and button of a shutter; the button is drawn by the parent.
HWND AddParts(HWND parent) {
    const HWND title =
        CreateWindowExW(0, L"STATIC", L"EPI", WS_CHILD | WS_VISIBLE, 0, 0, 40, 16, parent, nullptr, nullptr, nullptr);
    SendMessageW(title, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    const HWND button = CreateWindowExW(0, L"BUTTON", nullptr, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 8, 16, 24, 24,
                                        parent, nullptr, nullptr, nullptr);
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    return button;
}

// A bare window whose owner-drawn button copies a ready bitmap.
class BareShutter : public BareWindow {
public:
    explicit BareShutter(HWND parent) : BareWindow(parent, kSize), m_button(AddParts(*this)) {
        SetWindowLongPtrW(*this, GWLP_USERDATA, GetWindowLongPtrW(*this, GWLP_WNDPROC));
        SetWindowLongPtrW(*this, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(CopyProc));
    }
    HWND Button() const { return m_button; }

private:
    HWND m_button;
};

void Make(CKxDevUI_Shutter& shutter, HWND parent) {
    Require(shutter.Create(parent, 0, 0, -1, -1, true, true) != nullptr, "there is no shutter");
}

Ratio RepaintShutter() {
    const Frame frame;
    const BareShutter bare(frame);
    CKxDevUI_Shutter shutter;
    Make(shutter, frame);
    return Measure([&] { Repaint(shutter); }, [&] { Repaint(bare); });
}

Ratio Toggle() {
    const Frame frame;
    const BareShutter bare(frame);
    CKxDevUI_Shutter shutter;
    Make(shutter, frame);
    const HWND button = bare.Button();
    return Measure([&] { shutter.SetState(!shutter.GetState()); },
                   [&] { RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASENOW); });
}

// clang-format off
const Rows s_rows{{
    {"shutter, toggle", "redrawing a button that copies a bitmap", 1.25, Toggle},
    {"shutter, full repaint", "the same windows copying ready bitmaps", 1.25, RepaintShutter},
    CreationRow<CKxDevUI_Shutter>("shutter"),
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
