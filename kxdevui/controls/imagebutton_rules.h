// The rules of the image button, without windows.
#pragma once

#include <windows.h>

#include <kxdevui/controls/devgui_imagebutton.h>
#include <kxdevui/framework/kxdevui_api.h>

namespace kx::imagebutton {

// What stands in a button; all empty but `body` where there is no room.
struct Places {
    // What a click presses, and right of it what opens the menu.
    RECT body;
    RECT arrow;
    // Within the body.
    RECT image;
    RECT text;
};

// What of it there is.
struct Contents {
    // Where the text stands, and the pixels of a line of it.
    EKxButtonText text = EKxButtonText::None;
    long textHeight = 0;
    // The rest.
    bool hasImage = true;
    bool hasMenu = false;
};

// Where that stands in a button of this size, in pixels. An image is square, and alone in the middle; text without an
// image fills the body.
KXDEVUI_API Places Arrange(SIZE client, const Contents& contents, double zoom);

// How a button is asked to look, and which of its images shows that.
struct Look {
    // Each on its own.
    bool enabled = true;
    bool pressed = false;
    bool on = false;
    bool hovered = false;
};
// The first of those that fit which there is: disabled, pressed, checked, hovered, and the normal one otherwise.
KXDEVUI_API int ImageOf(const KxButtonImages<int>& images, const Look& look);

}  // namespace kx::imagebutton
