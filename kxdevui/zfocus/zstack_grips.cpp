#include <kxdevui/zfocus/zstack_grips.h>

#include <algorithm>
#include <cmath>

namespace kx::zstack {

namespace {

using Position = std::optional<double>;

constexpr double kNanometre = 0.001;
constexpr double kHalfNanometre = kNanometre / 2;
constexpr double kNotch = 0.8;      // what is left of the stretch
constexpr double kShortest = 0.05;  // micrometres; nothing is magnified beyond that

double PerRow(const Axis& axis) { return (axis.stretch.high - axis.stretch.low) / std::max(1, axis.last - axis.first); }

double Unit(double perRow) {
    const double unit = std::pow(10.0, std::floor(std::log10(perRow)));
    // Also for what is not a number.
    return unit > kNanometre ? unit : kNanometre;
}

double InUnits(double z, double unit) { return std::round(z / unit) * unit; }

}  // namespace

Position PositionOf(const ScaleValues& values, Grip grip) {
    return grip == Grip::Top ? values.top : grip == Grip::Home ? values.home : values.bottom;
}

Position StackNumbers::Of(Grip grip) const { return grip == Grip::Top ? top : grip == Grip::Home ? home : bottom; }

std::vector<GripPlace> PlaceGrips(const ScaleValues& values, const Axis& axis, int height) {
    std::vector<GripPlace> places;
    for (const Grip grip : {Grip::Top, Grip::Home, Grip::Bottom}) {
        if (const Position z = PositionOf(values, grip)) places.push_back({grip, axis.RowOf(*z), 0});
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const GripPlace& a, const GripPlace& b) { return a.row < b.row; });
    std::vector<int> tops;
    tops.reserve(places.size());
    for (const GripPlace& each : places)
        tops.push_back(each.row - height / 2);
    SpreadLabels(tops, height, axis.first, axis.last + 1);
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i].top = tops[i];
    return places;
}

std::optional<Grip> GripAt(std::span<const GripPlace> places, int row, int height) {
    for (const GripPlace& each : places)
        if (row >= each.top && row < each.top + height) return each.grip;
    return std::nullopt;
}

Wanted WantedFor(const StackNumbers& numbers, Grip grip, double z) {
    const auto refused = [](EKxZStackStatus why) { return Wanted{why, {}, {}, {}}; };
    const bool aroundHome = (numbers.type & 2) != 0, symmetric = (numbers.type & 3) == 2;
    Wanted wanted;
    if (grip == Grip::Home) {
        if (aroundHome && numbers.home) {
            const double by = z - *numbers.home;
            if (numbers.top && numbers.rangeMax && *numbers.top + by > *numbers.rangeMax + kHalfNanometre)
                return refused(eKxZStack_OutOfRange);
            if (numbers.bottom && numbers.rangeMin && *numbers.bottom + by < *numbers.rangeMin - kHalfNanometre)
                return refused(eKxZStack_OutOfRange);
        }
        wanted.home = z;
        return wanted;
    }
    const double home = numbers.home.value_or(0.0), distance = grip == Grip::Top ? z - home : home - z;
    // Beyond its home an end would be a negative distance, whose sign the fields ignore.
    if (aroundHome && distance < 0) return refused(eKxZStack_Reversed);
    if (symmetric && numbers.top && numbers.bottom) {
        wanted.bottom = home - distance;
        wanted.top = home + distance;
    } else {
        (grip == Grip::Top ? wanted.top : wanted.bottom) = z;
    }
    return wanted;
}

double DraggedTo(double from, int pressed, const Axis& axis, int row) {
    if (row == pressed) return from;
    const double perRow = PerRow(axis);
    return InUnits(InUnits(from + (pressed - row) * perRow, Unit(perRow)), kNanometre);
}

double LengthOf(GripStep step, const Position& plane, const Axis& axis) {
    const double length = plane && *plane > 0 ? *plane : Unit(PerRow(axis));
    if (step == GripStep::Planes) return 10 * length;
    return step == GripStep::Plane ? length : std::max(kNanometre, InUnits(length / 10, kNanometre));
}

Stretch Magnified(const Stretch& stretch, const Stretch& whole, double z, int notches) {
    const double length = stretch.high - stretch.low, most = whole.high - whole.low;
    const double wanted = std::clamp(length * std::pow(kNotch, notches), std::min(kShortest, most), most);
    const double share = std::clamp((z - stretch.low) / length, 0.0, 1.0);
    const double low = std::clamp(stretch.low + share * (length - wanted), whole.low, whole.high - wanted);
    return {low, low + wanted};
}

bool ShowsStack(const ScaleValues& values, const Stretch& stretch) {
    if (values.top && values.bottom) return *values.bottom <= stretch.high && *values.top >= stretch.low;
    const Position& any = values.top ? values.top : values.bottom ? values.bottom : values.home;
    return any && *any <= stretch.high && *any >= stretch.low;
}

std::optional<std::vector<Strip>> StripsOf(const ScaleValues& before, const ScaleValues& after, const Axis& axis,
                                           int half) {
    ScaleValues moved = before;
    moved.z = after.z;
    moved.asked = after.asked;
    if (!(moved == after)) return std::nullopt;
    std::vector<Strip> strips;
    const auto add = [&](const std::optional<int>& row) {
        if (row) strips.push_back({*row - half, *row + half + 1});
    };
    const auto line = [&](const ScaleValues& values) {
        return values.z && axis.Holds(*values.z) ? std::optional(axis.RowOf(*values.z)) : std::nullopt;
    };
    const auto was = line(before), is = line(after), headWas = AskedRow(before, axis), headIs = AskedRow(after, axis);
    // An arrowhead is filled where the drive has arrived, so it changes with either.
    if (was == is && headWas == headIs && (was == headWas) == (is == headIs)) return strips;
    for (const auto& row : {was, is, headWas, headIs})
        if (!row || std::find(strips.begin(), strips.end(), Strip{*row - half, *row + half + 1}) == strips.end())
            add(row);
    return strips;
}

}  // namespace kx::zstack
