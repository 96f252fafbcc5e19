// A filter changer: a motorised wheel, or a turret that is turned by hand.
#pragma once

#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/setup/devgui_setup.h>

#include "../control_panel.h"

class AskingWheel : public Asks<CKxDevUI_FilterWheel, CKxSimFilterChanger> {
public:
    static constexpr ControlLayout kLayout{.control = {4, 4}};

    using Asks::Asks;
    void Show(const DevicePanel::Change& change);

protected:
    void OnPositionChangeRequest(long position, bool& refuse) override;
    void OnSetupRequest() override;
};

class FilterPanel : public ControlPanel<AskingWheel> {
public:
    FilterPanel(const wchar_t* name, CKxSimFilterChanger& device) : ControlPanel(name, device), m_device(device) {}
    void Fill();

protected:
    void OnDevice(const Change& change) override;
    bool OnUser(int id, int code, HWND from) override;

private:
    CKxSimFilterChanger& m_device;
};
