// A shutter as panels read it: from its device, or by its number from the device manager, by the same names.
#pragma once

#include <kxdevices/kx_dmapi.h>

namespace kx::shutter {

// The shutter with this number as the device manager tells of it.
struct Managed {
    unsigned id;
    CKxStringW GetGUIText(int context) const { return DMApi::Shutter_GetGUIText(id, context); }
    bool GetCapability(int capability) const { return DMApi::LogDev_GetCapability(id, capability); }
    EKxShutterType GetShutterType() const { return DMApi::Shutter_GetShutterType(id); }
    bool GetState() const { return DMApi::Shutter_GetState(id); }
    long GetApertureSteps() const { return DMApi::Shutter_GetApertureSteps(id); }
    double GetStepAperture(long step) const { return DMApi::Shutter_GetStepAperture(id, step); }
    double GetAperture() const { return DMApi::Shutter_GetAperture(id); }
    EKxShutterMode GetMode() const { return DMApi::Shutter_GetMode(id); }
    bool GetModeAvailable(EKxShutterMode mode) const { return DMApi::Shutter_GetModeAvailable(id, mode); }
};

}  // namespace kx::shutter
