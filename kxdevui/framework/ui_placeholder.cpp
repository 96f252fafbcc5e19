#include <kxdevui/framework/ui_placeholder.h>

#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

namespace kx::ui {

std::optional<Placeholder> Placeholder::Of(HWND parent, HWND window) {
    const HWND own = ParentOf(window);
    CKxDevUI_Base* const around = ControlOf(own);
    const bool isPart = around && !dynamic_cast<CKxDevUI_Container*>(around);
    if (!own || (parent && parent != own) || ControlOf(window) || isPart) {
        KX_LOG(L"ui_placeholder", L"window %p is no control of window %p that can be replaced",
               static_cast<void*>(window), static_cast<void*>(parent));
        return std::nullopt;
    }
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    return Placeholder{window,
                       own,
                       RectInParent(window),
                       GetDlgCtrlID(window),
                       (style & LONG{WS_TABSTOP}) != 0,
                       (style & LONG{WS_VISIBLE}) != 0,
                       (style & LONG{WS_DISABLED}) == 0};
}

void Placeholder::GiveTo(HWND control) const {
    const HWND focus = GetFocus();
    const bool hadFocus = focus && (focus == window || IsChild(window, focus));
    LONG style = GetWindowLongW(control, GWL_STYLE) & ~LONG{WS_TABSTOP | WS_GROUP};
    style |= GetWindowLongW(window, GWL_STYLE) & LONG{WS_TABSTOP | WS_GROUP};
    SetWindowLongW(control, GWL_STYLE, style);
    // Behind the old one, which goes.
    SetWindowPos(control, window, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE);
    if (hadFocus) SetFocus(control);
    if (IsWindow(window)) DestroyWindow(window);
}

}  // namespace kx::ui
