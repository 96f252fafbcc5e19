// The rules of laser lines as functions of values: the scales of their powers, what is shown of what an engine tells,
// their order, and what one act does to several of them. Powers are percent of a line's full power.
#pragma once

#include <span>
#include <vector>

#include <kxdevices/kx_device.h>
#include <kxdevui/controls/hpot_rules.h>
#include <kxdevui/framework/kxdevui_api.h>

// How powers stand on a scale.
enum class EKxPowerScale {
    Linear,       // evenly, from 0 to 100 %
    Logarithmic,  // each decade from 0.01 to 100 % as long as any other; 0 stands by itself, to the left
};

// What powers are shown in.
enum class EKxPowerUnit { Percent, Milliwatts };

// A line that is to be switched on or off.
struct SKxLaserSwitch {
    // Its number; what it is to be.
    long line;
    bool on;
    // Both the same.
    bool operator==(const SKxLaserSwitch&) const = default;
};

// A linked line and the power that it is to have.
struct SKxLinkedPower {
    // Its number; the power, in percent; whether that is above what it has now.
    long line;
    double power;
    bool raised;
    // All the same.
    bool operator==(const SKxLinkedPower&) const = default;
};

namespace kx::multilaser {

// ---- Scales --------------------------------------------------------------------------------------------------------

// A scale has places from 0 to this, a step of the wheel apart: 20 to a decade, and 10 between zero and the first of
// them; on a linear scale one a percent.
KXDEVUI_API int LastPlace(EKxPowerScale scale) noexcept;

// The power at a place, which is moved onto the scale. On a logarithmic one it has two digits, the preferred numbers
// 1, 1.1, 1.3, 1.4, 1.6, 1.8, 2, 2.2, 2.5, 2.8, 3.2, 3.5, 4, 4.5, 5, 5.6, 6.3, 7.1, 7.9, 8.9, each the very double of
// its decimals; a place in the gap belongs to the nearer end of it.
KXDEVUI_API double PowerAt(EKxPowerScale scale, int place) noexcept;

// Where a power stands, between two places as well. Below the first decade it stands at its beginning, and only 0, as
// all that is no power, at 0.
KXDEVUI_API double PlaceOf(EKxPowerScale scale, double power) noexcept;

// The place that a step of wheel or keys from one to another leads to: over the gap of a logarithmic scale.
KXDEVUI_API int PlaceAfter(EKxPowerScale scale, double from, double to) noexcept;

// Ticks at places: at 1, 2 and 5 of each decade, with the power at each 1, and at zero; on a linear scale at each 10 %,
// with the power at every second.
KXDEVUI_API std::vector<hpot::Mark> MarksOf(EKxPowerScale scale);

// ---- Lines ---------------------------------------------------------------------------------------------------------

// The line with what can be shown: a wavelength, full power, measured power or gain that is none is not known, a power
// lies between 0 and 100, and so does a limit, which is 0 if it is no number.
KXDEVUI_API SKxLaserLine Cleaned(SKxLaserLine line);

// Their indexes by wavelength, those without one last; equal ones stay in the order given.
KXDEVUI_API std::vector<long> ByWavelength(std::span<const SKxLaserLine> lines);

// A power in a unit, and back; percent where the full power is not known.
KXDEVUI_API double InUnit(const SKxLaserLine& line, EKxPowerUnit unit, double percent) noexcept;
KXDEVUI_API double FromUnit(const SKxLaserLine& line, EKxPowerUnit unit, double number) noexcept;

// Whether the user can operate it.
inline bool IsOperable(const SKxLaserLine& line) noexcept { return line.usable && !line.interlock; }

// The line `now` with the power that the host has agreed to, where it was `before` when that was asked. What has been
// told of it meanwhile is how it is: another power, that it cannot be operated any more, a lower limit, which the power
// stops at.
KXDEVUI_API SKxLaserLine Agreed(const SKxLaserLine& before, SKxLaserLine now, double wanted);

// ---- Several at once -----------------------------------------------------------------------------------------------

// A linked line: the power that it has at a factor of 100 %, and its limit.
struct Linked {
    // Both in percent.
    double base;
    double limit;
};

// The largest factor, in percent: that at which the first of the lines is at its limit, so that all ratios are kept;
// never less than 100, where a line over its limit stays at that.
KXDEVUI_API double MostFactor(std::span<const Linked> lines) noexcept;

// The powers at a factor, which is moved between 0 and the largest; to a ten-thousandth of a percent.
KXDEVUI_API std::vector<double> PowersAt(std::span<const Linked> lines, double factor);

// What leaves one line alone on: the others are switched off first, and what is so already is left out. Nothing for a
// line that is not there.
KXDEVUI_API std::vector<SKxLaserSwitch> SoloSteps(std::span<const SKxLaserLine> lines, long line);

}  // namespace kx::multilaser
