#include "laser_panel.h"

#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_translation.h>

#include "../event_log.h"
#include "../resources/resource.h"

namespace {

CKxStringW Text(const wchar_t* english) { return KX_GetTranslation(english, L"host"); }

}  // namespace

LaserPanel::LaserPanel(CKxSimLaserOutput& device, int wavelength, double minimum, double maximum)
    : DevicePanel(L"Laser", device), m_device(device), m_wavelength(wavelength), m_minimum(minimum), m_maximum(maximum),
      m_percent(!(maximum > minimum)), m_slider(*this) {
    if (m_percent) m_minimum = 0, m_maximum = 100;
    m_power = m_minimum;
}

void LaserPanel::Fill() {
    AddChild(L"STATIC", L"", SS_NOPREFIX, IDC_DEVICE_CAPTION, 6, 4, m_width - 80, 16);
    AddChild(L"BUTTON", Text(L"On"), WS_TABSTOP | BS_CHECKBOX, IDC_LASER_ON, m_width - 66, 3, 60, 18);
    m_slider.InitValues(m_minimum, m_maximum, (m_maximum - m_minimum) / 200, (m_maximum - m_minimum) / 100, 0);
    m_slider.SetId(IDC_LASER_POWER);
    m_slider.Create(m_hWnd, 2, 22, m_width - 90, 36, true, true);
    m_slider.SetTabStop(true);
    InsertElement(&m_slider);
    m_field.SetId(IDC_LASER_FIELD);
    m_field.Init(false, true, false);
    m_field.SetRestriction(m_minimum, m_maximum);
    m_field.SetSize(0, 50, 20);
    m_field.Create(m_hWnd, m_width - 86, 24, 50, 20, true, true);
    InsertElement(&m_field);
    AddChild(L"STATIC", m_percent ? L"%" : L"mW", 0, -1, m_width - 32, 27, 28, 16);
    m_slider.SetValue(m_power, false);
    m_field.SetNumber(m_power, L"%.4g");
    OnDevice({true, true, true});
    ShowState();
}

void LaserPanel::ShowCaption(const wchar_t* caption) {
    CKxStringW text = caption;
    if (m_wavelength > 0) text.Format(200, L"%ls (%d nm)", caption, m_wavelength);
    SetDlgItemTextW(m_hWnd, IDC_DEVICE_CAPTION, text);
}

void LaserPanel::OnDevice(const Change&) {
    CheckDlgButton(m_hWnd, IDC_LASER_ON, m_device.IsPortUsed(0) ? BST_CHECKED : BST_UNCHECKED);
}

bool LaserPanel::SetPower(double power) {
    if (power == m_power) return true;
    const bool agrees = !Refuses();
    if (agrees) {
        m_power = power;
        CKxStringW text;
        text.Format(120, L"%ls: %.4g %ls", m_device.GetKey().c_str(), m_power, m_percent ? L"%" : L"mW");
        Tell(text.str());
    } else {
        TellRefused(L"The laser keeps its power");
    }
    m_field.SetNumber(m_power, L"%.4g");
    return agrees;
}

bool LaserPanel::OnUser(int id, int code, HWND from) {
    if (id == IDC_LASER_ON && code == BN_CLICKED) {
        // The box follows the device.
        if (Refuses() || !m_device.SetPortUsed(0, !m_device.IsPortUsed(0))) TellRefused(L"The laser stays as it is");
        return true;
    }
    if (id == IDC_LASER_FIELD && (code == kx::ui::kEditEnter || code == EN_KILLFOCUS)) {
        const bool enter = code == kx::ui::kEditEnter;
        if (m_field.CheckRestriction(enter, !enter, m_power) || !enter) SetPower(m_field.GetNumber());
        m_slider.SetValue(m_power, false);
        return true;
    }
    return DevicePanel::OnUser(id, code, from);
}

LRESULT LaserPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    DevicePanel::OnMouseWheel(wParam, lParam);
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    RECT slider{};
    return GetWindowRect(m_slider, &slider) && PtInRect(&slider, point) && m_slider.HandleMouseWheel(wParam, lParam);
}

void LaserPanel::Asking::OnHPotChange(double& value, bool& skip) {
    Log().Add(m_owner.Name(), L"OnHPotChange(%g)", value);
    skip = !m_owner.SetPower(value);
}

// Wheel and keys move the thumb without having asked.
void LaserPanel::Asking::OnHPotDragDrop() {
    Log().Add(m_owner.Name(), L"OnHPotDragDrop");
    if (!m_owner.SetPower(GetValue())) SetValue(m_owner.m_power, false);
}
