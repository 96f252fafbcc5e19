#include "switcher_panel.h"

#include <kxdevui/framework/devgui_messages.h>

void AskingSwitcher::Show(const DevicePanel::Change& change) {
    Update(m_device.GetLogDevId(), {.structure = change.structure, .names = change.names, .state = change.position});
}

bool AskingSwitcher::Ask(long position) {
    const auto [wish, value] = wanted(position);
    return m_panel.Grants(wish, value, L"The light path changes", L"The light path stays as it is");
}

void AskingSwitcher::OnPositionChangeRequest(long position, bool&) {
    Log().Add(m_panel.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    if (Ask(position)) return;
    // The button stays down after this whatever is said here, so the truth is told a moment later.
    PostMessageW(m_panel, kx::ui::WM_KX_UPDATE_DEVICE_BAND, m_device.GetLogDevId(), 0);
}

void AskingSwitcher::OnSetPortSingleRequest(long port) {
    Log().Add(m_panel.Name(), L"OnSetPortSingleRequest(%d)", static_cast<int>(port));
    Ask(port);
}
