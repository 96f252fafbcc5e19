// Group boxes of panels that paint their own frame.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>
#include <kxsystem/kx_string.h>

// A frame around controls, with a title in its upper edge.
struct SKxGroupBox {
    // The line, in pixels of the DC; the title is centred on its upper edge. An empty rectangle draws nothing.
    RECT frame{};
    // Cut with "..." where it would leave its room. Empty: a closed frame.
    CKxStringW title;
    // Where the title begins, in pixels from the left end of the frame.
    long titleOffset = 8;
    // Where it must have ended, likewise; 0: where the frame ends.
    long titleEnd = 0;
};

// How a box is drawn.
enum EKxGroupBoxFlags : unsigned {
    eKxGroupBox_Mnemonic = 1,  // '&' underlines the letter after it
    eKxGroupBox_Disabled = 2,  // where the platform has another frame for it
    eKxGroupBox_NoLine = 4,    // with the first: not now (KX_ShowsMnemonics)
};

// The height of a title in the font selected into the DC, half of which is where the line of a frame belongs.
KXBASEUI_API long KX_GroupBoxTitleHeight(HDC dc);

// Draws the box with the font, the text colour and the background colour of the DC; the line is that of the platform's
// group boxes where the scheme is the system's and they have a visual style, or else in the scheme's colour of shadows.
// `flags` are EKxGroupBoxFlags; without any, the title is shown as it stands.
KXBASEUI_API void KX_GroupBoxDraw(HDC dc, const SKxGroupBox& box, unsigned flags);
