// Storms against tables, with a cell being edited much of the time.
#include "storm.h"

#include <commctrl.h>

#include <memory>
#include <utility>

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

class TableSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        parent.Answer(WM_NOTIFY, [this](WPARAM, LPARAM) {
            if (const auto end = std::exchange(pending_, nullptr)) end();
            return 0;
        });
        if (!table_) table_ = std::make_unique<Table>();
        table_->Create(parent.Window(), 5, 5, 280, 160, true, true);
        for (int i = 0; i < 4; ++i)
            table_->InsertColumn(L"column", 70, i % 2 ? L"%.2f" : nullptr, i > 0);
        AddRows(10);
    }

    CKxDevUI_Base* Control() override { return table_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!table_ || !HWND{*table_}) return windows;
        windows.push_back({*table_, true});
        windows.push_back({table_->GetListView(), false});
        if (const HWND field = ShownField()) windows.push_back({GetWindow(field, GW_CHILD), false});
        return windows;
    }

    Step Operate(Random& random) override {
        const int row = random.Between(-1, 14), column = random.Between(-1, 5);
        switch (random.Below(10)) {
        case 0: return {"editing", "", [=, this] { table_->StartEdit(row, column); }};
        case 1: return {"storing", "", [this] { table_->FinishEdit(true); }};
        case 2: return {"dropping", "", [this] { table_->FinishEdit(false); }};
        case 3: return {"adding rows", "", [this] { AddRows(3); }};
        case 4: return {"deleting a row", "", [=, this] { ListView_DeleteItem(table_->GetListView(), row); }};
        case 5: return {"setting a cell", "", [=, this] { Set(row, column); }};
        case 6: return {"deleting in a callback", "", [=, this] { EndInCallback([this] { table_.reset(); }); }};
        case 7: return {"destroying in a callback", "", [=, this] { EndInCallback([this] { table_->Destroy(); }); }};
        case 8: return {"destroying the window", "", [this] { DestroyWindow(*table_); }};
        default: return {"creating again", "", [this] { Create(*parent_); }};
        }
    }

    std::string Check() override {
        const bool alive = table_ && HWND{*table_};
        if (ShownField() && !alive) return "the field floats without a table";
        if (!alive) return {};
        if (GetParent(table_->GetListView()) != HWND{*table_}) return "the list lies in another window";
        return {};
    }

    void Destroy() override { table_.reset(); }

private:
    void AddRows(int count) {
        for (int i = 0; i < count && ListView_GetItemCount(table_->GetListView()) < 60; ++i) {
            const double values[] = {double(i), i * 0.1, 1e300, -1};
            table_->InsertRow(values, 4, i % 2 ? -1 : 0);
        }
    }

    void Set(int row, int column) {
        table_->SetCell(row, column, 0.5);
        table_->SetCell(row, column, L"text");
        table_->SetChecked(row, true);
        table_->SetUserData(row, column, row);
        table_->Search(L"text", column);
        table_->Search(std::int64_t{3}, column);
        table_->GetCell(row, column);
    }

    void EndInCallback(std::function<void()> end) {
        pending_ = std::move(end);
        table_->StartEdit(0, 1);
        table_->FinishEdit(true);
        pending_ = nullptr;
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<Table> table_;
    std::function<void()> pending_;
};

TEST(TableStorm, Survives) {
    Rage("table", [] { return std::make_unique<TableSubject>(); });
}

}  // namespace
}  // namespace kx::test::storm
