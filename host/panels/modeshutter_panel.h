// The smart shutter's mode and aperture.
#pragma once

#include <memory>

#include <kxdevui/light/devgui_modeshutter.h>

#include "../host_panel.h"
#include "../light_devices.h"

class ModeShutterPanel : public HostPanel {
public:
    ModeShutterPanel() : HostPanel(L"Smart shutter"), m_row(*this) {}
    void Fill();
    CKxDevUI_ModeShutter& Row() { return m_row; }

protected:
    bool OnUser(int id, int code, HWND from) override;

private:
    class Asking : public CKxDevUI_ModeShutter {
    public:
        explicit Asking(ModeShutterPanel& owner) : m_owner(owner) {}

    protected:
        void OnApertureChangeRequest(double aperture, bool& veto) override;
        void OnModeChangeRequest(EKxShutterMode mode, bool& veto) override;

    private:
        ModeShutterPanel& m_owner;
    };

    Asking m_row;
    std::unique_ptr<DeviceListener> m_listener;
    bool m_refuses = false;
};
