// The table's columns, rows and searching.
#include <kxdevui/controls/devgui_table.h>

#include <commctrl.h>

#include <cmath>
#include <cwchar>
#include <iterator>
#include <utility>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/editbox_rules.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/framework/ui_life.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace {

constexpr int kTextLength = 255;
constexpr wchar_t kSource[] = L"devgui_table";

WPARAM Index(int index) { return static_cast<WPARAM>(index); }

// The list view only reads the texts it is given.
wchar_t* Text(const wchar_t* text) { return const_cast<wchar_t*>(text ? text : L""); }

LVITEMW Item(UINT mask, int row, int column = 0) {
    LVITEMW item{};
    item.mask = mask;
    item.iItem = row;
    item.iSubItem = column;
    return item;
}

}  // namespace

// ---- Columns -------------------------------------------------------------------------------------------------------

void CKxDevUI_Table::InsertColumn(const wchar_t* title, int width, const wchar_t* format, bool editable) {
    if (!m_list) return;
    Column column;
    if (format && kx::ui::IsNumberFormat(format)) {
        column.format = CKxStringW(format);
    } else if (format) {
        KX_LOG(kSource, L"\"%ls\" does not format exactly one number", format);
    }
    column.editable = editable;
    column.unzoomed = width;
    column.placed = width < 0 ? width : CKxGUILayoutManager::Zoomed(width);

    LVCOLUMNW inserted{};
    inserted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    inserted.pszText = Text(title);
    inserted.cx = column.placed;
    inserted.iSubItem = m_columnCount;
    SendMessageW(m_list, LVM_INSERTCOLUMNW, Index(m_columnCount), reinterpret_cast<LPARAM>(&inserted));
    if (width < 0) SendMessageW(m_list, LVM_SETCOLUMNWIDTH, Index(m_columnCount), width);
    m_columns[m_columnCount++] = std::move(column);
}

void CKxDevUI_Table::ZoomColumns() {
    for (auto& [index, column] : m_columns) {
        const long width = static_cast<long>(SendMessageW(m_list, LVM_GETCOLUMNWIDTH, Index(index), 0));
        // The user has dragged the column's border since.
        if (width != column.placed) {
            column.unzoomed = std::lround(static_cast<double>(width) / CKxGUILayoutManager::GetPreviousGuiZoom());
        }
        column.placed = CKxGUILayoutManager::Zoomed(static_cast<double>(column.unzoomed));
        SendMessageW(m_list, LVM_SETCOLUMNWIDTH, Index(index), column.placed);
    }
}

// A zoom brings smaller rows before the smaller list: for a moment there is room for more, and it scrolls back.
void CKxDevUI_Table::KeepFirstRow() {
    if (m_list && m_firstRow < 0 && m_shownAt != CKxGUILayoutManager::GetGuiZoom())
        m_firstRow = static_cast<int>(SendMessageW(m_list, LVM_GETTOPINDEX, 0, 0));
}

void CKxDevUI_Table::ShowFirstRow() {
    m_shownAt = CKxGUILayoutManager::GetGuiZoom();
    const int first = std::exchange(m_firstRow, -1),
              now = static_cast<int>(SendMessageW(m_list, LVM_GETTOPINDEX, 0, 0));
    RECT row{};
    row.left = LVIR_BOUNDS;
    if (first < 0 || first == now || !SendMessageW(m_list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row))) return;
    SendMessageW(m_list, LVM_SCROLL, 0, LPARAM{first - now} * (row.bottom - row.top));
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

// Past the message's usual way, which costs a third of what the list view does with a cell.
LRESULT CKxDevUI_Table::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return m_list ? CallWindowProcW(m_listProcedure, m_list, message, wParam, lParam) : 0;
}

int CKxDevUI_Table::InsertLabel(const wchar_t* text, int index) {
    if (!m_list) return -1;
    if (m_editRow >= 0) {
        // The cells move from under the field.
        const kx::ui::Alive alive(this);
        FinishEdit(false);
        if (!alive || !m_list) return -1;
    }
    LVITEMW item = Item(LVIF_TEXT, index == -1 ? static_cast<int>(Ask(LVM_GETITEMCOUNT, 0, 0)) : index);
    item.pszText = Text(text);
    return static_cast<int>(Ask(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

int CKxDevUI_Table::InsertRow(const wchar_t** values, int count, int index) {
    if (!values || count < 1) return -1;
    const int row = InsertLabel(values[0], index);
    for (int column = 1; row >= 0 && column < count; ++column)
        SetCell(row, column, values[column]);
    return row;
}

int CKxDevUI_Table::InsertRow(const double* values, int count, int index) {
    if (!values || count < 1) return -1;
    const int row = InsertLabel(Format(0, values[0]).c_str(), index);
    for (int column = 1; row >= 0 && column < count; ++column)
        SetCell(row, column, values[column]);
    return row;
}

std::wstring CKxDevUI_Table::Format(int column, double value) {
    const auto& format = m_columns[column].format;
    return kx::ui::FormatNumber(value, format ? format->c_str() : L"%g").data();
}

void CKxDevUI_Table::SetCell(int row, int column, const wchar_t* text) {
    LVITEMW item = Item(0, row, column);
    item.pszText = Text(text);
    Ask(LVM_SETITEMTEXTW, Index(row), reinterpret_cast<LPARAM>(&item));
}

void CKxDevUI_Table::SetCell(int row, int column, double value) { SetCell(row, column, Format(column, value).c_str()); }

void CKxDevUI_Table::GetCell(int row, int column, wchar_t* buffer, int size) {
    if (!buffer || size < 1) return;
    *buffer = 0;
    LVITEMW item = Item(0, row, column);
    item.pszText = buffer;
    item.cchTextMax = size;
    Ask(LVM_GETITEMTEXTW, Index(row), reinterpret_cast<LPARAM>(&item));
}

double CKxDevUI_Table::GetCell(int row, int column) {
    wchar_t text[kTextLength + 1] = L"";
    GetCell(row, column, text, static_cast<int>(std::size(text)));
    return KX_LeadingNumber(text);
}

void CKxDevUI_Table::SetChecked(int row, bool check) {
    // -1 would mean all rows.
    if (row < 0) return;
    LVITEMW item = Item(0, row);
    item.state = static_cast<UINT>(INDEXTOSTATEIMAGEMASK(check ? 2 : 1));
    item.stateMask = LVIS_STATEIMAGEMASK;
    Ask(LVM_SETITEMSTATE, Index(row), reinterpret_cast<LPARAM>(&item));
}

bool CKxDevUI_Table::GetChecked(int row) {
    return Ask(LVM_GETITEMSTATE, Index(row), LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
}

void CKxDevUI_Table::SetUserData(int row, int, std::int64_t value) {
    LVITEMW item = Item(LVIF_PARAM, row);
    item.lParam = static_cast<LPARAM>(value);
    Ask(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

std::int64_t CKxDevUI_Table::GetUserData(int row, int) {
    LVITEMW item = Item(LVIF_PARAM, row);
    Ask(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.lParam;
}

// ---- Searching -----------------------------------------------------------------------------------------------------

int CKxDevUI_Table::Search(const wchar_t* text, int column) {
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_STRING;
    wanted.psz = Text(text);
    const auto next = [&](int after) {
        return m_list
                   ? static_cast<int>(Ask(LVM_FINDITEMW, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(&wanted)))
                   : -1;
    };
    // The list view takes upper and lower case for the same.
    std::wstring cell(std::wcslen(wanted.psz) + 2, 0);
    for (int row = next(-1); row >= 0; row = next(row)) {
        GetCell(row, column < 0 ? 0 : column, cell.data(), static_cast<int>(cell.size()));
        if (std::wcscmp(cell.c_str(), wanted.psz) == 0) return row;
    }
    return -1;
}

int CKxDevUI_Table::Search(std::int64_t userData, int) {
    // User data belongs to the row, so the first row found has it in every column.
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_PARAM;
    wanted.lParam = static_cast<LPARAM>(userData);
    if (!m_list) return -1;
    return static_cast<int>(Ask(LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted)));
}

// ---- For the ear ---------------------------------------------------------------------------------------------------

// Cell by cell: the number of rows is what it costs, not what is in them.
void CKxDevUI_Table::Tell(KxAccess& access) {
    access.role = ROLE_SYSTEM_TABLE;
    access.parts = static_cast<long>(Ask(LVM_GETITEMCOUNT, 0, 0)) * m_columnCount;
    access.part = [this](long number) {
        return TellCell(static_cast<int>(number - 1) / m_columnCount, static_cast<int>(number - 1) % m_columnCount);
    };
}

KxAccess CKxDevUI_Table::TellCell(int row, int column) {
    wchar_t title[kTextLength + 1] = L"", text[kTextLength + 1] = L"";
    LVCOLUMNW head{};
    head.mask = LVCF_TEXT;
    head.pszText = title;
    head.cchTextMax = kTextLength + 1;
    Ask(LVM_GETCOLUMNW, Index(column), reinterpret_cast<LPARAM>(&head));
    GetCell(row, column, text, kTextLength + 1);
    const LRESULT state = Ask(LVM_GETITEMSTATE, Index(row), LVIS_SELECTED | LVIS_FOCUSED);
    const bool focused = (state & LVIS_FOCUSED) && column == m_clickedColumn && GetFocus() == m_list;
    CKxStringW place;
    place.Format(64, KX_GetTranslation(L"row %d", kSource), row + 1);
    KxAccess cell;
    cell.role = ROLE_SYSTEM_CELL;
    cell.name = kx::ui::Listed({kx::ui::AsRead(title), place});
    cell.value = text;
    cell.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE |
                 (state & LVIS_SELECTED ? STATE_SYSTEM_SELECTED : 0) | (focused ? STATE_SYSTEM_FOCUSED : 0) |
                 (IsEditable(column) ? 0 : STATE_SYSTEM_READONLY);
    cell.place = CellOnScreen(row, column);
    MapWindowPoints(nullptr, m_list, reinterpret_cast<POINT*>(&cell.place), 2);
    if (!IsEditable(column)) return cell;
    cell.setValue = [this, row, column](const CKxStringW& typed) {
        const kx::ui::Alive alive(this);
        StartEdit(row, column);
        return alive && m_editRow == row && kx::ui::EnterText(m_editor.GetEditWindow(), typed);
    };
    return cell;
}
