// The platform's own controls in a colour scheme.
//
// Buttons, check boxes, drop-down lists, menus and dialogs paint with the system's colours, whatever scheme a host has
// chosen (kx_colors.h). This teaches those of a window to follow. While the scheme is the system's, they paint as they
// always do.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Makes `window` and all windows below it follow the scheme: dialogs, push buttons, check boxes, radio buttons, group
// boxes, static texts, lines and rectangles, edits, list boxes, combo boxes with their lists, list views, up-downs,
// track bars, tab controls, tooltips, also those that such controls have themselves; their edges and, where the
// platform has dark ones, their scroll bars.
//
// Of a window with a title the title and the menus follow as well: for a host's main window one call is enough, when it
// is made; menus set or filled later are found as they show. Their items are drawn in the font and the size of the
// zoom, and keep text, command, mnemonic and state. An item that the host draws itself is left to it.
//
// What the platform opens by itself and tells nobody of beforehand stays its own: its message box, for which
// KX_SetMessageBoxHandler (kx_messagebox.h) takes another, and the menu of an edit.
//
// Owner-drawn buttons, windows marked with KX_MarkWindowToSkipPaint and windows of other classes are left to paint
// themselves. To be called again for windows added later; twice does no harm. A null window is ignored. What the
// platform cannot do (dark titles, dark scroll bars) is told once in the log and stays as it was.
KXBASEUI_API void KX_FollowColorScheme(HWND window);
