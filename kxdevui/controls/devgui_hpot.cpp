// The slider's values, mouse, keys and routing; devgui_hpot_scale.cpp paints it.
#include <kxdevui/controls/devgui_hpot.h>

#include <windowsx.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/hpot_window.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_time.h>

namespace {

constexpr wchar_t kSource[] = L"devgui_hpot";
constexpr SIZE kUsualSize{150, 40};
constexpr unsigned kQuickClick = 100;  // milliseconds

double FiniteOrZero(double value) { return std::isfinite(value) ? value : 0; }

}  // namespace

ATOM CKxDevUI_HPot::m_Atom = 0;
std::map<HWND, CKxDevUI_HPot*> CKxDevUI_HPot::m_Instances;

CKxDevUI_HPot::CKxDevUI_HPot() = default;

CKxDevUI_HPot::~CKxDevUI_HPot() { kx::ui::Binding::EndOwnWindow(this); }

// ---- The window ----------------------------------------------------------------------------------------------------

HWND CKxDevUI_HPot::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::ui::Creation::Of(this, [&](const kx::ui::Creation& creation) {
        if (m_width < 0) m_width = kUsualSize.cx;
        if (m_height < 0) m_height = kUsualSize.cy;
        // Without CS_DBLCLKS, so that every second quick click is a press too.
        return creation.Window(
            this, m_Atom,
            {.name = L"KxDevUI_HPot", .object = L"CKxDevUI_HPot", .procedure = WndProc, .style = 0, .font = false},
            parent, {x, y}, {cx, cy});
    });
}

HWND CKxDevUI_HPot::Create(HWND parent) { return Create(parent, 0, 0, -1, -1, true, true); }

void CKxDevUI_HPot::Destroy() { kx::ui::Binding::EndWindow(this); }

bool CKxDevUI_HPot::GetEnabled() { return m_enabled; }

void CKxDevUI_HPot::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    EnableWindow(m_hWnd, enable);
}

bool CKxDevUI_HPot::IsUsable() const { return m_enabled && (!m_hWnd || IsWindowEnabled(m_hWnd)); }

void CKxDevUI_HPot::SetSize(long cx, long cy, long thumb) {
    m_width = cx;
    m_height = cy;
    m_thumbSize = thumb == -1 ? cy / 2 : thumb;
    SetWindowPos(m_hWnd, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CreateDefaultThumb();
    LookChanged();
}

void CKxDevUI_HPot::ResizeWindow(long cx, long cy) {
    const long thumb = cy == m_height ? m_thumbSize : -1;
    CKxDevUI_Base::ResizeWindow(cx, cy);
    m_thumbSize = thumb == -1 ? m_height / 2 : thumb;
    CreateDefaultThumb();
    LookChanged();
}

// ---- The values ----------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::SetType(eHPotType type) {
    m_scale.type = type;
    LookChanged();
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
    ValuesChanged();
}

bool CKxDevUI_HPot::TakeList(eHPotType type, const double* values, const double* regionSteps, int count) {
    const int taken = values ? std::max(count, 0) : 0, steps = regionSteps ? std::max(taken - 1, 0) : 0;
    const auto isFinite = [](double value) { return std::isfinite(value); };
    if (!std::all_of(values, values + taken, isFinite)) {
        KX_LOG(kSource, L"a list of %d values is refused: one of them is no finite number", count);
        return false;
    }
    std::vector<double> list(values, values + taken), grid(regionSteps, regionSteps + steps);
    std::transform(grid.begin(), grid.end(), grid.begin(), FiniteOrZero);
    m_scale.type = type;
    m_scale.values = std::move(list);
    if (type == eHPotType_LinearRegions) m_scale.regionSteps = std::move(grid);
    m_scale.minimum = taken > 0 ? m_scale.values.front() : 0;
    m_scale.maximum = taken > 0 ? m_scale.values.back() : 0;
    return true;
}

void CKxDevUI_HPot::InitValues(double* values, int count, double extra) {
    if (!TakeList(eHPotType_NonLinear, values, nullptr, count)) return;
    m_extra = m_scale.values.empty() ? 0 : extra;
    ValuesChanged();
}

void CKxDevUI_HPot::InitValues(double* values, double* regionSteps, int count, double step) {
    if (!TakeList(eHPotType_LinearRegions, values, regionSteps, count)) return;
    m_scale.step = FiniteOrZero(step);
    ValuesChanged();
}

void CKxDevUI_HPot::ValuesChanged() {
    ShowHeld();
    LookChanged();
}

// The held value was not found by the rules: its entry and place are looked up.
void CKxDevUI_HPot::ShowHeld() {
    m_held.index = kx::hpot::NearestEntry(m_scale, m_held.value);
    m_thumbPos = ValueToThumbPos(m_held.value);
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
    if (fromValue) {
        m_held.value = kx::hpot::Clamped(m_scale, m_held.value);
        if (m_aotf) {
            ShowHeld();
        } else {
            m_held.value = ThumbPosToValue(m_held.value, false);
            m_thumbPos = ValueToThumbPos(m_held.value);
        }
    } else if (!TakeFromThumb(notify)) {
        return;
    }
    if (redraw) RedrawThumb();
}

bool CKxDevUI_HPot::TakeFromThumb(bool notify) {
    const long position = std::clamp(m_thumbPos, 0L, std::max(m_trackLength, 0L));
    const double raw = kx::hpot::ThumbPosToRaw(m_scale, static_cast<int>(position), static_cast<int>(m_trackLength));
    const double snapped = ThumbPosToValue(raw, true);
    m_stickToNeighbour = false;
    m_thumbPos = ValueToThumbPos(snapped);
    if (snapped == m_held.value) return true;

    double value = snapped;
    bool skip = false;
    const long placed = m_thumbPos;
    const int entry = m_held.index;
    if (notify) {
        const Watch watch(this);
        OnHPotChange(value, skip);
        if (!watch) return false;
    }
    const bool kept = skip || !std::isfinite(value);
    if (!kept) m_held.value = value;
    // The host may have moved the thumb meanwhile, or ended the drag, which puts it back.
    if (kept || value != snapped || m_thumbPos != placed || m_held.index != entry) ShowHeld();
    return true;
}

void CKxDevUI_HPot::SetbAOTF(bool aotf) { m_aotf = aotf; }

// ---- Wheel and keys ------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::SetMouseWheelGranularity(int ctrl, int plain, int shift) {
    m_granularityCtrl = ctrl;
    m_granularityPlain = plain;
    m_granularityShift = shift;
}

void CKxDevUI_HPot::GetMouseWheelGranularity(int* ctrl, int* plain, int* shift) const {
    if (ctrl) *ctrl = m_granularityCtrl;
    if (plain) *plain = m_granularityPlain;
    if (shift) *shift = m_granularityShift;
}

bool CKxDevUI_HPot::HandleMouseWheel(WPARAM wParam, LPARAM) {
    const int units = kx::hpot::WheelSteps({m_granularityCtrl, m_granularityPlain, m_granularityShift}, wParam);
    return GET_WHEEL_DELTA_WPARAM(wParam) != 0 && IsUsable() && MoveTo(CalculateMove(units));
}

bool CKxDevUI_HPot::MoveByUnits(int direction, int granularity) {
    const long long steps = static_cast<long long>(direction) * granularity;
    return MoveTo(CalculateMove(static_cast<int>(std::clamp<long long>(steps, INT_MIN, INT_MAX))));
}

bool CKxDevUI_HPot::MoveTo(double value) {
    if (value == m_held.value) return false;
    const Watch watch(this);
    SetValue(value, true);
    if (watch) OnHPotDragDrop();
    return true;
}

kx::ui::Handled CKxDevUI_HPot::OnKey(WPARAM key) {
    if (!IsUsable()) return std::nullopt;
    // The entries of a list stand from left to right, whatever their order.
    const int right = !m_scale.IsList() && m_scale.maximum < m_scale.minimum ? -1 : 1;
    const int usual = kx::hpot::Chosen({m_granularityCtrl, m_granularityPlain, m_granularityShift}, 0);
    switch (key) {
    case VK_RIGHT: MoveByUnits(right, usual); return 0;
    case VK_LEFT: MoveByUnits(-right, usual); return 0;
    case VK_UP: MoveByUnits(1, usual); return 0;
    case VK_DOWN: MoveByUnits(-1, usual); return 0;
    case VK_PRIOR: MoveByUnits(1, m_granularityShift); return 0;
    case VK_NEXT: MoveByUnits(-1, m_granularityShift); return 0;
    case VK_HOME: MoveTo(m_scale.minimum); return 0;
    case VK_END: MoveTo(m_scale.maximum); return 0;
    default: return std::nullopt;
    }
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

void CKxDevUI_HPot::OnLButtonDown(POINT at) {
    if (!IsUsable()) return;
    const Watch watch(this);
    // Both tell other windows, whose handlers may do anything.
    ::SetFocus(m_hWnd);
    if (watch) SetCapture(m_hWnd);
    WindowPart* part = watch ? Part() : nullptr;
    if (!part || GetCapture() != m_hWnd) return;
    const RECT thumb = ThumbRect();
    if (!PtInRect(&thumb, at)) m_thumbPos = kx::ui::Difference(at.x, m_trackLeft);
    part->dragging = true;
    part->press = part->last = at;
    part->start = m_thumbPos;
    part->pressTime = KX_GetTimeCounter();
    part->quick = true;
    m_stickToNeighbour = false;
    RedrawThumb();
}

void CKxDevUI_HPot::OnMouseMove(const kx::ui::Message& message) {
    WindowPart* part = Part();
    const POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    if (part && part->dragging) {
        // The platform repeats moves that lead nowhere, after a press always.
        if (at.x == part->last.x && at.y == part->last.y) return;
        part->last = at;
        part->quick = false;
        m_thumbPos = kx::ui::Sum(part->start, kx::ui::Difference(at.x, part->press.x));
        Update(false, true, true);
    } else if (part && m_followHover && !GetHovered()) {
        const Watch watch(this);
        OnHoverForPad();
        if (!watch) return;
        kx::ui::TrackHover(message);
        RedrawThumb();
    }
}

void CKxDevUI_HPot::OnLButtonUp(POINT at) {
    const Watch watch(this);
    WindowPart* part = Part();
    if (part && part->dragging) {
        // First of all: the capture that is given back here is no loss.
        part->dragging = false;
        const bool stayed = part->quick && at.x == part->press.x && at.y == part->press.y;
        const bool quick = stayed && KX_GetTimeCounter() - part->pressTime < kQuickClick;
        const long position = kx::ui::Sum(part->start, kx::ui::Difference(at.x, part->press.x));
        ReleaseCapture();
        if (!watch) return;
        m_thumbPos = position;
        m_stickToNeighbour = quick;
        Update(false, true, true);
        if (!watch) return;
        OnHPotDragDrop();
        if (!watch) return;
    }
    OnLeftButtonUp();
}

void CKxDevUI_HPot::OnCaptureLost() {
    WindowPart* part = Part();
    if (!part || !part->dragging) return;
    part->dragging = false;
    m_thumbPos = ValueToThumbPos(m_held.value);
    RedrawThumb();
}

void CKxDevUI_HPot::OnMouseLeave(const kx::ui::Message& message) {
    if (!kx::ui::TrackHover(message)) return;
    const Watch watch(this);
    UnHoverForPad();
    if (watch) RedrawThumb();
}

void CKxDevUI_HPot::SetHover(bool hover) {
    m_followHover = hover;
    if (hover || !GetHovered()) return;
    kx::ui::StateOf(m_hWnd)->hovered = false;
    RedrawThumb();
}

bool CKxDevUI_HPot::GetHover() const { return m_followHover; }

bool CKxDevUI_HPot::GetHovered() const {
    const auto state = kx::ui::FindState(m_hWnd);
    return state && state->hovered;
}

// ---- Callbacks -----------------------------------------------------------------------------------------------------

LRESULT CKxDevUI_HPot::SendScroll(int code, double value) const {
    const HWND parent = GetAncestor(m_hWnd, GA_PARENT);
    if (!parent) return 0;
    const WPARAM wParam = MAKEWPARAM(code, static_cast<WORD>(kx::hpot::Truncated(value)));
    return SendMessageW(parent, WM_HSCROLL, wParam, reinterpret_cast<LPARAM>(m_hWnd));
}

void CKxDevUI_HPot::OnHPotChange(double& value, bool& skip) {
    // Both belong to the caller, and the slider may be gone by the answer.
    if (SendScroll(SB_THUMBTRACK, value) == 0) skip = true;
}

void CKxDevUI_HPot::OnHPotDragDrop() { SendScroll(SB_THUMBPOSITION, m_held.value); }
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
    const auto [window, id, wParam, lParam] = message;
    const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (id) {
    case WM_SIZE:
        // The class has the platform repaint a window whose size has changed.
        CreateDefaultThumb();
        ScaleChanged();
        return std::nullopt;
    case kx::ui::WM_KX_ZOOM_CHANGED:
        kx::ui::ApplyZoom(window);
        CreateDefaultThumb();
        LookChanged();
        return std::nullopt;
    case WM_ENABLE:
    case WM_SYSCOLORCHANGE: LookChanged(); return std::nullopt;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        if (WindowPart* part = Part()) part->focused = id == WM_SETFOCUS;
        RedrawThumb();
        return std::nullopt;
    case WM_PAINT:
    case WM_PRINTCLIENT: OnPaint(message); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_GETDLGCODE: return DLGC_WANTARROWS;
    case WM_KEYDOWN: return OnKey(wParam);
    case WM_MOUSEWHEEL: return HandleMouseWheel(wParam, lParam) ? kx::ui::Handled(0) : std::nullopt;
    case WM_LBUTTONDOWN: OnLButtonDown(at); return 0;
    case WM_MOUSEMOVE: OnMouseMove(message); return 0;
    case WM_LBUTTONUP: OnLButtonUp(at); return 0;
    case WM_MOUSELEAVE: OnMouseLeave(message); return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window) OnCaptureLost();
        return std::nullopt;
    default: return std::nullopt;
    }
}
