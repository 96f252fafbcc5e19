#include "modeshutter_panel.h"

#include "../light_devices.h"
#include "../pages/page.h"

namespace {

const OnPage<ModeShutterPanel> s_smart(L"Illumination", {268, 100},
                                       [] { return std::make_unique<ModeShutterPanel>(TheLight().SmartShutter()); });

}  // namespace

void AskingModeShutter::Prepare() {
    SetShowTitle(true);
    SetTitle(Text(L"Iris"));
    SetTabStop(true);
    Init(m_device.GetLogDevId());
}

void AskingModeShutter::OnApertureChangeRequest(double aperture, bool& veto) {
    Log().Add(m_panel.Name(), L"OnApertureChangeRequest(%g)", aperture);
    veto = !m_panel.Grants(ApertureOf(m_device), aperture, L"", L"The shutter stays as it is");
    if (veto) return;
    CKxStringW text;
    text.Format(60, Text(L"Aperture %g %%"), aperture);
    m_panel.Tell(text.str());
}

void AskingModeShutter::OnModeChangeRequest(EKxShutterMode mode, bool& veto) {
    Log().Add(m_panel.Name(), L"OnModeChangeRequest(%d)", static_cast<int>(mode));
    const auto [wish, value] = ModeOf(m_device, mode);
    veto = !m_panel.Grants(wish, value, L"The shutter works in another mode", L"The shutter stays as it is");
}
