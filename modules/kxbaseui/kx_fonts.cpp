#include <kxbaseui/kx_fonts.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <vector>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxsystem/kx_log.h>

namespace {

// 8 point at 96 dpi.
constexpr double kDefaultHeight = 8.0 * 96 / 72;

struct Font {
    LOGFONTW description;
    double unzoomedHeight;
    HFONT handle;
};

// Never freed: windows keep the handles until the process ends. Heights are whole pixels within the zoom's range, so
// the number of fonts is bounded by the number of faces in use.
std::vector<Font>& Fonts() {
    static auto* fonts = new std::vector<Font>;
    return *fonts;
}

bool SameDescription(const LOGFONTW& a, const LOGFONTW& b) {
    return a.lfHeight == b.lfHeight && a.lfWeight == b.lfWeight && a.lfItalic == b.lfItalic &&
           a.lfUnderline == b.lfUnderline && a.lfStrikeOut == b.lfStrikeOut && a.lfCharSet == b.lfCharSet &&
           std::wcscmp(a.lfFaceName, b.lfFaceName) == 0;
}

HFONT FindOrMake(LOGFONTW description, double unzoomedHeight, double zoom) {
    description.lfWidth = 0;
    description.lfHeight = -static_cast<LONG>(std::lround(std::max(1.0, unzoomedHeight * zoom)));
    for (const Font& font : Fonts()) {
        if (SameDescription(font.description, description) && font.unzoomedHeight == unzoomedHeight) return font.handle;
    }
    const HFONT handle = CreateFontIndirectW(&description);
    if (!handle) {
        KX_LOG(L"kx_fonts", L"no font of face %ls, height %ld", description.lfFaceName, description.lfHeight);
        return nullptr;
    }
    try {
        Fonts().push_back({description, unzoomedHeight, handle});
    } catch (...) {
        DeleteObject(handle);
        return nullptr;
    }
    return handle;
}

double UsableZoom(double zoom) {
    if (std::isnan(zoom)) return 1.0;
    return std::clamp(zoom, CKxGUILayoutManager::MinimumZoom, CKxGUILayoutManager::MaximumZoom);
}

HFONT DefaultFont(double zoom, LONG weight) {
    LOGFONTW description{};
    description.lfWeight = weight;
    description.lfCharSet = DEFAULT_CHARSET;
    std::wcscpy(description.lfFaceName, L"MS Shell Dlg 2");
    return FindOrMake(description, kDefaultHeight, UsableZoom(zoom));
}

}  // namespace

HFONT KX_GetDefaultGuiFont() { return DefaultFont(CKxGUILayoutManager::GetGuiZoom(), FW_NORMAL); }
HFONT KX_GetDefaultGuiFontBold() { return DefaultFont(CKxGUILayoutManager::GetGuiZoom(), FW_BOLD); }
HFONT KX_GetDefaultGuiFontZoom(double zoom) { return DefaultFont(zoom, FW_NORMAL); }
HFONT KX_GetDefaultGuiFontBoldZoom(double zoom) { return DefaultFont(zoom, FW_BOLD); }

HFONT KX_GetFontAtZoom(HFONT font, double fromZoom, double toZoom) {
    for (const Font& own : Fonts()) {
        if (own.handle == font) {
            // FindOrMake may move the vector's elements.
            const LOGFONTW description = own.description;
            return FindOrMake(description, own.unzoomedHeight, UsableZoom(toZoom));
        }
    }
    LOGFONTW description{};
    if (!font || GetObjectW(font, sizeof description, &description) == 0) return nullptr;
    if (UsableZoom(fromZoom) == UsableZoom(toZoom)) return font;
    // A positive height counts the cell, of which the characters are some five sixths.
    const double height = description.lfHeight < 0 ? -description.lfHeight : description.lfHeight * 5.0 / 6.0;
    return FindOrMake(description, height / UsableZoom(fromZoom), UsableZoom(toZoom));
}

HFONT KX_GetFontOfHeight(HFONT font, long pixels) {
    LOGFONTW description{};
    if (!font || GetObjectW(font, sizeof description, &description) == 0) return nullptr;
    return FindOrMake(description, static_cast<double>(std::max(1L, pixels)), 1.0);
}
