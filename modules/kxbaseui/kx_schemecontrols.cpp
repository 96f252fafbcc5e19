#include <kxbaseui/kx_schemecontrols.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <iterator>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_groupbox.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_uihelper.h>

#include "kx_schemelist.h"
#include "kx_subclass.h"

namespace {

bool InUse() { return KX_GetColorScheme() != eKxColorScheme_System; }

bool IsClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = L"";
    GetClassNameW(window, own, static_cast<int>(std::size(own)));
    return _wcsicmp(own, name) == 0;
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

// A window's paint DC with its font selected and text drawn transparently.
class PaintDC {
public:
    explicit PaintDC(HWND window) : m_window(window), m_dc(BeginPaint(window, &m_paint)) {
        SaveDC(m_dc);
        SetBkMode(m_dc, TRANSPARENT);
        SelectObject(m_dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    }
    ~PaintDC() {
        RestoreDC(m_dc, -1);
        EndPaint(m_window, &m_paint);
    }
    PaintDC(const PaintDC&) = delete;
    PaintDC& operator=(const PaintDC&) = delete;
    operator HDC() const { return m_dc; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

struct Label {
    wchar_t text[256] = L"";
    explicit Label(HWND window) { GetWindowTextW(window, text, static_cast<int>(std::size(text))); }
};

void Frame(HDC dc, const RECT& rect, int color) { FrameRect(dc, &rect, KX_GetSysColorBrush(color)); }

void DrawLabel(HDC dc, HWND window, RECT area, UINT format) {
    SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(window) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextW(dc, Label(window).text, -1, &area, format);
}

void DrawFocus(HDC dc, HWND button, const RECT& rect) {
    if (SendMessageW(button, BM_GETSTATE, 0, 0) & BST_FOCUS) {
        SetTextColor(dc, KX_GetSysColor(COLOR_BTNTEXT));
        SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
        DrawFocusRect(dc, &rect);
    }
}

void DrawTriangle(HDC dc, const RECT& box, int color) {
    const long half = std::max(2L, (box.right - box.left) / 5);
    const long x = (box.left + box.right) / 2, y = (box.top + box.bottom) / 2 - half / 2;
    const POINT corners[] = {{x - half, y}, {x + half, y}, {x, y + half}};
    SelectObject(dc, KX_GetSysColorBrush(color));
    SelectObject(dc, GetStockObject(NULL_PEN));
    Polygon(dc, corners, 3);
}

// ---- Buttons -------------------------------------------------------------------------------------------------------

void PaintPushButton(HDC dc, HWND button, RECT client) {
    const LRESULT state = SendMessageW(button, BM_GETSTATE, 0, 0);
    const bool pushed = (state & BST_PUSHED) != 0;
    // A check box or radio button made to look like a push button shows by its frame that it is checked.
    KX_DrawButtonBackground(
        dc, client, (pushed ? eKxButtonLook_Pressed : 0) | (state & BST_CHECKED ? eKxButtonLook_On : 0), COLOR_BTNFACE);
    if (pushed) OffsetRect(&client, 1, 1);
    DrawLabel(dc, button, client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    InflateRect(&client, -4, -4);
    DrawFocus(dc, button, client);
}

void PaintCheck(HDC dc, HWND button, const RECT& client, bool radio) {
    FillRect(dc, &client, KX_GetSysColorBrush(COLOR_BTNFACE));
    const long size = CKxGUILayoutManager::Zoomed(13), top = (client.bottom - size) / 2;
    const RECT box{0, top, size, top + size};
    const bool checked = SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (radio) {
        SelectObject(dc, KX_GetSysColorBrush(COLOR_WINDOW));
        SelectObject(dc, GetStockObject(DC_PEN));
        SetDCPenColor(dc, KX_GetSysColor(COLOR_3DDKSHADOW));
        Ellipse(dc, box.left, box.top, box.right, box.bottom);
        if (checked) {
            SelectObject(dc, KX_GetSysColorBrush(COLOR_WINDOWTEXT));
            SelectObject(dc, GetStockObject(NULL_PEN));
            const long inset = size * 3 / 10;
            Ellipse(dc, box.left + inset, box.top + inset, box.right - inset + 1, box.bottom - inset + 1);
        }
    } else {
        DrawCheckBox(dc, box, checked);
    }
    RECT text = client;
    text.left = size + CKxGUILayoutManager::Zoomed(4);
    DrawLabel(dc, button, text, DT_VCENTER | DT_SINGLELINE);
    RECT focus = text;
    DrawTextW(dc, Label(button).text, -1, &focus, DT_SINGLELINE | DT_CALCRECT);
    OffsetRect(&focus, 0, (client.bottom - (focus.bottom - focus.top)) / 2);
    InflateRect(&focus, 2, 0);
    DrawFocus(dc, button, focus);
}

void PaintGroupBox(HDC dc, HWND button, RECT client) {
    client.top = KX_GroupBoxTitleHeight(dc) / 2;
    SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(button) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
    KX_GroupBoxDraw(dc, {client, Label(button).text, CKxGUILayoutManager::Zoomed(8)}, eKxGroupBox_Mnemonic);
}

bool PaintsItself(LONG type) { return type == BS_OWNERDRAW || type == BS_USERBUTTON; }

void PaintButton(HWND button, LONG type) {
    const PaintDC dc(button);
    RECT client{};
    GetClientRect(button, &client);
    if (type != BS_GROUPBOX && (GetWindowLongW(button, GWL_STYLE) & BS_PUSHLIKE)) {
        return PaintPushButton(dc, button, client);
    }
    switch (type) {
    case BS_GROUPBOX: return PaintGroupBox(dc, button, client);
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE: return PaintCheck(dc, button, client, false);
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON: return PaintCheck(dc, button, client, true);
    default: return PaintPushButton(dc, button, client);
    }
}

// Messages at which a button paints without waiting for WM_PAINT.
bool PaintsAtOnce(UINT message) {
    switch (message) {
    case BM_SETSTATE:
    case BM_SETCHECK:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETTEXT: return true;
    default: return false;
    }
}

LRESULT CALLBACK ButtonProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam) {
    const LONG type = GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK;
    if (!InUse() || PaintsItself(type)) return kx::CallRest(ButtonProc, button, message, wParam, lParam);
    if (message == WM_PAINT && wParam == 0) {
        PaintButton(button, type);
        return 0;
    }
    if (message == WM_ERASEBKGND) return 1;
    if (!PaintsAtOnce(message) || !IsWindowVisible(button))
        return kx::CallRest(ButtonProc, button, message, wParam, lParam);
    // Without the visible bit the button changes its state and shows nothing in the system's colours.
    const LONG style = GetWindowLongW(button, GWL_STYLE);
    SetWindowLongW(button, GWL_STYLE, style & ~static_cast<LONG>(WS_VISIBLE));
    const LRESULT result = kx::CallRest(ButtonProc, button, message, wParam, lParam);
    if (!IsWindow(button)) return result;
    SetWindowLongW(button, GWL_STYLE, GetWindowLongW(button, GWL_STYLE) | static_cast<LONG>(WS_VISIBLE));
    InvalidateRect(button, nullptr, FALSE);
    return result;
}

// ---- Drop-down lists -----------------------------------------------------------------------------------------------

void PaintDropDown(HWND combo) {
    const PaintDC dc(combo);
    RECT client{};
    GetClientRect(combo, &client);
    FillRect(dc, &client, KX_GetSysColorBrush(COLOR_WINDOW));
    Frame(dc, client, GetFocus() == combo ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW);
    RECT arrow = client;
    arrow.left = arrow.right - (client.bottom - client.top);
    const bool enabled = IsWindowEnabled(combo) != FALSE;
    RECT text = client;
    text.left += CKxGUILayoutManager::Zoomed(4);
    text.right = arrow.left;
    SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    DrawTextW(dc, Label(combo).text, -1, &text, DT_VCENTER | DT_SINGLELINE);
    DrawTriangle(dc, arrow, enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
}

LRESULT AnswerColor(HWND window, UINT message, HDC dc, HWND control) {
    const bool field = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const int back = field ? COLOR_WINDOW : message == WM_CTLCOLORSCROLLBAR ? COLOR_SCROLLBAR : COLOR_BTNFACE;
    const bool grayed = control != window && !IsWindowEnabled(control);
    SetTextColor(dc, KX_GetSysColor(grayed ? COLOR_GRAYTEXT : field ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
    SetBkColor(dc, KX_GetSysColor(back));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(back));
}

bool AsksForColor(UINT message) { return message >= WM_CTLCOLOREDIT && message <= WM_CTLCOLORSTATIC; }

LRESULT CALLBACK ComboProc(HWND combo, UINT message, WPARAM wParam, LPARAM lParam) {
    if (InUse()) {
        if (message == WM_PAINT && wParam == 0) {
            PaintDropDown(combo);
            return 0;
        }
        if (AsksForColor(message)) {
            return AnswerColor(combo, message, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        }
        const bool changes = message == CB_SETCURSEL || message == WM_SETFOCUS || message == WM_KILLFOCUS ||
                             message == WM_ENABLE || message == WM_COMMAND;
        const LRESULT result = kx::CallRest(ComboProc, combo, message, wParam, lParam);
        if (changes && IsWindow(combo)) InvalidateRect(combo, nullptr, FALSE);
        return result;
    }
    return kx::CallRest(ComboProc, combo, message, wParam, lParam);
}

// ---- Edges ---------------------------------------------------------------------------------------------------------

// The sunken edge of an edit, one line in the scheme's colours instead of the system's four.
LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = kx::CallRest(EditProc, edit, message, wParam, lParam);
    if (message != WM_NCPAINT || !InUse() || !(GetWindowLongW(edit, GWL_EXSTYLE) & WS_EX_CLIENTEDGE)) return result;
    RECT rect{};
    GetWindowRect(edit, &rect);
    OffsetRect(&rect, -rect.left, -rect.top);
    const HDC dc = GetWindowDC(edit);
    Frame(dc, rect, COLOR_BTNSHADOW);
    const bool field = IsWindowEnabled(edit) && !(GetWindowLongW(edit, GWL_STYLE) & ES_READONLY);
    InflateRect(&rect, -1, -1);
    Frame(dc, rect, field ? COLOR_WINDOW : COLOR_BTNFACE);
    ReleaseDC(edit, dc);
    return result;
}

bool IsEtchedLine(HWND label) {
    const LONG type = GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK;
    return type == SS_ETCHEDHORZ || type == SS_ETCHEDVERT;
}

bool IsUpright(HWND line) { return (GetWindowLongW(line, GWL_STYLE) & SS_TYPEMASK) == SS_ETCHEDVERT; }

// The whole line, shadow and light.
LRESULT CALLBACK EtchedLineProc(HWND line, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT || wParam != 0) return kx::CallRest(EtchedLineProc, line, message, wParam, lParam);
    const PaintDC dc(line);
    RECT client{};
    GetClientRect(line, &client);
    FillRect(dc, &client, KX_GetSysColorBrush(InUse() ? COLOR_BTNFACE : COLOR_BTNHIGHLIGHT));
    long& end = IsUpright(line) ? client.right : client.bottom;
    end = std::max(1L, end / 2);
    FillRect(dc, &client, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    return 0;
}

// The platform's is the frame of a window, in the system's colours, around nothing. Nobody draws the inside that a zoom
// gives it.
void FollowInEtchedLine(HWND line) {
    SetWindowLongW(line, GWL_EXSTYLE, GetWindowLongW(line, GWL_EXSTYLE) & ~LONG{WS_EX_STATICEDGE});
    SetWindowPos(line, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
    kx::Subclass(line, EtchedLineProc);
}

// ---- Parents -------------------------------------------------------------------------------------------------------

// Stands before the window's own procedure, which in another scheme than the system's could only answer wrongly.
LRESULT CALLBACK ParentProc(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) {
    if (InUse() && AsksForColor(message) && message != WM_CTLCOLORMSGBOX) {
        return AnswerColor(parent, message, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    }
    if (InUse() && message == WM_ERASEBKGND && IsClass(parent, L"#32770")) {
        RECT client{};
        GetClientRect(parent, &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, KX_GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    return kx::CallRest(ParentProc, parent, message, wParam, lParam);
}

void Follow(HWND window) {
    if (KX_IsWindowMarkedToSkipPaint(window)) return;
    if (IsClass(window, L"Button")) {
        kx::Subclass(window, ButtonProc);
    } else if (IsClass(window, L"ComboBox")) {
        if ((GetWindowLongW(window, GWL_STYLE) & 3) == CBS_DROPDOWNLIST) {
            kx::Subclass(window, ComboProc);
        }
    } else if (IsClass(window, L"Edit")) {
        kx::Subclass(window, EditProc);
    } else if (IsClass(window, L"Static") && IsEtchedLine(window)) {
        FollowInEtchedLine(window);
    } else if (IsClass(window, WC_LISTVIEWW)) {
        FollowColorSchemeInList(window);
    } else if (GetWindow(window, GW_CHILD)) {
        kx::Subclass(window, ParentProc);
    }
}

BOOL CALLBACK FollowEach(HWND window, LPARAM) {
    Follow(window);
    return TRUE;
}

}  // namespace

void KX_FollowColorScheme(HWND window) {
    if (!IsWindow(window)) return;
    Follow(window);
    EnumChildWindows(window, FollowEach, 0);
    if (InUse()) RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
