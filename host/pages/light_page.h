// Controls for light.
#pragma once

#include "../panels/color_panel.h"
#include "page.h"

class LightPage : public Page {
public:
    LightPage() : Page(L"Light sources") {}

    ColorPanel& Colors() { return m_colors; }

protected:
    void Fill() override;
    void Show() override { m_colors.Align(); }

private:
    ColorPanel m_colors;
};
