// The rules of the colour slider as functions of values: which entry of the table a value becomes, how two thumbs keep
// their order, how far the wheel moves them, and where the parts of the control stand. Nothing here knows of windows.
#pragma once

#include <span>

#include <kxdevui/framework/kxdevui_api.h>

// How the scale is drawn, and whether there is one thumb or two.
enum EColorSliderType : int {
    eColorSliderType_HorizontalRainbow = 0,  // each column in the colour of its wavelength
    eColorSliderType_VerticalRainbow = 1,    // each row
    eColorSliderType_Gradient = 2,           // from one colour to another
    eColorSliderType_LineDraw = 3,           // a line, up to the thumb in one colour, beyond it in another
    eColorSliderType_Range = 4,              // a line with two thumbs: a range in the place of a power
};

// Where name, slider and edit box stand.
enum EColorSliderLayoutType : int {
    eColorSliderLayout_TwoRows = 0,     // name and edit box above the slider
    eColorSliderLayout_OneRow = 1,      // name, slider, edit box, unit
    eColorSliderLayout_OneRowSpin = 2,  // the same with arrows at the edit box
    eColorSliderLayout_ColorPoint = 3,  // two rows, with a coloured point before the name
};

// One entry of the table of allowed values.
struct SColorSliderValue {
    double value;         // nanometres for a rainbow, anything else otherwise
    bool isMark;          // has a tick on the scale
    bool isMarkWithText;  // has a tick with its value below it
};

namespace kx::colorslider {

// ---- Values --------------------------------------------------------------------------------------------------------

// The entry that a value becomes: from the first on, the first that is nearer to the value than its successor; where
// there is none, the last. Two neighbours equally near give the later one. In a sorted table that is the nearest entry,
// and the nearest end for what lies outside; infinities lie outside, and what is not a number is the last entry. 0 for
// an empty table.
KXDEVUI_API int NearestEntry(double value, std::span<const double> table) noexcept;

// The index moved by so many entries, kept in the table; 0 for an empty one.
KXDEVUI_API int MovedIndex(int index, int steps, int count) noexcept;

// A value and which entry of the table it is.
struct Entry {
    double value = 0;  // of the entry
    int index = 0;     // in the table
};

// Two thumbs.
struct Range {
    Entry minimum;  // of the left thumb
    Entry maximum;  // of the right one
};

// Both values as entries of the table, which is not empty, in whatever order they come to be.
KXDEVUI_API Range Snapped(double minimum, double maximum, std::span<const double> table) noexcept;

// Which of two thumbs makes room when the minimum is larger than the maximum: it goes to where the other stands.
enum class GivesWay { Minimum, Maximum };
KXDEVUI_API Range Ordered(const Range& range, GivesWay thumb) noexcept;

// The range for the values asked for by the host, where `heldMinimum` was the minimum before: one that asks for the
// same minimum has moved the maximum, and the minimum makes room; otherwise the maximum does.
KXDEVUI_API Range RangeFor(double minimum, double maximum, double heldMinimum, std::span<const double> table) noexcept;

// The range after one thumb was moved by so many entries; a thumb that is met goes along. The table is not empty.
enum class Thumb { Minimum, Maximum };
KXDEVUI_API Range MovedRange(const Range& range, Thumb thumb, int steps, std::span<const double> table) noexcept;

// Which thumb a pointer means, of two at these positions: the nearer; where both are as near, the one on its side, and
// of two in the same place under the pointer the one that has room to move on a track of that length.
KXDEVUI_API Thumb ThumbFor(long pointer, long minimum, long maximum, long trackLength) noexcept;

// ---- Layout: unzoomed pixels in the control ------------------------------------------------------------------------

// What the layout depends on. Text widths are 0 for empty texts.
struct LayoutRequest {
    EColorSliderType type = eColorSliderType_HorizontalRainbow;  // one edit box or two
    EColorSliderLayoutType layout = eColorSliderLayout_TwoRows;  // one that is not known counts as two rows
    int sliderWidth = 0;                                         // of the scale
    int sliderHeight = 0;                                        // of the strip of colours
    int nameTextWidth = 0;                                       // of the name
    int unitTextWidth = 0;                                       // of the unit
    bool showEdit = false;        // whether there are edit boxes, and with them unit and arrows
    int editWidth = 0;            // of one box
    int editHeight = -1;          // of the single box; -1 for the usual one
    bool editAtPosition = false;  // two rows: the box stands at (editX, editY), and the host shows the name
    int editX = 0;                // see editAtPosition
    int editY = 0;                // see editAtPosition
};

// A part of the control; one that is not wanted has no width.
struct Place {
    int x = 0;   // of its left edge
    int y = 0;   // of its top
    int cx = 0;  // width
    int cy = 0;  // height

    // Whether there is such a part.
    bool IsWanted() const noexcept { return cx > 0; }
};

// Where the parts stand.
struct Layout {
    int width = 0;              // of the control
    int height = 0;             // of the control
    int nameColumn = -1;        // in one row: the width of the name's column; otherwise, as the other columns, -1
    int editColumn = -1;        // where the slider ends and the (first) edit box begins
    int secondEditColumn = -1;  // range: where the second edit box begins
    int unitColumn = -1;        // where the unit begins
    Place thumb;                // slider and scale
    int thumbSize = 0;          // the height of the thumb's image
    Place name;                 // the name's label
    Place unit;                 // the unit's label
    Place edit;                 // the edit box; of a range, that of the maximum
    Place minimumEdit;          // of a range, that of the minimum
    Place spin;                 // the arrows
};

// Lays the control out. Sizes are moved into 0 to 16,000 before.
KXDEVUI_API Layout LayOut(const LayoutRequest& request) noexcept;

}  // namespace kx::colorslider
