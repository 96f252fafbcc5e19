#include "focus_panel.h"

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/devgui_readings.h>

#include <algorithm>

#include "../event_log.h"
#include "../resources/resource.h"

FocusPanel::FocusPanel(HostMicroscope& microscope, CKxSimZDrive& device, int direction, std::function<void()> changed)
    : DevicePanel(L"Z drive", device), m_microscope(microscope),
      m_turretListener(CKxDeviceRegistry::AddListener([this](CDMApi_LogDevId id, EKxDeviceChange what) {
          const auto& turrets = m_microscope.Roles().turrets;
          if (m_hWnd && what != EKxDeviceChange::Removed && !turrets.empty() && id == turrets.front()) TellObjective();
      })),
      m_device(device), m_inverted(direction < 0), m_plan(microscope.Plan()), m_changed(std::move(changed)),
      m_stack(*this) {}

void FocusPanel::Fill() {
    AddChild(L"STATIC", L"", SS_NOPREFIX, IDC_DEVICE_CAPTION, 8, 4, m_width - 16, 16);
    double minimum = 0, maximum = 0;
    m_device.GetRange(minimum, maximum);
    if (m_plan.stack.GetZDevice(nullptr) != eKxZStack_Ok) PlanFirstSeries(minimum, maximum);
    m_record = m_plan.stack;
    m_stack.Create(m_hWnd, &m_record, CKxGUILayoutManager::Zoomed(6), CKxGUILayoutManager::Zoomed(22), 0, 0, true,
                   true);
    m_stack.EnableCube(true);
    m_stack.EnableGrips(true);
    m_stack.MakePositionsWritable();
    m_stack.AppendZDevice(m_device.GetKey(), false, static_cast<long>(m_device.GetLogDevId()), minimum, maximum,
                          m_inverted, 0, true);
    InsertWindow(m_stack.GetHandle());
    ShowZ();
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshAll);
    m_changed();
    ShowState();
}

// Eleven planes around where the drive stands, as far as its range lets them.
void FocusPanel::PlanFirstSeries(double minimum, double maximum) {
    constexpr double kHalf = 10, kPlanes = 11;
    CKxZStackData& series = m_plan.stack;
    series.AddZDevice(minimum, maximum, nullptr);
    series.SetZDevice(0);
    m_microscope.TellObjective(series);
    series.SetWavelength(525);
    double z = minimum;
    m_device.GetPosition(z);
    const double bottom = std::max(minimum, std::min(z - kHalf, maximum - 2 * kHalf));
    const double top = std::min(maximum, bottom + 2 * kHalf);
    if (!(top > bottom)) return;
    series.SetTop(top, true);
    series.SetBottom(bottom, true);
    series.SetStep((top - bottom) / (kPlanes - 1));
}

void FocusPanel::ShowZ() {
    double z = 0;
    if (m_device.GetPosition(z)) m_record.SetZPosition(0, z);
}

// Another objective resolves other steps.
void FocusPanel::TellObjective() {
    m_microscope.TellObjective(m_plan.stack);
    m_microscope.TellObjective(m_record);
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshStep);
}

bool FocusPanel::OnUser(int id, int code, HWND from) {
    return m_stack.OnPositionLeft(id, code) || DevicePanel::OnUser(id, code, from);
}

void FocusPanel::OnDevice(const Change&) {
    ShowZ();
    KX_TellActivity(m_stack.GetHandle(), m_device);
    KX_TellMeasured(m_stack.GetHandle(), m_device);
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshZ);
}

void FocusPanel::Asking::OnStepChanged(double step, bool typed) {
    Log().Add(m_owner.Name(), L"OnStepChanged(%g, %d)", step, static_cast<int>(typed));
}

void FocusPanel::Asking::OnMoveZRequest(double z) {
    Log().Add(m_owner.Name(), L"OnMoveZRequest(%g)", z);
    if (!m_owner.Asks(PlaceOf(m_owner.m_device), z)) {
        m_owner.TellRefused(L"Z stays where it is");
        return;
    }
    CKxStringW text;
    text.Format(100, Text(L"Z moves to %.2f µm"), z);
    m_owner.Tell(text.str());
}

// A refusal puts the record back to what is held; where Z stands is nobody's choice.
void FocusPanel::Asking::OnZStackChanged(unsigned int flags) {
    Log().Add(m_owner.Name(), L"OnZStackChanged(%u)", flags);
    const Asked asked = SeriesOf(L"plan", m_owner.m_plan.stack, m_owner.m_record, m_owner.m_plan.past);
    if (!m_owner.Asks(asked.wish, asked.value)) {
        m_owner.TellRefused(L"The series stays as it is");
        m_owner.ShowValues();
        return;
    }
    UpdateGUI(flags);
    m_owner.Tell(Text(L"Series changed").str());
    m_owner.m_changed();
}

void FocusPanel::ShowValues() {
    m_record = m_plan.stack;
    ShowZ();
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshAll);
    m_changed();
}

LRESULT FocusPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    DevicePanel::OnMouseWheel(wParam, lParam);
    return SendMessageW(m_stack.GetHandle(), kx::ui::WM_KX_MOUSE_WHEEL, wParam, lParam);
}
