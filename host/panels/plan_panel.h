// The planes of the series that is planned, in a table: where each is, and how long it is exposed.
#pragma once

#include <kxdevui/controls/devgui_table.h>

#include "../host_panel.h"
#include "../series_plan.h"

class PlanPanel : public HostPanel {
public:
    // The plan has to outlive the panel.
    explicit PlanPanel(SeriesPlan& plan) : HostPanel(L"Planned planes"), m_plan(plan) {}
    void Fill();
    // Shows the planes of the plan, of very many the first thousand.
    void Show();
    CKxDevUI_Table& Table() { return m_table; }

protected:
    bool OnUser(int, int, HWND) override { return false; }
    LRESULT OnNotify(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnEdited(int row);
    double& Exposure(int row) { return m_plan.Exposure(static_cast<std::size_t>(row)); }

    SeriesPlan& m_plan;
    CKxDevUI_Table m_table;
};
