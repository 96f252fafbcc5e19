// An iris in the light, with its shutter.
#pragma once

#include <kxdevices/kx_simlight.h>
#include <kxdevui/light/devgui_lightiris.h>

#include "../control_panel.h"

class AskingIris : public Asks<CKxDevUI_LightIris, CKxSimIris> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 4}, .size = {0, -1}, .titled = true};

    using Asks::Asks;
    void Show(const DevicePanel::Change& change) { Update(m_device.GetLogDevId(), {change.structure, true}); }

protected:
    void OnApertureChangeRequest(double aperture, bool& veto) override;
    void OnShutterChangeRequest(bool open, bool& veto) override;
};

class IrisPanel : public ControlPanel<AskingIris> {
public:
    IrisPanel();
};
