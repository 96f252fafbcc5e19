#include <kxdevui/framework/ui_control.h>

#include <kxbaseui/kx_colors.h>

namespace kx::ui {

Handled HandleFace(const Message& message, PaintMode mode) {
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        const auto nothing = [](HDC, const RECT&) {};
        return Paint(message, mode, KX_GetSysColorBrush(COLOR_BTNFACE), nothing);
    }
    case WM_ERASEBKGND: return 1;
    case WM_KX_ZOOM_CHANGED: ApplyZoom(message.window); return std::nullopt;
    default: return std::nullopt;
    }
}

LRESULT AnswerTextColor(const Message& message, bool enabled) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_BTNFACE));
}

}  // namespace kx::ui
