// The Z stack panel at work.
#pragma once

#include "../panels/zseries_panel.h"
#include "page.h"

class ZSeriesPage : public Page {
public:
    ZSeriesPage() : Page(L"Z series") {}

    ZSeriesPanel& Series() { return m_series; }

protected:
    void Fill() override {
        m_series.Create(*this, 8, 8, Width - 16, Height - 16, true, true);
        Add(m_series);
        m_series.Fill();
    }

private:
    ZSeriesPanel m_series;
};
