// The scale of the monitor that the host's window is on, as a factor of the GUI zoom.
//
// A program that is aware of the scale of each monitor is given pixels of the screen and scales by itself. One call
// does it here: every place, font and image is asked for at the GUI zoom, of which the scale becomes a factor.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Names the host's window: from now on the scale is that of its monitor, times the system's text scale. One scale at a
// time holds for a process; until a window is named, and again with null, it is 1, and dialogs have the size that the
// platform gives them. Every window of the thread is told (CKxGUILayoutManager::ZoomChangedMessage); the window's own
// size is the host's business. When the window is destroyed, the scale stays as it is.
KXBASEUI_API void KX_FollowScaleOf(HWND window);

// To be called at the head of the window's procedure with each of its messages. WM_DPICHANGED changes the scale, moves
// the window to the rectangle that the platform offers, or leaves it where that is null, and gives true: the message
// has been dealt with. WM_SETTINGCHANGE reads the text scale anew. False for all others, and for another window. A
// scale that is refused changes nothing.
KXBASEUI_API bool KX_RelayScale(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Brings a dialog just made from a template, which the platform has made for its own scale, and the windows in it to
// the pixels that their units have at 96 dpi: unzoomed, as everything is laid out. The platform scales it no more when
// the monitor changes. The containers do it for their own; nothing happens while no window is named.
KXBASEUI_API void KX_UnscaleDialog(HWND dialog);
