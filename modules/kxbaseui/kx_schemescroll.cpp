#include "kx_schemescroll.h"

#include <algorithm>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>

#include "kx_platformlook.h"
#include "kx_schemecolors.h"
#include "kx_schemepaint.h"
#include "kx_subclass.h"

namespace kx {

namespace {

bool IsDrawnHere() { return IsOnDarkGround() && !HasDarkScrollBars(); }

void Paint(HWND bar) {
    const SchemePaintDC dc(bar);
    RECT client{};
    GetClientRect(bar, &client);
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    GetScrollBarInfo(bar, OBJID_CLIENT, &info);
    const bool upright = (GetWindowLongW(bar, GWL_STYLE) & SBS_VERT) != 0, enabled = IsWindowEnabled(bar) != FALSE;
    const long length = upright ? client.bottom : client.right;
    // Wine tells the length of the thumb here.
    const long most = std::min<long>(GetSystemMetrics(upright ? SM_CYVSCROLL : SM_CXHSCROLL), length / 2);
    const long button = info.dxyLineButton > 0 ? std::min<long>(info.dxyLineButton, most) : most;
    RECT first = client, last = client, thumb = client;
    if (upright) {
        first.bottom = button, last.top = length - button;
        thumb.top = info.xyThumbTop, thumb.bottom = info.xyThumbBottom;
    } else {
        first.right = button, last.left = length - button;
        thumb.left = info.xyThumbTop, thumb.right = info.xyThumbBottom;
    }
    FillRect(dc, &client, KX_GetSysColorBrush(COLOR_WINDOW));
    FrameInScheme(dc, client, COLOR_BTNSHADOW);
    for (const RECT& part : {first, last})
        KX_DrawButtonBackground(dc, part, 0, COLOR_BTNFACE);
    if (enabled) KX_DrawButtonBackground(dc, thumb, 0, COLOR_BTNFACE);
    const int ink = enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT;
    DrawSchemeArrow(dc, first, upright ? Toward::Up : Toward::Left, ink);
    DrawSchemeArrow(dc, last, upright ? Toward::Down : Toward::Right, ink);
}

// Messages at which a scroll bar draws without waiting for WM_PAINT.
bool PaintsAtOnce(UINT message) {
    switch (message) {
    case SBM_SETPOS:
    case SBM_SETRANGE:
    case SBM_SETRANGEREDRAW:
    case SBM_SETSCROLLINFO:
    case SBM_ENABLE_ARROWS:
    case WM_ENABLE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_KEYDOWN: return true;
    default: return false;
    }
}

LRESULT CALLBACK ScrollProc(HWND bar, UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsDrawnHere() && message == WM_PAINT && wParam == 0) {
        Paint(bar);
        return 0;
    }
    const LRESULT result = CallRest(ScrollProc, bar, message, wParam, lParam);
    if (!IsWindow(bar)) return result;
    if (message == WM_SYSCOLORCHANGE) SetControlTheme(bar, IsOnDarkGround() ? ControlTheme::Dark : ControlTheme::Own);
    // While the mouse holds it the platform draws without asking; what the host then sets shows the next picture.
    if (IsDrawnHere() && PaintsAtOnce(message)) RedrawWindow(bar, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    return result;
}

}  // namespace

void FollowColorSchemeInScrollBar(HWND bar) {
    if (GetWindowLongW(bar, GWL_STYLE) & (SBS_SIZEBOX | SBS_SIZEGRIP)) return;
    Subclass(bar, ScrollProc);
    if (IsOnDarkGround()) SetControlTheme(bar, ControlTheme::Dark);
}

}  // namespace kx
