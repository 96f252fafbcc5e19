// One shutter of the microscope.
#pragma once

#include <kxdevui/light/devgui_shutter.h>

#include "../control_panel.h"

class AskingShutter : public Asks<CKxDevUI_Shutter, CKxSimShutter> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 6}, .size = {-1, -1}, .caption = {94, 11}, .refusal = false};

    using Asks::Asks;
    void Prepare();
    void Show(const DevicePanel::Change& change) { Update(&m_device, change.structure, change.names, change.position); }

protected:
    void OnStateChangeRequest(bool newState, bool& veto) override;
};

class SingleShutterPanel : public ControlPanel<AskingShutter> {
public:
    explicit SingleShutterPanel(CKxSimShutter& device) : ControlPanel(L"Shutter", device) {}
};
