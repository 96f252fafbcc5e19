#include <kxbaseui/kx_schemecontrols.h>

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_groupbox.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_uihelper.h>

#include "kx_schemeframe.h"
#include "kx_schemelist.h"
#include "kx_schemepaint.h"
#include "kx_schemeparts.h"
#include "kx_schemescroll.h"
#include "kx_schemetip.h"
#include "kx_subclass.h"

namespace {

// ---- Drawing -------------------------------------------------------------------------------------------------------

struct Label {
    wchar_t text[256] = L"";
    explicit Label(HWND window) { GetWindowTextW(window, text, static_cast<int>(std::size(text))); }
};

void DrawLabel(HDC dc, HWND window, RECT area, UINT format) {
    SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(window) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    DrawTextW(dc, Label(window).text, -1, &area, KX_ShowsMnemonics(window) ? format : format | DT_HIDEPREFIX);
}

void DrawFocus(HDC dc, HWND button, const RECT& rect) {
    if ((SendMessageW(button, BM_GETSTATE, 0, 0) & BST_FOCUS) && KX_ShowsFocus(button)) KX_DrawFocusOutline(dc, rect);
}

// ---- Buttons -------------------------------------------------------------------------------------------------------

long CheckSize() { return CKxGUILayoutManager::Zoomed(13); }

bool LooksPushed(HWND button) {
    const LONG style = GetWindowLongW(button, GWL_STYLE), type = style & BS_TYPEMASK;
    return (style & BS_PUSHLIKE) || type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
}

// Within the face of what looks like a push button, around the text of others.
RECT FocusPlace(HDC dc, HWND button, const RECT& client) {
    RECT place = client, text = client, found{};
    InflateRect(&place, -3, -3);
    if (LooksPushed(button)) return place;
    text.left = CheckSize() + CKxGUILayoutManager::Zoomed(4);
    DrawTextW(dc, Label(button).text, -1, &text, DT_SINGLELINE | DT_CALCRECT);
    OffsetRect(&text, 0, (client.bottom - (text.bottom - text.top)) / 2);
    InflateRect(&text, 3, 2);
    IntersectRect(&found, &text, &client);
    return found;
}

// The outline over what the platform has painted.
void DrawFocusOver(HWND button) {
    RECT client{};
    GetClientRect(button, &client);
    const HDC dc = GetDC(button);
    const HGDIOBJ font = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(button, WM_GETFONT, 0, 0)));
    DrawFocus(dc, button, FocusPlace(dc, button, client));
    SelectObject(dc, font);
    ReleaseDC(button, dc);
}

void PaintPushButton(HDC dc, HWND button, RECT client) {
    const LRESULT state = SendMessageW(button, BM_GETSTATE, 0, 0);
    const bool pushed = (state & BST_PUSHED) != 0;
    // A check box or radio button made to look like a push button shows by its frame that it is checked.
    const int look = (pushed ? eKxButtonLook_Pressed : 0) | (state & BST_CHECKED ? eKxButtonLook_On : 0) |
                     (IsWindowEnabled(button) ? 0 : eKxButtonLook_Disabled);
    KX_DrawButtonBackground(dc, client, look, COLOR_BTNFACE);
    if (pushed) OffsetRect(&client, 1, 1);
    UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
    RECT text = client;
    if (GetWindowLongW(button, GWL_STYLE) & BS_MULTILINE) {
        // The platform centres a line alone.
        format = DT_CENTER | DT_WORDBREAK;
        RECT lines = client;
        DrawTextW(dc, Label(button).text, -1, &lines, format | DT_CALCRECT);
        text.top += (client.bottom - lines.bottom) / 2;
    }
    DrawLabel(dc, button, text, format);
    DrawFocus(dc, button, FocusPlace(dc, button, client));
}

void PaintCheck(HDC dc, HWND button, const RECT& client, bool radio) {
    FillRect(dc, &client, KX_GetSysColorBrush(COLOR_BTNFACE));
    const long size = CheckSize(), top = (client.bottom - size) / 2;
    const RECT box{0, top, size, top + size};
    const LRESULT state = SendMessageW(button, BM_GETCHECK, 0, 0);
    const bool checked = state == BST_CHECKED, enabled = IsWindowEnabled(button) != FALSE;
    if (radio) {
        SelectObject(dc, KX_GetSysColorBrush(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
        SelectObject(dc, GetStockObject(DC_PEN));
        SetDCPenColor(dc, KX_GetSysColor(enabled ? COLOR_3DDKSHADOW : COLOR_GRAYTEXT));
        Ellipse(dc, box.left, box.top, box.right, box.bottom);
        if (checked) {
            SelectObject(dc, KX_GetSysColorBrush(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
            SelectObject(dc, GetStockObject(NULL_PEN));
            const long inset = size * 3 / 10;
            Ellipse(dc, box.left + inset, box.top + inset, box.right - inset + 1, box.bottom - inset + 1);
        }
    } else {
        DrawCheckBox(dc, box, checked, enabled);
        if (state == BST_INDETERMINATE) {
            const long inset = size / 4, half = std::max(1L, size / 13);
            const long middle = (box.top + box.bottom) / 2;
            const RECT mixed{box.left + inset, middle - half, box.right - inset, middle + half};
            FillRect(dc, &mixed, KX_GetSysColorBrush(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
        }
    }
    RECT text = client;
    text.left = size + CKxGUILayoutManager::Zoomed(4);
    DrawLabel(dc, button, text, DT_VCENTER | DT_SINGLELINE);
    DrawFocus(dc, button, FocusPlace(dc, button, client));
}

void PaintGroupBox(HDC dc, HWND button, RECT client) {
    client.top = KX_GroupBoxTitleHeight(dc) / 2;
    SetTextColor(dc, KX_GetSysColor(IsWindowEnabled(button) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
    const unsigned flags = KX_ShowsMnemonics(button) ? eKxGroupBox_Mnemonic : eKxGroupBox_Mnemonic | eKxGroupBox_NoLine;
    KX_GroupBoxDraw(dc, {client, Label(button).text, CKxGUILayoutManager::Zoomed(8)}, flags);
}

bool PaintsItself(LONG type) { return type == BS_OWNERDRAW || type == BS_USERBUTTON; }

void PaintButton(HWND button, LONG type) {
    const kx::SchemePaintDC dc(button);
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
    case WM_UPDATEUISTATE:
    case WM_SETTEXT: return true;
    default: return false;
    }
}

LRESULT CALLBACK ButtonProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam) {
    const LONG type = GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK;
    if (PaintsItself(type)) return kx::CallRest(ButtonProc, button, message, wParam, lParam);
    if (!kx::IsOwnScheme()) {
        const LRESULT result = kx::CallRest(ButtonProc, button, message, wParam, lParam);
        // What the platform paints at once, it paints without the outline, and around one that was there.
        if (PaintsAtOnce(message) && type != BS_GROUPBOX && IsWindowVisible(button))
            InvalidateRect(button, nullptr, TRUE);
        if (message == WM_PAINT && wParam == 0 && type != BS_GROUPBOX && IsWindow(button)) DrawFocusOver(button);
        return result;
    }
    if (message == WM_PAINT && wParam == 0) {
        PaintButton(button, type);
        return 0;
    }
    if (message == WM_ERASEBKGND) return 1;
    const LRESULT result = kx::CallRest(ButtonProc, button, message, wParam, lParam);
    // Over the system's colours, before anybody sees them. The host, which hears of the focus meanwhile, may have
    // hidden the button.
    if (PaintsAtOnce(message) && IsWindowVisible(button))
        RedrawWindow(button, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    return result;
}

// ---- Drop-down lists -----------------------------------------------------------------------------------------------

// Of one whose list is always open, the field alone.
RECT FieldOf(HWND combo, const COMBOBOXINFO& info) {
    RECT field{};
    GetClientRect(combo, &field);
    if ((GetWindowLongW(combo, GWL_STYLE) & 3) != CBS_SIMPLE) return field;
    field = info.rcItem;
    InflateRect(&field, 2, 2);
    return field;
}

bool IsDrawnByOwner(HWND combo) {
    return (GetWindowLongW(combo, GWL_STYLE) & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) != 0;
}

// The owner draws what is in the field. The focus is shown around it.
void AskOwner(HWND combo, HDC dc, const RECT& place, bool enabled) {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_COMBOBOX;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(combo));
    item.itemID = static_cast<UINT>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = ODS_COMBOBOXEDIT | ODS_NOFOCUSRECT | (enabled ? 0u : UINT{ODS_DISABLED});
    item.hwndItem = combo;
    item.hDC = dc;
    item.rcItem = place;
    item.itemData = static_cast<ULONG_PTR>(SendMessageW(combo, CB_GETITEMDATA, item.itemID, 0));
    SendMessageW(GetParent(combo), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

void PaintCombo(HWND combo) {
    const kx::SchemePaintDC dc(combo);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    const LONG kind = GetWindowLongW(combo, GWL_STYLE) & 3;
    RECT client{};
    GetClientRect(combo, &client);
    if (kind != CBS_DROPDOWNLIST) {
        ExcludeClipRect(dc, info.rcItem.left, info.rcItem.top, info.rcItem.right, info.rcItem.bottom);
        FillRect(dc, &client, KX_GetSysColorBrush(COLOR_BTNFACE));
    }
    const RECT field = FieldOf(combo, info);
    const bool focused = GetFocus() == combo || IsChild(combo, GetFocus()), enabled = IsWindowEnabled(combo) != FALSE;
    FillRect(dc, &field, KX_GetSysColorBrush(COLOR_WINDOW));
    kx::FrameInScheme(dc, field, COLOR_BTNSHADOW);
    if (focused) KX_DrawFocusOutline(dc, field, COLOR_WINDOW);
    if (kind == CBS_SIMPLE) return;
    RECT arrow = field;
    arrow.left = kind == CBS_DROPDOWN ? info.rcButton.left : arrow.right - (field.bottom - field.top);
    kx::DrawSchemeArrow(dc, arrow, kx::Toward::Down, enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    if (kind == CBS_DROPDOWN) return;
    RECT text = field;
    text.right = arrow.left;
    if (IsDrawnByOwner(combo)) {
        InflateRect(&text, -1, -1);
        return AskOwner(combo, dc, text, enabled);
    }
    text.left += CKxGUILayoutManager::Zoomed(4);
    SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    DrawTextW(dc, Label(combo).text, -1, &text, DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

LRESULT AnswerColor(HWND window, UINT message, HDC dc, HWND control) {
    const bool field = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const int back = field ? COLOR_WINDOW : COLOR_BTNFACE;
    const bool grayed = control != window && !IsWindowEnabled(control);
    SetTextColor(dc, KX_GetSysColor(grayed ? COLOR_GRAYTEXT : field ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
    SetBkColor(dc, KX_GetSysColor(back));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(back));
}

bool AsksForColor(UINT message) { return message >= WM_CTLCOLOREDIT && message <= WM_CTLCOLORSTATIC; }

// What the platform shows of a closed one it draws without waiting for WM_PAINT: where the mouse is, that the arrow is
// pressed, an entry that was typed to.
bool ChangesCombo(HWND combo, UINT message) {
    static HWND s_under = nullptr;  // the mouse; every move would be one to draw for
    switch (message) {
    case WM_MOUSEMOVE: return std::exchange(s_under, combo) != combo;
    case WM_MOUSELEAVE: s_under = nullptr; return true;
    case CB_SETCURSEL:
    case CB_SHOWDROPDOWN:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_COMMAND:
    case WM_CAPTURECHANGED:
    case WM_UPDATEUISTATE: return true;
    default:
        return (message > WM_MOUSEMOVE && message <= WM_MOUSELAST) || (message >= WM_KEYFIRST && message <= WM_KEYLAST);
    }
}

LRESULT CALLBACK ComboProc(HWND combo, UINT message, WPARAM wParam, LPARAM lParam) {
    if (kx::IsOwnScheme()) {
        if (message == WM_PAINT && wParam == 0) {
            PaintCombo(combo);
            return 0;
        }
        if (AsksForColor(message)) {
            return AnswerColor(combo, message, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        }
        const bool changes = ChangesCombo(combo, message);
        const LRESULT result = kx::CallRest(ComboProc, combo, message, wParam, lParam);
        if (changes && IsWindow(combo)) InvalidateRect(combo, nullptr, FALSE);
        return result;
    }
    return kx::CallRest(ComboProc, combo, message, wParam, lParam);
}

// The list of a drop-down is no child of it.
void FollowInCombo(HWND combo) {
    kx::Subclass(combo, ComboProc);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(combo, &info) && info.hwndList) kx::FollowColorSchemeInEdge(info.hwndList);
}

// ---- Lines and rectangles ------------------------------------------------------------------------------------------

bool IsEtchedLine(HWND label) {
    const LONG type = GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK;
    return type == SS_ETCHEDHORZ || type == SS_ETCHEDVERT;
}

bool IsUpright(HWND line) { return (GetWindowLongW(line, GWL_STYLE) & SS_TYPEMASK) == SS_ETCHEDVERT; }

// The whole line, shadow and light.
LRESULT CALLBACK EtchedLineProc(HWND line, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT || wParam != 0) return kx::CallRest(EtchedLineProc, line, message, wParam, lParam);
    const kx::SchemePaintDC dc(line);
    RECT client{};
    GetClientRect(line, &client);
    FillRect(dc, &client, KX_GetSysColorBrush(kx::IsOwnScheme() ? COLOR_BTNFACE : COLOR_BTNHIGHLIGHT));
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

// What a label that is a rectangle or a frame is filled with; -1 for others.
int ColorOfRectangle(HWND label) {
    const LONG type = GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK;
    if (type < SS_BLACKRECT || type > SS_WHITEFRAME) return -1;
    constexpr int colors[] = {COLOR_3DDKSHADOW, COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT};
    return colors[(type - SS_BLACKRECT) % 3];
}

LRESULT CALLBACK RectangleProc(HWND label, UINT message, WPARAM wParam, LPARAM lParam) {
    const int color = kx::IsOwnScheme() ? ColorOfRectangle(label) : -1;
    if (message != WM_PAINT || wParam != 0 || color < 0) {
        const LRESULT result = kx::CallRest(RectangleProc, label, message, wParam, lParam);
        // At these it paints without waiting.
        if (color >= 0 && (message == WM_ENABLE || message == WM_SETTEXT)) InvalidateRect(label, nullptr, FALSE);
        return result;
    }
    const kx::SchemePaintDC dc(label);
    RECT client{};
    GetClientRect(label, &client);
    const bool isFrame = (GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK) >= SS_BLACKFRAME;
    (isFrame ? FrameRect : FillRect)(dc, &client, KX_GetSysColorBrush(color));
    return 0;
}

// ---- Parents -------------------------------------------------------------------------------------------------------

// Stands before the window's own procedure, which in another scheme than the system's could only answer wrongly.
LRESULT CALLBACK ParentProc(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) {
    if (kx::IsOwnScheme() && AsksForColor(message) && message != WM_CTLCOLORMSGBOX) {
        return AnswerColor(parent, message, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    }
    if (kx::IsOwnScheme() && message == WM_ERASEBKGND && kx::IsClass(parent, L"#32770")) {
        RECT client{};
        GetClientRect(parent, &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, KX_GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    return kx::CallRest(ParentProc, parent, message, wParam, lParam);
}

// A window with a title, which tooltips and open lists have not.
bool IsFrame(HWND window) {
    return GetAncestor(window, GA_PARENT) == GetDesktopWindow() &&
           (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
}

void Follow(HWND window) {
    if (KX_IsWindowMarkedToSkipPaint(window)) return;
    if (kx::IsClass(window, WC_BUTTONW)) {
        kx::Subclass(window, ButtonProc);
    } else if (kx::IsClass(window, WC_COMBOBOXW)) {
        FollowInCombo(window);
    } else if (kx::IsClass(window, WC_STATICW) && IsEtchedLine(window)) {
        FollowInEtchedLine(window);
    } else if (kx::IsClass(window, WC_STATICW) && ColorOfRectangle(window) >= 0) {
        kx::Subclass(window, RectangleProc);
    } else if (kx::IsClass(window, WC_EDITW) || kx::IsClass(window, WC_LISTBOXW) || kx::IsClass(window, L"ComboLBox") ||
               kx::IsClass(window, WC_STATICW)) {
        kx::FollowColorSchemeInEdge(window);
    } else if (kx::IsClass(window, WC_LISTVIEWW)) {
        FollowColorSchemeInList(window);
        // It is the parent of what a label is edited with.
        kx::Subclass(window, ParentProc);
        kx::FollowColorSchemeInEdge(window);
    } else if (kx::IsClass(window, WC_SCROLLBARW)) {
        kx::FollowColorSchemeInScrollBar(window);
    } else if (kx::IsClass(window, TOOLTIPS_CLASSW)) {
        kx::FollowColorSchemeInToolTip(window);
    } else if (!kx::FollowColorSchemeInPart(window) && GetWindow(window, GW_CHILD)) {
        kx::Subclass(window, ParentProc);
        if (GetWindowLongW(window, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL)) kx::FollowColorSchemeInEdge(window);
    }
    if (IsFrame(window)) kx::FollowColorSchemeInFrame(window);
}

BOOL CALLBACK FollowEach(HWND window, LPARAM) {
    Follow(window);
    return TRUE;
}

// Looking into each of them is a round trip under Wine.
bool HasNothingInside(HWND window) {
    return kx::IsClass(window, WC_BUTTONW) || kx::IsClass(window, WC_STATICW) || kx::IsClass(window, WC_EDITW) ||
           kx::IsClass(window, WC_LISTBOXW);
}

}  // namespace

void KX_FollowColorScheme(HWND window) {
    if (!IsWindow(window)) return;
    Follow(window);
    if (!HasNothingInside(window)) EnumChildWindows(window, FollowEach, 0);
    if (kx::IsOwnScheme() && IsWindowVisible(window))
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
