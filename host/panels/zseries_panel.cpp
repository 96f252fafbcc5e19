#include "zseries_panel.h"

#include <algorithm>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxsystem/kx_time.h>

#include "../event_log.h"
#include "../resources/resource.h"

namespace {

constexpr UINT kTick = 40;              // milliseconds
constexpr unsigned kMostPlanes = 1000;  // in the list

template <class... Values>
std::wstring Formatted(const wchar_t* english, Values... values) {
    CKxStringW text;
    text.Format(100, Text(english), values...);
    return text.str();
}

}  // namespace

// ---- What the panel tells ------------------------------------------------------------------------------------------

void HostZStack::OnStepChanged(double step, bool typed) {
    Log().Add(L"Z series", L"OnStepChanged(%g, %d)", step, static_cast<int>(typed));
}

void HostZStack::OnMoveZRequest(double z) {
    Log().Add(L"Z series", L"OnMoveZRequest(%g)", z);
    m_panel.MoveZ(z);
}

void HostZStack::OnGoHomeRequest(bool keepZ) {
    Log().Add(L"Z series", L"OnGoHomeRequest(%d)", static_cast<int>(keepZ));
    m_panel.GoHome(keepZ);
}

void HostZStack::OnZStackChanged(unsigned int flags) {
    Log().Add(L"Z series", L"OnZStackChanged(%u)", flags);
    m_panel.Changed(flags);
}

// ---- The panel -----------------------------------------------------------------------------------------------------

void ZSeriesPanel::Fill() {
    AddCaption(Text(L"Z series"));
    m_drives[kFocus] = {.rangeMin = 0, .rangeMax = 10000, .speed = 20, .from = 4000, .to = 4000};
    m_drives[kPiezo] = {.rangeMin = 0, .rangeMax = 300, .speed = 60, .from = 150, .to = 150};
    m_stack.Create(m_hWnd, &m_record, CKxGUILayoutManager::Zoomed(8), CKxGUILayoutManager::Zoomed(30), 0, 0, true,
                   true);
    m_stack.EnableCube(true);
    m_stack.MakePositionsWritable();
    m_stack.AddZDevice({.name = Text(L"Focus drive"), .id = 1, .rangeMax = 10000, .select = true});
    m_stack.AddZDevice({.name = Text(L"Piezo stage"), .piezo = true, .id = 2, .rangeMax = 300, .inverted = true});
    m_record.SetObjective(1.2, 1.33);
    m_record.SetWavelength(525);
    m_record.SetTop(4012, true);
    m_record.SetBottom(3988, true);
    m_record.SetStep(1.5);
    m_held = m_record;
    InsertWindow(m_stack.GetHandle());
    AddCheckBox(Text(L"The host refuses"), IDC_ZSERIES_REFUSE, 6, m_height - 22);
    AddChild(L"STATIC", L"", 0, IDC_ZSERIES_SUMMARY, 330, 30, m_width - 336, 32);
    AddChild(L"LISTBOX", L"", WS_TABSTOP | WS_VSCROLL | WS_BORDER | LBS_NOINTEGRALHEIGHT, IDC_ZSERIES_PLANES, 330, 66,
             m_width - 342, m_height - 96);
    ShowZ();
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshAll);
    ShowPlanes();
    SetTimer(m_hWnd, reinterpret_cast<UINT_PTR>(this), kTick, OnTimer);
}

// The timer goes with the window, and the window with this object.
void CALLBACK ZSeriesPanel::OnTimer(HWND, UINT, UINT_PTR panel, DWORD) {
    auto& self = *reinterpret_cast<ZSeriesPanel*>(panel);
    self.ShowZ();
    self.m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshZ);
}

void ZSeriesPanel::ShowZ() {
    for (unsigned i = 0; i < m_drives.size(); ++i)
        m_record.SetZPosition(i, m_drives[i].Position(KX_GetTimeCounter()));
    unsigned device = kFocus;
    m_record.GetZDevice(&device);
    KX_TellMeasured(m_stack.GetHandle(), {.asked = m_drives[device].to});
}

void ZSeriesPanel::ShowPlanes() {
    const HWND list = GetDlgItem(m_hWnd, IDC_ZSERIES_PLANES);
    unsigned count = 0;
    double remainder = 0, z = 0;
    const bool known = m_held.GetCount(&count) == 0 && m_held.GetRemainder(&remainder) == 0;
    SetDlgItemTextW(m_hWnd, IDC_ZSERIES_SUMMARY,
                    known ? Formatted(L"%u planes, %.2f µm left over", count, remainder).c_str()
                          : Text(L"No series yet").c_str());
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (unsigned i = 0; known && i < std::min(count, kMostPlanes) && m_held.GetPlane(i, &z) == 0; ++i) {
        const std::wstring line = Formatted(L"Plane %u:  %.3f µm", i + 1, z);
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

bool ZSeriesPanel::OnUser(int id, int code, HWND from) {
    if (m_stack.OnPositionLeft(id, code)) return true;
    if (id != IDC_ZSERIES_REFUSE || code != BN_CLICKED) return false;
    m_refuses = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
    return true;
}

// A refusal puts the record back to what is held; where Z stands is nobody's choice.
void ZSeriesPanel::Changed(unsigned int flags) {
    if (m_refuses) {
        m_record = m_held;
        ShowZ();
        Tell(Text(L"The series stays as it is").str());
        m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshAll);
        return;
    }
    m_held = m_record;
    m_stack.UpdateGUI(flags);
    ShowPlanes();
    Tell(Text(L"Series changed").str());
}

void ZSeriesPanel::MoveZ(double z) {
    unsigned device = kFocus;
    m_record.GetZDevice(&device);
    if (!m_refuses) m_drives[device].Start(z, KX_GetTimeCounter());
    Tell(m_refuses ? Text(L"Z stays where it is").str() : Formatted(L"Z moves to %.2f µm", z));
}

// With Z kept, the focus drive makes up for what the piezo travels.
void ZSeriesPanel::GoHome(bool keepZ) {
    const unsigned now = KX_GetTimeCounter();
    SKxSimZDrive &piezo = m_drives[kPiezo], &focus = m_drives[kFocus];
    const double middle = (piezo.rangeMin + piezo.rangeMax) / 2;
    if (!m_refuses) {
        if (keepZ) focus.Start(focus.Position(now) + piezo.Position(now) - middle, now);
        piezo.Start(middle, now);
    }
    Tell(Text(m_refuses ? L"The piezo stays where it is" : L"The piezo goes home").str());
}
