#include <kxbaseui/kx_cues.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace {

// Wine's windows answer that nothing is hidden, as where the user wants it so.
bool Hides(HWND window, int mark) { return (SendMessageW(window, WM_QUERYUISTATE, 0, 0) & mark) != 0; }

}  // namespace

bool KX_ShowsFocus(HWND window) { return !Hides(window, UISF_HIDEFOCUS); }

bool KX_ShowsMnemonics(HWND window) { return !Hides(window, UISF_HIDEACCEL); }

void KX_DrawFocusOutline(HDC dc, const RECT& rect, int ground) {
    const int color = ground == COLOR_HIGHLIGHT ? COLOR_HIGHLIGHTTEXT
                      : ground == COLOR_WINDOW  ? COLOR_WINDOWTEXT
                                                : COLOR_BTNTEXT;
    RECT line = rect;
    for (long i = std::max(2L, CKxGUILayoutManager::Zoomed(2)); i > 0 && !IsRectEmpty(&line); --i) {
        FrameRect(dc, &line, KX_GetSysColorBrush(color));
        InflateRect(&line, -1, -1);
    }
}

void KX_ShowFocusFromNowOn(HWND window) {
    if (!KX_ShowsFocus(window)) SendMessageW(window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
}
