// The generic controls, each on a panel of its own.
#pragma once

#include "../panels/edit_panel.h"
#include "../panels/radio_panel.h"
#include "../panels/slider_panel.h"
#include "../panels/table_panel.h"
#include "page.h"

class ControlsPage : public Page {
public:
    ControlsPage() : Page(L"Controls") {}

    EditPanel& Fields() { return m_fields; }
    RadioPanel& Binning() { return m_radio; }
    SliderPanel& Sliders() { return m_sliders; }
    TablePanel& Planes() { return m_table; }

protected:
    // Where the panels stand, in unzoomed pixels: x, y, width, height.
    static constexpr RECT SliderPlace{8, 8, 268, 190};
    static constexpr RECT EditPlace{284, 8, 268, 190};
    static constexpr RECT RadioPlace{8, 206, 180, 186};
    static constexpr RECT TablePlace{196, 206, 356, 186};

    void Fill() override;

private:
    void Place(HostPanel& panel, const RECT& place);

    SliderPanel m_sliders;
    EditPanel m_fields;
    RadioPanel m_radio;
    TablePanel m_table;
};
