// For authors of controls: the object by which a window answers clients of Microsoft Active Accessibility
// (devgui_access.h). A control fills its record at WM_KX_DESCRIBE; all else is here.
#pragma once

#include <kxdevui/framework/devgui_access.h>
#include <kxdevui/framework/ui_window.h>

#include <oleacc.h>

namespace kx::ui {

// The answer to WM_KX_DESCRIBE: `fill` is called with the record.
template <class Fill>
LRESULT Describe(const Message& message, Fill&& fill) {
    if (message.lParam == 0) return FALSE;
    fill(*reinterpret_cast<KxAccess*>(message.lParam));
    return TRUE;
}

// The window is gone: clients that hold its object get CO_E_OBJNOTCONNECTED from now on.
void AccessLost(HWND window) noexcept;

}  // namespace kx::ui
