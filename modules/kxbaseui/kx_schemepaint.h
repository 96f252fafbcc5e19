// Internal to kxbaseui: what the windows that are painted in a scheme have in common.
#pragma once

#include <windows.h>

namespace kx {

// Whether the scheme is one of our own.
bool IsOwnScheme();

bool IsClass(HWND window, const wchar_t* name);

// A window's paint DC with its font selected and text drawn transparently.
class SchemePaintDC {
public:
    explicit SchemePaintDC(HWND window);
    ~SchemePaintDC();
    SchemePaintDC(const SchemePaintDC&) = delete;
    SchemePaintDC& operator=(const SchemePaintDC&) = delete;
    operator HDC() const { return m_dc; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

// The frame of a rectangle, in a colour of the scheme (COLOR_BTNSHADOW, ...).
void FrameInScheme(HDC dc, const RECT& rect, int color);

// The same around a whole window, its frame included, or so many pixels within: where the platform draws an edge in
// colours of its own.
void FrameWindowInScheme(HWND window, int color, int inset = 0);

enum class Toward { Left, Right, Up, Down };

// A small arrow in the middle of a box.
void DrawSchemeArrow(HDC dc, const RECT& box, Toward toward, int color);

}  // namespace kx
