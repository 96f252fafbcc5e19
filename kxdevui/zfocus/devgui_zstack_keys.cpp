// Keys and mouse in the controls of the Z stack panel.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_window.h>

#include <algorithm>
#include <iterator>

using namespace kx::ui;
using kx::zstack::ScaleValues;

namespace {

constexpr long kMarkGap = 2;  // pixels before the mark in a field
constexpr wchar_t kTab = L'\t', kEnter = L'\r', kEscape = 27, kSpace = L' ';

// The dialog manager of the host asks for every key whether the control wants it itself.
bool AsksForKey(const Message& message, WPARAM key) {
    if (message.id != WM_GETDLGCODE || !message.lParam) return false;
    const auto& asked = *reinterpret_cast<const MSG*>(message.lParam);
    return (asked.message == WM_KEYDOWN || asked.message == WM_CHAR) && asked.wParam == key;
}

bool IsPositionEdit(int id) { return id >= IDC_ZS_EDIT_TOP && id <= IDC_ZS_EDIT_BOTTOM; }

std::optional<double> PositionOf(const ScaleValues& values, int id) {
    return id == IDC_ZS_EDIT_TOP ? values.top : id == IDC_ZS_EDIT_MIDDLE ? values.home : values.bottom;
}

}  // namespace

// ---- Where the focus goes ------------------------------------------------------------------------------------------

// What loses the focus may be validated, and the panel be destroyed on that.
void CKxDevUI_ZStack::Focus(HWND from, bool backwards) {
    const HWND next = m_hWnd ? GetNextDlgTabItem(m_hWnd, from, backwards) : nullptr;
    if (!next) return;
    const Alive alive(this);
    KX_ShowFocusFromNowOn(m_hWnd);
    if (alive && m_hWnd) SetFocus(next);
    if (alive && m_hWnd) SelectFocused();
}

void CKxDevUI_ZStack::SelectFocused() {
    const HWND focus = GetFocus();
    const int id = IsMyWindow(focus) ? GetDlgCtrlID(focus) : 0;
    if (id < IDC_ZS_EDIT_TOP || id > IDC_ZS_EDIT_ABOVE) return;
    // With the habit, a click places the caret.
    if (GetKeyState(VK_LBUTTON) >= 0 || !KX_GetFieldHabits(focus).select) SendMessageW(focus, EM_SETSEL, 0, -1);
}

void CKxDevUI_ZStack::FocusNext(HWND from) { Focus(from, false); }
void CKxDevUI_ZStack::FocusPrev(HWND from) { Focus(from, true); }

// ---- Edits ---------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ZStack::EdtWndProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_ZStack, &CKxDevUI_ZStack::HandleEdit>({edit, message, wParam, lParam});
}

Handled CKxDevUI_ZStack::HandleEdit(const Message& message) {
    NoteField(message);
    // The first Escape undoes, the second is the host's.
    if (AsksForKey(message, kEnter) || WantsEscape(message, true)) return CallPrevious(message) | DLGC_WANTMESSAGE;
    switch (message.id) {
    case WM_CHAR: return EditOnChar(message);
    case WM_PASTE: return TypeInField(message, FieldOf(message.window));
    // Their characters are handled; a single-line edit makes a click on the dialog's default button of the key.
    case WM_KEYDOWN: return message.wParam == VK_RETURN || message.wParam == VK_ESCAPE ? Handled(0) : std::nullopt;
    case WM_LBUTTONDBLCLK: return EditOnLButtonDblClk(message.window);
    case WM_PAINT: return EditOnPaint(message);
    case WM_SETCURSOR: return LOWORD(message.lParam) == HTCLIENT ? EditOnSetCursor(message.window) : std::nullopt;
    case WM_SETFOCUS: SelectOnFocus(message); return std::nullopt;
    default: return std::nullopt;
    }
}

Field CKxDevUI_ZStack::FieldOf(HWND edit) const {
    return {.allowed = [this, id = GetDlgCtrlID(edit)] { return AllowedText(AllowedIn(id)); }};
}

Handled CKxDevUI_ZStack::EditOnChar(const Message& message) {
    const HWND edit = message.window;
    switch (static_cast<wchar_t>(message.wParam)) {
    case kTab: Focus(edit, GetKeyState(VK_SHIFT) < 0); return 0;
    case kEnter: EnterEdit(edit); return 0;
    case kEscape: RevertField(edit); return 0;
    // Where numbers are typed, a key must not move anything.
    case kSpace:
        if (!IsWritable(GetDlgCtrlID(edit))) return EditOnLButtonDblClk(edit);
        [[fallthrough]];
    default: return TypeInField(message, FieldOf(edit));
    }
}

void CKxDevUI_ZStack::EnterEdit(HWND edit) {
    if (!CanBeRead(edit)) return ShowAnswer(edit, FieldOf(edit).allowed());
    const Alive alive(this);
    const std::wstring typed = TextOf(edit).str();
    m_refused = false;
    // Without a field to go to, what was typed is entered by leaving it all the same.
    if (!GoOnFrom(edit, m_hWnd, true)) FocusNext(edit);
    // Enter has not left it: the user goes on with what the record has refused.
    if (!alive || !m_hWnd || !m_refused || GetFocus() != edit || !KX_GetFieldHabits(edit).answer) return;
    ShowAsTyped(edit, [&] { SetWindowTextW(edit, typed.c_str()); });
    if (alive && m_hWnd) SendMessageW(edit, EM_SETSEL, typed.size(), static_cast<LPARAM>(typed.size()));
}

Handled CKxDevUI_ZStack::EditOnLButtonDblClk(HWND edit) {
    const int id = GetDlgCtrlID(edit);
    if (!IsPositionEdit(id) || !m_data) return std::nullopt;
    if (const Position z = PositionOf(ReadScale(), id)) RequestZ(*z);
    return 0;
}

// The platform's edit draws text without a WM_PAINT as well, but never in its margins.
void CKxDevUI_ZStack::MakeRoomForMark(HWND edit) {
    RECT client{};
    GetClientRect(edit, &client);
    SendMessageW(edit, EM_SETMARGINS, EC_LEFTMARGIN, client.bottom / 4 + 2 * kMarkGap);
}

// A mark at the position where Z stands, beside the text.
Handled CKxDevUI_ZStack::EditOnPaint(const Message& message) {
    const int id = GetDlgCtrlID(message.window);
    if (!IsPositionEdit(id) || message.wParam) return std::nullopt;
    const LRESULT result = CallPrevious(message);
    if (!m_hWnd || !IsWindow(message.window)) return result;
    const ScaleValues& values = kx::zstack::ShownOf(m_hWnd)->scale;
    if (!kx::zstack::StandsAt(values, PositionOf(values, id))) return result;
    RECT client{};
    GetClientRect(message.window, &client);
    const WindowDC dc(message.window);
    const Selection brush(dc, GetStockObject(DC_BRUSH)), pen(dc, GetStockObject(NULL_PEN));
    SetDCBrushColor(dc, IsWindowEnabled(message.window) ? kx::zstack::MarkColor() : KX_GetSysColor(COLOR_GRAYTEXT));
    const long room = LOWORD(SendMessageW(message.window, EM_GETMARGINS, 0, 0));
    const long half = std::min(client.bottom / 4, room - kMarkGap), middle = client.bottom / 2;
    const POINT corners[] = {{kMarkGap, middle - half}, {kMarkGap + half, middle}, {kMarkGap, middle + half}};
    Polygon(dc, corners, 3);
    return result;
}

Handled CKxDevUI_ZStack::EditOnSetCursor(HWND edit) {
    const int id = GetDlgCtrlID(edit);
    if (!IsPositionEdit(id) || !m_data || !PositionOf(ReadScale(), id)) return std::nullopt;
    SetCursor(LoadCursorW(nullptr, IDC_HAND));
    return TRUE;
}

// ---- Buttons -------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ZStack::BtnWndProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_ZStack, &CKxDevUI_ZStack::HandleButton>({button, message, wParam, lParam});
}

Handled CKxDevUI_ZStack::HandleButton(const Message& message) {
    const HWND button = message.window;
    if (AsksForKey(message, kEnter)) return CallPrevious(message) | DLGC_WANTMESSAGE;
    if (TrackHover(message)) InvalidateRect(button, nullptr, FALSE);
    const bool menu = GetDlgCtrlID(button) == IDC_ZS_PIEZO && m_piezo.HasMenu();
    switch (message.id) {
    case WM_CHAR: return ButtonOnChar(button, static_cast<wchar_t>(message.wParam));
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: return menu && message.wParam == VK_DOWN ? ButtonMenu(button) : std::nullopt;
    case WM_CONTEXTMENU: return menu ? ButtonMenu(button) : std::nullopt;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        RECT client{};
        GetClientRect(button, &client);
        const bool onArrow = static_cast<short>(LOWORD(message.lParam)) >= client.right - kx::zstack::ArrowWidth();
        return menu && onArrow ? ButtonMenu(button) : std::nullopt;
    }
    case WM_GETDLGCODE:
        // The arrow that opens the menu is not the dialog manager's.
        return menu ? Handled(CallPrevious(message) | DLGC_WANTARROWS) : std::nullopt;
    default: return std::nullopt;
    }
}

Handled CKxDevUI_ZStack::ButtonOnChar(HWND button, wchar_t character) {
    switch (character) {
    case kTab: Focus(button, GetKeyState(VK_SHIFT) < 0); return 0;
    case kEnter: SendMessageW(button, BM_CLICK, 0, 0); return 0;
    default: return std::nullopt;
    }
}

Handled CKxDevUI_ZStack::ButtonMenu(HWND button) {
    RECT anchor{};
    GetWindowRect(button, &anchor);
    const Alive alive(this);
    SetFocus(button);
    if (!alive || !m_hWnd) return 0;
    const int entry = m_piezo.Track(m_hWnd, anchor);
    if (alive && m_hWnd && entry >= 0) PickPiezo(static_cast<unsigned int>(entry));
    return 0;
}

// ---- The list of devices -------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_ZStack::CbxWndProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_ZStack, &CKxDevUI_ZStack::HandleList>({list, message, wParam, lParam});
}

Handled CKxDevUI_ZStack::HandleList(const Message& message) {
    if (AsksForKey(message, kEnter)) return CallPrevious(message) | DLGC_WANTMESSAGE;
    return message.id == WM_CHAR ? ComboOnChar(message.window, static_cast<wchar_t>(message.wParam)) : std::nullopt;
}

Handled CKxDevUI_ZStack::ComboOnChar(HWND list, wchar_t character) {
    const bool open = SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != FALSE;
    if (open || (character != kTab && character != kEnter)) return std::nullopt;
    Focus(list, character == kTab && GetKeyState(VK_SHIFT) < 0);
    return 0;
}
