#include "kx_theme.h"

#include <kxbaseui/kx_visualstyles.h>

#include <uxtheme.h>
#include <vsstyle.h>
#include <vssym32.h>

#include <cstddef>
#include <map>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_gdi.h>
#include <kxbaseui/kx_platformlook.h>
#include <kxsystem/kx_log.h>

namespace kx::theme {

namespace {

// What is needed of uxtheme. It is looked up: a system without one of them shows the classic look.
struct Functions {
    decltype(&GetWindowTheme) windowTheme = nullptr;
    decltype(&OpenThemeData) open = nullptr;
    // Since version 1703 of Windows 10, and done without.
    HTHEME(WINAPI* openForDpi)(HWND, const wchar_t*, UINT) = nullptr;
    decltype(&CloseThemeData) close = nullptr;
    decltype(&DrawThemeBackground) draw = nullptr;
    decltype(&GetThemeBackgroundContentRect) content = nullptr;
    decltype(&GetThemeColor) color = nullptr;
    decltype(&IsThemePartDefined) defined = nullptr;

    // The first that is missing; null when all are there.
    const char* Load() {
        const char* missing = nullptr;
        const auto get = [&](auto& function, const char* name) {
            const FARPROC found = SystemFunction(L"uxtheme.dll", name);
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(reinterpret_cast<void*>(found));
            if (!function && !missing) missing = name;
        };
        get(windowTheme, "GetWindowTheme");
        get(open, "OpenThemeData");
        get(close, "CloseThemeData");
        get(draw, "DrawThemeBackground");
        get(content, "GetThemeBackgroundContentRect");
        get(color, "GetThemeColor");
        get(defined, "IsThemePartDefined");
        const char* const needed = missing;
        get(openForDpi, "OpenThemeDataForDpi");
        return needed;
    }
};

// By part, width, height and the colour of what it stands on.
using Key = std::tuple<Owner, int, int, long, long, COLORREF>;

struct Picture {
    Bitmap bitmap;
    MemoryDC dc;
    RECT inside;  // of its frame
};

// A style's parts from one WM_THEMECHANGED to the next.
struct Style {
    bool on = false;
    Functions functions;
    UINT dpi = 0;  // of the parts
    std::map<Owner, HTHEME> themes;
    std::map<Key, Picture> pictures;
    std::size_t pixels = 0;  // of all pictures

    Style();
    ~Style() { Forget(); }
    void Forget() {
        for (const auto& [owner, theme] : themes)
            if (theme) functions.close(theme);
        themes.clear();
        pictures.clear();
        pixels = 0;
    }
    Style(const Style&) = delete;
    Style& operator=(const Style&) = delete;
};

// One picture as large as the largest control, and of small ones some hundreds.
constexpr std::size_t kMostPixels = 1 << 20, kMostPictures = 256;

// The activation context of the library's first window. Without a reference to it, it could be gone by the next change.
HANDLE FirstContext() {
    static const HANDLE context = [] {
        HANDLE active = nullptr;
        return GetCurrentActCtx(&active) ? active : nullptr;
    }();
    return context;
}

// IsAppThemed and IsThemeActive tell of the program, at best: under Wine they say yes to one without a manifest.
bool IsStockControlThemed(const Functions& functions) {
    ULONG_PTR cookie = 0;
    const BOOL activated = ActivateActCtx(FirstContext(), &cookie);
    const HWND probe = CreateWindowExW(0, L"Button", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    if (activated) DeactivateActCtx(0, cookie);
    const bool themed = probe && functions.windowTheme(probe);
    if (probe) DestroyWindow(probe);
    return themed;
}

Style::Style() {
    if (const char* missing = functions.Load()) {
        static bool told = false;
        if (!std::exchange(told, true)) KX_LOG(L"kx_theme", L"no visual styles: uxtheme has no %hs", missing);
        return;
    }
    on = IsStockControlThemed(functions);
}

// Windows belong to the GUI thread, and so does this; at the end of the process nobody is there to be drawn for.
std::unique_ptr<Style>& Held() {
    static auto& held = *new std::unique_ptr<Style>;
    return held;
}

Style& Current() {
    if (!Held()) Held() = std::make_unique<Style>();
    Style& style = *Held();
    if (const UINT dpi = FollowedDpi(); std::exchange(style.dpi, dpi) != dpi) style.Forget();
    return style;
}

HTHEME OpenTheme(const Style& style, const wchar_t* name) {
    if (style.dpi != 0 && style.functions.openForDpi) return style.functions.openForDpi(nullptr, name, style.dpi);
    static bool told = false;
    if (style.dpi != 0 && !std::exchange(told, true))
        KX_LOG(L"kx_theme", L"uxtheme has no OpenThemeDataForDpi here; parts are drawn at the system's scale");
    return style.functions.open(nullptr, name);
}

HTHEME ThemeOf(Style& style, Owner owner) {
    static constexpr const wchar_t* names[] = {L"BUTTON", L"EDIT", L"HEADER", L"TOOLBAR"};
    const auto [entry, isNew] = style.themes.try_emplace(owner, nullptr);
    if (isNew) entry->second = OpenTheme(style, names[static_cast<int>(owner)]);
    return entry->second;
}

// Null when the part is not to be drawn.
HTHEME ThemeFor(const Part& part) {
    if (!IsUsed()) return nullptr;
    Style& style = Current();
    const HTHEME theme = ThemeOf(style, part.owner);
    // Part 0 is the control as a whole.
    return theme && (part.part == 0 || style.functions.defined(theme, part.part, 0)) ? theme : nullptr;
}

bool DrawAnew(HDC dc, HTHEME theme, const Part& part, const RECT& rect, COLORREF ground) {
    const COLORREF before = SetDCBrushColor(dc, ground);
    FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetDCBrushColor(dc, before);
    return SUCCEEDED(Current().functions.draw(theme, dc, part.part, part.state, &rect, nullptr));
}

// What is not the part's frame. Some styles leave even the line of a field to what it contains.
RECT InsideOf(const Part& part, SIZE size) {
    const RECT all{0, 0, size.cx, size.cy};
    const RECT content = ContentOf(part, all).value_or(all), inside{1, 1, size.cx - 1, size.cy - 1};
    RECT both{};
    IntersectRect(&both, &content, &inside);
    return both;
}

// Null when the part is not to be drawn, or there is no room for a picture.
const Picture* PictureOf(HDC reference, const Part& part, SIZE size, COLORREF ground) {
    Style& style = Current();
    const Key key{part.owner, part.part, part.state, size.cx, size.cy, ground};
    if (const auto found = style.pictures.find(key); found != style.pictures.end()) return &found->second;
    const auto pixels = static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(size.cy);
    const HTHEME theme = pixels > kMostPixels ? nullptr : ThemeFor(part);
    if (!theme) return nullptr;
    if (style.pixels + pixels > kMostPixels || style.pictures.size() >= kMostPictures) {
        style.pictures.clear();
        style.pixels = 0;
    }
    const RECT all{0, 0, size.cx, size.cy};
    Picture picture{Bitmap(CreateCompatibleBitmap(reference, size.cx, size.cy)),
                    MemoryDC(CreateCompatibleDC(reference)), InsideOf(part, size)};
    if (!picture.bitmap || !picture.dc || !SelectObject(picture.dc.get(), picture.bitmap.get())) return nullptr;
    if (!DrawAnew(picture.dc.get(), theme, part, all, ground)) return nullptr;
    style.pixels += pixels;
    return &style.pictures.emplace(key, std::move(picture)).first->second;
}

}  // namespace

bool IsUsed() { return KX_GetColorScheme() == eKxColorScheme_System && KX_HasVisualStyles(); }

bool Draw(HDC dc, const Part& part, const RECT& rect, COLORREF ground, bool frameOnly) {
    if (IsRectEmpty(&rect) || !IsUsed()) return false;
    const SIZE size{rect.right - rect.left, rect.bottom - rect.top};
    // Wine draws a part into a bitmap of its own as large, in which it finds pixels by a number of bytes of 31 bits.
    if (static_cast<long long>(size.cx) * size.cy > 1LL << 28) return false;
    const Picture* const picture = PictureOf(dc, part, size, ground);
    const HTHEME theme = picture ? nullptr : ThemeFor(part);
    if (!picture && !theme) return false;
    const int saved = frameOnly ? SaveDC(dc) : 0;
    if (frameOnly) {
        RECT inside = picture ? picture->inside : InsideOf(part, size);
        OffsetRect(&inside, rect.left, rect.top);
        ExcludeClipRect(dc, inside.left, inside.top, inside.right, inside.bottom);
    }
    const bool drawn =
        picture ? BitBlt(dc, rect.left, rect.top, size.cx, size.cy, picture->dc.get(), 0, 0, SRCCOPY) != FALSE
                : DrawAnew(dc, theme, part, rect, ground);
    if (saved) RestoreDC(dc, saved);
    return drawn;
}

std::optional<RECT> ContentOf(const Part& part, const RECT& rect) {
    const HTHEME theme = ThemeFor(part);
    RECT content{};
    const bool known =
        theme && SUCCEEDED(Current().functions.content(theme, nullptr, part.part, part.state, &rect, &content));
    return known ? std::optional(content) : std::nullopt;
}

std::optional<COLORREF> TextColorOf(const Part& part) {
    const HTHEME theme = ThemeFor(part);
    COLORREF color = 0;
    const bool known =
        theme && SUCCEEDED(Current().functions.color(theme, part.part, part.state, TMT_TEXTCOLOR, &color));
    return known ? std::optional(color) : std::nullopt;
}

}  // namespace kx::theme

bool KX_HasVisualStyles() { return kx::theme::Current().on; }

void KX_VisualStylesChanged() { kx::theme::Held().reset(); }
