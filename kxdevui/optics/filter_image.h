// The image of a filter, as a function of its colours.
#pragma once

#include <span>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {

// Puts colours (0x00BBGGRR) into a template: the first in place of "#00FF01", the second in place of "#00FF02", and so
// on, written "#RRGGBB". All at once: a colour that reads like a placeholder stays what it is. Nine colours at most.
KXDEVUI_API CKxStringA ColorBands(CKxStringA svg, std::span<const unsigned long> colors);

}  // namespace kx::ui
