// A light path, a TIRF mirror or the ports of a laser unit.
#pragma once

#include <functional>

#include <kxdevui/optics/devgui_switcher.h>

#include "../control_panel.h"

class AskingSwitcher : public Asks<CKxDevUI_Switcher, IKxDevice> {
public:
    static constexpr ControlLayout kLayout{.control = {4, 4}, .size = {0, 44}};

    AskingSwitcher(DevicePanel& panel, IKxDevice& device) : Asks(panel, device) { m_firstX = 8; }
    void Show(const DevicePanel::Change& change);

    // Moves the device to a position, or turns a port over; false when the device refuses.
    std::function<bool(long)> move;

protected:
    void OnPositionChangeRequest(long position, bool& flag) override;
    void OnSetPortSingleRequest(long port) override;

private:
    bool Ask(long position);
};

class SwitcherPanel : public ControlPanel<AskingSwitcher> {
public:
    SwitcherPanel(const wchar_t* name, IKxDevice& device, std::function<bool(long)> move) : ControlPanel(name, device) {
        m_control.move = std::move(move);
    }
    // `several` ports can be active at once.
    void Fill(bool several) {
        m_control.SetBoolMoreThanOnePortCanBeActive(several);
        ControlPanel::Fill();
    }
};
