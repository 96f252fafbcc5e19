// The renderer of images: any bytes are drawn or refused without a trap, in bounded time; a document that was cut is
// refused; pixels are what their type promises.
#include "fuzz.h"

#include <kxbaseui/kx_svg.h>
#include <kxbaseui/kx_xml.h>

namespace {

using namespace kx::svg;

// A letter is a triangle as wide as its code says; some have none.
class Triangles : public GlyphSource {
public:
    bool Outline(const Font& font, char32_t character, Path& outline, double& advance) override {
        advance = font.bold ? 0.7 : 0.5 + static_cast<double>(character % 7) / 10;
        if (character % 11 == 0) return false;
        outline.Move({0, 0});
        outline.Quadratic({advance / 2, -1.4}, {advance, 0});
        outline.Close();
        return true;
    }
};

Image Draw(std::string_view svg, int width, int height) {
    Triangles triangles;
    Image image;
    const bool drawn = Render(svg, width, height, {9, 99, 199, 1}, &triangles, image);
    Require(drawn == !image.pixels.empty());
    Require(!drawn || image.pixels.size() == static_cast<std::size_t>(width * height));
    for (const std::uint32_t pixel : image.pixels) {
        const std::uint32_t alpha = pixel >> 24;
        Require((pixel >> 16 & 0xFF) <= alpha && (pixel >> 8 & 0xFF) <= alpha && (pixel & 0xFF) <= alpha);
    }
    return image;
}

}  // namespace

void Fuzz(std::string_view svg) {
    const Image image = Draw(svg, 24, 30);
    if (image.pixels.empty()) return;
    Require(Draw(svg, 24, 30).pixels == image.pixels);
    Draw(svg, 5, 70);

    // Where the root is the last thing in the text, nothing shorter is whole.
    std::string_view whole = svg;
    while (!whole.empty() && static_cast<unsigned char>(whole.back()) <= ' ')
        whole.remove_suffix(1);
    if (whole.ends_with("-->") || whole.ends_with("?>")) return;
    for (std::size_t i = 1; i <= 16; ++i)
        Require(!ReadXml(whole.substr(0, whole.size() * i / 17)));
    Require(!ReadXml(whole.substr(0, whole.size() - 1)));
}
