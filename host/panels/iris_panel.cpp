#include "iris_panel.h"

#include "../light_devices.h"
#include "../pages/page.h"

namespace {

const OnPage<IrisPanel> s_iris(L"Lamps", {268, 104});

// Panels come and go with the language.
CKxSimIris& Device() {
    static auto& device = TheLight().Devices().Add<CKxSimIris>(
        L"Reflected light iris", std::vector<double>{4, 8, 12, 16, 20, 25, 30, 40, 50, 60, 70, 80, 90, 100},
        SKxSimIrisKind{.shutter = true});
    return device;
}

}  // namespace

IrisPanel::IrisPanel() : ControlPanel(L"Iris", Device()) {}

void AskingIris::OnApertureChangeRequest(double aperture, bool& veto) {
    Log().Add(m_panel.Name(), L"OnApertureChangeRequest(%g)", aperture);
    veto = !m_panel.Grants(ApertureOf(m_device), aperture);
}

void AskingIris::OnShutterChangeRequest(bool open, bool& veto) {
    Log().Add(m_panel.Name(), L"OnShutterChangeRequest(%ls)", open ? L"open" : L"closed");
    veto = !m_panel.Grants(OpeningOf(m_device), open);
}
