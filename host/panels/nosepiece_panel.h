// The nosepiece: an objective is asked for by a click, and shown when the turret has arrived.
#pragma once

#include <kxdevui/optics/devgui_nosepiece.h>

#include "../device_panel.h"

class NosepiecePanel : public DevicePanel {
public:
    explicit NosepiecePanel(CKxSimNosepiece& device)
        : DevicePanel(L"Nosepiece", device), m_device(device), m_turret(*this) {}
    void Fill();
    CKxDevUI_Nosepiece& Panel() { return m_turret; }

protected:
    void OnDevice(const Change& change) override;
    void ShowCaption(const wchar_t* caption) override { m_turret.SetTitle(caption); }

private:
    class Asking : public CKxDevUI_Nosepiece {
    public:
        explicit Asking(NosepiecePanel& owner) : m_owner(owner) {}

    protected:
        void OnPositionChangeRequest(long position, bool& handled) override;
        void OnSetupRequest() override;

    private:
        NosepiecePanel& m_owner;
    };

    CKxSimNosepiece& m_device;
    Asking m_turret;
};
