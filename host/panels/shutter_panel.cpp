#include "shutter_panel.h"

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_messages.h>

#include "../device_panel.h"
#include "../event_log.h"
#include "../pages/page.h"
#include "../resources/resource.h"

namespace {

const OnPage<ShutterPanel> s_shutters(L"Illumination", {268, 186});

}  // namespace

void ShutterPanel::Fill() {
    AddCaption(Text(L"Shutters"));
    m_all = {&m_plain[0], &m_plain[1], &m_mechanical, &m_plain[2], &m_plain[3]};
    m_plain[0].Init(*this, 0);
    m_plain[1].Init(*this, 1);
    m_mechanical.Init(*this, 2);
    m_plain[2].Init(*this, 3);
    m_plain[2].SetSize(84, 24);
    m_plain[2].SetTitlePosition(true, -1);
    m_plain[3].Init(*this, 4);
    m_plain[3].SetSize(64, 24);
    m_plain[3].SetTitleInButton(true);
    m_plain[3].SetAutomaticallyResizable(true, 64, 140);
    AddShutter(m_plain[0], 0, 8, 30);
    AddShutter(m_plain[1], 1, 58, 30);
    AddShutter(m_mechanical, 2, 112, 35);
    AddShutter(m_plain[2], 3, 160, 46);
    AddShutter(m_plain[3], 4, 8, 80);
    AddCheckBox(Text(L"Laser safety: transmitted light locked"), IDC_SHUTTER_LOCK, 6, m_height - 60);
    AddCheckBox(Text(L"The camera acquires"), IDC_SHUTTER_GRABBER, 6, m_height - 40);
    AddRefusal(IDC_SHUTTER_REFUSE);
    CheckDlgButton(m_hWnd, IDC_SHUTTER_LOCK,
                   TheLight().Shutter(1).GetCapability(eKxCapability_NotOperable) ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(m_hWnd, IDC_SHUTTER_GRABBER, CKxDeviceRegistry::IsGrabberActive() ? BST_CHECKED : BST_UNCHECKED);
    m_listener = std::make_unique<DeviceListener>([this](CDMApi_LogDevId device) { Refresh(device); });
}

// Shutters size themselves by the zoom, so they are placed by it too.
void ShutterPanel::AddShutter(CKxDevUI_Shutter& shutter, int index, int x, int y) {
    shutter.SetId(IDC_SHUTTER + index);
    shutter.Create(m_hWnd, CKxGUILayoutManager::Zoomed(x), CKxGUILayoutManager::Zoomed(y), -1, -1, true, true);
    InsertElement(&shutter);
    shutter.Update(TheLight().Shutter(index).GetLogDevId(), {.lock = true, .kind = true, .state = true});
}

void ShutterPanel::Refresh(CDMApi_LogDevId device) {
    for (int i = 0; i < LightDevices::Shutters; ++i) {
        if (TheLight().Shutter(i).GetLogDevId() == device) {
            kx::ui::SendDeviceBand(Shutter(i), device, kx::ui::ShutterBand{.kind = true, .state = true});
        }
    }
}

bool ShutterPanel::Agrees(int index, bool open) {
    Log().Add(Shutter(index).GetTitle(), L"OnStateChangeRequest(%ls)", open ? L"open" : L"closed");
    if (!Asks(OpeningOf(TheLight().Shutter(index)), open)) {
        Tell(Text(L"The shutter stays as it is").str());
        return false;
    }
    CKxStringW text;
    text.Format(120, Text(open ? L"%ls opens" : L"%ls closes"), TheLight().Shutter(index).GetKey().c_str());
    Tell(text.str());
    return true;
}

void ShutterPanel::ShowParameters(int index) {
    Log().Add(Shutter(index).GetTitle(), L"OnRenameDlgRequest");
    CKxStringW text;
    text.Format(120, Text(L"Parameters of %ls"), TheLight().Shutter(index).GetKey().c_str());
    Tell(text.str());
}

bool ShutterPanel::OnUser(int id, int code, HWND from) {
    if (code != BN_CLICKED) return false;
    const bool checked = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
    switch (id) {
    case IDC_SHUTTER_LOCK: TheLight().Shutter(1).SetLocked(checked); return true;
    case IDC_SHUTTER_GRABBER:
        CKxDeviceRegistry::SetGrabberActive(checked);
        for (int i = 0; i < LightDevices::Shutters; ++i)
            Shutter(i).Update(TheLight().Shutter(i).GetLogDevId(), {.state = true});
        return true;
    default: return false;
    }
}
