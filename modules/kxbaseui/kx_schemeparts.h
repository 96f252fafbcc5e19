// What KX_FollowColorScheme does with up-downs, track bars and tab controls, which have no colours to set, and with the
// edges of all that have one.
#pragma once

#include <windows.h>

namespace kx {

// Whether the window is one of these, and follows now.
bool FollowColorSchemeInPart(HWND window);

// The edge of a window, sunken or a line, becomes one line in the scheme's colours; its scroll bars are the platform's
// dark ones where it has them. Twice does no harm.
void FollowColorSchemeInEdge(HWND window);

}  // namespace kx
