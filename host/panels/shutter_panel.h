// Shutters in all their forms, on simulated devices.
#pragma once

#include <array>
#include <memory>

#include <kxdevui/light/devgui_shutter.h>

#include "../host_panel.h"
#include "../light_devices.h"

class ShutterPanel;

// A shutter that asks its panel.
template <class Shutter>
class PanelShutter : public Shutter {
public:
    void Init(ShutterPanel& panel, int index) {
        m_panel = &panel;
        m_index = index;
    }

protected:
    void OnStateChangeRequest(bool newState, bool& veto) override;
    void OnRenameDlgRequest() override;

private:
    ShutterPanel* m_panel = nullptr;
    int m_index = 0;
};

class ShutterPanel : public HostPanel {
public:
    ShutterPanel() : HostPanel(L"Shutters") {}
    void Fill();
    CKxDevUI_Shutter& Shutter(int index) { return *m_all[static_cast<std::size_t>(index)]; }

    // The user has clicked a shutter: whether the host agrees, and then moves it. The user wants its parameters.
    bool Agrees(int index, bool open);
    void ShowParameters(int index);

protected:
    bool OnUser(int id, int code, HWND from) override;

private:
    void AddShutter(CKxDevUI_Shutter& shutter, int index, int x, int y);
    void Refresh(CDMApi_LogDevId device);

    PanelShutter<CKxDevUI_Shutter> m_plain[4];
    PanelShutter<CKxDevUI_MechanicalShutter> m_mechanical;
    std::array<CKxDevUI_Shutter*, LightDevices::Shutters> m_all{};
    std::unique_ptr<DeviceListener> m_listener;
};

template <class Shutter>
void PanelShutter<Shutter>::OnStateChangeRequest(bool newState, bool& veto) {
    veto = !m_panel->Agrees(m_index, newState);
}

template <class Shutter>
void PanelShutter<Shutter>::OnRenameDlgRequest() {
    m_panel->ShowParameters(m_index);
}
