// A laser line: on or off, and its power by a slider in the line's colour.
#pragma once

#include <kxdevui/light/devgui_colorslider.h>

#include "../device_panel.h"

class LaserPanel : public DevicePanel {
public:
    // `wavelength` in nanometres, 0 if it is not known; `unit` is the power's.
    LaserPanel(CKxSimLaserOutput& device, int wavelength, const wchar_t* unit)
        : DevicePanel(L"Laser", device), m_device(device), m_wavelength(wavelength), m_unit(unit), m_power(*this) {}
    void Fill();
    CKxDevUI_ColorSlider& Power() { return m_power; }

protected:
    void OnDevice(const Change& change) override;
    void ShowCaption(const wchar_t* caption) override;
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    class Asking : public CKxDevUI_ColorSlider {
    public:
        explicit Asking(LaserPanel& owner) : m_owner(owner) {}

    protected:
        void OnPowerChanged(double& value, bool& veto) override;
        void OnLeftButtonUp() override;

    private:
        LaserPanel& m_owner;
    };
    void InitPower();
    bool Agrees(double power);

    CKxSimLaserOutput& m_device;
    int m_wavelength;
    CKxStringW m_unit;
    Asking m_power;
};
