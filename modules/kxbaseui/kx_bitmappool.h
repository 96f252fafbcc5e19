// The images of panels: SVG, from the resource module or in memory, rasterised once for each size and kept.
//
// The images by name are resources of type RCDATA in "r7_w32_baseresources.dll", beside this module: SVG as UTF-8. A
// host gives other images with a DLL of its own in that place, or one by one with ReplaceImage. docs/images.md says
// what of SVG is drawn, and lists the names.
//
// Everything here belongs to the GUI thread.
#pragma once

#include <windows.h>

#include <cstddef>

#include <kxbaseui/kxbaseui_api.h>
#include <kxsystem/kx_string.h>

// The pool of the process; static functions only.
class CKxBitmapPool {
public:
    // The index that no image has.
    static constexpr int NoImage = 0;

    // The bounds of what is kept; the image that was not drawn for the longest time goes first. Each costs two GDI
    // objects. Images longer than MaxSide pixels are not drawn.
    static constexpr int MaxImages = 256;
    static constexpr std::size_t MaxBytes = 16 << 20;
    static constexpr int MaxSide = 1024;

    // The index of the image of that name, the same whenever it is asked for. NoImage for a null or empty name, and
    // when there is no such image, which is logged. Names are compared without regard to letter case.
    KXBASEUI_API static int AddImageBaseUI(const wchar_t* name);

    // The text of the image of that name, to be changed (CKxSvgStringAPI) and drawn with DrawSVGImage. False, and `svg`
    // left alone, when there is none.
    KXBASEUI_API static bool LoadSVGBaseUI(const wchar_t* name, CKxStringA& svg);

    // Draws an image of AddImageBaseUI as large as it fits into `place` (pixels), its proportions kept, in the middle,
    // over what is there. False, and nothing drawn, for an index without image, an empty or inverted place, one longer
    // than MaxSide, a null DC, and an image that is malformed. `currentColor` in an image is the scheme's colour of
    // button texts. Not enabled, it is drawn grey and pale.
    KXBASEUI_API static bool DrawOptimalImage(HDC dc, int image, const RECT& place, bool enabled = true);

    // The same for an image in memory. A text that is drawn again in the same size is found again; only the first time
    // costs the reading of it.
    KXBASEUI_API static bool DrawSVGImage(HDC dc, const CKxStringA& svg, const RECT& place, bool enabled = true);

    // From now on `svg` stands for the image of that name, known before or not, whether drawn by index or loaded. An
    // empty text gives the resource module's image back. A null or empty name does nothing. Panels that stand keep what
    // they have loaded; they are to be told to load anew.
    KXBASEUI_API static void ReplaceImage(const wchar_t* name, const CKxStringA& svg);

    // What the pool holds and has done.
    struct Figures {
        std::size_t images = 0;             // kept, those of malformed texts included
        std::size_t bytes = 0;              // of their pixels
        unsigned long long rasterized = 0;  // since the process began
    };
    // The figures of now.
    KXBASEUI_API static Figures GetFigures();

    // Lets go of all that is kept. Indexes stay valid.
    KXBASEUI_API static void Clear();
};
