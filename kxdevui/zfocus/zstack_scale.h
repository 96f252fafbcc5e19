// The Z scale of the Z stack panel, as functions of values: which stretch of Z it shows, where a position lies on it,
// what can be told apart. Free of Windows.
#pragma once

#include <optional>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::zstack {

// What the scale shows, in micrometres along the Z device; empty is not known.
struct ScaleValues {
    // The range of the device; the stack; where the device stands.
    std::optional<double> rangeMin;
    std::optional<double> rangeMax;
    std::optional<double> top;
    std::optional<double> bottom;
    std::optional<double> home;
    std::optional<double> z;
    // The lowest plane, the distance from one to the next, and how many there are.
    std::optional<double> firstPlane;
    double pitch = 0;
    unsigned planes = 0;
    // Where it was sent, if anybody has said so.
    std::optional<double> asked = std::nullopt;
    // Member by member.
    friend bool operator==(const ScaleValues&, const ScaleValues&) = default;
};

// A stretch of Z.
struct Stretch {
    // Its ends; high is above low.
    double low;
    double high;
};

// All of the device's range with a little beyond it; without a device, all that is known.
KXDEVUI_API Stretch WholeStretch(const ScaleValues& values);
// The stack and its home with some room around; without both ends, the whole.
KXDEVUI_API Stretch StackStretch(const ScaleValues& values);

// A stretch drawn on rows of pixels.
struct KXDEVUI_API Axis {
    // What is drawn; the rows of its upper and its lower end.
    Stretch stretch;
    int first;
    int last;

    // The row nearest to a position, the end's for one beyond; the position in the middle of a row.
    int RowOf(double z) const;
    double ZAt(int row) const;
    // Whether the position is drawn.
    bool Holds(double z) const { return z >= stretch.low && z <= stretch.high; }
};

// The row of the arrowhead: of where the device was sent, else of where it stands; empty without either.
KXDEVUI_API std::optional<int> AskedRow(const ScaleValues& values, const Axis& axis);

// The rows of the planes: of every plane, or, where they lie closer than `least` rows, of every second, fifth, tenth...
// None outside the axis.
KXDEVUI_API std::vector<int> PlaneRows(const ScaleValues& values, const Axis& axis, int least);

// The position that a click on a row means: the end of the stack, the home or the end of the device's range that is
// drawn within `reach` rows, else the row's, in whole nanometres, kept within the device's range. Empty without a
// device.
KXDEVUI_API std::optional<double> ClickedZ(const ScaleValues& values, const Axis& axis, int row, int reach);

// Moves the tops of labels, which come in rising order, down and then up so that they lie between `first` and `last`
// and none overlaps the next, as far as there is room.
KXDEVUI_API void SpreadLabels(std::vector<int>& tops, int height, int first, int last);

}  // namespace kx::zstack
