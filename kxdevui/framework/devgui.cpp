#include <kxdevui/framework/devgui.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cwchar>
#include <cwctype>
#include <utility>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_nearest.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_number.h>

namespace {

// Longer texts are no numbers that anybody typed.
using NumberText = std::array<wchar_t, 256>;

bool ReadNumberText(HWND edit, NumberText& text) {
    const int length = GetWindowTextLengthW(edit);
    if (length <= 0 || length >= static_cast<int>(text.size())) return false;
    return GetWindowTextW(edit, text.data(), static_cast<int>(text.size())) > 0;
}

// A whole number with nothing but blanks around it.
bool ReadInt(const wchar_t* text, int& value) {
    const CKxStringW plain = KX_HalfWidth(text);
    wchar_t* end = nullptr;
    errno = 0;
    const long number = std::wcstol(plain, &end, 10);
    const bool any = end != plain.c_str();
    while (std::iswspace(static_cast<wint_t>(*end)))
        ++end;
    if (!any || *end != L'\0' || errno == ERANGE || number < INT_MIN || number > INT_MAX) return false;
    value = static_cast<int>(number);
    return true;
}

KxSettingsSource& TheSettings() {
    static KxSettingsSource source;
    return source;
}

SIZE TextExtent(HWND window, HFONT font, const wchar_t* text, int length) {
    const kx::ui::WindowDC dc(window);
    const kx::ui::Selection selection(dc, font);
    SIZE extent{};
    GetTextExtentPoint32W(dc, text, length, &extent);
    return extent;
}

void BoldifyCaption(HWND label, double zoom) {
    wchar_t className[16];
    if (GetClassNameW(label, className, static_cast<int>(std::size(className))) == 0) return;
    if (_wcsicmp(className, L"Static") != 0) return;

    if ((GetWindowLongW(label, GWL_EXSTYLE) & WS_EX_TRANSPARENT) && GetWindowTextLengthW(label) < 254) {
        wchar_t text[254] = L"";
        const int length = GetWindowTextW(label, text, static_cast<int>(std::size(text)));
        const HFONT font = KX_GetDefaultGuiFontBoldZoom(zoom);
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        const SIZE extent = TextExtent(label, font, text, length);
        SetWindowPos(label, nullptr, 0, 0, extent.cx + 5, extent.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        if (zoom == CKxGUILayoutManager::GetGuiZoom()) CKxGUILayoutManager::RememberWindowSizeForGuiZoom(label);
        // Erased by the parent: a label that is transparent would write over what it shows.
        const RECT place = RectInParent(label);
        InvalidateRect(GetParent(label), &place, TRUE);
        InvalidateRect(label, nullptr, TRUE);
        return;
    }
    const LONG style = GetWindowLongW(label, GWL_STYLE);
    RECT rect{};
    GetWindowRect(label, &rect);
    if ((style & SS_SUNKEN) && rect.bottom - rect.top < 4) {
        SetWindowLongW(label, GWL_STYLE, style | static_cast<LONG>(WS_CLIPSIBLINGS));
    }
}

}  // namespace

RECT RectInParent(HWND window) {
    RECT rect{};
    if (!GetWindowRect(window, &rect)) return {};
    // GetParent would answer with the owner of a popup, in whose coordinates nothing is placed.
    MapWindowPoints(HWND_DESKTOP, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

long GetWndX(HWND window) { return RectInParent(window).left; }
long GetWndY(HWND window) { return RectInParent(window).top; }

void BoldifyCaptions(HWND window) { kx::ui::BoldifyCaptionsAt(window, CKxGUILayoutManager::GetGuiZoom()); }

void kx::ui::BoldifyCaptionsAt(HWND window, double zoom) {
    if (!IsWindow(window)) return;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        BoldifyCaption(child, zoom);
}

long FindNearestValue(double value, const double* values, long count) {
    if (!values || count <= 0) return -1;
    return static_cast<long>(kx::ui::NearestIndex(value, {values, static_cast<std::size_t>(count)}));
}

bool GetWndDouble(HWND edit, double& value) {
    NumberText text{};
    return ReadNumberText(edit, text) && KX_StringToDouble(text.data(), value);
}

bool GetWndInt(HWND edit, int& value) {
    NumberText text{};
    return ReadNumberText(edit, text) && ReadInt(text.data(), value);
}

void SetSettingsSource(KxSettingsSource source) { TheSettings() = std::move(source); }

bool GetSetting(const wchar_t* section, const wchar_t* name, CKxStringW& value) {
    // The source may set another one from within.
    const KxSettingsSource source = TheSettings();
    CKxStringW text;
    const auto ask = [&]() -> kx::ui::Handled {
        return source && source(section ? section : L"", name ? name : L"", text);
    };
    if (!kx::ui::Guarded(ask).value_or(false)) return false;
    value = text;
    return true;
}

bool GetSettingDouble(const wchar_t* section, const wchar_t* name, double& value) {
    CKxStringW text;
    return GetSetting(section, name, text) && KX_StringToDouble(text, value);
}

bool GetSettingInt(const wchar_t* section, const wchar_t* name, int& value) {
    CKxStringW text;
    return GetSetting(section, name, text) && ReadInt(text, value);
}
