#include "nd_panel.h"

#include "../light_devices.h"
#include "../pages/page.h"

namespace {

const OnPage<NDPanel> s_nd(L"Lamps", {268, 138});

// Panels come and go with the language.
CKxSimNDFilter& Device() {
    static auto& device = TheLight().Devices().Add<CKxSimNDFilter>(
        L"Grey filters", std::vector<std::vector<double>>{{1, 0.5, 0.25, 0.125, 0.063}, {1, 0.1, 0.01, 0.001}}, true);
    return device;
}

}  // namespace

NDPanel::NDPanel() : ControlPanel(L"Neutral density", Device()) {}

void AskingND::OnAttenuationChangeRequest(int wheel, long position, bool& veto) {
    Log().Add(m_panel.Name(), L"OnAttenuationChangeRequest(%d, %ld)", wheel, position);
    const auto [wish, value] = AttenuationOf(m_device, wheel, position);
    veto = !m_panel.Grants(wish, value);
}

void AskingND::OnShutterChangeRequest(bool open, bool& veto) {
    Log().Add(m_panel.Name(), L"OnShutterChangeRequest(%ls)", open ? L"open" : L"closed");
    veto = !m_panel.Grants(OpeningOf(m_device), open);
}
