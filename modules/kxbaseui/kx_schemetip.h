// What KX_FollowColorScheme does with a tooltip window.
#pragma once

#include <windows.h>

namespace kx {

// Its colours are the scheme's, now and at every change; twice does no harm.
void FollowColorSchemeInToolTip(HWND tip);

}  // namespace kx
