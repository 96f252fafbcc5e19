// What KX_FollowColorScheme does with a top-level window.
#pragma once

#include <windows.h>

namespace kx {

// Its title, its menus and what belongs to neither in the scheme, now and at every change; twice does no harm.
void FollowColorSchemeInFrame(HWND window);

}  // namespace kx
