// A smart shutter: its mode and its aperture.
#pragma once

#include <kxdevui/light/devgui_modeshutter.h>

#include "../device_panel.h"

class ModeShutterPanel : public DevicePanel {
public:
    explicit ModeShutterPanel(CKxSimShutter& device)
        : DevicePanel(L"Smart shutter", device), m_device(device), m_row(*this) {}
    void Fill();
    CKxDevUI_ModeShutter& Row() { return m_row; }

protected:
    void OnDevice(const Change& change) override;

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

    CKxSimShutter& m_device;
    Asking m_row;
};
