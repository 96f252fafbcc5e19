#include <kxdevui/zfocus/zstack_scale.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>

namespace kx::zstack {

namespace {

using Position = std::optional<double>;

constexpr double kLeast = 0.1;  // micrometres; no stretch is shorter

Position Lowest(std::initializer_list<Position> positions) {
    Position lowest;
    for (const Position& each : positions)
        if (each && (!lowest || *each < *lowest)) lowest = each;
    return lowest;
}

Position Highest(std::initializer_list<Position> positions) {
    Position highest;
    for (const Position& each : positions)
        if (each && (!highest || *each > *highest)) highest = each;
    return highest;
}

Stretch Around(const Position& low, const Position& high, double share) {
    const double from = low.value_or(0.0), to = high.value_or(0.0);
    const double room = std::max((to - from) * share, kLeast / 2);
    return {from - room, to + room};
}

bool HasRange(const ScaleValues& values) {
    return values.rangeMin && values.rangeMax && *values.rangeMin <= *values.rangeMax;
}

}  // namespace

Stretch WholeStretch(const ScaleValues& values) {
    if (HasRange(values)) return Around(values.rangeMin, values.rangeMax, 0.05);
    return Around(Lowest({values.top, values.bottom, values.home, values.z}),
                  Highest({values.top, values.bottom, values.home, values.z}), 0.15);
}

Stretch StackStretch(const ScaleValues& values) {
    if (!values.top || !values.bottom) return WholeStretch(values);
    return Around(Lowest({values.top, values.bottom, values.home}), Highest({values.top, values.bottom, values.home}),
                  0.15);
}

int Axis::RowOf(double z) const {
    const double share = (stretch.high - z) / (stretch.high - stretch.low);
    return first + static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * (last - first)));
}

double Axis::ZAt(int row) const {
    if (last <= first) return stretch.low;
    const double share = static_cast<double>(std::clamp(row, first, last) - first) / (last - first);
    return stretch.high - share * (stretch.high - stretch.low);
}

std::optional<int> AskedRow(const ScaleValues& values, const Axis& axis) {
    const Position& z = values.asked ? values.asked : values.z;
    return z ? std::optional(axis.RowOf(*z)) : std::nullopt;
}

std::vector<int> PlaneRows(const ScaleValues& values, const Axis& axis, int least) {
    std::vector<int> rows;
    if (!values.firstPlane || values.planes == 0) return rows;
    const double rowsPerPlane = values.pitch * (axis.last - axis.first) / (axis.stretch.high - axis.stretch.low);
    double every = 1;
    for (int i = 1; !(rowsPerPlane * every >= least) && every < values.planes; ++i)
        every *= i % 3 == 2 ? 2.5 : 2;
    // Planes below the axis are skipped at once: a record of the host's may have any number of them.
    const double below = values.pitch > 0 ? (axis.stretch.low - *values.firstPlane) / (values.pitch * every) : 0;
    for (double i = std::max(0.0, std::ceil(below)) * every; i < values.planes; i += every) {
        const double z = *values.firstPlane + i * values.pitch;
        if (z > axis.stretch.high) break;
        if (axis.Holds(z)) rows.push_back(axis.RowOf(z));
    }
    return rows;
}

Position ClickedZ(const ScaleValues& values, const Axis& axis, int row, int reach) {
    if (!HasRange(values)) return std::nullopt;
    Position nearest;
    int distance = reach + 1;
    for (const Position& mark : {values.top, values.bottom, values.home, values.rangeMin, values.rangeMax}) {
        if (!mark || !axis.Holds(*mark)) continue;
        const int away = std::abs(axis.RowOf(*mark) - row);
        if (away < distance) {
            nearest = mark;
            distance = away;
        }
    }
    const double z = nearest ? *nearest : std::round(axis.ZAt(row) * 1000.0) / 1000.0;
    return std::clamp(z, *values.rangeMin, *values.rangeMax);
}

void SpreadLabels(std::vector<int>& tops, int height, int first, int last) {
    int next = first;
    for (int& top : tops) {
        top = std::max(top, next);
        next = top + height;
    }
    next = last;
    for (std::size_t i = tops.size(); i-- > 0;) {
        tops[i] = std::min(tops[i], next - height);
        next = tops[i];
    }
}

}  // namespace kx::zstack
