#include <kxdevui/light/colorslider_paint.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>

namespace kx::colorslider {

void DrawLine(HDC dc, const RECT& strip, const std::vector<LinePart>& parts, bool framed) {
    const long thick = hpot::ZoomedLine(3), border = hpot::ZoomedLine(1);
    const long top = (strip.top + strip.bottom - thick) / 2;
    RECT line{strip.left, top, strip.right, top + thick};
    if (framed) {
        InflateRect(&line, border, border);
        hpot::Fill(dc, line, COLOR_3DDKSHADOW);
        InflateRect(&line, -border, -border);
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const long end = i + 1 < parts.size() ? parts[i + 1].from : strip.right;
        const RECT part{std::clamp(parts[i].from, strip.left, strip.right), line.top,
                        std::clamp(end, strip.left, strip.right), line.bottom};
        const ui::Brush brush(CreateSolidBrush(parts[i].color));
        if (part.left < part.right) FillRect(dc, &part, brush.get());
    }
}

void Fade(HDC dc, const RECT& strip) {
    const long cx = strip.right - strip.left, cy = strip.bottom - strip.top;
    if (cx <= 0 || cy <= 0) return;
    const ui::Bitmap bitmap(CreateCompatibleBitmap(dc, cx, cy));
    const ui::MemoryDC memory(CreateCompatibleDC(dc));
    if (!bitmap || !memory) return;
    const ui::Selection selected(memory.get(), bitmap.get());
    hpot::Fill(memory.get(), {0, 0, cx, cy}, COLOR_BTNFACE);
    constexpr BYTE share = 160;  // of 255
    AlphaBlend(dc, strip.left, strip.top, cx, cy, memory.get(), 0, 0, cx, cy, {AC_SRC_OVER, 0, share, 0});
}

void DrawMarks(const hpot::ScaleCanvas& canvas, const hpot::Scale& scale, const std::vector<SColorSliderValue>& marks,
               const hpot::Rows& rows, bool enabled) {
    std::vector<hpot::Mark> wanted;
    wanted.reserve(marks.size());
    for (const SColorSliderValue& each : marks)
        wanted.push_back({each.value, each.isMarkWithText});
    const long left = rows.track.left, length = rows.track.right - left;
    const hpot::TickSpace space = hpot::SpaceIn(canvas, left, length, canvas.Client().right);
    hpot::DrawScale(canvas, hpot::MarkTicks(scale, wanted, space), rows, left,
                    enabled ? COLOR_WINDOWFRAME : COLOR_BTNSHADOW, enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
}

}  // namespace kx::colorslider
