// Storms against the Z stack panel.
#include "storm.h"

#include <limits>

#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/zfocus/devgui_zstack.h>

namespace kx::test::storm {
namespace {

class Panel : public Telling<CKxDevUI_ZStack> {
public:
    using CKxDevUI_ZStack::Item;

protected:
    void OnStepChanged(double, bool) override { Tell(); }
    void OnMoveZRequest(double) override { Tell(); }
    void OnGoHomeRequest(bool) override { Tell(); }
    void OnHostRequest() override {}
    void OnZDeviceShown(unsigned int) override { Tell(); }
    void OnZStackChanged(unsigned int flags) override {
        const kx::ui::Alive alive(this);
        Tell();
        if (alive) UpdateGUI(flags);
    }
};

class ZStackSubject : public SubjectOf<Panel> {
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

protected:
    void Make(HWND parent) override {
        control_->Create(parent, &record_, 10, 10, 0, 0, true, true);
        record_.ClearZDevices();
        for (int i = 0; i < 2; ++i) {
            record_.AddZDevice(0, 1000 / (i + 1), nullptr);
            control_->AppendZDevice(L"drive", i == 1, i, 0, 1000, i == 1, i, i == 0);
        }
        record_.SetZDevice(0);
        control_->UpdateGUI(3);
    }

    Step Own(Random& random) override {
        const int id = random.Between(1251, 1270), type = random.Between(-1, 8);
        const double z =
            random.Of({0.0, -1.0, 10.0, 499.9995, 1000.0, 1e9, -1e300, std::numeric_limits<double>::quiet_NaN()});
        const auto text = random.Of<const wchar_t*>({L"", L"N/A", L"5", L"-3", L"1e9", L"x", L"12abc"});
        const bool on = random.OneIn(2);
        switch (random.Below(10)) {
        case 0: return {"the ends", [=, this] { on ? record_.SetTop(z, true) : record_.SetBottom(z, true); }};
        case 1: return {"the home", [=, this] { on ? record_.SetHome(z) : record_.ResetHome(); }};
        case 2: return {"the type", [=, this] { record_.SetType(type), control_->UpdateGUI(3); }};
        case 3: return {"where Z stands", [=, this] { record_.SetZPosition(0, z), control_->UpdateGUI(4); }};
        case 4: return {"the step", [=, this] { record_.SetStep(z), control_->UpdateGUI(2); }};
        case 5: return {"a click", [=, this] { SendMessageW(control_->Item(id), BM_CLICK, 0, 0); }, std::to_string(id)};
        case 6: return {"typing", [=, this] { Enter(id, text); }, std::to_string(id)};
        case 7: return {"devices", [=, this] { control_->ClearZDevices(on, true); }};
        case 8: return {"looks", [=, this] { control_->EnableCube(on), control_->SetPiezoPickerMode(on, type); }};
        default: return {"letting go", [=, this] { control_->DestroyGDIObjects(), control_->Enable(on); }};
        }
    }

    std::string CheckOwn() override {
        if (!Window()) return {};
        const bool range = (GetWindowLongW(control_->Item(1265), GWL_STYLE) & WS_VISIBLE) != 0;
        const bool above = (GetWindowLongW(control_->Item(1267), GWL_STYLE) & WS_VISIBLE) != 0;
        return range && above ? "fields of two types are shown" : "";
    }

private:
    void Enter(int id, const wchar_t* text) {
        SetFocus(control_->Item(id));
        if (control_) SetWindowTextW(control_->Item(id), text);
        if (control_ && Window()) SetFocus(parent_->Window());
    }

    CKxZStackData record_;
    UINT_PTR timer_ = 0;
};

TEST(ZStackStorm, Survives) { Rage<ZStackSubject>("Z stack panel"); }

}  // namespace
}  // namespace kx::test::storm
