// The camera's binning: a radio group made of a dialog template's controls.
#pragma once

#include <kxdevui/controls/devgui_radio.h>

#include "../host_panel.h"

class RadioPanel : public HostPanel {
public:
    RadioPanel() : HostPanel(L"Camera binning") {}
    void Fill();
    void ShowValues() override;
    CKxDevUI_Radio& Group() { return m_group; }

protected:
    bool OnUser(int id, int code, HWND from) override;

private:
    void Choose(int index);

    CKxDevUI_Radio m_group;
};
