// The outlines of letters for the renderer of images, from the platform's fonts.
#pragma once

#include <windows.h>

#include <kxbaseui/kx_svg.h>

#include <memory>
#include <type_traits>
#include <vector>

namespace kx::svg {

// Holds one font, the last that was asked for. A letter that no family of the list has comes from one of the platform's
// usual ones; one that none of these has is left out.
class GdiGlyphs : public GlyphSource {
public:
    bool Outline(const Font& font, char32_t character, Path& outline, double& advance) override;

private:
    struct DcDeleter {
        void operator()(HDC dc) const noexcept { DeleteDC(dc); }
    };
    struct ObjectDeleter {
        void operator()(HFONT font) const noexcept { DeleteObject(font); }
    };

    bool Choose(const Font& font);
    bool ChooseFor(const Font& font, char32_t character);

    // The font outlives the DC that it is selected into.
    std::unique_ptr<std::remove_pointer_t<HFONT>, ObjectDeleter> m_handle;
    std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter> m_dc;
    Font m_font;
    std::vector<unsigned char> m_buffer;
};

}  // namespace kx::svg
