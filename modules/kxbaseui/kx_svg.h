// The renderer: SVG text in, pixels out. docs/images.md lists what of SVG it knows. Free of windows, so that it can be
// built and fuzzed natively; the outlines of letters come from whoever calls it.
#pragma once

#include <kxbaseui/kx_path.h>
#include <kxbaseui/kx_raster.h>

#include <string>
#include <string_view>
#include <vector>

namespace kx::svg {

// Where the outlines of letters come from.
class GlyphSource {
public:
    struct Font {
        std::string family;  // as in font-family, a list; may be empty
        bool bold = false;
        bool italic = false;
    };

    virtual ~GlyphSource() = default;

    // Puts the outline of one character at a size of 1, standing on the line y = 0 and beginning at x = 0, into
    // `outline`, which is empty, and the way to the next character into `advance`. False when there is none.
    virtual bool Outline(const Font& font, char32_t character, Path& outline, double& advance) = 0;
};

// A drawing beyond these is refused. The work counts pixels painted and rows crossed by edges, so that no drawing takes
// much longer than a second.
struct SvgLimits {
    static constexpr int Side = 1024;        // pixels of the image, each way
    static constexpr int Elements = 20'000;  // drawn, each use counted
    static constexpr int Depth = 64;         // of elements drawn within each other, through uses too
    static constexpr int Characters = 2'000;
    static constexpr std::size_t Stops = 256;
    static constexpr std::uint64_t Work = 200'000'000;
};

// Draws `text` into an image of the given size, which begins clear. `currentColor` is what the drawing gets when it
// says currentColor. Null `glyphs`: text is left out. False, and an image without pixels, when the text is malformed,
// when a limit is exceeded or the size is not 1 to 1024 each way. `leftOut`, if given, gets the kinds of what the
// drawing has and the image has not, each once, in the order in which they were met.
bool Render(std::string_view text, int width, int height, Color currentColor, GlyphSource* glyphs, Image& image,
            std::vector<std::string>* leftOut = nullptr);

}  // namespace kx::svg
