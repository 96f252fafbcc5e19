// A laser line: on or off, and its power by a slider and a field.
#pragma once

#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/controls/devgui_hpot.h>

#include "../device_panel.h"

class LaserPanel : public DevicePanel {
public:
    // `wavelength` in nanometres, 0 if it is not known; the power in milliwatts, or in percent where the maximum is not
    // above the minimum.
    LaserPanel(CKxSimLaserOutput& device, int wavelength, double minimum, double maximum);
    void Fill();
    CKxDevUI_HPot& Power() { return m_slider; }
    CKxDevUI_EditBox& Field() { return m_field; }

protected:
    void OnDevice(const Change& change) override;
    void ShowCaption(const wchar_t* caption) override;
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    class Asking : public CKxDevUI_HPot {
    public:
        explicit Asking(LaserPanel& owner) : m_owner(owner) {}

    protected:
        void OnHPotChange(double& value, bool& skip) override;
        void OnHPotDragDrop() override;

    private:
        LaserPanel& m_owner;
    };
    // Whether the host agrees to a power; it is shown then, and otherwise the field goes back.
    bool SetPower(double power);

    CKxSimLaserOutput& m_device;
    int m_wavelength;
    double m_minimum, m_maximum;
    bool m_percent;
    double m_power;  // what the laser has been given
    Asking m_slider;
    CKxDevUI_EditBox m_field;
};
