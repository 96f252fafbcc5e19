// The table, with a cell being edited much of the time.
#include "subject.h"

#include <commctrl.h>

#include <cstdint>

#include <kxdevui/controls/devgui_table.h>

namespace kx::test {
namespace {

struct Table : CKxDevUI_Table {
    using CKxDevUI_Table::FinishEdit, CKxDevUI_Table::StartEdit;
};

// The floating field, while it shows.
HWND ShownField() {
    HWND field = nullptr;
    do {
        field = FindWindowExW(nullptr, field, L"KxDevUI_EditBox", nullptr);
    } while (field && !IsWindowVisible(field));
    return field;
}

struct TableSubject : SubjectOf<Table> {
    std::vector<std::wstring> OwnTexts() const override { return {L"column", L"text"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Silence, "storing", "what is stored is told, as when the user stores it"}};
    }
    std::vector<Target> Windows() override {
        std::vector<Target> windows = TreeOf(Window());
        if (const HWND field = ShownField()) windows.push_back({GetWindow(field, GW_CHILD), false});
        return windows;
    }

    void Make(HWND parent) override {
        Hear({WM_NOTIFY});
        control_->SetTitle(L"settings");
        control_->Create(parent, 5, 5, 280, 160, true, true);
        ListView_SetExtendedListViewStyleEx(control_->GetListView(), LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
        for (int i = 0; i < 4; ++i)
            control_->InsertColumn((L"column " + std::to_wstring(i)).c_str(), 60, i % 2 ? L"%.2f" : nullptr, i > 0);
        AddRows(7);
    }

    std::vector<Operation> MakeOperations() override {
        const auto row = Within(-1, 14), column = Within(-1, 5);
        return {
            {"editing", Do(&Table::StartEdit, row, column)},
            {"storing", [this](Random&) { control_->FinishEdit(true); }},
            {"dropping", [this](Random&) { control_->FinishEdit(false); }},
            {"adding rows", [this](Random&) { AddRows(3); }},
            {"deleting a row", [=, this](Random& r) { ListView_DeleteItem(control_->GetListView(), row(r)); }},
            {"a number", [=, this](Random& r) { control_->SetCell(row(r), column(r), AnyNumber(r)); }},
            {"a text", [=, this](Random& r) { control_->SetCell(row(r), column(r), L"text"); }},
            {"a check mark", Do(&Table::SetChecked, row, Flag)},
            {"a user's number", Do(&Table::SetUserData, row, column, Within(3, 3))},
            {"searching",
             [=, this](Random& r) {
                 control_->Search(L"text", column(r));
                 control_->Search(std::int64_t{3}, column(r));
                 control_->GetCell(row(r), column(r));
             }},
        };
    }

    std::string CheckOwn() override { return !Window() && ShownField() ? "the field floats without a window" : ""; }

    void Ended() override {
        if (ShownField()) wrong_ = "the field floats without a table";
    }

    bool Provoke(int) override {
        control_->StartEdit(0, 1);
        if (control_) control_->FinishEdit(true);
        return true;
    }

    void AddRows(int count) {
        for (int i = 0; i < count && ListView_GetItemCount(control_->GetListView()) < 60; ++i) {
            const double values[] = {double(i), i * 0.1, 1e300, -1};
            control_->InsertRow(values, 4, i % 2 ? -1 : 0);
        }
    }
};

const Registered<TableSubject> table("table");

}  // namespace
}  // namespace kx::test
