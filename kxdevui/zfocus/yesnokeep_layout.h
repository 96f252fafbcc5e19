// Where everything stands in the confirmation dialog of the Z stack panel, as a function of sizes in pixels.
#pragma once

#include <windows.h>

#include <array>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::zstack {

// What has been measured.
struct YesNoKeepSizes {
    SIZE icon, question, check;
    std::array<SIZE, 3> buttons;
    // System metrics of the frame.
    int edgeX, edgeY, captionHeight;
};

// Rectangles in client coordinates, and the size of the whole dialog.
struct YesNoKeepLayout {
    RECT icon, question, check;
    std::array<RECT, 3> buttons;
    SIZE dialog;
};

// The width of what stands beside the icon: the question's, or that of the row of buttons where it is wider. The check
// box has it too, and, where its text wraps then, the height for that.
long YesNoKeepWidth(const YesNoKeepSizes& sizes);

// Icon at the left, question beside it, check box under the question, the buttons in one row under that and centred
// under the question; 10 pixels between all.
KXDEVUI_API YesNoKeepLayout PlaceYesNoKeep(const YesNoKeepSizes& sizes);

}  // namespace kx::zstack
