// The parts of the platform's controls, as a visual style has them, for what the library draws in the system's scheme.
#pragma once

#include <windows.h>

#include <optional>

namespace kx::theme {

// A part in a state, both as vsstyle.h numbers them, of one of the platform's window classes.
enum class Owner { Button, Edit, Header, Toolbar };
struct Part {
    Owner owner;
    int part;
    int state;
};

// Whether the scheme is the system's and its controls have a visual style. What draws a part says by itself when there
// is none: this is for whoever would do something else besides.
bool IsUsed();

// Dots per inch of the monitor that the host's window is on, at which parts are drawn; 0 while no window is named
// (kx_guiscale.h), and they are drawn at the system's.
UINT FollowedDpi();

// Draws the part, standing on `ground`. False, and nothing is drawn, when the scheme is another, styles are off, or the
// style does not have the part. Parts are drawn once, and kept as pictures: a push button drawn anew takes twenty times
// as long as a classic one. `frameOnly` leaves out what the part's contents would stand on.
bool Draw(HDC dc, const Part& part, const RECT& rect, COLORREF ground, bool frameOnly = false);

// What the part leaves to its contents; empty where Draw would be false.
std::optional<RECT> ContentOf(const Part& part, const RECT& rect);
std::optional<COLORREF> TextColorOf(const Part& part);

}  // namespace kx::theme
