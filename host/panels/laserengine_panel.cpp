#include "laserengine_panel.h"

#include <vector>

#include "../held_values.h"
#include "../light_devices.h"

// ---- The engine ----------------------------------------------------------------------------------------------------

CKxSimLaserEngine& LaserEnginePanel::Engine() {
    const auto line = [](const wchar_t* name, double wavelength, double fullPower, double limit) {
        SKxLaserLine made;
        made.name = name, made.wavelength = wavelength, made.fullPower = fullPower, made.limit = limit;
        made.gain = 85;
        return made;
    };
    static CKxSimLaserEngine& engine = TheLight().Devices().Add<CKxSimLaserEngine>(
        L"Laser engine",
        std::vector{line(L"Red", 640, 140, 100), line(L"Violet", 405, 120, 60), line(L"Blue", 488, 150, 100),
                    line(L"Green", 561, 100, 100), line(L"Cyan", 445, 75, 100), line(L"Infrared", 730, 40, 80)},
        std::vector<SKxLaserSubset>{{.name = L"Widefield", .lines = {0, 1, 2, 3}},
                                    {.name = L"TIRF", .lines = {0, 2, 3}},
                                    {.name = L"Bleaching", .lines = {1, 4, 5}}});
    return engine;
}

void LaserEnginePanel::Fill() {
    ControlPanel::Fill();
    AddCheckBox(Text(L"Interlock open"), IDC_LASER_INTERLOCK, 160, m_height - 22);
    OnDevice({});
}

void LaserEnginePanel::OnDevice(const Change& change) {
    ControlPanel::OnDevice(change);
    CheckDlgButton(m_hWnd, IDC_LASER_INTERLOCK, Engine().IsInterlockOpen() ? BST_CHECKED : BST_UNCHECKED);
}

bool LaserEnginePanel::OnUser(int id, int code, HWND from) {
    if (id != IDC_LASER_INTERLOCK || code != BN_CLICKED) return ControlPanel::OnUser(id, code, from);
    // No wish of the microscope's, but a door of the room.
    Engine().SetInterlock(!Engine().IsInterlockOpen(), Text(L"The door is open"));
    return true;
}

void AskingLasers::Prepare() {
    SetScale(Held().lasers.scale);
    SetUnit(Held().lasers.unit);
    Update(m_device.GetLogDevId());
    SetLinked(Held().lasers.linked);
}

void AskingLasers::OnViewChanged() {
    Log().Add(m_panel.Name(), L"OnViewChanged");
    Held().lasers = {GetScale(), GetUnit(), IsLinked()};
}

void AskingLasers::OnLinePowerChangeRequest(long line, double percent, bool& veto) {
    Log().Add(m_panel.Name(), L"OnLinePowerChangeRequest(%ld, %g)", line, percent);
    veto = !m_panel.Grants(PowerOf(m_device, line), percent, L"", L"The laser keeps its power");
}

void AskingLasers::OnLineStateChangeRequest(long line, bool on, bool& veto) {
    Log().Add(m_panel.Name(), L"OnLineStateChangeRequest(%ld, %d)", line, on ? 1 : 0);
    veto = !m_panel.Grants(UseOf(m_device, line), on ? 1 : 0, L"", L"The laser stays as it is");
}

// As far as it goes: what is off is off.
bool AskingLasers::Switch(const std::vector<SKxLaserSwitch>& steps) {
    for (const SKxLaserSwitch& step : steps) {
        const auto [line, on] = step;
        if (!m_panel.Grants(UseOf(m_device, line), on ? 1 : 0, L"", L"The laser stays as it is")) return false;
    }
    return true;
}

void AskingLasers::OnSoloRequest(long line, bool& veto) {
    Log().Add(m_panel.Name(), L"OnSoloRequest(%ld)", line);
    veto = !Switch(kx::multilaser::SoloSteps(GetLines(), line));
}

void AskingLasers::OnAllOffRequest(bool& veto) {
    Log().Add(m_panel.Name(), L"OnAllOffRequest");
    std::vector<SKxLaserSwitch> steps;
    const std::vector<SKxLaserLine> lines = GetLines();
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].on) steps.push_back({static_cast<long>(i), false});
    veto = !Switch(steps);
}

void AskingLasers::OnLinkChangeRequest(double factor, const std::vector<SKxLinkedPower>& powers, bool& veto) {
    for (const SKxLinkedPower& each : powers)
        Log().Add(m_panel.Name(), L"OnLinkChangeRequest(%g): line %ld %ls to %g", factor, each.line,
                  each.raised ? L"up" : L"down", each.power);
    for (const SKxLinkedPower& each : powers)
        if (!veto) OnLinePowerChangeRequest(each.line, each.power, veto);
}

void AskingLasers::OnSubsetChangeRequest(long subset, bool active, bool& veto) {
    Log().Add(m_panel.Name(), L"OnSubsetChangeRequest(%ld, %d)", subset, active ? 1 : 0);
    veto = !m_panel.Grants(SubsetOf(m_device, subset), active ? 1 : 0, L"", L"The lasers stay as they are");
}

// ---- A line --------------------------------------------------------------------------------------------------------

CKxSimLaserEngine& LaserLinePanel::Engine() {
    SKxLaserLine line;
    line.name = L"UV", line.wavelength = 385, line.fullPower = 20, line.limit = 50;
    static CKxSimLaserEngine& engine =
        TheLight().Devices().Add<CKxSimLaserEngine>(L"Bleaching laser", std::vector{line});
    return engine;
}

void AskingLaserLine::OnPowerChangeRequest(double percent, bool& veto) {
    Log().Add(m_panel.Name(), L"OnPowerChangeRequest(%g)", percent);
    veto = !m_panel.Grants(PowerOf(m_device, 0), percent, L"", L"The laser keeps its power");
}

void AskingLaserLine::OnStateChangeRequest(bool on, bool& veto) {
    Log().Add(m_panel.Name(), L"OnStateChangeRequest(%d)", on ? 1 : 0);
    veto = !m_panel.Grants(UseOf(m_device, 0), on ? 1 : 0, L"", L"The laser stays as it is");
}
