// What a slider shows of its device beside what was asked of it: whether its light is on, and the measured value.
#include <kxdevui/controls/devgui_hpot.h>

#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/hpot_window.h>
#include <kxdevui/framework/ui_activity.h>

using namespace kx::hpot;

EKxLight CKxDevUI_HPot::Inside::Light() const {
    const auto state = slider.m_lamp.isOne ? kx::ui::FindState(slider.m_hWnd) : nullptr;
    return state ? state->light : EKxLight::None;
}

kx::hpot::LightColors CKxDevUI_HPot::Inside::LightColors() const {
    const Lamp& lamp = slider.m_lamp;
    return ColorsOf(Light() == EKxLight::On, NamedColor(lamp.low, lamp.ofScheme), NamedColor(lamp.high, lamp.ofScheme),
                    KX_GetSysColor(COLOR_BTNFACE), KX_GetSysColor(COLOR_BTNTEXT),
                    IsWindowEnabled(slider.m_hWnd) != FALSE);
}

// A light is seen from afar, be its scale a line; where nobody has said it stands behind the thumb.
RECT CKxDevUI_HPot::Inside::Strip() const {
    const RECT thumb = ThumbRect();
    const long middle = thumb.top + (thumb.bottom - thumb.top) * 2 / 5;
    RECT strip = slider.m_lamp.strip;
    if (IsRectEmpty(&strip)) strip = {slider.m_trackLeft, middle, slider.m_trackLeft + slider.m_trackLength, middle};
    const long lacking = ZoomedLine(6) - (strip.bottom - strip.top);
    if (lacking > 0) InflateRect(&strip, 0, static_cast<int>((lacking + 1) / 2));
    return strip;
}

RECT CKxDevUI_HPot::Inside::Mark() const {
    const auto state = kx::ui::FindState(slider.m_hWnd);
    return state ? MeasuredMark(slider.m_scale, slider.m_held.value, state->measured.measured, Strip()) : RECT{};
}

// All that stands above the scale.
void CKxDevUI_HPot::Inside::PaintReadings(HDC dc) const {
    const bool isLight = Light() != EKxLight::None, enabled = IsWindowEnabled(slider.m_hWnd) != FALSE;
    const auto colors = isLight ? LightColors() : kx::hpot::LightColors{};
    if (isLight) DrawLight(dc, Strip(), slider.ValueToThumbPos(slider.m_held.value), colors);
    PaintThumb(dc);
    if (isLight) {
        RECT client{};
        GetClientRect(slider.m_hWnd, &client);
        // What the thumb shows by its body the badge covers.
        auto badge = colors;
        if (const int look = ThumbLook(); look != kLookNormal && look != kLookDisabled)
            badge.sign = KX_GetSysColor(COLOR_HIGHLIGHT);
        DrawBadge(dc, BadgeOn(ThumbRect(), client.right), Light() == EKxLight::On, badge);
    }
    DrawMeasured(dc, Mark(), enabled);
    kx::ui::Activity::DrawTarget(slider.m_hWnd, dc, slider.ThumbArea(), enabled);
}

kx::ui::Handled CKxDevUI_HPot::Inside::OnReadings() {
    WindowPart* const part = Part();
    if (!part) return std::nullopt;
    const bool other = std::exchange(part->shownLight, Light()) != Light();
    if (other && part->IsPainted()) slider.Redraw();
    ShowThumbs();
    return kx::ui::kShowsReadings;
}
