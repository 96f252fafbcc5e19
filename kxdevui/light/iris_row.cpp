#include <kxdevui/light/iris_row.h>

#include <cmath>
#include <cstdio>
#include <utility>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_log.h>

namespace kx::ui {

namespace {

constexpr long kPicture = 36, kField = 46, kUnit = 24;  // wide, in unzoomed pixels
constexpr int kLooks = 64;                              // pictures of an iris that are told from each other

std::string HexOf(COLORREF color) {
    char text[16];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(color), GetGValue(color), GetBValue(color));
    return text;
}

}  // namespace

IrisTold IrisTold::Of(const IKxDeviceIris& device, bool structure) {
    IrisTold told;
    told.diaphragm = device.GetDiaphragm();
    if (structure) {
        told.unit = device.GetUnit();
        told.widestNA = device.GetWidestNA();
        told.hasShutter = device.HasShutter();
        const long count = device.GetStepCount();
        if (count > iris::kMostSteps) KX_LOG(L"iris_row", L"an iris with %ld steps counts as one without", count);
        for (long i = 0; i < count && count <= iris::kMostSteps; ++i)
            told.table.push_back(device.GetStepAperture(i));
    }
    told.open = device.IsShutterOpen();
    if (double at = 0; device.GetAperture(at)) told.stands = at;
    if (double to = 0; device.GetTarget(to)) told.asked = to;
    if (!told.asked) told.asked = told.stands;
    told.activity = ReadActivity(device);
    return told;
}

IrisRow::IrisRow(LightControl& owner, int number, int first)
    : m_slider(owner, number), m_field(first + 1, 0, 0), m_first(first) {
    m_slider.SetMouseWheelGranularity(1, 1, 5);
}

bool IrisRow::Make(const Parts& parts, const RECT& place) {
    HWND picture = nullptr, unit = nullptr;
    if (!parts.Add(picture, L"STATIC", m_first, nullptr,
                   {place.left, place.top, place.left + kPicture, place.top + kPicture}, SS_OWNERDRAW))
        return false;
    if (m_table.empty()) return true;
    const long field = place.right - kUnit - kField;
    if (!m_slider.Make(parts, {place.left + kPicture + 4, place.top, field - 4, place.bottom}, WS_TABSTOP))
        return false;
    m_slider.Show(m_aperture);
    return parts && m_field.Make(parts, {field, place.top + 2, field + kField, place.top + 22}) &&
           parts.Label(unit, m_first + 2, iris::UnitText(m_unit),
                       {field + kField + 3, place.top + 5, place.right, place.top + 21});
}

bool IrisRow::SetTable(std::vector<double> steps, int unit, double widestNA) {
    const std::vector<double> before = std::exchange(m_table, iris::Table(std::move(steps)));
    const bool sameUnit = std::exchange(m_unit, unit) == unit;
    m_widestNA = widestNA;
    if (m_table == before && sameUnit) return false;
    if (!m_table.empty()) {
        m_slider.InitValues(m_table.data(), static_cast<int>(m_table.size()), 0);
        m_field.SetRestriction(m_table.front(), m_table.back());
        m_field.SetUnit(iris::UnitText(m_unit));
        m_slider.Show(m_aperture);
        m_field.Show(m_aperture);
    }
    return m_table.empty() != before.empty() || !sameUnit;
}

void IrisRow::SetAperture(double aperture) {
    if (!std::isfinite(aperture)) return;
    m_aperture = aperture;
    if (m_table.empty()) return;
    m_slider.Show(aperture);
    m_field.Show(aperture);
    m_field.PaintNow();
}

std::optional<double> IrisRow::TypedBy(int id, int code) {
    const auto typed = m_field.TypedBy(id, code);
    if (!typed) return {};
    const double step = iris::Nearest(m_table, *typed);
    return step != m_aperture ? std::optional(step) : std::nullopt;
}

void IrisRow::Enable(bool enable) {
    // What loses the focus may end the control, and this with it.
    const HWND slider = m_slider, field = m_field;
    ui::Enable(slider, enable);
    ui::Enable(field, enable);
}

bool IrisRow::Draw(HWND control, const Message& message, bool lit, bool lost) const {
    const auto* const item = reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
    if (!item || item->CtlID != static_cast<UINT>(m_first)) return false;
    const bool enabled = IsWindowEnabled(control) != FALSE;
    const COLORREF face = KX_GetSysColor(COLOR_BTNFACE), text = KX_GetSysColor(COLOR_BTNTEXT);
    const iris::Look look{HexOf(hpot::Mixed(face, text, 30)), HexOf(hpot::Mixed(face, text, 80)),
                          lit ? "#F5A800" : HexOf(face)};
    // Nobody knows how far it is open.
    const double opening = lost ? 0 : std::round(iris::Opening(m_table, m_aperture) * kLooks) / kLooks;
    PaintItem(*item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        CKxBitmapPool::DrawSVGImage(dc, iris::Picture(opening, look).c_str(), area, enabled && !lost);
    });
    return true;
}

void IrisRow::Redraw(HWND control) const {
    // Without a window this would invalidate the desktop.
    if (const HWND picture = GetDlgItem(control, m_first)) InvalidateRect(picture, nullptr, FALSE);
}

}  // namespace kx::ui
