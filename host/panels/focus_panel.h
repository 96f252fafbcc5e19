// The Z drive of the microscope with the series that is planned on it.
#pragma once

#include <functional>

#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/zfocus/devgui_zstack.h>

#include "../device_panel.h"

class FocusPanel : public DevicePanel {
public:
    // A rising Z takes the objective away from the slide with a direction of -1. `changed` hears of every new plan; the
    // panel must not be destroyed from it.
    FocusPanel(CKxSimZDrive& device, int direction, std::function<void(const CKxZStackData&)> changed)
        : DevicePanel(L"Z drive", device), m_device(device), m_inverted(direction < 0), m_changed(std::move(changed)),
          m_stack(*this) {}
    void Fill();
    CKxDevUI_ZStack& Panel() { return m_stack; }
    // The planned series.
    const CKxZStackData& Plan() const { return m_held; }

protected:
    void OnDevice(const Change& change) override;
    void ShowCaption(const wchar_t* caption) override;

private:
    class Asking : public CKxDevUI_ZStack {
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

    CKxSimZDrive& m_device;
    bool m_inverted;
    std::function<void(const CKxZStackData&)> m_changed;
    CKxZStackData m_record;  // what the panel edits
    CKxZStackData m_held;    // what the host has agreed to
    Asking m_stack;
};
