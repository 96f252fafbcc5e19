// What a host's main window and message loop hand on to the panels.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>

// For the message loop, before TranslateMessage: makes Tab and the arrow keys move between the controls of the panels
// in `window`, and Enter press the button that has the focus, whatever panel it is in. True when the message has been
// used. IsDialogMessage alone would name that button to `window`, which is not its parent. False without message or
// window.
KXDEVUI_API bool KX_IsPanelMessage(HWND window, MSG* message);

// Collects what finer wheels and touchpads send in small parts to whole notches (WHEEL_DELTA, 120), because a step of a
// panel is a request to a device whatever the delta. The rest is forgotten when the direction changes, over another
// window, and after half a second.
class KXDEVUI_API KxWheelNotches {
public:
    // The notches that are complete with this delta over that window at that time (milliseconds, as GetMessageTime);
    // their sign is the direction, 0 says that there is none yet.
    int Take(HWND over, int delta, DWORD time) noexcept;

private:
    HWND m_over = nullptr;
    DWORD m_time = 0;
    int m_rest = 0;
};

// The same for a message WM_MOUSEWHEEL that is being handled, in one count for the whole process: there is one wheel.
KXDEVUI_API int KX_TakeWheelNotches(HWND over, WPARAM wParam);

// For WM_MOUSEWHEEL: hands the whole notches that have been collected on to the panel under the pointer, as message
// 0x83ED. True when the panel has used them, and while a notch is not complete; otherwise `wParam` tells the notches
// for whoever else wants them. False without a panel, and nothing is collected.
KXDEVUI_API bool KX_RelayWheel(HWND panel, WPARAM& wParam, LPARAM lParam);
