// The rasteriser: filled outlines with smooth edges, into pixels with premultiplied alpha.
//
// The coverage of a pixel is the exact area of the outline within it, for outlines that do not overlap themselves
// within that pixel; where they do, windings are added up before the fill rule is applied. Colours are blended as they
// are stored, without linearising them, as everything else on a screen is.
#pragma once

#include <kxbaseui/kx_path.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace kx::svg {

// A colour with its opacity, 0 to 1; not premultiplied.
struct Color {
    std::uint8_t red = 0, green = 0, blue = 0;
    double alpha = 1;
};

// Pixels 0xAARRGGBB from the top, premultiplied: no component is larger than the alpha.
struct Image {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
};

// To the nearest; for what is not negative. The library's functions are calls, too slow for every pixel.
inline std::uint32_t Rounded(double value) { return static_cast<std::uint32_t>(value * 2 + 1) / 2; }

std::uint32_t Premultiply(Color color);

// Leaves of `image` what `cover` covers by its opacity, or by its opacity and brightness, as a mask does
// (SVG 1.1, 14.4).
enum class Cover : std::uint8_t { Opacity, Brightness };
void Cut(Image& image, const Image& cover, Cover kind);

// Lays `above`, made fainter by `opacity` (0 to 1), over `below`; both of the same size.
void Blend(Image& below, const Image& above, double opacity);

enum class FillRule : std::uint8_t { NonZero, EvenOdd };

// What an outline is filled with: one colour, or colours along a line or around a point.
class Paint {
public:
    enum class Spread : std::uint8_t { Pad, Reflect, Repeat };
    struct Stop {
        double offset = 0;
        Color color;
    };

    Paint() = default;
    explicit Paint(Color color);
    // The colours between stops, to be used by any number of paints. Offsets that go backwards count as the largest
    // before.
    using Ramp = std::shared_ptr<const std::vector<std::uint32_t>>;
    static Ramp MakeRamp(const std::vector<Stop>& stops);

    // From one point to another of the gradient's own space, which `toPixels` maps to pixels. No ramp, or a space that
    // is squeezed to a line, paint nothing.
    static Paint Linear(Point from, Point to, Ramp ramp, Spread spread, const Matrix& toPixels);
    // From the focus to the circle; a focus outside of it is moved onto it.
    static Paint Radial(Point center, double radius, Point focus, Ramp ramp, Spread spread, const Matrix& toPixels);

    bool IsEmpty() const { return m_kind == Kind::None; }
    // The premultiplied colour in the middle of a pixel.
    std::uint32_t At(int x, int y) const;
    // Whether At is the same everywhere.
    bool IsPlain() const { return m_kind == Kind::Plain; }

private:
    enum class Kind : std::uint8_t { None, Plain, Linear, Radial };
    static constexpr int c_steps = 512;

    static Paint Plain(std::uint32_t premultiplied);
    double Position(Point point) const;

    Kind m_kind = Kind::None;
    Spread m_spread = Spread::Pad;
    std::uint32_t m_color = 0;
    Matrix m_fromPixels;
    // The gradient's axis, or the way from the focus to the centre; the circle's radius.
    Point m_origin, m_axis;
    double m_radius = 0;
    Ramp m_ramp;
};

// Fills outlines within one size of image. It is reused from outline to outline, and counts what it does.
class Rasterizer {
public:
    // `work`: how many pixels and line steps may be visited before every further call does nothing.
    Rasterizer(int width, int height, std::uint64_t work);

    // Adds outlines; an open one is closed by a straight line. A line with a coordinate that is not a number or beyond
    // 1e7 pixels drops the whole call.
    void Add(const Polylines& outlines);

    // Paints what was added, over what the image holds, and starts anew. The image has the rasteriser's size.
    void Fill(Image& image, FillRule rule, const Paint& paint);

    // Takes from the work that is left; whether that was enough, now and ever before.
    bool Spend(std::uint64_t work);
    bool IsExhausted() const { return m_exhausted; }

private:
    void AddLine(Point from, Point to);
    void AddWithin(double top, double bottom, double x, double slope, float direction);
    void AddStep(float* row, double left, double right, float height);
    void FillRow(std::uint32_t* pixels, int y, FillRule rule, const Paint& paint);

    int m_width, m_height;
    std::uint64_t m_work;
    bool m_exhausted = false;
    // For each pixel, by how much the winding's area grows there from left to right; two more to the right of the
    // image.
    std::vector<float> m_growth;
    // What the outlines touch.
    int m_left, m_right, m_top, m_bottom;
};

}  // namespace kx::svg
