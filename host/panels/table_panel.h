// The planned planes of a Z series, in a table whose cells can be edited.
#pragma once

#include <string>
#include <vector>

#include <kxdevui/controls/devgui_table.h>

#include "../host_panel.h"

class TablePanel : public HostPanel {
public:
    TablePanel() : HostPanel(L"Planes") {}
    void Fill();
    CKxDevUI_Table& Table() { return m_table; }

protected:
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Plane {
        double z;         // micrometres
        double exposure;  // milliseconds
        std::wstring note;
    };
    void Show(int row);
    void OnEdited(int row, int column);

    CKxDevUI_Table m_table;
    std::vector<Plane> m_planes;
    bool m_refuses = false;
};
