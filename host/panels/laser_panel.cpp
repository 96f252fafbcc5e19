#include "laser_panel.h"

#include <cmath>
#include <vector>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxsystem/kx_color.h>

#include "../event_log.h"
#include "../resources/resource.h"

namespace {

// The next of 1, 2, 5, 10, 20 and so on.
double RoundUp(double value) {
    const double ten = std::pow(10.0, std::floor(std::log10(value)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (value <= factor * ten) return factor * ten;
    }
    return 10 * ten;
}

// At most ten ticks, at round values, every second with a label, and between two of them ten powers to choose from.
std::vector<SColorSliderValue> PowerTable(const SKxSimRange& range) {
    constexpr int kBetween = 10, kMost = 10 * kBetween;
    const double tick = RoundUp((range.maximum - range.minimum) / 10);
    std::vector<SColorSliderValue> table;
    for (int i = 0; i <= kMost; ++i) {
        const double power = range.minimum + i * tick / kBetween;
        if (power <= range.maximum) table.push_back({power, i % kBetween == 0, i % (2 * kBetween) == 0});
    }
    return table;
}

}  // namespace

void LaserPanel::Fill() {
    AddChild(L"STATIC", L"", SS_NOPREFIX, IDC_DEVICE_CAPTION, 6, 4, m_width - 80, 16);
    AddChild(L"BUTTON", Text(L"On"), WS_TABSTOP | BS_CHECKBOX, IDC_LASER_ON, m_width - 66, 3, 60, 18);
    InitPower();
    m_power.SetId(IDC_LASER_POWER);
    // It sizes itself by the zoom, so it is placed by it too.
    m_power.Create(m_hWnd, CKxGUILayoutManager::Zoomed(2), CKxGUILayoutManager::Zoomed(22), -1, -1, true, true);
    m_power.SetTabStop(true);
    InsertElement(&m_power);
    KX_SetFieldHabits(m_power, KxFieldHabits::AllOfLight());
    OnDevice({true, true, true});
    ShowState();
}

void LaserPanel::InitPower() {
    std::vector<SColorSliderValue> table = PowerTable(m_device.GetPowerRange());
    const COLORREF color = m_wavelength > 0 ? KX_RGBFromWavelength(m_wavelength) : RGB(255, 255, 255);
    m_power.Init(m_width - 100, 9, table.data(), static_cast<int>(table.size()), L"", false, m_unit, L"%.4g", true,
                 eColorSliderType_Gradient, eColorSliderLayout_OneRow, 44);
    m_power.SetGradient(RGB(0, 0, 0), color);
}

void LaserPanel::ShowCaption(const wchar_t* caption) {
    CKxStringW text = caption;
    if (m_wavelength > 0) text.Format(200, L"%ls (%d nm)", caption, m_wavelength);
    SetDlgItemTextW(m_hWnd, IDC_DEVICE_CAPTION, text);
}

void LaserPanel::OnDevice(const Change&) {
    CheckDlgButton(m_hWnd, IDC_LASER_ON, m_device.IsPortUsed(0) ? BST_CHECKED : BST_UNCHECKED);
    m_power.SetPower(m_device.GetPower(), true);
    KX_TellActivity(m_power, m_device);
    KX_TellLight(m_power, m_device);
    KX_TellMeasured(m_power, m_device);
}

bool LaserPanel::OnUser(int id, int code, HWND from) {
    if (id == IDC_LASER_ON && code == BN_CLICKED) {
        // The box follows the device.
        Grants(UseOf(m_device, 0), !m_device.IsPortUsed(0), L"", L"The laser stays as it is");
        return true;
    }
    return DevicePanel::OnUser(id, code, from);
}

LRESULT LaserPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    DevicePanel::OnMouseWheel(wParam, lParam);
    return m_power.HandleMouseWheel(wParam, lParam) ? 1 : 0;
}

bool LaserPanel::Agrees(double power) {
    if (!Asks(PowerOf(m_device, m_unit), power)) {
        TellRefused(L"The laser keeps its power");
        return false;
    }
    CKxStringW text;
    text.Format(120, L"%ls: %.4g %ls", m_device.GetKey().c_str(), power, m_unit.c_str());
    Tell(text.str());
    return true;
}

void LaserPanel::Asking::OnPowerChanged(double& value, bool& veto) {
    Log().Add(m_owner.Name(), L"OnPowerChanged(%g)", value);
    veto = !m_owner.Agrees(value);
    // A typed power holds already: a host that minds shows the old one again.
    if (veto && m_editInProgress) SetPower(m_owner.m_device.GetPower(), true);
}

void LaserPanel::Asking::OnLeftButtonUp() { Log().Add(m_owner.Name(), L"OnLeftButtonUp"); }
