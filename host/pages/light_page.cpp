#include "light_page.h"

#include "../light_devices.h"

void LightPage::Fill() {
    Place(m_shutters, ShutterPlace);
    m_shutters.Fill();
    Place(m_smart, SmartPlace);
    m_smart.Fill();
    // The devices need time to pass, seen or not.
    SetTimer(m_hWnd, 1, 30, [](HWND, UINT, UINT_PTR, DWORD) { TheLight().Tick(); });
}
