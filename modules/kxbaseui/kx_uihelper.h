// Placing windows, and what they leave to others.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// How a window is aligned; the numbers are part of the interface.
enum EKxAlign {
    eKxAlign_CenterOwner = 2,   // centred on the window's own owner or parent, or in the work area when it has none
    eKxAlign_CenterAnchor = 8,  // centred on the anchor given; without one, as eKxAlign_CenterOwner
};

// Places windows; static functions only.
class KXBASEUI_API CKxUIHelper {
public:
    // Moves `window`, without sizing or activating it. With `keepInside` it is then shifted so that its top-left corner
    // and as much else as possible lie inside `area` (screen coordinates), which is the work area of the monitor when
    // null and the parent's client area for a child window. An unknown mode moves nothing and is logged. Returns
    // whether the window was placed.
    static bool AlignWnd(HWND window, HWND anchor, int mode, bool keepInside, const RECT* area);
};

// Marks a window that others are not to paint: a container that paints its children in one go leaves it to its turn,
// and the colour scheme does not paint it instead of its own procedure. For a panel whose surface its children paint,
// and for a stock control that has been given another look. The mark goes with the window. A null window is ignored.
KXBASEUI_API void KX_MarkWindowToSkipPaint(HWND window);
KXBASEUI_API bool KX_IsWindowMarkedToSkipPaint(HWND window);
