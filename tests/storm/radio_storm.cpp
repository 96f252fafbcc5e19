// Storms against radio groups.
#include "storm.h"

#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/devgui_radio.h>

namespace kx::test::storm {
namespace {

class RadioSubject : public SubjectOf<CKxDevUI_Radio> {
protected:
    void Make(HWND parent) override {
        Hear({WM_COMMAND});
        control_->Destroy();
        HWND last = nullptr;
        for (int i = 3; i >= 0; --i) {
            last = CreateWindowExW(0, L"STATIC", i == 0 ? L"title" : L"1.5", WS_CHILD | WS_VISIBLE, 20, 10 + 25 * i, 90,
                                   20, parent, nullptr, nullptr, nullptr);
            SetWindowPos(last, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        }
        control_->Create(GetWindow(last, GW_HWNDNEXT), 3, last);
    }

    Step Own(Random& random) override {
        const int index = random.Between(-1, 4);
        switch (random.Below(4)) {
        case 0: return {"selecting", [=, this] { control_->SetSelection(index); }};
        case 1: return {"asking", [=, this] { Ask(index); }};
        case 2: return {"enabling a value", [=, this] { control_->SetValueEnabled(index, index % 2 == 0); }};
        default: return {"enabling the window", [=, this] { EnableWindow(Window(), index % 2 == 0); }};
        }
    }

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

    COLORREF Background() const override { return KX_GetSysColor(COLOR_BTNFACE); }

    bool Provoke(int) override { return control_->SetSelection(0), true; }

private:
    void Ask(int index) {
        control_->SetValueName(index, L"2.5");
        control_->SetUserData(index, index);
        control_->GetUserData(index);
        control_->SetSelection(L"2.5");
        control_->SetTitle(L"other");
        control_->CheckRestriction(false);
    }
};

TEST(RadioStorm, Survives) { Rage<RadioSubject>("radio group"); }

}  // namespace
}  // namespace kx::test::storm
