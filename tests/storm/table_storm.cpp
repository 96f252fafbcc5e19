// Storms against tables, with a cell being edited much of the time.
#include "storm.h"

#include <commctrl.h>

#include <cstdint>

#include <kxdevui/controls/devgui_table.h>

namespace kx::test::storm {
namespace {

class Table : public CKxDevUI_Table {
public:
    using CKxDevUI_Table::FinishEdit;
    using CKxDevUI_Table::StartEdit;
};

// The floating field of this thread, while it shows.
HWND ShownField() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM result) -> BOOL {
            wchar_t name[32] = L"";
            GetClassNameW(window, name, 32);
            if (lstrcmpW(name, L"KxDevUI_EditBox") != 0 || !IsWindowVisible(window)) return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

class TableSubject : public SubjectOf<Table> {
public:
    std::vector<Target> Windows() override {
        std::vector<Target> windows = TreeOf(Window());
        if (const HWND field = ShownField()) windows.push_back({GetWindow(field, GW_CHILD), false});
        return windows;
    }

protected:
    void Make(HWND parent) override {
        Hear({WM_NOTIFY});
        control_->Create(parent, 5, 5, 280, 160, true, true);
        for (int i = 0; i < 4; ++i)
            control_->InsertColumn(L"column", 70, i % 2 ? L"%.2f" : nullptr, i > 0);
        AddRows(10);
    }

    Step Own(Random& random) override {
        const int row = random.Between(-1, 14), column = random.Between(-1, 5);
        switch (random.Below(6)) {
        case 0: return {"editing", [=, this] { control_->StartEdit(row, column); }};
        case 1: return {"storing", [this] { control_->FinishEdit(true); }};
        case 2: return {"dropping", [this] { control_->FinishEdit(false); }};
        case 3: return {"adding rows", [this] { AddRows(3); }};
        case 4: return {"deleting a row", [=, this] { ListView_DeleteItem(control_->GetListView(), row); }};
        default: return {"setting a cell", [=, this] { Set(row, column); }};
        }
    }

    std::string CheckOwn() override {
        if (!Window()) return ShownField() ? "the field floats without a window" : "";
        return GetParent(control_->GetListView()) != Window() ? "the list lies in another window" : "";
    }

    void Ended() override {
        if (ShownField()) wrong_ = "the field floats without a table";
    }

    bool Provoke(int) override {
        control_->StartEdit(0, 1);
        if (control_) control_->FinishEdit(true);
        return true;
    }

private:
    void AddRows(int count) {
        for (int i = 0; i < count && ListView_GetItemCount(control_->GetListView()) < 60; ++i) {
            const double values[] = {double(i), i * 0.1, 1e300, -1};
            control_->InsertRow(values, 4, i % 2 ? -1 : 0);
        }
    }

    void Set(int row, int column) {
        control_->SetCell(row, column, 0.5);
        control_->SetCell(row, column, L"text");
        control_->SetChecked(row, true);
        control_->SetUserData(row, column, row);
        control_->Search(L"text", column);
        control_->Search(std::int64_t{3}, column);
        control_->GetCell(row, column);
    }
};

TEST(TableStorm, Survives) { Rage<TableSubject>("table"); }

}  // namespace
}  // namespace kx::test::storm
