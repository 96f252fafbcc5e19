// Pictures of windows.
#pragma once

#include <windows.h>

#include <string>

// Writes what the screen shows where `window` and the active window are, frames included, as a PNG file. False when the
// file cannot be written.
bool SavePicture(HWND window, const std::wstring& path);
