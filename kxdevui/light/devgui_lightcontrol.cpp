#include <kxdevui/light/devgui_lightcontrol.h>

#include <algorithm>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>

namespace kx::ui {

namespace {

// Unzoomed pixels. Around all parts there is room for the edge of what has failed.
constexpr long kShutterSide = 28, kTitleHeight = 16, kSignRoom = 18, kEdge = 4;

}  // namespace

// ---- The slider ----------------------------------------------------------------------------------------------------

void LightScale::Show(double value) {
    if (value == m_given && GetValue() == m_shown) return;
    m_given = value;
    m_held.value = value;
    Update(true, false, true);
    m_shown = GetValue();
}

void LightScale::SetBand(double from, double to) {
    if (!(from < to)) from = to = 0;
    if (from == m_from && to == m_to) return;
    m_from = from;
    m_to = to;
    if (m_hWnd) RecreateScale();
}

bool LightScale::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    return GetHovered() && CKxDevUI_HPot::HandleMouseWheel(wParam, lParam);
}

void LightScale::OnHPotChange(double& value, bool&) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const double held = m_owner.OnScale(m_number, value);
    if (alive) value = held;
}

// A drag has been asked for on its way; wheel and keys have moved the thumb already.
void LightScale::OnHPotDragDrop() {
    if (GetValue() == m_shown) return;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const double held = m_owner.OnScale(m_number, GetValue());
    if (alive) Show(held);
}

HBITMAP LightScale::CreateLinearBitmap(bool enabled) { return WithBand(CKxDevUI_HPot::CreateLinearBitmap(enabled)); }

HBITMAP LightScale::CreateNonlinearBitmap(bool enabled) {
    return WithBand(CKxDevUI_HPot::CreateNonlinearBitmap(enabled));
}

// Between the track and the ticks.
HBITMAP LightScale::WithBand(HBITMAP scale) const {
    if (!scale || !(m_from < m_to)) return scale;
    const MemoryDC dc(CreateCompatibleDC(nullptr));
    const Selection bitmap(dc.get(), scale);
    const auto at = [&](double value) {
        return m_trackLeft + std::clamp(ValueToThumbPos(value), 0L, std::max(m_trackLength, 0L));
    };
    const long line = hpot::ZoomedLine(1), top = m_lamp.strip.bottom + line;
    const RECT band{at(m_from), top, at(m_to) + line, top + 3 * line};
    const Brush brush(CreateSolidBrush(IsWindowEnabled(m_hWnd) ? KX_GetVorGuiColor(eKxVorGuiColor_ScaleValue)
                                                               : KX_GetSysColor(COLOR_BTNSHADOW)));
    FillRect(dc.get(), &band, brush.get());
    return scale;
}

// ---- The shutter ---------------------------------------------------------------------------------------------------

LightControl::CKxDevUI_LightShutter::CKxDevUI_LightShutter(LightControl& owner) : m_owner(owner) {
    Init({.showTitle = false});
    SetSize(kShutterSide, kShutterSide);
    RenameEnabled(false);
    m_buttonPlace = {0, 0, kShutterSide, kShutterSide};
}

bool LightControl::CKxDevUI_LightShutter::Make(const Parts& parts, const RECT& place) {
    if (!PartControl::Make(parts, place)) return false;
    SetEnabled(IsWindowEnabled(parts.Window()) != FALSE);
    // Like the shutter it has been sized by the zoom already.
    if (CKxGUILayoutManager::GetGuiZoom() != 1)
        SetWindowPos(m_button, nullptr, 0, 0, kShutterSide, kShutterSide, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return static_cast<bool>(parts);
}

void LightControl::CKxDevUI_LightShutter::OnStateChangeRequest(bool newState, bool& veto) {
    m_owner.OnShutterChangeRequest(newState, veto);
}

void LightControl::SetShutter(bool open) {
    if (open == GetShutter()) return;
    m_shutter.SetState(open);
    OnLook();
}

void LightControl::OnShutterChangeRequest(bool, bool&) {}
double LightControl::OnScale(int, double wanted) { return wanted; }
void LightControl::OnLook() {}

// ---- The control ---------------------------------------------------------------------------------------------------

void LightControl::Begin() {
    const auto slider = [this](HWND) -> HWND { return Shown() ? HWND{*Shown()} : nullptr; };
    m_requests = std::make_unique<Activity>(ActivityHost{
        [](HWND) { return -1L; }, [slider](HWND window, long) { return slider(window); },
        [this](HWND) { return m_title; }, [this](HWND) { ShowRequests(); }, [this](HWND) { return SignPlace(); }, false,
        slider, [this](HWND) { return Shown() ? Shown()->ThumbArea() : RECT{}; }});
}

LightScale* LightControl::Shown() const { return m_shown < m_scales.size() ? m_scales[m_shown] : nullptr; }

LightControl::~LightControl() = default;

bool LightControl::MakeTitle(const Parts& parts, long room) {
    m_requests->Attach(parts.Window());
    Enable(parts.Window(), m_enabled && !m_locked);
    return parts && parts.Label(m_label, kTitleId, m_title, {kEdge, 2, Width() - kSignRoom - room, 2 + kTitleHeight},
                                SS_ENDELLIPSIS);
}

bool LightControl::MakeShutter(const Parts& parts, POINT at) {
    return !m_hasShutter || m_shutter.Make(parts, {at.x, at.y, at.x + kShutterSide, at.y + kShutterSide});
}

long LightControl::Width() const noexcept { return std::clamp(m_width, 0L, 32767L); }

bool LightControl::Finish(const Parts& parts) {
    if (parts) m_requests->Show();
    return static_cast<bool>(parts);
}

void LightControl::SetEnabled(bool enable) {
    m_enabled = enable;
    // What loses the focus may end this object.
    if (m_hWnd) Enable(m_hWnd, enable && !m_locked);
}

bool LightControl::HandleMouseWheel(WPARAM wParam, LPARAM lParam) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    // A copy: a host may have the parts made anew.
    for (LightScale* const each : std::vector(m_scales)) {
        if (!alive) return true;
        if (HWND{*each} && each->HandleMouseWheel(wParam, lParam)) return true;
    }
    return false;
}

void LightControl::Follow(const KxActivity& now, CDMApi_LogDevId device, int number) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const auto shown = static_cast<std::size_t>(number);
    // The same may be told of another device; then its ring has to go.
    if (std::exchange(m_shown, shown) != shown && m_hWnd) ShowRequests();
    m_locked = now.activity == EKxActivity::Locked;
    if (m_hWnd) Enable(m_hWnd, m_enabled && !m_locked);
    if (alive) m_requests->Tell(now, device);
}

bool LightControl::IsLost() const { return m_requests->IsLost(); }

bool LightControl::IsGranted(const std::function<void(bool& veto)>& ask) {
    const Activity::Question question(*m_requests);
    const bool wasLost = IsLost();
    const auto answer = AskHost(this, ask);
    if (answer == kx::ui::Answer::Refused) m_requests->Refused(question, -1);
    return answer == kx::ui::Answer::Agreed && !m_locked && (wasLost || !IsLost());
}

void LightControl::ShowRequests() {
    const CKxStringW remark = m_requests->Remark();
    for (LightScale* const each : m_scales) {
        if (!HWND{*each}) continue;
        KX_UpdateToolTipWindow(*each, remark);
        each->Redraw();
    }
    InvalidateRect(m_hWnd, nullptr, TRUE);
    OnLook();
}

// At the right end of the title.
RECT LightControl::SignPlace() const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long side = Activity::SignSide(), gap = CKxGUILayoutManager::Zoomed(kEdge);
    return {client.right - gap - side, gap, client.right - gap, gap + side};
}

Handled LightControl::HandleLight(const Message& message) {
    if (message.id == WM_DESTROY) m_requests->Detach(message.window);
    // Its button is its own affair.
    if (message.id == WM_ENABLE) m_shutter.SetEnabled(message.wParam != FALSE);
    return std::nullopt;
}

}  // namespace kx::ui
