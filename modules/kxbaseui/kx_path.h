// Points, transforms and paths, and what becomes of a path on its way to the rasteriser: straight lines, outlines of
// strokes. Free of windows, so that it can be built and fuzzed natively.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kx::svg {

// A place or a direction, y downwards.
struct Point {
    double x = 0, y = 0;

    friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
    friend Point operator*(Point a, double factor) { return {a.x * factor, a.y * factor}; }
    friend bool operator==(const Point&, const Point&) = default;
};

double Length(Point vector);

// x' = a x + c y + e, y' = b x + d y + f.
struct Matrix {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    Point Apply(Point point) const { return {a * point.x + c * point.y + e, b * point.x + d * point.y + f}; }
    // The square root of the change of area: by how much a length grows on the average.
    double Scale() const;
    bool IsFinite() const;
    // False, and `inverse` left alone, when the plane is squeezed to a line.
    bool Invert(Matrix& inverse) const;
    // First `inner`, then `outer`.
    friend Matrix operator*(const Matrix& outer, const Matrix& inner);
};

// A path of lines and cubic curves; everything else is made of these as it is added.
class Path {
public:
    // The points that each takes: one, one, three, none.
    enum class Verb : std::uint8_t { Move, Line, Cubic, Close };

    void Move(Point to);
    // A line or a curve without a move before it begins at the last move's point.
    void Line(Point to);
    void Cubic(Point control1, Point control2, Point to);
    void Quadratic(Point control, Point to);
    // The elliptic arc of SVG: radii, rotation of the x axis in degrees; radii too short are lengthened, a zero radius
    // gives a line.
    void Arc(double rx, double ry, double rotation, bool large, bool sweep, Point to);
    void Close();
    void Rectangle(double x, double y, double width, double height, double rx, double ry);
    void Ellipse(Point center, double rx, double ry);
    void Append(const Path& tail, const Matrix& matrix);

    Point Current() const { return m_current; }
    bool IsEmpty() const { return m_verbs.empty(); }
    std::size_t Size() const { return m_points.size(); }
    const std::vector<Verb>& Verbs() const { return m_verbs; }
    const std::vector<Point>& Points() const { return m_points; }

private:
    void Begin();

    std::vector<Verb> m_verbs;
    std::vector<Point> m_points;
    Point m_start, m_current;
    bool m_open = false;
};

// Straight lines from point to point.
struct Polyline {
    std::vector<Point> points;
    bool closed = false;
    // Which of the points are cusps, where a curve turns back within itself: a stroke is round there, whatever its
    // joins.
    std::vector<std::size_t> cusps;
};
using Polylines = std::vector<Polyline>;

// The path in straight lines that stay within `tolerance` of it, points repeated in a row left out; a curve is cut into
// at most 142 lines. `reach`, half of a stroke's width or 0, makes lines fine enough for what is drawn so far beside
// them, and those at a curve's ends as steep as the curve.
Polylines Flatten(const Path& path, double tolerance, double reach = 0);

void Transform(Polylines& lines, const Matrix& matrix);

enum class Cap : std::uint8_t { Butt, Round, Square };
enum class Join : std::uint8_t { Miter, Round, Bevel };

struct StrokeStyle {
    double width = 1;
    double miterLimit = 4;
    Cap cap = Cap::Butt;
    Join join = Join::Miter;
    // Dash, gap, dash and so on; empty: a whole line. Each at least 0, together more, an even number of them.
    std::vector<double> dashes;
    double dashOffset = 0;
};

// The lines cut into the style's dashes, which begin anew with every line; where a closed line is within a dash at its
// first point, that dash goes on around it. At most `most` points; false, and `lines` as they come, beyond.
bool Dash(Polylines& lines, const StrokeStyle& style, std::size_t most);

// The closed outlines that, filled by the non-zero rule, are the stroke of the lines; round parts stay within
// `tolerance`. A single point gives a dot when the caps are round or square. A width that is not positive gives none.
Polylines Stroke(const Polylines& lines, const StrokeStyle& style, double tolerance);

}  // namespace kx::svg
