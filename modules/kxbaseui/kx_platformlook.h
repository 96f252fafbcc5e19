// What of a window's look belongs to the platform: the theme of a control and the title of a window. The functions
// that change it are not there in every version and are looked up when they are needed. Where one is missing, one line
// in the log says so, and the window looks as it did.
#pragma once

#include <windows.h>

namespace kx {

// A function of one of the system's libraries, looked up now; null where there is none.
FARPROC SystemFunction(const wchar_t* library, const char* name);

// Which theme a control is drawn with.
enum class ControlTheme {
    Own,   // its own, as at first
    None,  // none: drawn as before there were themes, in colours that can be set
    Dark,  // its own on dark ground, where the platform has that: the scroll bars
};

void SetControlTheme(HWND control, ControlTheme theme);

// Whether the platform has scroll bars on dark ground; under Wine it has not.
bool HasDarkScrollBars();

// The title and the frame of a top-level window, on dark ground or not.
void SetDarkTitle(HWND window, bool dark);

}  // namespace kx
