// Storms against radio groups.
#include "storm.h"

#include <memory>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/devgui_radio.h>

namespace kx::test::storm {
namespace {

class RadioSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        parent.Answer(WM_COMMAND, [this](WPARAM, LPARAM) {
            if (const auto end = std::exchange(pending_, nullptr)) end();
            return 0;
        });
        if (!group_) group_ = std::make_unique<CKxDevUI_Radio>();
        group_->Destroy();
        HWND last = nullptr;
        for (int i = 3; i >= 0; --i) {
            last = CreateWindowExW(0, L"STATIC", i == 0 ? L"title" : L"1.5", WS_CHILD | WS_VISIBLE, 20, 10 + 25 * i, 90,
                                   20, parent.Window(), nullptr, nullptr, nullptr);
            SetWindowPos(last, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        }
        group_->Create(GetWindow(last, GW_HWNDNEXT), 3, last);
    }

    CKxDevUI_Base* Control() override { return group_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!group_ || !HWND{*group_}) return windows;
        windows.push_back({*group_, true});
        for (HWND child = GetWindow(*group_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, false});
        return windows;
    }

    Step Operate(Random& random) override {
        const int index = random.Between(-1, 4);
        switch (random.Below(8)) {
        case 0: return {"selecting", "", [=, this] { group_->SetSelection(index); }};
        case 1: return {"asking", "", [=, this] { Ask(index); }};
        case 2: return {"deleting in the notification", "", [this] { EndInCallback([this] { group_.reset(); }); }};
        case 3: return {"destroying in the notification", "", [this] { EndInCallback([this] { group_->Destroy(); }); }};
        case 4: return {"destroying the window", "", [this] { DestroyWindow(*group_); }};
        case 5: return {"enabling a value", "", [=, this] { group_->SetValueEnabled(index, index % 2 == 0); }};
        case 6: return {"enabling the window", "", [=, this] { EnableWindow(*group_, index % 2 == 0); }};
        default: return {"creating again", "", [this] { Create(*parent_); }};
        }
    }

    std::string Check() override {
        if (!group_) return {};
        const HWND window = *group_;
        const int count = group_->GetValuesCount();
        if (!window) return count == 0 ? "" : "there are values without a window";
        int checked = 0;
        for (int i = 0; i < count; ++i) {
            const HWND button = GetDlgItem(window, 85 + i);
            if (!button) return "a button is missing";
            if (SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED) ++checked;
            if (IsWindowEnabled(button) && !IsWindowEnabled(window)) return "a button looks as if it could be chosen";
        }
        if (checked > 1) return "two values are selected";
        if ((group_->GetSelectionIndex() >= 0) != (checked == 1)) return "the selected value is not found";
        if (++checks_ % 16 == 0 && !PaintsItsBackground(window, KX_GetSysColor(COLOR_BTNFACE)))
            return "the background is not painted";
        return {};
    }

    void Destroy() override { group_.reset(); }

private:
    void Ask(int index) {
        group_->SetValueName(index, L"2.5");
        group_->SetUserData(index, index);
        group_->GetUserData(index);
        group_->SetSelection(L"2.5");
        group_->SetTitle(L"other");
        group_->CheckRestriction(false);
    }

    void EndInCallback(std::function<void()> end) {
        pending_ = std::move(end);
        group_->SetSelection(0);
        pending_ = nullptr;
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<CKxDevUI_Radio> group_;
    std::function<void()> pending_;
    unsigned checks_ = 0;
};

TEST(RadioStorm, Survives) {
    Rage("radio group", [] { return std::make_unique<RadioSubject>(); });
}

}  // namespace
}  // namespace kx::test::storm
