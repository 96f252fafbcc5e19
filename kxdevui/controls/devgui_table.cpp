// The table: its windows and messages, and editing in place; devgui_table_rows.cpp holds columns, rows and searching.
#include <kxdevui/controls/devgui_table.h>

#include <commctrl.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_field.h>

using namespace kx::ui;

namespace {

constexpr int kEditorId = 1006;
constexpr int kTextLength = 255;  // of a cell that is edited or told of
constexpr long kEditorOffset = 3;

WPARAM Index(int index) { return static_cast<WPARAM>(index); }

}  // namespace

// ---- The field -----------------------------------------------------------------------------------------------------

CKxDevUI_Table_Edit::CKxDevUI_Table_Edit(CKxDevUI_Table& table) : m_table(table) {
    SetId(kEditorId);
    Init(false, false, false);
    constexpr double none = std::numeric_limits<double>::infinity();
    SetRestriction(-none, none);
}

void CKxDevUI_Table_Edit::Prepare(HWND table) {
    const Alive alive(this);
    if (!Create(table, 0, 0, 20, 16, true, true) || !alive) return;
    ShowWindow(m_hWnd, SW_HIDE);
    SetParent(m_hWnd, nullptr);
    // No child any more, but a popup, whose menu would stand where a child's id does.
    SetWindowLongPtrW(m_hWnd, GWLP_ID, 0);
    const LONG_PTR style = GetWindowLongPtrW(m_hWnd, GWL_STYLE);
    SetWindowLongPtrW(m_hWnd, GWL_STYLE, (style & ~LONG_PTR{WS_CHILD | WS_TABSTOP}) | static_cast<LONG_PTR>(WS_POPUP));
    SetWindowLongPtrW(m_hWnd, GWL_EXSTYLE, GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE) | WS_EX_TOOLWINDOW);
}

void CKxDevUI_Table_Edit::Open(const RECT& cell, const wchar_t* text, bool isNumber) {
    // A window of its own has no way to the table's.
    KX_SetFieldHabits(m_hWnd, KX_GetFieldHabits(m_table));
    m_content = isNumber ? Content::Number : Content::Text;
    UseInputMethod(m_edit, !isNumber);
    // The frame that the table is in now carries it along, or it would end up behind that.
    SetWindowLongPtrW(m_hWnd, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(GetAncestor(m_table, GA_ROOT)));
    SetText(text);
    SendMessageW(m_edit, EM_SETSEL, 0, -1);
    // As low as it stands in the cell, beside which the window stands.
    m_textRows = {-kEditorOffset, cell.bottom - cell.top - kEditorOffset};
    SetWindowPos(m_hWnd, HWND_TOP, cell.left, cell.top, cell.right - cell.left, cell.bottom - cell.top, SWP_SHOWWINDOW);
    const Alive alive(this);
    SetFocus();
    if (alive) UpdateWindow(m_hWnd);
}

void CKxDevUI_Table_Edit::Close(HWND next) {
    const HWND window = m_hWnd;
    // What was typed has been taken or dropped.
    SendMessageW(m_edit, EM_SETMODIFY, FALSE, 0);
    // Before it is hidden, or the platform would choose a window to activate, which may be another program's.
    if (IsFocused()) ::SetFocus(next);
    ShowWindow(window, SW_HIDE);
}

void CKxDevUI_Table_Edit::OnEnter() { Notify(m_table, GetId(), kEditEnter, reinterpret_cast<LPARAM>(m_hWnd)); }
void CKxDevUI_Table_Edit::OnSetFocus() {}
void CKxDevUI_Table_Edit::OnKillFocus() { m_table.FinishEdit(false); }
void CKxDevUI_Table_Edit::OnChange() {}
void CKxDevUI_Table_Edit::OnChar(int character) {
    // The platform's edit beeps at what ends the cell, and has no use for what comes when the field is closed.
    m_charUsed = character == VK_ESCAPE || character == VK_TAB || !IsWindowVisible(m_hWnd);
    if (character == VK_TAB && !AnswerFault()) return;
    Notify(m_table, GetId(), kEditChar, character);
}

// ---- Life ----------------------------------------------------------------------------------------------------------

ATOM CKxDevUI_Table::m_Atom = 0;

CKxDevUI_Table::CKxDevUI_Table() {
    m_width = 100;
    m_height = 50;
}

CKxDevUI_Table::~CKxDevUI_Table() {
    Binding::CutLoose(this);
    Destroy();
}

HWND CKxDevUI_Table::Create(HWND parent, long x, long y, long width, long height, bool, bool) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        m_notify = parent;
        // The font goes to the list when that is there.
        const HWND window = creation.Window(this, m_Atom,
                                            {.name = L"KxDevUI_Table",
                                             .object = L"CKxDevUI_Table",
                                             .procedure = WndProc,
                                             .classStyle = CS_PARENTDC | CS_HREDRAW | CS_VREDRAW,
                                             .background = static_cast<HBRUSH>(GetStockObject(HOLLOW_BRUSH)),
                                             .ownLayout = true,
                                             .font = false},
                                            parent, {x, y}, {width, height});
        if (!window) return nullptr;
        if (!MakeList(WS_CHILD | WS_VISIBLE | LVS_REPORT, 0)) return nullptr;
        m_editor.Prepare(m_hWnd);
        return creation ? m_hWnd : nullptr;
    });
}

HWND CKxDevUI_Table::Create(HWND listView) {
    const HWND parent = ParentOf(listView);
    if (!parent) return nullptr;
    const RECT place = RectInParent(listView);
    SetId(GetDlgCtrlID(listView));
    if (!Create(parent, place.left, place.top, place.right - place.left, place.bottom - place.top, true, true)) {
        return nullptr;
    }
    const Alive alive(this);
    CorrectZOrder(listView);
    DestroyWindow(m_list);
    // What the list view's end tells its parents may be the end of this table.
    if (!alive || !m_hWnd) return nullptr;
    if (!MakeList(static_cast<DWORD>(GetWindowLongW(listView, GWL_STYLE)),
                  static_cast<DWORD>(GetWindowLongW(listView, GWL_EXSTYLE)))) {
        return nullptr;
    }
    const LRESULT style = SendMessageW(listView, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    SendMessageW(m_list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style | LVS_EX_FULLROWSELECT);
    DestroyWindow(listView);
    return alive ? m_hWnd : nullptr;
}

bool CKxDevUI_Table::MakeList(DWORD style, DWORD extendedStyle) {
    const Alive alive(this);
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const HWND list = CreateWindowExW(extendedStyle, WC_LISTVIEWW, nullptr, style, 0, 0, client.right, client.bottom,
                                      m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(m_id)), nullptr, nullptr);
    if (!alive || !m_hWnd) return false;
    m_list = list;
    m_listProcedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_list, GWLP_WNDPROC));
    Subclass(m_list, ListProc, static_cast<CKxDevUI_Base*>(this));
    SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    KX_FollowColorScheme(m_list);
    m_shownAt = CKxGUILayoutManager::GetGuiZoom();
    if (!m_enabled) EnableWindow(m_list, FALSE);
    return true;
}

void CKxDevUI_Table::Destroy() {
    m_editRow = m_editColumn = -1;
    m_columns.clear();
    m_columnCount = 0;
    const Alive alive(this);
    // The focus may go from it to a host's window.
    m_editor.Destroy();
    if (!alive) return;
    m_list = nullptr;
    Binding::EndWindow(this);
}

void CKxDevUI_Table::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    const Alive alive(this);
    if (!enable) FinishEdit(false);
    if (!alive || !m_hWnd) return;
    EnableWindow(m_hWnd, enable);
    EnableWindow(m_list, enable);
}

void CKxDevUI_Table::ResizeWindow(long, long) {
    SetWindowPos(m_list, nullptr, 0, 0, GetWidth(), GetHeight(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_Table::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<CKxDevUI_Table, ByUserData<CKxDevUI_Table>, WM_NCCREATE, Unbound::One, &CKxDevUI_Table::Handle>(
        {window, id, wParam, lParam});
}

LRESULT CALLBACK CKxDevUI_Table::ListProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_Table, &CKxDevUI_Table::HandleList>({window, id, wParam, lParam});
}

Handled CKxDevUI_Table::Handle(const Message& message) {
    switch (message.id) {
    case WM_NOTIFY: return OnNotify(message.wParam, message.lParam);
    case WM_COMMAND: return OnCommand(message.wParam, message.lParam);
    case WM_SETFOCUS: ::SetFocus(m_list); return 0;
    case WM_SETFONT: KeepFirstRow(); [[fallthrough]];
    case WM_GETFONT: return SendMessageW(m_list, message.id, message.wParam, message.lParam);
    case WM_SIZE:
        SetWindowPos(m_list, nullptr, 0, 0, LOWORD(message.lParam), HIWORD(message.lParam),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        return std::nullopt;
    case WM_KX_ZOOM_CHANGED: OnZoom(); return std::nullopt;
    case WM_KX_OPEN_CELL: {
        auto* cell = reinterpret_cast<OpenCell*>(message.lParam);
        return cell && (message.wParam ? OpenAgain(*cell) : TellOpenCell(*cell));
    }
    case WM_DESTROY:
        // The field is no child, so nobody else would end it.
        m_editRow = m_editColumn = -1;
        m_list = nullptr;
        m_editor.Destroy();
        return std::nullopt;
    default: return std::nullopt;
    }
}

// Cells move away from under the field: it is opened again where its cell is then, with what is half typed.
void CKxDevUI_Table::OnZoom() {
    const Alive alive(this);
    OpenCell cell;
    const bool open = TellOpenCell(cell);
    FinishEdit(false);
    if (alive) ApplyZoom(m_hWnd);
    if (!alive || !m_hWnd) return;
    ZoomColumns();
    ShowFirstRow();
    if (open) OpenAgain(cell);
}

bool CKxDevUI_Table::TellOpenCell(OpenCell& cell) const {
    if (m_editRow < 0) return false;
    cell = {m_editRow, m_editColumn, TextIn(m_editor.GetEditWindow())};
    return true;
}

bool CKxDevUI_Table::OpenAgain(const OpenCell& cell) {
    const Alive alive(this);
    if (!IsEditable(cell.column) || !IsWindowVisible(m_hWnd)) return false;
    StartEdit(cell.row, cell.column);
    if (!alive || m_editRow < 0) return false;
    TypeAgain(m_editor.GetEditWindow(), cell.typed);
    return true;
}

namespace {

// What moves cells away from under the field, or makes other cells of them.
bool MovesCells(const Message& message) {
    switch (message.id) {
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    case WM_SIZE:
    case LVM_SCROLL:
    case LVM_ENSUREVISIBLE:
    case LVM_INSERTITEMW:
    case LVM_DELETEITEM:
    case LVM_DELETEALLITEMS:
    case LVM_SORTITEMS:
    case LVM_SORTITEMSEX:
    case LVM_INSERTCOLUMNW:
    case LVM_DELETECOLUMN:
    case LVM_SETCOLUMNWIDTH:
    case LVM_SETCOLUMNORDERARRAY: return true;
    case WM_NOTIFY: {
        const auto code = reinterpret_cast<const NMHDR*>(message.lParam)->code;
        return code == HDN_ITEMCHANGINGW || code == HDN_BEGINDRAG || code == HDN_BEGINTRACKW;
    }
    default: return false;
    }
}

}  // namespace

Handled CKxDevUI_Table::HandleList(const Message& message) {
    if (m_editRow >= 0 && MovesCells(message)) FinishEdit(false);
    if (message.id == LVM_DELETEITEM) {
        // Wine's list that has one row less than it was scrolled to scrolls back, and leaves what is on screen.
        const auto top = [&message] { return SendMessageW(message.window, LVM_GETTOPINDEX, 0, 0); };
        const LRESULT before = top(), result = CallPrevious(message);
        if (IsWindow(message.window) && top() != before) InvalidateRect(message.window, nullptr, TRUE);
        return result;
    }
    if (message.id == WM_KX_DESCRIBE) return Describe(message, [this](KxAccess& access) { Tell(access); });
    if (message.id != WM_KEYDOWN) return std::nullopt;
    switch (message.wParam) {
    case VK_F2: EditFocused(); return 0;
    case VK_RETURN: {
        const Alive alive(this);
        m_byEnter = true;
        const LRESULT result = CallPrevious(message);
        if (alive) m_byEnter = false;
        return result;
    }
    default: return std::nullopt;
    }
}

LRESULT CKxDevUI_Table::OnNotify(WPARAM wParam, LPARAM lParam) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.hwndFrom != m_list || static_cast<int>(header.idFrom) != m_id) return 0;
    const auto& activated = *reinterpret_cast<const NMITEMACTIVATE*>(lParam);
    switch (header.code) {
    case LVN_ITEMACTIVATE: {
        NMITEMACTIVATE copy = activated;
        // Wine tells of the Enter key with nothing behind the header; the row with the focus is meant then.
        if (m_byEnter) {
            copy = {};
            copy.hdr = header;
            copy.iItem = FocusedRow();
        }
        const HWND target = m_notify;
        const LRESULT answer = onSelChange(copy.iItem, copy.iSubItem);
        return answer != 0 ? answer : SendMessageW(target, WM_NOTIFY, wParam, reinterpret_cast<LPARAM>(&copy));
    }
    case NM_DBLCLK: {
        // Where another column than the first stands at the left, Wine finds the column but not the row.
        const int row = activated.iItem >= 0 ? activated.iItem : RowAt(activated.ptAction.y);
        if (row < 0 || !IsEditable(activated.iSubItem)) return 0;
        StartEdit(row, activated.iSubItem);
        return 1;
    }
    case NM_CLICK:
        if (activated.iSubItem >= 0) m_clickedColumn = activated.iSubItem;
        FinishEdit(false);
        return 0;
    default: return 0;
    }
}

LRESULT CKxDevUI_Table::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (LOWORD(wParam) != kEditorId) return 0;
    switch (HIWORD(wParam)) {
    case kEditEnter: FinishEdit(true); return 0;
    case kEditChar:
        if (lParam == VK_ESCAPE) return FinishEdit(false), 1;
        if (lParam == VK_TAB) return EditNext(GetKeyState(VK_SHIFT) < 0), 1;
        return 0;
    default: return 0;
    }
}

int CKxDevUI_Table::RowAt(long y) const {
    const LRESULT first = SendMessageW(m_list, LVM_GETTOPINDEX, 0, 0);
    RECT rect{};
    rect.left = LVIR_BOUNDS;
    if (!SendMessageW(m_list, LVM_GETITEMRECT, static_cast<WPARAM>(first), reinterpret_cast<LPARAM>(&rect))) return -1;
    if (y < rect.top || rect.bottom <= rect.top) return -1;
    const LRESULT row = first + (y - rect.top) / (rect.bottom - rect.top);
    return row < SendMessageW(m_list, LVM_GETITEMCOUNT, 0, 0) ? static_cast<int>(row) : -1;
}

// ---- Editing -------------------------------------------------------------------------------------------------------

RECT CKxDevUI_Table::CellOnScreen(int row, int column) const {
    // The bounds of the first cell are those of the whole row, wherever its column stands: the header knows better.
    RECT cell{};
    cell.left = LVIR_BOUNDS;
    SendMessageW(m_list, LVM_GETITEMRECT, Index(row), reinterpret_cast<LPARAM>(&cell));
    RECT head{};
    const HWND header = reinterpret_cast<HWND>(SendMessageW(m_list, LVM_GETHEADER, 0, 0));
    SendMessageW(header, HDM_GETITEMRECT, Index(column), reinterpret_cast<LPARAM>(&head));
    MapWindowPoints(header, m_list, reinterpret_cast<POINT*>(&head), 2);
    cell.left = head.left;
    cell.right = head.right;
    if (column == 0) {
        // Behind the check box and the image.
        RECT label{};
        label.left = LVIR_LABEL;
        SendMessageW(m_list, LVM_GETITEMRECT, Index(row), reinterpret_cast<LPARAM>(&label));
        cell.left = std::max(cell.left, label.left);
    }
    MapWindowPoints(m_list, nullptr, reinterpret_cast<POINT*>(&cell), 2);
    return cell;
}

void CKxDevUI_Table::StartEdit(int row, int column) {
    const Alive alive(this);
    FinishEdit(false);
    if (!alive || !m_enabled || row < 0 || row >= SendMessageW(m_list, LVM_GETITEMCOUNT, 0, 0)) return;
    if (column < 0 || column >= m_columnCount) return;

    SendMessageW(m_list, LVM_ENSUREVISIBLE, Index(row), FALSE);
    RECT cell = CellOnScreen(row, column), list{};
    GetClientRect(m_list, &list);
    MapWindowPoints(m_list, nullptr, reinterpret_cast<POINT*>(&list), 2);
    if (cell.left < list.left || cell.right > list.right) {
        // The column's beginning counts where it is wider than the list.
        const long dx = std::min(cell.left - list.left, std::max(0L, cell.right - list.right));
        SendMessageW(m_list, LVM_SCROLL, static_cast<WPARAM>(cell.left < list.left ? cell.left - list.left : dx), 0);
        cell = CellOnScreen(row, column);
    }

    // It goes with the frame that it was open over last.
    if (!HWND{m_editor}) m_editor.Prepare(m_hWnd);
    wchar_t text[kTextLength + 1] = L"";
    GetCell(row, column, text, kTextLength + 1);
    m_editRow = row;
    m_editColumn = column;
    // Not beyond the list, where a cell goes on beyond it.
    cell.right = std::max(cell.left + 1, std::min(cell.right, list.right));
    OffsetRect(&cell, kEditorOffset, kEditorOffset);
    cell.bottom += kEditorOffset;
    const auto known = m_columns.find(column);
    m_editor.Open(cell, text, known != m_columns.end() && known->second.format.has_value());
    // The field has the activation, but it is this window that the user works in.
    if (alive) SendMessageW(GetAncestor(m_hWnd, GA_ROOT), WM_NCACTIVATE, TRUE, 0);
}

void CKxDevUI_Table::FinishEdit(bool commit) {
    if (m_editRow < 0) return;
    // Taken first: hiding the field makes it lose the focus, which would drop the edit.
    const int row = std::exchange(m_editRow, -1), column = std::exchange(m_editColumn, -1);
    const std::wstring text = m_editor.GetText().str().substr(0, kTextLength);
    const Alive alive(this);
    m_editor.Close(m_list);
    if (!alive) return;
    RefreshWindow();
    if (!commit) return;
    SetCell(row, column, text.c_str());
    onEdited(row, column);
}

bool CKxDevUI_Table::IsEditable(int column) const {
    const auto found = m_columns.find(column);
    return found != m_columns.end() && found->second.editable;
}

// Moves to the next editable cell, `step` columns at a time in the order on the screen and on to other rows; a step of
// 0 stays where that is editable.
bool CKxDevUI_Table::FindEditable(Cell& cell, int step) const {
    if (m_columnCount == 0) return false;
    std::vector<int> order(static_cast<std::size_t>(m_columnCount));
    SendMessageW(m_list, LVM_GETCOLUMNORDERARRAY, Index(m_columnCount), reinterpret_cast<LPARAM>(order.data()));
    const long rows = static_cast<long>(SendMessageW(m_list, LVM_GETITEMCOUNT, 0, 0));
    const auto place = std::find(order.begin(), order.end(), cell.column);
    const long column = place == order.end() ? 0 : static_cast<long>(place - order.begin());
    long at = cell.row * long{m_columnCount} + column + step;
    for (int looked = 0; looked < m_columnCount; ++looked, at += step < 0 ? -1 : 1) {
        if (at < 0 || at >= rows * m_columnCount) return false;
        const int next = order[static_cast<std::size_t>(at % m_columnCount)];
        if (!IsEditable(next)) continue;
        cell = {static_cast<int>(at / m_columnCount), next};
        return true;
    }
    return false;
}

int CKxDevUI_Table::FocusedRow() const {
    return static_cast<int>(SendMessageW(m_list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
}

void CKxDevUI_Table::EditFocused() {
    const int row = FocusedRow();
    if (row < 0) return;
    Cell cell{row, m_clickedColumn};
    if (!IsEditable(cell.column) && (!FindEditable(cell, 0) || cell.row != row)) {
        // None to its right; the row may have one to its left.
        cell = {row, -1};
        if (!FindEditable(cell, 0) || cell.row != row) return;
    }
    StartEdit(cell.row, cell.column);
}

void CKxDevUI_Table::EditNext(bool backwards) {
    if (m_editRow < 0) return;
    Cell cell{m_editRow, m_editColumn};
    const bool found = FindEditable(cell, backwards ? -1 : 1);
    const Alive alive(this);
    FinishEdit(true);
    if (alive && found) StartEdit(cell.row, cell.column);
}

// ---- What the owner is told ----------------------------------------------------------------------------------------

void CKxDevUI_Table::onEdited(int row, int column) {
    wchar_t text[kTextLength + 1] = L"";
    GetCell(row, column, text, kTextLength + 1);
    NMLVDISPINFOW edited{};
    edited.hdr = {m_hWnd, static_cast<UINT_PTR>(m_id), LVN_ENDLABELEDITW};
    edited.item.mask = LVIF_TEXT | LVIF_PARAM;
    edited.item.iItem = row;
    edited.item.iSubItem = column;
    edited.item.pszText = text;
    edited.item.cchTextMax = kTextLength + 1;
    edited.item.lParam = static_cast<LPARAM>(GetUserData(row, column));
    SendMessageW(m_notify, WM_NOTIFY, edited.hdr.idFrom, reinterpret_cast<LPARAM>(&edited));
}

LRESULT CKxDevUI_Table::onSelChange(int row, int column) {
    NMITEMACTIVATE activated{};
    activated.hdr = {m_hWnd, static_cast<UINT_PTR>(m_id), LVN_ITEMACTIVATE};
    activated.iItem = row;
    activated.iSubItem = column;
    return SendMessageW(m_notify, WM_NOTIFY, activated.hdr.idFrom, reinterpret_cast<LPARAM>(&activated));
}
