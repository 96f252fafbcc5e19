#include "switcher_panel.h"

#include <kxdevui/framework/devgui_messages.h>

#include "../event_log.h"

void SwitcherPanel::Fill(bool several) {
    m_switch.SetBoolMoreThanOnePortCanBeActive(several);
    m_switch.Create(*this, Inset(), Inset(), m_width - 8, 44);
    m_switch.SetTabStop(true);
    InsertWindow(m_switch);
    m_switch.Update(m_device.GetLogDevId(), {.structure = true, .names = true, .state = true});
    AddRefusal();
    ShowState();
}

void SwitcherPanel::OnDevice(const Change& change) {
    m_switch.Update(m_device.GetLogDevId(),
                    {.structure = change.structure, .names = change.names, .state = change.position});
}

bool SwitcherPanel::Ask(long position) {
    const bool done = !Refuses() && m_ask(position);
    if (done) {
        Tell(Text(L"The light path changes").str());
    } else {
        TellRefused(L"The light path stays as it is");
    }
    return done;
}

void SwitcherPanel::Asking::OnPositionChangeRequest(long position, bool&) {
    Log().Add(m_owner.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    if (m_owner.Ask(position)) return;
    // The button stays down after this whatever is said here, so the truth is told a moment later.
    PostMessageW(m_owner, kx::ui::WM_KX_UPDATE_DEVICE_BAND, m_owner.m_device.GetLogDevId(), 0);
}

void SwitcherPanel::Asking::OnSetPortSingleRequest(long port) {
    Log().Add(m_owner.Name(), L"OnSetPortSingleRequest(%d)", static_cast<int>(port));
    m_owner.Ask(port);
}
