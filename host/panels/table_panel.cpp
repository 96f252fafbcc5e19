#include "table_panel.h"

#include <commctrl.h>

#include <cwchar>

#include <kxbaseui/kx_fonts.h>
#include <kxsystem/kx_number.h>

#include "../held_values.h"
#include "../resources/resource.h"

namespace {

enum Column { kPlane, kZ, kExposure, kNote };

HeldValues::Plane& PlaneOf(int row) { return Held().planes[static_cast<std::size_t>(row)]; }

}  // namespace

// Of check marks a table tells nobody.
TablePanel::~TablePanel() {
    if (!m_table.GetListView()) return;
    for (int i = 0; i < std::ssize(Held().planes); ++i)
        PlaneOf(i).taken = m_table.GetChecked(i);
}

void TablePanel::Fill() {
    AddCaption(Text(L"Planned planes"));
    m_table.SetId(IDC_PLANES);
    m_table.Create(m_hWnd, 6, 28, m_width - 12, m_height - 56, true, true);
    m_table.SetTabStop(true);
    ListView_SetExtendedListViewStyle(m_table.GetListView(), LVS_EX_FULLROWSELECT | LVS_EX_CHECKBOXES);
    m_table.InsertColumn(Text(L"Plane"), 60, nullptr, false);
    m_table.InsertColumn(Text(L"Z (µm)"), 70, L"%.2f", true);
    m_table.InsertColumn(Text(L"Exposure (ms)"), 90, L"%.0f", true);
    m_table.InsertColumn(Text(L"Note"), 100, nullptr, true);
    auto& planes = Held().planes;
    for (int i = 0; planes.size() < 12; ++i)
        planes.push_back({0.3 * i, i < 6 ? 50.0 : 80.0, i == 6 ? Text(L"cover slip").str() : std::wstring()});
    for (int i = 0; i < std::ssize(planes); ++i) {
        const double number = i + 1;
        m_table.InsertRow(&number, 1, -1);
        m_table.SetChecked(i, PlaneOf(i).taken);
        Show(i);
    }
    InsertElement(&m_table);
    AddRefusal(IDC_PLANES_REFUSE);
}

void TablePanel::Show(int row) {
    const HeldValues::Plane& plane = PlaneOf(row);
    m_table.SetCell(row, kZ, plane.z);
    m_table.SetCell(row, kExposure, plane.exposure);
    m_table.SetCell(row, kNote, plane.note.c_str());
}

LRESULT TablePanel::OnNotify(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.hwndFrom == m_table && header.code == LVN_ENDLABELEDITW) {
        const auto& item = reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item;
        OnEdited(item.iItem, item.iSubItem);
    }
    return HostPanel::OnNotify(message, wParam, lParam);
}

// The table has taken the text already; a refusal puts the old one back.
void TablePanel::OnEdited(int row, int column) {
    HeldValues::Plane& plane = PlaneOf(row);
    wchar_t text[100] = L"";
    m_table.GetCell(row, column, text, 100);
    double number = 0;
    const bool understood = column == kNote || (KX_StringToDouble(text, number) && (column == kZ || number > 0));
    if (understood && !Refuses()) {
        switch (column) {
        case kZ: plane.z = number; break;
        case kExposure: plane.exposure = number; break;
        default: plane.note = text; break;
        }
    }
    Show(row);
    CKxStringW told;
    told.Format(100,
                Text(Refuses()    ? L"Plane %d stays as it is"
                     : understood ? L"Plane %d changed"
                                  : L"This is no number."),
                row + 1);
    Tell(told.str());
}
