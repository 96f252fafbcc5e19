#include "modeshutter_panel.h"

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_translation.h>

#include "../event_log.h"
#include "../resources/resource.h"

namespace {

CKxStringW Text(const wchar_t* english) { return KX_GetTranslation(english, L"host"); }

}  // namespace

void ModeShutterPanel::Fill() {
    AddCaption(Text(L"Smart shutter"));
    const unsigned id = TheLight().SmartShutter().GetLogDevId();
    m_row.SetShowTitle(true);
    m_row.SetTitle(Text(L"Iris"));
    m_row.Init(id);
    // It sizes itself by the zoom, so it is placed by it too.
    m_row.Create(m_hWnd, CKxGUILayoutManager::Zoomed(6), CKxGUILayoutManager::Zoomed(30), m_width - 10, 36, true, true);
    InsertElement(&m_row);
    AddCheckBox(Text(L"The host refuses"), IDC_SMART_REFUSE, 6, m_height - 20);
    m_listener = std::make_unique<DeviceListener>([this, id](CDMApi_LogDevId device) {
        const bool flags[] = {false, true, true, true};
        if (device == id) SendMessageW(m_row, kx::ui::WM_KX_UPDATE_DEVICE_BAND, id, reinterpret_cast<LPARAM>(flags));
    });
}

bool ModeShutterPanel::OnUser(int id, int code, HWND from) {
    if (id != IDC_SMART_REFUSE || code != BN_CLICKED) return false;
    m_refuses = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
    return true;
}

void ModeShutterPanel::Asking::OnApertureChangeRequest(double aperture, bool& veto) {
    Log().Add(m_owner.Name(), L"OnApertureChangeRequest(%g)", aperture);
    veto = m_owner.m_refuses || !TheLight().SmartShutter().SetAperture(aperture);
    CKxStringW text;
    text.Format(60, Text(L"Aperture %g %%"), aperture);
    m_owner.Tell(veto ? Text(L"The shutter stays as it is").str() : text.str());
}

void ModeShutterPanel::Asking::OnModeChangeRequest(EKxShutterMode mode, bool& veto) {
    Log().Add(m_owner.Name(), L"OnModeChangeRequest(%d)", static_cast<int>(mode));
    veto = m_owner.m_refuses || !TheLight().SmartShutter().SetMode(mode);
    m_owner.Tell(Text(veto ? L"The shutter stays as it is" : L"The shutter works in another mode").str());
}
