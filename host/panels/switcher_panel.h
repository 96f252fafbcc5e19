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

    // What a click on a position asks for.
    std::function<Asked(long)> wanted;

protected:
    void OnPositionChangeRequest(long position, bool& flag) override;
    void OnSetPortSingleRequest(long port) override;

private:
    bool Ask(long position);
};

class SwitcherPanel : public ControlPanel<AskingSwitcher> {
public:
    SwitcherPanel(const wchar_t* name, IKxDevice& device, std::function<Asked(long)> wanted)
        : ControlPanel(name, device) {
        m_control.wanted = std::move(wanted);
    }
    // `several` ports can be active at once.
    void Fill(bool several) {
        m_control.SetBoolMoreThanOnePortCanBeActive(several);
        ControlPanel::Fill();
    }
};
