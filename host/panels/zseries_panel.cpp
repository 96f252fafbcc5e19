#include "zseries_panel.h"

#include <algorithm>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxsystem/kx_time.h>

#include "../event_log.h"
#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr UINT kTick = 40;              // milliseconds
constexpr unsigned kMostPlanes = 1000;  // in the list
constexpr const wchar_t* kNames[] = {L"Focus drive", L"Piezo stage"};

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
    m_stack.Create(m_hWnd, &m_record, CKxGUILayoutManager::Zoomed(8), CKxGUILayoutManager::Zoomed(30), 0, 0, true,
                   true);
    m_stack.EnableCube(true);
    m_stack.EnableGrips(true);
    m_stack.MakePositionsWritable();
    m_stack.AddZDevice({.name = Text(kNames[kFocus]), .id = 1, .rangeMax = 10000, .select = true});
    m_stack.AddZDevice({.name = Text(kNames[kPiezo]), .piezo = true, .id = 2, .rangeMax = 300, .inverted = true});
    if (Held().series.GetZDevice(nullptr) != eKxZStack_Ok) PlanFirstSeries();
    m_record = Held().series;
    InsertWindow(m_stack.GetHandle());
    AddRefusal(IDC_ZSERIES_REFUSE);
    AddChild(L"STATIC", L"", 0, IDC_ZSERIES_SUMMARY, 330, 30, m_width - 336, 32);
    AddChild(L"LISTBOX", L"", WS_TABSTOP | WS_VSCROLL | WS_BORDER | LBS_NOINTEGRALHEIGHT, IDC_ZSERIES_PLANES, 330, 66,
             m_width - 342, m_height - 96);
    ShowZ();
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshAll);
    ShowPlanes();
    SetTimer(m_hWnd, reinterpret_cast<UINT_PTR>(this), kTick, OnTimer);
}

void ZSeriesPanel::PlanFirstSeries() {
    m_record.SetObjective(1.2, 1.33);
    m_record.SetWavelength(525);
    m_record.SetTop(4012, true);
    m_record.SetBottom(3988, true);
    m_record.SetStep(1.5);
    Held().series = m_record;
}

// The timer goes with the window, and the window with this object.
void CALLBACK ZSeriesPanel::OnTimer(HWND, UINT, UINT_PTR panel, DWORD) {
    auto& self = *reinterpret_cast<ZSeriesPanel*>(panel);
    self.ShowZ();
    self.m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshZ);
}

void ZSeriesPanel::ShowZ() {
    for (unsigned i = 0; i < Held().drives.size(); ++i)
        m_record.SetZPosition(i, Held().drives[i].Position(KX_GetTimeCounter()));
    unsigned device = kFocus;
    m_record.GetZDevice(&device);
    KX_TellMeasured(m_stack.GetHandle(), {.asked = Held().drives[device].to});
}

void ZSeriesPanel::ShowPlanes() {
    const HWND list = GetDlgItem(m_hWnd, IDC_ZSERIES_PLANES);
    unsigned count = 0;
    double remainder = 0, z = 0;
    const bool known = Held().series.GetCount(&count) == 0 && Held().series.GetRemainder(&remainder) == 0;
    SetDlgItemTextW(m_hWnd, IDC_ZSERIES_SUMMARY,
                    known ? Formatted(L"%u planes, %.2f µm left over", count, remainder).c_str()
                          : Text(L"No series yet").c_str());
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (unsigned i = 0; known && i < std::min(count, kMostPlanes) && Held().series.GetPlane(i, &z) == 0; ++i) {
        const std::wstring line = Formatted(L"Plane %u:  %.3f µm", i + 1, z);
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

// A refusal puts the record back to what is held; where Z stands is nobody's choice.
void ZSeriesPanel::Changed(unsigned int flags) {
    const Asked asked = SeriesOf(L"series", Held().series, m_record, Held().seriesPast);
    if (!Asks(asked.wish, asked.value)) {
        Tell(Text(L"The series stays as it is").str());
        ShowValues();
        return;
    }
    m_stack.UpdateGUI(flags);
    ShowPlanes();
    Tell(Text(L"Series changed").str());
}

void ZSeriesPanel::ShowValues() {
    m_record = Held().series;
    ShowZ();
    m_stack.UpdateGUI(CKxDevUI_ZStack::RefreshAll);
    ShowPlanes();
}

LRESULT ZSeriesPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    HostPanel::OnMouseWheel(wParam, lParam);
    return SendMessageW(m_stack.GetHandle(), kx::ui::WM_KX_MOUSE_WHEEL, wParam, lParam);
}

void ZSeriesPanel::MoveZ(double z) {
    unsigned device = kFocus;
    m_record.GetZDevice(&device);
    const bool moves = Asks(PlaceOf(Held().drives[device], kNames[device]), z);
    Tell(moves ? Formatted(L"Z moves to %.2f µm", z) : Text(L"Z stays where it is").str());
}

// With Z kept, the focus drive makes up for what the piezo travels.
void ZSeriesPanel::GoHome(bool keepZ) {
    const unsigned now = KX_GetTimeCounter();
    SKxSimZDrive &piezo = Held().drives[kPiezo], &focus = Held().drives[kFocus];
    const double middle = (piezo.rangeMin + piezo.rangeMax) / 2;
    const double kept = focus.Position(now) + piezo.Position(now) - middle;
    const bool goes =
        (!keepZ || Asks(PlaceOf(focus, kNames[kFocus]), kept)) && Asks(PlaceOf(piezo, kNames[kPiezo]), middle);
    Tell(Text(goes ? L"The piezo goes home" : L"The piezo stays where it is").str());
}
