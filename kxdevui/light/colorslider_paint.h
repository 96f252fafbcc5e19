// What both thumb controls of the colour slider draw alike. Internal.
#pragma once

#include <windows.h>

#include <vector>

#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/light/colorslider_rules.h>

namespace kx::colorslider {

// A line of two or three parts in the middle of a strip; `framed` gives it a border. Each part reaches to where the
// next one begins, the last one to the strip's end.
struct LinePart {
    long from;       // where it begins
    COLORREF color;  // of it
};
void DrawLine(HDC dc, const RECT& strip, const std::vector<LinePart>& parts, bool framed);

// Makes the strip pale, as what is disabled is.
void Fade(HDC dc, const RECT& strip);

// Ticks and labels at the marks.
void DrawMarks(const hpot::ScaleCanvas& canvas, const hpot::Scale& scale, const std::vector<SColorSliderValue>& marks,
               const hpot::Rows& rows, bool enabled);

}  // namespace kx::colorslider
