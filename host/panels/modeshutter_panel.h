// A smart shutter: its mode and its aperture.
#pragma once

#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/light/devgui_modeshutter.h>

#include "../control_panel.h"

class AskingModeShutter : public Asks<CKxDevUI_ModeShutter, CKxSimShutter> {
public:
    static constexpr ControlLayout kLayout{.control = {3, 24}, .size = {0, 36}};

    using Asks::Asks;
    void Prepare();
    // The row itself keeps the state alone, and leaves its window to its host.
    void SetEnabled(bool enable) override {
        CKxDevUI_ModeShutter::SetEnabled(enable);
        EnableWindow(m_hWnd, enable);
    }
    void Show(const DevicePanel::Change& change) {
        Update(&m_device, {.steps = change.structure, .aperture = true, .state = true, .mode = true});
        if (m_hWnd) KX_TellLight(m_hWnd, m_device);
    }

protected:
    void OnApertureChangeRequest(double aperture, bool& veto) override;
    void OnModeChangeRequest(EKxShutterMode mode, bool& veto) override;
};

class ModeShutterPanel : public ControlPanel<AskingModeShutter> {
public:
    explicit ModeShutterPanel(CKxSimShutter& device) : ControlPanel(L"Smart shutter", device) {}
};
