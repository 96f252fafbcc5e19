// A lamp with its shutter and presets, whose parts come and go with the device.
#include "subject.h"

#include <kxdevices/kx_simlamp.h>
#include <kxdevui/light/devgui_lightslider.h>

namespace kx::test {
namespace {

struct Lit : Telling<CKxDevUI_LightSlider> {
    void OnIntensityChangeRequest(double intensity, bool& veto) override {
        veto = intensity > 9, Tell("OnIntensityChangeRequest");
    }
    void OnStateChangeRequest(bool on, bool& veto) override { veto = on, Tell("OnStateChangeRequest"); }
    void OnShutterChangeRequest(bool open, bool& veto) override { veto = open, Tell("OnShutterChangeRequest"); }
    void OnPresetStoreRequest(int preset, double, bool& veto) override {
        veto = preset == 1, Tell("OnPresetStoreRequest");
    }
};

struct LightSliderSubject : SubjectOf<Lit> {
    LightSliderSubject() {
        CKxDeviceRegistry::Add(device_), device_.SetSpeed(0), device_.SetIntensity(6), device_.SetOn(true);
        device_.Tick();
    }

    std::vector<std::wstring> OwnTexts() const override {
        return {L"V", L"%", L"2390", L"3", L"6", L"12", L"20", L"412", L"\u2013"};
    }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Disabled, "Button #10200", "is down, where Wine's themed push-like buttons look alike"}};
    }
    // Around the shutter's picture four pixels are free at any zoom.
    int Coarseness() const override { return 64; }
    void Change(int n) override { control_->SetScale(0, n % 3 * 6, 0.1, n % 2); }
    // Holding is a matter of time.
    bool Provoke(int n) override {
        if (n % 4 == 0) SendMessageW(*control_, WM_COMMAND, MAKEWPARAM(10300 + n % 3, 0x0410), 0);
        return n % 4 == 0;
    }

    void Make(HWND parent) override {
        control_->SetPreset(0, 3), control_->SetPreset(1, 20);
        control_->Create(parent, 10, 10, -1, -1, true, true);
        if (control_) control_->Update(device_.GetLogDevId());
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a scale", Do(&Lit::SetScale, AnyNumber, AnyNumber, AnyNumber, Within(-1, 2))},
            {"an intensity", Do(&Lit::SetIntensity, AnyNumber)},
            {"on", Do(&Lit::SetOn, Flag)},
            {"a preset", Do(&Lit::SetPreset, Within(-1, 3), AnyNumber)},
            {"a temperature", Do(&Lit::SetFullTemperature, AnyNumber)},
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

    CKxSimLamp device_{L"Subject",
                       {.kind = eKxLampKind_Halogen,
                        .unit = eKxLampUnit_Volts,
                        .maximum = 12,
                        .step = 0.1,
                        .fullTemperature = 3200,
                        .burnt = 412.5,
                        .rated = 2000,
                        .shutter = true}};
};

const Registered<LightSliderSubject> lamp("lamp");

}  // namespace
}  // namespace kx::test
