#include "plan_panel.h"

#include <commctrl.h>

#include <algorithm>

#include <kxsystem/kx_number.h>

#include "../device_panel.h"
#include "../resources/resource.h"

namespace {

enum Column { kPlane, kZ, kExposure };
constexpr unsigned kMostPlanes = 1000;

}  // namespace

void PlanPanel::Fill() {
    AddCaption(Text(L"Planned planes"));
    m_table.SetId(IDC_PLAN);
    m_table.Create(m_hWnd, 6, 28, m_width - 12, m_height - 34, true, true);
    m_table.SetTabStop(true);
    ListView_SetExtendedListViewStyle(m_table.GetListView(), LVS_EX_FULLROWSELECT);
    m_table.InsertColumn(Text(L"Plane"), 70, L"%.0f", false);
    m_table.InsertColumn(Text(L"Z (µm)"), 90, L"%.3f", false);
    m_table.InsertColumn(Text(L"Exposure (ms)"), 110, L"%.4g", true);
    InsertElement(&m_table);
}

void PlanPanel::Show() {
    const CKxZStackData& series = m_plan.stack;
    const HWND list = m_table.GetListView();
    unsigned count = 0;
    double z = 0;
    if (series.GetCount(&count) != eKxZStack_Ok || series.GetPlane(0, &z) != eKxZStack_Ok) count = 0;
    const int rows = static_cast<int>(std::min(count, kMostPlanes));
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    while (ListView_GetItemCount(list) > rows)
        ListView_DeleteItem(list, ListView_GetItemCount(list) - 1);
    for (int row = 0; row < rows; ++row) {
        series.GetPlane(static_cast<unsigned>(row), &z);
        const double number = row + 1;
        if (row >= ListView_GetItemCount(list)) m_table.InsertRow(&number, 1, -1);
        m_table.SetCell(row, kZ, z);
        m_table.SetCell(row, kExposure, Exposure(row));
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

LRESULT PlanPanel::OnNotify(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.hwndFrom == m_table && header.code == LVN_ENDLABELEDITW) {
        OnEdited(reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item.iItem);
    }
    return HostPanel::OnNotify(message, wParam, lParam);
}

// The table has taken the text already; a refusal puts the old one back.
void PlanPanel::OnEdited(int row) {
    wchar_t text[100] = L"";
    m_table.GetCell(row, kExposure, text, 100);
    double exposure = 0;
    const bool understood = KX_StringToDouble(text, exposure) && exposure > 0;
    const bool refuses = DevicePanel::HostRefuses();
    if (understood && !refuses) Exposure(row) = exposure;
    m_table.SetCell(row, kExposure, Exposure(row));
    CKxStringW told;
    const wchar_t* const format = refuses      ? L"Plane %d stays as it is"
                                  : understood ? L"Plane %d changed"
                                               : L"This is no number.";
    told.Format(100, Text(format), row + 1);
    Tell(told.str());
}
