#include "nosepiece_panel.h"

#include "../event_log.h"

void NosepiecePanel::Fill() {
    m_turret.Init(&m_device);
    m_turret.ShowObservationMode(false);
    m_turret.Create(*this, Inset(), Inset(), m_width - 8, -1);
    m_turret.SetTabStop(true);
    InsertWindow(m_turret);
    m_turret.Update(&m_device, {.structure = true, .names = true, .position = true, .parameters = true});
    AddRefusal();
    ShowState();
}

void NosepiecePanel::OnDevice(const Change& change) {
    // Who decides is read here, not by Update.
    if (change.structure) m_turret.Init(&m_device);
    m_turret.Update(&m_device, {.structure = change.structure,
                                .names = change.names,
                                .position = change.position,
                                .parameters = change.names});
    if (change.structure || change.names) return;
    if (m_device.GetDeviceState() == eKxDeviceState_Faulty) Tell(Text(L"The nosepiece has failed").str());
    if (m_device.GetDeviceState() == eKxDeviceState_Ready) {
        CKxStringW name;
        m_device.GetObjectiveName(m_turret.GetPosition(), name);
        Tell(name.str());
    }
}

void NosepiecePanel::Asking::OnPositionChangeRequest(long position, bool& handled) {
    Log().Add(m_owner.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    const bool turns = !m_owner.Refuses() && m_owner.m_device.MoveTo(position);
    // The selection follows the turret, not the click; unless the turret leaves it to the panel.
    handled = !turns || m_owner.m_device.IsDeviceDriven();
    if (turns) {
        m_owner.Tell(Text(L"The nosepiece turns").str());
    } else {
        m_owner.TellRefused(L"The nosepiece stays where it is");
    }
}

void NosepiecePanel::Asking::OnSetupRequest() { Log().Add(m_owner.Name(), L"OnSetupRequest()"); }
