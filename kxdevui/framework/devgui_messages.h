// The private window messages and notification codes of the library, named once.
#pragma once

#include <windows.h>

namespace kx::ui {

// Host to control: a device band has changed. wParam is the logical device id, lParam points to flags that say what to
// refresh; a container hands both to OnUpdateDeviceBand.
inline constexpr UINT WM_KX_UPDATE_DEVICE_BAND = WM_USER + 0x100;  // 0x0500

// Host to container: a turn of the mouse wheel, with the parameters of WM_MOUSEWHEEL.
inline constexpr UINT WM_KX_MOUSE_WHEEL = WM_APP + 0x3ED;  // 0x83ED

// Layout manager to every window: the GUI zoom has changed.
inline constexpr UINT WM_KX_ZOOM_CHANGED = WM_APP + 0x3FA;  // 0x83FA

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
