// The table: rows and searching, editing in place with real input, and what its owner hears.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/devgui_table.h>

#include <commctrl.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace {

using namespace kx::test;

constexpr int kId = 77;

// Writes down what the table sends, texts included, and may act on it.
class Owner {
public:
    Owner() {
        parent.Ignore({WM_NOTIFY});
        parent.Answer(WM_NOTIFY, [this](WPARAM id, LPARAM lParam) {
            const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
            if (header.code == LVN_ENDLABELEDITW) {
                const auto& item = reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item;
                parent.Record().Call("edited", id, item.iItem, item.iSubItem, item.pszText, item.lParam);
            } else if (header.code == LVN_ITEMACTIVATE) {
                const auto& item = *reinterpret_cast<const NMITEMACTIVATE*>(lParam);
                parent.Record().Call(header.hwndFrom == *table ? "activated" : "passed on", item.iItem);
            }
            if (const auto act = std::exchange(onNotify, nullptr)) act();
            return answer;
        });
        Fill();
    }
    void Fill() {
        table->SetId(kId);
        table->Create(parent.Window(), 10, 20, 300, 150, true, true);
        table->InsertColumn(L"Plane", 80, nullptr, false);
        table->InsertColumn(L"Z (um)", 90, L"%.3f", true);
        table->InsertColumn(L"Note", 100, nullptr, true);
        for (int i = 0; i < 30; ++i) {
            const double values[] = {i + 1.0, i * 0.5};
            table->InsertRow(values, 2, -1);
        }
        Pump();
    }

    HWND List() const { return table->GetListView(); }
    std::wstring Cell(int row, int column) const {
        wchar_t text[300] = L"";
        table->GetCell(row, column, text, 300);
        return text;
    }
    // The middle of a cell in the list's client area, whatever the order of the columns.
    POINT Middle(int row, int column) const {
        RECT cell{}, head{};
        ListView_GetItemRect(List(), row, &cell, LVIR_BOUNDS);
        const HWND header = ListView_GetHeader(List());
        Header_GetItemRect(header, column, &head);
        MapWindowPoints(header, List(), reinterpret_cast<POINT*>(&head), 2);
        return {(head.left + head.right) / 2, (cell.top + cell.bottom) / 2};
    }
    void DoubleClickOn(int row, int column) const {
        const POINT at = Middle(row, column);
        DoubleClick(List(), at.x, at.y);
    }
    // The field while a cell is edited: the edit control that has the focus.
    static HWND Field() {
        wchar_t name[16] = L"";
        GetClassNameW(GetFocus(), name, 16);
        return lstrcmpiW(name, L"EDIT") == 0 ? GetFocus() : nullptr;
    }

    RecordingParent parent;
    LRESULT answer = 1;
    std::function<void()> onNotify;
    std::unique_ptr<CKxDevUI_Table> table = std::make_unique<CKxDevUI_Table>();
};

TEST(TableRows, TakeTextsAndNumbers) {
    Owner owner;
    CKxDevUI_Table& table = *owner.table;
    EXPECT_EQ(owner.Cell(1, 0), L"2");
    EXPECT_EQ(owner.Cell(3, 1), L"1.500");
    EXPECT_EQ(table.GetCell(3, 1), 1.5);
    const wchar_t* texts[] = {L"first", L"12 um", nullptr};
    EXPECT_EQ(table.InsertRow(texts, 3, 0), 0);
    EXPECT_EQ(table.GetCell(0, 1), 12.0);
    EXPECT_EQ(owner.Cell(0, 2), L"");
    EXPECT_EQ(owner.Cell(1, 0), L"1");
    table.SetCell(0, 7, 0.25);  // a column that is not there
    EXPECT_EQ(owner.Cell(0, 7), L"");

    wchar_t small[4] = L"???";
    table.GetCell(4, 1, small, 4);
    EXPECT_STREQ(small, L"1.5");
    table.GetCell(4, 1, nullptr, 10);
    table.GetCell(4, 1, small, 0);
    table.GetCell(999, 1, small, 4);
    EXPECT_STREQ(small, L"");
    EXPECT_EQ(table.GetCell(-1, 0), 0.0);
    EXPECT_EQ(table.InsertRow(static_cast<const double*>(nullptr), 2, -1), -1);
    EXPECT_EQ(table.InsertRow(texts, 0, -1), -1);
    EXPECT_EQ(table.InsertRow(texts, 1, -7), -1);

    table.SetUserData(2, 0, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(table.GetUserData(2, 5), std::numeric_limits<std::int64_t>::min());
    for (const bool checked : {true, false}) {
        table.SetChecked(2, checked);
        table.SetChecked(-1, true);
        EXPECT_EQ(table.GetChecked(2), checked);
    }
    EXPECT_TRUE(owner.parent.Record().Matches({}));
}

TEST(TableRows, FormatOneNumber) {
    Owner owner;
    const std::pair<const wchar_t*, const wchar_t*> columns[] = {
        {L"%.1f um", L"0.5 um"}, {L"%d", L"0.5"}, {L"%s%n", L"0.5"}, {L"%g%%", L"0.5%"}, {L"", L"0.5"}};
    int column = 3;
    for (const auto& [format, shown] : columns) {
        owner.table->InsertColumn(L"", 40, format, false);
        owner.table->SetCell(1, column, 0.5);
        EXPECT_EQ(owner.Cell(1, column++), shown) << Narrow(format);
    }
    owner.table->InsertColumn(nullptr, 40, L"%300.1f", false);
    owner.table->SetCell(1, column, 0.5);
    EXPECT_EQ(owner.Cell(1, column).size(), 255u);
}

TEST(TableRows, AreFound) {
    Owner owner;
    CKxDevUI_Table& table = *owner.table;
    const wchar_t* rows[][2] = {{L"dapi", L"a"}, {L"DAPI", L"a"}, {L"DAPI", L"DAPI"}, {L"other", L"DAPI"}};
    for (auto& row : rows)
        table.InsertRow(row, 2, -1);
    const std::tuple<const wchar_t*, int, int> cases[] = {
        {L"DAPI", -1, 31}, {L"DAPI", 0, 31}, {L"dapi", -1, 30}, {L"DAPI", 1, 32},     {L"a", 1, -1},
        {L"Dapi", -1, -1}, {L"", -1, -1},    {L"31", -1, -1},   {L"12345678", 0, -1}, {L"DAPI", 9, -1},
    };
    for (const auto& [text, column, found] : cases)
        EXPECT_EQ(table.Search(text, column), found) << Narrow(text) << ' ' << column;
    table.SetUserData(5, 0, 42);
    table.SetUserData(9, 0, 42);
    EXPECT_EQ(table.Search(std::int64_t{42}, -1), 5);
    EXPECT_EQ(table.Search(std::int64_t{42}, 1), 5);
    EXPECT_EQ(table.Search(std::int64_t{43}, -1), -1);
    table.Destroy();
    EXPECT_EQ(table.Search(L"DAPI", -1), -1);
    EXPECT_EQ(table.Search(std::int64_t{42}, 0), -1);
}

TEST(TableEditing, StoresOnEnterAndDropsOtherwise) {
    Owner owner;
    owner.table->SetUserData(2, 0, 5);
    owner.DoubleClickOn(2, 1);
    ASSERT_TRUE(Owner::Field());
    Key('A', MOD_CONTROL);
    Type(L"7.5\n");
    EXPECT_EQ(Owner::Field(), nullptr);
    EXPECT_EQ(GetFocus(), owner.List());
    EXPECT_EQ(owner.Cell(2, 1), L"7.5");
    EXPECT_TRUE(owner.parent.Record().Matches({Call("activated", 2), Call("edited", kId, 2, 1, L"7.5", 5)}));

    const std::pair<const char*, std::function<void()>> drops[] = {
        {"Escape", [] { Key(VK_ESCAPE); }},
        {"click on the list", [&] { Click(owner.List(), owner.Middle(4, 0).x, owner.Middle(4, 0).y); }},
        {"focus", [&] { SetFocus(owner.parent.Window()); }},
        {"scroll", [&] { SendMessageW(owner.List(), WM_VSCROLL, SB_LINEDOWN, 0); }},
        {"resize", [&] { MoveWindow(*owner.table, 10, 20, 301, 150, TRUE); }},
        {"zoom", [] { CKxGUILayoutManager::SetGuiZoom(1.5), CKxGUILayoutManager::SetGuiZoom(1.0); }},
        {"row", [&] { ListView_DeleteItem(owner.List(), 29); }},
        {"disabling", [&] { owner.table->SetEnabled(false), owner.table->SetEnabled(true); }},
    };
    for (const auto& [name, drop] : drops) {
        ListView_EnsureVisible(owner.List(), 0, FALSE);
        owner.DoubleClickOn(3, 1);
        ASSERT_TRUE(Owner::Field()) << name;
        Type(L"99");
        drop();
        Pump();
        EXPECT_EQ(Owner::Field(), nullptr) << name;
        EXPECT_EQ(owner.Cell(3, 1), L"1.500") << name;
        EXPECT_TRUE(owner.parent.Record().Matches({Call("activated", 3)})) << name;
    }
    owner.DoubleClickOn(2, 0);
    EXPECT_EQ(Owner::Field(), nullptr) << "the first column cannot be edited";
}

TEST(TableEditing, GoesByKeys) {
    Owner owner;
    owner.table->SetFocus();
    EXPECT_EQ(GetFocus(), owner.List());
    ListView_SetItemState(owner.List(), 1, LVIS_FOCUSED, LVIS_FOCUSED);
    Key(VK_F2);
    ASSERT_TRUE(Owner::Field());
    Type(L"\t");      // to the note of the same row
    Type(L"here\t");  // to the next row's Z
    Key('A', MOD_CONTROL);
    Type(L"8\n");
    Key(VK_F2);
    Key(VK_TAB, MOD_SHIFT);  // back over the row's end: nothing before it
    EXPECT_TRUE(
        owner.parent.Record().Matches({Call("edited", kId, 1, 1, L"0.500", 0), Call("edited", kId, 1, 2, L"here", 0),
                                       Call("edited", kId, 2, 1, L"8", 0), Call("edited", kId, 1, 1, L"0.500", 0)}));
    EXPECT_EQ(owner.Cell(2, 1), L"8");
}

// The first row of the rectangle in which something is drawn on what its right end shows; screen coordinates.
long TopOfText(HWND window, const RECT& inside) {
    const Picture picture = Picture::OnScreen(window);
    const COLORREF background = picture.Pixel(inside.right - 1, inside.top + 1);
    for (int y = inside.top; y < inside.bottom; ++y)
        for (int x = inside.left; x < inside.right; ++x)
            if (picture.Pixel(x, y) != background) return y;
    return -1;
}

TEST(TableEditing, SitsOnItsCell) {
    Owner owner;
    int orders[][3] = {{0, 1, 2}, {2, 0, 1}};
    for (const double zoom : {1.0, 1.5, 2.0}) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        for (auto& order : orders) {
            ListView_SetColumnOrderArray(owner.List(), 3, order);
            ListView_EnsureVisible(owner.List(), 20, FALSE);
            const int row = ListView_GetTopIndex(owner.List()) + 1, width = ListView_GetColumnWidth(owner.List(), 1);
            RECT cell{};
            ListView_GetItemRect(owner.List(), row, &cell, LVIR_BOUNDS);
            const int middle = owner.Middle(row, 1).x;
            RedrawWindow(owner.List(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            const long textTop = TopOfText(owner.List(), {middle - width / 2 + 8, cell.top, middle, cell.bottom - 1});
            owner.DoubleClickOn(row, 1);
            ASSERT_TRUE(Owner::Field()) << zoom << order[0] << row;
            const HWND field = GetAncestor(Owner::Field(), GA_ROOT);
            EXPECT_NE(field, GetAncestor(owner.List(), GA_ROOT));
            RECT rect{};
            GetWindowRect(field, &rect);
            POINT corner{owner.Middle(row, 1).x - width / 2, cell.top};
            ClientToScreen(owner.List(), &corner);
            EXPECT_NEAR(rect.left, corner.x + 3, 1) << zoom << order[0];
            EXPECT_EQ(rect.top, corner.y + 3);
            EXPECT_EQ(rect.bottom - rect.top, cell.bottom - cell.top + 3);
            EXPECT_EQ(rect.right - rect.left, width);
            SendMessageW(Owner::Field(), EM_SETSEL, 0, 0);
            HideCaret(Owner::Field());
            UpdateWindow(Owner::Field());
            const Picture picture = Picture::OnScreen(field);
            picture.Save("table-editor");
            EXPECT_EQ(picture.Pixel(width / 2, 0), GetSysColor(COLOR_HIGHLIGHT)) << "the frame is covered";
            EXPECT_EQ(TopOfText(field, {8, 1, width / 2, rect.bottom - rect.top - 1}) + rect.top - corner.y + cell.top,
                      textTop)
                << zoom;
            Key(VK_ESCAPE);
        }
    }
    CKxGUILayoutManager::SetGuiZoom(1.0);
    EXPECT_EQ(ListView_GetColumnWidth(owner.List(), 1), 90);
}

TEST(TableRows, LookDisabledWithTheirHeader) {
    Owner owner;
    const HWND header = ListView_GetHeader(owner.List());
    const Picture enabled = Picture::OnScreen(header);
    owner.table->SetEnabled(false);
    UpdateWindow(header);
    EXPECT_GT(Picture::OnScreen(header).Count(GetSysColor(COLOR_GRAYTEXT)), 10);
    EXPECT_EQ(Picture::OnScreen(header).Count(GetSysColor(COLOR_BTNTEXT)), 0);
    owner.table->SetEnabled(true);
    UpdateWindow(header);
    EXPECT_TRUE(Picture::OnScreen(header) == enabled);
}

TEST(TableLife, EndsInTheMiddleOfAnything) {
    Owner owner;
    owner.DoubleClickOn(2, 1);
    const HWND field = GetAncestor(Owner::Field(), GA_ROOT);
    ASSERT_TRUE(field);
    DestroyWindow(*owner.table);
    EXPECT_FALSE(IsWindow(field));
    EXPECT_EQ(owner.table->GetListView(), nullptr);
    EXPECT_TRUE(owner.parent.Record().Matches({Call("activated", 2)}));
    owner.onNotify = [&] { owner.table.reset(); };
    owner.Fill();
    owner.DoubleClickOn(2, 1);
    EXPECT_EQ(owner.table, nullptr);
}

TEST(TableLife, PassesActivationOnWhenItIsNotAnswered) {
    Owner owner;
    ListView_SetItemState(owner.List(), 1, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
    owner.table->SetFocus();
    Key(VK_RETURN);
    EXPECT_TRUE(owner.parent.Record().Matches({Call("activated", 1)}));
    owner.answer = 0;
    Key(VK_RETURN);
    EXPECT_TRUE(owner.parent.Record().Matches({Call("activated", 1), Call("passed on", 1)}));
    owner.onNotify = [&] { owner.table->Destroy(); };
    Key(VK_RETURN);
    EXPECT_EQ(static_cast<HWND>(*owner.table), nullptr);
}

TEST(TableLife, ReplacesAListOfADialog) {
    RecordingParent parent;
    const auto add = [&](const wchar_t* name, int id, DWORD style) {
        return AddChild(parent.Window(), name, id, {10, 30 * id, 100, 30 * id + 25}, WS_TABSTOP | style);
    };
    const HWND before = add(L"EDIT", 1, 0), list = add(WC_LISTVIEWW, 2, LVS_REPORT | LVS_NOSORTHEADER),
               after = add(L"EDIT", 3, 0);
    ListView_SetExtendedListViewStyle(list, LVS_EX_GRIDLINES);
    CKxDevUI_Table table;
    EXPECT_EQ(table.Create(static_cast<HWND>(nullptr)), nullptr);
    EXPECT_EQ(table.Create(parent.Window()), nullptr);
    ASSERT_TRUE(table.Create(list));
    EXPECT_FALSE(IsWindow(list));
    EXPECT_EQ(table.GetId(), 2);
    EXPECT_EQ(GetWindow(before, GW_HWNDNEXT), static_cast<HWND>(table));
    EXPECT_EQ(GetWindow(table, GW_HWNDNEXT), after);
    EXPECT_EQ(GetDlgCtrlID(table.GetListView()), 2);
    EXPECT_TRUE(GetWindowLongW(table.GetListView(), GWL_STYLE) & LVS_NOSORTHEADER);
    EXPECT_EQ(ListView_GetExtendedListViewStyle(table.GetListView()), DWORD{LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT});
    EXPECT_EQ(PlaceOf(table), "10 60 90 25");
}

}  // namespace
