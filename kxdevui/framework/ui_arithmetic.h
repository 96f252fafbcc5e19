// For authors of controls: sums of coordinates that a host may have chosen as it likes, cut to the range of a
// coordinate, never overflowing.
#pragma once

#include <windows.h>

#include <algorithm>
#include <limits>

namespace kx::ui {

// a + b.
constexpr long Sum(long a, long b) {
    const long long sum = static_cast<long long>(a) + b;
    return static_cast<long>(
        std::clamp<long long>(sum, (std::numeric_limits<long>::min)(), (std::numeric_limits<long>::max)()));
}

// a - b.
constexpr long Difference(long a, long b) {
    const long long difference = static_cast<long long>(a) - b;
    return static_cast<long>(
        std::clamp<long long>(difference, (std::numeric_limits<long>::min)(), (std::numeric_limits<long>::max)()));
}

// The rectangle with its corner at (x, y), cx by cy large.
constexpr RECT RectAt(long x, long y, long cx, long cy) { return {x, y, Sum(x, cx), Sum(y, cy)}; }

// The place of the i-th of `count` parts that share a row's width, with `gap` between them.
constexpr RECT ShareOf(const RECT& row, int i, int count, long gap) {
    const long long width = 0LL + row.right + gap - row.left;
    const auto edge = [&](int at) { return row.left + width * at / count; };
    return {static_cast<long>(edge(i)), row.top, static_cast<long>(edge(i + 1) - gap), row.bottom};
}

}  // namespace kx::ui
