// The rules of the slider as functions of values: where a value stands on the track, which values the slider allows,
// how far the wheel goes, and where a scale has its ticks and labels. Nothing here knows of windows.
//
// Every function answers every argument. Positions are whole pixels from the start of the track; what does not fit into
// one is cut to the range of int, and what is not a number is position 0.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

// What a slider's values are. Any other number than these is taken and means: positions are values cut to whole pixels,
// every value is allowed, the wheel moves nothing, there is no scale.
enum eHPotType : int {
    eHPotType_Linear = 0,         // continuous, on a grid of `step`
    eHPotType_NonLinear = 1,      // the entries of a list
    eHPotType_LinearRegions = 2,  // piecewise linear between the entries of a list, each region as long as any other
    eHPotType_ColorSlider = 3,    // as NonLinear, with a scale of its own
};

namespace kx::hpot {

// What the values of a slider may be. A host's lists arrive here checked: every number is finite.
struct Scale {
    eHPotType type = eHPotType_Linear;  // which of the following counts
    double minimum = 0;                 // at the left end of the track
    double maximum = 100;               // at the right end; less than the minimum on a reversed scale
    double step = 0;                    // the grid, 0 for none
    double wheelStep = 10;              // linear: what one wheel unit changes
    double wheelStepOverride = 0;       // if not 0, in the place of wheelStep
    std::vector<double> values;         // the list, or the bounds of the regions
    std::vector<double> regionSteps;    // one a region: where the scale has its small ticks

    // Whether the values are the entries of a list.
    bool IsList() const noexcept { return type == eHPotType_NonLinear || type == eHPotType_ColorSlider; }
};

// The value that a slider holds, and which entry of the list it is.
struct Held {
    double value = 0;  // as the host sees it
    int index = 0;     // 0 for what is no list
};

// Entries or units that one turn of the wheel moves.
struct Granularity {
    int ctrl = 1;   // with Ctrl held
    int plain = 1;  // with neither
    int shift = 5;  // with Shift held

    // The three; null pointers are skipped.
    void Get(int* ofCtrl, int* ofPlain, int* ofShift) const noexcept {
        if (ofCtrl) *ofCtrl = ctrl;
        if (ofPlain) *ofPlain = plain;
        if (ofShift) *ofShift = shift;
    }
};

// A number cut to a whole one, saturating at the range of int; 0 for what is not a number.
KXDEVUI_API int Truncated(double value) noexcept;

// The value moved into the interval between minimum and maximum, whichever of them is larger.
KXDEVUI_API double Clamped(const Scale& scale, double value) noexcept;

// The entry of the list nearest to the value, of two equally near the later one; 0 for an empty list.
KXDEVUI_API int NearestEntry(const Scale& scale, double value) noexcept;

// Where a value stands on a track of `trackLength` pixels. Values outside the range stand outside the track. Equal
// bounds put everything to 0; regions need two bounds, and are proportional without them.
KXDEVUI_API int ValueToThumbPos(const Scale& scale, double value, int trackLength) noexcept;

// The raw value at a position, on a scale of equal pixels: the reverse of a proportional ValueToThumbPos, kept in the
// range. A track without length answers with the minimum.
KXDEVUI_API double ThumbPosToRaw(const Scale& scale, int position, int trackLength) noexcept;

// The value that the slider allows for a raw one, and its entry. `fromTrack` says that a value of regions comes from
// ThumbPosToRaw and is first led into its region. With `stick` a raw value whose nearest entry is the one held goes on
// to the neighbour on its side of the held value. A step of 0 and an empty list leave the value as it is, and so does
// what could only be answered with a number that is not finite. A result may lie outside the range: the grid starts at
// the minimum and need not meet the maximum.
KXDEVUI_API Held ThumbPosToValue(const Scale& scale, double value, bool fromTrack, const Held& held,
                                 bool stick) noexcept;

// The value that so many wheel units lead to: wheel steps on a linear scale, entries of a list, and on regions steps
// that stop at each bound. Never outside the range; without a list to move in, the held value.
KXDEVUI_API double CalculateMove(const Scale& scale, const Held& held, int steps) noexcept;

// ---- The scale that is drawn ---------------------------------------------------------------------------------------

// A tick, and the text below it.
struct Tick {
    int position;        // on the track
    bool major;          // long rather than short
    std::wstring label;  // may be empty
    int labelLeft;       // where the text begins, on the track; negative to the left of its start
};

// How much room a scale has, in pixels on the screen.
struct TickSpace {
    int trackLength;                                  // of the track
    int before;                                       // what labels may take beyond the start of the track
    int after;                                        // and beyond its end
    int labelGap;                                     // at least, between labels
    int tickGap;                                      // at least, between ticks
    std::function<int(const std::wstring&)> widthOf;  // of a text
};

// The ticks of a scale, from left to right: on a linear scale at round values (1, 2 or 5 times a power of ten), as
// close as their labels allow, with finer ones between them; on a list at the entries; on regions at the bounds and the
// region steps. No two labels come nearer than the gap, none leaves the room.
KXDEVUI_API std::vector<Tick> Ticks(const Scale& scale, const TickSpace& space);

// A value that a host wants to be marked on a scale.
struct Mark {
    double value;             // where
    bool isLabelled;          // with its value below the tick
    std::wstring label = {};  // in the place of its value
};

// The ticks of a scale that has them at the marks alone, from left to right: one at each mark, however close they come,
// but one a pixel, and long where it is labelled. Labels stand as those of Ticks do; one that finds no room moves
// somewhat to the right, with two thirds of the gap, or is left out.
KXDEVUI_API std::vector<Tick> MarkTicks(const Scale& scale, std::span<const Mark> marks, const TickSpace& space);

// One text for each value, in the shortest form that tells different values apart and shows each to within half a
// percent of itself and a twentieth of the distance to its neighbour. No zeros trail a decimal point; very large and
// very small values come as "2e7".
KXDEVUI_API std::vector<std::wstring> Labels(std::span<const double> values);

}  // namespace kx::hpot
