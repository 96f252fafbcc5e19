#include <kxbaseui/kx_cues.h>

namespace {

// Wine's windows answer that nothing is hidden, as where the user wants it so.
bool Hides(HWND window, int mark) { return (SendMessageW(window, WM_QUERYUISTATE, 0, 0) & mark) != 0; }

}  // namespace

bool KX_ShowsFocus(HWND window) { return !Hides(window, UISF_HIDEFOCUS); }

bool KX_ShowsMnemonics(HWND window) { return !Hides(window, UISF_HIDEACCEL); }

void KX_ShowFocusFromNowOn(HWND window) {
    if (!KX_ShowsFocus(window)) SendMessageW(window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
}
