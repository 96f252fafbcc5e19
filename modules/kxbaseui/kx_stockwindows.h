// Internal to kxbaseui: the platform's own windows, as far as the zoom has to know them.
//
// Each is known by the name of its class. Its class style tells nothing: that differs between the versions of the
// common controls.
#pragma once

#include <windows.h>

#include <array>

#include <kxbaseui/kx_windowdims.h>

namespace kx {

WindowKind KindOf(HWND window) noexcept;

// The window is one that sizes or places the windows in it itself, whenever it is sized.
bool LaysOutItsChildren(HWND window) noexcept;
// The window is one of those: its parent places it.
bool IsPlacedByParent(HWND window, HWND parent) noexcept;
// Adds a class to those of the platform whose windows do so.
void AddOwnLayout(const wchar_t* windowClass);

// Where it is, as SetDims wants it: of dialogs and top-level windows the client area's size, of a drop-down the height
// of its list alone.
Dims MeasureWindow(HWND window, WindowKind kind) noexcept;
// With the list of a drop-down, as a template gives it.
long WholeHeight(HWND window, WindowKind kind) noexcept;
Dims ZoomedDims(HWND window, const WindowDims::Entry& known, double zoom) noexcept;
void SetDims(HWND window, const WindowDims::Entry& known, const Dims& target, UINT flags) noexcept;
// The window is a list box of whole rows, and its height is none: it was sized before it had its font.
bool IsRagged(HWND window) noexcept;

// Gives a window its font for another zoom. The platform's controls forget with it margins and heights of rows that
// they were given: those are brought from one zoom to the other.
using InnerMeasures = std::array<InnerMeasure, 2>;
void SetFontKeeping(HWND window, WindowKind kind, HFONT from, HFONT to, double fromZoom, double toZoom,
                    InnerMeasures& inner) noexcept;

long RoundAway(double value) noexcept;

}  // namespace kx
