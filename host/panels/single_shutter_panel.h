// One shutter of the microscope.
#pragma once

#include <kxdevui/light/devgui_shutter.h>

#include "../device_panel.h"

class SingleShutterPanel : public DevicePanel {
public:
    explicit SingleShutterPanel(CKxSimShutter& device)
        : DevicePanel(L"Shutter", device), m_device(device), m_shutter(*this) {}
    void Fill();
    CKxDevUI_Shutter& Panel() { return m_shutter; }

protected:
    void OnDevice(const Change& change) override;

private:
    class Asking : public CKxDevUI_Shutter {
    public:
        explicit Asking(SingleShutterPanel& owner) : m_owner(owner) {}

    protected:
        void OnStateChangeRequest(bool newState, bool& veto) override;

    private:
        SingleShutterPanel& m_owner;
    };

    CKxSimShutter& m_device;
    Asking m_shutter;
};
