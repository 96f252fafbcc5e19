// The private window messages and notification codes of the library, named once.
#pragma once

#include <windows.h>

#include <type_traits>

namespace kx::ui {

// Host to control: a device band has changed. wParam is the logical device id, lParam points to flags that say what to
// refresh; a container hands both to OnUpdateDeviceBand. Without flags, nothing is refreshed. Answered with 0.
inline constexpr UINT WM_KX_UPDATE_DEVICE_BAND = WM_USER + 0x100;  // 0x0500

// The flags for each control: bools in the order of its Update's parameters, whose header says what each brings; Update
// takes them as well. Those for containers are the host's own. Of CKxDevUI_Shutter:
struct ShutterBand {
    bool lock = false;   // a: tooltip and lock
    bool kind = false;   // b: the same, type and title
    bool state = false;  // c: images and state
};
// Of CKxDevUI_ModeShutter.
struct ModeShutterBand {
    // In this order.
    bool steps = false;
    bool aperture = false;
    bool state = false;
    bool mode = false;
};
// Of the controls of irises, neutral density and lamps.
struct LightBand {
    // In this order.
    bool structure = false;
    bool state = false;
};
// Of CKxDevUI_Nosepiece.
struct NosepieceBand {
    // In this order.
    bool structure = false;
    bool names = false;
    bool position = false;
    bool parameters = false;
    bool unused = false;
};
// Of CKxDevUI_FilterWheel.
struct FilterWheelBand {
    // In this order.
    bool structure = false;
    bool names = false;
    bool position = false;
};
// Of CKxDevUI_Switcher.
struct SwitcherBand {
    // In this order.
    bool structure = false;
    bool names = false;
    bool state = false;
};
// Of CKxDevUI_ZDrive.
struct ZDriveBand {
    // In this order.
    bool structure = false;
    bool state = false;
};
// Of CKxDevUI_ZStack, which refreshes everything.
struct ZStackBand {
    // In this order.
    bool refresh = false;
};

// Sends them: `SendDeviceBand(turret, device, NosepieceBand{.position = true})`.
template <class Flags>
requires std::is_trivially_copyable_v<Flags> LRESULT SendDeviceBand(HWND control, unsigned device, const Flags& flags) {
    static_assert(!std::is_pointer_v<Flags>, "the flags themselves");
    return SendMessageW(control, WM_KX_UPDATE_DEVICE_BAND, device, reinterpret_cast<LPARAM>(&flags));
}

// Host to container: a turn of the mouse wheel, with the parameters of WM_MOUSEWHEEL.
inline constexpr UINT WM_KX_MOUSE_WHEEL = WM_APP + 0x3ED;  // 0x83ED

// Layout manager to every window: the GUI zoom has changed.
inline constexpr UINT WM_KX_ZOOM_CHANGED = WM_APP + 0x3FA;  // 0x83FA

// To a control's window: what was told of its light (wParam 0) or its values (1) may be another (devgui_readings.h).
// One that shows such a thing answers with the number below.
inline constexpr UINT WM_KX_READINGS = WM_APP + 0x3FB;  // 0x83FB
inline constexpr LRESULT kShowsReadings = 0x3FB;

// The numbers after these are taken: 0x83FC and 0x83FE by fields (ui_field.h), 0x83FD by screen readers
// (devgui_access.h).

// Notification codes of the edit boxes beside the platform's EN_...: the Enter key, and a character, whose code is the
// lParam.
inline constexpr int kEditEnter = 0x0401;
inline constexpr int kEditChar = 0x0102;

// Extra window words of a control's window: the tag tells it from plain windows, the object is its CKxDevUI_Base*.
inline constexpr int kWindowExtraBytes = 16;
inline constexpr int kTagWord = 0;
inline constexpr int kObjectWord = 8;
inline constexpr LONG_PTR kWindowTag = 5015;

}  // namespace kx::ui
