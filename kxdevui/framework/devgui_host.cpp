#include <kxdevui/framework/devgui_host.h>

#include <algorithm>
#include <climits>

#include <kxdevui/framework/devgui_messages.h>

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

int KxWheelNotches::Take(HWND over, int delta, DWORD time) noexcept {
    constexpr DWORD restLasts = 500;
    if (over != m_over || time - m_time > restLasts || (delta < 0) != (m_rest < 0)) m_rest = 0;
    m_over = over;
    m_time = time;
    m_rest += delta;
    // No more than the message can tell on.
    const int notches = std::clamp(m_rest / WHEEL_DELTA, -SHRT_MAX / WHEEL_DELTA, SHRT_MAX / WHEEL_DELTA);
    m_rest -= notches * WHEEL_DELTA;
    return notches;
}

int KX_TakeWheelNotches(HWND over, WPARAM wParam) {
    static KxWheelNotches s_notches;
    return s_notches.Take(over, GET_WHEEL_DELTA_WPARAM(wParam), static_cast<DWORD>(GetMessageTime()));
}

bool KX_RelayWheel(HWND panel, WPARAM& wParam, LPARAM lParam) {
    if (!IsWindow(panel)) return false;
    const int notches = KX_TakeWheelNotches(panel, wParam);
    if (notches == 0) return true;
    wParam = MAKEWPARAM(LOWORD(wParam), notches * WHEEL_DELTA);
    return SendMessageW(panel, kx::ui::WM_KX_MOUSE_WHEEL, wParam, lParam) != 0;
}
