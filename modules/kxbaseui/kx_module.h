// Modules that must not go.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Keeps the module that holds a window procedure loaded until the process ends. Classes and windows keep the address of
// their procedure: one whose module was unloaded, and perhaps loaded again elsewhere, would end the process. So the
// library stays, once it has registered a window class or stands before the procedure of a host's window, and so does
// a host's plug-in with a control of its own; FreeLibrary takes its count back and nothing else.
KXBASEUI_API void KX_KeepLoaded(WNDPROC procedure) noexcept;
