#include <kxbaseui/kx_groupbox.h>

#include <algorithm>

#include <vsstyle.h>

#include <kxbaseui/kx_colors.h>

#include "kx_theme.h"

namespace {

// Pixels left free before and after the title.
constexpr long kGap = 2;

void DrawLine(HDC dc, const RECT& frame, bool disabled) {
    const kx::theme::Part box{kx::theme::Owner::Button, BP_GROUPBOX, disabled ? GBS_DISABLED : GBS_NORMAL};
    if (!kx::theme::Draw(dc, box, frame, GetBkColor(dc), true))
        FrameRect(dc, &frame, KX_GetSysColorBrush(COLOR_BTNSHADOW));
}

}  // namespace

long KX_GroupBoxTitleHeight(HDC dc) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return metrics.tmHeight;
}

void KX_GroupBoxDraw(HDC dc, const SKxGroupBox& box, unsigned flags) {
    if (!dc || IsRectEmpty(&box.frame)) return;
    DrawLine(dc, box.frame, (flags & eKxGroupBox_Disabled) != 0);
    if (box.title.IsEmpty()) return;

    const long left = box.frame.left + box.titleOffset, top = box.frame.top - KX_GroupBoxTitleHeight(dc) / 2;
    RECT text{left, top, left, top};
    const UINT format = DT_SINGLELINE | (flags & eKxGroupBox_Mnemonic ? 0u : UINT{DT_NOPREFIX}) |
                        (flags & eKxGroupBox_NoLine ? UINT{DT_HIDEPREFIX} : 0u);
    DrawTextW(dc, box.title, static_cast<int>(box.title.Length()), &text, format | DT_CALCRECT);
    text.right = std::min(text.right, box.frame.right - 2 * kGap);
    if (box.titleEnd > 0) text.right = std::min(text.right, box.frame.left + box.titleEnd);
    if (text.right <= text.left) return;
    const RECT gap{text.left - kGap, box.frame.top, text.right + kGap, box.frame.top + 1};
    SetDCBrushColor(dc, GetBkColor(dc));
    FillRect(dc, &gap, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    DrawTextW(dc, box.title, static_cast<int>(box.title.Length()), &text, format | DT_END_ELLIPSIS);
}
