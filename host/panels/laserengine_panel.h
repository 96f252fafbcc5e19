// A laser engine with its lines in subsets, and a single line.
#pragma once

#include <kxdevices/kx_simlaserengine.h>
#include <kxdevui/light/devgui_multilaserline.h>
#include <kxdevui/light/devgui_multilasersubset.h>

#include "../control_panel.h"

class AskingLasers : public Asks<CKxDevUI_MultiLaserSubset, CKxSimLaserEngine> {
public:
    static constexpr ControlLayout kLayout{.control = {6, 4}, .size = {0, 256}, .titled = true};
    using Asks::Asks;
    void Prepare();

protected:
    void OnLinePowerChangeRequest(long line, double percent, bool& veto) override;
    void OnLineStateChangeRequest(long line, bool on, bool& veto) override;
    void OnSoloRequest(long line, bool& veto) override;
    void OnAllOffRequest(bool& veto) override;
    void OnLinkChangeRequest(double factor, const std::vector<SKxLinkedPower>& powers, bool& veto) override;
    void OnSubsetChangeRequest(long subset, bool active, bool& veto) override;
    void OnViewChanged() override;

private:
    bool Switch(const std::vector<SKxLaserSwitch>& steps);
};

// With a switch that opens the interlock.
class LaserEnginePanel : public ControlPanel<AskingLasers> {
public:
    LaserEnginePanel() : ControlPanel(L"Laser engine", Engine()) {}
    void Fill();
    static CKxSimLaserEngine& Engine();

protected:
    void OnDevice(const Change& change) override;
    bool OnUser(int id, int code, HWND from) override;
};

class AskingLaserLine : public Asks<CKxDevUI_MultiLaserLine, CKxSimLaserEngine> {
public:
    using Asks::Asks;

protected:
    void OnPowerChangeRequest(double percent, bool& veto) override;
    void OnStateChangeRequest(bool on, bool& veto) override;
};

// A laser that stands by itself.
class LaserLinePanel : public ControlPanel<AskingLaserLine> {
public:
    LaserLinePanel() : ControlPanel(L"Bleaching laser", Engine()) {}
    static CKxSimLaserEngine& Engine();
};
