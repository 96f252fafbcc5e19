// A focus drive of its own: by hand, within limits, away from the sample and back.
#pragma once

#include <kxdevui/zfocus/devgui_zdrive.h>

#include "../control_panel.h"

class AskingZDrive : public Asks<CKxDevUI_ZDrive, CKxSimZDrive> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 4}, .titled = true};

    using Asks::Asks;
    void Prepare();
    void Show(const DevicePanel::Change& change);
    // What no device of the registry tells: steps, the Z stack, the piezo.
    void ShowValues();

protected:
    void OnMoveRequest(double position, bool& veto) override;
    void OnLimitChangeRequest(EKxZLimit which, std::optional<double> limit, bool& veto) override;
    void OnStepChangeRequest(EKxZStep which, double size, bool& veto) override;
    void OnSpeedChangeRequest(double speed, bool& veto) override;
    void OnJoystickLockRequest(bool lock, bool& veto) override;
    void OnEscapeChanged() override;
};

class ZDrivePanel : public ControlPanel<AskingZDrive> {
public:
    ZDrivePanel();
    void ShowValues() override { m_control.ShowValues(); }
    static CKxSimZDrive& Device();
};
