// The marks that are there for the keyboard: the frame around what has the focus, the line under a letter.
//
// Unless the user wants to see them always, the system asks for neither until a key is used. Windows know what is asked
// of them (WM_QUERYUISTATE) and are told when that changes (WM_UPDATEUISTATE); dialogs begin as the last input says,
// and a host's main window does when it sends itself WM_CHANGEUISTATE with UIS_INITIALIZE. Who draws such a mark asks
// here, and draws anew when told.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// Whether the window is to show that it has the focus, or where letters are underlined; true for what is no window.
KXBASEUI_API bool KX_ShowsFocus(HWND window);
KXBASEUI_API bool KX_ShowsMnemonics(HWND window);

// The one outline of what has the focus, of two unzoomed pixels at the rectangle's inner edge: in the colour that texts
// have on `ground`, a system colour of what is around it, and so with the contrast that texts have there.
KXBASEUI_API void KX_DrawFocusOutline(HDC dc, const RECT& rect, int ground = COLOR_BTNFACE);

// The user has moved about with a key: from now on the focus is shown, in all that is in the same top-level window. The
// dialog manager says so for the keys it uses, a control for those that it takes. The windows around are told, and may
// end the control.
KXBASEUI_API void KX_ShowFocusFromNowOn(HWND window);
