// What a device reports beside its state (devgui_activity.h): whether its light is on, and at which value it stands.
//
// A slider shows what was asked for, by its thumb. A host that names it a light, or tells what was measured, has the
// rest drawn beside that:
//
//     KX_TellLight(laser, EKxLight::On);            // lit up to the thumb, which wears a lit badge
//     KX_TellLight(laser, EKxLight::Off);           // grey, with a hollow badge
//     KX_TellMeasured(laser, {.measured = 29.4});   // a thin mark, where the thumb does not stand
//     KX_TellMeasured(panel, {.asked = 4012});      // the Z stack panel, whose record tells where Z stands
//
// Lights are sliders (CKxDevUI_HPot), colour sliders with a gradient or a line, and the slider of a mode shutter, which
// then follows the shutter's state by itself. All of them and the Z stack panel show values. What was told stays until
// something else is told, and goes with the control's window. Untold, a control looks as ever; what it holds, and what
// its getters answer, is not changed.
#pragma once

#include <windows.h>

#include <optional>

#include <kxdevui/framework/kxdevui_api.h>

class IKxDevice;

// What a slider is for.
enum class EKxLight {
    None,  // no light
    Off,   // one that is dark, whatever power it is set to
    On,    // one that shines
};

// Names a control a light that is on or off. False, and logged, for a window that has no such slider: a range has not.
// A rainbow is no lamp and looks as ever; its slider remembers.
KXDEVUI_API bool KX_TellLight(HWND control, EKxLight light);

// The same as a device tells of itself: a laser output is on while it uses a port, a shutter while it is open. False as
// well, and nothing is changed, for any other device, and for one that throws.
KXDEVUI_API bool KX_TellLight(HWND control, const IKxDevice& device);

// What it was named last; None for any other window.
KXDEVUI_API EKxLight KX_GetLight(HWND control);

// Two values of a device, on the scale of the control that shows them; empty, as all that is no finite number, is not
// known. A slider draws `measured` where it is to be told from its thumb, the Z stack panel `asked` where it is to be
// told from where Z stands; the other one is theirs to know.
struct KxMeasured {
    // Where the device is to go; where it stands.
    std::optional<double> asked = std::nullopt;
    std::optional<double> measured = std::nullopt;
    // Both the same.
    bool operator==(const KxMeasured&) const = default;
};

// Tells a control what is known now. False, and logged, for a window that shows none.
KXDEVUI_API bool KX_TellMeasured(HWND control, const KxMeasured& values);

// The same as a device tells of itself: a Z drive of its target and where it stands, a laser output of its power. False
// as well, and nothing is changed, for any other device, and for one that throws.
KXDEVUI_API bool KX_TellMeasured(HWND control, const IKxDevice& device);

// What was told last; nothing for any other window.
KXDEVUI_API KxMeasured KX_GetMeasured(HWND control);
