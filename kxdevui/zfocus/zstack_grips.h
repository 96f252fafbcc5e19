// The grips beside the Z scale, as functions of values: where they stand, what a drag or a key asks of the record, how
// the scale is magnified, and what a step of the drive changes on it. Free of Windows.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <kxdevices/kx_zstackrules.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/zfocus/zstack_scale.h>

namespace kx::zstack {

// What can be taken hold of, from above as it usually stands.
enum class Grip { Top, Home, Bottom };

// A grip beside the scale.
struct GripPlace {
    // Which one; the row of its line on the scale; the top of the grip, which may stand beside that row.
    Grip grip;
    int row;
    int top;
    // Member by member.
    friend bool operator==(const GripPlace&, const GripPlace&) = default;
};

// Where the position of a grip is drawn; empty where it is not set.
KXDEVUI_API std::optional<double> PositionOf(const ScaleValues& values, Grip grip);
// The grips of what is set, from above: each `height` rows high in the middle of its row, as far as that leaves them
// apart. What lies beyond the axis has its grip at the end.
KXDEVUI_API std::vector<GripPlace> PlaceGrips(const ScaleValues& values, const Axis& axis, int height);
// The grip at a row; empty where there is none.
KXDEVUI_API std::optional<Grip> GripAt(std::span<const GripPlace> places, int row, int height);

// What a drag has to know of a record: positions as its getters tell them, distances where the stack floats.
struct StackNumbers {
    // The type, and what is set.
    int type = 0;
    std::optional<double> top;
    std::optional<double> bottom;
    std::optional<double> home;
    std::optional<double> rangeMin;
    std::optional<double> rangeMax;
    std::optional<double> step;
    std::optional<unsigned> count;
    // Of a grip; empty where it is not set.
    std::optional<double> Of(Grip grip) const;
};

// What the record is to be asked for, the home first, then the bottom, then the top. Or why it is not to be asked.
struct Wanted {
    // A refusal comes with nothing to ask for.
    EKxZStackStatus refusal = eKxZStack_Ok;
    std::optional<double> home;
    std::optional<double> bottom;
    std::optional<double> top;
    // Member by member.
    friend bool operator==(const Wanted&, const Wanted&) = default;
};
// A grip is to come to `z`. The ends of a symmetric stack go together; an end of a stack around its home does not pass
// it, and its home does not go where the device's range would hold back an end: its distances would be others.
KXDEVUI_API Wanted WantedFor(const StackNumbers& numbers, Grip grip, double z);

// The position that a drag means whose grip had `from` when the pointer was at row `pressed`, now that it is at `row`,
// which may lie beyond the axis: in steps of a power of ten that a row still tells apart, at least a nanometre.
KXDEVUI_API double DraggedTo(double from, int pressed, const Axis& axis, int row);

// What a key moves a grip by.
enum class GripStep { Fine, Plane, Planes };
// A plane is the step of the stack, or a row of the axis where there is none; ten of them, or a tenth, at least a
// nanometre. Upwards.
KXDEVUI_API double LengthOf(GripStep step, const std::optional<double>& plane, const Axis& axis);

// The stretch magnified by so many notches of the wheel, with `z` staying on its row, and never beyond the whole.
KXDEVUI_API Stretch Magnified(const Stretch& stretch, const Stretch& whole, double z, int notches);
// Whether any of what is set of the stack lies in the stretch.
KXDEVUI_API bool ShowsStack(const ScaleValues& values, const Stretch& stretch);

// Some rows of a bar.
struct Strip {
    // The first, and the one after the last.
    int first;
    int last;
    // Member by member.
    friend bool operator==(const Strip&, const Strip&) = default;
};
// The strips of a bar that are drawn anew for other values, where nothing has changed but where the drive stands and
// where it was sent: `half` rows on either side of each line and arrowhead that has gone or come. Empty: all is.
KXDEVUI_API std::optional<std::vector<Strip>> StripsOf(const ScaleValues& before, const ScaleValues& after,
                                                       const Axis& axis, int half);

}  // namespace kx::zstack
