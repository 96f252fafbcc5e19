// The fonts of the user interface.
//
// One face in two weights, at the size that a zoom asks for. Fonts are made once for each face, weight and pixel height
// and are kept, so a window may hold one for as long as it lives.
#pragma once

#include <windows.h>

#include <kxbaseui/kxbaseui_api.h>

// The default GUI font (8 point at 96 dpi) and its bold form, at the current GUI zoom.
KXBASEUI_API HFONT KX_GetDefaultGuiFont();
KXBASEUI_API HFONT KX_GetDefaultGuiFontBold();

// The same at a given zoom, 1.0 being 100 %. A zoom outside CKxGUILayoutManager's range is moved to its nearer end, one
// that is not a number counts as 1.
KXBASEUI_API HFONT KX_GetDefaultGuiFontZoom(double zoom);
KXBASEUI_API HFONT KX_GetDefaultGuiFontBoldZoom(double zoom);

// The counterpart of a font at another zoom: the same face, weight and slant with the height scaled from `fromZoom` to
// `toZoom`. For a font that this module made, its own unzoomed height counts and not `fromZoom`, so that zooming back
// and forth ends with the very same font. Null, or a handle that is no font, gives null.
KXBASEUI_API HFONT KX_GetFontAtZoom(HFONT font, double fromZoom, double toZoom);

// The same face, weight and slant in characters of so many pixels, at least 1, which are its unzoomed height from now
// on. Null, or a handle that is no font, gives null.
KXBASEUI_API HFONT KX_GetFontOfHeight(HFONT font, long pixels);
