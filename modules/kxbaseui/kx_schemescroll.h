// What KX_FollowColorScheme does with a scroll bar that is a window of its own.
#pragma once

#include <windows.h>

namespace kx {

// On dark ground it is the platform's dark one or, where it has none, drawn here; twice does no harm.
void FollowColorSchemeInScrollBar(HWND bar);

}  // namespace kx
