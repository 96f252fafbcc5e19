#include "light_page.h"

void LightPage::Fill() {
    Place(m_shutters, ShutterPlace);
    m_shutters.Fill();
}

void LightPage::Place(HostPanel& panel, const RECT& place) {
    panel.Create(*this, place.left, place.top, place.right, place.bottom, true, true);
    Add(panel);
}
