// Two irises in one control, with the objective that one of them follows.
#include "subject.h"

#include <kxdevices/kx_simlight.h>
#include <kxdevui/light/devgui_lightiris2.h>

namespace kx::test {
namespace {

struct Opened : Telling<CKxDevUI_LightIris2> {
    void OnApertureChangeRequest(EKxDiaphragm, double aperture, bool& veto) override {
        veto = aperture > 50, Tell("OnApertureChangeRequest");
    }
    void OnShutterChangeRequest(bool open, bool& veto) override { veto = open, Tell("OnShutterChangeRequest"); }
    void OnCoupleRequest(bool, bool& veto) override { veto = GetObjectiveNA() > 1, Tell("OnCoupleRequest"); }
};

struct LightIris2Subject : SubjectOf<Opened> {
    LightIris2Subject() {
        for (CKxSimIris* each : {&field_, &aperture_})
            CKxDeviceRegistry::Add(*each), each->SetSpeed(0), each->SetAperture(40), each->Tick();
        CKxDeviceRegistry::Add(turret_);
    }

    std::vector<std::wstring> OwnTexts() const override { return {L"%", L"mm", L"NA "}; }
    // Around the shutter's picture four pixels are free at any zoom.
    int Coarseness() const override { return 64; }
    void Change(int n) override {
        control_->SetApertures(static_cast<EKxDiaphragm>(n % 2),
                               std::vector<double>(static_cast<std::size_t>(n) % 3, 7.0), n % 2, 0.9);
    }

    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, -1, -1, true, true);
        for (const IKxDevice* each : std::initializer_list<IKxDevice*>{&field_, &aperture_, &turret_})
            if (control_) control_->Update(each->GetLogDevId());
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"an aperture", Do(&Opened::SetAperture, Within(-1, 2), AnyNumber)},
            {"the objective", Do(&Opened::SetObjectiveNA, AnyNumber)},
            {"coupling", Do(&Opened::SetCoupled, Flag)},
            {"an update",
             [this](Random& r) {
                 CKxSimIris& device = r.OneIn(2) ? field_ : aperture_;
                 device.TryPlace(r.Between(-1, 9)), device.SetFails(r.OneIn(4)), device.SetLocked(r.OneIn(9));
                 if (r.OneIn(2)) device.Tick();
                 control_->Update(device.GetLogDevId() + r.OneIn(8), {r.OneIn(2), r.OneIn(2)});
             }},
            {"another objective",
             [this](Random& r) {
                 turret_.TryPlace(r.Between(0, 2)), turret_.Tick();
                 control_->Update(turret_.GetLogDevId());
             }},
        };
    }

    CKxSimIris field_{L"Field", {10, 20, 30, 40, 60, 100}, {.shutter = true}};
    CKxSimIris aperture_{L"Aperture",
                         {2, 4, 8, 16, 32},
                         {.diaphragm = eKxDiaphragm_Aperture, .unit = eKxIrisUnit_Millimetres, .widestNA = 0.9}};
    CKxSimNosepiece turret_{L"Turret", {{L"Plan", L"20x", L"PlanApo20x075"}, {}}};
};

const Registered<LightIris2Subject> irises("light irises");

}  // namespace
}  // namespace kx::test
