// The lamps of the stand: a halogen lamp, and an arc that has to warm up and to cool.
#pragma once

#include <kxdevices/kx_simlamp.h>
#include <kxdevui/light/devgui_lightslider.h>

#include "../control_panel.h"

class AskingLamp : public Asks<CKxDevUI_LightSlider, CKxSimLamp> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 4}, .size = {0, -1}, .titled = true};

    using Asks::Asks;
    void Prepare() { ShowPresets(); }
    void Show(const DevicePanel::Change& change) { Update(m_device.GetLogDevId(), {change.structure, true}); }
    void ShowPresets();
    CKxSimLamp& Lamp() { return m_device; }

protected:
    void OnIntensityChangeRequest(double intensity, bool& veto) override;
    void OnStateChangeRequest(bool on, bool& veto) override;
    void OnShutterChangeRequest(bool open, bool& veto) override;
    void OnPresetStoreRequest(int preset, double intensity, bool& veto) override;
};

class LampControlPanel : public ControlPanel<AskingLamp> {
public:
    LampControlPanel(const wchar_t* name, CKxSimLamp& lamp) : ControlPanel(name, lamp) {}
    void ShowValues() override { Panel().ShowPresets(); }
};

// A class of its own, so that the page knows it.
class ArcPanel : public LampControlPanel {
public:
    ArcPanel();
};

class HalogenPanel : public LampControlPanel {
public:
    HalogenPanel();
};
