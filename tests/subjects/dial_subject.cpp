// A control of a row and a field, whose buttons come and go with its device.
#include "subject.h"

#include <dial/dial.h>
#include <dial/dial_device.h>

namespace kx::test {
namespace {

struct Turned : Telling<Dial> {
    void OnPositionRequest(long position, bool& veto) override { veto = position == 1, Tell("OnPositionRequest"); }
    void OnAngleRequest(double angle, bool& veto) override { veto = angle > 50, Tell("OnAngleRequest"); }
};

struct DialSubject : SubjectOf<Turned> {
    DialSubject() { CKxDeviceRegistry::Add(device_); }

    std::vector<std::wstring> OwnTexts() const override { return {L"Lamp", L"Place"}; }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Language, "dial", "its catalogue comes with the host that has it"},
                {Law::Disabled, "Button #10300", "is down, where Wine's themed push-like buttons look alike"}};
    }
    void Change(int n) override { SetPositions(n % 5); }

    void Make(HWND parent) override {
        control_->Create(parent, 10, 10, -1, -1, true, true);
        if (control_) control_->Update(device_.GetLogDevId());
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"positions", [this](Random& r) { SetPositions(r.Between(0, 18)); }},
            {"a position", Do(&Turned::SetPosition, Within(-1, 4))},
            {"an angle", Do(&Turned::SetAngle, AnyNumber)},
            {"an update",
             [this](Random& r) {
                 device_.TryPlace(r.Between(-1, 9)), device_.Tick();
                 control_->Update(device_.GetLogDevId() + r.OneIn(8));
             }},
        };
    }

    void SetPositions(int count) {
        control_->SetPositions(std::vector<CKxStringW>(static_cast<std::size_t>(count), L"Place"), count / 2);
    }

    CKxSimDial device_{L"Subject"};
};

const Registered<DialSubject> dial("dial");

}  // namespace
}  // namespace kx::test
