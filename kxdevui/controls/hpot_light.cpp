#include <kxdevui/controls/hpot_light.h>

#include <algorithm>
#include <cstdlib>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/hpot_common.h>

namespace kx::hpot {

namespace {

bool IsDark(COLORREF color) { return 3 * GetRValue(color) + 6 * GetGValue(color) + GetBValue(color) < 1280; }

}  // namespace

LightColors ColorsOf(bool on, COLORREF low, COLORREF high, COLORREF face, COLORREF text, bool enabled) {
    const COLORREF gray = Mixed(face, text, 40), dark = Mixed(face, RGB(0, 0, 0), 22);
    const LightColors full = on ? LightColors{Mixed(low, high, 50), high, Mixed(face, high, 25), high, text}
                                : LightColors{gray, gray, dark, face, gray};
    const int part = enabled ? 100 : 60;
    const auto shown = [&](COLORREF color) { return enabled ? color : Mixed(face, color, part); };
    return {shown(full.from), shown(full.to), shown(full.rest), shown(full.badge), shown(full.sign), part};
}

RECT BadgeOn(const RECT& thumb, long width) {
    // As even as the thumb is, so that both have one middle.
    const long height = thumb.bottom - thumb.top, side = std::min((height * 3 / 5 + 1) & ~1L, width);
    const long left = std::clamp((thumb.left + thumb.right - side) / 2, 0L, width - side);
    const long top = std::max(0L, thumb.top + height * 2 / 5 - side / 2 - ZoomedLine(1));
    return {left, top, left + side, top + side};
}

void DrawLight(HDC dc, const RECT& strip, long at, const LightColors& colors) {
    RECT frame = strip, filled = strip;
    InflateRect(&frame, 1, 1);
    FrameRect(dc, &frame, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    filled.right = strip.left + std::clamp(at, 0L, std::max(strip.right - strip.left, 0L));
    const RECT rest{filled.right, strip.top, strip.right, strip.bottom};
    const ui::Brush brush(CreateSolidBrush(colors.rest));
    FillRect(dc, &rest, brush.get());
    if (filled.left < filled.right) FillGradient(dc, filled, colors.from, colors.to);
}

void DrawBadge(HDC dc, const RECT& place, bool on, const LightColors& colors) {
    const auto hex = [](COLORREF color) { return RGB(GetBValue(color), GetGValue(color), GetRValue(color)); };
    const COLORREF full = IsDark(colors.badge) ? RGB(255, 255, 255) : RGB(0, 0, 0);
    const COLORREF stroke = colors.ink < 100 ? Mixed(colors.badge, full, colors.ink) : full;
    CKxStringA svg;
    svg.Format(
        400,
        "<svg viewBox=\"0 0 16 16\"><circle cx=\"8\" cy=\"8\" r=\"6.9\" fill=\"#%06X\" stroke=\"#%06X\" "
        "stroke-width=\"2\"/><rect x=\"7\" y=\"4.5\" width=\"2\" height=\"7\" fill=\"#%06X\" opacity=\"%d\"/></svg>",
        static_cast<unsigned>(hex(colors.badge)), static_cast<unsigned>(hex(colors.sign)),
        static_cast<unsigned>(hex(stroke)), on ? 1 : 0);
    CKxBitmapPool::DrawSVGImage(dc, svg, place);
}

RECT MeasuredMark(const Scale& scale, double thumb, std::optional<double> measured, const RECT& strip) {
    if (!measured) return {};
    const auto at = [&](double value) {
        const long length = strip.right - strip.left;
        return std::clamp<long>(ValueToThumbPos(scale, value, static_cast<int>(length)), 0, std::max(length, 0L));
    };
    const long position = at(*measured), line = ZoomedLine(1);
    if (std::abs(position - at(thumb)) <= line) return {};
    const long left = strip.left + position - line / 2 - line, out = 2 * line;
    return {left, strip.top - out, left + 3 * line, strip.bottom + out};
}

void DrawMeasured(HDC dc, const RECT& mark, bool enabled) {
    if (IsRectEmpty(&mark)) return;
    Fill(dc, mark, COLOR_BTNFACE);
    const long line = (mark.right - mark.left) / 3;
    Fill(dc, {mark.left + line, mark.top, mark.right - line, mark.bottom}, enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
}

}  // namespace kx::hpot
