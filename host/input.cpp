#include "input.h"

void SendMouse(POINT screen, DWORD flags, int data) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    // Absolute positions count from 0 to 65535 over the screen; the half brings the pixel's middle.
    input.mi.dx = MulDiv(screen.x * 2 + 1, 32768, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = MulDiv(screen.y * 2 + 1, 32768, GetSystemMetrics(SM_CYSCREEN));
    input.mi.mouseData = static_cast<DWORD>(data);
    // Every event brings its place along: the display may report an earlier one between a move and a press.
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | flags;
    SendInput(1, &input, sizeof input);
}

void SendKey(WORD key, WORD character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}
