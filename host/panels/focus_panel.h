// The Z drive of the microscope with the series that is planned on it.
#pragma once

#include <functional>

#include "../device_panel.h"
#include "../host_microscope.h"
#include "../typed_zstack.h"

class FocusPanel : public DevicePanel {
public:
    // A rising Z takes the objective away from the slide with a direction of -1. The microscope, whose
    // plan it is, has to outlive the panel; `changed` hears when it is another, and the panel must not be destroyed
    // from it.
    FocusPanel(HostMicroscope& microscope, CKxSimZDrive& device, int direction, std::function<void()> changed);
    ~FocusPanel() override { CKxDeviceRegistry::RemoveListener(m_turretListener); }
    FocusPanel(const FocusPanel&) = delete;
    FocusPanel& operator=(const FocusPanel&) = delete;
    void Fill();
    CKxDevUI_ZStack& Panel() { return m_stack; }
    void ShowValues() override;

protected:
    void OnDevice(const Change& change) override;
    bool OnUser(int id, int code, HWND from) override;
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    class Asking : public TypedZStack {
    public:
        explicit Asking(FocusPanel& owner) : m_owner(owner) {}

    protected:
        void OnStepChanged(double step, bool typed) override;
        void OnMoveZRequest(double z) override;
        void OnGoHomeRequest(bool) override {}
        void OnHostRequest() override {}
        void OnZDeviceShown(unsigned int) override {}
        void OnZStackChanged(unsigned int flags) override;

    private:
        FocusPanel& m_owner;
    };
    void PlanFirstSeries(double minimum, double maximum);
    void ShowZ();
    void TellObjective();

    HostMicroscope& m_microscope;
    int m_turretListener;
    CKxSimZDrive& m_device;
    bool m_inverted;
    SeriesPlan& m_plan;  // what the host has agreed to
    std::function<void()> m_changed;
    CKxZStackData m_record;  // what the panel edits
    Asking m_stack;
};
