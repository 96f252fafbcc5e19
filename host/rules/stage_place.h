// A place of the stage as one number, so that a way in both directions is one change that can be taken back.
#pragma once

#include <algorithm>
#include <cmath>

namespace kx::host {

// Where the stage stands, in micrometres.
struct StagePlace {
    double x = 0;
    double y = 0;

    bool operator==(const StagePlace&) const = default;
};

// In hundredths of a micrometre, as far as ten centimetres to either side of the middle: both fit into a double.
inline constexpr double kMostHundredths = 1e7, kStageRow = 2 * kMostHundredths + 1;

inline double NumberOf(const StagePlace& place) {
    const auto counted = [](double position) {
        return std::clamp(std::round(position * 100), -kMostHundredths, kMostHundredths) + kMostHundredths;
    };
    return counted(place.y) * kStageRow + counted(place.x);
}
inline StagePlace StagePlaceOf(double number) {
    const double row = std::floor(number / kStageRow);
    return {(number - row * kStageRow - kMostHundredths) / 100, (row - kMostHundredths) / 100};
}

}  // namespace kx::host
