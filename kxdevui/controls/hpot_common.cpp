#include <kxdevui/controls/hpot_common.h>

#include <algorithm>
#include <climits>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

namespace kx::hpot {

// ---- Wheel and keys ------------------------------------------------------------------------------------------------

int Chosen(const Granularity& granularity, WPARAM wheelKeys) {
    const int keys = GET_KEYSTATE_WPARAM(wheelKeys);
    if ((keys & MK_CONTROL) || GetKeyState(VK_CONTROL) < 0) return granularity.ctrl;
    return (keys & MK_SHIFT) || GetKeyState(VK_SHIFT) < 0 ? granularity.shift : granularity.plain;
}

int WheelSteps(const Granularity& granularity, WPARAM wParam) {
    const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
    if (delta == 0) return 0;
    const long long steps = Chosen(granularity, wParam);
    return static_cast<int>(std::clamp<long long>(delta > 0 ? steps : -steps, INT_MIN, INT_MAX));
}

std::optional<KeyMove> MoveOf(WPARAM key) {
    switch (key) {
    case VK_RIGHT: return KeyMove{KeyMove::Unit, 1, true};
    case VK_LEFT: return KeyMove{KeyMove::Unit, -1, true};
    case VK_UP: return KeyMove{KeyMove::Unit, 1, false};
    case VK_DOWN: return KeyMove{KeyMove::Unit, -1, false};
    case VK_PRIOR: return KeyMove{KeyMove::Page, 1, false};
    case VK_NEXT: return KeyMove{KeyMove::Page, -1, false};
    case VK_HOME: return KeyMove{KeyMove::End, -1, false};
    case VK_END: return KeyMove{KeyMove::End, 1, false};
    default: return std::nullopt;
    }
}

// ---- Colours -------------------------------------------------------------------------------------------------------

COLORREF Mixed(COLORREF a, COLORREF b, int percent) {
    const auto mix = [percent](int from, int to) { return from + (to - from) * percent / 100; };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)), mix(GetBValue(a), GetBValue(b)));
}

COLORREF NamedColor(unsigned long color, bool ofScheme) {
    return ofScheme ? KX_GetVorGuiColor(static_cast<int>(color)) : color & 0xFFFFFF;
}

void Fill(HDC dc, const RECT& rect, int color) { FillRect(dc, &rect, KX_GetSysColorBrush(color)); }

void FillGradient(HDC dc, const RECT& rect, COLORREF from, COLORREF to) {
    const auto corner = [](long left, long top, COLORREF color) {
        const auto wide = [](BYTE part) { return static_cast<COLOR16>(part << 8); };
        return TRIVERTEX{left, top, wide(GetRValue(color)), wide(GetGValue(color)), wide(GetBValue(color)), 0};
    };
    TRIVERTEX corners[] = {corner(rect.left, rect.top, from), corner(rect.right, rect.bottom, to)};
    GRADIENT_RECT both{0, 1};
    GradientFill(dc, corners, 2, &both, 1, GRADIENT_FILL_RECT_H);
}

long ZoomedLine(double pixels) { return std::max(1L, CKxGUILayoutManager::Zoomed(pixels)); }

// ---- The scale -----------------------------------------------------------------------------------------------------

ScaleCanvas::ScaleCanvas(HWND window) {
    if (!GetClientRect(window, &m_client) || m_client.right <= 0 || m_client.bottom <= 0) return;
    const ui::WindowDC own(window);
    m_dc.reset(CreateCompatibleDC(own));
    m_bitmap.reset(CreateCompatibleBitmap(own, m_client.right, m_client.bottom));
    if (!*this) return;
    SelectObject(m_dc.get(), m_bitmap.get());
    SelectObject(m_dc.get(), KX_GetDefaultGuiFont());
    GetTextMetricsW(m_dc.get(), &m_font);
}

HBITMAP ScaleCanvas::Release() {
    m_dc.reset();
    return m_bitmap.release();
}

void ScaleImage::Take(ui::Bitmap made) {
    dc.reset();
    size = {};
    bitmap = std::move(made);
    BITMAP about{};
    if (!bitmap || !GetObjectW(bitmap.get(), sizeof about, &about)) return;
    size = {about.bmWidth, about.bmHeight};
    dc.reset(CreateCompatibleDC(nullptr));
    SelectObject(dc.get(), bitmap.get());
}

void ScaleImage::CopyTo(HDC target) const { BitBlt(target, 0, 0, size.cx, size.cy, dc.get(), 0, 0, SRCCOPY); }

Rows RowsOf(const RECT& thumb, long trackLeft, long trackLength, long trackHeight, long bottom,
            const TEXTMETRICW& font) {
    // The body of the thumb's image has its middle here; the rest is the tip, and some margin below it.
    const long middle = thumb.top + (thumb.bottom - thumb.top) * 2 / 5, top = std::max(1L, middle - trackHeight / 2);
    const RECT track{trackLeft, top, trackLeft + trackLength, top + trackHeight};
    // Digits have nothing below their base line and blank above.
    const long gap = ZoomedLine(1), digits = font.tmAscent - font.tmInternalLeading;
    const long ticks = std::max(thumb.bottom, track.bottom + gap);
    const long length = std::clamp(bottom - digits - gap - ticks, ZoomedLine(2), ZoomedLine(5));
    // Before the digits go, the gap does: at another zoom a pixel may be missing.
    const long digitsTop = std::min(ticks + length + gap, bottom - digits);
    return {track, ticks, length, digitsTop >= ticks + length ? digitsTop - font.tmInternalLeading : -1};
}

TickSpace SpaceIn(HDC dc, long trackLeft, long trackLength, long right) {
    const auto widthOf = [dc](const std::wstring& text) {
        SIZE size{};
        GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
        return static_cast<int>(size.cx);
    };
    return {.trackLength = static_cast<int>(trackLength),
            .before = static_cast<int>(trackLeft),
            .after = static_cast<int>(right - trackLeft - trackLength),
            .labelGap = static_cast<int>(ZoomedLine(9)),
            .tickGap = static_cast<int>(ZoomedLine(5)),
            .widthOf = widthOf};
}

void DrawScale(HDC dc, const std::vector<Tick>& ticks, const Rows& rows, long trackLeft, int tickColor,
               int labelColor) {
    const long line = ZoomedLine(1);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, KX_GetSysColor(labelColor));
    for (const Tick& tick : ticks) {
        const long x = trackLeft + tick.position - line / 2;
        const long length = tick.major ? rows.tickLength : std::max(1L, rows.tickLength * 3 / 5);
        Fill(dc, {x, rows.ticks, x + line, rows.ticks + length}, tickColor);
        if (rows.labels < 0 || tick.label.empty()) continue;
        ExtTextOutW(dc, trackLeft + tick.labelLeft, rows.labels, 0, nullptr, tick.label.c_str(),
                    static_cast<UINT>(tick.label.size()), nullptr);
    }
}

// ---- The thumb -----------------------------------------------------------------------------------------------------

ThumbStyle StyleOf(SIZE image, Look look, bool focused, const ColorTable& colors) {
    const auto color = [&](Piece piece) {
        const COLORREF rest = KX_GetSysColor(colors[piece][kEnabled]), active = KX_GetSysColor(colors[piece][kActive]);
        switch (look) {
        case kLookDisabled: return KX_GetSysColor(colors[piece][kDisabled]);
        case kLookDragged: return active;
        case kLookHovered: return Mixed(rest, active, 30);
        default: return rest;
        }
    };
    // The platform's greys alone are too faint for a line as thin as the edge.
    const COLORREF edge = color(kThumbEdge);
    return {.size = image,
            .body = color(kThumbBody),
            .edge = look == kLookDisabled ? edge : Mixed(edge, KX_GetSysColor(COLOR_BTNTEXT), 40),
            .ring = KX_GetSysColor(COLOR_BTNTEXT),
            .hasRing = focused && look != kLookDisabled};
}

std::optional<Track> TrackIn(HWND window, long nominalThumb, long nominalHeight) {
    RECT client{};
    if (!GetClientRect(window, &client)) return std::nullopt;
    const long nominal = nominalThumb < 0 ? nominalHeight / 2 : nominalThumb;
    const long wanted = CKxGUILayoutManager::Zoomed(static_cast<double>(nominal));
    const long height = std::clamp(wanted, 0L, client.bottom), width = std::min(height / 2, client.right) & ~1L;
    return Track{{width, height}, width / 2, client.right - width};
}

RECT ThumbPlace(POINT first, long position, long trackLength, SIZE image) {
    const long left = first.x + std::clamp(position, 0L, std::max(trackLength, 0L));
    return {left, first.y, left + image.cx, first.y + image.cy};
}

}  // namespace kx::hpot
