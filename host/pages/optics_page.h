// The optical path: nosepiece, filters, light path and lasers.
#pragma once

#include "../gallery_devices.h"
#include "../panels/filter_panel.h"
#include "../panels/nosepiece_panel.h"
#include "../panels/switcher_panel.h"
#include "page.h"

class OpticsPage : public Page {
public:
    explicit OpticsPage(GalleryDevices& devices);

    NosepiecePanel& Nosepiece() { return m_nosepiece; }
    FilterPanel& Emission() { return m_emission; }
    FilterPanel& Cubes() { return m_cubes; }
    SwitcherPanel& Path() { return m_path; }
    SwitcherPanel& Lasers() { return m_lasers; }

protected:
    void Fill() override;

private:
    NosepiecePanel m_nosepiece;
    FilterPanel m_emission;
    FilterPanel m_cubes;
    SwitcherPanel m_path;
    SwitcherPanel m_mirror;
    SwitcherPanel m_lasers;
};
