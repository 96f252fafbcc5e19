// Field and aperture diaphragm of the transmitted light; the latter may follow the objective.
#pragma once

#include <kxdevices/kx_simlight.h>
#include <kxdevui/light/devgui_lightiris2.h>

#include "../control_panel.h"
#include "../light_devices.h"

class AskingIrises : public Asks<CKxDevUI_LightIris2, CKxSimIris> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 4}, .size = {0, -1}, .titled = true};

    using Asks::Asks;

protected:
    void OnApertureChangeRequest(EKxDiaphragm diaphragm, double aperture, bool& veto) override;
    void OnShutterChangeRequest(bool open, bool& veto) override;
    void OnCoupleRequest(bool couple, bool& veto) override;
};

class IrisesPanel : public ControlPanel<AskingIrises> {
public:
    // Shows which objective is in, and follows it.
    explicit IrisesPanel(CKxSimNosepiece& turret);
    void Fill();
    void ShowValues() override;

protected:
    // Two devices have no state in common.
    void ShowCaption(const wchar_t*) override {}

private:
    void Hear(CDMApi_LogDevId device);

    CKxSimIris& m_field;
    CKxSimNosepiece& m_turret;
    DeviceListener m_listener;
};
