#include "light_page.h"

void LightPage::Fill() {
    m_colors.Create(*this, 8, 8, Width - 16, Height - 16, true, true);
    m_colors.Fill();
    Add(m_colors);
}
