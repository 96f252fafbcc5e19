#include "color_page.h"

void ColorPage::Fill() {
    m_colors.Create(*this, 8, 8, Width - 16, Height - 16, true, true);
    m_colors.Fill();
    Add(m_colors);
}
