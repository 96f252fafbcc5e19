// The table: rows and searching, editing in place with real input, and what its owner hears.
#include "control_test.h"

#include <kxdevui/controls/devgui_table.h>
#include <kxdevui/framework/devgui_keep.h>

#include <bench/imports.h>
#include <bench/reader.h>
#include <commctrl.h>
#include <imm.h>

namespace {

using namespace kx::test;

// Thirty rows "1" "0.000", "2" "0.500", ...; writes down what the table sends, texts included.
struct Table : ControlTest {
    Table() {
        parent.Ignore(WM_NOTIFY);
        parent.Answer(WM_NOTIFY, [this](WPARAM id, LPARAM lParam) {
            const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
            const auto& item = reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item;
            if (header.code == LVN_ENDLABELEDITW)
                parent.Record().Call("edited", id, item.iItem, item.iSubItem, item.pszText, item.lParam);
            if (header.code == LVN_ITEMACTIVATE) {
                const int row = reinterpret_cast<const NMITEMACTIVATE*>(lParam)->iItem;
                parent.Record().Call(header.hwndFrom == table ? "activated" : "passed on", row);
            }
            return 1;
        });
        Fill();
    }
    void Fill() {
        table.SetId(77);
        table.Create(parent.Window(), 10, 20, 300, 150, true, true);
        table.InsertColumn(L"Plane", 80, nullptr, false);
        table.InsertColumn(L"Z (um)", 90, L"%.3f", true);
        table.InsertColumn(L"Note", 100, nullptr, true);
        for (int i = 0; i < 30; ++i) {
            const double values[] = {i + 1.0, i * 0.5};
            table.InsertRow(values, 2, -1);
        }
        Pump();
    }

    HWND List() const { return table.GetListView(); }
    std::wstring Cell(int row, int column) {
        wchar_t text[300] = L"";
        table.GetCell(row, column, text, 300);
        return text;
    }
    // A cell in the list's client area, whatever the order of the columns.
    RECT CellOf(int row, int column) const {
        RECT cell{}, head{};
        ListView_GetItemRect(List(), row, &cell, LVIR_BOUNDS);
        const HWND header = ListView_GetHeader(List());
        Header_GetItemRect(header, column, &head);
        MapWindowPoints(header, List(), reinterpret_cast<POINT*>(&head), 2);
        return {head.left, cell.top, head.right, cell.bottom};
    }
    void Open(int row, int column) const {
        const RECT cell = CellOf(row, column);
        DoubleClick(List(), (cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2);
    }
    // The field while a cell is edited: the edit control that has the focus.
    static HWND Field() {
        wchar_t name[16] = L"";
        GetClassNameW(GetFocus(), name, 16);
        return lstrcmpiW(name, L"EDIT") == 0 ? GetFocus() : nullptr;
    }
    // A cell, whether one is edited, and what was told.
    std::string SeeCell(int row, int column) { return Narrow(Cell(row, column)) + (Field() ? " open " : " ") + Told(); }
    std::string See() override { return SeeCell(2, 1); }

    CKxDevUI_Table table;
};

TEST_F(Table, TakesTextsAndNumbers) {
    EXPECT_EQ(Cell(1, 0) + Cell(3, 1), L"21.500");
    const wchar_t* texts[] = {L"first", L"12 um", nullptr};
    EXPECT_EQ(table.InsertRow(texts, 3, 0), 0);
    EXPECT_EQ(table.GetCell(0, 1) + table.GetCell(4, 1), 13.5);
    EXPECT_EQ(Cell(0, 2) + Cell(1, 0), L"1");
    table.SetCell(0, 7, 0.25);  // a column that is not there
    EXPECT_EQ(Cell(0, 7), L"");
    wchar_t small[4] = L"???";
    table.GetCell(4, 1, small, 4);
    EXPECT_STREQ(small, L"1.5");
    for (const auto& [count, before, row] : {std::tuple{2, -1, 31}, {0, -1, -1}, {1, -7, -1}})
        EXPECT_EQ(table.InsertRow(texts, count, before), row);

    for (const bool checked : {true, false}) {
        table.SetChecked(2, checked);
        table.SetChecked(-1, true);
        EXPECT_EQ(table.GetChecked(2), checked);
    }
    // Formats of anything but one number are not taken.
    for (const wchar_t* format : {L"%.1f um", L"%d", L"%s%n"})
        table.InsertColumn(L"", 40, format, false);
    for (const int column : {3, 4, 5})
        table.SetCell(1, column, 0.5);
    EXPECT_EQ(Cell(1, 3) + L"; " + Cell(1, 4) + L"; " + Cell(1, 5), L"0.5 um; 0.5; 0.5");
    EXPECT_EQ(Told(), "");
}

TEST_F(Table, FindsRows) {
    const wchar_t* rows[][2] = {{L"dapi", L"a"}, {L"DAPI", L"a"}, {L"DAPI", L"DAPI"}, {L"other", L"DAPI"}};
    for (auto& row : rows)
        table.InsertRow(row, 2, -1);
    const std::tuple<const wchar_t*, int, int> cases[] = {{L"DAPI", -1, 31}, {L"DAPI", 0, 31}, {L"dapi", -1, 30},
                                                          {L"DAPI", 1, 32},  {L"a", 1, -1},    {L"DAPI", 9, -1}};
    for (const auto& [text, column, found] : cases)
        EXPECT_EQ(table.Search(text, column), found) << Narrow(text) << ' ' << column;
    constexpr std::int64_t large = std::int64_t{-1} << 40;
    table.SetUserData(5, 0, large), table.SetUserData(9, 0, large);
    EXPECT_EQ(CallText("", table.Search(large, 1), table.Search(43, -1), table.GetUserData(9, 5)),
              CallText("", 5, -1, large));
}

TEST_F(Table, StoresOnEnterAndDropsOtherwise) {
    table.SetUserData(2, 0, 5);
    Open(2, 1);
    EXPECT_EQ(See(), "1.000 open activated(2)");
    Key('A', MOD_CONTROL), Type(L"75"), Key(VK_LEFT);
    CKxGUILayoutManager::SetGuiZoom(1.5), CKxGUILayoutManager::SetGuiZoom(1.0);
    KxKeptInput kept;
    kept.Take(parent.Window());
    Fill();
    kept.GiveBack(parent.Window());
    table.SetUserData(2, 0, 5);
    Type(L".\n");
    EXPECT_EQ(See(), "7.5 edited(77, 2, 1, \"7.5\", 5)");
    EXPECT_EQ(GetFocus(), List());
    const std::function<void()> drops[] = {
        [] { Key(VK_ESCAPE); },
        [&] { Click(List(), CellOf(4, 0).right - 9, CellOf(4, 0).top + 5); },
        [&] { SendMessageW(List(), WM_VSCROLL, SB_LINEDOWN, 0); },
        [&] { MoveWindow(table, 10, 20, 301, 150, TRUE); },
        [&] { ListView_DeleteItem(List(), 29); },
        [&] { ListView_SetColumnWidth(List(), 0, 81); },
    };
    for (const auto& drop : drops) {
        ListView_EnsureVisible(List(), 0, FALSE);
        Open(3, 1);
        ASSERT_TRUE(Field()) << &drop - drops;
        EXPECT_FALSE(GetMenu(GetAncestor(Field(), GA_ROOT))) << "a popup has no id";
        Type(L"99");
        drop();
        Pump();
        EXPECT_EQ(SeeCell(3, 1), "1.500 activated(3)") << &drop - drops;
    }
    Open(2, 0);
    EXPECT_EQ(Field(), nullptr) << "the first column cannot be edited";
}

TEST_F(Table, GoesByKeys) {
    table.SetFocus();
    EXPECT_EQ(GetFocus(), List());
    const auto focus = [&](int row) { ListView_SetItemState(List(), row, LVIS_FOCUSED, LVIS_FOCUSED); };
    focus(1);
    // To the note of the same row, the next row's Z; there is nothing back over the row's end, nor after the last row.
    Play({{[] { Key(VK_F2); }, "1.000 open "},
          {[] { Type(L"\t"); }, "1.000 open edited(77, 1, 1, \"0.500\", 0)"},
          {[] { Type(L"here\t"); }, "1.000 open edited(77, 1, 2, \"here\", 0)"},
          {[] { Key('A', MOD_CONTROL), Type(L"8\n"); }, "8 edited(77, 2, 1, \"8\", 0)"},
          {[&] { focus(0), Key(VK_F2); }, "8 open "},
          {[] { Key(VK_TAB, MOD_SHIFT); }, "8 edited(77, 0, 1, \"0.000\", 0)"},
          {[&] { ListView_EnsureVisible(List(), 29, FALSE), Open(29, 2); }, "8 open activated(29)"},
          {[] { Type(L"\t"); }, "8 edited(77, 29, 2, \"\", 0)"},
          // By a screen reader: the first column cannot be edited.
          {[&] { Reader(List()).Set(L"9", 2 * 3 + 1), Reader(List()).Set(L"9", 2 * 3 + 2); },
           "9 edited(77, 2, 1, \"9\", 0)"}});
}

// The platform's edit would beep.
TEST_F(Table, KeepsToItselfWhatEndsACell) {
    static std::string reached;
    static WNDPROC edit;
    const HWND any = AddChild(parent.Window(), L"EDIT", 9, {});
    edit = reinterpret_cast<WNDPROC>(
        SetClassLongPtrW(any, GCLP_WNDPROC, reinterpret_cast<LONG_PTR>(+[](HWND w, UINT id, WPARAM p, LPARAM l) {
                             if (id == WM_CHAR) reached += static_cast<char>(p);
                             return CallWindowProcW(edit, w, id, p, l);
                         })));
    Fill();
    SetClassLongPtrW(any, GCLP_WNDPROC, reinterpret_cast<LONG_PTR>(edit));
    Open(0, 1);
    const HWND field = Field();
    ASSERT_TRUE(field);
    Type(L"7\t\x1b");
    SendMessageW(field, WM_CHAR, L'x', 0);
    EXPECT_EQ(reached, "7");
}

TEST_F(Table, EditsOnItsCell) {
    int orders[][3] = {{0, 1, 2}, {2, 0, 1}};
    ListView_SetColumnWidth(List(), 0, 100);  // as the user drags it
    for (const double zoom : {1.0, 1.5}) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        EXPECT_EQ(ListView_GetColumnWidth(List(), 0) + ListView_GetColumnWidth(List(), 1), 190 * zoom);
        for (auto& order : orders) {
            ListView_SetColumnOrderArray(List(), 3, order);
            ListView_EnsureVisible(List(), 20, FALSE);
            const int row = ListView_GetTopIndex(List()) + 1;
            Open(row, 1);
            ASSERT_TRUE(Field()) << zoom << order[0] << row;
            RECT cell = CellOf(row, 1), field{};
            MapWindowPoints(List(), nullptr, reinterpret_cast<POINT*>(&cell), 2);
            GetWindowRect(GetAncestor(Field(), GA_ROOT), &field);
            EXPECT_EQ(CallText("", field.left, field.top, field.right, field.bottom),
                      CallText("", cell.left + 3, cell.top + 3, cell.right + 3, cell.bottom + 6));
            Key(VK_ESCAPE);
        }
    }
}

// Where a number is typed, no input method holds it back, and a field of a number has none.
TEST_F(Table, OffersAnInputMethodForTexts) {
    const auto offers = [] {
        const HIMC context = ImmGetContext(GetFocus());
        return ImmReleaseContext(GetFocus(), context), context != nullptr;
    };
    for (const int column : {2, 1, 2}) {
        Open(1, column);
        EXPECT_EQ(offers(), column == 2);
    }
    CKxDevUI_EditBox box;
    box.Create(parent.Window(), 10, 180, 60, 20, true, true);
    box.SetFocus();
    EXPECT_FALSE(offers());
}

TEST_F(Table, TakesItsOpenFieldAlong) {
    Open(2, 1);
    const HWND field = Field();
    ASSERT_TRUE(field);
    DestroyWindow(table);
    EXPECT_FALSE(IsWindow(field));
}

TEST_F(Table, ReplacesAListOfADialog) {
    // Of several versions of the common controls the list's own makes its images.
    static int elsewhere = 0;
    const Import import(
        L"kxbaseui.dll", &ImageList_Create, +[](int cx, int cy, UINT flags, int first, int more) {
            return ++elsewhere, ImageList_Create(cx, cy, flags, first, more);
        });
    ListView_SetExtendedListViewStyle(List(), LVS_EX_CHECKBOXES);
    EXPECT_TRUE(ListView_GetImageList(List(), LVSIL_STATE) && import.Count() > 0 && elsewhere == 0);
    table.Destroy();
    const auto add = [&](const wchar_t* name, int id, DWORD style) {
        return AddChild(parent.Window(), name, id, {10, 30 * id, 100, 30 * id + 25}, WS_TABSTOP | style);
    };
    const HWND before = add(L"EDIT", 1, 0), list = add(WC_LISTVIEWW, 2, LVS_REPORT | LVS_NOSORTHEADER);
    ListView_SetExtendedListViewStyle(list, LVS_EX_GRIDLINES);
    EXPECT_EQ(table.Create(parent.Window()), nullptr);
    ASSERT_TRUE(table.Create(list));
    EXPECT_EQ(GetWindow(before, GW_HWNDNEXT), HWND{table});
    EXPECT_EQ(CallText("", table.GetId(), GetDlgCtrlID(List()), PlaceOf(table)), "(2, 2, \"10 60 90 25\")");
    EXPECT_TRUE(GetWindowLongW(List(), GWL_STYLE) & LVS_NOSORTHEADER);
    EXPECT_EQ(ListView_GetExtendedListViewStyle(List()), DWORD{LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT});
}

}  // namespace
