// How the slider looks: its scale, drawn once into a bitmap, and the thumb above it.
#include <windows.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_window.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_activity.h>

using namespace kx::hpot;

namespace {

// A slider with the focus is another look than the same without it.
constexpr int kLookFocused = 8;

void DrawTrack(HDC dc, RECT track, int color, int border) {
    Fill(dc, track, border);
    const long line = ZoomedLine(1);
    InflateRect(&track, -line, -line);
    Fill(dc, track, color);
}

// A triangle that points to the track from below, on a line through the ticks.
void DrawMarker(HDC dc, long x, const Rows& rows, int color) {
    const long half = ZoomedLine(3), line = ZoomedLine(1);
    for (long i = 0; i <= half; ++i)
        Fill(dc, {x - i, rows.ticks + i, x + i + line, rows.ticks + i + 1}, color);
    Fill(dc, {x, rows.ticks, x + line, rows.ticks + rows.tickLength + ZoomedLine(1)}, color);
}

}  // namespace

// clang-format off
const int CKxDevUI_HPot::m_pDefaultColors[6][3] = {
    {COLOR_WINDOW,       COLOR_WINDOW,     COLOR_BTNFACE},
    {COLOR_BTNSHADOW,    COLOR_BTNSHADOW,  COLOR_BTNSHADOW},
    {COLOR_3DDKSHADOW,   COLOR_3DDKSHADOW, COLOR_BTNSHADOW},
    {COLOR_BTNTEXT,      COLOR_BTNTEXT,    COLOR_GRAYTEXT},
    {COLOR_BTNHIGHLIGHT, COLOR_HIGHLIGHT,  COLOR_BTNFACE},
    {COLOR_3DDKSHADOW,   COLOR_3DDKSHADOW, COLOR_BTNSHADOW},
};
// clang-format on

// ---- The scale -----------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::CreateDefaultThumb() {
    const auto track = TrackIn(m_hWnd, m_thumbSize, m_height);
    if (!track) return;
    m_thumbImage = track->image;
    m_hotSpot = m_trackLeft = track->left;
    m_trackLength = track->length;
    m_thumbTop = 0;
    Inside(this).PutBack();
}

void CKxDevUI_HPot::CreateScale() {
    auto* part = Inside(this).Part();
    if (!part || !part->scale.stale) return;
    part->scale.stale = false;
    const Watch watch(this);
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    kx::ui::Bitmap bitmap;
    switch (m_scale.type) {
    case eHPotType_Linear: bitmap.reset(CreateLinearBitmap(enabled)); break;
    case eHPotType_NonLinear: bitmap.reset(CreateNonlinearBitmap(enabled)); break;
    case eHPotType_LinearRegions: bitmap.reset(CreateLinearRegionsBitmap(enabled)); break;
    case eHPotType_ColorSlider: bitmap.reset(CreateColorSliderBitmap(enabled)); break;
    default: bitmap.reset(CreateScaleBitmap(enabled)); break;
    }
    if (!watch) return;
    part->scale.Take(std::move(bitmap));
}

void CKxDevUI_HPot::ScaleChanged() { Inside(this).ScaleChanged(); }

HDC CKxDevUI_HPot::ScaleDC() const {
    const auto* part = Inside::PartOf(*this);
    return part && !part->scale.stale ? part->scale.dc.get() : nullptr;
}

void CKxDevUI_HPot::RecreateScale() {
    if (!Inside(this).Part()) return;
    ScaleChanged();
    const Watch watch(this);
    CreateScale();
    if (watch) Redraw();
}

HBRUSH CKxDevUI_HPot::BackgroundBrush(HDC dc) {
    if (!m_transparent) return KX_GetSysColorBrush(COLOR_BTNFACE);
    const Watch watch(this);
    const HWND window = m_hWnd;
    const RECT place = RectInParent(window);
    SetBrushOrgEx(dc, -place.left, -place.top, nullptr);
    const auto brush =
        reinterpret_cast<HBRUSH>(SendMessageW(GetAncestor(window, GA_PARENT), WM_CTLCOLORSTATIC,
                                              reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
    if (!watch) return nullptr;
    // The platform's own answer knows nothing of schemes.
    return brush && brush != GetSysColorBrush(COLOR_BTNFACE) ? brush : KX_GetSysColorBrush(COLOR_BTNFACE);
}

HBITMAP CKxDevUI_HPot::CreateScaleBitmap(bool enabled) {
    ScaleCanvas canvas(m_hWnd);
    if (!canvas) return nullptr;
    const HBRUSH background = BackgroundBrush(canvas);
    if (!background) return nullptr;
    FillRect(canvas, &canvas.Client(), background);

    const auto color = [enabled](Piece piece) { return m_pDefaultColors[piece][enabled ? kEnabled : kDisabled]; };
    const long half = ZoomedLine(2);
    Rows rows = RowsOf(ThumbRect(), m_trackLeft, m_trackLength, 2 * half, canvas.Client().bottom, canvas.Font());
    m_lamp.strip = rows.track;
    InflateRect(&rows.track, half, 0);
    DrawTrack(canvas, rows.track, color(kTrack), color(kTrackBorder));
    const TickSpace space = SpaceIn(canvas, m_trackLeft, m_trackLength, canvas.Client().right);
    DrawScale(canvas, Ticks(m_scale, space), rows, m_trackLeft, color(kTicks), color(kLabels));
    const long mark = ValueToThumbPos(m_marker.value);
    if (m_marker.used && mark >= 0 && mark <= m_trackLength) {
        DrawMarker(canvas, m_trackLeft + mark, rows, enabled ? m_marker.color : color(kTicks));
    }
    return canvas.Release();
}

// The values' own rules are in the ticks, so that one drawing serves all types.
HBITMAP CKxDevUI_HPot::CreateNonlinearScaleBitmap(bool enabled) { return CreateScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateLinearRegionsScaleBitmap(bool enabled) { return CreateScaleBitmap(enabled); }

HBITMAP CKxDevUI_HPot::CreateLinearBitmap(bool enabled) { return CreateScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateNonlinearBitmap(bool enabled) { return CreateNonlinearScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateLinearRegionsBitmap(bool enabled) { return CreateLinearRegionsScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateColorSliderBitmap(bool enabled) { return CreateScaleBitmap(enabled); }

void CKxDevUI_HPot::SetTransparent(bool transparent) {
    if (transparent == m_transparent) return;
    m_transparent = transparent;
    Inside(this).LookChanged();
}

void CKxDevUI_HPot::SetMarker(double value, int color, bool used) {
    const bool same = m_marker.value == value && m_marker.color == color && m_marker.used == used;
    m_marker = {value, color, used};
    if (!same) Inside(this).LookChanged();
}

void CKxDevUI_HPot::SetMarkerUsed(bool used) { SetMarker(m_marker.value, m_marker.color, used); }

// ---- The thumb -----------------------------------------------------------------------------------------------------

RECT CKxDevUI_HPot::ThumbRect() const {
    return ThumbPlace({m_trackLeft - m_hotSpot, m_thumbTop}, m_thumbPos, m_trackLength, m_thumbImage);
}

RECT CKxDevUI_HPot::ThumbArea() {
    const RECT thumb = ThumbRect();
    const bool isLight = Inside(this).Light() != EKxLight::None, isTarget = kx::ui::Activity::IsTarget(m_hWnd);
    if (!isLight && !isTarget) return thumb;
    RECT client{}, area = thumb;
    GetClientRect(m_hWnd, &client);
    if (isLight) {
        const RECT badge = BadgeOn(thumb, client.right);
        UnionRect(&area, &thumb, &badge);
    }
    if (isTarget) InflateRect(&area, static_cast<int>(ZoomedLine(3)), static_cast<int>(ZoomedLine(1)));
    const RECT around = area;
    IntersectRect(&area, &around, &client);
    return area;
}

void CKxDevUI_HPot::Redraw() {
    // Without a window this would invalidate the desktop.
    if (Inside(this).Part()) InvalidateRect(m_hWnd, nullptr, FALSE);
}

int CKxDevUI_HPot::Inside::ThumbLook() const {
    const WindowPart* part = Part();
    if (!part || !IsWindowEnabled(slider.m_hWnd)) return kLookDisabled;
    const int look = part->drag.active ? kLookDragged : slider.GetHovered() ? kLookHovered : kLookNormal;
    return ShowsFocus() ? look + kLookFocused : look;
}

void CKxDevUI_HPot::Inside::PaintThumb(HDC dc) const {
    const int look = ThumbLook();
    const RECT rect = ThumbRect();
    DrawThumb(
        dc, {rect.left, rect.top},
        StyleOf(slider.m_thumbImage, static_cast<Look>(look % kLookFocused), look >= kLookFocused, m_pDefaultColors));
}

// A pressed thumb is ahead of the value, to which its trace leads: the host has not been asked yet.
RECT CKxDevUI_HPot::Inside::TraceRect() const {
    RECT rect = slider.ThumbArea();
    if (LeavesTrace()) {
        const auto onTrack = [&](long at) { return std::clamp(at, 0L, std::max(slider.m_trackLength, 0L)); };
        const long held = slider.ValueToThumbPos(slider.m_held.value);
        OffsetRect(&rect, static_cast<int>(onTrack(held) - onTrack(slider.m_thumbPos)), 0);
    }
    return rect;
}

CKxDevUI_HPot::Inside::Shown CKxDevUI_HPot::Inside::Showing() const {
    return {slider.ThumbArea(), TraceRect(), Mark(), ThumbLook(), slider.m_thumbPos};
}

// Only where the thumb was and where it is, and the mark, in one call: each is a way to the window manager and back.
void CKxDevUI_HPot::Inside::InvalidateThumb(UINT flags) const {
    const WindowPart* part = Part();
    if (!part || (!part->IsPainted() && flags == 0)) return;
    const Shown now = Showing(), &was = part->shown;
    const bool thumb = !EqualRect(&now.thumb, &was.thumb) || !EqualRect(&now.trace, &was.trace) ||
                       now.look != was.look || now.position != was.position;
    const bool mark = !EqualRect(&now.mark, &was.mark);
    if (!thumb && !mark) return;
    const kx::ui::Region places(CreateRectRgn(0, 0, 0, 0));
    const auto add = [&](const RECT& rect) {
        const kx::ui::Region place(CreateRectRgnIndirect(&rect));
        CombineRgn(places.get(), places.get(), place.get(), RGN_OR);
    };
    if (thumb && LeavesTrace()) {
        // By hand: a thumb without size moves its trace all the same.
        RECT way = Strip();
        way.left = std::min({now.thumb.left, was.thumb.left, now.trace.left, was.trace.left});
        way.right = std::max({now.thumb.right, was.thumb.right, now.trace.right, was.trace.right});
        way.top = std::min({way.top, now.thumb.top, was.thumb.top});
        way.bottom = std::max({way.bottom, now.thumb.bottom, was.thumb.bottom});
        add(way);
    } else if (thumb) {
        add(now.thumb), add(was.thumb);
    }
    if (mark) add(now.mark), add(was.mark);
    RedrawWindow(slider.m_hWnd, nullptr, places.get(), RDW_INVALIDATE | flags);
}

void CKxDevUI_HPot::Inside::ShowThumbs() const {
    const WindowPart* part = Part();
    InvalidateThumb(part ? part->RedrawFlags() : 0);
}

void CKxDevUI_HPot::Inside::OnPaint(const kx::ui::Message& message) {
    const Watch watch(&slider);
    slider.CreateScale();
    if (!watch) return;
    const bool onScreen = message.id == WM_PAINT && message.wParam == 0;
    // A thumb that was moved without being redrawn is to be painted whole or not at all.
    if (onScreen) InvalidateThumb(0);
    WindowPart* part = Part();
    if (onScreen) part->shown = Showing();
    kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT&) {
        part->scale.CopyTo(dc);
        PaintReadings(dc);
    });
    // Whoever was asked for the background has changed the look meanwhile.
    if (onScreen && part->scale.stale) slider.Redraw();
}
