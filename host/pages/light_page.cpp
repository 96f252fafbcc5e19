#include "light_page.h"

#include "../light_devices.h"

void LightPage::Fill() {
    Place(m_shutters, ShutterPlace);
    m_shutters.Fill();
    Place(m_smart, SmartPlace);
    m_smart.Fill();
}
