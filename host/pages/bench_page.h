// The whole microscope on one page: a panel for each of its devices, in as many columns as the window is wide for.
#pragma once

#include <memory>
#include <vector>

#include "../host_microscope.h"
#include "../panels/filter_panel.h"
#include "../panels/focus_panel.h"
#include "../panels/laser_panel.h"
#include "../panels/modeshutter_panel.h"
#include "../panels/nosepiece_panel.h"
#include "../panels/plan_panel.h"
#include "../panels/single_shutter_panel.h"
#include "../panels/switcher_panel.h"
#include "page.h"

class BenchPage : public Page {
public:
    // The microscope has to outlive the page.
    explicit BenchPage(HostMicroscope& microscope) : Page(L"Microscope"), m_microscope(microscope) {}
    ~BenchPage() override { Destroy(); }

    void FitTo(const RECT& place) override;
    bool Wheel(int delta) override;
    void Reveal(HWND control) override;

protected:
    void Fill() override;
    LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) override;

private:
    // Makes a panel so high, in unzoomed pixels, and fills it. Panels of devices have no refusal of their own here: the
    // menu has one for all.
    template <class Panel, class... Arguments>
    void Put(int height, std::unique_ptr<Panel> panel, Arguments... arguments);
    void PutTurrets();
    void PutWheels();
    void PutSwitches();
    void PutLight();
    void PutFocus();
    void Arrange();
    void ScrollTo(long position);

    HostMicroscope& m_microscope;
    std::vector<std::unique_ptr<HostPanel>> m_panels;
    long m_content = 0;  // the height of all panels, and how far they are scrolled; pixels of the screen
    long m_scrolled = 0;
    double m_zoom = 1;  // of the pixels that they are
};
