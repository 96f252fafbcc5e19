#include "subject.h"

#include <limits>

#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/zfocus/devgui_zstack.h>

namespace kx::test {
namespace {

struct Panel : Telling<CKxDevUI_ZStack> {
    using CKxDevUI_ZStack::Item;

    void OnStepChanged(double, bool) override { Tell("OnStepChanged"); }
    void OnMoveZRequest(double) override { Tell("OnMoveZRequest"); }
    void OnGoHomeRequest(bool) override { Tell("OnGoHomeRequest"); }
    void OnPiezoPickerChanged(unsigned int, int) override { Tell("OnPiezoPickerChanged"); }
    void OnHostRequest() override {}
    void OnZDeviceShown(unsigned int) override { Tell("OnZDeviceShown"); }
    void OnZStackChanged(unsigned int flags) override {
        const kx::ui::Alive alive(this);
        Tell("OnZStackChanged");
        if (alive) UpdateGUI(flags);
    }
};

struct ZStackSubject : SubjectOf<Panel> {
    // Nobody answers the question.
    explicit ZStackSubject(bool grips) : grips_(grips) { CKxDevUI_ZStack::iKeepRange = 1; }
    ~ZStackSubject() override { CKxDevUI_ZStack::iKeepRange = 0; }

    // A piezo is one in all languages.
    std::vector<std::wstring> OwnTexts() const override { return {L"drive", L"Piezo"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Silence, "OnZDeviceShown", "every refresh begins with it"},
                {Law::Silence, "a click", "is the user's"},
                {Law::Silence, "typing", "is the user's"},
                {Law::Silence, "a grip", "is the user's"},
                {Law::Zoom, "a grip", "is taken hold of by pixels"},
                {Law::Disabled, "enabling", "is meant to"},
                {Law::Disabled, "Static #-1", "is a line, which has no other look"},
                {Law::Focus, "a key in Button #1259", "takes the arrow that opens its menu, and no other"}};
    }
    HWND Remake() override { return control_->Create(parent_->Window(), &record_, 10, 10, 0, 0, true, true); }

    void Make(HWND parent) override {
        control_->EnableGrips(grips_);
        control_->Create(parent, &record_, 10, 10, 0, 0, true, true);
        record_.ClearZDevices();
        for (int i = 0; i < 2; ++i) {
            record_.AddZDevice(0, 1000 / (i + 1), nullptr);
            control_->AppendZDevice(L"drive", i == 1, i, 0, 1000, i == 1, 0, i == 0);
        }
        record_.SetZDevice(1);
        record_.SetTop(60, true), record_.SetBottom(20, true), record_.SetStep(2);
        record_.SetZPosition(0, 30), record_.SetZPosition(1, 30), record_.SetHome(30);
        record_.SetObjective(0.8, 1), record_.SetWavelength(500);
        control_->UpdateGUI(3);
    }

    std::vector<Operation> MakeOperations() override {
        auto all = MakePanels();
        // Without a pointer: what a hand does to them may come in any order.
        const auto use = [this](Random& r) {
            const UINT id = r.Of<UINT>({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONUP, WM_CAPTURECHANGED,
                                        WM_KEYDOWN, WM_KEYDOWN, kx::ui::WM_KX_MOUSE_WHEEL});
            const WPARAM key = r.Of<WPARAM>({VK_UP, VK_DOWN, VK_RIGHT, VK_NEXT, VK_ESCAPE});
            if (id == WM_KEYDOWN) SetFocus(control_->Item(1256));
            if (!control_ || !Window()) return;
            RECT scale{};
            GetWindowRect(control_->Item(1256), &scale);
            const bool wheel = id == kx::ui::WM_KX_MOUSE_WHEEL;
            const LPARAM at =
                wheel ? MAKELPARAM(scale.left, scale.top + r.Between(0, 90)) : MAKELPARAM(5, r.Between(-20, 120));
            SendMessageW(wheel ? Window() : control_->Item(1256), id,
                         wheel              ? MAKEWPARAM(0, r.OneIn(2) ? 120 : -120)
                         : id == WM_KEYDOWN ? key
                                            : MK_LBUTTON,
                         at);
        };
        if (grips_) all.push_back({"a grip", use});
        return all;
    }

    std::vector<Operation> MakePanels() {
        const auto z = [](Random& r) {
            return r.Of({0.0, -1.0, 10.0, 499.9995, 1000.0, 1e9, -1e300, std::numeric_limits<double>::quiet_NaN()});
        };
        const auto id = [](Random& r) { return r.Between(1251, 1270); };
        return {
            {"a life of requests", [this](Random& r) { TellAnyActivity(Window(), r); }},
            {"readings", [this](Random& r) { TellAnyReadings(Window(), r); }},
            {"the ends",
             [=, this](Random& r) {
                 r.OneIn(2) ? record_.SetTop(z(r), true) : record_.SetBottom(z(r), true);
                 control_->UpdateGUI(1);
             }},
            {"the home", [=, this](Random& r) { r.OneIn(2) ? record_.SetHome(z(r)) : record_.ResetHome(); }},
            {"a refresh", Do(&Panel::UpdateGUI, Within(0, 4))},
            {"the type", [this](Random& r) { record_.SetType(r.Between(-1, 8)), control_->UpdateGUI(3); }},
            {"where Z stands",
             [=, this](Random& r) { record_.SetZPosition(unsigned(r.Below(2)), z(r)), control_->UpdateGUI(4); }},
            {"the device",
             [this](Random& r) { record_.SetZDevice(r.OneIn(9) ? 2u : r.OneIn(2)), control_->UpdateGUI(1); }},
            {"the objective",
             [this](Random& r) { record_.SetObjective(r.OneIn(2) ? 0.8 : 0.3, 1), control_->UpdateGUI(3); }},
            {"the step", [=, this](Random& r) { record_.SetStep(z(r)), control_->UpdateGUI(2); }},
            {"a click", [=, this](Random& r) { SendMessageW(control_->Item(id(r)), BM_CLICK, 0, 0); }},
            {"typing",
             [=, this](Random& r) {
                 const int field = r.Between(1260, 1267);
                 Enter(field, r.Of<const wchar_t*>({L"", L"N/A", L"5", L"-3", L"1e9", L"x", L"12abc"}));
             }},
            {"devices", [this](Random& r) { control_->ClearZDevices(r.OneIn(2), true); }},
            {"looks",
             [this](Random& r) {
                 control_->EnableCube(r.OneIn(2)), control_->SetPiezoPickerMode(r.OneIn(2), r.Between(-1, 8));
             }},
            {"letting go", Do(&Panel::DestroyGDIObjects)},
            {"enabling", Do(&Panel::Enable, Flag)},
        };
    }

    void Enter(int id, const wchar_t* text) {
        SetFocus(control_->Item(id));
        if (control_) SetWindowTextW(control_->Item(id), text);
        if (control_ && Window()) SetFocus(parent_->Window());
        // The user gives up what was refused.
        if (control_ && Window() && GetFocus() == control_->Item(id)) {
            SetWindowTextW(control_->Item(id), L"");
            if (control_ && Window()) SetFocus(parent_->Window());
        }
    }

    CKxZStackData record_;
    bool grips_;
};

const Registered<ZStackSubject> zstack("Z stack panel", false);
const Registered<ZStackSubject> grips("Z stack panel with grips", true);

}  // namespace
}  // namespace kx::test
