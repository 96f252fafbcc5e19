// The law of redrawing, for the laws and the storm: what is on the screen is what a full repaint draws.
#pragma once

#include <windows.h>

#include <string>

#include <bench/picture.h>

namespace kx::test {

// What is on the screen when all that is due has been painted, without the caret, and without what the platform's own
// controls get wrong (by name, in redraw.cpp).
Picture SeenPicture(HWND window);

// Where the screen, when all that is due has been painted, shows something else than after a full repaint over other
// colours; empty when it does not. Tells as well whether it is another picture than the one before.
std::string NotRedrawn(HWND parent, bool* isAnother = nullptr);

}  // namespace kx::test
