// The rules of the mode shutter as functions of values: its modes' names, and the marks on the scale of apertures.
// Nothing here knows of windows.
#pragma once

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::modeshutter {

// How many modes there are; they count from 0.
inline constexpr int kModes = 3;

// "Fast", "Soft", "Aperture"; null for any other number.
KXDEVUI_API const wchar_t* ModeText(int mode) noexcept;

// How a step stands on the scale: not at all, as a tick, as a tick with its value below.
enum class Mark { None, Tick, Label };

// Of the step with this index among `count`: the first and the last have labels, those at a quarter, a half and three
// quarters of the count, rounded down, are ticks. None for an index that is not there.
KXDEVUI_API Mark MarkOf(int index, int count) noexcept;

}  // namespace kx::modeshutter
