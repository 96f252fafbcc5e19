// Internal to kxbaseui: the windows of the calling thread.
#pragma once

#include <windows.h>

#include <vector>

namespace kx {

// All windows of the calling thread, each before its children. A snapshot: by the time one is used, it may be gone.
// Empty when memory runs out.
std::vector<HWND> ThreadWindows() noexcept;

// In the same way, all windows below one. Under Wine walking from window to window costs a round trip for each; this
// costs one for all.
std::vector<HWND> WindowsBelow(HWND window) noexcept;

}  // namespace kx
