// How every slider shows what its device reports (devgui_readings.h): a light that is on or off, and a measured value.
// Internal.
#pragma once

#include <windows.h>

#include <optional>

#include <kxdevui/controls/hpot_rules.h>

namespace kx::hpot {

// What a light's strip and badge are painted with.
struct LightColors {
    COLORREF from;   // the filled part, at its beginning
    COLORREF to;     // and at the thumb
    COLORREF rest;   // the part beyond the thumb
    COLORREF badge;  // the disc on the thumb
    COLORREF sign;   // its rim
    int ink = 100;   // how much what it says stands out from it, in percent
};

// What is lit: on, the strip up to the thumb in the light's own colours, from halfway between its lowest and its
// highest, and the rest of it in a breath of that; off, it is grey, and the rest darker than what is around. Disabled
// it is three fifths of either: a light that nobody may touch still shows whether it shines.
LightColors ColorsOf(bool on, COLORREF low, COLORREF high, COLORREF face, COLORREF text, bool enabled);

// Where the badge of a thumb is: around the middle of its body, as far as a window of this width has room.
RECT BadgeOn(const RECT& thumb, long width);
// The strip filled up to a column of it; the badge: a full disc with a stroke, or a hollow one.
void DrawLight(HDC dc, const RECT& strip, long at, const LightColors& colors);
void DrawBadge(HDC dc, const RECT& place, bool on, const LightColors& colors);

// The mark of a measured value on a strip, beside a thumb at this value; empty where it is not known, and where the two
// are no more than a line apart: a thumb goes by its table.
RECT MeasuredMark(const Scale& scale, double thumb, std::optional<double> measured, const RECT& strip);
// A thin line, to be told from every colour of a strip.
void DrawMeasured(HDC dc, const RECT& mark, bool enabled);

}  // namespace kx::hpot
