// The stand with its stage, camera and lamps: containers made in each of the ways there are.
#pragma once

#include "../panels/stage_panel.h"
#include "../panels/template_panels.h"
#include "page.h"

class StandPage : public Page {
public:
    StandPage();

    // Show the modal dialogs and tell what came of them.
    void AskForSeries(HWND owner);
    void AskForCondenser(HWND owner);

    StagePanel& Stage() { return m_stage; }
    CameraPanel& Camera() { return m_camera; }
    LampPanel& Transmitted() { return m_transmitted; }
    LampPanel& Reflected() { return m_reflected; }
    StandPanel& Stand() { return m_stand; }
    SeriesDialog& Series() { return m_series; }

protected:
    void Fill() override;
    void Show() override;

private:
    StagePanel m_stage;
    CameraPanel m_camera;
    LampPanel m_transmitted;
    LampPanel m_reflected;
    StandPanel m_stand;
    SeriesDialog m_series;
};
