// A setup dialog: the same window as a child, because a modal one lets nobody else go on.
#include "subject.h"

#include <kxdevui/framework/ui_life.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/setup/setup_dialog.h>
#include <kxdevui/setup/setup_ids.h>

namespace kx::test {
namespace {

using setup::Entry;

const Entry s_oil{L"a", L"Plan 60x Oil", L"Oil", 60, 1.4, 130, L"0.17 mm", 60};
const Entry s_dry{L"b", L"Plan 20x", L"Air", 20, 0.75, 1000, L"", 60};

struct Dialog : setup::SetupDialog {
    Dialog()
        : SetupDialog({.templateName = L"IDD_OBJECTIVE_SETUP",
                       .columns = {{L"Objective", 152, [](const Entry& each) { return each.name; }}},
                       .choices = {s_oil, s_dry}},
                      {s_oil, Entry(), s_dry, s_oil}, [this](const auto&, const auto&, SKxSetupRefusal& refusal) {
                          refusal = {true, L"Plan", 1};
                          if (const auto told = tell) told("the record");
                      }) {}
    void MakeIn(HWND parent) {
        const ui::Alive alive(this);
        CreateFromDlgPart(parent, 0, 0, 630, 410, L"IDD_OBJECTIVE_SETUP", ui::ModuleOf(WndProc));
        if (!alive || !m_hWnd) return;
        // As of a whole dialog.
        Init(false);
        SetupDialog::OnInit(WM_INITDIALOG, 0, 0);
        SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    std::function<void(const char*)> tell;

protected:
    // Once its parts are in their places.
    LRESULT OnInit(UINT, WPARAM, LPARAM) override { return 1; }
};

struct SetupSubject : SubjectOf<Dialog> {
    void Make(HWND parent) override {
        // At 150 % it is larger than other subjects.
        SetWindowPos(parent, nullptr, 0, 0, 990, 680, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        control_->MakeIn(parent);
    }
    HWND Remake() override { return control_->MakeIn(parent_->Window()), Window(); }
    // A dialog is of the platform's class, what is in it is not all the platform's.
    std::vector<Target> Windows() override {
        std::vector<Target> all = TreeOf(Window());
        for (HWND each = GetWindow(Window(), GW_CHILD); each; each = GetWindow(each, GW_HWNDNEXT))
            for (const Target& inside : TreeOf(each))
                all.push_back(inside);
        return all;
    }
    HWND Inner(int id) const { return GetWindow(GetDlgItem(Window(), id), GW_CHILD); }
    std::vector<Operation> MakeOperations() override {
        return {
            {"another row",
             [this](Random& r) {
                 const UINT state = LVIS_SELECTED | LVIS_FOCUSED;
                 ListView_SetItemState(Inner(IDC_SETUP_TABLE), r.Between(-1, 5), state, state);
             }},
            {"what is looked for",
             [this](Random& r) {
                 SetDlgItemTextW(Window(), IDC_SETUP_FIND,
                                 r.Of(std::vector<const wchar_t*>{L"", L"oil", L"x 2", L"?"}));
             }},
            {"another objective",
             [this](Random& r) { SendMessageW(Inner(IDC_SETUP_LIST), WM_KEYDOWN, r.OneIn(2) ? VK_DOWN : VK_HOME, 0); }},
            {"emptying", [this](Random&) { SendMessageW(Inner(IDC_SETUP_TABLE), WM_KEYDOWN, VK_DELETE, 0); }},
            {"OK", [this](Random&) { SendMessageW(Window(), WM_COMMAND, IDOK, 0); }},
        };
    }
    bool Provoke(int) override {
        SendMessageW(Inner(IDC_SETUP_TABLE), WM_KEYDOWN, VK_DELETE, 0);
        SendMessageW(Window(), WM_COMMAND, IDOK, 0);
        return true;
    }
    // What is the same in German.
    std::vector<std::wstring> OwnTexts() const override {
        return {L"Plan", L"&NA", L"NA", L"&Immersion", L"Immersion", L"OK", L"60x", L"20x"};
    }
    std::vector<Exception> Exceptions() const override {
        return {
            {Law::Disabled, "", "nobody disables a dialog that is waited for"},
            {Law::Silence, "OK", "is the user's"},
            {Law::Focus, "the outline of ListBox", "in the system's colours the platform draws dots around its rows"},
            {Law::Access, "#32770 #0", "the platform tells of dialogs"},
            {Law::Access, "Button #1", "and of their buttons"},
            {Law::Access, "Button #2", "and of their buttons"},
            {Law::Access, "Edit #2303", "and of a field that is theirs"}};
    }
    // The rows of the platform's list view are not twice as high.
    int Coarseness() const override { return 140; }
    std::string CheckOwn() override { return {}; }
};

const Registered<SetupSubject> subject("setup dialog");

}  // namespace
}  // namespace kx::test
