#include "controls_page.h"

void ControlsPage::Fill() {
    Place(m_sliders, SliderPlace);
    m_sliders.Fill();
    Place(m_fields, EditPlace);
    m_fields.Fill();
    Place(m_radio, RadioPlace);
    m_radio.Fill();
    Place(m_table, TablePlace);
    m_table.Fill();
}

void ControlsPage::Place(HostPanel& panel, const RECT& place) {
    panel.Create(*this, place.left, place.top, place.right, place.bottom, true, true);
    Add(panel);
}
