// Light sources: colour sliders in all their forms.
#pragma once

#include "../panels/color_panel.h"
#include "page.h"

class ColorPage : public Page {
public:
    ColorPage() : Page(L"Light sources") {}

    ColorPanel& Colors() { return m_colors; }

protected:
    void Fill() override;
    void Show() override { m_colors.Align(); }

private:
    ColorPanel m_colors;
};
