// The rules of the image button, without windows.
#pragma once

#include <windows.h>

#include <kxdevui/controls/devgui_imagebutton.h>
#include <kxdevui/framework/kxdevui_api.h>

namespace kx::imagebutton {

// What stands in a button; all empty but `body` where there is no room.
struct Places {
    RECT body;   // what a click on presses
    RECT arrow;  // what opens the menu, right of it
    RECT image;
    RECT text;
};

// What of it there is.
struct Contents {
    EKxButtonText text = EKxButtonText::None;  // where it stands
    bool hasImage = true;
    bool hasMenu = false;
    long textHeight = 0;  // pixels of a line
};

// Where that stands in a button of this size, in pixels. An image is square, and alone in the middle; text without an
// image fills the body.
KXDEVUI_API Places Arrange(SIZE client, const Contents& contents, double zoom);

// How a button is asked to look, and which of its images shows that.
struct Look {
    bool enabled = true;
    bool pressed = false;
    bool on = false;
    bool hovered = false;
};
// The first of those that fit which there is: disabled, pressed, checked, hovered, and the normal one otherwise.
KXDEVUI_API int ImageOf(const KxButtonImages<int>& images, const Look& look);

}  // namespace kx::imagebutton
