// A Z drive on a device that is limited, locked, stopped and turned by hand.
#include "subject.h"

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/zfocus/devgui_zdrive.h>

namespace kx::test {
namespace {

struct Driven : Telling<CKxDevUI_ZDrive> {
    void OnMoveRequest(double to, bool& veto) override { veto = to > 900, Tell("OnMoveRequest"); }
    void OnLimitChangeRequest(EKxZLimit, std::optional<double> at, bool& veto) override {
        veto = !at, Tell("OnLimitChangeRequest");
    }
    void OnStepChangeRequest(EKxZStep, double, bool&) override { Tell("OnStepChangeRequest"); }
    void OnSpeedChangeRequest(double, bool&) override { Tell("OnSpeedChangeRequest"); }
    void OnJoystickLockRequest(bool lock, bool& veto) override { veto = lock, Tell("OnJoystickLockRequest"); }
    void OnEscapeChanged() override { Tell("OnEscapeChanged"); }
};

std::optional<double> AnyPosition(Random& r) { return r.OneIn(4) ? std::nullopt : std::optional(AnyNumber(r)); }

struct ZDriveSubject : SubjectOf<Driven> {
    ZDriveSubject() {
        CKxDeviceRegistry::Add(device_);
        device_.SetSpeed(0);
        device_.SetHome(500), device_.SetUpperLimit(900), device_.SetLowerLimit(50);
    }

    std::vector<Exception> Exceptions() const override {
        return {{Law::Keys, "Button #10200 in KxDevUI_ImageButton #1022", "the drive stands at its lower end"},
                {Law::Keys, "Button #10200 in KxDevUI_ImageButton #10230", "there is no lower limit to lift"}};
    }
    // The digits are drawn, and no label of a font that the platform hints.
    int Coarseness() const override { return 96; }

    void Make(HWND parent) override {
        // At 150 % it is higher than other subjects.
        SetWindowPos(parent, nullptr, 0, 0, 900, 560, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        control_->Create(parent, 10, 10, -1, -1, true, true);
        if (!control_) return;
        control_->Update(device_.GetLogDevId());
        // An empty field, as this one is at first, has nothing that could look disabled where grounds stay black.
        SetWindowTextW(GetWindow(GetDlgItem(*control_, 10200), GW_CHILD), L"250");
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a position", Do(&Driven::SetPosition, AnyPosition)},
            {"limits", Do(&Driven::SetLimits, AnyPosition, AnyPosition)},
            {"a stack", Do(&Driven::SetStack, AnyPosition, AnyPosition)},
            {"a piezo",
             [this](Random& r) {
                 control_->SetPiezo(kx::zdrive::Piezo{AnyNumber(r), AnyNumber(r), AnyNumber(r)});
             }},
            {"a drive",
             [this](Random& r) {
                 control_->SetDrive({.minimum = AnyPosition(r),
                                     .maximum = AnyPosition(r),
                                     .inverted = r.OneIn(2),
                                     .position = AnyPosition(r),
                                     .target = AnyPosition(r),
                                     .home = AnyPosition(r)});
             }},
            {"an escape",
             [this](Random& r) {
                 control_->SetEscape({AnyPosition(r), r.OneIn(2), r.OneIn(2)});
             }},
            {"a joystick", Do(&Driven::SetJoystickLock, Flag)},
            {"a wheel",
             [this](Random& r) {
                 SetFocus(*control_);
                 control_->HandleMouseWheel(MAKEWPARAM(r.OneIn(2) ? MK_CONTROL : MK_SHIFT, r.Between(-400, 400)), 0);
             }},
            {"an update",
             [this](Random& r) {
                 device_.TryPlace(r.Between(-1, 9)), device_.SetFails(r.OneIn(4)), device_.SetInverted(r.OneIn(2));
                 if (r.OneIn(3)) device_.Stop();
                 if (r.OneIn(2)) device_.Tick();
                 if (r.OneIn(5)) device_.TurnByHand(r.Between(0, 900)), device_.SetDrift(r.Between(-9, 9));
                 control_->Update(device_.GetLogDevId() + r.OneIn(8), {r.OneIn(2), r.OneIn(2)});
             }},
            {"an activity", [this](Random& r) { TellAnyActivity(*control_, r); }},
        };
    }

    CKxSimZDrive device_{L"Subject", {0, 1000}};
};

const Registered<ZDriveSubject> drive("Z drive");

}  // namespace
}  // namespace kx::test
