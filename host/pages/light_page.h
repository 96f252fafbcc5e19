// Light and its shutters, on the simulated microscope.
#pragma once

#include "../light_devices.h"
#include "../panels/modeshutter_panel.h"
#include "../panels/shutter_panel.h"
#include "page.h"

class LightPage : public Page {
public:
    LightPage() : Page(L"Illumination") {}

    ShutterPanel& Shutters() { return m_shutters; }
    ModeShutterPanel& Smart() { return m_smart; }

protected:
    // Where the panels stand, in unzoomed pixels: x, y, width, height.
    static constexpr RECT ShutterPlace{8, 8, 268, 186};
    static constexpr RECT SmartPlace{284, 8, 268, 100};

    void Fill() override;

private:
    ShutterPanel m_shutters;
    ModeShutterPanel m_smart{TheLight().SmartShutter()};
};
