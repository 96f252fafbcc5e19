#include "input.h"

#include <kxsystem/kx_log.h>

namespace {

// Refused while another program of higher rights has the input, or a locked screen.
void Send(INPUT& input) {
    if (SendInput(1, &input, sizeof input) != 1)
        KX_LOG(L"host", L"an input could not be sent - lasterror = %u", GetLastError());
}

}  // namespace

void SendMouse(POINT screen, DWORD flags, int data) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    // Absolute positions count from 0 to 65535 over all monitors; the half brings the pixel's middle.
    const auto absolute = [](LONG at, int first, int length) {
        return MulDiv((at - GetSystemMetrics(first)) * 2 + 1, 32768, GetSystemMetrics(length));
    };
    input.mi.dx = absolute(screen.x, SM_XVIRTUALSCREEN, SM_CXVIRTUALSCREEN);
    input.mi.dy = absolute(screen.y, SM_YVIRTUALSCREEN, SM_CYVIRTUALSCREEN);
    input.mi.mouseData = static_cast<DWORD>(data);
    // Every event brings its place along: the display may report an earlier one between a move and a press.
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_VIRTUALDESK | MOUSEEVENTF_MOVE | flags;
    Send(input);
}

void SendKey(WORD key, WORD character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    Send(input);
}
