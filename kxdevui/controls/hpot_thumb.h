// The thumb of the sliders: the image of the base resources module in any size and colour.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::hpot {

// The image that thumbs are made from, large, to be reduced. `light` is the brightness multiplied by `alpha`.
struct HandleImage {
    int width = 0;                    // pixels
    int height = 0;                   // pixels
    std::vector<std::uint8_t> light;  // rows from the top
    std::vector<std::uint8_t> alpha;  // the same
};

// Reads the bitmap "BMP_HPOT_HANDLE" of a resource module, given by its path. When the module, the bitmap or the memory
// is not there, or the bitmap is none of 32 bits a pixel, that is logged and a plain pointer comes instead.
KXDEVUI_API HandleImage ReadHandleImage(const wchar_t* module);

// How a thumb is to look.
struct ThumbStyle {
    SIZE size;      // of the image with its transparent margin, pixels on the screen
    COLORREF body;  // in the place of the image's white
    COLORREF edge;  // in the place of its black
    COLORREF ring;  // around it, for the focus
    bool hasRing;   // whether it has one
};

// Draws a thumb with its top left corner at this place. Each style is made once and kept; the least recently used go
// when there are many. An empty or huge size draws nothing.
KXDEVUI_API void DrawThumb(HDC dc, POINT at, const ThumbStyle& style);

}  // namespace kx::hpot
