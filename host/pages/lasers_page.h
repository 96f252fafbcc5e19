// The lines of laser engines, on the simulated microscope.
#pragma once

#include "../panels/laserengine_panel.h"
#include "page.h"

class LasersPage : public Page {
public:
    LasersPage() : Page(L"Lasers") {}

protected:
    void Fill() override {
        Place(m_engine, {8, 8, 544, 292});
        m_engine.Fill();
        Place(m_line, {8, 304, 544, 92});
        m_line.Fill();
    }

private:
    LaserEnginePanel m_engine;
    LaserLinePanel m_line;
};
