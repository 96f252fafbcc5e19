// Internal to kxbaseui: what those who follow the colour scheme ask of it.
#pragma once

namespace kx {

// Whether the scheme is one of our own that is light on dark.
bool IsOnDarkGround();

// Whether KX_SetColorScheme is telling all windows just now.
bool IsTellingOfScheme();

// Takes the scheme that the system asks for, where that is to be followed (KX_FollowSystemColorScheme).
void FollowSystemAgain();

}  // namespace kx
