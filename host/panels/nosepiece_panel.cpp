#include "nosepiece_panel.h"

#include <kxsystem/kx_translation.h>

#include "../event_log.h"

namespace {

CKxStringW Text(const wchar_t* english) { return KX_GetTranslation(english, L"host"); }

}  // namespace

void NosepiecePanel::Fill() {
    m_turret.Init(&m_device);
    m_turret.ShowObservationMode(false);
    m_turret.Create(*this, 4, 4, m_width - 8, -1, true, true);
    m_turret.SetTabStop(true);
    InsertWindow(m_turret);
    m_turret.Update(&m_device, true, true, true, true, false);
    AddRefusal();
}

void NosepiecePanel::OnDevice(CDMApi_LogDevId device, const Change& change) {
    if (device != m_device.GetLogDevId()) return;
    m_turret.Update(&m_device, change.structure, change.names, change.position, change.names, false);
    if (m_device.GetDeviceState() == eKxDeviceState_Faulty) Tell(Text(L"The nosepiece has failed").str());
    if (m_device.GetDeviceState() == eKxDeviceState_Ready) {
        CKxStringW name;
        m_device.GetObjectiveName(m_turret.GetPosition(), name);
        Tell(name.str());
    }
}

void NosepiecePanel::Asking::OnPositionChangeRequest(long position, bool& handled) {
    Log().Add(m_owner.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    // The selection follows the turret, not the click.
    handled = true;
    if (m_owner.Refuses() || !m_owner.m_device.MoveTo(position)) {
        m_owner.Tell(Text(L"The nosepiece stays where it is").str());
    } else {
        m_owner.Tell(Text(L"The nosepiece turns").str());
    }
}

void NosepiecePanel::Asking::OnSetupRequest() { Log().Add(m_owner.Name(), L"OnSetupRequest()"); }
