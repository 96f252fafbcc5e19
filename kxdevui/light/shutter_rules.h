// The rules of the shutter as functions of values: where its title and its button stand, how wide it makes itself,
// which title and which image belong to it. Nothing here knows of windows.
//
// Sizes are unzoomed pixels where nothing else is said; those given are cut to what a window can have (-32768 to
// 32767).
#pragma once

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::shutter {

// Where something stands in the control.
struct Place {
    // Its upper left corner, and its size.
    long x = 0;
    long y = 0;
    long width = 0;
    long height = 0;
};

// Where title and button stand.
struct Layout {
    // Both in the control's client area.
    Place title;
    Place button;
};

// The title to the left of a button of 24 by 24. `titleWidth` below 0 is what the button leaves.
KXDEVUI_API Layout TitleLeft(long width, long height, long titleWidth) noexcept;

// The title above it, over the whole width. `titleHeight` below 0 is 16.
KXDEVUI_API Layout TitleAbove(long width, long titleHeight) noexcept;

// How wide a shutter makes itself for its title, and how wide the title is then.
struct Width {
    // The title's may be below 0, where there is room for the button alone.
    long control;
    long title;
};
// `text` is the title's width in zoomed pixels. Of a minimum above the maximum, the minimum counts.
KXDEVUI_API Width FitWidth(long text, int minimum, int maximum, double zoom) noexcept;

// "EPI", "DIA", "Aux1", "Aux2" for the types 0 to 3; null for any other.
KXDEVUI_API const wchar_t* DefaultTitle(int type) noexcept;

// The name of the image: for the types 0 and 1 with the way of the light, for any other without. While a camera
// acquires, a closed shutter wears a warning.
KXDEVUI_API const wchar_t* ImageName(int type, bool open, bool grabberActive) noexcept;

}  // namespace kx::shutter
