#include "kx_schemeparts.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_layoutmanager.h>

#include "kx_platformlook.h"
#include "kx_schemecolors.h"
#include "kx_schemepaint.h"
#include "kx_schemetip.h"
#include "kx_subclass.h"

namespace kx {

namespace {

LONG StyleOf(HWND window) { return GetWindowLongW(window, GWL_STYLE); }

bool ShowsItsFocus(HWND window) { return GetFocus() == window && KX_ShowsFocus(window); }

void Ground(HDC dc, const RECT& client) { FillRect(dc, &client, KX_GetSysColorBrush(COLOR_BTNFACE)); }

// ---- Up-down -------------------------------------------------------------------------------------------------------

void PaintUpDown(HDC dc, HWND control, const RECT& client) {
    const bool across = (StyleOf(control) & UDS_HORZ) != 0, enabled = IsWindowEnabled(control) != FALSE;
    RECT first = client, second = client;
    if (across) {
        first.right = second.left = (client.left + client.right) / 2;
    } else {
        first.bottom = second.top = (client.top + client.bottom) / 2;
    }
    POINT mouse{};
    GetCursorPos(&mouse);
    ScreenToClient(control, &mouse);
    for (const RECT& half : {first, second}) {
        const bool pressed = GetCapture() == control && PtInRect(&half, mouse);
        KX_DrawButtonBackground(dc, half, pressed ? eKxButtonLook_Pressed : 0, COLOR_BTNFACE);
        const bool isFirst = half.left == first.left && half.top == first.top;
        DrawSchemeArrow(dc, half,
                        across ? (isFirst ? Toward::Left : Toward::Right) : (isFirst ? Toward::Up : Toward::Down),
                        enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    }
}

// ---- Track bar -----------------------------------------------------------------------------------------------------

void PaintTicks(HDC dc, HWND control, const RECT& channel, const RECT& thumb) {
    const bool upright = (StyleOf(control) & TBS_VERT) != 0;
    const auto line = [&](LRESULT at) {
        if (at < 0) return;
        const long place = static_cast<long>(at), length = CKxGUILayoutManager::Zoomed(4);
        const bool behind = !(StyleOf(control) & TBS_TOP) || (StyleOf(control) & TBS_BOTH);
        const bool before = (StyleOf(control) & (TBS_TOP | TBS_BOTH)) != 0;
        for (const bool after : {true, false}) {
            if (!(after ? behind : before)) continue;
            const long from = upright ? (after ? thumb.right + 1 : thumb.left - 1 - length)
                                      : (after ? thumb.bottom + 1 : thumb.top - 1 - length);
            const RECT tick =
                upright ? RECT{from, place, from + length, place + 1} : RECT{place, from, place + 1, from + length};
            FillRect(dc, &tick, KX_GetSysColorBrush(COLOR_3DDKSHADOW));
        }
    };
    if (StyleOf(control) & TBS_NOTICKS) return;
    const LRESULT count = SendMessageW(control, TBM_GETNUMTICS, 0, 0);
    for (LRESULT i = 0; i < count - 2; ++i)
        line(SendMessageW(control, TBM_GETTICPOS, static_cast<WPARAM>(i), 0));
    // Those at the ends are counted, but not told.
    const long half = (upright ? thumb.bottom - thumb.top : thumb.right - thumb.left) / 2;
    line((upright ? channel.top : channel.left) + half);
    line((upright ? channel.bottom : channel.right) - half - 1);
}

void PaintTrackBar(HDC dc, HWND control, const RECT& client) {
    RECT channel{}, thumb{};
    SendMessageW(control, TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&channel));
    SendMessageW(control, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
    // Windows tells of an upright channel as if it were lying.
    if ((StyleOf(control) & TBS_VERT) && channel.right - channel.left > channel.bottom - channel.top)
        channel = {channel.top, channel.left, channel.bottom, channel.right};
    Ground(dc, client);
    PaintTicks(dc, control, channel, thumb);
    FillRect(dc, &channel, KX_GetSysColorBrush(COLOR_WINDOW));
    FrameInScheme(dc, channel, COLOR_BTNSHADOW);
    if (!(StyleOf(control) & TBS_NOTHUMB)) {
        KX_DrawButtonBackground(dc, thumb, GetCapture() == control ? eKxButtonLook_Pressed : 0, COLOR_BTNFACE);
        FrameInScheme(dc, thumb, IsWindowEnabled(control) ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    }
    if (ShowsItsFocus(control)) KX_DrawFocusOutline(dc, client);
}

// ---- Tab control ---------------------------------------------------------------------------------------------------

void PaintTab(HDC dc, HWND control, int index, bool chosen) {
    RECT rect{};
    SendMessageW(control, TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    wchar_t text[128] = L"";
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = static_cast<int>(std::size(text));
    SendMessageW(control, TCM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    FillRect(dc, &rect, KX_GetSysColorBrush(chosen ? COLOR_WINDOW : COLOR_BTNFACE));
    FrameInScheme(dc, rect, chosen ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW);
    SetTextColor(dc, KX_GetSysColor(!IsWindowEnabled(control) ? COLOR_GRAYTEXT
                                    : chosen                  ? COLOR_WINDOWTEXT
                                                              : COLOR_BTNTEXT));
    constexpr UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
    DrawTextW(dc, text, -1, &rect, KX_ShowsMnemonics(control) ? format : format | DT_HIDEPREFIX);
    if (chosen && ShowsItsFocus(control)) {
        InflateRect(&rect, -3, -3);
        KX_DrawFocusOutline(dc, rect, COLOR_WINDOW);
    }
}

void PaintTabControl(HDC dc, HWND control, const RECT& client) {
    Ground(dc, client);
    RECT page = client;
    SendMessageW(control, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
    InflateRect(&page, 2, 2);
    FrameInScheme(dc, page, COLOR_BTNSHADOW);
    const auto count = static_cast<int>(SendMessageW(control, TCM_GETITEMCOUNT, 0, 0));
    const auto chosen = static_cast<int>(SendMessageW(control, TCM_GETCURSEL, 0, 0));
    for (int i = 0; i < count; ++i)
        PaintTab(dc, control, i, i == chosen);
}

// ---- Painting instead of them --------------------------------------------------------------------------------------

using Painter = void (*)(HDC dc, HWND control, const RECT& client);

template <Painter paint>
LRESULT CALLBACK PartProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsOwnScheme()) return CallRest(PartProc<paint>, control, message, wParam, lParam);
    if (message == WM_PAINT && wParam == 0) {
        const SchemePaintDC dc(control);
        RECT client{};
        GetClientRect(control, &client);
        paint(dc, control, client);
        return 0;
    }
    if (message == WM_ERASEBKGND) return 1;
    const LRESULT result = CallRest(PartProc<paint>, control, message, wParam, lParam);
    const bool changes = message == WM_SETFOCUS || message == WM_KILLFOCUS || message == WM_ENABLE ||
                         message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_CAPTURECHANGED ||
                         message == WM_UPDATEUISTATE;
    if (changes && IsWindow(control)) InvalidateRect(control, nullptr, FALSE);
    return result;
}

// ---- Edges ---------------------------------------------------------------------------------------------------------

bool HasEdge(HWND window) {
    return (GetWindowLongW(window, GWL_EXSTYLE) & (WS_EX_CLIENTEDGE | WS_EX_STATICEDGE)) ||
           (StyleOf(window) & WS_CAPTION) == WS_BORDER;
}

void PaintEdge(HWND window) {
    if (!HasEdge(window)) return;
    const bool sunken = (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0;
    FrameWindowInScheme(window, COLOR_BTNSHADOW);
    const bool field = IsWindowEnabled(window) && !(IsClass(window, WC_EDITW) && (StyleOf(window) & ES_READONLY));
    if (sunken) FrameWindowInScheme(window, field ? COLOR_WINDOW : COLOR_BTNFACE, 1);
}

// A list view has its scroll bars only while it needs them.
bool MayScroll(HWND window) { return (StyleOf(window) & (WS_VSCROLL | WS_HSCROLL)) || IsClass(window, WC_LISTVIEWW); }

LRESULT CALLBACK EdgeProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CallRest(EdgeProc, window, message, wParam, lParam);
    if (!IsWindow(window)) return result;
    if (message == WM_NCPAINT && IsOwnScheme()) PaintEdge(window);
    // Under Wine the platform's controls draw their inside anew, and keep the old edge and scroll bars.
    if (message == WM_THEMECHANGED) RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
    if (message == WM_SYSCOLORCHANGE && MayScroll(window))
        SetControlTheme(window, IsOnDarkGround() ? ControlTheme::Dark : ControlTheme::Own);
    return result;
}

}  // namespace

bool FollowColorSchemeInPart(HWND window) {
    if (IsClass(window, UPDOWN_CLASSW)) return Subclass(window, PartProc<PaintUpDown>);
    if (IsClass(window, TRACKBAR_CLASSW)) {
        FollowColorSchemeInToolTip(reinterpret_cast<HWND>(SendMessageW(window, TBM_GETTOOLTIPS, 0, 0)));
        return Subclass(window, PartProc<PaintTrackBar>);
    }
    if (IsClass(window, WC_TABCONTROLW)) {
        FollowColorSchemeInToolTip(TabCtrl_GetToolTips(window));
        return Subclass(window, PartProc<PaintTabControl>);
    }
    return false;
}

void FollowColorSchemeInEdge(HWND window) {
    // Most labels have none, and are many.
    if (IsClass(window, WC_STATICW) && !HasEdge(window)) return;
    Subclass(window, EdgeProc);
    if (IsOnDarkGround() && MayScroll(window)) SetControlTheme(window, ControlTheme::Dark);
}

}  // namespace kx
