// The library's free helpers: places of windows, caption labels, nearest values, numbers from edit windows.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>

// The window's rectangle, or its left and top, in its parent's client coordinates (screen coordinates for a top-level
// window), in pixels on the screen. Without a window all are 0.
KXDEVUI_API RECT RectInParent(HWND window);
KXDEVUI_API long GetWndX(HWND window);
KXDEVUI_API long GetWndY(HWND window);

// Sets a panel's caption labels in bold type. A template marks a caption by giving a "Static" the extended style
// WS_EX_TRANSPARENT: such a child with a text of fewer than 254 characters gets the bold GUI font and, in place, the
// size of its text plus 5 pixels in width. Any other sunken "Static" less than 4 pixels high is a separator line and
// gets WS_CLIPSIBLINGS. Only direct children count.
KXDEVUI_API void BoldifyCaptions(HWND window);

// The index of the value nearest to `value`; of two equally near the later one. -1 for a null pointer or no values; the
// first for a value that is not a number.
KXDEVUI_API long FindNearestValue(double value, const double* values, long count);

// The number in an edit window, read as KX_StringToDouble reads it, or, for the integer, as a whole number in the range
// of int with blanks around it. False leaves `value` as it is: no window, no number, something else beside the number.
KXDEVUI_API bool GetWndDouble(HWND edit, double& value);
KXDEVUI_API bool GetWndInt(HWND edit, int& value);
