// CKxDevUI_HPot: the horizontal slider, a potentiometer laid flat.
#pragma once

#include <windows.h>

#include <map>
#include <optional>

#include <kxdevui/controls/hpot_rules.h>
#include <kxdevui/framework/devgui_base.h>

namespace kx::ui {
struct Message;
}

// A mark on the scale of a slider, such as a calibrated value.
struct SKxDevUI_HPotMarker {
    double value = 0;   // where it stands
    int color = 18;     // a colour index of kx_colors.h; 18 is that of texts
    bool used = false;  // whether it is shown
};

// A thumb on a track above a scale with ticks and labels. The values are continuous, with or without a grid, the
// entries of a list, or piecewise linear between region points; hpot_rules.h has the rules as functions. The scale may
// be reversed, with its largest value to the left.
//
// The user drags the thumb, clicks beside it, turns the wheel, or uses the keys while the slider has the focus: arrows
// are wheel units, towards the side they point to, Page Up and Page Down as many as Shift makes of one, Home and End
// the ends. While the mouse moves the thumb, OnHPotChange is asked for each new value and can refuse it; when a change
// is complete, OnHPotDragDrop tells so. A host that does not derive gets both as WM_HSCROLL in the parent window, where
// the answer 0, also the default procedure's, refuses a value.
//
// Numbers given must be finite: a list or range with another is refused and logged, another step counts as 0, a value
// that is not a number is ignored.
//
// At first the slider is linear from 0 to 100 without a grid, and holds 0. Pixels are the screen's but for the nominal
// size, which is unzoomed.
class KXDEVUI_API CKxDevUI_HPot : public CKxDevUI_Base {
public:
    // Linear from 0 to 100, without a window.
    CKxDevUI_HPot();
    // The copy refers to the same window; the window's messages go on to the object that made it.
    CKxDevUI_HPot(const CKxDevUI_HPot& other) = default;
    CKxDevUI_HPot& operator=(const CKxDevUI_HPot& other) = default;
    // Destroys the window, unless that belongs to another object, of which this is a copy.
    ~CKxDevUI_HPot() override;

    // ---- The window ----

    // A slider at (x, y) in the parent's client area. A negative cx or cy keeps the nominal size, and without one makes
    // the slider 150 by 40. The two flags are ignored: SetVisible and SetEnabled decide. An older window is destroyed.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
    // The same at (0, 0) with the nominal size.
    HWND Create(HWND parent);
    // Destroys the window; nobody is told.
    void Destroy();

    // Whether the user can move the thumb. A drag that is going on is abandoned.
    bool GetEnabled() override;
    void SetEnabled(bool enable) override;

    // Sets nominal and window size. `thumb` is the height of the thumb, unzoomed, -1 for half of cy; its width is half
    // of that, and the track is shorter than the window by it.
    void SetSize(long cx, long cy, long thumb);
    // The same; the thumb stays as it is unless the height changes, with which it becomes half of that.
    void ResizeWindow(long cx, long cy) override;

    // ---- The values: nobody is told of these, and the held value stays until SetValue ----

    // Stores the type and nothing else.
    void SetType(eHPotType type);
    // The range and steps of a linear slider; the type stays. `step` is the grid, 0 for none; `wheelStep` what a wheel
    // unit changes, or `wheelStepOverride` if that is not 0.
    void InitValues(double minimum, double maximum, double step, double wheelStep, double wheelStepOverride);
    // A list of values, copied, from the left end to the right; the type becomes 1. `extra` is kept for derived
    // sliders. Without values (a null pointer, a count below 1) the bounds and `extra` are 0.
    void InitValues(double* values, int count, double extra);
    // The bounds of regions, copied; the type becomes 2. `regionSteps` are count - 1, where the scale has its small
    // ticks (null: none); `step` is the grid inside every region and what a wheel unit changes.
    void InitValues(double* values, double* regionSteps, int count, double step);

    // Shows a value, the nearest that the slider allows; one within 0.001 of the held one changes nothing. OnHPotChange
    // is not asked, whatever `notify` says.
    void SetValue(double value, bool notify);
    double GetValue() const;

    // Brings value and thumb together. `fromValue`: the held value, moved into the range and onto the grid, places the
    // thumb. Otherwise the thumb's position, moved onto the track, gives the value; if that is a new one and `notify`
    // is set, OnHPotChange is asked, and without `notify` it is simply held. `redraw` repaints what has moved.
    void Update(bool fromValue, bool notify, bool redraw);

    // Whether the slider belongs to an acousto-optic filter, whose values are taken as they are given (SetValue); the
    // mouse keeps to the grid.
    void SetbAOTF(bool aotf);

    // ---- Mouse ----

    // Wheel units a notch with Ctrl, without modifier, with Shift held; at first 1, 1 and 5. Null pointers are skipped.
    void SetMouseWheelGranularity(int ctrl, int plain, int shift);
    void GetMouseWheelGranularity(int* ctrl, int* plain, int* shift) const;
    // One turn of the wheel, in whatever delta, is one unit times the granularity. True when the value changed; then
    // OnHPotDragDrop was called, and OnHPotChange was not. A disabled slider ignores the wheel.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

    // Whether the slider follows the pointer: shows that it is inside, and calls OnHoverForPad and UnHoverForPad. At
    // first it does. GetHovered tells whether the pointer is inside.
    void SetHover(bool hover);
    bool GetHover() const;
    bool GetHovered() const;

    // ---- Looks ----

    // Whether the slider shows what its parent paints behind static texts, at first, or the colour of panels.
    void SetTransparent(bool transparent);
    // A mark on the scale. One outside the range is not shown.
    void SetMarker(double value, int color, bool used);
    void SetMarkerUsed(bool used);

    // Makes the scale's bitmap when it is wanted and not there; makes it anew. Painting does the former by itself, and
    // every setter that changes the scale lets it be made anew.
    void CreateScale();
    void RecreateScale();
    // Sets the thumb's size, its hot spot and the track to what belongs to the window's size and the zoom. The image is
    // the bitmap "BMP_HPOT_HANDLE" of the module "r7_w32_baseresources.dll" beside the library, or a plain one.
    void CreateDefaultThumb();
    // Repaints the whole slider with the next WM_PAINT.
    void Redraw();

protected:
    // ---- Callbacks: each may destroy the window and the object ----

    // The user moves the thumb to another value. The override may alter the value; what it leaves there is held, or, if
    // it sets `skip` or leaves no finite number, the old one stays. Here: WM_HSCROLL with SB_THUMBTRACK and the value
    // cut to 16 bits goes to the parent, whose answer 0 sets `skip`.
    virtual void OnHPotChange(double& value, bool& skip);
    // A change is complete: a drag has ended, the wheel or a key has moved the thumb. Here: the same message with
    // SB_THUMBPOSITION.
    virtual void OnHPotDragDrop();
    // The left button was released over the slider, dragging or not. Last of all that the release causes.
    virtual void OnLeftButtonUp();
    // The pointer came in; went out.
    virtual void OnHoverForPad();
    virtual void UnHoverForPad();
    // The scale for each type: a bitmap as large as the client area, or smaller and then in its upper left corner,
    // which becomes the slider's. It shows the track, from m_trackLeft on m_trackLength pixels long, and all that the
    // thumb moves over. `enabled` chooses its colours. Null leaves the background bare.
    virtual HBITMAP CreateLinearBitmap(bool enabled);
    virtual HBITMAP CreateNonlinearBitmap(bool enabled);
    virtual HBITMAP CreateLinearRegionsBitmap(bool enabled);
    virtual HBITMAP CreateColorSliderBitmap(bool enabled);

    // The rules of hpot_rules.h for this slider. ThumbPosToValue makes the entry that it finds the current one.
    long ValueToThumbPos(double value) const;
    double ThumbPosToValue(double value, bool fromTrack);
    double CalculateMove(int steps) const;

    // The scale is to be made anew when it is painted next, which is not asked for here.
    void ScaleChanged();
    // The scale as it was drawn last, selected into a DC of the slider's, to be changed in place; null when it is to be
    // made anew, or has none.
    HDC ScaleDC() const;
    // The scale as the default factories draw it, each for its type: background, track, ticks, labels, marker.
    HBITMAP CreateScaleBitmap(bool enabled);
    HBITMAP CreateNonlinearScaleBitmap(bool enabled);
    HBITMAP CreateLinearRegionsScaleBitmap(bool enabled);
    // What the scale is drawn on. The brush is the parent's or the module's; null when the parent, asked for it, has
    // destroyed the slider.
    HBRUSH BackgroundBrush(HDC dc);
    // Where the thumb is drawn, at its position moved onto the track: its bitmap in client coordinates. The same with
    // what is drawn around it, a light's badge and the ring of a movement.
    RECT ThumbRect() const;
    RECT ThumbArea();

    // The window procedure, also of sliders derived from this one.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create; the sliders by window.
    static ATOM m_Atom;
    static std::map<HWND, CKxDevUI_HPot*> m_Instances;
    // Colour indexes (kx_colors.h) of the parts: enabled, under the pointer or dragged, disabled. The parts are the
    // track, its border, ticks, labels, the thumb's body and its edge.
    static const int m_pDefaultColors[6][3];

    // The values and the one held, with its entry; the thumb's position on the track, from its start.
    kx::hpot::Scale m_scale;
    kx::hpot::Held m_held;
    long m_thumbPos = 0;
    // The track, in client coordinates; the thumb's bitmap, the point of it that stands at its position, its top.
    long m_trackLeft = 0;
    long m_trackLength = 0;
    SIZE m_thumbImage{};
    long m_hotSpot = 0;
    long m_thumbTop = 0;
    // The thumb's nominal height, -1 for half of the slider's; what InitValues kept.
    long m_thumbSize = -1;
    double m_extra = 0;
    // A quick click makes the next snapping go to the neighbour of the current entry.
    bool m_stickToNeighbour = false;
    bool m_transparent = true;
    bool m_aotf = false;
    bool m_followHover = true;
    // The scale changes between where the thumb was and where it is.
    bool m_thumbLeavesTrace = false;
    SKxDevUI_HPotMarker m_marker;
    // What of the scale is filled when a host names the slider a light (devgui_readings.h), and where a measured value
    // is marked. A slider that draws its own scale says so.
    struct Lamp {
        // The strip of colours of the scale that was drawn last; whether it can be a light's.
        RECT strip{};
        bool isOne = true;
        // The colours of the lowest and the highest power: COLORREFs or, with `ofScheme`, entries of the GUI colour
        // scheme.
        unsigned long low = 31;
        unsigned long high = 31;
        bool ofScheme = true;
    };
    Lamp m_lamp;
    kx::hpot::Granularity m_granularity;

private:
    struct Inside;
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
};
