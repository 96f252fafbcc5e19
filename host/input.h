// Input as the user's hands would give it, for runs without one.
#pragma once

#include <windows.h>

// The pointer goes there, on the screen, and does what MOUSEEVENTF_... say; `data` is the turn of a wheel.
void SendMouse(POINT screen, DWORD flags, int data = 0);
// A key goes down or, with KEYEVENTF_KEYUP, up; with KEYEVENTF_UNICODE it is the character that counts.
void SendKey(WORD key, WORD character, DWORD flags);
