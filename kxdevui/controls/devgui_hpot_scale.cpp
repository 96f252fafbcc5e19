// How the slider looks: its scale, drawn once into a bitmap, and the thumb above it.
#include <windows.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/controls/hpot_thumb.h>
#include <kxdevui/controls/hpot_window.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_window.h>

namespace {

enum Piece { kTrack, kTrackBorder, kTicks, kLabels, kThumbBody, kThumbEdge };
enum State { kEnabled, kActive, kDisabled };

// What the thumb is doing, in the order of shown looks.
enum Look : int { kLookNormal, kLookHovered, kLookDragged, kLookDisabled, kLookFocused = 8 };

long Zoomed(double pixels) { return CKxGUILayoutManager::Zoomed(pixels); }
long ZoomedLine(double pixels) { return std::max(1L, Zoomed(pixels)); }

COLORREF Mixed(COLORREF a, COLORREF b, int percent) {
    const auto mix = [percent](int from, int to) { return from + (to - from) * percent / 100; };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)), mix(GetBValue(a), GetBValue(b)));
}

void Fill(HDC dc, const RECT& rect, int color) { FillRect(dc, &rect, KX_GetSysColorBrush(color)); }

// Where things stand below each other, from the middle of the track to the labels.
struct Rows {
    RECT track;
    long ticks;       // their top
    long tickLength;  // of the long ones
    long labels;      // their top; -1 when there is no room for them
};

Rows RowsOf(const RECT& thumb, long trackLeft, long trackLength, long bottom, const TEXTMETRICW& font) {
    // The body of the thumb's image has its middle here; the rest is the tip, and some margin below it.
    const long middle = thumb.top + (thumb.bottom - thumb.top) * 2 / 5, half = ZoomedLine(2);
    const RECT track{trackLeft - half, middle - half, trackLeft + trackLength + half, middle + half};
    // Digits have nothing below their base line and blank above.
    const long gap = ZoomedLine(1), digits = font.tmAscent - font.tmInternalLeading;
    const long length = std::clamp(bottom - digits - gap - thumb.bottom, ZoomedLine(3), ZoomedLine(5));
    const long digitsTop = thumb.bottom + length + gap;
    return {track, thumb.bottom, length, digitsTop + digits <= bottom ? digitsTop - font.tmInternalLeading : -1};
}

void DrawTrack(HDC dc, RECT track, int color, int border) {
    Fill(dc, track, border);
    const long line = ZoomedLine(1);
    InflateRect(&track, -line, -line);
    Fill(dc, track, color);
}

// Widths of texts in the DC's font.
auto WidthsIn(HDC dc) {
    return [dc](const std::wstring& text) {
        SIZE size{};
        GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
        return static_cast<int>(size.cx);
    };
}

void DrawTicks(HDC dc, const std::vector<kx::hpot::Tick>& ticks, const Rows& rows, long trackLeft, int color) {
    const long line = ZoomedLine(1);
    for (const auto& tick : ticks) {
        const long x = trackLeft + tick.position - line / 2;
        const long length = tick.major ? rows.tickLength : std::max(1L, rows.tickLength * 3 / 5);
        Fill(dc, {x, rows.ticks, x + line, rows.ticks + length}, color);
    }
}

void DrawLabels(HDC dc, const std::vector<kx::hpot::Tick>& ticks, long top, long trackLeft, COLORREF color) {
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    for (const auto& tick : ticks) {
        ExtTextOutW(dc, trackLeft + tick.labelLeft, top, 0, nullptr, tick.label.c_str(),
                    static_cast<UINT>(tick.label.size()), nullptr);
    }
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

CKxDevUI_HPot::WindowPart* CKxDevUI_HPot::Part() const {
    // A copy may hold the handle of a window that is long gone.
    if (!m_Instances.contains(m_hWnd)) return nullptr;
    const auto state = kx::ui::StateOf(m_hWnd);
    if (!state->own) state->own = std::make_shared<WindowPart>();
    return static_cast<WindowPart*>(state->own.get());
}

void CKxDevUI_HPot::CreateDefaultThumb() {
    RECT client{};
    if (!GetClientRect(m_hWnd, &client)) return;
    const long nominal = m_thumbSize < 0 ? m_height / 2 : m_thumbSize;
    const long height = std::clamp(Zoomed(static_cast<double>(nominal)), 0L, client.bottom);
    // Even, so that the hot spot is the middle.
    const long width = std::min(height / 2, client.right) & ~1L;
    m_thumbImage = {width, height};
    m_hotSpot = m_trackLeft = width / 2;
    m_trackLength = client.right - width;
    m_thumbTop = 0;
    m_thumbPos = ValueToThumbPos(m_held.value);
}

void CKxDevUI_HPot::CreateScale() {
    WindowPart* part = Part();
    if (!part || !part->stale) return;
    part->stale = false;
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
    part->scaleDC.reset();
    part->scaleSize = {};
    part->scale = std::move(bitmap);
    BITMAP size{};
    if (!part->scale || !GetObjectW(part->scale.get(), sizeof size, &size)) return;
    part->scaleSize = {size.bmWidth, size.bmHeight};
    part->scaleDC.reset(CreateCompatibleDC(nullptr));
    SelectObject(part->scaleDC.get(), part->scale.get());
}

void CKxDevUI_HPot::RecreateScale() {
    WindowPart* part = Part();
    if (!part) return;
    part->stale = true;
    const Watch watch(this);
    CreateScale();
    if (watch) Redraw();
}

void CKxDevUI_HPot::LookChanged() {
    if (WindowPart* part = Part()) part->stale = true;
    Redraw();
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
    RECT client{};
    if (!GetClientRect(m_hWnd, &client) || client.right <= 0 || client.bottom <= 0) return nullptr;
    const kx::ui::WindowDC window(m_hWnd);
    const kx::ui::MemoryDC memory(CreateCompatibleDC(window));
    kx::ui::Bitmap bitmap(CreateCompatibleBitmap(window, client.right, client.bottom));
    const HDC dc = memory.get();
    if (!dc || !bitmap) return nullptr;
    const kx::ui::Selection selected(dc, bitmap.get());
    const HBRUSH background = BackgroundBrush(dc);
    if (!background) return nullptr;
    FillRect(dc, &client, background);

    const kx::ui::Selection font(dc, KX_GetDefaultGuiFont());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const auto color = [enabled](Piece piece) { return m_pDefaultColors[piece][enabled ? kEnabled : kDisabled]; };
    const Rows rows = RowsOf(ThumbRect(), m_trackLeft, m_trackLength, client.bottom, metrics);
    DrawTrack(dc, rows.track, color(kTrack), color(kTrackBorder));
    const auto ticks = kx::hpot::Ticks(m_scale, {.trackLength = static_cast<int>(m_trackLength),
                                                 .before = static_cast<int>(m_trackLeft),
                                                 .after = static_cast<int>(client.right - m_trackLeft - m_trackLength),
                                                 .labelGap = static_cast<int>(ZoomedLine(9)),
                                                 .tickGap = static_cast<int>(ZoomedLine(5)),
                                                 .widthOf = WidthsIn(dc)});
    DrawTicks(dc, ticks, rows, m_trackLeft, color(kTicks));
    if (rows.labels >= 0) DrawLabels(dc, ticks, rows.labels, m_trackLeft, KX_GetSysColor(color(kLabels)));
    const long mark = ValueToThumbPos(m_marker.value);
    if (m_marker.used && mark >= 0 && mark <= m_trackLength) {
        DrawMarker(dc, m_trackLeft + mark, rows, enabled ? m_marker.color : color(kTicks));
    }
    return bitmap.release();
}

HBITMAP CKxDevUI_HPot::CreateLinearBitmap(bool enabled) { return CreateScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateNonlinearBitmap(bool enabled) { return CreateScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateLinearRegionsBitmap(bool enabled) { return CreateScaleBitmap(enabled); }
HBITMAP CKxDevUI_HPot::CreateColorSliderBitmap(bool enabled) { return CreateScaleBitmap(enabled); }

void CKxDevUI_HPot::SetTransparent(bool transparent) {
    if (transparent == m_transparent) return;
    m_transparent = transparent;
    LookChanged();
}

void CKxDevUI_HPot::SetMarker(double value, int color, bool used) {
    const bool same = m_marker.value == value && m_marker.color == color && m_marker.used == used;
    m_marker = {value, color, used};
    if (!same) LookChanged();
}

void CKxDevUI_HPot::SetMarkerUsed(bool used) { SetMarker(m_marker.value, m_marker.color, used); }

// ---- The thumb -----------------------------------------------------------------------------------------------------

RECT CKxDevUI_HPot::ThumbRect() const {
    const long position = std::clamp(m_thumbPos, 0L, std::max(m_trackLength, 0L));
    const long left = m_trackLeft + position - m_hotSpot;
    return {left, m_thumbTop, left + m_thumbImage.cx, m_thumbTop + m_thumbImage.cy};
}

int CKxDevUI_HPot::ThumbLook() const {
    const WindowPart* part = Part();
    if (!part || !IsWindowEnabled(m_hWnd)) return kLookDisabled;
    const int look = part->dragging ? kLookDragged : GetHovered() ? kLookHovered : kLookNormal;
    return part->focused ? look + kLookFocused : look;
}

void CKxDevUI_HPot::PaintThumb(HDC dc) const {
    const int look = ThumbLook(), doing = look % kLookFocused;
    const auto color = [doing](Piece piece) {
        const auto& indexes = m_pDefaultColors[piece];
        const COLORREF rest = KX_GetSysColor(indexes[kEnabled]), active = KX_GetSysColor(indexes[kActive]);
        switch (doing) {
        case kLookDisabled: return KX_GetSysColor(indexes[kDisabled]);
        case kLookDragged: return active;
        case kLookHovered: return Mixed(rest, active, 30);
        default: return rest;
        }
    };
    // The platform's greys alone are too faint for a line as thin as the edge.
    const COLORREF edge = color(kThumbEdge);
    const RECT rect = ThumbRect();
    kx::hpot::DrawThumb(dc, {rect.left, rect.top},
                        {.size = m_thumbImage,
                         .body = color(kThumbBody),
                         .edge = doing == kLookDisabled ? edge : Mixed(edge, KX_GetSysColor(COLOR_BTNTEXT), 40),
                         .ring = KX_GetSysColor(COLOR_HIGHLIGHT),
                         .hasRing = look >= kLookFocused});
}

void CKxDevUI_HPot::Redraw() {
    // Without a window this would invalidate the desktop.
    if (Part()) InvalidateRect(m_hWnd, nullptr, FALSE);
}

// Only where the thumb was and where it is, in one call: each is a way to the window manager and back.
void CKxDevUI_HPot::InvalidateThumb(UINT flags) const {
    const WindowPart* part = Part();
    if (!part) return;
    const RECT rect = ThumbRect();
    if (EqualRect(&rect, &part->shownRect) && ThumbLook() == part->shownLook) return;
    const kx::ui::Region places(CreateRectRgnIndirect(&rect)), before(CreateRectRgnIndirect(&part->shownRect));
    CombineRgn(places.get(), places.get(), before.get(), RGN_OR);
    RedrawWindow(m_hWnd, nullptr, places.get(), RDW_INVALIDATE | flags);
}

void CKxDevUI_HPot::RedrawThumb() {
    const WindowPart* part = Part();
    // While the mouse moves there is no end of messages that come before a WM_PAINT.
    InvalidateThumb(part && part->dragging ? RDW_UPDATENOW : 0);
}

void CKxDevUI_HPot::OnPaint(const kx::ui::Message& message) {
    const Watch watch(this);
    CreateScale();
    if (!watch) return;
    const bool onScreen = message.id == WM_PAINT && message.wParam == 0;
    // A thumb that was moved without being redrawn is to be painted whole or not at all.
    if (onScreen) InvalidateThumb(0);
    WindowPart* part = Part();
    if (onScreen) part->shownRect = ThumbRect(), part->shownLook = ThumbLook();
    kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT&) {
        BitBlt(dc, 0, 0, part->scaleSize.cx, part->scaleSize.cy, part->scaleDC.get(), 0, 0, SRCCOPY);
        PaintThumb(dc);
    });
}
