// For authors of controls: the search for the nearest value, for rules that know nothing of windows (devgui.h has it
// for hosts).
#pragma once

#include <cmath>
#include <cstddef>
#include <span>

namespace kx::ui {

// The index of the value nearest to `value`; of two equally near the later one. -1 when there are no values; the first
// for a value that is not a number.
inline std::ptrdiff_t NearestIndex(double value, std::span<const double> values) noexcept {
    if (values.empty()) return -1;
    std::size_t nearest = 0;
    for (std::size_t i = 1; i < values.size(); ++i) {
        if (std::abs(value - values[i]) <= std::abs(value - values[nearest])) nearest = i;
    }
    return static_cast<std::ptrdiff_t>(nearest);
}

}  // namespace kx::ui
