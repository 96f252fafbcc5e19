// What stands in the light, on simulated devices: the panels that belong here put themselves on the page.
#pragma once

#include "../gallery_devices.h"
#include "../panels/irises_panel.h"
#include "page.h"

class LampPage : public Page {
public:
    explicit LampPage(GalleryDevices& devices) : Page(L"Lamps"), m_irises(devices.Nosepiece()) {}

    IrisesPanel& Irises() { return m_irises; }

protected:
    void Fill() override {
        Place(m_irises, {8, 8, 268, 212});
        m_irises.Fill();
    }

private:
    IrisesPanel m_irises;
};
