// Where values stand, which are allowed, and how far the wheel goes; hpot_ticks.cpp lays out the scale.
#include <kxdevui/controls/hpot_rules.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <kxdevui/framework/ui_nearest.h>

namespace kx::hpot {

namespace {

int Count(const Scale& scale) { return static_cast<int>(scale.values.size()); }

double At(const Scale& scale, int index) { return scale.values[static_cast<std::size_t>(index)]; }

bool IsReversed(const Scale& scale) { return scale.maximum < scale.minimum; }

// The share of each region in the range; negative on a reversed scale.
double RegionWidth(const Scale& scale) { return (scale.maximum - scale.minimum) / (Count(scale) - 1); }

// The region whose bounds enclose the value, the first or the last for what lies outside.
int RegionOf(const Scale& scale, double value) {
    const auto isBeyond = [&](double bound) { return IsReversed(scale) ? value < bound : value > bound; };
    int region = 0;
    while (region < Count(scale) - 2 && isBeyond(At(scale, region + 1)))
        ++region;
    return region;
}

int RegionPosition(const Scale& scale, double value, int trackLength) {
    const int region = RegionOf(scale, value);
    const double width = std::abs(RegionWidth(scale)), from = At(scale, region);
    const double extent = std::abs(At(scale, region + 1) - from);
    const double inside = IsReversed(scale) ? from - value : value - from;
    // A region without extent is a place of its own width: its only value stands at its start.
    const double offset = (extent > 0 ? inside * width / extent : 0) + region * width;
    return Truncated(offset * trackLength / std::abs(scale.maximum - scale.minimum));
}

// A value of the track, where all regions are equally wide, as a value of its region. At the end of a region it is that
// bound exactly: what rounding leaves short of it would be snapped down, and what goes beyond into the next region.
double LeadIntoRegion(const Scale& scale, double value) {
    const double width = RegionWidth(scale);
    const int last = Count(scale) - 1;
    if (last < 1 || width == 0) return value;
    const bool isAtEnd = IsReversed(scale) ? value <= scale.maximum : value >= scale.maximum;
    if (isAtEnd) return At(scale, last);
    const double share = (value - scale.minimum) / width, bound = std::round(share);
    const double largest = std::max(std::abs(scale.minimum), std::abs(scale.maximum));
    const double slack = 8 * std::numeric_limits<double>::epsilon() * (largest / std::abs(width) + last);
    if (bound >= 1 && bound <= last && std::abs(share - bound) <= slack) return At(scale, static_cast<int>(bound));
    const int region = std::clamp(Truncated(share), 0, last - 1);
    const double from = At(scale, region);
    return from + (value - (region * width + scale.minimum)) * (At(scale, region + 1) - from) / width;
}

double SnapToRegion(const Scale& scale, double value) {
    if (scale.values.empty() || scale.step == 0) return value;
    const auto bound =
        std::find_if(scale.values.begin() + 1, scale.values.end(), [value](double each) { return each >= value; });
    const double from = bound == scale.values.end() ? scale.values.front() : *(bound - 1);
    return from + std::round((value - from) / scale.step) * scale.step;
}

Held SnapToEntry(const Scale& scale, double value, const Held& held, bool stick) {
    if (scale.values.empty()) return {value, held.index};
    int index = NearestEntry(scale, value);
    if (stick && index == held.index) {
        // By value: in a list that descends the larger ones come before.
        const int up = scale.values.front() > scale.values.back() ? -1 : 1;
        const int step = value > held.value ? up : value < held.value ? -up : 0;
        index = std::clamp(index + step, 0, Count(scale) - 1);
    }
    return {At(scale, index), index};
}

double FiniteOr(double value, double otherwise) { return std::isfinite(value) ? value : otherwise; }

// Bounds that differ in the sixth decimal are the same.
double Rounded(double value) { return std::round(value * 1e5) / 1e5; }

double MoveOverRegions(const Scale& scale, double value, int steps) {
    const double target = Clamped(scale, value + steps * scale.step);
    const double from = Rounded(value), to = Rounded(target);
    double reached = target;
    for (const double bound : scale.values) {
        const double at = Rounded(bound);
        const bool isCrossed = from < to ? from < at && at < Rounded(reached) : Rounded(reached) < at && at < from;
        if (isCrossed) reached = bound;
    }
    return reached;
}

}  // namespace

int Truncated(double value) noexcept {
    if (std::isnan(value)) return 0;
    constexpr double low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, low, high));
}

double Clamped(const Scale& scale, double value) noexcept {
    return std::clamp(value, std::min(scale.minimum, scale.maximum), std::max(scale.minimum, scale.maximum));
}

int NearestEntry(const Scale& scale, double value) noexcept {
    return std::max(0, static_cast<int>(ui::NearestIndex(value, scale.values)));
}

int ValueToThumbPos(const Scale& scale, double value, int trackLength) noexcept {
    if (scale.type < eHPotType_Linear || scale.type > eHPotType_ColorSlider) return Truncated(value);
    if (scale.minimum == scale.maximum) return 0;
    if (scale.type == eHPotType_LinearRegions && Count(scale) >= 2) return RegionPosition(scale, value, trackLength);
    return Truncated((value - scale.minimum) * trackLength / (scale.maximum - scale.minimum));
}

double ThumbPosToRaw(const Scale& scale, int position, int trackLength) noexcept {
    if (trackLength == 0) return scale.minimum;
    const double raw = scale.minimum + position * (scale.maximum - scale.minimum) / trackLength;
    return Clamped(scale, std::isnan(raw) ? scale.minimum : raw);
}

Held ThumbPosToValue(const Scale& scale, double value, bool fromTrack, const Held& held, bool stick) noexcept {
    if (scale.IsList()) return SnapToEntry(scale, value, held, stick);
    double snapped = value;
    if (scale.type == eHPotType_Linear && scale.step != 0) {
        snapped = std::trunc((value - scale.minimum) / scale.step + 0.5) * scale.step + scale.minimum;
    } else if (scale.type == eHPotType_LinearRegions) {
        snapped = SnapToRegion(scale, fromTrack ? LeadIntoRegion(scale, value) : value);
    }
    return {FiniteOr(snapped, value), held.index};
}

double CalculateMove(const Scale& scale, const Held& held, int steps) noexcept {
    double value = held.value;
    if (scale.type == eHPotType_Linear) {
        value += steps * (scale.wheelStepOverride != 0 ? scale.wheelStepOverride : scale.wheelStep);
    } else if (scale.IsList() && !scale.values.empty()) {
        value = At(scale, static_cast<int>(
                              std::clamp<long long>(static_cast<long long>(held.index) + steps, 0, Count(scale) - 1)));
    } else if (scale.type == eHPotType_LinearRegions && !scale.values.empty()) {
        value = MoveOverRegions(scale, value, steps);
    } else {
        return held.value;
    }
    return Clamped(scale, FiniteOr(value, held.value));
}

}  // namespace kx::hpot
