// The device area: a container that holds the panels. It is made anew when the language changes.
#pragma once

#include "host_panel.h"
#include "panels/stage_panel.h"
#include "panels/template_panels.h"

class DeviceArea : public HostPanel {
public:
    // Unzoomed pixels.
    static constexpr int Width = 560;
    static constexpr int Height = 400;

    DeviceArea();
    // Makes the area and its panels, at the current zoom and in the current language.
    void Build(HWND parent);

    // The panel (an element of the area) under a point of the screen; null when there is none.
    CKxDevUI_Container* PanelAt(POINT screen);
    // Shows the modal dialog and tells what came of it.
    void AskForSeries(HWND owner);

    StagePanel& Stage() { return m_stage; }
    CameraPanel& Camera() { return m_camera; }
    LampPanel& Transmitted() { return m_transmitted; }
    LampPanel& Reflected() { return m_reflected; }
    StandPanel& Stand() { return m_stand; }
    SeriesDialog& Series() { return m_series; }

protected:
    bool OnUser(int, int, HWND) override { return false; }

private:
    StagePanel m_stage;
    CameraPanel m_camera;
    LampPanel m_transmitted;
    LampPanel m_reflected;
    StandPanel m_stand;
    SeriesDialog m_series;
};
