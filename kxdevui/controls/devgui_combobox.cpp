#include <kxdevui/controls/devgui_combobox.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_field.h>
#include <kxsystem/kx_number.h>

using namespace kx::ui;

namespace {

constexpr int kEdge = 2;  // of the list, both lines
constexpr std::size_t kMostQuoted = 30;

// What the platform gives a field beyond what it is told to: two pixels under Wine.
long s_more = 0;

long HeightOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect.bottom - rect.top;
}

// By which a key leads on in a list, in values; 0 for other keys.
int StepOfKey(WPARAM key, int page, bool inText) {
    constexpr int all = std::numeric_limits<int>::max();
    switch (key) {
    case VK_UP: return -1;
    case VK_DOWN: return 1;
    case VK_PRIOR: return -page;
    case VK_NEXT: return page;
    case VK_LEFT: return inText ? 0 : -1;
    case VK_RIGHT: return inText ? 0 : 1;
    case VK_HOME: return inText ? 0 : -all;
    case VK_END: return inText ? 0 : all;
    default: return 0;
    }
}

}  // namespace

const ListControl::Kind CKxDevUI_ComboBox::kKind =
    KindOf<CKxDevUI_ComboBox>(CB_DELETESTRING, CB_RESETCONTENT, CB_SETITEMHEIGHT);

CKxDevUI_ComboBox::CKxDevUI_ComboBox()
    : ListControl(this, {.name = L"KxDevUI_ComboBox", .size = {120, 21}, .title = {}, .ownLayout = true}, kKind) {}

CKxDevUI_ComboBox::~CKxDevUI_ComboBox() { Binding::EndOwnWindow(this); }

// ---- Creation ------------------------------------------------------------------------------------------------------

void CKxDevUI_ComboBox::Adopt(HWND placeholder) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(placeholder, &info)) {
        if ((GetWindowLongW(placeholder, GWL_STYLE) & 3) != CBS_DROPDOWNLIST && !m_typing)
            m_typing = Typing{.anyText = true};
        RECT open{};
        SendMessageW(placeholder, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
        const auto row = static_cast<long>(SendMessageW(placeholder, CB_GETITEMHEIGHT, 0, 0));
        const long rows = row > 0 ? (open.bottom - open.top - HeightOf(placeholder)) / row : 0;
        if (rows > 1) m_shownRows = static_cast<int>(rows);
    }
    ListControl::Adopt(placeholder);
}

long CKxDevUI_ComboBox::DropHeight() const { return m_shownRows * RowHeight() + kEdge; }

bool CKxDevUI_ComboBox::Make(const Parts& parts) {
    Begin();
    m_edit = nullptr;
    m_field = {};
    m_picked = false;
    const DWORD kind = m_typing ? DWORD{CBS_DROPDOWN} : DWORD{CBS_DROPDOWNLIST};
    const RECT place{0, 0, m_width, m_height + DropHeight()};
    if (!MakeInner(parts, L"COMBOBOX", place,
                   kind | CBS_AUTOHSCROLL | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL))
        return false;
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (!m_inner || !GetComboBoxInfo(m_inner, &info)) return true;
    m_rows = info.hwndList;
    Watch(m_rows);
    if (m_typing) {
        m_edit = info.hwndItem;
        UseInputMethod(m_edit, m_typing->anyText);
        Watch(m_edit);
    }
    Fill();
    if (m_edit) Show();
    Layout(false);
    return static_cast<bool>(parts);
}

void CKxDevUI_ComboBox::SetRows(int rows) {
    m_shownRows = std::clamp(rows, 1, 1000);
    Layout(true);
}

void CKxDevUI_ComboBox::SetEditable(const Typing& typing) {
    m_unit = typing.unit ? typing.unit : L"";
    m_typing = typing;
    m_typing->unit = m_unit.c_str();
    Remake();
}

void CKxDevUI_ComboBox::SetNotEditable() {
    m_typing.reset();
    Remake();
}

// The box sizes itself by its field: what it is given is the height of its list.
void CKxDevUI_ComboBox::Layout(bool anew) {
    RECT client{}, box{};
    m_field = {};
    if (!m_inner || !GetClientRect(m_hWnd, &client)) return;
    for (int i = 0; i < 2 && HeightOf(m_inner) != client.bottom; ++i) {
        const auto field = static_cast<long>(SendMessageW(m_inner, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
        const long wanted = std::max(1L, field + client.bottom - HeightOf(m_inner));
        SendMessageW(m_inner, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(1L, wanted - s_more));
        s_more += static_cast<long>(SendMessageW(m_inner, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0)) - wanted;
        s_more = std::clamp(s_more, 0L, 10L);
    }
    GetWindowRect(m_inner, &box);
    if (!anew && box.right - box.left == client.right) return;
    SetWindowPos(m_inner, nullptr, 0, 0, client.right, client.bottom + DropHeight(), SWP_NOZORDER | SWP_NOACTIVATE);
}

// ---- What is chosen ------------------------------------------------------------------------------------------------

// The platform takes as long to ask for the field to be drawn as that takes, so what shows a closed list's value is
// drawn here: where and as it was asked for last.
void CKxDevUI_ComboBox::Select(int index) {
    if (m_edit || !m_field.hwndItem || IsWindowVisible(m_rows)) {
        CallPrevious({m_inner, CB_SETCURSEL, static_cast<WPARAM>(index), 0});
        // Past what paints it in a scheme, which therefore has to be told.
        if (KX_GetColorScheme() != eKxColorScheme_System) InvalidateRect(m_inner, nullptr, FALSE);
        return;
    }
    CallPrevious({m_rows, LB_SETCURSEL, static_cast<WPARAM>(index), 0});
    m_field.itemID = static_cast<UINT>(index);
    DrawAtOnce(m_field);
    NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, m_inner, OBJID_CLIENT, CHILDID_SELF);
}

void CKxDevUI_ComboBox::Show() {
    const int index = m_values.First();
    const HWND edit = m_edit;
    if (CallPrevious({m_rows, LB_GETCURSEL, 0, 0}) != index || edit) Select(index);
    if (!edit) return;
    if (index < 0) SetWindowTextW(edit, m_values.Chosen().typed.c_str());
    SendMessageW(edit, EM_SETMODIFY, FALSE, 0);
}

void CKxDevUI_ComboBox::SetText(const wchar_t* text) {
    if (SetSelection(text) || !m_typing) return;
    SetSelection(-1);
    m_values.Choose({{}, text ? text : L""});
    ShowChoice();
}

CKxStringW CKxDevUI_ComboBox::GetText() const { return std::wstring(m_values.ChosenText()).c_str(); }

void CKxDevUI_ComboBox::Request(bool& veto) {
    if (m_values.First() >= 0) return OnSelectionChangeRequest(m_values.First(), veto);
    const std::wstring typed = m_values.Chosen().typed;
    OnValueChangeRequest(typed.c_str(), veto);
}

void CKxDevUI_ComboBox::OnValueChangeRequest(const wchar_t*, bool&) { TellParent(); }

bool CKxDevUI_ComboBox::IsOpen() const { return SendMessageW(m_inner, CB_GETDROPPEDSTATE, 0, 0) != FALSE; }

// Where keys lead on from.
int CKxDevUI_ComboBox::Here() const {
    return IsOpen() ? static_cast<int>(SendMessageW(m_rows, LB_GETCURSEL, 0, 0)) : m_values.First();
}

// To a value by keys: in the open list the mark moves alone.
void CKxDevUI_ComboBox::Go(int index) {
    if (!m_values.IsUsable(index) || index == Here()) return;
    if (IsOpen())
        SendMessageW(m_rows, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    else
        Choose({{index}, {}});
}

void CKxDevUI_ComboBox::Command(int, int code) {
    switch (code) {
    case CBN_SELENDOK: m_picked = true; return HasActed();
    case CBN_SELENDCANCEL: m_picked = false; return HasActed();
    case CBN_SELCHANGE: m_picked = m_picked || !IsOpen(); return HasActed();
    case CBN_CLOSEUP: return HasActed();
    default: return;
    }
}

void CKxDevUI_ComboBox::Settle() {
    if (IsOpen()) return;
    const int index = static_cast<int>(SendMessageW(m_inner, CB_GETCURSEL, 0, 0));
    const bool picked = std::exchange(m_picked, false);
    if (picked && m_values.IsUsable(index)) return Choose({{index}, {}});
    if (!IsTyped()) ShowChoice();
}

// ---- What is typed -------------------------------------------------------------------------------------------------

bool CKxDevUI_ComboBox::IsTyped() const { return m_edit && SendMessageW(m_edit, EM_GETMODIFY, 0, 0); }

std::wstring CKxDevUI_ComboBox::AllowedInWords() const {
    return AllowedText({m_typing->minimum, m_typing->maximum, false, m_unit.c_str()});
}

// The value of the list that a typed text means; -1 for a text that may be entered, empty for one that may not.
std::optional<int> CKxDevUI_ComboBox::MeantByTyped(const std::wstring& text) const {
    int index = m_values.Find(text.c_str());
    double typed = 0;
    const bool isNumber = !m_typing->anyText && KX_StringToDouble(text.c_str(), typed);
    for (int i = 0; isNumber && index < 0 && i < m_values.Count(); ++i) {
        // "20" means "20 ms".
        std::size_t length = 0;
        if (KX_LeadingNumber(m_values.At(i).text.c_str(), &length) == typed && length > 0) index = i;
    }
    if (index >= 0) return m_values.IsUsable(index) ? std::optional(index) : std::nullopt;
    const bool allowed =
        m_typing->anyText || MayBeEntered(text, {m_typing->minimum, m_typing->maximum, false, m_unit.c_str()});
    return allowed ? std::optional(-1) : std::nullopt;
}

// False for what may not be entered. The control may be gone afterwards.
bool CKxDevUI_ComboBox::TakeTyped() {
    if (!IsTyped()) return true;
    const std::wstring text = TextOf(m_edit).str();
    const auto meant = MeantByTyped(text);
    if (!meant) return false;
    const Alive alive(this);
    const HWND edit = m_edit;
    HideAnswer(edit);
    Choose(*meant >= 0 ? ListChoice{{*meant}, {}} : ListChoice{{}, text});
    if (alive && m_edit == edit) FieldEntered(edit);
    return true;
}

void CKxDevUI_ComboBox::LeaveEdit() {
    const HWND edit = m_edit;
    const std::wstring text = TextOf(edit).str();
    if (TakeTyped()) return;
    ShowChoice();
    if (KX_GetFieldHabits(edit).answer)
        ShowAnswer(edit, L"\"" + text.substr(0, kMostQuoted) + L"\": " + AllowedInWords());
}

Handled CKxDevUI_ComboBox::OnEnterKey() {
    const Alive alive(this);
    const HWND edit = m_edit;
    if (!TakeTyped()) {
        if (KX_GetFieldHabits(edit).answer)
            ShowAnswer(edit, AllowedInWords());
        else
            ShowChoice();
        return 0;
    }
    if (alive && m_edit == edit) GoOnFrom(edit, ParentOf(m_hWnd), false);
    return 0;
}

Handled CKxDevUI_ComboBox::BeforeEdit(const Message& message) {
    NoteField(message);
    switch (message.id) {
    case WM_SETFOCUS: SelectOnFocus(message); return std::nullopt;
    case WM_KILLFOCUS: {
        const auto to = reinterpret_cast<HWND>(message.wParam);
        if (to != m_inner && to != m_rows) LeaveEdit();
        return std::nullopt;
    }
    case WM_GETDLGCODE:
        if (message.wParam == VK_RETURN && IsTyped()) return CallPrevious(message) | DLGC_WANTALLKEYS;
        return WantsEscape(message) ? Handled(CallPrevious(message) | DLGC_WANTMESSAGE) : std::nullopt;
    case WM_CHAR:
        if (message.wParam == VK_RETURN) return IsOpen() ? std::nullopt : OnEnterKey();
        if (message.wParam > VK_ESCAPE && IsOpen()) SendMessageW(m_inner, CB_SHOWDROPDOWN, FALSE, 0);
        [[fallthrough]];
    case WM_PASTE:
        return TypeInField(message, {.anyText = m_typing->anyText, .allowed = [this] { return AllowedInWords(); }});
    default: return std::nullopt;
    }
}

// ---- Messages ------------------------------------------------------------------------------------------------------

// Over what cannot be used, the mouse does nothing.
Handled CKxDevUI_ComboBox::BeforeRows(const Message& message) const {
    switch (message.id) {
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP: {
        const LRESULT row = SendMessageW(m_rows, LB_ITEMFROMPOINT, 0, message.lParam);
        const bool isOn = HIWORD(row) == 0 && m_values.Has(LOWORD(row)) && !m_values.IsUsable(LOWORD(row));
        return isOn ? Handled(0) : std::nullopt;
    }
    default: return std::nullopt;
    }
}

Handled CKxDevUI_ComboBox::OnKey(WPARAM key) {
    const int step = StepOfKey(key, std::max(1, m_shownRows - 1), m_edit != nullptr);
    if (step == 0) return std::nullopt;
    Go(m_values.Reach(Here(), step));
    return 0;
}

Handled CKxDevUI_ComboBox::Before(const Message& message) {
    if (message.window == m_rows) {
        // Under Wine a box that gets another size or font closes its list without a word.
        if (message.id == WM_SHOWWINDOW && !message.wParam && !m_picked) HasActed();
        return BeforeRows(message);
    }
    switch (message.id) {
    case WM_KEYDOWN:
        if (const Handled answer = OnKey(message.wParam)) return answer;
        break;
    case WM_CHAR:
        if (m_edit) break;
        if (const auto index = TypedTo(static_cast<wchar_t>(message.wParam), Here())) return Go(*index), 0;
        break;
    case WM_MOUSEWHEEL: {
        if (IsOpen()) break;
        const auto notches = Notches(message.wParam);
        if (!notches) return DefWindowProcW(m_inner, message.id, message.wParam, message.lParam);
        if (*notches != 0) Go(m_values.Reach(Here(), -*notches));
        return 0;
    }
    default: break;
    }
    return message.window == m_edit ? BeforeEdit(message) : std::nullopt;
}

Handled CKxDevUI_ComboBox::Handle(const Message& message) {
    switch (message.id) {
    case WM_DESTROY: m_edit = nullptr; break;
    case WM_DRAWITEM:
        if (const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
            item.itemState & ODS_COMBOBOXEDIT)
            m_field = item;
        break;
    case WM_SIZE: Layout(true); return 0;
    case WM_SETFONT: {
        const Handled answer = HandleList(message);
        Layout(true);
        return answer;
    }
    default: break;
    }
    return HandleList(message);
}
