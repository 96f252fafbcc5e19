#include "table_panel.h"

#include <commctrl.h>

#include <cwchar>

#include <kxbaseui/kx_fonts.h>
#include <kxsystem/kx_number.h>

#include "../resources/resource.h"

namespace {

enum Column { kPlane, kZ, kExposure, kNote };

}  // namespace

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
    for (int i = 0; i < 12; ++i) {
        m_planes.push_back({0.3 * i, i < 6 ? 50.0 : 80.0, i == 6 ? Text(L"cover slip").str() : std::wstring()});
        const double number = i + 1;
        m_table.InsertRow(&number, 1, -1);
        m_table.SetChecked(i, true);
        Show(i);
    }
    InsertElement(&m_table);
    AddCheckBox(Text(L"The host refuses"), IDC_PLANES_REFUSE, 6, m_height - 22);
}

void TablePanel::Show(int row) {
    const Plane& plane = m_planes[static_cast<std::size_t>(row)];
    m_table.SetCell(row, kZ, plane.z);
    m_table.SetCell(row, kExposure, plane.exposure);
    m_table.SetCell(row, kNote, plane.note.c_str());
}

bool TablePanel::OnUser(int id, int code, HWND from) {
    if (id != IDC_PLANES_REFUSE || code != BN_CLICKED) return false;
    m_refuses = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
    return true;
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
    Plane& plane = m_planes[static_cast<std::size_t>(row)];
    wchar_t text[100] = L"";
    m_table.GetCell(row, column, text, 100);
    double number = 0;
    const bool understood = column == kNote || (KX_StringToDouble(text, number) && (column == kZ || number > 0));
    if (understood && !m_refuses) {
        switch (column) {
        case kZ: plane.z = number; break;
        case kExposure: plane.exposure = number; break;
        default: plane.note = text; break;
        }
    }
    Show(row);
    CKxStringW told;
    told.Format(100,
                Text(m_refuses    ? L"Plane %d stays as it is"
                     : understood ? L"Plane %d changed"
                                  : L"This is no number."),
                row + 1);
    Tell(told.str());
}
