#include "single_shutter_panel.h"

void AskingShutter::Prepare() {
    SetId(IDC_SHUTTER);
    SetSize(80, 24);
    SetTitlePosition(true, -1);
}

void AskingShutter::OnStateChangeRequest(bool newState, bool& veto) {
    Log().Add(m_panel.Name(), L"OnStateChangeRequest(%ls)", newState ? L"open" : L"closed");
    // The device tells when it has arrived, so the click never shows its state by itself.
    veto = true;
    if (!m_panel.Grants(OpeningOf(m_device), newState, L"", L"The shutter stays as it is")) return;
    CKxStringW text;
    text.Format(120, Text(newState ? L"%ls opens" : L"%ls closes"), m_device.GetKey().c_str());
    m_panel.Tell(text.str());
}
