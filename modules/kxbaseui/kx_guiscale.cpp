#include <kxbaseui/kx_guiscale.h>

#include <cstdlib>
#include <iterator>
#include <utility>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_platformlook.h>
#include <kxbaseui/kx_stockwindows.h>
#include <kxbaseui/kx_theme.h>

namespace {

constexpr UINT kUnscaled = 96;  // dots per inch

HWND s_window = nullptr;
bool s_followed = false;
UINT s_dpi = kUnscaled;

// Per cent, as the settings of the system keep it.
double TextScale() {
    DWORD percent = 0, size = sizeof percent;
    const LSTATUS read = RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Accessibility", L"TextScaleFactor",
                                      RRF_RT_REG_DWORD, nullptr, &percent, &size);
    return read == ERROR_SUCCESS && percent >= 100 && percent <= 225 ? percent / 100.0 : 1.0;
}

// Known before the windows are told: they draw with it.
bool Apply(UINT dpi) {
    const UINT previous = std::exchange(s_dpi, dpi);
    if (CKxGUILayoutManager::SetGuiScale(static_cast<double>(dpi) / kUnscaled * TextScale())) return true;
    // Unless a window that was told has brought another one.
    if (s_dpi == dpi) s_dpi = previous;
    return false;
}

// A dialog's units: a quarter of the first to the right, an eighth of the second down.
SIZE BaseUnits(HFONT font) {
    static constexpr wchar_t letters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, font);
    TEXTMETRICW metrics{};
    SIZE size{};
    GetTextMetricsW(dc, &metrics);
    GetTextExtentPoint32W(dc, letters, static_cast<int>(std::size(letters)) - 1, &size);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return {(size.cx / 26 + 1) / 2, metrics.tmHeight};
}

// From one scale's pixels to the other's, by way of the units that both were made of.
struct Units {
    SIZE from, to;
    int Across(long pixels) const { return MulDiv(MulDiv(pixels, 4, from.cx), to.cx, 4); }
    int Down(long pixels) const { return MulDiv(MulDiv(pixels, 8, from.cy), to.cy, 8); }
};

void UnscaleChild(HWND child, HFONT dialogs, HFONT unscaled, const Units& units) {
    const kx::WindowKind kind = kx::KindOf(child);
    const kx::Dims dims = kx::MeasureWindow(child, kind);
    const long whole = kx::WholeHeight(child, kind);
    RECT rect{};
    GetWindowRect(child, &rect);
    if (reinterpret_cast<HFONT>(SendMessageW(child, WM_GETFONT, 0, 0)) == dialogs)
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(unscaled), FALSE);
    SetWindowPos(child, nullptr, units.Across(dims.x), units.Down(dims.y), units.Across(rect.right - rect.left),
                 units.Down(whole), SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
}

void StopPlatformsScaling(HWND dialog) {
    // Since version 1703 of Windows 10.
    using Behaviour = BOOL(WINAPI*)(HWND, int, int);
    static const auto set = reinterpret_cast<Behaviour>(
        reinterpret_cast<void*>(kx::SystemFunction(L"user32.dll", "SetDialogDpiChangeBehavior")));
    constexpr int disableAll = 1;
    if (set) set(dialog, disableAll, disableAll);
}

}  // namespace

UINT kx::theme::FollowedDpi() { return s_followed ? s_dpi : 0; }

void KX_FollowScaleOf(HWND window) {
    s_window = IsWindow(window) ? window : nullptr;
    s_followed = s_window != nullptr;
    if (s_followed)
        Apply(GetDpiForWindow(window));
    else
        CKxGUILayoutManager::SetGuiScale(1.0);
}

bool KX_RelayScale(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!window || window != s_window) return false;
    switch (message) {
    case WM_DPICHANGED: {
        // The window itself is not asked: it may go on telling the scale that it was made at.
        if (!Apply(HIWORD(wParam))) return true;
        const auto* offered = reinterpret_cast<const RECT*>(lParam);
        if (offered && IsWindow(window))
            SetWindowPos(window, nullptr, offered->left, offered->top, offered->right - offered->left,
                         offered->bottom - offered->top, SWP_NOZORDER | SWP_NOACTIVATE);
        return true;
    }
    case WM_SETTINGCHANGE: Apply(s_dpi); return false;
    case WM_NCDESTROY: s_window = nullptr; return false;
    default: return false;
    }
}

void KX_UnscaleDialog(HWND dialog) {
    if (!s_followed || !IsWindow(dialog)) return;
    StopPlatformsScaling(dialog);
    const UINT dpi = GetDpiForWindow(dialog);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
    LOGFONTW description{};
    if (dpi == 0 || dpi == kUnscaled || GetObjectW(font, sizeof description, &description) == 0) return;
    // The height is made of points, which come back whole.
    const int points = MulDiv(std::abs(description.lfHeight), 72, static_cast<int>(dpi));
    const HFONT unscaled = KX_GetFontOfHeight(font, MulDiv(points, static_cast<int>(kUnscaled), 72));
    RECT base{0, 0, 4, 8};
    if (!unscaled || !MapDialogRect(dialog, &base) || base.right <= 0 || base.bottom <= 0) return;
    const Units units{{base.right, base.bottom}, BaseUnits(unscaled)};

    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        UnscaleChild(child, font, unscaled, units);
    SendMessageW(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(unscaled), FALSE);
    RECT client{}, whole{};
    GetClientRect(dialog, &client);
    GetWindowRect(dialog, &whole);
    const long frameX = whole.right - whole.left - client.right, frameY = whole.bottom - whole.top - client.bottom;
    const bool isChild = (GetWindowLongW(dialog, GWL_STYLE) & WS_CHILD) != 0;
    const kx::Dims dims = kx::MeasureWindow(dialog, kx::WindowKind::Dialog);
    SetWindowPos(dialog, nullptr, units.Across(dims.x), units.Down(dims.y), units.Across(client.right) + frameX,
                 units.Down(client.bottom) + frameY,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | (isChild ? 0u : SWP_NOMOVE));
}
