#include <kxdevui/optics/filter_image.h>

#include <algorithm>

#include <kxbaseui/kx_svgstring.h>

namespace kx::ui {

CKxStringA ColorBands(CKxStringA svg, std::span<const unsigned long> colors) {
    const int count = static_cast<int>(std::min<std::size_t>(colors.size(), 9));
    // First to marks that no colour can be, and only then to the colours.
    CKxStringA from, to;
    for (int k = 1; k <= count; ++k) {
        from.Format(16, "#00FF0%d", k);
        to.Format(16, "<band %d>", k);
        CKxSvgStringAPI::ReplaceString(svg, from, to);
    }
    for (int k = 1; k <= count; ++k) {
        const unsigned long color = colors[static_cast<std::size_t>(k - 1)];
        from.Format(16, "<band %d>", k);
        to.Format(16, "#%02lX%02lX%02lX", color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
        CKxSvgStringAPI::ReplaceString(svg, from, to);
    }
    return svg;
}

}  // namespace kx::ui
