// What the sliders have in common beside their rules: how wheel and keys count, how scale and thumb are drawn.
// Internal.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include <kxdevui/controls/hpot_rules.h>
#include <kxdevui/controls/hpot_thumb.h>
#include <kxdevui/framework/ui_gdi.h>

namespace kx::hpot {

// ---- Wheel and keys ------------------------------------------------------------------------------------------------

// What the modifiers choose: Ctrl before Shift before none. The keys of a wheel message count beside those held now: a
// host that relays a turn may have left the former out.
int Chosen(const Granularity& granularity, WPARAM wheelKeys);

// What a turn of the wheel (wParam of WM_MOUSEWHEEL) moves: its direction times the granularity, whatever the delta's
// size; 0 for none.
int WheelSteps(const Granularity& granularity, WPARAM wParam);

// How a key moves a thumb: by how much, and whether up (1) or down (-1).
struct KeyMove {
    enum Size { Unit, Page, End } size;
    int direction;
    bool toSide;  // rather right or left
};

// The move of a virtual key; empty for a key that moves nothing.
std::optional<KeyMove> MoveOf(WPARAM key);

// ---- Colours -------------------------------------------------------------------------------------------------------

// Rows and columns of the sliders' table of colour indexes.
enum Piece { kTrack, kTrackBorder, kTicks, kLabels, kThumbBody, kThumbEdge };
enum State { kEnabled, kActive, kDisabled };
using ColorTable = int[6][3];

// `percent` of the way from one colour to another.
COLORREF Mixed(COLORREF a, COLORREF b, int percent);

// The colour that a host has named: a COLORREF, or an entry of the GUI colour scheme.
COLORREF NamedColor(unsigned long color, bool ofScheme);

// With a colour index.
void Fill(HDC dc, const RECT& rect, int color);

// From the left end to the right one.
void FillGradient(HDC dc, const RECT& rect, COLORREF from, COLORREF to);

// Zoomed pixels, at least one.
long ZoomedLine(double pixels);

// ---- The scale -----------------------------------------------------------------------------------------------------

// A bitmap as large as a window's client area, to draw a scale in; the GUI font is selected. Empty when the window has
// no client area or the platform no memory.
class ScaleCanvas {
public:
    // For this window as it is now.
    explicit ScaleCanvas(HWND window);
    // Whether there is a bitmap; the DC that it is selected into.
    explicit operator bool() const noexcept { return m_dc && m_bitmap; }
    operator HDC() const noexcept { return m_dc.get(); }
    // The client area; the measures of the font; the bitmap, which stays the canvas's.
    const RECT& Client() const noexcept { return m_client; }
    const TEXTMETRICW& Font() const noexcept { return m_font; }
    HBITMAP Bitmap() const noexcept { return m_bitmap.get(); }
    // Gives the bitmap away; the canvas is empty then.
    HBITMAP Release();

private:
    RECT m_client{};
    TEXTMETRICW m_font{};
    ui::Bitmap m_bitmap;  // outlives the DC that it is selected into
    ui::MemoryDC m_dc;
};

// A finished scale, ready to be copied.
struct ScaleImage {
    ui::Bitmap bitmap;  // empty when there is no scale
    ui::MemoryDC dc;    // it is selected into
    SIZE size{};        // of it
    bool stale = true;  // something has changed since it was drawn

    // In the place of the old one; empty for none.
    void Take(ui::Bitmap made);
    // To the upper left corner.
    void CopyTo(HDC target) const;
};

// Where things stand below each other, from the track to the labels.
struct Rows {
    RECT track;       // behind the thumb
    long ticks;       // their top
    long tickLength;  // of the long ones
    long labels;      // their top; -1 when there is no room for them
};

// For a track of this height behind a thumb with its image there, in a window that ends at `bottom`.
Rows RowsOf(const RECT& thumb, long trackLeft, long trackLength, long trackHeight, long bottom,
            const TEXTMETRICW& font);

// The room of a scale whose track starts there, for texts in the DC's font.
TickSpace SpaceIn(HDC dc, long trackLeft, long trackLength, long right);

// The ticks, and the labels where the rows have room for them.
void DrawScale(HDC dc, const std::vector<Tick>& ticks, const Rows& rows, long trackLeft, int tickColor, int labelColor);

// ---- The thumb -----------------------------------------------------------------------------------------------------

// What a thumb is doing.
enum Look : int { kLookNormal, kLookHovered, kLookDragged, kLookDisabled };

// How it looks then.
ThumbStyle StyleOf(SIZE image, Look look, bool focused, const ColorTable& colors);

// A thumb's image and the track, which is shorter than the window by that; in pixels on the screen.
struct Track {
    SIZE image{};  // even in width, so that the hot spot is its middle
    long left = 0;
    long length = 0;
};

// For a window and the nominal height of its thumb, negative for half of the window's, of which it takes what there is
// room for; empty for what is no window.
std::optional<Track> TrackIn(HWND window, long nominalThumb, long nominalHeight);

// Where the image stands for a position, moved onto the track; `first` is its corner at the position 0.
RECT ThumbPlace(POINT first, long position, long trackLength, SIZE image);

}  // namespace kx::hpot
