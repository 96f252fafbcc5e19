// Two wheels with neutral density filters in the light.
#pragma once

#include <kxdevices/kx_simlight.h>
#include <kxdevui/light/devgui_lightnd.h>

#include "../control_panel.h"

class AskingND : public Asks<CKxDevUI_LightND, CKxSimNDFilter> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 4}, .size = {0, 100}, .titled = true};

    using Asks::Asks;
    void Show(const DevicePanel::Change& change) { Update(m_device.GetLogDevId(), {change.structure, true}); }

protected:
    void OnAttenuationChangeRequest(int wheel, long position, bool& veto) override;
    void OnShutterChangeRequest(bool open, bool& veto) override;
};

class NDPanel : public ControlPanel<AskingND> {
public:
    NDPanel();
};
