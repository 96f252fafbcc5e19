#include <kxdevui/zfocus/devgui_zdrive_view.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/zfocus/zstack_scale.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_number.h>

using namespace kx::ui;

namespace kx::zdrive {

namespace {

// Unzoomed pixels.
constexpr long kGap = 6, kGaugeWidth = 12, kHead = 6, kDigits = 40, kBelow = 84, kUnit = 24;
// Of the digits, as times the usual size.
constexpr double kLarge = 2.6;
constexpr wchar_t kMicrometres[] = L" \u00B5m";

long Zoomed(long length) { return CKxGUILayoutManager::Zoomed(static_cast<double>(length)); }
long Line() { return std::max(1L, Zoomed(1)); }

void Fill(HDC dc, const RECT& place, COLORREF color) {
    const Selection brush(dc, GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, color);
    FillRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// With the arrowhead, which reaches beyond the gauge.
RECT WithHead(RECT gauge) {
    const int beyond = static_cast<int>(Zoomed(kHead) + 2 * Line());
    InflateRect(&gauge, beyond, beyond);
    return gauge;
}

COLORREF TextColor(bool enabled) { return KX_GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT); }
COLORREF MarkColor(bool enabled) { return enabled ? kx::zstack::MarkColor() : KX_GetSysColor(COLOR_GRAYTEXT); }

long WidthOf(HDC dc, const CKxStringW& text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text, static_cast<int>(text.Length()), &size);
    return size.cx;
}

}  // namespace

View::View() : Control(this, {.name = L"KxDEVGUI_ZDriveView", .size = {260, 76}, .title = {}}) {}

View::~View() { Binding::EndOwnWindow(this); }

// ---- What is shown -------------------------------------------------------------------------------------------------

View::Places View::PlacesNow() const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long gap = Zoomed(kGap), gauge = gap + Zoomed(kGaugeWidth), left = gauge + Zoomed(kHead) + gap;
    const long right = std::max(left, client.right - gap), middle = std::min(Zoomed(kDigits), client.bottom);
    const long bottom = std::max(middle, client.bottom - gap), said = std::max(left, right - Zoomed(kBelow));
    return {{gap, gap, gauge, bottom},
            {left, Zoomed(2), right, middle},
            {left, middle + Zoomed(2), said, bottom},
            {said, middle, right, bottom}};
}

View::Rows View::RowsIn(const RECT& gauge) const {
    const Position low = Cleaned(m_drive.minimum), high = Cleaned(m_drive.maximum);
    if (!low || !high || !(*low < *high) || gauge.bottom - gauge.top < 2) return {};
    const kx::zstack::Axis axis{{*low, *high}, static_cast<int>(gauge.top), static_cast<int>(gauge.bottom) - 1};
    const auto row = [&](Position of) {
        const Position at = Cleaned(of);
        return at ? std::optional(axis.RowOf(*at)) : std::nullopt;
    };
    Rows rows{row(m_drive.position), row(m_drive.target),   row(m_drive.home),       row(m_drive.lower),
              row(m_drive.upper),    row(m_drive.stackTop), row(m_drive.stackBottom)};
    if (!m_known) rows.at.reset(), rows.target.reset();
    return rows;
}

CKxStringW View::DigitsText() const { return PositionText(m_known ? m_drive.position : Position(), m_fineStep); }

// Where it goes, or by how much it has drifted.
CKxStringW View::BelowText() const {
    if (!m_known) return {};
    const bool goes = m_drive.target && m_drive.position && std::abs(*m_drive.target - *m_drive.position) >= 0.005;
    if (m_trace.Count() == 0) return goes ? L"\u2192 " + PositionText(m_drive.target, m_fineStep) : CKxStringW();
    return KX_FormatNumber(L"%+.2f", std::round(m_trace.Drift() * 100) / 100 + 0.0) + kMicrometres;
}

void View::Show(const Drive& drive, bool known, double fineStep) {
    if (!m_hWnd) {
        m_drive = drive, m_known = known, m_fineStep = fineStep;
        return;
    }
    const Places places = PlacesNow();
    const Rows before = RowsIn(places.gauge);
    const CKxStringW digits = DigitsText();
    m_drive = drive, m_known = known, m_fineStep = fineStep;
    RECT stale{};
    const auto add = [&](const RECT& place) { UnionRect(&stale, &stale, &place); };
    if (RowsIn(places.gauge) != before) add(WithHead(places.gauge));
    if (DigitsText() != digits) add(places.digits);
    if (BelowText() != m_below) add(places.below);
    // What comes while nobody sees it is drawn when it is shown, which paints it all.
    if (std::exchange(m_traceIsOther, false) && IsWindowVisible(m_hWnd)) add(places.trace);
    m_below = BelowText();
    // Once for all of it: each would ask the platform anew.
    if (!IsRectEmpty(&stale)) InvalidateRect(m_hWnd, &stale, FALSE);
}

void View::Sample(unsigned now, double position) { m_traceIsOther |= m_trace.Add(now, position); }

void View::Forget() { m_traceIsOther |= m_trace.Clear(); }

// ---- Painting ------------------------------------------------------------------------------------------------------

void View::DrawGauge(HDC dc, const RECT& gauge, bool enabled) const {
    const Rows rows = RowsIn(gauge);
    Fill(dc, gauge, KX_GetSysColor(COLOR_BTNFACE));
    const COLORREF closed = KX_GetSysColor(COLOR_BTNSHADOW), text = TextColor(enabled);
    const auto band = [&](long top, long bottom, COLORREF color) {
        if (top < bottom) Fill(dc, {gauge.left, top, gauge.right, bottom}, color);
    };
    const long line = Line();
    const auto stripes = [&](long top, long bottom) {
        for (long row = top; row < bottom; row += 3 * line)
            band(row, std::min(row + line, bottom), closed);
    };
    if (rows.upper) stripes(gauge.top, *rows.upper);
    if (rows.lower) stripes(*rows.lower + 3 * line, gauge.bottom);
    // Of a range of millimetres a stack is less than a row.
    if (rows.top && rows.bottom) {
        const long top = std::min(*rows.top, *rows.bottom), bottom = std::max(*rows.top, *rows.bottom) + 1;
        const long least = std::max(bottom, top + 2 * line);
        band(top, std::min(least, gauge.bottom),
             enabled ? KX_GetVorGuiColor(eKxVorGuiColor_ScaleValue) : KX_GetSysColor(COLOR_GRAYTEXT));
    }
    for (const auto& limit : {rows.upper, rows.lower})
        if (limit) Fill(dc, {gauge.left - Zoomed(2), *limit, gauge.right, *limit + line}, text);
    if (rows.home) Fill(dc, {gauge.left - Zoomed(4), *rows.home, gauge.left, *rows.home + line}, text);
    const Selection frame(dc, GetStockObject(NULL_BRUSH)), pen(dc, GetStockObject(DC_PEN));
    SetDCPenColor(dc, closed);
    Rectangle(dc, gauge.left - 1, gauge.top - 1, gauge.right + 1, gauge.bottom + 1);
    if (!rows.at) return;
    const COLORREF mark = MarkColor(enabled);
    Fill(dc, {gauge.left, *rows.at, gauge.right, *rows.at + line}, mark);
    // The head points to where it goes, hollow until it is there.
    const int head = rows.target.value_or(*rows.at);
    const bool there = head == *rows.at;
    SetDCPenColor(dc, mark);
    SetDCBrushColor(dc, there ? mark : KX_GetSysColor(COLOR_WINDOW));
    const Selection brush(dc, GetStockObject(DC_BRUSH));
    const long size = Zoomed(kHead), half = size * 2 / 3, x = gauge.right + 1;
    const POINT corners[] = {{x, head}, {x + size, head - half}, {x + size, head + half}};
    Polygon(dc, corners, 3);
}

void View::DrawDigits(HDC dc, const RECT& place, bool enabled) const {
    const CKxStringW text = DigitsText();
    const long unit = Zoomed(kUnit), room = place.right - place.left - unit;
    const double zoom = CKxGUILayoutManager::GetGuiZoom();
    double large = kLarge;
    HFONT font = KX_GetDefaultGuiFontBoldZoom(zoom * large);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, TextColor(enabled && m_known));
    {
        const Selection measuring(dc, font);
        if (const long width = WidthOf(dc, text); width > room && width > 0)
            font = KX_GetDefaultGuiFontBoldZoom(zoom * large * std::max(room, 1L) / static_cast<double>(width));
    }
    TEXTMETRICW digits{}, small{};
    long baseline = 0;
    {
        const Selection selected(dc, font);
        GetTextMetricsW(dc, &digits);
        const long top = (place.top + place.bottom - digits.tmHeight) / 2;
        baseline = top + digits.tmAscent;
        TextOutW(dc, place.left + room - WidthOf(dc, text), top, text, static_cast<int>(text.Length()));
    }
    if (!m_known || !m_drive.position) return;
    const Selection selected(dc, KX_GetDefaultGuiFontZoom(zoom));
    GetTextMetricsW(dc, &small);
    TextOutW(dc, place.left + room, baseline - small.tmAscent, kMicrometres, 3);
}

void View::DrawTrace(HDC dc, const Places& places, bool enabled) const {
    const RECT& place = places.trace;
    const long line = Line(), width = place.right - place.left;
    if (width > 2 && place.bottom - place.top > 4) {
        const kx::zstack::Axis axis{{SpanOf(m_trace).low, SpanOf(m_trace).high},
                                    static_cast<int>(place.top),
                                    static_cast<int>(place.bottom) - 1 - static_cast<int>(line)};
        Fill(dc, {place.left, place.bottom - line, place.right, place.bottom}, KX_GetSysColor(COLOR_BTNSHADOW));
        const auto x = [&](unsigned age) {
            return place.right - 1 - static_cast<long>(age) * (width - 1) / static_cast<long>(Trace::kSlots);
        };
        // Between two samples it stood where the first has it; one that jumps is joined to the next.
        Trace::Slot before{};
        for (std::size_t i = 0; i < m_trace.Count(); ++i) {
            const Trace::Slot slot = m_trace.At(i);
            const long right = i + 1 < m_trace.Count() ? x(m_trace.At(i + 1).age) : place.right;
            const double high = i > 0 ? std::max(slot.high, before.low) : slot.high;
            const double low = i > 0 ? std::min(slot.low, before.high) : slot.low;
            Fill(dc, {x(slot.age), axis.RowOf(high), std::max(right, x(slot.age) + 1), axis.RowOf(low) + line},
                 MarkColor(enabled));
            before = slot;
        }
    }
    SetTextColor(dc, TextColor(enabled));
    const Selection font(dc, KX_GetDefaultGuiFontZoom(CKxGUILayoutManager::GetGuiZoom()));
    RECT below = places.below;
    DrawTextW(dc, BelowText(), -1, &below, DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

Handled View::Handle(const Message& message) {
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        RECT stale{};
        GetClientRect(message.window, &stale);
        if (message.id == WM_PAINT && message.wParam == 0) GetUpdateRect(message.window, &stale, FALSE);
        return Paint(message, {}, KX_GetSysColorBrush(COLOR_WINDOW), [&](HDC dc, const RECT& area) {
            const bool enabled = IsWindowEnabled(message.window) != FALSE;
            const Places places = PlacesNow();
            const Selection frame(dc, GetStockObject(NULL_BRUSH)), pen(dc, GetStockObject(DC_PEN));
            SetDCPenColor(dc, KX_GetSysColor(COLOR_BTNSHADOW));
            Rectangle(dc, area.left, area.top, area.right, area.bottom);
            const auto isStale = [&](const RECT& place) {
                RECT common{};
                return IntersectRect(&common, &place, &stale) != FALSE;
            };
            if (isStale(WithHead(places.gauge))) DrawGauge(dc, places.gauge, enabled);
            if (isStale(places.digits)) DrawDigits(dc, places.digits, enabled);
            if (isStale(places.trace) || isStale(places.below)) DrawTrace(dc, places, enabled);
        });
    }
    case WM_ENABLE: InvalidateRect(message.window, nullptr, FALSE); return message.Default();
    // Nobody works with it, so the focus passes it by.
    case WM_GETDLGCODE: return DLGC_STATIC;
    case WM_SETFOCUS: return 0;
    // What screen readers are told, made when somebody asks.
    case WM_GETTEXTLENGTH:
    case WM_GETTEXT: {
        const CKxStringW text = DigitsText() + kMicrometres;
        if (message.id == WM_GETTEXTLENGTH) return static_cast<LRESULT>(text.Length());
        if (message.wParam == 0 || message.lParam == 0) return 0;
        auto* const out = reinterpret_cast<wchar_t*>(message.lParam);
        const std::size_t length = std::min<std::size_t>(text.Length(), message.wParam - 1);
        std::wmemcpy(out, text.c_str(), length);
        out[length] = L'\0';
        return static_cast<LRESULT>(length);
    }
    default: return std::nullopt;
    }
}

}  // namespace kx::zdrive
