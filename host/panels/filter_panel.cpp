#include "filter_panel.h"

#include "../event_log.h"
#include "../resources/resource.h"

void FilterPanel::Fill() {
    m_wheel.Create(*this, Inset(), Inset(), m_width - 8, -1);
    m_wheel.SetTabStop(true);
    InsertWindow(m_wheel);
    m_wheel.Update(&m_device, {.structure = true, .names = true, .position = true});
    AddRefusal();
    if (!m_device.IsMotorized()) {
        AddChild(L"BUTTON", Text(L"Turn by hand"), WS_TABSTOP, IDC_CUBES_TURN, m_width - 116, m_height - 28, 108, 22);
    }
    ShowState();
}

void FilterPanel::OnDevice(const Change& change) {
    m_wheel.Update(&m_device, {.structure = change.structure, .names = change.names, .position = change.position});
    if (m_device.GetDeviceState() == eKxDeviceState_Ready) Tell(m_wheel.GetFilterName(m_wheel.GetPosition()).str());
}

bool FilterPanel::OnUser(int id, int code, HWND from) {
    if (id != IDC_CUBES_TURN) return DevicePanel::OnUser(id, code, from);
    long position = 0;
    m_device.GetPosition(position);
    if (code == BN_CLICKED) m_device.TurnByHand((position + 1) % m_device.GetFilterCount());
    return true;
}

void FilterPanel::Asking::OnPositionChangeRequest(long position, bool& refuse) {
    Log().Add(m_owner.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    if (!m_owner.m_device.IsMotorized()) {
        m_owner.Tell(Text(L"This turret is turned by hand").str());
        return;
    }
    refuse = m_owner.Refuses() || !m_owner.m_device.MoveTo(position);
    if (refuse) {
        m_owner.TellRefused(L"The filter stays as it is");
    } else {
        m_owner.Tell(Text(L"The wheel turns").str());
    }
}

void FilterPanel::Asking::OnSetupRequest() { Log().Add(m_owner.Name(), L"OnSetupRequest()"); }
