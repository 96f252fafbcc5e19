// The XY stage: a container made empty and filled with plain buttons and with a control of the host's own.
#pragma once

#include "../host_panel.h"

// Shows the step of the stage and changes it with the mouse wheel: 1, 2, 5, 10, ... 1000 micrometres. A container made
// by the host and inserted into another as an element.
class StageStep : public HostPanel {
public:
    StageStep() : HostPanel(L"Stage step") {}

    // Micrometres.
    int Step() const;
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnUser(int, int, HWND) override { return false; }

private:
    void Show();
};

class StagePanel : public HostPanel {
public:
    StagePanel() : HostPanel(L"Stage") {}
    void Fill();
    void ShowValues() override;

protected:
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    StageStep m_step;
};
