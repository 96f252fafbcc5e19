// The planned planes of a Z series, in a table whose cells can be edited.
#pragma once

#include <kxdevui/controls/devgui_table.h>

#include "../host_panel.h"

class TablePanel : public HostPanel {
public:
    TablePanel() : HostPanel(L"Planes") {}
    ~TablePanel() override;
    TablePanel(const TablePanel&) = delete;
    TablePanel& operator=(const TablePanel&) = delete;
    void Fill();
    CKxDevUI_Table& Table() { return m_table; }

protected:
    bool OnUser(int, int, HWND) override { return false; }
    LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Show(int row);
    void OnEdited(int row, int column);

    CKxDevUI_Table m_table;
};
