#include <kxbaseui/kx_buttonbackground.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>

void KX_DrawButtonBackground(HDC dc, const RECT& rect, int flags, int face) {
    if (!dc || IsRectEmpty(&rect)) return;
    const bool pressed = (flags & eKxButtonLook_Pressed) != 0, on = (flags & eKxButtonLook_On) != 0;
    // On black, a face in the highlight's white would need black letters.
    const bool onBlack = KX_GetColorScheme() == eKxColorScheme_HighContrast;
    FillRect(dc, &rect, KX_GetSysColorBrush(onBlack ? face : pressed ? COLOR_3DLIGHT : COLOR_BTNHIGHLIGHT));
    FrameRect(dc, &rect, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    RECT inner = rect;
    for (long i = on ? CKxGUILayoutManager::Zoomed(2) : pressed && onBlack ? 1 : 0; i > 0; --i) {
        InflateRect(&inner, -1, -1);
        if (IsRectEmpty(&inner)) return;
        FrameRect(dc, &inner, KX_GetSysColorBrush(onBlack ? COLOR_BTNTEXT : COLOR_HIGHLIGHT));
    }
}
