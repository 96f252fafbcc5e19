#include "filter_panel.h"

#include "../setups.h"

void FilterPanel::Fill() {
    ControlPanel::Fill();
    if (!m_device.IsMotorized())
        AddChild(L"BUTTON", Text(L"Turn by hand"), WS_TABSTOP, IDC_CUBES_TURN, m_width - 116, m_height - 28, 108, 22);
}

void FilterPanel::OnDevice(const Change& change) {
    m_control.Show(change);
    if (m_device.GetDeviceState() == eKxDeviceState_Ready) Tell(m_control.GetFilterName(m_control.GetPosition()).str());
}

bool FilterPanel::OnUser(int id, int code, HWND from) {
    if (id != IDC_CUBES_TURN) return DevicePanel::OnUser(id, code, from);
    long position = 0;
    m_device.GetPosition(position);
    if (code == BN_CLICKED) m_device.TurnByHand((position + 1) % m_device.GetFilterCount());
    return true;
}

void AskingWheel::Show(const DevicePanel::Change& change) {
    Update(&m_device, {.structure = change.structure, .names = change.names, .position = change.position});
}

void AskingWheel::OnPositionChangeRequest(long position, bool& refuse) {
    Log().Add(m_panel.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    if (!m_device.IsMotorized()) {
        m_panel.Tell(Text(L"This turret is turned by hand").str());
        return;
    }
    refuse = !m_panel.Grants(PlaceOf(m_device), position, L"The wheel turns", L"The filter stays as it is");
}

void AskingWheel::OnSetupRequest() {
    Log().Add(m_panel.Name(), L"OnSetupRequest()");
    const auto accept = [this](const SKxFilterSetup& setup, SKxSetupRefusal& refusal) {
        if (m_panel.Refuses()) refusal = {true, Text(L"The host refuses."), setup.changes.front().position};
        for (const auto& each : setup.changes) {
            Log().Add(m_panel.Name(), L"setup of position %d: %ls -> %ls", static_cast<int>(each.position),
                      each.before.c_str(), each.after.c_str());
        }
        if (refusal.refused) return;
        const auto& [wish, value] = SetupOf(m_device, setup);
        TheRequests().BeginStep();
        refusal.refused = !m_panel.Grants(wish, value, L"The filters have been changed", m_device.GetKey());
    };
    ShowSetupDialog_Filter(GetAncestor(*this, GA_ROOT), m_device.GetLogDevId(), accept);
}
