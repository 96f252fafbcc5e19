// The body of a button that its control draws.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// How a button looks; the numbers are part of the interface and are added up.
enum EKxButtonLook : int {
    eKxButtonLook_On = 1,       // it is a toggle, and on: a thick frame in the colour of selections
    eKxButtonLook_Pressed = 2,  // the user holds it down
};

// Draws the body and the frame of a button into `rect` (pixels), without text or picture, in the scheme's colours: what
// the platform's own push buttons look like in a scheme (KX_FollowColorScheme). `face` is the colour index of what the
// button stands on, which in the high-contrast scheme is its own colour too. `flags` is a sum of EKxButtonLook; other
// bits are ignored. A null DC or an empty rectangle draws nothing.
KXBASEUI_API void KX_DrawButtonBackground(HDC dc, const RECT& rect, int flags, int face);
