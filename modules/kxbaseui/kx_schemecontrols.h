// The platform's own controls in a colour scheme.
//
// Buttons, check boxes, drop-down lists and dialogs paint with the system's colours, whatever scheme a host has chosen
// (kx_colors.h). This teaches those of a window to follow. While the scheme is the system's, they paint as they always
// do.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Makes `window` and all windows below it follow the scheme: dialogs, push buttons, check boxes, radio buttons, group
// boxes, static texts, edits, lists, drop-down lists, list views. Owner-drawn buttons, windows marked with
// KX_MarkWindowToSkipPaint and windows of other classes are left to paint themselves. To be called again for windows
// added later; twice does no harm. A null window is ignored.
KXBASEUI_API void KX_FollowColorScheme(HWND window);
