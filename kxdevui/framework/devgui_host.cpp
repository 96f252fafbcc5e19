#include <kxdevui/framework/devgui_host.h>

namespace {

bool PressesButton(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
    const LRESULT code = SendMessageW(message.hwnd, WM_GETDLGCODE, VK_RETURN, 0);
    if (!(code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) return false;
    SendMessageW(message.hwnd, BM_CLICK, 0, 0);
    return true;
}

}  // namespace

bool KX_IsPanelMessage(HWND window, MSG* message) {
    if (!message || !IsWindow(window)) return false;
    return PressesButton(*message) || IsDialogMessageW(window, message) != FALSE;
}
