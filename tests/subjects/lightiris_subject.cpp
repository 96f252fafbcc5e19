// An iris with its shutter, whose parts come and go with the device.
#include "subject.h"

#include <kxdevices/kx_simlight.h>
#include <kxdevui/light/devgui_lightiris.h>

namespace kx::test {
namespace {

struct Opened : Telling<CKxDevUI_LightIris> {
    void OnApertureChangeRequest(double aperture, bool& veto) override {
        veto = aperture > 50, Tell("OnApertureChangeRequest");
    }
    void OnShutterChangeRequest(bool open, bool& veto) override { veto = open, Tell("OnShutterChangeRequest"); }
};

struct LightIrisSubject : SubjectOf<Opened> {
    LightIrisSubject() {
        CKxDeviceRegistry::Add(device_), device_.SetSpeed(0), device_.SetAperture(40), device_.Tick();
    }

    std::vector<std::wstring> OwnTexts() const override { return {L"%", L"mm"}; }
    // Around the shutter's picture four pixels are free at any zoom.
    int Coarseness() const override { return 64; }
    void Change(int n) override {
        control_->SetApertures(std::vector<double>(static_cast<std::size_t>(n) % 3, 7.0), n % 2);
    }

    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, -1, -1, true, true);
        if (control_) control_->Update(device_.GetLogDevId());
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a table",
             [this](Random& r) {
                 std::vector<double> steps(static_cast<std::size_t>(r.Between(0, 9)));
                 for (double& each : steps)
                     each = AnyNumber(r);
                 control_->SetApertures(steps, r.Between(-1, 3));
             }},
            {"an aperture", Do(&Opened::SetAperture, AnyNumber)},
            {"the shutter", Do(&Opened::SetShutter, Flag)},
            {"an update",
             [this](Random& r) {
                 device_.TryPlace(r.Between(-1, 9)), device_.SetFails(r.OneIn(4)), device_.SetLocked(r.OneIn(9));
                 if (r.OneIn(2)) device_.Tick();
                 control_->Update(device_.GetLogDevId() + r.OneIn(8), {r.OneIn(2), r.OneIn(2)});
             }},
            {"an activity", [this](Random& r) { TellAnyActivity(*control_, r); }},
            {"readings", [this](Random& r) { TellAnyReadings(*control_, r); }},
        };
    }

    CKxSimIris device_{L"Subject", {10, 20, 30, 40, 50, 60, 80, 100}, {.shutter = true}};
};

const Registered<LightIrisSubject> iris("light iris");

}  // namespace
}  // namespace kx::test
