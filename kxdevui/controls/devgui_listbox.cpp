#include <kxdevui/controls/devgui_listbox.h>

#include <algorithm>
#include <limits>

#include <kxdevui/framework/ui_control.h>

using namespace kx::ui;

namespace {

// The platform's procedure alone; nobody before it has to do with messages of lists.
int Ask(HWND list, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return static_cast<int>(CallPrevious({list, message, wParam, lParam}));
}

bool IsHeld(int key) { return GetKeyState(key) < 0; }

}  // namespace

const ListControl::Kind CKxDevUI_ListBox::kKind =
    KindOf<CKxDevUI_ListBox>(LB_DELETESTRING, LB_RESETCONTENT, LB_SETITEMHEIGHT);

CKxDevUI_ListBox::CKxDevUI_ListBox()
    : ListControl(this, {.name = L"KxDevUI_ListBox", .size = {120, 80}, .title = {}, .ownLayout = true}, kKind) {}

CKxDevUI_ListBox::~CKxDevUI_ListBox() { Binding::EndOwnWindow(this); }

void CKxDevUI_ListBox::Adopt(HWND placeholder) {
    wchar_t name[16] = L"";
    GetClassNameW(placeholder, name, 16);
    const LONG style = GetWindowLongW(placeholder, GWL_STYLE);
    if (lstrcmpiW(name, L"ListBox") == 0 && (style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL))) m_multiple = true;
    ListControl::Adopt(placeholder);
}

bool CKxDevUI_ListBox::Make(const Parts& parts) {
    Begin();
    m_hasFocus = false;
    // Of any height, so that it stands in exactly the place that it is given.
    DWORD style = WS_BORDER | WS_VSCROLL | LBS_NOTIFY | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT;
    if (m_multiple) style |= LBS_EXTENDEDSEL;
    // To ask for its rows to be drawn takes the platform a third longer than to draw them.
    m_isDrawn = NeedsDrawing();
    if (m_isDrawn) style |= LBS_OWNERDRAWFIXED;
    if (!MakeInner(parts, L"LISTBOX", {0, 0, m_width, m_height}, style)) return false;
    // Who draws is asked how high they are; otherwise it goes by the font.
    if (m_inner && !m_isDrawn) Ask(m_inner, LB_SETITEMHEIGHT, 0, RowHeight());
    Fill();
    return static_cast<bool>(parts);
}

// The platform's control cannot learn to ask: another takes its place, scrolled as it was.
void CKxDevUI_ListBox::Restyle() {
    if (m_isDrawn || !NeedsDrawing()) return;
    const Alive alive(this);
    const int top = Ask(m_inner, LB_GETTOPINDEX), caret = Ask(m_inner, LB_GETCARETINDEX);
    RemakeInPlace();
    if (!alive || !m_inner) return;
    if (m_multiple) Ask(m_inner, LB_SETCARETINDEX, static_cast<WPARAM>(caret));
    Ask(m_inner, LB_SETTOPINDEX, static_cast<WPARAM>(top));
}

// ---- What is chosen ------------------------------------------------------------------------------------------------

void CKxDevUI_ListBox::SetMultiple(bool multiple) {
    if (multiple == m_multiple) return;
    m_multiple = multiple;
    SetSelections(GetSelections());
    Remake();
}

void CKxDevUI_ListBox::SetSelections(const std::vector<int>& indexes) {
    std::vector<int> chosen = indexes;
    std::erase_if(chosen, [this](int index) { return !m_values.Has(index); });
    std::sort(chosen.begin(), chosen.end());
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    if (!m_multiple && chosen.size() > 1) chosen.erase(chosen.begin() + 1, chosen.end());
    SetSelection(chosen.empty() ? -1 : chosen.front());
    m_values.Choose({std::move(chosen), {}});
    ShowChoice();
}

bool CKxDevUI_ListBox::IsSelected(int index) const {
    const auto& chosen = m_values.Chosen().indexes;
    return std::binary_search(chosen.begin(), chosen.end(), index);
}

void CKxDevUI_ListBox::ShowValue(int index) {
    if (!m_inner || !m_values.Has(index)) return;
    RECT client{};
    GetClientRect(m_inner, &client);
    const int top = Ask(m_inner, LB_GETTOPINDEX), rows = std::max(1, static_cast<int>(client.bottom / RowHeight()));
    const int wanted = std::clamp(top, index - rows + 1, index);
    if (wanted != top) Ask(m_inner, LB_SETTOPINDEX, static_cast<WPARAM>(std::max(0, wanted)));
}

void CKxDevUI_ListBox::Show() {
    if (!m_multiple) {
        if (Ask(m_inner, LB_GETCURSEL) == m_values.First()) return;
        Ask(m_inner, LB_SETCURSEL, static_cast<WPARAM>(m_values.First()));
        // Under Wine half a row is enough for it to be seen, and the line of the focus is left behind.
        if (m_hasFocus) InvalidateRect(m_inner, nullptr, FALSE);
        return ShowValue(m_values.First());
    }
    const std::vector<int> marked = Marked(), chosen = m_values.Chosen().indexes;
    for (const int index : marked)
        if (!std::binary_search(chosen.begin(), chosen.end(), index)) Ask(m_inner, LB_SETSEL, FALSE, index);
    for (const int index : chosen)
        if (!std::binary_search(marked.begin(), marked.end(), index)) Ask(m_inner, LB_SETSEL, TRUE, index);
}

std::vector<int> CKxDevUI_ListBox::Marked() const {
    const int count = Ask(m_inner, LB_GETSELCOUNT);
    if (count <= 0) return {};
    std::vector<int> marked(static_cast<std::size_t>(count), 0);
    Ask(m_inner, LB_GETSELITEMS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(marked.data()));
    return marked;
}

void CKxDevUI_ListBox::Request(bool& veto) {
    if (!m_multiple) return OnSelectionChangeRequest(m_values.First(), veto);
    const std::vector<int> chosen = m_values.Chosen().indexes;
    OnSelectionsChangeRequest(chosen, veto);
}

void CKxDevUI_ListBox::OnSelectionsChangeRequest(const std::vector<int>&, bool&) { TellParent(); }

void CKxDevUI_ListBox::Settle() {
    std::vector<int> marked;
    if (m_multiple) marked = Marked();
    if (const int index = Ask(m_inner, LB_GETCURSEL); !m_multiple && index >= 0) marked = {index};
    // One that is chosen already stays so, as the host has it.
    std::erase_if(marked, [this](int index) { return !m_values.IsUsable(index) && !IsSelected(index); });
    // Nothing can be chosen only where several can.
    if (marked.empty() && !m_multiple) return ShowChoice();
    Choose({std::move(marked), {}});
}

// ---- Input ---------------------------------------------------------------------------------------------------------

int CKxDevUI_ListBox::Here() const { return m_multiple ? Ask(m_inner, LB_GETCARETINDEX) : m_values.First(); }

void CKxDevUI_ListBox::Go(int index) {
    if (!m_values.IsUsable(index)) return;
    ShowValue(index);
    if (m_multiple) {
        // The platform's mark is also where Shift begins.
        Ask(m_inner, LB_SETSEL, FALSE, -1);
        Ask(m_inner, LB_SETSEL, TRUE, index);
        Ask(m_inner, LB_SETANCHORINDEX, static_cast<WPARAM>(index));
        Ask(m_inner, LB_SETCARETINDEX, static_cast<WPARAM>(index));
    }
    Choose({{index}, {}});
}

Handled CKxDevUI_ListBox::OnKey(WPARAM key) {
    RECT client{};
    GetClientRect(m_inner, &client);
    const int page = std::max(1, static_cast<int>(client.bottom / RowHeight()) - 1);
    constexpr int all = std::numeric_limits<int>::max();
    int step = StepOf(key);
    if (key == VK_PRIOR || key == VK_NEXT) step = key == VK_NEXT ? page : -page;
    if (key == VK_HOME || key == VK_END) step = key == VK_END ? all : -all;
    if (step == 0) return std::nullopt;
    const Alive alive(this);
    const HWND inner = m_inner;
    KX_ShowFocusFromNowOn(inner);
    if (!alive || m_inner != inner) return 0;
    // The platform knows best what is extended.
    if (m_multiple && (IsHeld(VK_SHIFT) || IsHeld(VK_CONTROL))) return std::nullopt;
    Go(m_values.Reach(Here(), step));
    return 0;
}

// Over what cannot be used, the mouse chooses nothing.
Handled CKxDevUI_ListBox::OnMouse(const Message& message) {
    const int row = Ask(m_inner, LB_ITEMFROMPOINT, 0, message.lParam);
    const bool isOnUsable = HIWORD(row) != 0 || !m_values.Has(LOWORD(row)) || m_values.IsUsable(LOWORD(row));
    if (isOnUsable || (m_multiple && GetCapture() == m_inner)) return std::nullopt;
    if (message.id != WM_MOUSEMOVE) ::SetFocus(m_inner);
    return 0;
}

Handled CKxDevUI_ListBox::Before(const Message& message) {
    switch (message.id) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS: m_hasFocus = message.id == WM_SETFOCUS; return std::nullopt;
    case WM_KEYDOWN: return OnKey(message.wParam);
    case WM_CHAR:
        if (const auto index = TypedTo(static_cast<wchar_t>(message.wParam), Here())) return Go(*index), 0;
        return std::nullopt;
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: return OnMouse(message);
    case WM_MOUSEWHEEL:
        return HasFocus() ? std::nullopt : Handled(DefWindowProcW(m_inner, message.id, message.wParam, message.lParam));
    default: return std::nullopt;
    }
}

void CKxDevUI_ListBox::Command(int, int code) {
    if (code == LBN_SELCHANGE || code == LBN_SELCANCEL) HasActed();
}

Handled CKxDevUI_ListBox::Handle(const Message& message) {
    if (message.id == WM_SETFONT) {
        const Handled answer = HandleList(message);
        // Sized before its rows are, it may have scrolled.
        ShowValue(m_values.First());
        return answer;
    }
    if (message.id != WM_SIZE) return HandleList(message);
    RECT client{};
    if (m_inner && GetClientRect(m_hWnd, &client))
        SetWindowPos(m_inner, nullptr, 0, 0, client.right, client.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
    return 0;
}
