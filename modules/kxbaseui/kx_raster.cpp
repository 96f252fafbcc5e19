#include <kxbaseui/kx_raster.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kx::svg {

namespace {

constexpr double c_farthest = 1e7;

// a * b / 255, rounded, for each of two components at once in 0x00XX00XX.
std::uint32_t ScalePair(std::uint32_t pair, std::uint32_t by) {
    const std::uint32_t product = pair * by + 0x00800080;
    return (product + (product >> 8 & 0x00FF00FF)) >> 8 & 0x00FF00FF;
}

std::uint32_t ScalePixel(std::uint32_t pixel, std::uint32_t by) {
    return ScalePair(pixel >> 8 & 0x00FF00FF, by) << 8 | ScalePair(pixel & 0x00FF00FF, by);
}

std::uint32_t Over(std::uint32_t above, std::uint32_t below) { return above + ScalePixel(below, 255 - (above >> 24)); }

std::uint32_t ToByte(double part) { return Rounded(std::clamp(part, 0.0, 1.0) * 255); }

float Coverage(float winding, FillRule rule) {
    winding = std::abs(winding);
    if (rule == FillRule::NonZero) return std::min(winding, 1.0F);
    winding = std::fmod(winding, 2.0F);
    return winding > 1 ? 2 - winding : winding;
}

double Spread(double position, Paint::Spread spread) {
    switch (spread) {
    case Paint::Spread::Repeat: return position - std::floor(position);
    case Paint::Spread::Reflect:
        position = std::abs(std::fmod(position, 2));
        return position > 1 ? 2 - position : position;
    case Paint::Spread::Pad: break;
    }
    return std::clamp(position, 0.0, 1.0);
}

Color Mix(const Color& a, const Color& b, double part) {
    const auto mix = [&](std::uint8_t from, std::uint8_t to) {
        return static_cast<std::uint8_t>(Rounded(from + (to - from) * part));
    };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), a.alpha + (b.alpha - a.alpha) * part};
}

}  // namespace

std::uint32_t Premultiply(Color color) {
    const std::uint32_t alpha = ToByte(color.alpha);
    const std::uint32_t opaque = 0xFF000000U | static_cast<std::uint32_t>(color.red) << 16 |
                                 static_cast<std::uint32_t>(color.green) << 8 | color.blue;
    return ScalePixel(opaque, alpha);
}

void Blend(Image& below, const Image& above, double opacity) {
    const std::uint32_t by = ToByte(opacity);
    for (std::size_t i = 0; i < below.pixels.size(); ++i)
        if (above.pixels[i]) below.pixels[i] = Over(ScalePixel(above.pixels[i], by), below.pixels[i]);
}

void Cut(Image& image, const Image& cover, Cover kind) {
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        if (image.pixels[i] == 0) continue;
        const std::uint32_t pixel = cover.pixels[i];
        // Premultiplied: the opacity is in the colours already.
        const double brightness =
            0.2125 * (pixel >> 16 & 0xFF) + 0.7154 * (pixel >> 8 & 0xFF) + 0.0721 * (pixel & 0xFF);
        image.pixels[i] = ScalePixel(image.pixels[i], kind == Cover::Opacity ? pixel >> 24 : Rounded(brightness));
    }
}

// ---- Paint ---------------------------------------------------------------------------------------------------------

Paint::Paint(Color color) : m_kind(Kind::Plain), m_color(Premultiply(color)) {}

Paint Paint::Plain(std::uint32_t premultiplied) {
    Paint paint;
    paint.m_kind = Kind::Plain;
    paint.m_color = premultiplied;
    return paint;
}

// The last entry of a ramp is the last stop's colour.
Paint::Ramp Paint::MakeRamp(const std::vector<Stop>& stops) {
    if (stops.empty()) return nullptr;
    std::vector<std::uint32_t> ramp(c_steps + 1);
    std::vector<Stop> rising(stops);
    double last = 0;
    for (Stop& stop : rising)
        stop.offset = last = std::clamp(stop.offset, last, 1.0);
    std::size_t next = 0;
    for (int i = 0; i < c_steps; ++i) {
        const double at = (i + 0.5) / c_steps;
        while (next < rising.size() && rising[next].offset <= at)
            ++next;
        Color color = rising[next == 0 ? 0 : next - 1].color;
        if (next > 0 && next < rising.size()) {
            const Stop &from = rising[next - 1], &to = rising[next];
            color = Mix(from.color, to.color, (at - from.offset) / (to.offset - from.offset));
        }
        ramp[static_cast<std::size_t>(i)] = Premultiply(color);
    }
    ramp.back() = Premultiply(stops.back().color);
    return std::make_shared<const std::vector<std::uint32_t>>(std::move(ramp));
}

Paint Paint::Linear(Point from, Point to, Ramp ramp, enum Spread spread, const Matrix& toPixels) {
    Paint paint;
    if (!ramp) return paint;
    const Point axis = to - from;
    const double square = axis.x * axis.x + axis.y * axis.y;
    if (square == 0 || !std::isfinite(1 / square)) return Plain(ramp->back());
    if (!toPixels.Invert(paint.m_fromPixels)) return paint;
    paint.m_kind = Kind::Linear;
    paint.m_spread = spread;
    paint.m_origin = from;
    paint.m_axis = axis * (1 / square);
    paint.m_ramp = std::move(ramp);
    return paint;
}

Paint Paint::Radial(Point center, double radius, Point focus, Ramp ramp, enum Spread spread, const Matrix& toPixels) {
    Paint paint;
    if (!ramp) return paint;
    if (!(radius > 0)) return Plain(ramp->back());
    if (!toPixels.Invert(paint.m_fromPixels)) return paint;
    // On the circle itself, every ray would leave it at once.
    Point toCenter = center - focus;
    const double distance = Length(toCenter), most = 0.99 * radius;
    if (distance > most) toCenter = toCenter * (most / distance);
    paint.m_kind = Kind::Radial;
    paint.m_spread = spread;
    paint.m_origin = center - toCenter;
    paint.m_axis = toCenter;
    paint.m_radius = radius;
    paint.m_ramp = std::move(ramp);
    return paint;
}

// 0 at the start or focus, 1 at the end or circle.
double Paint::Position(Point point) const {
    const Point from = point - m_origin;
    if (m_kind == Kind::Linear) return from.x * m_axis.x + from.y * m_axis.y;
    // The circle through the point, with its centre on the way from the focus: t such that |from - t axis| = t radius.
    const double a = m_radius * m_radius - m_axis.x * m_axis.x - m_axis.y * m_axis.y;
    const double b = from.x * m_axis.x + from.y * m_axis.y, c = from.x * from.x + from.y * from.y;
    return (-b + std::sqrt(std::max(b * b + a * c, 0.0))) / a;
}

std::uint32_t Paint::At(int x, int y) const {
    if (m_kind == Kind::Plain || m_kind == Kind::None) return m_color;
    const double position = svg::Spread(Position(m_fromPixels.Apply({x + 0.5, y + 0.5})), m_spread);
    if (!(position >= 0)) return 0;
    return (*m_ramp)[static_cast<std::size_t>(std::min(position * c_steps, c_steps - 1.0))];
}

// ---- Rasterizer ----------------------------------------------------------------------------------------------------

Rasterizer::Rasterizer(int width, int height, std::uint64_t work)
    : m_width(width), m_height(height), m_work(work),
      m_growth((static_cast<std::size_t>(width) + 2) * static_cast<std::size_t>(height)), m_left(width), m_right(0),
      m_top(height), m_bottom(0) {}

bool Rasterizer::Spend(std::uint64_t work) {
    m_exhausted = m_exhausted || work > m_work;
    m_work -= m_exhausted ? m_work : work;
    return !m_exhausted;
}

void Rasterizer::Add(const Polylines& outlines) {
    for (const Polyline& outline : outlines)
        for (const Point point : outline.points)
            if (!(std::abs(point.x) <= c_farthest && std::abs(point.y) <= c_farthest)) return;
    std::size_t points = 0;
    for (const Polyline& outline : outlines)
        points += outline.points.size();
    if (!Spend(points)) return;
    for (const Polyline& outline : outlines)
        for (std::size_t i = 0; i < outline.points.size(); ++i)
            AddLine(outline.points[i], outline.points[i + 1 < outline.points.size() ? i + 1 : 0]);
}

void Rasterizer::AddLine(Point from, Point to) {
    // Too flat to count, and to have a slope.
    if (std::abs(to.y - from.y) < 1e-9) return;
    const float direction = from.y < to.y ? 1.0F : -1.0F;
    if (from.y > to.y) std::swap(from, to);
    const double top = std::max(from.y, 0.0), bottom = std::min<double>(to.y, m_height);
    if (top >= bottom) return;
    const double slope = (to.x - from.x) / (to.y - from.y);
    const auto at = [&](double y) { return from.x + (y - from.y) * slope; };

    // Cut where it crosses the sides of the image: what lies beyond a side counts as if it ran along it.
    double cuts[4] = {top, top, bottom, bottom};
    if (slope != 0) {
        cuts[1] = std::clamp(from.y + (0 - from.x) / slope, top, bottom);
        cuts[2] = std::clamp(from.y + (m_width - from.x) / slope, top, bottom);
        if (cuts[1] > cuts[2]) std::swap(cuts[1], cuts[2]);
    }
    for (int i = 0; i < 3; ++i)
        if (cuts[i] < cuts[i + 1]) AddWithin(cuts[i], cuts[i + 1], at(cuts[i]), slope, direction);
}

// A part of a line that lies within the image or wholly beyond one of its sides: from (x, top), with `slope` to the
// right for each step down.
void Rasterizer::AddWithin(double top, double bottom, double x, double slope, float direction) {
    const int firstRow = static_cast<int>(top), endRow = static_cast<int>(std::ceil(bottom));
    const double endX = x + (bottom - top) * slope;
    const auto column = [this](double at) { return std::clamp(at, 0.0, static_cast<double>(m_width)); };
    const double least = column(std::min(x, endX)), most = column(std::max(x, endX));
    if (!Spend(static_cast<std::uint64_t>(endRow - firstRow) + static_cast<std::uint64_t>(most - least))) return;
    m_left = std::min(m_left, static_cast<int>(least));
    m_right = std::max(m_right, std::min(static_cast<int>(most) + 1, m_width));
    m_top = std::min(m_top, firstRow);
    m_bottom = std::max(m_bottom, endRow);
    for (int row = firstRow; row < endRow; ++row) {
        const double begin = std::max<double>(top, row), end = std::min<double>(bottom, row + 1);
        const double from = column(x + (begin - top) * slope), to = column(x + (end - top) * slope);
        float* const growth = m_growth.data() + static_cast<std::size_t>(row) * (static_cast<std::size_t>(m_width) + 2);
        AddStep(growth, std::min(from, to), std::max(from, to), static_cast<float>(end - begin) * direction);
    }
}

// A part of a line within one row: to its right, the winding grows by `height`; in the columns that it crosses, by the
// area at its right side.
void Rasterizer::AddStep(float* row, double left, double right, float height) {
    const int first = static_cast<int>(left), end = static_cast<int>(std::ceil(right));
    float* const growth = row + first;
    if (end <= first + 1) {
        const float middle = static_cast<float>((left + right) / 2 - first);
        growth[0] += height * (1 - middle);
        growth[1] += height * middle;
        return;
    }
    // The height for each column crossed; the triangles in the first and last column.
    const double share = 1 / (right - left), into = left - first, over = right - (end - 1);
    const double firstArea = share * (1 - into) * (1 - into) / 2, lastArea = share * over * over / 2;
    const int columns = end - first;
    growth[0] += height * static_cast<float>(firstArea);
    double area = firstArea;
    for (int i = 1; i + 1 < columns; ++i) {
        const double reached = share * (i + 0.5 - into);
        growth[i] += height * static_cast<float>(reached - area);
        area = reached;
    }
    growth[columns - 1] += height * static_cast<float>(1 - lastArea - area);
    growth[columns] += height * static_cast<float>(lastArea);
}

void Rasterizer::Fill(Image& image, FillRule rule, const Paint& paint) {
    const std::size_t stride = static_cast<std::size_t>(m_width) + 2;
    if (m_left < m_right && m_top < m_bottom) {
        const bool seen = !paint.IsEmpty() && Spend(static_cast<std::uint64_t>(m_right - m_left) *
                                                    static_cast<std::uint64_t>(m_bottom - m_top));
        for (int y = m_top; y < m_bottom; ++y) {
            const std::size_t row = static_cast<std::size_t>(y);
            if (seen) FillRow(image.pixels.data() + row * static_cast<std::size_t>(m_width), y, rule, paint);
            const auto growth = m_growth.begin() + static_cast<std::ptrdiff_t>(row * stride);
            std::fill(growth + m_left, growth + m_right + 2, 0.0F);
        }
    }
    m_left = m_width, m_right = 0, m_top = m_height, m_bottom = 0;
}

void Rasterizer::FillRow(std::uint32_t* pixels, int y, FillRule rule, const Paint& paint) {
    const float* const growth = m_growth.data() + static_cast<std::size_t>(y) * (static_cast<std::size_t>(m_width) + 2);
    float winding = 0;
    std::uint32_t color = paint.At(0, y);
    for (int x = m_left; x < m_right; ++x) {
        winding += growth[x];
        const std::uint32_t coverage = Rounded(Coverage(winding, rule) * 255);
        if (coverage == 0) continue;
        if (!paint.IsPlain()) color = paint.At(x, y);
        pixels[x] = Over(coverage == 255 ? color : ScalePixel(color, coverage), pixels[x]);
    }
}

}  // namespace kx::svg
