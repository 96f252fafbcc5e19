#include "kx_schemetip.h"

#include <commctrl.h>

#include <kxbaseui/kx_colors.h>

#include "kx_platformlook.h"
#include "kx_schemepaint.h"
#include "kx_subclass.h"

namespace kx {

namespace {

// Under visual styles a tooltip has the theme's colours, whatever it is told.
void SetColors(HWND tip) {
    SetControlTheme(tip, IsOwnScheme() ? ControlTheme::None : ControlTheme::Own);
    SendMessageW(tip, TTM_SETTIPBKCOLOR, KX_GetSysColor(COLOR_INFOBK), 0);
    SendMessageW(tip, TTM_SETTIPTEXTCOLOR, KX_GetSysColor(COLOR_INFOTEXT), 0);
}

// The line around it, which is black.
void PaintBorder(HWND tip) {
    RECT rect{};
    GetWindowRect(tip, &rect);
    OffsetRect(&rect, -rect.left, -rect.top);
    const HDC dc = GetWindowDC(tip);
    FrameInScheme(dc, rect, COLOR_BTNSHADOW);
    ReleaseDC(tip, dc);
}

LRESULT CALLBACK TipProc(HWND tip, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CallRest(TipProc, tip, message, wParam, lParam);
    if (!IsWindow(tip)) return result;
    if (message == WM_SYSCOLORCHANGE) SetColors(tip);
    if (message == WM_NCPAINT && IsOwnScheme()) PaintBorder(tip);
    return result;
}

}  // namespace

void FollowColorSchemeInToolTip(HWND tip) {
    Subclass(tip, TipProc);
    if (IsOwnScheme()) SetColors(tip);
}

}  // namespace kx
