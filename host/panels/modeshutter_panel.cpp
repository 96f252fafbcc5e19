#include "modeshutter_panel.h"

#include <kxbaseui/kx_layoutmanager.h>

#include "../event_log.h"
#include "../light_devices.h"
#include "../pages/page.h"
#include "../resources/resource.h"

namespace {

const OnPage<ModeShutterPanel> s_smart(L"Illumination", {268, 100},
                                       [] { return std::make_unique<ModeShutterPanel>(TheLight().SmartShutter()); });

}  // namespace

void ModeShutterPanel::Fill() {
    AddChild(L"STATIC", L"", SS_NOPREFIX, IDC_DEVICE_CAPTION, 6, 4, m_width - 12, 16);
    m_row.SetShowTitle(true);
    m_row.SetTitle(Text(L"Iris"));
    m_row.Init(m_device.GetLogDevId());
    // It sizes itself by the zoom, so it is placed by it too.
    m_row.Create(m_hWnd, CKxGUILayoutManager::Zoomed(6), CKxGUILayoutManager::Zoomed(24), m_width - 10, 36, true, true);
    InsertElement(&m_row);
    AddRefusal();
    ShowState();
}

void ModeShutterPanel::OnDevice(const Change& change) { m_row.Update(&m_device, change.structure, true, true, true); }

void ModeShutterPanel::Asking::OnApertureChangeRequest(double aperture, bool& veto) {
    Log().Add(m_owner.Name(), L"OnApertureChangeRequest(%g)", aperture);
    veto = m_owner.Refuses() || !m_owner.m_device.SetAperture(aperture);
    CKxStringW text;
    text.Format(60, Text(L"Aperture %g %%"), aperture);
    if (veto) {
        m_owner.TellRefused(L"The shutter stays as it is");
    } else {
        m_owner.Tell(text.str());
    }
}

void ModeShutterPanel::Asking::OnModeChangeRequest(EKxShutterMode mode, bool& veto) {
    Log().Add(m_owner.Name(), L"OnModeChangeRequest(%d)", static_cast<int>(mode));
    veto = m_owner.Refuses() || !m_owner.m_device.SetMode(mode);
    if (veto) {
        m_owner.TellRefused(L"The shutter stays as it is");
    } else {
        m_owner.Tell(Text(L"The shutter works in another mode").str());
    }
}
