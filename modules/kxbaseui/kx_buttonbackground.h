// The body of a button that its control draws.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// How a button looks; the numbers are part of the interface and are added up.
enum EKxButtonLook : int {
    eKxButtonLook_On = 1,       // it is a toggle, and on
    eKxButtonLook_Pressed = 2,  // the user holds it down
    // What the platform's own buttons show besides; it makes no difference in a scheme of the library's own.
    eKxButtonLook_Hot = 4,  // the mouse is over it
    eKxButtonLook_Disabled = 8,
    eKxButtonLook_Default = 16,  // the Enter key of a dialog presses it
    eKxButtonLook_Focused = 32,  // without the line, which is drawn over the contents (KX_DrawButtonFocus)
};

// Draws the body and the frame of a button into `rect` (pixels), without text or picture: in the system's scheme the
// platform's own push button of that size, with or without visual styles, on the colour index `face` of what it stands
// on; in a scheme of the library's, what the platform's push buttons look like in it (KX_FollowColorScheme), where
// `face` is in high contrast the button's colour too. A toggle that is on has a thick frame inside, in the colour of
// selections. `flags` is a sum of EKxButtonLook; other bits are ignored. A null DC or an empty rectangle draws nothing.
KXBASEUI_API void KX_DrawButtonBackground(HDC dc, const RECT& rect, int flags, int face);

// Draws the body of a button that is its picture alone until the mouse comes to it: that of a button in the platform's
// tool bars, where the scheme is the system's and they have a visual style, and otherwise nothing.
KXBASEUI_API void KX_DrawFlatButtonBackground(HDC dc, const RECT& rect, int flags, int face);

// Draws the dotted line of the focus into such a button: in the system's scheme where the platform has it, otherwise so
// many pixels inside.
KXBASEUI_API void KX_DrawButtonFocus(HDC dc, const RECT& rect, int flags, long inset);

// The colour of a text on such a button.
KXBASEUI_API COLORREF KX_GetButtonTextColor(int flags);

// Draws the frame of a field that is edited, in the line around `rect`: the platform's where it has a visual style, or
// else one of the colour of selections, of shadows, or, disabled, a light one.
KXBASEUI_API void KX_DrawFieldFrame(HDC dc, const RECT& rect, bool enabled, bool focused);
