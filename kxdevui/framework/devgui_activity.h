// The life of a request, as all controls of devices show it: from the click that asks, over the movement, to the rest.
//
// A control reads it from its device with every Update (GetDeviceState, GetTargetPosition, GetStateReason of
// kx_device.h), never from the time that has passed. A host whose devices cannot tell says it by a call:
//
//     KX_TellActivity(turret, {EKxActivity::Moving, 2});
//     KX_TellActivity(turret, {EKxActivity::Failed, -1, L"No answer from the motor"});
//     KX_TellActivity(turret, KxActivity{});                         // at rest again
//
// The last word counts: what was told stays until the next Update, or until something else is told. What a control
// holds, and what its getters answer, is not changed by it.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

class IKxDevice;

// Where a request is in its life.
enum class EKxActivity {
    AtRest,   // drawn as if nobody had told anything
    Asked,    // asked for, and no answer yet: the old place is hollow
    Moving,   // the same, and a turning ring around the target
    Unknown,  // stands somewhere: nothing is marked, and a question mark stands in the caption
    Failed,   // the same with a red edge and an exclamation mark; tooltips tell the reason
    Refused,  // passes by itself: the answer beside the control tells why for some seconds
    Locked,   // shown but not to be operated: a lock in the caption
};

// The same with what belongs to it.
struct KxActivity {
    // What the control knows of its last request.
    EKxActivity activity = EKxActivity::AtRest;
    // Where it is going, counted as the control counts; -1, and one that the control has not, when nobody knows.
    long target = -1;
    // Why it has failed, was refused or is locked; empty leaves a plain text in its place.
    CKxStringW reason;

    // The same state, target and reason.
    bool operator==(const KxActivity&) const = default;
};

// Tells a control's window. Refused ends what was asked and leaves a movement as it is. False, and logged, for a window
// that is no control of a device.
KXDEVUI_API bool KX_TellActivity(HWND control, const KxActivity& activity);

// The same as a device tells of itself, for a control that does not ask it: a colour slider, the Z stack panel. False
// as well, and nothing is changed, for a device that throws.
KXDEVUI_API bool KX_TellActivity(HWND control, const IKxDevice& device);

// What a control shows; Refused while the answer stands beside it. At rest for every other window.
KXDEVUI_API KxActivity KX_GetActivity(HWND control);

// To be called by a host while it is asked, in the callback of a control: why it refuses. Where the callback has no
// flag that refuses (nosepiece, switcher) the reason alone does, but the selection moves as it would. False, and
// logged, when nobody is being asked.
KXDEVUI_API bool KX_SayWhyRefused(const wchar_t* reason);
