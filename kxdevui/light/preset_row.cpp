#include <kxdevui/light/preset_row.h>

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/controls/hpot_common.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_time.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"preset_row";

// A button tells its control that it stores by this code of WM_COMMAND, beside BN_CLICKED.
constexpr int kStores = 0x0410;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kStepMilliseconds = 40;
// A click is over before anything is seen to grow.
constexpr unsigned kUnseen = 250;

// How a button is held: since when, and by the mouse or which key.
struct Hold {
    unsigned since;
    int by;
};

const Hold* HoldOf(HWND button) {
    const auto state = FindState(button);
    return state ? static_cast<const Hold*>(state->own.get()) : nullptr;
}

void EndHold(HWND button) {
    const auto state = FindState(button);
    if (!state || !state->own) return;
    state->own.reset();
    KillTimer(button, kTimer);
    InvalidateRect(button, nullptr, FALSE);
}

// With the mouse the platform's button has gone up, and clicks no more.
void Abandon(HWND button) {
    EndHold(button);
    if (GetCapture() == button) ReleaseCapture();
}

void Tell(HWND button, int code) {
    Notify(ParentOf(button), GetDlgCtrlID(button), code, reinterpret_cast<LPARAM>(button));
}

LRESULT Press(const Message& message, int by) {
    const LRESULT answer = CallPrevious(message);
    // It takes the focus, which may have been the end of it.
    if (!IsWindow(message.window) || GetCapture() != message.window) return answer;
    StateOf(message.window)->own = std::make_shared<Hold>(Hold{KX_GetTimeCounter(), by});
    SetTimer(message.window, kTimer, kStepMilliseconds, nullptr);
    return answer;
}

void Grow(HWND button) {
    const Hold* const hold = HoldOf(button);
    if (!hold || GetCapture() != button || !IsWindowVisible(button)) return Abandon(button);
    InvalidateRect(button, nullptr, FALSE);
    if (KX_GetTimeCounter() - hold->since < PresetRow::kHold) return;
    Abandon(button);
    Tell(button, kStores);
}

void MoveFocus(HWND button, int step) {
    const HWND to = GetNextDlgGroupItem(ParentOf(button), button, step < 0);
    SetFocus(to);
}

Handled HandleKey(const Message& message) {
    const bool first = (HIWORD(message.lParam) & KF_REPEAT) == 0;
    switch (message.wParam) {
    case VK_SPACE: return first ? Press(message, VK_SPACE) : 0;
    case VK_RETURN:
        // A key that is kept down is one click.
        if (!first) return 0;
        if (GetKeyState(VK_SHIFT) >= 0) return std::nullopt;
        Tell(message.window, kStores);
        return 0;
    case VK_ESCAPE:
        if (!HoldOf(message.window)) return std::nullopt;
        Abandon(message.window);
        return 0;
    default: return std::nullopt;
    }
}

Handled HandleButton(const Message& message) {
    const HWND button = message.window;
    if (TrackHover(message)) {
        // Only now: most are never pointed at.
        KX_UpdateToolTipWindow(button, KX_GetTranslation(L"Press to recall, hold to store", kSource));
        InvalidateRect(button, nullptr, FALSE);
    }
    switch (message.id) {
    case WM_ERASEBKGND: return 1;
    // The second of two quick clicks is one more.
    case WM_LBUTTONDBLCLK: return SendMessageW(button, WM_LBUTTONDOWN, message.wParam, message.lParam);
    case WM_LBUTTONDOWN: return Press(message, VK_LBUTTON);
    case WM_MOUSEMOVE: {
        RECT client{};
        GetClientRect(button, &client);
        const Hold* const hold = HoldOf(button);
        const POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
        if (hold && hold->by == VK_LBUTTON && !PtInRect(&client, at)) Abandon(button);
        return std::nullopt;
    }
    case WM_LBUTTONUP:
    case WM_KEYUP:
    case WM_CAPTURECHANGED:
    case WM_KILLFOCUS: EndHold(button); return std::nullopt;
    case WM_ENABLE:
        if (!message.wParam) Abandon(button);
        return std::nullopt;
    case WM_TIMER:
        if (message.wParam != kTimer) return std::nullopt;
        Grow(button);
        return 0;
    case WM_KEYDOWN:
        if (const Handled answer = HandleKey(message)) return answer;
        break;
    case WM_GETDLGCODE:
        // A dialog would take the Escape that ends it for its own.
        if (HoldOf(button)) return DLGC_BUTTON | DLGC_WANTALLKEYS;
        break;
    default: break;
    }
    return HandleRowKeys(message, 1, [button](int step) { MoveFocus(button, step); });
}

LRESULT CALLBACK ButtonProc(HWND button, UINT id, WPARAM wParam, LPARAM lParam) {
    const Message message{button, id, wParam, lParam};
    const LosingFocus losing(id, wParam, lParam);
    const Handled answer = Guarded([&] { return HandleButton(message); });
    return answer ? *answer : CallPrevious(message);
}

// The part of its time that a button has been held, once that is to be seen.
double GrownPart(HWND button) {
    const Hold* const hold = HoldOf(button);
    const unsigned held = hold ? KX_GetTimeCounter() - hold->since : 0;
    return held < kUnseen ? 0 : std::min(1.0, held / static_cast<double>(PresetRow::kHold));
}

}  // namespace

bool PresetRow::Make(const Parts& parts, const RECT& place, long gap) {
    for (int i = 0; i < kCount; ++i) {
        HWND button = nullptr;
        const RECT at = ShareOf(place, i, kCount, gap);
        const DWORD group = i == 0 ? WS_GROUP : 0;
        if (!parts.Add(button, L"BUTTON", m_first + i, TextOf(i), at, BS_OWNERDRAW | WS_TABSTOP | group)) return false;
        Subclass(button, ButtonProc, nullptr);
    }
    return true;
}

void PresetRow::Keep(HWND control, int preset, std::optional<double> intensity) {
    if (preset < 0 || preset >= kCount) return;
    if (intensity && !std::isfinite(*intensity)) intensity.reset();
    const Looks before = LooksNow();
    m_kept[static_cast<std::size_t>(preset)] = intensity;
    ShowChanges(control, before);
}

std::optional<double> PresetRow::Kept(int preset) const noexcept {
    return preset >= 0 && preset < kCount ? m_kept[static_cast<std::size_t>(preset)] : std::nullopt;
}

void PresetRow::Show(HWND control, const lamp::Scale& scale, int unit, double held) {
    const Looks before = LooksNow();
    m_scale = scale;
    m_unit = unit;
    m_held = held;
    ShowChanges(control, before);
}

CKxStringW PresetRow::TextOf(int preset) const {
    const auto kept = Kept(preset);
    return kept ? KX_FormatNumber(L"%.3g ", *kept) + lamp::UnitText(m_unit) : CKxStringW(L"\u2013");
}

bool PresetRow::CanRecall(int preset) const noexcept {
    const auto kept = Kept(preset);
    return kept && lamp::Has(m_scale, *kept);
}

bool PresetRow::IsDown(int preset) const noexcept { return CanRecall(preset) && *Kept(preset) == m_held; }

PresetRow::Looks PresetRow::LooksNow() const noexcept {
    Looks looks{};
    for (int i = 0; i < kCount; ++i)
        looks[static_cast<std::size_t>(i)] = {CanRecall(i), IsDown(i)};
    return looks;
}

void PresetRow::ShowChanges(HWND control, const Looks& before) const {
    const Looks now = LooksNow();
    for (int i = 0; i < kCount; ++i) {
        const HWND button = GetDlgItem(control, m_first + i);
        if (!button) continue;
        SetTextOf(button, TextOf(i));
        const auto at = static_cast<std::size_t>(i);
        if (now[at] != before[at]) InvalidateRect(button, nullptr, FALSE);
    }
}

bool PresetRow::Tell(HWND button, KxAccess& access) const {
    const int preset = GetDlgCtrlID(button) - m_first;
    if (preset < 0 || preset >= kCount) return false;
    access.name.Format(64, KX_GetTranslation(L"Preset %d", kSource), preset + 1);
    const auto kept = Kept(preset);
    access.value = kept ? KX_FormatNumber(L"%.3g ", *kept) + UnitInWords(lamp::UnitText(m_unit))
                        : KX_GetTranslation(L"empty", kSource);
    access.description = KX_GetTranslation(L"Press to recall, hold to store", kSource);
    if (IsDown(preset)) access.state |= STATE_SYSTEM_PRESSED;
    return true;
}

std::optional<PresetRow::Wish> PresetRow::WishOf(int id, int code) const noexcept {
    const int preset = id - m_first;
    if (preset < 0 || preset >= kCount || (code != BN_CLICKED && code != kStores)) return {};
    const bool stores = code == kStores;
    return stores || CanRecall(preset) ? std::optional(Wish{preset, stores}) : std::nullopt;
}

bool PresetRow::Draw(const Message& message) const {
    const auto* const item = reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
    const int preset = item ? static_cast<int>(item->CtlID) - m_first : -1;
    if (preset < 0 || preset >= kCount) return false;
    const int asked = ButtonLook(*item);
    const bool usable = CanRecall(preset);
    const int look = asked | (IsDown(preset) ? eKxButtonLook_On : 0);
    PaintItem(*item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        KX_DrawButtonBackground(dc, area, look, COLOR_BTNFACE);
        if (const double part = GrownPart(item->hwndItem); part > 0) {
            const long in = CKxGUILayoutManager::Zoomed(3), high = CKxGUILayoutManager::Zoomed(3);
            const RECT line{in, area.bottom - in - high,
                            in + std::lround(static_cast<double>(area.right - 2 * in) * part), area.bottom - in};
            const Brush brush(CreateSolidBrush(KX_GetVorGuiColor(eKxVorGuiColor_ScaleValue)));
            FillRect(dc, &line, brush.get());
        }
        const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(item->hwndItem, WM_GETFONT, 0, 0)));
        SetBkMode(dc, TRANSPARENT);
        // Paler, but not as pale as what is disabled: it can be stored.
        constexpr int kPale = 55;
        const COLORREF ink = KX_GetButtonTextColor(look), face = KX_GetSysColor(COLOR_BTNFACE);
        const bool isPale = !usable && !(look & eKxButtonLook_Disabled);
        SetTextColor(dc, isPale ? hpot::Mixed(face, ink, kPale) : ink);
        RECT text = area;
        if (look & (eKxButtonLook_Pressed | eKxButtonLook_On)) OffsetRect(&text, 1, 1);
        DrawTextW(dc, TextOf(preset), -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        if (ShowsFocus(*item)) KX_DrawButtonFocus(dc, area, look, 3);
    });
    return true;
}

}  // namespace kx::ui
