// The Z scale of the Z stack panel: the whole range of the device, and beside it the stack, magnified.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_number.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <utility>

using namespace kx::ui;
using namespace kx::zstack;

namespace {

constexpr int kGap = 10, kWholeWidth = 10, kFunnel = 14, kStackWidth = 26, kMark = 6;  // unzoomed pixels
constexpr int kGripsGap = 6, kGripsFunnel = 20;                                        // with grips
constexpr int kReach = 3;                                                              // of a click
constexpr int kOverhang = 2;                                                           // of the line of Z

long Zoomed(int pixels) { return CKxGUILayoutManager::Zoomed(pixels); }

COLORREF Mix(COLORREF a, COLORREF b, int percentOfA) {
    const auto mix = [percentOfA](int one, int other) { return (one * percentOfA + other * (100 - percentOfA)) / 100; };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)), mix(GetBValue(a), GetBValue(b)));
}

bool IsDark(COLORREF color) { return GetRValue(color) + GetGValue(color) + GetBValue(color) < 3 * 128; }

void Fill(HDC dc, RECT rect, COLORREF color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// Sorts them from above and keeps them apart.
std::vector<int> TopsOf(std::vector<Label>& labels, const RECT& bar, int height) {
    std::stable_sort(labels.begin(), labels.end(), [](const Label& a, const Label& b) { return a.row < b.row; });
    std::vector<int> tops;
    tops.reserve(labels.size());
    for (const Label& each : labels)
        tops.push_back(each.row - height / 2);
    SpreadLabels(tops, height, static_cast<int>(bar.top), static_cast<int>(bar.bottom));
    return tops;
}

// Draws one scale with its values and colours.
class ScalePainter {
public:
    ScalePainter(HDC dc, const ScaleValues& values, bool enabled)
        : m_dc(dc), m_values(values), m_enabled(enabled), m_ground(KX_GetSysColor(COLOR_WINDOW)),
          m_stack(KX_GetSysColor(enabled ? COLOR_HIGHLIGHT : COLOR_GRAYTEXT)),
          m_mark(enabled ? MarkColor() : KX_GetSysColor(COLOR_GRAYTEXT)) {}

    void Bar(const RECT& bar, const Axis& axis, bool planes) const {
        Fill(m_dc, bar, m_ground);
        Hatch(bar, axis);
        if (m_values.top && m_values.bottom) {
            DrawStack(bar, axis, planes);
        } else if (const auto& end = m_values.top ? m_values.top : m_values.bottom; end && axis.Holds(*end)) {
            const long row = axis.RowOf(*end);
            Fill(m_dc, {bar.left, row, bar.right, row + std::max(2L, Zoomed(2))}, m_stack);
        }
        if (m_values.home && axis.Holds(*m_values.home)) DrawHome(bar, axis.RowOf(*m_values.home));
        FrameRect(m_dc, &bar, KX_GetSysColorBrush(COLOR_BTNSHADOW));
        if (m_values.z) DrawZ(bar, axis, planes);
    }

    void Labels(std::vector<Label> labels, const RECT& bar, long left, long right, int height) const {
        const std::vector<int> tops = TopsOf(labels, bar, height);
        const Selection font(m_dc, KX_GetDefaultGuiFont());
        SetBkMode(m_dc, TRANSPARENT);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            RECT place{left, tops[i], right, tops[i] + height};
            SetTextColor(m_dc, m_enabled ? labels[i].color : KX_GetSysColor(COLOR_GRAYTEXT));
            DrawTextW(m_dc, labels[i].text.c_str(), -1, &place, DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        }
    }

private:
    // Where the device cannot go.
    void Hatch(const RECT& bar, const Axis& axis) const {
        if (!m_values.rangeMin || !m_values.rangeMax) return;
        const Brush hatch(CreateHatchBrush(HS_BDIAGONAL, KX_GetSysColor(COLOR_GRAYTEXT)));
        SetBkColor(m_dc, KX_GetSysColor(COLOR_BTNFACE));
        RECT above = bar, below = bar;
        above.bottom = axis.RowOf(*m_values.rangeMax);
        below.top = axis.RowOf(*m_values.rangeMin) + 1;
        if (*m_values.rangeMax < axis.stretch.high) FillRect(m_dc, &above, hatch.get());
        if (*m_values.rangeMin > axis.stretch.low) FillRect(m_dc, &below, hatch.get());
    }

    void DrawStack(const RECT& bar, const Axis& axis, bool planes) const {
        const int top = axis.RowOf(*m_values.top), bottom = axis.RowOf(*m_values.bottom);
        RECT slab = bar;
        slab.top = std::min(top, bottom);
        slab.bottom = std::max(top, bottom) + 1;
        // As small as it may be among the whole, it is seen.
        if (!planes) return Fill(m_dc, slab, m_stack);
        if (!ShowsStack(m_values, axis.stretch)) return;
        Fill(m_dc, slab, Mix(m_stack, m_ground, 25));
        const long inset = Zoomed(5);
        for (const int row : PlaneRows(m_values, axis, static_cast<int>(std::max(3L, Zoomed(3)))))
            Fill(m_dc, {bar.left + inset, row, bar.right - inset, row + 1}, Mix(m_stack, m_ground, 80));
        const long thick = std::max(2L, Zoomed(2));
        if (axis.Holds(*m_values.top)) Fill(m_dc, {bar.left, top, bar.right, top + thick}, m_stack);
        if (axis.Holds(*m_values.bottom)) Fill(m_dc, {bar.left, bottom - thick + 1, bar.right, bottom + 1}, m_stack);
    }

    // Dashed, so that it differs from the ends without its colour.
    void DrawHome(const RECT& bar, int row) const {
        const long dash = std::max(3L, Zoomed(4));
        for (long x = bar.left; x < bar.right; x += 2 * dash)
            Fill(m_dc, {x, row, std::min(x + dash, bar.right), row + std::max(1L, Zoomed(1))},
                 KX_GetSysColor(m_enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    }

    // A line over the bar with an arrowhead beside it; beyond the stretch, the head alone, at its end. On its way the
    // head is hollow and points to where it goes.
    void DrawZ(const RECT& bar, const Axis& axis, bool head) const {
        const int at = axis.RowOf(*m_values.z), row = *AskedRow(m_values, axis);
        if (axis.Holds(*m_values.z)) {
            const long out = head && row == at ? 0 : Zoomed(kOverhang);
            Fill(m_dc, {bar.left - out, at, bar.right + out, at + std::max(1L, Zoomed(1))}, m_mark);
        }
        if (!head) return;
        const Selection brush(m_dc, GetStockObject(DC_BRUSH));
        const Selection pen(m_dc, GetStockObject(row == at ? NULL_PEN : DC_PEN));
        SetDCBrushColor(m_dc, row == at ? m_mark : KX_GetSysColor(COLOR_BTNFACE));
        SetDCPenColor(m_dc, m_mark);
        const long size = Zoomed(kMark), x = bar.right;
        const POINT corners[] = {{x, row}, {x + size, row - size * 2 / 3}, {x + size, row + size * 2 / 3 + 1}};
        Polygon(m_dc, corners, 3);
    }

    HDC m_dc;
    const ScaleValues& m_values;
    bool m_enabled;
    COLORREF m_ground, m_stack, m_mark;
};

std::wstring NumberText(double value) { return KX_FormatNumber(L"%0.2f", value).str(); }

int HeightOfText(HDC dc) {
    const Selection font(dc, KX_GetDefaultGuiFont());
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return static_cast<int>(metrics.tmHeight);
}

}  // namespace

COLORREF kx::zstack::MarkColor() { return IsDark(KX_GetSysColor(COLOR_WINDOW)) ? RGB(255, 160, 60) : RGB(200, 70, 0); }

// ---- Values --------------------------------------------------------------------------------------------------------

// A stack around no home goes with Z, so it is drawn around where Z stands now.
ScaleValues CKxDevUI_ZStack::ReadScale() const {
    // What a record of the host's might say beyond this cannot be drawn.
    const auto known = [this](int (CKxZStackData::*getter)(double*) const) -> Position {
        const Position value = Known(getter);
        return value && std::abs(*value) <= 1e12 ? value : std::nullopt;
    };
    ScaleValues values{known(&CKxZStackData::GetZRangeMin),
                       known(&CKxZStackData::GetZRangeMax),
                       known(&CKxZStackData::GetTop),
                       known(&CKxZStackData::GetBottom),
                       known(&CKxZStackData::GetHome),
                       known(&CKxZStackData::GetZPosition),
                       std::nullopt};
    double first = 0, second = 0;
    if (m_data->GetCount(&values.planes) == eKxZStack_Ok && m_data->GetPlane(0, &first) == eKxZStack_Ok) {
        values.firstPlane = first;
        if (values.planes > 1 && m_data->GetPlane(1, &second) == eKxZStack_Ok) values.pitch = second - first;
    }
    int type = 0;
    if (!values.home && values.z && m_data->GetType(&type) == eKxZStack_Ok && (type & 2) != 0) {
        for (Position* each : {&values.top, &values.bottom, &values.firstPlane})
            if (*each) **each += *values.z;
    }
    return values;
}

void CKxDevUI_ZStack::ShowScale(ScaleValues values) {
    const auto shown = ShownOf(m_hWnd);
    values.asked = KX_GetMeasured(m_hWnd).asked;
    // Where it stood before it was lost is no mark.
    if (m_requests->IsLost()) values.z.reset();
    if (values == shown->scale) return;
    const bool isLive = ShowZAlone(values);
    const ScaleValues before = std::exchange(shown->scale, values);
    const auto repaint = [&](int id, const Position& was, const Position& is) {
        if (StandsAt(before, was) != StandsAt(values, is)) InvalidateRect(Item(id), nullptr, FALSE);
    };
    repaint(IDC_ZS_EDIT_TOP, before.top, values.top);
    repaint(IDC_ZS_EDIT_MIDDLE, before.home, values.home);
    repaint(IDC_ZS_EDIT_BOTTOM, before.bottom, values.bottom);
    if (isLive) return;
    // A stretch that shows nothing of another stack, or one of another device, is nobody's choice.
    const bool sameRange = before.rangeMin == values.rangeMin && before.rangeMax == values.rangeMax;
    if (!shown->drag && (!sameRange || (shown->view && !ShowsStack(values, *shown->view)))) {
        shown->view.reset();
        shown->notches = 0;
    }
    RepaintScale();
    ShowGrips();
}

// The marks of Z reach beyond the bars.
void CKxDevUI_ZStack::RepaintScale() {
    RECT area = ScaleArea();
    InflateRect(&area, static_cast<int>(Zoomed(kMark)), static_cast<int>(Zoomed(kMark)));
    InvalidateRect(m_hWnd, &area, FALSE);
}

// A drive that moves is drawn many times a second: nothing else is, unless there is more to show.
bool CKxDevUI_ZStack::ShowZAlone(const ScaleValues& values) {
    const auto shown = ShownOf(m_hWnd);
    const ScaleValues& before = shown->scale;
    const auto same = [](const Stretch& a, const Stretch& b) { return a.low == b.low && a.high == b.high; };
    const Stretch whole = WholeStretch(values), stack = shown->StretchOf(values);
    if (shown->labelHeight == 0 || !same(whole, WholeStretch(before)) || !same(stack, shown->StretchOf(before)))
        return false;
    const RECT area = ScaleArea();
    const Places places = PlacesIn(area, m_grips);
    const Axis axis = AxisOf(places.stack, stack);
    // The smaller scale has no arrowhead.
    ScaleValues was = before, is = values;
    was.asked = is.asked = std::nullopt;
    const long overhang = Zoomed(kOverhang), head = Zoomed(kMark);
    const auto lines = StripsOf(was, is, AxisOf(places.whole, whole), static_cast<int>(std::max(1L, Zoomed(1))));
    const auto marks = StripsOf(before, values, axis, static_cast<int>(head * 2 / 3 + 1));
    auto labelsWere = LabelsOf(before, axis), labels = LabelsOf(values, axis);
    if (!lines || !marks || labels.size() != labelsWere.size()) return false;

    const auto repaint = [this](RECT rect) { InvalidateRect(m_hWnd, &rect, FALSE); };
    for (const Strip& each : *lines)
        repaint({places.whole.left - overhang, each.first, places.whole.right + overhang, each.last});
    for (const Strip& each : *marks)
        repaint({places.stack.left - overhang, each.first, places.stack.right + head + 1, each.last});
    const int height = shown->labelHeight;
    const std::vector<int> topsWere = TopsOf(labelsWere, area, height), tops = TopsOf(labels, area, height);
    for (std::size_t i = 0; i < tops.size(); ++i) {
        if (tops[i] == topsWere[i] && labels[i].text == labelsWere[i].text) continue;
        for (const int top : {topsWere[i], tops[i]})
            repaint({places.labels, top, area.right, top + height});
    }
    return true;
}

std::vector<Label> CKxDevUI_ZStack::LabelsOf(const ScaleValues& values, const Axis& axis) const {
    std::vector<Label> labels;
    const auto name = [this](int id) {
        wchar_t text[40] = L"";
        GetWindowTextW(Item(id), text, 40);
        return std::wstring(text);
    };
    for (const Grip grip : {Grip::Top, Grip::Home, Grip::Bottom}) {
        const Position z = PositionOf(values, grip);
        if (z && axis.Holds(*z))
            labels.push_back({axis.RowOf(*z), name(ButtonOf(grip)), KX_GetSysColor(COLOR_BTNTEXT)});
    }
    if (values.z) labels.push_back({axis.RowOf(*values.z), NumberText(*values.z), MarkColor()});
    return labels;
}

// ---- Places --------------------------------------------------------------------------------------------------------

// What the controls leave free, so that it goes with them through every zoom.
RECT CKxDevUI_ZStack::ScaleArea() const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const RECT upper = RectInParent(Item(IDC_ZS_TYPE_ENDS)), lower = RectInParent(Item(IDC_ZS_EDIT_BOTTOM));
    return {lower.right + Zoomed(m_grips ? kGripsGap : kGap), upper.top, client.right - Zoomed(2), lower.bottom};
}

Places kx::zstack::PlacesIn(const RECT& area, bool grips) {
    Places places{area, area, area, 0};
    places.whole.right = area.left + Zoomed(kWholeWidth);
    places.stack.left = places.whole.right + Zoomed(grips ? kGripsFunnel : kFunnel);
    places.stack.right = places.stack.left + Zoomed(kStackWidth);
    places.labels = places.stack.right + Zoomed(kMark) + Zoomed(3);
    places.grips.left = places.whole.right + Zoomed(kOverhang);
    places.grips.right = places.stack.left - Zoomed(kOverhang);
    return places;
}

// The frame's rows belong to no position.
Axis kx::zstack::AxisOf(const RECT& bar, const Stretch& stretch) {
    return {stretch, static_cast<int>(bar.top) + 1, static_cast<int>(bar.bottom) - 2};
}

// From the part of the whole that is magnified to the magnified one.
void kx::zstack::DrawFunnel(HDC dc, const Places& places, const ScaleValues& values, const Stretch& stretch) {
    const Axis whole = AxisOf(places.whole, WholeStretch(values));
    const Selection pen(dc, GetStockObject(DC_PEN));
    SetDCPenColor(dc, KX_GetSysColor(COLOR_BTNSHADOW));
    MoveToEx(dc, places.whole.right, whole.RowOf(stretch.high), nullptr);
    LineTo(dc, places.stack.left, places.stack.top);
    MoveToEx(dc, places.whole.right, whole.RowOf(stretch.low), nullptr);
    LineTo(dc, places.stack.left, places.stack.bottom - 1);
}

RECT CKxDevUI_ZStack::CubeArea() const {
    const RECT last = RectInParent(Item(IDC_ZS_TYPE_ASYMMETRIC)), edit = RectInParent(Item(IDC_ZS_EDIT_TOP));
    const long middle = (last.right + edit.right) / 2, half = (last.bottom - last.top) / 2;
    return {middle - half, last.top, middle + half, last.bottom};
}

void CKxDevUI_ZStack::EnableCube(bool enable) {
    if (m_cube == enable) return;
    m_cube = enable;
    if (!m_hWnd) return;
    const RECT area = CubeArea();
    InvalidateRect(m_hWnd, &area, FALSE);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

Handled CKxDevUI_ZStack::OnPaint(const Message& message) {
    const auto shown = ShownOf(m_hWnd);
    return Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& client) {
        Activity::DrawFace(m_hWnd, dc, client);
        const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
        if (m_cube) {
            const wchar_t* name = shown->inverted.value_or(false) ? L"ZSTACK_CUBE_INVERTED" : L"ZSTACK_CUBE";
            CKxBitmapPool::DrawOptimalImage(dc, CKxBitmapPool::AddImageBaseUI(name), CubeArea(), enabled);
        }
        const RECT area = ScaleArea();
        const Places places = PlacesIn(area, m_grips);
        const ScaleValues& values = shown->scale;
        const Stretch stretch = shown->StretchOf(values);
        const Axis whole = AxisOf(places.whole, WholeStretch(values)), stack = AxisOf(places.stack, stretch);
        const ScalePainter painter(dc, values, enabled);
        painter.Bar(places.whole, whole, false);
        if (shown->IsMagnified(values)) DrawFunnel(dc, places, values, stretch);
        painter.Bar(places.stack, stack, true);

        std::vector<Label> labels = LabelsOf(values, stack);
        if (shown->hover) {
            const int row = stack.RowOf(*shown->hover);
            Fill(dc, {places.stack.left, row, places.labels, row + 1}, KX_GetSysColor(COLOR_BTNTEXT));
            labels.push_back({row, NumberText(*shown->hover), KX_GetSysColor(COLOR_BTNTEXT)});
        }
        shown->labelHeight = HeightOfText(dc);
        painter.Labels(std::move(labels), area, places.labels, area.right, shown->labelHeight);
    });
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

namespace {

std::optional<double> PointedZ(const Shown& shown, const Places& places, POINT point) {
    const ScaleValues& values = shown.scale;
    const bool inStack = point.x >= places.stack.left && point.x < places.labels;
    const RECT& bar = places.stack;
    if (point.y < bar.top || point.y >= bar.bottom || !(inStack || PtInRect(&places.whole, point))) return {};
    const Axis axis = inStack ? AxisOf(bar, shown.StretchOf(values)) : AxisOf(places.whole, WholeStretch(values));
    return ClickedZ(values, axis, static_cast<int>(point.y), static_cast<int>(Zoomed(kReach)));
}

}  // namespace

Handled CKxDevUI_ZStack::HandleMouse(const Message& message) {
    const POINT point{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
    if (message.id == WM_LBUTTONDOWN) return OnLButtonDown(point);
    TrackHover(message);
    if (message.id == WM_MOUSELEAVE) {
        OnMouseLeave();
    } else {
        OnMouseMove(point);
    }
    return std::nullopt;
}

Handled CKxDevUI_ZStack::OnLButtonDown(POINT point) {
    const auto z = PointedZ(*ShownOf(m_hWnd), PlacesIn(ScaleArea(), m_grips), point);
    if (!z) return std::nullopt;
    RequestZ(*z);
    return 0;
}

void CKxDevUI_ZStack::OnMouseMove(POINT point) {
    ShowHover(PointedZ(*ShownOf(m_hWnd), PlacesIn(ScaleArea(), m_grips), point));
}

void CKxDevUI_ZStack::OnMouseLeave() { OnMouseMove({-1, -1}); }

// The position that the pointer is at, or that is dragged.
void CKxDevUI_ZStack::ShowHover(const Position& z) {
    const auto shown = ShownOf(m_hWnd);
    if (std::exchange(shown->hover, z) != z) RepaintScale();
}

// Over the scale the wheel magnifies it; elsewhere it is the host's.
Handled CKxDevUI_ZStack::OnWheel(const Message& message) {
    POINT point{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
    ScreenToClient(m_hWnd, &point);
    const RECT area = ScaleArea();
    if (!m_grips || !PtInRect(&area, point)) return std::nullopt;
    const int notches = message.id == WM_MOUSEWHEEL ? KX_TakeWheelNotches(m_hWnd, message.wParam)
                                                    : GET_WHEEL_DELTA_WPARAM(message.wParam) / WHEEL_DELTA;
    Magnify(notches, static_cast<int>(point.y));
    return 1;
}

// As many notches back show the stack as at first.
void CKxDevUI_ZStack::Magnify(int notches, int row) {
    const auto shown = ShownOf(m_hWnd);
    const ScaleValues& values = shown->scale;
    const Stretch stretch = shown->StretchOf(values);
    const Axis axis = AxisOf(PlacesIn(ScaleArea(), m_grips).stack, stretch);
    const Stretch magnified = Magnified(stretch, WholeStretch(values), axis.ZAt(row), notches);
    if (magnified.low == stretch.low && magnified.high == stretch.high) return;
    shown->notches += notches;
    shown->view = magnified;
    if (shown->notches == 0 && !shown->drag) shown->view.reset();
    RepaintScale();
    ShowGrips();
}
