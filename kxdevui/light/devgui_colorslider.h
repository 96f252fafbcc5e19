// CKxDevUI_ColorSlider: a value, or a range, from a table of allowed values, chosen over a coloured scale.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <kxdevui/controls/devgui_editbox.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/light/colorslider_rules.h>

namespace kx::ui {
class Activity;
}

// One value (a power) or a pair of values (a range) out of a table, over a rainbow of wavelengths, a gradient or a
// line. A name, an edit box, a unit and arrows stand around the slider. colorslider_rules.h has its rules as functions.
//
// To make one: construct it, Init, choose the scale (SetHorizontalRainbow and its siblings), Create. Init may come
// again at any time, with another table, other texts, another type or layout. Derive from the class to hear of the
// user:
//
//     the user                  the host hears                                the veto
//     moves the thumb           OnPowerChanged for each new entry             keeps the old power
//     drops it, presses a key   OnPowerChanged, with what the thumb shows     brings the old power back
//     turns the wheel           OnPowerChanged if there is another entry      keeps the old power
//     types a value             OnPowerChanged, when it holds already         counts for nothing
//     uses the arrows           OnPowerChanged                                keeps the old power
//     lets go of the thumb      OnLeftButtonUp, last of all
//
// and in the range type, in the same places, OnRangeChanged, which asks nothing. A typed value is one that is entered
// with the Enter key or left with the focus, changed or not.
//
// The setters tell nobody. Every call of the host may re-initialise, destroy or delete the control. Sizes are unzoomed
// pixels except where the screen's are named; the place given to Create is on the screen, and the control makes itself
// as large as the zoom asks for.
class KXDEVUI_API CKxDevUI_ColorSlider : public CKxDevUI_Container {
public:
    // ---- The thumb of all types but the range ----

    // The slider inside: an HPot whose scale is the colour scale and whose values are the table's.
    class KXDEVUI_API CKxDevUI_ColorSliderHPot : public CKxDevUI_HPot {
    public:
        // Without owner: it has a scale, and tells nobody.
        CKxDevUI_ColorSliderHPot();

        // What the scale shows, and whom to tell. The wavelengths of columns, in nanometres, from the left end to the
        // right.
        void InitHorizontalRainbow(CKxDevUI_ColorSlider* owner, double fromNm, double toNm);
        // The wavelengths of rows, from the top to the bottom, over the part of the scale from one value to another;
        // where these two are equal, or no numbers, over all of it.
        void InitVerticalRainbow(CKxDevUI_ColorSlider* owner, double fromNm, double toNm, double fromValue,
                                 double toValue);
        // The colours (COLORREF) of the left and the right end.
        void InitGradient(CKxDevUI_ColorSlider* owner, unsigned long fromColor, unsigned long toColor);
        // The colours of the line below and above the thumb: COLORREFs or, with `scheme`, entries of the GUI colour
        // scheme (KX_GetVorGuiColor), which then follow it. `framed` gives the line a border.
        void InitLineDraw(CKxDevUI_ColorSlider* owner, unsigned long lowColor, unsigned long highColor, bool scheme,
                          bool framed);

        // The first and the last value of the table, and the mean distance of its entries; 0 where there are none.
        double GetMinValue() const;
        double GetMaxValue() const;
        double GetStep() const;

        // Only while the pointer is inside, and not when disabled; then true. One message is one turn, of the
        // granularity in entries.
        bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

    protected:
        void OnHPotChange(double& value, bool& veto) override;
        void OnHPotDragDrop() override;
        void OnLeftButtonUp() override;
        HBITMAP CreateColorSliderBitmap(bool enabled) override;

        // Paint the strip (x, y, w, h) of a bitmap that is selected into the DC. The rainbows are overlapping lines of
        // 3 pixels, a column or a row after the other, of which the last drawn is seen; w and h count up to the
        // bitmap's own size. Not finite wavelengths are black.
        void RenderHorizontalRainbowRect(HDC dc, HBITMAP bitmap, int x, int y, int w, int h, double fromNm,
                                         double toNm);
        void RenderVerticalRainbowRect(HDC dc, HBITMAP bitmap, int x, int y, int w, int h, double fromNm, double toNm);
        // The line in the middle of the strip; `at` is the column where its colour changes, from x on.
        void RenderLineDrawRect(HDC dc, int x, int y, int w, int h, int at);

    private:
        friend class CKxDevUI_ColorSlider;
        friend class CKxDevUI_ColorSliderRangeHPot;
        void Look(EColorSliderType type, CKxDevUI_ColorSlider* owner);
        void RenderStrip(HDC dc, HBITMAP bitmap, const RECT& strip);
        void Show(double value, bool redraw);
        void LineChanged();
        void MoveBy(int steps);

        CKxDevUI_ColorSlider* m_owner = nullptr;
        EColorSliderType m_look = eColorSliderType_HorizontalRainbow;
        double m_wavelengths[2] = {400, 700};
        double m_rows[4] = {400, 700, 0, 0};
        unsigned long m_gradient[2] = {RGB(0, 0, 0), RGB(255, 255, 255)};
        unsigned long m_line[2];
        bool m_lineOfScheme = true;
        bool m_lineFramed = false;
    };

    // ---- The two thumbs of the range type ----

    // A control of its own: two thumbs on a line. The values stand in proportion, as on every slider; the scale has the
    // owner's marks.
    //
    // The thumb nearer to the pointer is the hovered one: it follows a press, and the wheel moves it. With the focus,
    // the keys of the slider move one thumb, at first the minimum or the one last touched; Tab leads from one to the
    // other in a dialog.
    //
    // A drag of a thumb calls OnRangeChanged for each new entry with the range that is asked for, the minimum perhaps
    // the larger one; then both are snapped, and the minimum gives way: it stops at the maximum, and a maximum drawn
    // below it takes it along. The drop calls once more. The wheel and keys move, take the other thumb along, and then
    // call.
    class KXDEVUI_API CKxDevUI_ColorSliderRangeHPot : public CKxDevUI_Base {
    public:
        // Without values, range 0 to 0.
        CKxDevUI_ColorSliderRangeHPot();
        // Destroys the window.
        ~CKxDevUI_ColorSliderRangeHPot() override;
        CKxDevUI_ColorSliderRangeHPot(const CKxDevUI_ColorSliderRangeHPot&) = delete;
        CKxDevUI_ColorSliderRangeHPot& operator=(const CKxDevUI_ColorSliderRangeHPot&) = delete;

        // At (x, y) in the parent's client area; a negative cx or cy keeps the nominal size, and without one makes the
        // control 150 by 40. The two flags are ignored: SetVisible and SetEnabled decide. An older window is destroyed.
        HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
        // Destroys the window; nobody is told.
        void Destroy();
        // Whether the user can move the thumbs. A drag that is going on is abandoned.
        void SetEnabled(bool enable) override;

        // The allowed values, copied; null or a count below 1 is none. Not finite ones are logged and left out. The
        // range stays until SetRange.
        void InitValues(double* values, int count);
        // Whom to tell, and the colours of the line between the thumbs (low) and beyond them (high): COLORREFs or, with
        // `scheme`, entries of the GUI colour scheme.
        void InitLineDraw(CKxDevUI_ColorSlider* owner, unsigned long lowColor, unsigned long highColor, bool scheme);

        // Sets nominal and window size. `thumb` is the height of the thumbs, unzoomed, -1 for half of cy.
        void SetSize(long cx, long cy, long thumb);
        // The same; the thumbs stay as they are unless the height changes, with which they become half of that.
        void ResizeWindow(long cx, long cy) override;

        // Shows the entries nearest to two values, in whatever order they are; nothing without values or for what is
        // not a number. Null pointers are skipped.
        void SetRange(double minimum, double maximum);
        void GetRange(double* minimum, double* maximum) const;

        // Which thumb is hovered, at most one; whether any is.
        void SetHover(bool minimum, bool maximum);
        bool GetHover() const;

        // Entries a wheel message with Ctrl, without modifier, with Shift; at first 1, 1 and 5. Null pointers are
        // skipped.
        void SetMouseWheelGranularity(int ctrl, int plain, int shift);
        void GetMouseWheelGranularity(int* ctrl, int* plain, int* shift) const;
        // Moves the hovered thumb; true when there is one, which is then told. A delta of 0 and a disabled control do
        // nothing.
        bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

        // Brings range and thumbs together, by the next two. `fromValues`: the values place the thumbs. Otherwise the
        // thumbs give the values; new ones are told with `notify`, and simply held without. `redraw` repaints.
        void Update(bool fromValues, bool notify, bool redraw);
        void UpdatePixelsFromValues();
        void UpdateValuesFromPixels();
        // Makes the scale anew and repaints; repaints.
        void RecreateScale();
        void Redraw();

    protected:
        // The range has changed; what an override leaves in the arguments counts while a thumb is dragged. Here the
        // owner's OnRangeChanged is called.
        virtual void OnRangeChanged(double& minimum, double& maximum);

        // Makes the bitmap of the scale if something has changed since it was made, or in any case; the scale as a
        // bitmap, the caller's; its line.
        void CreateBitmaps(bool anew);
        HBITMAP CreateColorSliderRangeBitmap();
        void RenderLineDrawRangeRect(HDC dc, int x, int y, int w, int h);

        // What the window hears.
        void OnPaint(const kx::ui::Message& message);
        void OnLButtonDown(POINT at);
        void OnLButtonUp(POINT at);
        void OnMouseMove(const kx::ui::Message& message);
        void OnMouseLeave(const kx::ui::Message& message);

        // The window procedure; the window class, 0 until the first Create; the controls by window.
        static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
        static ATOM m_Atom;
        static std::map<HWND, CKxDevUI_ColorSliderRangeHPot*> m_Instances;

    private:
        friend class CKxDevUI_ColorSlider;
        struct Inside;
        explicit CKxDevUI_ColorSliderRangeHPot(CKxDevUI_ColorSlider* owner);
        std::optional<LRESULT> Handle(const kx::ui::Message& message);
        void Take(const kx::colorslider::Range& range);

        std::unique_ptr<Inside> m_inside;
    };

    // ---- The control ----

    // Without a table; power 0, range 0 to 0.
    CKxDevUI_ColorSlider();
    // Destroys the window.
    ~CKxDevUI_ColorSlider() override;
    // The windows belong to the controls inside.
    CKxDevUI_ColorSlider(const CKxDevUI_ColorSlider&) = delete;
    CKxDevUI_ColorSlider& operator=(const CKxDevUI_ColorSlider&) = delete;

    // Takes everything, computes the control's size, and lays out what is there already.
    //
    // `values` are copied; nothing sorts them. null or a count below 1 is an empty table, entries that are not finite
    // are logged and left out. The power and the range held stay until they are set. `name` and `unit` are shown as
    // they are,
    // "&" included; both may be empty. `numberFormat` is a display format of the edit boxes (SetNumber). With
    // `showEdit` there are edit boxes of `editWidth`, the unit and, in layout 2 and not for a range, arrows. Negative
    // sizes are 0. Types and layouts that are not known are a horizontal rainbow in two rows.
    void Init(int sliderWidth, int sliderHeight, SColorSliderValue* values, int count, CKxStringW name, bool nameBold,
              CKxStringW unit, CKxStringW numberFormat, bool showEdit, EColorSliderType type,
              EColorSliderLayoutType layout, int editWidth);
    using CKxDevUI_Container::Init;

    // What the scale shows; see CKxDevUI_ColorSliderHPot for the arguments. The scale named last is shown, until Init
    // names a type. At first wavelengths are 400 to 700 nm, a gradient is from black to white, and lines have colours
    // of the scheme. The line's colours serve the range, too, whose line has no frame.
    void SetHorizontalRainbow(double fromNm, double toNm);
    void SetVerticalRainbow(double fromNm, double toNm, double fromValue, double toValue);
    void SetGradient(unsigned long fromColor, unsigned long toColor);
    void SetLineDrawSlider(unsigned long lowColor, unsigned long highColor);
    // Two entries of the GUI colour scheme (KX_GetVorGuiColor).
    void SetLineDrawSliderVorColors(int lowScheme, int highScheme, bool framed);
    // The same by name.
    struct VorLine {
        // As above, in the same order.
        int low = 0;
        int high = 0;
        bool framed = false;
    };
    void SetLineDrawSliderVorColors(const VorLine& line) {
        SetLineDrawSliderVorColors(line.low, line.high, line.framed);
    }

    // Holds and shows the entry that a value becomes; returns the power now held. One that is held and shown already
    // touches nothing. A line is drawn anew, at once with `redraw`, with the next painting without, and of a disabled
    // control only when that is enabled. Returns 0 and does nothing without a table and in the range type; what is not
    // a number does nothing.
    double SetPower(double value, bool redraw);
    double GetPower() const;

    // The same for a range; of thumbs that would cross, the one that was not asked to move gives way. False, and
    // nothing done, without a table, in other types, for what is not a number. Null pointers are skipped.
    bool SetRange(double minimum, double maximum);
    void GetRange(double* minimum, double* maximum) const;

    // Moves the index that belongs to the power by so many entries, kept in the table, and returns the entry's value;
    // the power stays. 0 without a table.
    double CalculateMove(int steps);

    // The name as it is held; a change through the reference is shown by SetName or Init.
    CKxStringW& GetName();
    // Shows another name in the room that Init has given to the first.
    void SetName(const CKxStringW& name);
    // The colour (COLORREF) of the point of layout 3.
    void SetPointColor(int color);

    // Whether the pointer is on a thumb control.
    bool GetHover() const;

    // The thumb control's rectangle in the container, in pixels on the screen; empty before Create and for the other
    // type. Null is ignored.
    void GetHPotRect(RECT* rect) const;
    void GetHPotRectRange(RECT* rect) const;
    // Moves the thumb control so that it begins at x (pixels on the screen), and edit boxes, arrows and unit as far.
    // Returns how far; the control's own width stays, so a host that has sliders begin in one column widens each by
    // that.
    int SetHPotLeft(int x);
    int SetHPotLeftRange(int x);

    // Whether Tab stops at the thumbs, and finds the edit boxes; at first not. The control's own window is then none of
    // the stops.
    void SetTabStop(bool stop);
    // Passed on to all inside; a line that has changed meanwhile is drawn anew.
    void SetEnabled(bool enable) override;
    // Forwarded to the thumb control.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // Builds what is inside; see the container.
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Edit boxes: Enter and the lost focus. Everything else ends here with 0.
    LRESULT OnCommand(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Arrows; then as the container.
    LRESULT OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) override;
    // The colours of name and unit.
    LRESULT OnCtlColorStatic(UINT message, WPARAM wParam, LPARAM lParam) override;

    // ---- Callbacks: here they do nothing ----

    // A power is about to be taken, or, if it was typed, has been. The host may give another value, and may set `veto`
    // to keep the old power; a typed one stays all the same. What is not a number keeps the old power.
    virtual void OnPowerChanged(double& value, bool& veto);
    // Another range; what is left in the arguments counts only while a thumb is dragged.
    virtual void OnRangeChanged(double& minimum, double& maximum);
    // The user let go of the thumb.
    virtual void OnLeftButtonUp();

    // The ids of the windows inside.
    enum EColorSliderId : int {
        eColorSliderId_HPot = 10000,
        eColorSliderId_Edit = 10001,  // of a range, the maximum
        eColorSliderId_Unit = 10002,
        eColorSliderId_Name = 10003,
        eColorSliderId_Spin = 10004,
        eColorSliderId_MinimumEdit = 10005,
    };

    // For derived controls, before Init: the edit box's height, -1 for the usual; whether it stands at a place of its
    // own (two rows; the host then shows the name, but for layout 3), and where.
    int m_editHeight = -1;
    bool m_editAtPosition = false;
    int m_editX = 0;
    int m_editY = 0;
    // While OnPowerChanged tells of a typed value.
    bool m_editInProgress = false;

    // The window procedures of the thumb control and of the name's label, which are subclassed.
    static LRESULT CALLBACK HPotProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK NameWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The life of its requests.
    const std::unique_ptr<kx::ui::Activity> m_requests;

private:
    bool IsRange() const noexcept { return m_type == eColorSliderType_Range; }
    bool HasPoint() const noexcept { return m_layoutType == eColorSliderLayout_ColorPoint && !IsRange(); }
    static int TextWidth(const CKxStringW& text);
    void TakeTable(const SColorSliderValue* values, int count);
    void LayOut();
    void FillThumbs();
    void LinesChanged(unsigned long low, unsigned long high, bool scheme, bool framed);

    // devgui_colorslider_parts.cpp
    void Arrange();
    void ArrangeThumbs();
    void RescueFocus();
    void ArrangeTabStops();
    void BeginThumbs();
    void ArrangeEdits();
    void ArrangeLabels();
    void ArrangeEdit(CKxDevUI_EditBox& edit, int id, const kx::colorslider::Place& place);
    HWND ArrangeLabel(HWND label, int id, const kx::colorslider::Place& place, const CKxStringW& text, LONG type);
    void SetFonts();
    int MoveParts(const CKxDevUI_Base& thumb, int x, std::initializer_list<HWND> others);
    std::optional<LRESULT> HandleHPot(const kx::ui::Message& message);
    std::optional<LRESULT> HandleName(const kx::ui::Message& message);
    void PaintName(HDC dc, const RECT& area) const;
    void ShowRequests();
    RECT SignPlace() const;
    // The single thumb, null for a range.
    HWND ThumbWindow() const { return IsRange() ? nullptr : HWND{m_hpot}; }

    std::optional<double> AskPower(double value);
    void ShowRange(const kx::colorslider::Range& range);
    void PowerTyped();
    void RangeTyped();

    int m_sliderWidth = 0;
    int m_sliderHeight = 0;
    int m_editWidth = 0;
    bool m_showEdit = false;
    bool m_nameBold = false;
    bool m_tabStop = false;
    EColorSliderType m_type = eColorSliderType_HorizontalRainbow;
    EColorSliderLayoutType m_layoutType = eColorSliderLayout_TwoRows;
    CKxStringW m_name;
    CKxStringW m_unit;
    int m_nameTextWidth = 0;
    int m_unitTextWidth = 0;
    CKxStringW m_numberFormat = L"%g";
    COLORREF m_pointColor = RGB(0, 0, 0);
    kx::colorslider::Layout m_layout;

    std::vector<SColorSliderValue> m_table;
    std::vector<SColorSliderValue> m_marks;
    std::vector<double> m_values;  // of the table
    double m_power = 0;
    int m_powerIndex = 0;
    kx::colorslider::Range m_range;
    bool m_scaleMustBeRebuilt = false;

    CKxDevUI_ColorSliderHPot m_hpot;
    CKxDevUI_ColorSliderRangeHPot m_rangeHPot;
    CKxDevUI_EditBox m_edit;  // of the power or the maximum
    CKxDevUI_EditBox m_minimumEdit;
    CKxDevUI_SpinBox m_spin;
    HWND m_nameLabel = nullptr;
    HWND m_unitLabel = nullptr;
};
