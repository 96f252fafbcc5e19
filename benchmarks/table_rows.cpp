// The table against the list view that it wraps.
#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

#include <kxdevui/controls/devgui_table.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr int kColumns = 6, kRows = 20000;

HWND MakeList(HWND parent, bool columns) {
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, nullptr, WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 300, 200,
                                      parent, nullptr, nullptr, nullptr);
    Require(list != nullptr, "there is no list view");
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = 50;
    for (int i = 0; columns && i < kColumns; ++i)
        ListView_InsertColumn(list, i, &column);
    return list;
}

// The same texts for both.
std::vector<std::wstring> Texts() {
    std::vector<std::wstring> texts;
    texts.reserve(std::size_t{kRows} * kColumns);
    for (int i = 0; i < kRows * kColumns; ++i)
        texts.push_back(std::to_wstring(i));
    return texts;
}

const std::wstring& CellOf(const std::vector<std::wstring>& texts, int row, int column) {
    return texts[static_cast<std::size_t>(row) * kColumns + static_cast<std::size_t>(column)];
}

class FilledTable {
public:
    explicit FilledTable(HWND parent) {
        m_table.Create(parent, 0, 0, 300, 200, true, true);
        for (int i = 0; i < kColumns; ++i)
            m_table.InsertColumn(L"", 50, nullptr, false);
        SendMessageW(m_table.GetListView(), WM_SETREDRAW, FALSE, 0);
    }
    void Fill(const std::vector<std::wstring>& texts, int rows) {
        for (int row = 0; row < rows; ++row) {
            const wchar_t* cells[kColumns];
            for (int i = 0; i < kColumns; ++i)
                cells[i] = CellOf(texts, row, i).c_str();
            m_table.InsertRow(cells, kColumns, -1);
        }
        Require(ListView_GetItemCount(m_table.GetListView()) == rows, "rows are missing");
        ListView_DeleteAllItems(m_table.GetListView());
    }

private:
    CKxDevUI_Table m_table;
};

void FillList(HWND list, const std::vector<std::wstring>& texts, int rows) {
    for (int row = 0; row < rows; ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        for (int i = 0; i < kColumns; ++i) {
            item.iSubItem = i;
            item.pszText = const_cast<wchar_t*>(CellOf(texts, row, i).c_str());
            SendMessageW(list, i == 0 ? UINT{LVM_INSERTITEMW} : UINT{LVM_SETITEMTEXTW}, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&item));
        }
    }
    ListView_DeleteAllItems(list);
}

Ratio Fill(int rows) {
    const Frame frame;
    const auto texts = Texts();
    FilledTable table(frame);
    const HWND list = MakeList(frame, true);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    return Measure([&] { table.Fill(texts, rows); }, [&] { FillList(list, texts, rows); });
}

Ratio FillAll() { return Fill(kRows); }

// What the table costs more with twice the rows, against what the list view costs more.
Ratio Growth() {
    const Ratio half = Fill(kRows / 4), whole = Fill(kRows / 2);
    return {whole.median / half.median, whole.low / half.high, whole.high / half.low};
}

Ratio CreateTable() {
    const Frame frame;
    const auto byHand = [&] {
        const HWND window = MakeBareWindow(frame, {300, 200});
        const auto font = static_cast<WPARAM>(SendMessageW(window, WM_GETFONT, 0, 0));
        SendMessageW(MakeList(window, false), WM_SETFONT, font, FALSE);
        // The field that cells are edited in floats.
        const HWND field = MakeBareWindow(window, {20, 16});
        const HWND edit = CreateWindowExW(0, L"EDIT", nullptr, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 20, 16,
                                          field, nullptr, nullptr, nullptr);
        SendMessageW(edit, WM_SETFONT, font, FALSE);
        ShowWindow(field, SW_HIDE);
        SetParent(field, nullptr);
        DestroyWindow(field);
        DestroyWindow(window);
    };
    const auto table = [&] {
        CKxDevUI_Table made;
        made.Create(frame, 0, 0, 300, 200, true, true);
    };
    return Measure(table, byHand);
}

// clang-format off
const Rows s_rows{{
    {"table, 20,000 rows of 6 cells, redraw off", "the list view driven directly", 1.10, FillAll},
    {"table, growth from 5,000 to 10,000 rows", "the list view's own growth", 1.10, Growth},
    {"table, create and destroy", "the same windows made directly", 1.3, CreateTable},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
