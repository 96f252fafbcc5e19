// Window procedures put before those of other people's windows.
//
// The common controls' own subclassing keeps its list in a property of the window, which under Wine is asked for from
// another process with every message: a button painted in twice the time. Here the list is a map of this module's.
#pragma once

#include <windows.h>

namespace kx {

// Puts `procedure` before the window's own, once: a second time changes nothing. False when the window is none, or
// another thread's. The module stays loaded from then on.
bool Subclass(HWND window, WNDPROC procedure);

// What the window would have done without `procedure`. Forgets the window with its last message.
LRESULT CallRest(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace kx
