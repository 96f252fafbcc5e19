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

}  // namespace kx::ui
