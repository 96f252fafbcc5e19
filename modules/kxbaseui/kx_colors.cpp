#include <kxbaseui/kx_colors.h>

#include <array>
#include <utility>

#include <kxbaseui/kx_threadwindows.h>
#include <kxsystem/kx_log.h>

#include "kx_schemecolors.h"

namespace {

constexpr int kColorCount = COLOR_MENUBAR + 1;
using Palette = std::array<COLORREF, kColorCount>;

struct Tones {
    COLORREF window, windowText, face, text, light, highlight, shadow, darkShadow, grayText, selection, selectionText,
        info, infoText, caption, captionText, link;
};

// Spreads the few tones of a scheme over the system's indexes.
constexpr Palette Spread(const Tones& t) {
    Palette p{};
    p[COLOR_SCROLLBAR] = t.light;
    p[COLOR_BACKGROUND] = t.darkShadow;
    p[COLOR_ACTIVECAPTION] = t.caption;
    p[COLOR_INACTIVECAPTION] = t.shadow;
    p[COLOR_MENU] = t.face;
    p[COLOR_WINDOW] = t.window;
    p[COLOR_WINDOWFRAME] = t.darkShadow;
    p[COLOR_MENUTEXT] = t.text;
    p[COLOR_WINDOWTEXT] = t.windowText;
    p[COLOR_CAPTIONTEXT] = t.captionText;
    p[COLOR_ACTIVEBORDER] = t.face;
    p[COLOR_INACTIVEBORDER] = t.face;
    p[COLOR_APPWORKSPACE] = t.shadow;
    p[COLOR_HIGHLIGHT] = t.selection;
    p[COLOR_HIGHLIGHTTEXT] = t.selectionText;
    p[COLOR_BTNFACE] = t.face;
    p[COLOR_BTNSHADOW] = t.shadow;
    p[COLOR_GRAYTEXT] = t.grayText;
    p[COLOR_BTNTEXT] = t.text;
    p[COLOR_INACTIVECAPTIONTEXT] = t.grayText;
    p[COLOR_BTNHIGHLIGHT] = t.highlight;
    p[COLOR_3DDKSHADOW] = t.darkShadow;
    p[COLOR_3DLIGHT] = t.light;
    p[COLOR_INFOTEXT] = t.infoText;
    p[COLOR_INFOBK] = t.info;
    p[COLOR_HOTLIGHT] = t.link;
    p[COLOR_GRADIENTACTIVECAPTION] = t.caption;
    p[COLOR_GRADIENTINACTIVECAPTION] = t.shadow;
    p[COLOR_MENUHILIGHT] = t.selection;
    p[COLOR_MENUBAR] = t.face;
    return p;
}

constexpr COLORREF Gray(int level) { return RGB(level, level, level); }

constexpr Palette kLight = Spread({.window = Gray(255),
                                   .windowText = Gray(0),
                                   .face = Gray(240),
                                   .text = Gray(0),
                                   .light = Gray(227),
                                   .highlight = Gray(255),
                                   .shadow = Gray(160),
                                   .darkShadow = Gray(105),
                                   .grayText = Gray(109),
                                   .selection = RGB(0, 115, 207),
                                   .selectionText = Gray(255),
                                   .info = RGB(255, 255, 225),
                                   .infoText = Gray(0),
                                   .caption = RGB(153, 180, 209),
                                   .captionText = Gray(0),
                                   .link = RGB(0, 102, 204)});

// Dim enough for a dark room; text at a contrast of more than 7 to 1.
constexpr Palette kDark = Spread({.window = Gray(30),
                                  .windowText = Gray(230),
                                  .face = Gray(45),
                                  .text = Gray(230),
                                  .light = Gray(62),
                                  .highlight = Gray(78),
                                  .shadow = Gray(96),
                                  .darkShadow = Gray(130),
                                  .grayText = Gray(140),
                                  .selection = RGB(38, 105, 170),
                                  .selectionText = Gray(255),
                                  .info = RGB(60, 60, 50),
                                  .infoText = Gray(230),
                                  .caption = RGB(60, 70, 80),
                                  .captionText = Gray(230),
                                  .link = RGB(110, 175, 240)});

constexpr Palette kHighContrast = Spread({.window = Gray(0),
                                          .windowText = Gray(255),
                                          .face = Gray(0),
                                          .text = Gray(255),
                                          .light = Gray(255),
                                          .highlight = Gray(255),
                                          .shadow = Gray(255),
                                          .darkShadow = Gray(255),
                                          .grayText = RGB(63, 242, 63),
                                          .selection = RGB(255, 255, 0),
                                          .selectionText = Gray(0),
                                          .info = Gray(0),
                                          .infoText = RGB(255, 255, 0),
                                          .caption = RGB(128, 0, 128),
                                          .captionText = Gray(255),
                                          .link = RGB(255, 255, 0)});

EKxColorScheme s_scheme = eKxColorScheme_System;
bool s_followsSystem = false, s_isTelling = false;

const Palette* CurrentPalette() {
    switch (s_scheme) {
    case eKxColorScheme_Light: return &kLight;
    case eKxColorScheme_Dark: return &kDark;
    case eKxColorScheme_HighContrast: return &kHighContrast;
    default: return nullptr;
    }
}

bool IsColorIndex(int index) { return index >= 0 && index < kColorCount; }

void Choose(EKxColorScheme scheme) {
    if (scheme == s_scheme) return;
    s_scheme = scheme;
    const bool before = std::exchange(s_isTelling, true);
    for (const HWND window : kx::ThreadWindows()) {
        if (s_scheme != scheme) break;  // a window chose another one, and told everybody
        if (!IsWindow(window)) continue;
        // As SendMessage, but for windows of other threads, which would be waited for.
        SendNotifyMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
    }
    s_isTelling = before;
}

}  // namespace

bool kx::IsOnDarkGround() { return s_scheme == eKxColorScheme_Dark || s_scheme == eKxColorScheme_HighContrast; }
bool kx::IsTellingOfScheme() { return s_isTelling; }
void kx::FollowSystemAgain() {
    if (s_followsSystem) KX_FollowSystemColorScheme();
}

COLORREF KX_GetSysColor(int index) {
    if (!IsColorIndex(index)) return 0;
    const Palette* palette = CurrentPalette();
    return palette ? (*palette)[static_cast<std::size_t>(index)] : GetSysColor(index);
}

HBRUSH KX_GetSysColorBrush(int index) {
    if (!IsColorIndex(index)) return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    const Palette* palette = CurrentPalette();
    if (!palette) return GetSysColorBrush(index);
    // One brush for each index and scheme, made when first asked for and kept.
    static std::array<std::array<HBRUSH, kColorCount>, eKxColorScheme_HighContrast + 1> brushes{};
    HBRUSH& brush = brushes[static_cast<std::size_t>(s_scheme)][static_cast<std::size_t>(index)];
    if (!brush) brush = CreateSolidBrush((*palette)[static_cast<std::size_t>(index)]);
    return brush ? brush : GetSysColorBrush(index);
}

COLORREF KX_GetVorGuiColor(int entry) {
    switch (entry) {
    // On dark ground the selection's colour is too dim for a thin line.
    case eKxVorGuiColor_ScaleValue:
        return KX_GetSysColor(s_scheme == eKxColorScheme_Dark ? COLOR_HOTLIGHT : COLOR_HIGHLIGHT);
    case eKxVorGuiColor_ScaleRest: return KX_GetSysColor(COLOR_BTNSHADOW);
    case eKxVorGuiColor_Alert:
        return s_scheme == eKxColorScheme_HighContrast ? RGB(255, 255, 0)
               : s_scheme == eKxColorScheme_Dark       ? RGB(255, 128, 112)
                                                       : RGB(196, 32, 24);
    default: return KX_GetSysColor(entry);
    }
}

EKxColorScheme KX_GetColorScheme() { return s_scheme; }

void KX_SetColorScheme(EKxColorScheme scheme) {
    if (scheme < eKxColorScheme_System || scheme > eKxColorScheme_HighContrast) {
        KX_LOG(L"kx_colors", L"there is no colour scheme %d", static_cast<int>(scheme));
        return;
    }
    s_followsSystem = false;
    Choose(scheme);
}

// ---- The system's settings -----------------------------------------------------------------------------------------

SKxSystemColorSettings KX_GetSystemColorSettings() {
    SKxSystemColorSettings settings;
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    settings.highContrast = SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
                            (contrast.dwFlags & HCF_HIGHCONTRASTON);
    DWORD light = 0, size = sizeof light;
    if (RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                     L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size) == ERROR_SUCCESS)
        settings.light = light != 0;
    return settings;
}

EKxColorScheme KX_SchemeForSettings(const SKxSystemColorSettings& settings) {
    return settings.highContrast           ? eKxColorScheme_HighContrast
           : settings.light.value_or(true) ? eKxColorScheme_Light
                                           : eKxColorScheme_Dark;
}

void KX_FollowSystemColorScheme() {
    s_followsSystem = true;
    Choose(KX_SchemeForSettings(KX_GetSystemColorSettings()));
}

bool KX_IsFollowingSystemColorScheme() { return s_followsSystem; }
