// A panel that shows devices: told of their changes as every window can be, by a message with the device's number.
#pragma once

#include <kxdevices/kx_simdevices.h>

#include "host_panel.h"

class DevicePanel : public HostPanel {
public:
    explicit DevicePanel(const wchar_t* name);
    ~DevicePanel() override;
    DevicePanel(const DevicePanel&) = delete;
    DevicePanel& operator=(const DevicePanel&) = delete;

protected:
    // What has changed about a device; a message without flags means its position.
    struct Change {
        bool structure;
        bool names;
        bool position;
    };

    // A device of the microscope has changed; which ones are meant for the panel is for it to say.
    virtual void OnDevice(CDMApi_LogDevId device, const Change& change) = 0;

    // The switch that makes the host refuse, at the panel's lower edge.
    void AddRefusal();
    bool Refuses() const { return m_refuses; }

    bool OnUser(int id, int code, HWND from) override;
    void OnUpdateDeviceBand(WPARAM wParam, LPARAM lParam) override;

private:
    int m_listener;
    bool m_refuses = false;
};
