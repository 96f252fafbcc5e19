#include "kx_schemepaint.h"

#include <algorithm>
#include <iterator>
#include <wchar.h>

#include <kxbaseui/kx_colors.h>

namespace kx {

bool IsOwnScheme() { return KX_GetColorScheme() != eKxColorScheme_System; }

bool IsClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = L"";
    GetClassNameW(window, own, static_cast<int>(std::size(own)));
    return _wcsicmp(own, name) == 0;
}

SchemePaintDC::SchemePaintDC(HWND window) : m_window(window), m_dc(BeginPaint(window, &m_paint)) {
    SaveDC(m_dc);
    SetBkMode(m_dc, TRANSPARENT);
    SelectObject(m_dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
}

SchemePaintDC::~SchemePaintDC() {
    RestoreDC(m_dc, -1);
    EndPaint(m_window, &m_paint);
}

void FrameInScheme(HDC dc, const RECT& rect, int color) { FrameRect(dc, &rect, KX_GetSysColorBrush(color)); }

void FrameWindowInScheme(HWND window, int color, int inset) {
    RECT rect{};
    GetWindowRect(window, &rect);
    OffsetRect(&rect, -rect.left, -rect.top);
    InflateRect(&rect, -inset, -inset);
    const HDC dc = GetWindowDC(window);
    FrameInScheme(dc, rect, color);
    ReleaseDC(window, dc);
}

void DrawSchemeArrow(HDC dc, const RECT& box, Toward toward, int color) {
    const bool upright = toward == Toward::Up || toward == Toward::Down;
    const long wide = box.right - box.left, high = box.bottom - box.top;
    const long half = std::max(2L, std::min(wide, high) / 5);
    const long x = (box.left + box.right) / 2, y = (box.top + box.bottom) / 2;
    const long tip = toward == Toward::Down || toward == Toward::Right ? half / 2 + 1 : -(half / 2 + 1);
    const long base = tip > 0 ? tip - half : tip + half;
    const POINT across[] = {{x - half, y + base}, {x + half, y + base}, {x, y + tip}};
    const POINT along[] = {{x + base, y - half}, {x + base, y + half}, {x + tip, y}};
    SaveDC(dc);
    SelectObject(dc, KX_GetSysColorBrush(color));
    SelectObject(dc, GetStockObject(NULL_PEN));
    Polygon(dc, upright ? across : along, 3);
    RestoreDC(dc, -1);
}

}  // namespace kx
