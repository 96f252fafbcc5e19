#include "single_shutter_panel.h"

#include <kxbaseui/kx_layoutmanager.h>

#include "../event_log.h"
#include "../resources/resource.h"

void SingleShutterPanel::Fill() {
    AddChild(L"STATIC", L"", SS_NOPREFIX, IDC_DEVICE_CAPTION, 94, 11, m_width - 100, 16);
    m_shutter.SetId(IDC_SHUTTER);
    m_shutter.SetSize(80, 24);
    m_shutter.SetTitlePosition(true, -1);
    // A shutter sizes itself by the zoom, so it is placed by it too.
    m_shutter.Create(m_hWnd, CKxGUILayoutManager::Zoomed(6), CKxGUILayoutManager::Zoomed(6), -1, -1, true, true);
    InsertElement(&m_shutter);
    m_shutter.Update(&m_device, {.lock = true, .kind = true, .state = true});
    ShowState();
}

void SingleShutterPanel::OnDevice(const Change& change) {
    m_shutter.Update(&m_device, change.structure, change.names, change.position);
}

void SingleShutterPanel::Asking::OnStateChangeRequest(bool newState, bool& veto) {
    Log().Add(m_owner.Name(), L"OnStateChangeRequest(%ls)", newState ? L"open" : L"closed");
    // The device tells when it has arrived, so the click never shows its state by itself.
    veto = true;
    if (m_owner.Refuses() || !m_owner.m_device.SetOpen(newState)) {
        m_owner.TellRefused(L"The shutter stays as it is");
        return;
    }
    CKxStringW text;
    text.Format(120, Text(newState ? L"%ls opens" : L"%ls closes"), m_owner.m_device.GetKey().c_str());
    m_owner.Tell(text.str());
}
