// What KX_FollowColorScheme does with a list view.
#pragma once

#include <windows.h>

// Gives the list the scheme's colours, now and at every change; twice does no harm.
void FollowColorSchemeInList(HWND list);
