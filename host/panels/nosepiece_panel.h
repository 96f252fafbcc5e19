// The nosepiece: an objective is asked for by a click, and shown when the turret has arrived.
#pragma once

#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/setup/devgui_setup.h>

#include "../control_panel.h"

// Whether a drive stands so high that an objective could touch the specimen: not in the lowest third of its range,
// which is at the other end where greater positions are farther away.
bool IsHigh(double position, double minimum, double maximum, bool greaterIsFarther);

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
    // The cards have the wavelength of the filter that is in, and warn while the stage is high.
    NosepiecePanel(CKxSimNosepiece& device, const IKxDeviceFilterChanger* filters, std::function<bool()> isStageHigh);

protected:
    void OnDevice(const Change& change) override;

private:
    CKxSimNosepiece& m_device;
};
