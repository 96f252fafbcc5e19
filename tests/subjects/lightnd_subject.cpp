// Neutral density of two wheels, whose buttons come and go with the device.
#include "subject.h"

#include <kxdevices/kx_simlight.h>
#include <kxdevui/light/devgui_lightnd.h>

namespace kx::test {
namespace {

struct Weakened : Telling<CKxDevUI_LightND> {
    void OnAttenuationChangeRequest(int, long position, bool& veto) override {
        veto = position == 1, Tell("OnAttenuationChangeRequest");
    }
    void OnShutterChangeRequest(bool open, bool& veto) override { veto = open, Tell("OnShutterChangeRequest"); }
};

struct LightNDSubject : SubjectOf<Weakened> {
    LightNDSubject() { CKxDeviceRegistry::Add(device_), device_.SetSpeed(0); }

    std::vector<std::wstring> OwnTexts() const override {
        return {L"100", L"50", L"25", L"10", L"1", L"0", L"?", L"OD"};
    }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Disabled, "Button #10300", "is down, where Wine's themed push-like buttons look alike"},
                {Law::Disabled, "Button #10320", "as above"}};
    }
    // Around the shutter's picture four pixels are free at any zoom.
    int Coarseness() const override { return 64; }
    void Change(int n) override {
        control_->SetTransmissions(n % 2, std::vector<double>(static_cast<std::size_t>(n) % 4, 0.5));
    }

    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, 268, 100, true, true);
        if (control_) control_->Update(device_.GetLogDevId());
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a wheel",
             [this](Random& r) {
                 std::vector<double> through(static_cast<std::size_t>(r.Between(0, 18)));
                 for (double& each : through)
                     each = r.OneIn(3) ? AnyNumber(r) : 0.5;
                 control_->SetTransmissions(r.Between(-1, 2), through);
             }},
            {"a position", Do(&Weakened::SetPosition, Within(-1, 2), Within(-1, 18))},
            {"the shutter", Do(&Weakened::SetShutter, Flag)},
            {"an update",
             [this](Random& r) {
                 device_.TryPlace(r.Between(-1, 9)), device_.SetFails(r.OneIn(4)), device_.SetLocked(r.OneIn(9));
                 if (r.OneIn(2)) device_.Tick();
                 control_->Update(device_.GetLogDevId() + r.OneIn(8), {r.OneIn(2), r.OneIn(2)});
             }},
            {"an activity", [this](Random& r) { TellAnyActivity(*control_, r); }},
        };
    }

    CKxSimNDFilter device_{L"Subject", {{1, 0.5, 0.25}, {1, 0.1, 0.01, 0}}, true};
};

const Registered<LightNDSubject> nd("neutral density");

}  // namespace
}  // namespace kx::test
