// Internal to the slider's sources.
#pragma once

#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_light.h>
#include <kxdevui/controls/hpot_slider.h>

// All of the slider that has no name for hosts; a view of it, made where it is wanted.
struct CKxDevUI_HPot::Inside : kx::hpot::Slider<Inside> {
    // The thumb with what is around it, where its trace ends, and the mark of what was measured.
    struct Shown {
        RECT thumb{}, trace{}, mark{};
        int look = -1;
        // At the ends a badge, which is moved into the window, covers the thumb at several of them.
        long position = 0;
    };
    struct WindowPart : kx::hpot::SliderPart {
        // As the window shows it.
        Shown shown;
        EKxLight shownLight = EKxLight::None;
        double told = 0;  // to screen readers

        // Until then all of the window is stale.
        bool IsPainted() const { return shown.look >= 0; }
    };

    explicit Inside(CKxDevUI_HPot* of) noexcept : slider(*of) {}
    CKxDevUI_HPot& slider;

    static WindowPart* PartOf(const CKxDevUI_HPot& slider) {
        return kx::hpot::PartOf<WindowPart>(m_Instances, slider.m_hWnd);
    }
    WindowPart* Part() const { return PartOf(slider); }
    kx::hpot::Nominal Size() const { return {slider.m_width, slider.m_height, slider.m_thumbSize}; }

    // ---- For kx::hpot::Slider ----

    bool IsUsable() const { return slider.m_enabled && (!slider.m_hWnd || IsWindowEnabled(slider.m_hWnd)); }
    // The class has the platform repaint a window whose size has changed.
    void Sized() {
        slider.CreateDefaultThumb();
        ScaleChanged();
    }
    void Place() {
        slider.CreateDefaultThumb();
        LookChanged();
    }
    void LookChanged() {
        ScaleChanged();
        slider.Redraw();
    }
    void OnPaint(const kx::ui::Message& message);
    kx::ui::Handled OnKey(WPARAM key) { return MoveByKey(key); }
    void MoveBy(const kx::hpot::KeyMove& move);
    void Grab(POINT) { slider.m_stickToNeighbour = false; }
    void Release(bool quickClick) { slider.m_stickToNeighbour = quickClick; }
    long& Position() { return slider.m_thumbPos; }
    RECT ThumbRect() const { return slider.ThumbRect(); }
    long TrackLeft() const { return slider.m_trackLeft; }
    void ShowThumbs() const;
    void PutBack() { slider.m_thumbPos = slider.ValueToThumbPos(slider.m_held.value); }
    void Hover(const kx::ui::Message& message);
    void OnMouseLeave(const kx::ui::Message& message);
    bool Drop(const kx::hpot::Watch& watch);
    void ButtonUp() { slider.OnLeftButtonUp(); }
    void Tell(KxAccess& access) const;
    void TellValue() const;

    // ---- The values: devgui_hpot.cpp ----

    bool TakeList(eHPotType type, const double* values, const double* regionSteps, int count);
    bool TakeFromThumb(bool notify);
    void ValuesChanged();
    // The held value was not found by the rules: its entry and place are looked up.
    void ShowHeld();
    bool MoveByUnits(int direction, int granularity);
    bool MoveTo(double value);
    LRESULT SendScroll(int code, double value) const;

    // ---- The thumb: devgui_hpot_scale.cpp ----

    int ThumbLook() const;
    RECT TraceRect() const;
    Shown Showing() const;
    bool LeavesTrace() const { return slider.m_thumbLeavesTrace || Light() != EKxLight::None; }
    void InvalidateThumb(UINT flags) const;
    void PaintThumb(HDC dc) const;

    // ---- What its device reports: devgui_hpot_light.cpp ----

    EKxLight Light() const;
    kx::hpot::LightColors LightColors() const;
    RECT Strip() const;
    RECT Mark() const;
    void PaintReadings(HDC dc) const;
    kx::ui::Handled OnReadings();
};
