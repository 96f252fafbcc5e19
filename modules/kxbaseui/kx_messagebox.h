// Message boxes.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Shows a message box and returns the button that closed it (IDOK, IDYES, ...). `style` is that of the platform's box
// (MB_ICONERROR, MB_YESNO, ...). `timeout` is handed to the handler; the platform's box waits for the user, whatever it
// says, and -1 is the value for "no time-out". Both names do the same.
KXBASEUI_API int KX_MessageBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout);
KXBASEUI_API int KX_MessageBox_(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout);

// Puts the host's own box in the place of the platform's; what the handler returns is the answer. Texts are never null
// there. A handler that throws answers IDCANCEL. Null goes back to the platform's box.
using KX_MessageBoxHandler = int (*)(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style, int timeout,
                                     void* context);
KXBASEUI_API void KX_SetMessageBoxHandler(KX_MessageBoxHandler handler, void* context);
