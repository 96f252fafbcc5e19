// The control of docs/writing-a-control.md.
#include "subject.h"

#include <beam_switch/beam_switch.h>
#include <kxdevices/kx_simdevices.h>

namespace kx::test {
namespace {

struct Beam : Telling<BeamSwitch> {
    void OnOpenRequest(bool open, bool& veto) override { veto = open, Tell("OnOpenRequest"); }
};

struct BeamSwitchSubject : SubjectOf<Beam> {
    BeamSwitchSubject() { CKxDeviceRegistry::Add(device_); }

    std::vector<std::wstring> OwnTexts() const override { return {L"Lamp"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Language, "beam_switch", "its catalogue comes with the host that has it"}};
    }

    void Make(HWND parent) override { control_->Create(parent, 10, 10, -1, -1, true, true); }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a state", Do(&Beam::SetOpen, Flag)},
            {"a title", Do(&Beam::SetTitle, OneOf({L"Lamp", L"Lamp 2"}))},
            {"an update",
             [this](Random& r) { device_.SetOpen(r.OneIn(2)), control_->Update(device_.GetLogDevId() + r.OneIn(8)); }},
        };
    }

    CKxSimShutter device_{L"Subject", eKxShutterType_Dia};
};

const Registered<BeamSwitchSubject> beam("beam switch");

}  // namespace
}  // namespace kx::test
