// What KX_FollowColorScheme does with a list view.
#pragma once

#include <windows.h>

// Gives the list the scheme's colours, now and at every change, and check boxes of the scheme's and the zoom's; twice
// does no harm.
void FollowColorSchemeInList(HWND list);

// A check box in the scheme's colours.
void DrawCheckBox(HDC dc, const RECT& box, bool checked, bool enabled);

// The mark of one that is checked, alone.
void DrawTick(HDC dc, const RECT& box, int color);
