// Whether the platform's controls have visual styles.
//
// While the colour scheme is the system's, what the library draws looks as the platform's own controls beside it do,
// with and without visual styles. Styles belong to windows, not to processes: a control gets one by the manifest that
// is active when it is made, that of the program or one which a plugin has activated.
#pragma once

#include <kxbaseui/kxbaseui_api.h>

// Whether a control of the platform's, made as the library's first window was, has a visual style. Asked of such a
// control and kept; the first call decides which activation context counts, and the library makes it with its first
// window.
KXBASEUI_API bool KX_HasVisualStyles();

// Forgets the answer and everything drawn by it. The library's windows do so on WM_THEMECHANGED; a host has to when it
// draws with this module and has none of them.
KXBASEUI_API void KX_VisualStylesChanged();
