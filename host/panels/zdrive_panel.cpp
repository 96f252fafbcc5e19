#include "zdrive_panel.h"

#include <limits>

#include "../held_values.h"
#include "../light_devices.h"
#include "../pages/page.h"

namespace {

const OnPage<ZDrivePanel> s_focus(L"Focus", {268, 332});

}  // namespace

ZDrivePanel::ZDrivePanel() : ControlPanel(L"Focus", Device()) {}

// Panels come and go with the language.
CKxSimZDrive& ZDrivePanel::Device() {
    static auto& device = []() -> CKxSimZDrive& {
        auto& drive = TheLight().Devices().Add<CKxSimZDrive>(L"Focus motor", SKxSimRange{0, 10000});
        drive.SetTravelSpeed(500);
        drive.SetHome(4000);
        drive.TurnByHand(4000);
        return drive;
    }();
    return device;
}

void AskingZDrive::Prepare() {
    SetEscape(Held().focus.retreat);
    ShowValues();
}

void AskingZDrive::Show(const DevicePanel::Change& change) {
    Update(m_device.GetLogDevId(), {change.structure || change.names, change.position});
}

void AskingZDrive::ShowValues() {
    SetStep(EKxZStep::Fine, Held().focus.fine);
    SetStep(EKxZStep::Coarse, Held().focus.coarse);
    double top = 0, bottom = 0;
    const bool planned = Held().series.GetTop(&top) == eKxZStack_Ok && Held().series.GetBottom(&bottom) == eKxZStack_Ok;
    SetStack(planned ? std::optional(bottom) : std::nullopt, planned ? std::optional(top) : std::nullopt);
    const SKxSimZDrive& piezo = Held().drives[1];
    SetPiezo(kx::zdrive::Piezo{piezo.to, piezo.rangeMin, piezo.rangeMax});
}

void AskingZDrive::OnMoveRequest(double position, bool& veto) {
    Log().Add(m_panel.Name(), L"OnMoveRequest(%g)", position);
    Wish wish = PlaceOf(m_device);
    // A held button asks again on the way.
    wish.read = [&drive = m_device] {
        double target = 0;
        return drive.GetTarget(target) ? std::optional(target) : std::nullopt;
    };
    veto = !m_panel.Grants(wish, position);
}

void AskingZDrive::OnLimitChangeRequest(EKxZLimit which, std::optional<double> limit, bool& veto) {
    const bool upper = which == EKxZLimit::Upper;
    Log().Add(m_panel.Name(), L"OnLimitChangeRequest(%ls, %g)", upper ? L"upper" : L"lower",
              limit.value_or(std::numeric_limits<double>::infinity()));
    const auto [wish, value] = LimitOf(m_device, upper, limit);
    veto = !m_panel.Grants(wish, value);
}

void AskingZDrive::OnStepChangeRequest(EKxZStep which, double size, bool& veto) {
    const bool fine = which == EKxZStep::Fine;
    Log().Add(m_panel.Name(), L"OnStepChangeRequest(%ls, %g)", fine ? L"fine" : L"coarse", size);
    double& held = fine ? Held().focus.fine : Held().focus.coarse;
    veto = !m_panel.Grants(
        ValueOf(fine ? L"focus fine" : L"focus coarse", fine ? L"Fine step" : L"Coarse step", held, L"%g µm"), size);
}

void AskingZDrive::OnSpeedChangeRequest(double speed, bool& veto) {
    Log().Add(m_panel.Name(), L"OnSpeedChangeRequest(%g)", speed);
    veto = !m_panel.Grants(SpeedOf(m_device), speed);
}

void AskingZDrive::OnJoystickLockRequest(bool lock, bool& veto) {
    Log().Add(m_panel.Name(), L"OnJoystickLockRequest(%d)", static_cast<int>(lock));
    veto = !m_panel.Grants(JoystickOf(m_device), lock);
}

void AskingZDrive::OnEscapeChanged() { Held().focus.retreat = GetEscape(); }
