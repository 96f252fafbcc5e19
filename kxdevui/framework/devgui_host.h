// What a host's main window and message loop hand on to the panels.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>

// For the message loop, before TranslateMessage: makes Tab and the arrow keys move between the controls of the panels
// in `window`, and Enter press the button that has the focus, whatever panel it is in. True when the message has been
// used. IsDialogMessage alone would name that button to `window`, which is not its parent. False without message or
// window.
KXDEVUI_API bool KX_IsPanelMessage(HWND window, MSG* message);
