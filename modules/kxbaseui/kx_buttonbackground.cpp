#include <kxbaseui/kx_buttonbackground.h>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_layoutmanager.h>

#include <vsstyle.h>

#include "kx_theme.h"

namespace {

kx::theme::Part PushButton(int flags) {
    const int state = flags & eKxButtonLook_Disabled                            ? PBS_DISABLED
                      : flags & eKxButtonLook_Pressed                           ? PBS_PRESSED
                      : flags & eKxButtonLook_Hot                               ? PBS_HOT
                      : flags & (eKxButtonLook_Default | eKxButtonLook_Focused) ? PBS_DEFAULTED
                                                                                : PBS_NORMAL;
    return {kx::theme::Owner::Button, BP_PUSHBUTTON, state};
}

void DrawClassic(HDC dc, RECT rect, int flags) {
    const bool isDefault = (flags & eKxButtonLook_Default) != 0;
    if (isDefault) {
        FrameRect(dc, &rect, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&rect, -1, -1);
    }
    const UINT pressed = isDefault ? UINT{DFCS_FLAT} : UINT{DFCS_PUSHED};
    DrawFrameControl(dc, &rect, DFC_BUTTON, DFCS_BUTTONPUSH | (flags & eKxButtonLook_Pressed ? pressed : 0));
}

// Inside the edge. The platform's toggles look pressed, but then a picture that has the colours of the pressed face,
// blue on blue, would be lost.
void DrawFrames(HDC dc, RECT rect, long count, int color) {
    for (; count > 0; --count) {
        InflateRect(&rect, -1, -1);
        if (IsRectEmpty(&rect)) return;
        FrameRect(dc, &rect, KX_GetSysColorBrush(color));
    }
}

}  // namespace

void KX_DrawButtonBackground(HDC dc, const RECT& rect, int flags, int face) {
    if (!dc || IsRectEmpty(&rect)) return;
    const bool pressed = (flags & eKxButtonLook_Pressed) != 0;
    const long on = flags & eKxButtonLook_On ? CKxGUILayoutManager::Zoomed(2) : 0;
    const bool disabled = (flags & eKxButtonLook_Disabled) != 0;
    if (KX_GetColorScheme() == eKxColorScheme_System) {
        if (!kx::theme::Draw(dc, PushButton(flags), rect, KX_GetSysColor(face))) DrawClassic(dc, rect, flags);
        return DrawFrames(dc, rect, on, disabled ? COLOR_BTNSHADOW : COLOR_HIGHLIGHT);
    }
    // On black, a face in the highlight's white would need black letters.
    const bool onBlack = KX_GetColorScheme() == eKxColorScheme_HighContrast;
    FillRect(dc, &rect, KX_GetSysColorBrush(onBlack ? face : pressed ? COLOR_3DLIGHT : COLOR_BTNHIGHLIGHT));
    FrameRect(dc, &rect, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    const int ring = disabled ? COLOR_BTNSHADOW : onBlack ? COLOR_BTNTEXT : COLOR_HIGHLIGHT;
    DrawFrames(dc, rect, on ? on : pressed && onBlack ? 1 : 0, ring);
}

void KX_DrawFlatButtonBackground(HDC dc, const RECT& rect, int flags, int face) {
    if (!dc || (flags & eKxButtonLook_Disabled)) return;
    const int state = flags & eKxButtonLook_Pressed ? TS_PRESSED : flags & eKxButtonLook_Hot ? TS_HOT : TS_NORMAL;
    if (state != TS_NORMAL)
        kx::theme::Draw(dc, {kx::theme::Owner::Toolbar, TP_BUTTON, state}, rect, KX_GetSysColor(face));
}

void KX_DrawButtonFocus(HDC dc, const RECT& rect, int flags, long inset) {
    RECT line = rect;
    if (const auto content = kx::theme::ContentOf(PushButton(flags), rect)) {
        line = *content;
    } else {
        // Classic: inside the edge, which the frame of a default button moves.
        if (KX_GetColorScheme() == eKxColorScheme_System) inset = flags & eKxButtonLook_Default ? 3 : 2;
        InflateRect(&line, -inset, -inset);
    }
    KX_DrawFocusOutline(dc, line);
}

COLORREF KX_GetButtonTextColor(int flags) {
    const int color = flags & eKxButtonLook_Disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT;
    return kx::theme::TextColorOf(PushButton(flags)).value_or(KX_GetSysColor(color));
}

void KX_DrawFieldFrame(HDC dc, const RECT& rect, bool enabled, bool focused) {
    const int state = !enabled ? EPSN_DISABLED : focused ? EPSN_FOCUSED : EPSN_NORMAL;
    const kx::theme::Part border{kx::theme::Owner::Edit, EP_EDITBORDER_NOSCROLL, state};
    if (!kx::theme::Draw(dc, border, rect, KX_GetSysColor(COLOR_BTNFACE), true))
        FrameRect(dc, &rect, KX_GetSysColorBrush(enabled ? COLOR_BTNSHADOW : COLOR_3DLIGHT));
    if (focused) KX_DrawFocusOutline(dc, rect, COLOR_WINDOW);
}
