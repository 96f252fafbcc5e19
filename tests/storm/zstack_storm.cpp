// Storms against the Z stack panel.
#include "storm.h"

#include <limits>
#include <memory>
#include <utility>

#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/zfocus/devgui_zstack.h>

namespace kx::test::storm {
namespace {

class StormPanel : public CKxDevUI_ZStack {
public:
    using CKxDevUI_ZStack::Item;
    std::function<void()> heard = [] {};

protected:
    void OnStepChanged(double, bool) override { Heard(); }
    void OnMoveZRequest(double) override { Heard(); }
    void OnGoHomeRequest(bool) override { Heard(); }
    void OnHostRequest() override {}
    void OnZDeviceShown(unsigned int) override { Heard(); }
    void OnZStackChanged(unsigned int flags) override {
        const kx::ui::Alive alive(this);
        Heard();
        if (alive) UpdateGUI(flags);
    }

private:
    void Heard() {
        const auto action = heard;
        action();
    }
};

class ZStackSubject : public Subject {
public:
    ZStackSubject() {
        KX_SetMessageBoxHandler([](HWND, auto, auto, UINT, int, void*) { return IDOK; }, nullptr);
        // Nobody answers the question in a storm, or closes the menu.
        CKxDevUI_ZStack::iKeepRange = 1;
        timer_ = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { EndMenu(); });
    }
    ~ZStackSubject() override {
        KX_SetMessageBoxHandler(nullptr, nullptr);
        CKxDevUI_ZStack::iKeepRange = 0;
        KillTimer(nullptr, timer_);
    }

    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        if (!panel_) panel_ = std::make_unique<StormPanel>();
        panel_->heard = [this] {
            if (const auto end = std::exchange(pending_, nullptr)) end();
        };
        panel_->Create(parent.Window(), &record_, 10, 10, 0, 0, true, true);
        record_.ClearZDevices();
        for (int i = 0; i < 2; ++i) {
            record_.AddZDevice(0, 1000 / (i + 1), nullptr);
            panel_->AppendZDevice(L"drive", i == 1, i, 0, 1000, i == 1, i, i == 0);
        }
        record_.SetZDevice(0);
        panel_->UpdateGUI(3);
    }

    CKxDevUI_Base* Control() override { return nullptr; }

    std::vector<Target> Windows() override {
        std::vector<Target> windows;
        if (!panel_ || !panel_->GetHandle()) return windows;
        windows.push_back({panel_->GetHandle(), true});
        for (HWND child = GetWindow(panel_->GetHandle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            windows.push_back({child, false});
        return windows;
    }

    Step Operate(Random& random) override {
        const int id = random.Between(1251, 1270), type = random.Between(-1, 8);
        const double z =
            random.Of({0.0, -1.0, 10.0, 499.9995, 1000.0, 1e9, -1e300, std::numeric_limits<double>::quiet_NaN()});
        const auto text = random.Of<const wchar_t*>({L"", L"N/A", L"5", L"-3", L"1e9", L"x", L"12abc"});
        const bool on = random.OneIn(2);
        switch (random.Below(12)) {
        case 0: return {"the ends", "", [=, this] { on ? record_.SetTop(z, true) : record_.SetBottom(z, true); }};
        case 1: return {"the home", "", [=, this] { on ? record_.SetHome(z) : record_.ResetHome(); }};
        case 2: return {"the type", "", [=, this] { record_.SetType(type), panel_->UpdateGUI(3); }};
        case 3: return {"where Z stands", "", [=, this] { record_.SetZPosition(0, z), panel_->UpdateGUI(4); }};
        case 4: return {"the step", "", [=, this] { record_.SetStep(z), panel_->UpdateGUI(2); }};
        case 5: return {"a click", std::to_string(id), [=, this] { SendMessageW(panel_->Item(id), BM_CLICK, 0, 0); }};
        case 6: return {"typing", std::to_string(id), [=, this] { Enter(id, text); }};
        case 7: return {"devices", "", [=, this] { panel_->ClearZDevices(on, true); }};
        case 8: return {"looks", "", [=, this] { panel_->EnableCube(on), panel_->SetPiezoPickerMode(on, type); }};
        case 9: return {"a copy", "", [this] { const StormPanel copy(*panel_); }};
        case 10: return {"letting go", "", [=, this] { panel_->DestroyGDIObjects(), panel_->Enable(on); }};
        default: return {"an end to come", "", [=, this] { End(type); }};
        }
    }

    std::string Check() override {
        if (!panel_) return {};
        const HWND window = panel_->GetHandle();
        if (!window) return {};
        if (!IsWindow(window) || GetParent(window) != parent_->Window()) return "the panel's handle is stale";
        const bool range = (GetWindowLongW(panel_->Item(1265), GWL_STYLE) & WS_VISIBLE) != 0;
        const bool above = (GetWindowLongW(panel_->Item(1267), GWL_STYLE) & WS_VISIBLE) != 0;
        return range && above ? "fields of two types are shown" : "";
    }

    void Destroy() override { panel_.reset(); }

private:
    void Enter(int id, const wchar_t* text) {
        SetFocus(panel_->Item(id));
        if (panel_) SetWindowTextW(panel_->Item(id), text);
        if (panel_ && panel_->GetHandle()) SetFocus(parent_->Window());
    }
    // Of the object, its window or its parent's child, in the middle of a callback.
    void End(int how) {
        pending_ = [this, how] {
            if (how < 2) {
                panel_.reset();
            } else if (how < 5) {
                panel_->Destroy();
            } else {
                DestroyWindow(panel_->GetHandle());
            }
        };
    }

    RecordingParent* parent_ = nullptr;
    CKxZStackData record_;
    std::unique_ptr<StormPanel> panel_;
    std::function<void()> pending_;
    UINT_PTR timer_ = 0;
};

TEST(ZStackStorm, Survives) {
    Rage("Z stack panel", [] { return std::make_unique<ZStackSubject>(); });
}

}  // namespace
}  // namespace kx::test::storm
