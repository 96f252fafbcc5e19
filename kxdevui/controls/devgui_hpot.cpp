// The slider's values, and what mouse, wheel and keys do to them; devgui_hpot_scale.cpp paints it.
#include <kxdevui/controls/devgui_hpot.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include <kxdevui/controls/hpot_window.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_number.h>

using kx::hpot::Watch;

namespace {

constexpr wchar_t kSource[] = L"devgui_hpot";

double FiniteOrZero(double value) { return std::isfinite(value) ? value : 0; }

}  // namespace

ATOM CKxDevUI_HPot::m_Atom = 0;
std::map<HWND, CKxDevUI_HPot*> CKxDevUI_HPot::m_Instances;

CKxDevUI_HPot::CKxDevUI_HPot() = default;

CKxDevUI_HPot::~CKxDevUI_HPot() { kx::ui::Binding::EndOwnWindow(this); }

// ---- The window ----------------------------------------------------------------------------------------------------

HWND CKxDevUI_HPot::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::hpot::Create(this, m_Atom, kx::hpot::SpecOf(L"KxDevUI_HPot", L"CKxDevUI_HPot", WndProc),
                            Inside(this).Size(), parent, {x, y}, {cx, cy});
}

HWND CKxDevUI_HPot::Create(HWND parent) { return Create(parent, 0, 0, -1, -1, true, true); }

void CKxDevUI_HPot::Destroy() { kx::ui::Binding::EndWindow(this); }

bool CKxDevUI_HPot::GetEnabled() { return m_enabled; }

void CKxDevUI_HPot::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    EnableWindow(m_hWnd, enable);
}

void CKxDevUI_HPot::SetSize(long cx, long cy, long thumb) {
    kx::hpot::SetSize(m_hWnd, Inside(this).Size(), cx, cy, thumb);
    Inside(this).Place();
}

void CKxDevUI_HPot::ResizeWindow(long cx, long cy) {
    kx::hpot::ResizeWindow(*this, Inside(this).Size(), cx, cy);
    Inside(this).Place();
}

// ---- The values ----------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::SetType(eHPotType type) {
    m_scale.type = type;
    Inside(this).LookChanged();
}

void CKxDevUI_HPot::InitValues(double minimum, double maximum, double step, double wheelStep,
                               double wheelStepOverride) {
    if (!std::isfinite(minimum) || !std::isfinite(maximum)) {
        KX_LOG(kSource, L"the range %g to %g is refused", minimum, maximum);
        return;
    }
    m_scale.minimum = minimum;
    m_scale.maximum = maximum;
    m_scale.step = FiniteOrZero(step);
    m_scale.wheelStep = FiniteOrZero(wheelStep);
    m_scale.wheelStepOverride = FiniteOrZero(wheelStepOverride);
    Inside(this).ValuesChanged();
}

bool CKxDevUI_HPot::Inside::TakeList(eHPotType type, const double* values, const double* regionSteps, int count) {
    const int taken = values ? std::max(count, 0) : 0, steps = regionSteps ? std::max(taken - 1, 0) : 0;
    const auto isFinite = [](double value) { return std::isfinite(value); };
    if (!std::all_of(values, values + taken, isFinite)) {
        KX_LOG(kSource, L"a list of %d values is refused: one of them is no finite number", count);
        return false;
    }
    std::vector<double> list(values, values + taken), grid(regionSteps, regionSteps + steps);
    std::transform(grid.begin(), grid.end(), grid.begin(), FiniteOrZero);
    kx::hpot::Scale& scale = slider.m_scale;
    scale.type = type;
    scale.values = std::move(list);
    if (type == eHPotType_LinearRegions) scale.regionSteps = std::move(grid);
    scale.minimum = taken > 0 ? scale.values.front() : 0;
    scale.maximum = taken > 0 ? scale.values.back() : 0;
    return true;
}

void CKxDevUI_HPot::InitValues(double* values, int count, double extra) {
    if (!Inside(this).TakeList(eHPotType_NonLinear, values, nullptr, count)) return;
    m_extra = m_scale.values.empty() ? 0 : extra;
    Inside(this).ValuesChanged();
}

void CKxDevUI_HPot::InitValues(double* values, double* regionSteps, int count, double step) {
    if (!Inside(this).TakeList(eHPotType_LinearRegions, values, regionSteps, count)) return;
    m_scale.step = FiniteOrZero(step);
    Inside(this).ValuesChanged();
}

void CKxDevUI_HPot::Inside::ValuesChanged() {
    ShowHeld();
    LookChanged();
}

void CKxDevUI_HPot::Inside::ShowHeld() {
    slider.m_held.index = kx::hpot::NearestEntry(slider.m_scale, slider.m_held.value);
    PutBack();
}

long CKxDevUI_HPot::ValueToThumbPos(double value) const {
    return kx::hpot::ValueToThumbPos(m_scale, value, static_cast<int>(m_trackLength));
}

double CKxDevUI_HPot::ThumbPosToValue(double value, bool fromTrack) {
    const kx::hpot::Held found = kx::hpot::ThumbPosToValue(m_scale, value, fromTrack, m_held, m_stickToNeighbour);
    m_held.index = found.index;
    return found.value;
}

double CKxDevUI_HPot::CalculateMove(int steps) const { return kx::hpot::CalculateMove(m_scale, m_held, steps); }

void CKxDevUI_HPot::SetValue(double value, bool notify) {
    if (std::isnan(value)) return;
    m_thumbPos = ValueToThumbPos(value);
    if (std::abs(m_held.value - value) < 0.001) return;
    m_held.value = value;
    Update(true, notify, true);
}

double CKxDevUI_HPot::GetValue() const { return m_held.value; }

void CKxDevUI_HPot::Update(bool fromValue, bool notify, bool redraw) {
    Inside inside(this);
    if (fromValue) {
        m_held.value = kx::hpot::Clamped(m_scale, m_held.value);
        if (m_aotf) {
            inside.ShowHeld();
        } else {
            m_held.value = ThumbPosToValue(m_held.value, false);
            inside.PutBack();
        }
    } else if (!inside.TakeFromThumb(notify)) {
        return;
    }
    inside.TellValue();
    if (redraw) inside.ShowThumbs();
}

void CKxDevUI_HPot::Inside::TellValue() const {
    WindowPart* const part = Part();
    if (part && std::exchange(part->told, slider.m_held.value) != slider.m_held.value)
        KX_TellAccess(slider, EVENT_OBJECT_VALUECHANGE);
}

bool CKxDevUI_HPot::Inside::TakeFromThumb(bool notify) {
    const auto length = static_cast<int>(slider.m_trackLength);
    const auto position = static_cast<int>(std::clamp(slider.m_thumbPos, 0L, std::max(slider.m_trackLength, 0L)));
    const double raw = kx::hpot::ThumbPosToRaw(slider.m_scale, position, length);
    const double snapped = slider.ThumbPosToValue(raw, true);
    slider.m_stickToNeighbour = false;
    slider.m_thumbPos = slider.ValueToThumbPos(snapped);
    if (snapped == slider.m_held.value) return true;

    double value = snapped;
    bool skip = false;
    const long placed = slider.m_thumbPos;
    const int entry = slider.m_held.index;
    if (notify) {
        const Watch watch(&slider);
        slider.OnHPotChange(value, skip);
        if (!watch) return false;
    }
    const bool kept = skip || !std::isfinite(value);
    if (!kept) slider.m_held.value = value;
    // The host may have moved the thumb meanwhile, or ended the drag, which puts it back.
    if (kept || value != snapped || slider.m_thumbPos != placed || slider.m_held.index != entry) ShowHeld();
    return true;
}

void CKxDevUI_HPot::SetbAOTF(bool aotf) { m_aotf = aotf; }

// ---- Wheel and keys ------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::SetMouseWheelGranularity(int ctrl, int plain, int shift) { m_granularity = {ctrl, plain, shift}; }

void CKxDevUI_HPot::GetMouseWheelGranularity(int* ctrl, int* plain, int* shift) const {
    m_granularity.Get(ctrl, plain, shift);
}

bool CKxDevUI_HPot::HandleMouseWheel(WPARAM wParam, LPARAM) {
    Inside inside(this);
    return GET_WHEEL_DELTA_WPARAM(wParam) != 0 && inside.IsUsable() &&
           inside.MoveTo(CalculateMove(kx::hpot::WheelSteps(m_granularity, wParam)));
}

bool CKxDevUI_HPot::Inside::MoveByUnits(int direction, int granularity) {
    const long long steps = static_cast<long long>(direction) * granularity;
    return MoveTo(slider.CalculateMove(static_cast<int>(std::clamp<long long>(steps, INT_MIN, INT_MAX))));
}

bool CKxDevUI_HPot::Inside::MoveTo(double value) {
    if (value == slider.m_held.value) return false;
    const Watch watch(&slider);
    slider.SetValue(value, true);
    if (watch) slider.OnHPotDragDrop();
    return true;
}

// A client's value goes the way of the keys.
void CKxDevUI_HPot::Inside::Tell(KxAccess& access) const {
    access.role = ROLE_SYSTEM_SLIDER;
    access.value = KX_FormatNumber(L"%g", slider.m_held.value);
    // What is off the scale is no wish for its end.
    access.setValue = [of = &slider](const CKxStringW& text) {
        double value = 0;
        const bool isOnScale = KX_StringToDouble(text, value) && kx::hpot::Clamped(of->m_scale, value) == value;
        if (!isOnScale || !Inside(of).IsUsable()) return false;
        const Watch watch(of);
        const double before = of->m_held.value;
        Inside(of).MoveTo(value);
        return !watch || of->m_held.value != before || value == before;
    };
}

void CKxDevUI_HPot::Inside::MoveBy(const kx::hpot::KeyMove& move) {
    const kx::hpot::Scale& scale = slider.m_scale;
    if (move.size == kx::hpot::KeyMove::End) {
        MoveTo(move.direction < 0 ? scale.minimum : scale.maximum);
    } else if (move.size == kx::hpot::KeyMove::Page) {
        MoveByUnits(move.direction, slider.m_granularity.shift);
    } else {
        // The entries of a list stand from left to right, whatever their order.
        const bool turned = move.toSide && !scale.IsList() && scale.maximum < scale.minimum;
        MoveByUnits(turned ? -move.direction : move.direction, kx::hpot::Chosen(slider.m_granularity, 0));
    }
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::Inside::Hover(const kx::ui::Message& message) {
    if (!slider.m_followHover || slider.GetHovered()) return;
    const Watch watch(&slider);
    slider.OnHoverForPad();
    if (!watch) return;
    kx::ui::TrackHover(message);
    ShowThumbs();
}

void CKxDevUI_HPot::Inside::OnMouseLeave(const kx::ui::Message& message) {
    if (!kx::ui::TrackHover(message)) return;
    const Watch watch(&slider);
    slider.UnHoverForPad();
    if (watch) ShowThumbs();
}

bool CKxDevUI_HPot::Inside::Drop(const Watch& watch) {
    slider.OnHPotDragDrop();
    return static_cast<bool>(watch);
}

void CKxDevUI_HPot::SetHover(bool hover) {
    m_followHover = hover;
    if (hover || !GetHovered()) return;
    kx::ui::StateOf(m_hWnd)->hovered = false;
    Inside(this).ShowThumbs();
}

bool CKxDevUI_HPot::GetHover() const { return m_followHover; }

bool CKxDevUI_HPot::GetHovered() const {
    const auto state = kx::ui::FindState(m_hWnd);
    return state && state->hovered;
}

// ---- Callbacks -----------------------------------------------------------------------------------------------------

LRESULT CKxDevUI_HPot::Inside::SendScroll(int code, double value) const {
    const HWND parent = GetAncestor(slider.m_hWnd, GA_PARENT);
    if (!parent) return 0;
    const WPARAM wParam = MAKEWPARAM(code, static_cast<WORD>(kx::hpot::Truncated(value)));
    return SendMessageW(parent, WM_HSCROLL, wParam, reinterpret_cast<LPARAM>(slider.m_hWnd));
}

void CKxDevUI_HPot::OnHPotChange(double& value, bool& skip) {
    // Both belong to the caller, and the slider may be gone by the answer.
    if (Inside(this).SendScroll(SB_THUMBTRACK, value) == 0) skip = true;
}

void CKxDevUI_HPot::OnHPotDragDrop() { Inside(this).SendScroll(SB_THUMBPOSITION, m_held.value); }
void CKxDevUI_HPot::OnLeftButtonUp() {}
void CKxDevUI_HPot::OnHoverForPad() {}
void CKxDevUI_HPot::UnHoverForPad() {}

// ---- Routing -------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_HPot::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace kx::ui;
    return Entry<CKxDevUI_HPot, ByInstances<CKxDevUI_HPot, m_Instances>, WM_NCCREATE, Unbound::Default,
                 &CKxDevUI_HPot::Handle>({window, message, wParam, lParam});
}

kx::ui::Handled CKxDevUI_HPot::Handle(const kx::ui::Message& message) {
    return message.id == kx::ui::WM_KX_READINGS ? Inside(this).OnReadings() : Inside(this).Handle(message);
}
