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

LRESULT CALLBACK TipProc(HWND tip, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CallRest(TipProc, tip, message, wParam, lParam);
    if (!IsWindow(tip)) return result;
    if (message == WM_SYSCOLORCHANGE) SetColors(tip);
    // The line around it is black.
    if (message == WM_NCPAINT && IsOwnScheme()) FrameWindowInScheme(tip, COLOR_BTNSHADOW);
    return result;
}

}  // namespace

void FollowColorSchemeInToolTip(HWND tip) {
    if (!IsWindow(tip)) return;

    Subclass(tip, TipProc);
    if (IsOwnScheme()) SetColors(tip);
}

}  // namespace kx
