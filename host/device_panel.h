// A panel that shows one device: told of its changes as every window can be, by a message with the device's number.
#pragma once

#include <kxdevices/kx_simdevices.h>

#include "host_panel.h"

class DevicePanel : public HostPanel {
public:
    // The device has to outlive the panel.
    DevicePanel(const wchar_t* name, IKxDevice& device);
    ~DevicePanel() override;
    DevicePanel(const DevicePanel&) = delete;
    DevicePanel& operator=(const DevicePanel&) = delete;

    // Whether the host refuses whatever is asked for, on all panels of devices.
    static void SetHostRefuses(bool refuses);
    static bool HostRefuses();

    // Whether the panel has a switch of its own that makes the host refuse; before it is filled. At first it has.
    void SetOwnRefusal(bool own) { m_ownRefusal = own; }

    // What has changed about a device; a message without flags means its position.
    struct Change {
        bool structure;
        bool names;
        bool position;
    };

    // The user asks for something: the device does it, unless the host refuses, and it can be taken back. The user is
    // told `refused`, or `done`, if that says anything. Whether it is done.
    bool Grants(const Wish& wish, double value, const wchar_t* done, const wchar_t* refused);
    // The same where the name of the device says enough.
    bool Grants(const Wish& wish, double value) { return Grants(wish, value, L"", m_device.GetKey()); }
    bool Refuses() const { return HostPanel::Refuses() || HostRefuses(); }
    // Tells the user that the device stays as it is ("The filter stays as it is"), and why.
    void TellRefused(const wchar_t* what);
    using HostPanel::Tell;

protected:
    // The device has changed.
    virtual void OnDevice(const Change& change) = 0;
    // Shows the caption, which tells what the device is and whether it is on its way: here in the child
    // IDC_DEVICE_CAPTION.
    virtual void ShowCaption(const wchar_t* caption);

    // Shows the caption that belongs to the state that the device is in: to be called when the panel has been filled.
    void ShowState();
    // The switch that makes the host refuse, if it is to have one.
    void AddRefusal();

    bool OnUser(int, int, HWND) override { return false; }
    void OnUpdateDeviceBand(WPARAM wParam, LPARAM lParam) override;

private:
    IKxDevice& m_device;
    CKxStringW m_caption;  // as shown
    int m_listener;
    bool m_ownRefusal = true;
};
