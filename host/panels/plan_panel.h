// The planes of the series that is planned, in a table: where each is, and how long it is exposed.
#pragma once

#include <vector>

#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/controls/devgui_table.h>

#include "../host_panel.h"

class PlanPanel : public HostPanel {
public:
    PlanPanel() : HostPanel(L"Planned planes") {}
    void Fill();
    // Shows the planes of a series, of very many the first thousand. Exposures stay with the numbers of the planes.
    void Show(const CKxZStackData& series);
    CKxDevUI_Table& Table() { return m_table; }

protected:
    bool OnUser(int, int, HWND) override { return false; }
    LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnEdited(int row);
    double& Exposure(int row);

    CKxDevUI_Table m_table;
    std::vector<double> m_exposures;  // milliseconds
};
