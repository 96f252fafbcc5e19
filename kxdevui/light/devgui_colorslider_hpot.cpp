// The single thumb of the colour slider: its way to the host, and its scale.
#include <kxdevui/light/devgui_colorslider.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/light/colorslider_paint.h>
#include <kxsystem/kx_color.h>

using Thumb = CKxDevUI_ColorSlider::CKxDevUI_ColorSliderHPot;

Thumb::CKxDevUI_ColorSliderHPot() : m_line{eKxVorGuiColor_ScaleValue, eKxVorGuiColor_ScaleRest} {
    m_scale.type = eHPotType_ColorSlider;
}

// ---- What the scale shows ------------------------------------------------------------------------------------------

void Thumb::Look(EColorSliderType type, CKxDevUI_ColorSlider* owner) {
    m_owner = owner;
    m_look = type;
    m_thumbLeavesTrace = type == eColorSliderType_LineDraw;
    const bool isLine = type == eColorSliderType_LineDraw, isGradient = type == eColorSliderType_Gradient;
    m_lamp.isOne = isLine || isGradient;
    m_lamp.low = isGradient ? m_gradient[0] : m_line[0];
    m_lamp.high = isGradient ? m_gradient[1] : m_line[0];
    m_lamp.ofScheme = isLine && m_lineOfScheme;
    // Also repaints.
    SetType(eHPotType_ColorSlider);
}

void Thumb::InitHorizontalRainbow(CKxDevUI_ColorSlider* owner, double fromNm, double toNm) {
    m_wavelengths[0] = fromNm;
    m_wavelengths[1] = toNm;
    Look(eColorSliderType_HorizontalRainbow, owner);
}

void Thumb::InitVerticalRainbow(CKxDevUI_ColorSlider* owner, double fromNm, double toNm, double fromValue,
                                double toValue) {
    const double rows[] = {fromNm, toNm, fromValue, toValue};
    std::copy(std::begin(rows), std::end(rows), m_rows);
    Look(eColorSliderType_VerticalRainbow, owner);
}

void Thumb::InitGradient(CKxDevUI_ColorSlider* owner, unsigned long fromColor, unsigned long toColor) {
    m_gradient[0] = fromColor;
    m_gradient[1] = toColor;
    Look(eColorSliderType_Gradient, owner);
}

void Thumb::InitLineDraw(CKxDevUI_ColorSlider* owner, unsigned long lowColor, unsigned long highColor, bool scheme,
                         bool framed) {
    m_line[0] = lowColor;
    m_line[1] = highColor;
    m_lineOfScheme = scheme;
    m_lineFramed = framed;
    Look(eColorSliderType_LineDraw, owner);
}

double Thumb::GetMinValue() const { return m_scale.values.empty() ? 0 : m_scale.values.front(); }
double Thumb::GetMaxValue() const { return m_scale.values.empty() ? 0 : m_scale.values.back(); }

double Thumb::GetStep() const {
    const auto count = static_cast<double>(m_scale.values.size());
    return count < 2 ? 0 : (GetMaxValue() - GetMinValue()) / (count - 1);
}

// ---- From the user to the host -------------------------------------------------------------------------------------

// SetValue would take entries less than 0.001 apart for the same.
void Thumb::Show(double value, bool redraw) {
    m_held.value = value;
    Update(true, false, redraw);
}

// All else on the scale stands still while the value moves, and takes much longer to draw.
void Thumb::LineChanged() {
    const HDC scale = m_look == eColorSliderType_LineDraw ? ScaleDC() : nullptr;
    if (!scale || !m_enabled) return ScaleChanged();
    RenderStrip(scale, nullptr, m_lamp.strip);
}

void Thumb::MoveBy(int steps) {
    if (!m_enabled) return;
    const double value = CalculateMove(steps);
    if (value == m_held.value) return;
    Show(value, true);
    OnHPotDragDrop();
}

bool Thumb::HandleMouseWheel(WPARAM wParam, LPARAM) {
    if (!m_owner || GET_WHEEL_DELTA_WPARAM(wParam) == 0 || !GetHovered() || !IsWindowEnabled(m_hWnd)) return false;
    CKxDevUI_ColorSlider& owner = *m_owner;
    const kx::ui::Alive alive(static_cast<CKxDevUI_Base*>(this));
    const double candidate = owner.CalculateMove(kx::hpot::WheelSteps(m_granularity, wParam));
    if (candidate == GetValue()) {
        owner.SetPower(candidate, true);
    } else if (const auto wanted = owner.AskPower(candidate); wanted && alive) {
        owner.SetPower(*wanted, true);
    }
    return true;
}

void Thumb::OnHPotChange(double& value, bool& veto) {
    // In the midst of a drag the host may have made it a range.
    if (!m_owner || m_owner->IsRange()) return;
    CKxDevUI_ColorSlider& owner = *m_owner;
    const kx::ui::Alive alive(static_cast<CKxDevUI_Base*>(this));
    const auto wanted = owner.AskPower(value);
    if (!wanted) return;
    const double held = owner.SetPower(*wanted, false);
    // Both belong to the slider that asks: it is to hold what the owner holds, be it the old power.
    if (!alive) return;
    value = held;
    veto = false;
    owner.m_edit.PaintNow();
}

void Thumb::OnHPotDragDrop() {
    if (!m_owner || m_owner->IsRange()) return;
    CKxDevUI_ColorSlider& owner = *m_owner;
    if (const auto wanted = owner.AskPower(GetValue())) owner.SetPower(*wanted, true);
}

void Thumb::OnLeftButtonUp() {
    if (m_owner) m_owner->OnLeftButtonUp();
}

// ---- The scale -----------------------------------------------------------------------------------------------------

HBITMAP Thumb::CreateColorSliderBitmap(bool enabled) {
    using namespace kx::hpot;
    ScaleCanvas canvas(m_hWnd);
    if (!canvas) return nullptr;
    FillRect(canvas, &canvas.Client(), KX_GetSysColorBrush(COLOR_3DFACE));
    const long nominal = m_owner ? m_owner->m_sliderHeight : m_height / 3;
    const long height =
        std::clamp(CKxGUILayoutManager::Zoomed(static_cast<double>(nominal)), 0L, canvas.Client().bottom);
    const Rows rows = RowsOf(ThumbRect(), m_trackLeft, m_trackLength, height, canvas.Client().bottom, canvas.Font());

    using namespace kx::colorslider;
    RECT strip = m_lamp.strip = rows.track;
    if (m_look == eColorSliderType_VerticalRainbow && m_rows[2] != m_rows[3] && std::isfinite(m_rows[2] + m_rows[3])) {
        const auto at = [&](double value) {
            return m_trackLeft + std::clamp(ValueToThumbPos(value), 0L, m_trackLength);
        };
        strip.left = std::min(at(m_rows[2]), at(m_rows[3]));
        strip.right = std::max(at(m_rows[2]), at(m_rows[3]));
        DrawLine(canvas, rows.track, {{rows.track.left, KX_GetVorGuiColor(eKxVorGuiColor_ScaleRest)}}, false);
    }
    RECT frame = strip;
    InflateRect(&frame, 1, 1);
    if (m_look != eColorSliderType_LineDraw) FrameRect(canvas, &frame, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    RenderStrip(canvas, canvas.Bitmap(), strip);
    if (!enabled) Fade(canvas, {rows.track.left - 1, frame.top, rows.track.right + 1, frame.bottom});
    static const std::vector<SColorSliderValue> none;
    DrawMarks(canvas, m_scale, m_owner ? m_owner->m_marks : none, rows, enabled);
    return canvas.Release();
}

void Thumb::RenderStrip(HDC dc, HBITMAP bitmap, const RECT& strip) {
    const int x = static_cast<int>(strip.left), y = static_cast<int>(strip.top);
    const int w = static_cast<int>(strip.right - strip.left), h = static_cast<int>(strip.bottom - strip.top);
    if (m_look == eColorSliderType_LineDraw) {
        const long at = std::clamp(ValueToThumbPos(GetValue()), 0L, std::max(m_trackLength, 0L));
        return RenderLineDrawRect(dc, x, y, w, h, static_cast<int>(at));
    }
    if (w <= 0 || h <= 0) return;
    // The lines are a pixel wider than the strip all around.
    const kx::ui::SavedDC whole(dc);
    IntersectClipRect(dc, strip.left, strip.top, strip.right, strip.bottom);
    if (m_look == eColorSliderType_Gradient) {
        kx::hpot::FillGradient(dc, strip, m_gradient[0], m_gradient[1]);
    } else if (m_look == eColorSliderType_VerticalRainbow) {
        RenderVerticalRainbowRect(dc, bitmap, x, y, w, h, m_rows[0], m_rows[1]);
    } else {
        RenderHorizontalRainbowRect(dc, bitmap, x, y, w, h, m_wavelengths[0], m_wavelengths[1]);
    }
}

namespace {

// How far lines can be seen in a bitmap; without one nothing is known of that.
SIZE SeenIn(HBITMAP bitmap) {
    BITMAP about{};
    return GetObjectW(bitmap, sizeof about, &about) ? SIZE{about.bmWidth + 1, about.bmHeight + 1}
                                                    : SIZE{LONG_MAX, LONG_MAX};
}

void DrawThickLine(HDC dc, POINT from, POINT to, COLORREF color) {
    const kx::ui::Pen pen(CreatePen(PS_SOLID, 3, color));
    const kx::ui::Selection selected(dc, pen.get());
    MoveToEx(dc, from.x, from.y, nullptr);
    LineTo(dc, to.x, to.y);
}

}  // namespace

void Thumb::RenderHorizontalRainbowRect(HDC dc, HBITMAP bitmap, int x, int y, int w, int h, double fromNm,
                                        double toNm) {
    const int seen = static_cast<int>(std::min<long>(w, kx::ui::Difference(SeenIn(bitmap).cx, x)));
    for (int c = 0; c < seen; ++c) {
        const COLORREF color = KX_RGBFromWavelength2(fromNm + c * (toNm - fromNm) / w);
        DrawThickLine(dc, {x + c, y}, {x + c, y + h - 2}, color);
    }
}

void Thumb::RenderVerticalRainbowRect(HDC dc, HBITMAP bitmap, int x, int y, int w, int h, double fromNm, double toNm) {
    const int seen = static_cast<int>(std::min<long>(h, kx::ui::Difference(SeenIn(bitmap).cy, y)));
    for (int r = 0; r < seen; ++r) {
        const COLORREF color = KX_RGBFromWavelength(fromNm + r * (toNm - fromNm) / h);
        DrawThickLine(dc, {x, y + r}, {x + w - 2, y + r}, color);
    }
}

void Thumb::RenderLineDrawRect(HDC dc, int x, int y, int w, int h, int at) {
    kx::colorslider::DrawLine(dc, {x, y, x + w, y + h},
                              {{x, kx::hpot::NamedColor(m_line[0], m_lineOfScheme)},
                               {x + at, kx::hpot::NamedColor(m_line[1], m_lineOfScheme)}},
                              m_lineFramed);
}
