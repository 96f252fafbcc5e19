// A Z series on a simulated focus drive with a piezo: the Z stack panel, and the planes that the series would take.
#pragma once

#include <kxdevices/kx_zstackdata.h>

#include "../host_panel.h"
#include "../typed_zstack.h"

class ZSeriesPanel;

// A Z stack panel that logs what it is told and hands it on.
class HostZStack : public TypedZStack {
public:
    explicit HostZStack(ZSeriesPanel& panel) : m_panel(panel) {}
    HWND Child(int id) const { return Item(id); }

protected:
    void OnStepChanged(double step, bool typed) override;
    void OnMoveZRequest(double z) override;
    void OnGoHomeRequest(bool keepZ) override;
    void OnHostRequest() override {}
    void OnZDeviceShown(unsigned int) override {}
    void OnZStackChanged(unsigned int flags) override;

private:
    ZSeriesPanel& m_panel;
};

class ZSeriesPanel : public HostPanel {
public:
    ZSeriesPanel() : HostPanel(L"Z series") {}
    void Fill();
    HostZStack& Stack() { return m_stack; }

    // What the user wants: the record changed, Z somewhere else, the piezo at its home.
    void Changed(unsigned int flags);
    void MoveZ(double z);
    void GoHome(bool keepZ);
    void ShowValues() override;

protected:
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;
    bool OnUser(int id, int code, HWND) override { return m_stack.OnPositionLeft(id, code); }

private:
    static constexpr unsigned kFocus = 0, kPiezo = 1;
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR panel, DWORD);
    void PlanFirstSeries();
    void ShowZ();
    void ShowPlanes();

    HostZStack m_stack{*this};
    CKxZStackData m_record;  // what the panel edits
};
