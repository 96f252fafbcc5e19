#include "subject.h"

#include <kxbaseui/kx_fonts.h>
#include <kxdevui/controls/devgui_radio.h>

namespace kx::test {
namespace {

struct RadioSubject : SubjectOf<CKxDevUI_Radio> {
    void Make(HWND parent) override {
        Hear({WM_COMMAND});
        control_->Destroy();
        HWND last = nullptr;
        for (int i = 3; i >= 0; --i) {
            last = AddChild(parent, L"STATIC", 0, {20, 10 + 25 * i, 110, 30 + 25 * i}, 0,
                            i == 0   ? L"title"
                            : i == 1 ? L"1"
                            : i == 2 ? L"1.5"
                                     : L"2");
            SendMessageW(last, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
            SetWindowPos(last, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        }
        control_->Create(GetWindow(last, GW_HWNDNEXT), 3, last);
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"selecting", [this](Random& r) { control_->SetSelection(r.Between(-1, 4)); }},
            {"a name", [this](Random& r) { control_->SetValueName(r.Between(-1, 4), L"2.5"); }},
            {"a title", Do(&CKxDevUI_Radio::SetTitle, OneOf({L"other", L"title"}))},
            {"selecting by name", [this](Random&) { control_->SetSelection(L"2.5"); }},
            {"asking",
             [this](Random& r) {
                 control_->SetUserData(r.Between(-1, 4), 5), control_->GetUserData(r.Between(-1, 4));
                 control_->CheckRestriction(false);
             }},
            {"enabling a value", Do(&CKxDevUI_Radio::SetValueEnabled, Within(-1, 4), Flag)},
            {"enabling the window", [this](Random& r) { EnableWindow(Window(), r.OneIn(2)); }},
        };
    }

    std::vector<std::wstring> OwnTexts() const override { return {L"title", L"other"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Silence, "0:1025", "a selection is told, whoever made it"},
                {Law::Disabled, "enabling", "is meant to"},
                {Law::Disabled, "Static", "the rules disable the buttons, not the title"}};
    }
    bool Provoke(int) override { return control_->SetSelection(0), true; }

    std::string CheckOwn() override {
        const HWND window = Window();
        const int count = control_->GetValuesCount();
        if (!window) return count == 0 ? "" : "there are values without a window";
        int checked = 0;
        for (int i = 0; i < count; ++i) {
            const HWND button = GetDlgItem(window, 85 + i);
            if (!button) return "a button is missing";
            if (SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED) ++checked;
            if (IsWindowEnabled(button) && !IsWindowEnabled(window)) return "a button looks as if it could be chosen";
        }
        if (checked > 1) return "two values are selected";
        return (control_->GetSelectionIndex() >= 0) != (checked == 1) ? "the selected value is not found" : "";
    }
};

const Registered<RadioSubject> radio("radio group");

}  // namespace
}  // namespace kx::test
