// A filter changer: a motorised wheel, or a turret that is turned by hand.
#pragma once

#include <kxdevui/optics/devgui_filterwheel.h>

#include "../device_panel.h"

class FilterPanel : public DevicePanel {
public:
    FilterPanel(const wchar_t* name, CKxSimFilterChanger& device)
        : DevicePanel(name, device), m_device(device), m_wheel(*this) {}
    void Fill();
    CKxDevUI_FilterWheel& Panel() { return m_wheel; }

protected:
    void OnDevice(const Change& change) override;
    void ShowCaption(const wchar_t* caption) override { m_wheel.SetTitle(caption); }
    bool OnUser(int id, int code, HWND from) override;

private:
    class Asking : public CKxDevUI_FilterWheel {
    public:
        explicit Asking(FilterPanel& owner) : m_owner(owner) {}

    protected:
        void OnPositionChangeRequest(long position, bool& refuse) override;
        void OnSetupRequest() override;

    private:
        FilterPanel& m_owner;
    };

    CKxSimFilterChanger& m_device;
    Asking m_wheel;
};
