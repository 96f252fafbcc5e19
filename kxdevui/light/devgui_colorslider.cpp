// The colour slider's table, power and range, and the ways by which the user commits one.
// devgui_colorslider_parts.cpp builds and places what is inside, devgui_colorslider_hpot.cpp is its thumb,
// devgui_colorslider_range.cpp the pair of thumbs.
#include <kxdevui/light/devgui_colorslider.h>

#include <algorithm>
#include <cmath>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

using kx::ui::Alive;

namespace {

constexpr wchar_t kSource[] = L"devgui_colorslider";

const CKxDevUI_Base* RootOf(const CKxDevUI_ColorSlider* slider) { return slider; }

}  // namespace

CKxDevUI_ColorSlider::CKxDevUI_ColorSlider()
    : m_requests(std::make_unique<kx::ui::Activity>(
          kx::ui::ActivityHost{[](HWND) { return -1L; }, [this](HWND, long) { return ThumbWindow(); },
                               [this](HWND) { return m_name.IsEmpty() ? m_title : m_name; },
                               [this](HWND) { ShowRequests(); }, [this](HWND) { return SignPlace(); }, true,
                               [this](HWND) { return ThumbWindow(); }, [this](HWND) { return m_hpot.ThumbArea(); }})),
      m_rangeHPot(this) {
    m_hpot.m_owner = this;
    // One entry a message, whatever keys are held.
    m_hpot.SetMouseWheelGranularity(1, 1, 1);
}

CKxDevUI_ColorSlider::~CKxDevUI_ColorSlider() {
    // Before the windows go: their messages must not come to an object whose derived part is gone already.
    kx::ui::Binding::CutLoose(this);
    Destroy();
}

// ---- Set-up --------------------------------------------------------------------------------------------------------

void CKxDevUI_ColorSlider::TakeTable(const SColorSliderValue* values, int count) {
    m_table.clear();
    m_marks.clear();
    m_values.clear();
    for (int i = 0; values && i < count; ++i) {
        if (std::isfinite(values[i].value)) m_table.push_back(values[i]);
    }
    const auto taken = static_cast<int>(m_table.size());
    if (values && taken < count) KX_LOG(kSource, L"%d entries of a table are no finite numbers", count - taken);
    for (const SColorSliderValue& each : m_table) {
        m_values.push_back(each.value);
        if (each.isMark || each.isMarkWithText) m_marks.push_back(each);
    }
}

void CKxDevUI_ColorSlider::Init(int sliderWidth, int sliderHeight, SColorSliderValue* values, int count,
                                CKxStringW name, bool nameBold, CKxStringW unit, CKxStringW numberFormat, bool showEdit,
                                EColorSliderType type, EColorSliderLayoutType layout, int editWidth) {
    const bool knownType = type >= eColorSliderType_HorizontalRainbow && type <= eColorSliderType_Range;
    const bool knownLayout = layout >= eColorSliderLayout_TwoRows && layout <= eColorSliderLayout_ColorPoint;
    m_sliderWidth = sliderWidth;
    m_sliderHeight = sliderHeight;
    m_editWidth = editWidth;
    m_showEdit = showEdit;
    m_nameBold = nameBold;
    m_name = std::move(name);
    m_unit = std::move(unit);
    m_numberFormat = std::move(numberFormat);
    m_type = knownType ? type : eColorSliderType_HorizontalRainbow;
    m_layoutType = knownLayout ? layout : eColorSliderLayout_TwoRows;
    TakeTable(values, count);
    m_powerIndex = kx::colorslider::NearestEntry(m_power, m_values);
    if (!m_values.empty()) {
        // A host that is being asked may hold a range whose thumbs would cross.
        m_range = Ordered(kx::colorslider::Snapped(m_range.minimum.value, m_range.maximum.value, m_values),
                          kx::colorslider::GivesWay::Minimum);
    }
    m_nameTextWidth = TextWidth(m_name);
    m_unitTextWidth = TextWidth(m_unit);
    LayOut();
    m_width = m_layout.width;
    m_height = m_layout.height;
    FillThumbs();
    if (!m_hWnd) return;
    SetWindowPos(m_hWnd, nullptr, 0, 0, m_width, m_height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Arrange();
}

void CKxDevUI_ColorSlider::FillThumbs() {
    const auto count = static_cast<int>(m_values.size());
    if (IsRange()) {
        m_rangeHPot.InitValues(m_values.data(), count);
        return;
    }
    m_hpot.InitValues(m_values.data(), count, 0);
    m_hpot.SetTransparent(false);
    // The values make it a plain list, which would have the plain scale.
    m_hpot.Look(m_type, this);
}

void CKxDevUI_ColorSlider::SetHorizontalRainbow(double fromNm, double toNm) {
    m_hpot.InitHorizontalRainbow(this, fromNm, toNm);
}

void CKxDevUI_ColorSlider::SetVerticalRainbow(double fromNm, double toNm, double fromValue, double toValue) {
    m_hpot.InitVerticalRainbow(this, fromNm, toNm, fromValue, toValue);
}

void CKxDevUI_ColorSlider::SetGradient(unsigned long fromColor, unsigned long toColor) {
    m_hpot.InitGradient(this, fromColor, toColor);
}

void CKxDevUI_ColorSlider::SetLineDrawSlider(unsigned long lowColor, unsigned long highColor) {
    LinesChanged(lowColor, highColor, false, false);
}

void CKxDevUI_ColorSlider::SetLineDrawSliderVorColors(int lowScheme, int highScheme, bool framed) {
    LinesChanged(static_cast<unsigned long>(lowScheme), static_cast<unsigned long>(highScheme), true, framed);
}

void CKxDevUI_ColorSlider::LinesChanged(unsigned long low, unsigned long high, bool scheme, bool framed) {
    if (IsRange()) {
        m_rangeHPot.InitLineDraw(this, low, high, scheme);
    } else {
        m_hpot.InitLineDraw(this, low, high, scheme, framed);
    }
}

// ---- Power ---------------------------------------------------------------------------------------------------------

double CKxDevUI_ColorSlider::SetPower(double value, bool redraw) {
    if (m_values.empty() || IsRange()) return 0;
    if (std::isnan(value)) return m_power;
    m_powerIndex = kx::colorslider::NearestEntry(value, m_values);
    const double snapped = m_values[static_cast<std::size_t>(m_powerIndex)];
    // The thumb may show another value than is held: at first, and when it has been moved and the move is refused.
    if (snapped == m_power && m_hpot.GetValue() == snapped) return m_power;

    const Alive alive(RootOf(this));
    // Whatever Init was given: a setter may have chosen another scale.
    const bool isLine = m_hpot.m_look == eColorSliderType_LineDraw;
    const bool isLamp = KX_GetLight(m_hWnd) != EKxLight::None;
    m_power = snapped;
    m_hpot.Show(snapped, !isLine || isLamp);
    // The edit's change of text is heard by OnCommand, which a host may have overridden.
    m_edit.SetNumber(snapped, m_numberFormat, false);
    if (!alive) return snapped;
    if (m_spin) m_spin.SetPosition(m_spin.PositionOf(snapped));
    if (!isLine) return m_power;
    if (!m_enabled) {
        m_scaleMustBeRebuilt = true;
    } else {
        m_hpot.LineChanged();
        if (redraw) m_hpot.Redraw();
    }
    return m_power;
}

double CKxDevUI_ColorSlider::GetPower() const { return m_power; }

double CKxDevUI_ColorSlider::CalculateMove(int steps) {
    if (m_values.empty()) return 0;
    m_powerIndex = kx::colorslider::MovedIndex(m_powerIndex, steps, static_cast<int>(m_values.size()));
    return m_values[static_cast<std::size_t>(m_powerIndex)];
}

// What is to be held after the host was asked: the value, perhaps another, or the power of now. Empty when this object
// is gone.
std::optional<double> CKxDevUI_ColorSlider::AskPower(double value) {
    const Alive alive(RootOf(this));
    const kx::ui::Activity::Question question(*m_requests);
    bool veto = false;
    OnPowerChanged(value, veto);
    if (!alive) return std::nullopt;
    if (veto) m_requests->Refused(question, -1);
    return veto ? m_power : value;
}

// ---- Range ---------------------------------------------------------------------------------------------------------

bool CKxDevUI_ColorSlider::SetRange(double minimum, double maximum) {
    if (m_values.empty() || !IsRange() || std::isnan(minimum) || std::isnan(maximum)) return false;
    const auto range = kx::colorslider::RangeFor(minimum, maximum, m_range.minimum.value, m_values);
    m_rangeHPot.Take(range);
    ShowRange(range);
    return true;
}

void CKxDevUI_ColorSlider::GetRange(double* minimum, double* maximum) const {
    if (minimum) *minimum = m_range.minimum.value;
    if (maximum) *maximum = m_range.maximum.value;
}

// What the thumbs show already. A host that hears of the edits may end this object.
void CKxDevUI_ColorSlider::ShowRange(const kx::colorslider::Range& range) {
    const Alive alive(RootOf(this));
    m_range = range;
    const auto [minimum, maximum] = range;
    m_minimumEdit.SetNumber(minimum.value, m_numberFormat, false);
    if (alive) m_edit.SetNumber(maximum.value, m_numberFormat, false);
    if (alive) m_minimumEdit.PaintNow();
    if (alive) m_edit.PaintNow();
}

// ---- What the user commits by edit boxes and arrows ----------------------------------------------------------------

LRESULT CKxDevUI_ColorSlider::OnCommand(UINT, WPARAM wParam, LPARAM) {
    const int id = LOWORD(wParam), code = HIWORD(wParam);
    if (id != eColorSliderId_Edit && id != eColorSliderId_MinimumEdit) return 0;
    if (code != kx::ui::kEditEnter && code != EN_KILLFOCUS) return 0;
    const CKxDevUI_EditBox& left = id == eColorSliderId_Edit ? m_edit : m_minimumEdit;
    if (code == EN_KILLFOCUS && !left.IsTyped() && KX_GetFieldHabits(left.GetEditWindow()).revert) return 1;
    if (IsRange()) {
        RangeTyped();
    } else {
        PowerTyped();
    }
    return 1;
}

void CKxDevUI_ColorSlider::PowerTyped() {
    const Alive alive(RootOf(this));
    double power = SetPower(m_edit.GetNumber(), true);
    // What was typed may be no entry, and SetPower leaves alone what shows the entry already.
    if (alive && !m_values.empty()) m_edit.SetNumber(power, m_numberFormat, false);
    if (!alive) return;
    m_editInProgress = true;
    bool veto = false;
    OnPowerChanged(power, veto);
    if (alive) m_editInProgress = false;
}

void CKxDevUI_ColorSlider::RangeTyped() {
    const Alive alive(RootOf(this));
    SetRange(m_minimumEdit.GetNumber(), m_edit.GetNumber());
    if (!alive) return;
    double minimum = 0, maximum = 0;
    GetRange(&minimum, &maximum);
    OnRangeChanged(minimum, maximum);
}

LRESULT CKxDevUI_ColorSlider::OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool horizontal) {
    const Alive alive(RootOf(this));
    const HWND arrows = m_spin;
    if (arrows && reinterpret_cast<HWND>(lParam) == arrows && LOWORD(wParam) == SB_THUMBPOSITION && !m_values.empty()) {
        const kx::ui::Activity::Question question(*m_requests);
        double value = m_spin.ValueOf(HIWORD(wParam));
        bool veto = false;
        OnPowerChanged(value, veto);
        if (!alive) return 0;
        if (veto) m_requests->Refused(question, -1);
        if (!veto && std::isfinite(value)) {
            // The arrows stay where they are: on an uneven table several of their steps may lie between two entries.
            SetPower(value, true);
        } else {
            m_spin.SetPosition(m_spin.PositionOf(m_power));
        }
        if (!alive) return 0;
    }
    return CKxDevUI_Container::OnScroll(message, wParam, lParam, horizontal);
}

void CKxDevUI_ColorSlider::OnPowerChanged(double&, bool&) {}
void CKxDevUI_ColorSlider::OnRangeChanged(double&, double&) {}
void CKxDevUI_ColorSlider::OnLeftButtonUp() {}

// ---- The whole control ---------------------------------------------------------------------------------------------

bool CKxDevUI_ColorSlider::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    return IsRange() ? m_rangeHPot.HandleMouseWheel(wParam, lParam) : m_hpot.HandleMouseWheel(wParam, lParam);
}

bool CKxDevUI_ColorSlider::GetHover() const { return IsRange() ? m_rangeHPot.GetHover() : m_hpot.GetHovered(); }

void CKxDevUI_ColorSlider::SetEnabled(bool enable) {
    const Alive alive(RootOf(this));
    CKxDevUI_Container::SetEnabled(enable);
    if (!alive || !m_enabled || !m_scaleMustBeRebuilt || m_hpot.m_look != eColorSliderType_LineDraw) return;
    m_scaleMustBeRebuilt = false;
    m_hpot.RecreateScale();
}

CKxStringW& CKxDevUI_ColorSlider::GetName() { return m_name; }

void CKxDevUI_ColorSlider::SetName(const CKxStringW& name) {
    if (name == m_name) return;
    m_name = name;
    if (!m_hWnd || !m_nameLabel) return;
    SetWindowTextW(m_nameLabel, m_name);
    InvalidateRect(m_nameLabel, nullptr, FALSE);
}

void CKxDevUI_ColorSlider::SetPointColor(int color) {
    if (m_pointColor == static_cast<COLORREF>(color)) return;
    m_pointColor = static_cast<COLORREF>(color);
    if (m_hWnd && m_nameLabel) RedrawWindow(m_nameLabel, nullptr, nullptr, RDW_INVALIDATE);
}
