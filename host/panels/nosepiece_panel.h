// The nosepiece: an objective is asked for by a click, and shown when the turret has arrived.
#pragma once

#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/setup/devgui_setup.h>

#include "../control_panel.h"

class AskingNosepiece : public Asks<CKxDevUI_Nosepiece, CKxSimNosepiece> {
public:
    static constexpr ControlLayout kLayout{.control = {4, 4}};

    using Asks::Asks;
    void Prepare();
    void Show(const DevicePanel::Change& change);

protected:
    void OnPositionChangeRequest(long position, bool& handled) override;
    void OnSetupRequest() override;

private:
    void Accept(const SKxObjectiveSetup& setup, SKxSetupRefusal& refusal);
};

class NosepiecePanel : public ControlPanel<AskingNosepiece> {
public:
    explicit NosepiecePanel(CKxSimNosepiece& device) : ControlPanel(L"Nosepiece", device), m_device(device) {}

protected:
    void OnDevice(const Change& change) override;

private:
    CKxSimNosepiece& m_device;
};
