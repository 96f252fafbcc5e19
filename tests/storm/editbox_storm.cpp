// Storms against the edit boxes.
#include "storm.h"

#include <list>
#include <memory>
#include <utility>

#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>

namespace kx::test::storm {
namespace {

template <class Box>
class EditSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        parent.Answer(WM_COMMAND, [this](WPARAM, LPARAM) {
            if (const auto end = std::exchange(pending_, nullptr)) end();
            return 0;
        });
        if (!box_) box_ = std::make_unique<Box>();
        box_->SetSize(60, 80, 22);
        box_->Create(parent.Window(), 10, 10, -1, -1, true, true);
    }

    CKxDevUI_Base* Control() override { return box_.get(); }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!box_ || !HWND{*box_}) return windows;
        windows.push_back({*box_, true});
        for (HWND child = GetWindow(*box_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, false});
        return windows;
    }

    Step Operate(Random& random) override {
        const double value = random.Of<double>({0, -1, 0.5, 99.999, 1e300, -1e300});
        switch (random.Below(9)) {
        case 0: return {"setting a number", "", [=, this] { box_->SetNumber(value, L"%.2f", true); }};
        case 1: return {"setting a text", "", [this] { box_->SetText(std::wstring(2000, L'7').c_str()); }};
        case 2: return {"restricting", "", [=, this] { box_->SetRestriction(value, 10); }};
        case 3: return {"checking", "", [=, this] { box_->CKxDevUI_EditBox::CheckRestriction(false, true, value); }};
        case 4: return {"changing looks", "", [this, on = random.OneIn(2)] { Change(on); }};
        case 5: return {"deleting in a callback", "", [this] { EndInCallback([this] { box_.reset(); }); }};
        case 6: return {"destroying in a callback", "", [this] { EndInCallback([this] { box_->Destroy(); }); }};
        case 7: return {"destroying the window", "", [this] { DestroyWindow(*box_); }};
        default: return {"creating again", "", [this] { Create(*parent_); }};
        }
    }

    std::string Check() override {
        if (!box_ || HWND{*box_}) return {};
        return box_->GetEditWindow() ? "the edit's handle outlives the window" : "";
    }

    void Destroy() override { box_.reset(); }

private:
    void Change(bool on) {
        box_->Init(on, on, !on);
        box_->SetStyle(on);
        box_->SetReadOnly(on);
        box_->SetMaxChars(on ? 5 : -1);
        box_->SetTitle(on ? L"Label" : nullptr);
        if constexpr (std::is_same_v<Box, CKxDevUI_EditBoxMultiValue>) {
            const std::list<double> values{1, 2.5, 1e9};
            box_->SetValues(on ? &values : nullptr);
            box_->CheckRestriction(false);
        }
    }

    void EndInCallback(std::function<void()> end) {
        box_->SetText(L"1");
        pending_ = std::move(end);
        box_->SetText(L"2");  // EN_CHANGE
        pending_ = nullptr;
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<Box> box_;
    std::function<void()> pending_;
};

TEST(EditStorm, OneValue) {
    Rage("edit box", [] { return std::make_unique<EditSubject<CKxDevUI_EditBox>>(); });
}

TEST(EditStorm, WithArrows) {
    Rage("edit box with arrows", [] { return std::make_unique<EditSubject<CKxDevUI_EditBoxSpin>>(); });
}

TEST(EditStorm, List) {
    Rage("edit box for a list", [] { return std::make_unique<EditSubject<CKxDevUI_EditBoxMultiValue>>(); });
}

}  // namespace
}  // namespace kx::test::storm
