// A light path, a TIRF mirror or the ports of a laser unit.
#pragma once

#include <functional>

#include <kxdevui/optics/devgui_switcher.h>

#include "../device_panel.h"

class SwitcherPanel : public DevicePanel {
public:
    // `ask` moves the device to a position, or turns a port over; false when the device refuses.
    SwitcherPanel(const wchar_t* name, IKxDevice& device, std::function<bool(long)> ask)
        : DevicePanel(name, device), m_device(device), m_ask(std::move(ask)), m_switch(*this) {}
    // `several` ports can be active at once.
    void Fill(bool several);
    CKxDevUI_Switcher& Panel() { return m_switch; }

protected:
    void OnDevice(const Change& change) override;
    void ShowCaption(const wchar_t* caption) override { m_switch.SetTitle(caption); }

private:
    class Asking : public CKxDevUI_Switcher {
    public:
        explicit Asking(SwitcherPanel& owner) : m_owner(owner) { m_firstX = 8; }

    protected:
        void OnPositionChangeRequest(long position, bool& flag) override;
        void OnSetPortSingleRequest(long port) override;

    private:
        SwitcherPanel& m_owner;
    };
    bool Ask(long position);

    IKxDevice& m_device;
    std::function<bool(long)> m_ask;
    Asking m_switch;
};
