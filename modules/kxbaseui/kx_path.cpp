#include <kxbaseui/kx_path.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace kx::svg {

namespace {

constexpr double c_pi = std::numbers::pi;
constexpr int c_mostPieces = 128;
// The part of a curve that is taken for its direction at an end; the turn from which on a bend is a cusp.
constexpr double c_end = 0.002, c_cusp = 1;
// The control points of a quarter circle, by which no point is off by more than 0.03 % of the radius.
constexpr double c_quarter = 0.5522847498;

double Dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
double Cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }

// The pieces into which an arc is cut so that its chords stay within the tolerance.
int ArcPieces(double radius, double angle, double tolerance) {
    const double step = 2 * std::acos(std::clamp(1 - tolerance / radius, 0.0, 0.9999));
    return std::clamp(static_cast<int>(std::ceil(std::abs(angle) / step)), 1, c_mostPieces);
}

void AddPoint(Polyline& line, Point point) {
    if (line.points.empty() || !(line.points.back() == point)) line.points.push_back(point);
}

double AngleBetween(Point in, Point out) { return std::abs(std::atan2(Cross(in, out), Dot(in, out))); }

// By how much a curve turns at most: as much as the way through its control points does.
double TurnOf(Point from, const Point* control) {
    const Point legs[] = {control[0] - from, control[1] - control[0], control[2] - control[1]};
    double turn = 0;
    Point last;
    for (const Point leg : legs) {
        if (leg == Point{}) continue;
        if (!(last == Point{})) turn += AngleBetween(last, leg);
        last = leg;
    }
    return turn;
}

void AddCubic(Polyline& line, const Point* control, double tolerance, double reach) {
    const Point from = line.points.back();
    const std::size_t first = line.points.size();
    // A chord strays from its curve by at most an eighth of the second derivative times the square of its share.
    const Point bend1 = from - control[0] * 2 + control[1], bend2 = control[0] - control[1] * 2 + control[2];
    const double bend = 6 * std::max(Length(bend1), Length(bend2));
    const double straight = std::ceil(std::sqrt(bend / (8 * tolerance)));
    const double wanted =
        reach > 0 ? std::max(straight, TurnOf(from, control) * std::sqrt(reach / (8 * tolerance))) : straight;
    const int pieces = wanted < c_mostPieces ? std::max(static_cast<int>(std::ceil(wanted)), 1) : c_mostPieces;
    const auto add = [&](double t) {
        const double s = 1 - t;
        AddPoint(line, from * (s * s * s) + control[0] * (3 * s * s * t) + control[1] * (3 * s * t * t) +
                           control[2] * (t * t * t));
    };
    const bool bent = reach > 0 && pieces > 1;
    // Towards an end ever shorter ones: a wide stroke's inner side would stick out behind the end by a long one's
    // slant.
    double end = bent ? c_end : 1.0 / pieces;
    for (; end < 1.0 / pieces; end *= 2)
        add(end);
    for (int i = 1; i < pieces; ++i)
        add(static_cast<double>(i) / pieces);
    while (bent && (end /= 2) >= c_end)
        add(1 - end);
    AddPoint(line, control[2]);
    for (std::size_t i = first; bent && i + 1 < line.points.size(); ++i)
        if (AngleBetween(line.points[i] - line.points[i - 1], line.points[i + 1] - line.points[i]) > c_cusp)
            line.cusps.push_back(i);
}

}  // namespace

double Length(Point vector) { return std::hypot(vector.x, vector.y); }

double Matrix::Scale() const { return std::sqrt(std::abs(a * d - b * c)); }

bool Matrix::IsFinite() const { return std::isfinite(a + b + c + d + e + f); }

bool Matrix::Invert(Matrix& inverse) const {
    const double determinant = a * d - b * c;
    if (!std::isnormal(determinant)) return false;
    const Matrix found{d / determinant,
                       -b / determinant,
                       -c / determinant,
                       a / determinant,
                       (c * f - d * e) / determinant,
                       (b * e - a * f) / determinant};
    if (!found.IsFinite()) return false;
    inverse = found;
    return true;
}

Matrix operator*(const Matrix& outer, const Matrix& inner) {
    const Point origin = outer.Apply({inner.e, inner.f});
    return {outer.a * inner.a + outer.c * inner.b,
            outer.b * inner.a + outer.d * inner.b,
            outer.a * inner.c + outer.c * inner.d,
            outer.b * inner.c + outer.d * inner.d,
            origin.x,
            origin.y};
}

// ---- Path ----------------------------------------------------------------------------------------------------------

void Path::Move(Point to) {
    m_verbs.push_back(Verb::Move);
    m_points.push_back(to);
    m_start = m_current = to;
    m_open = true;
}

void Path::Begin() {
    if (!m_open) Move(m_start);
}

void Path::Line(Point to) {
    Begin();
    m_verbs.push_back(Verb::Line);
    m_points.push_back(to);
    m_current = to;
}

void Path::Cubic(Point control1, Point control2, Point to) {
    Begin();
    m_verbs.push_back(Verb::Cubic);
    m_points.insert(m_points.end(), {control1, control2, to});
    m_current = to;
}

void Path::Quadratic(Point control, Point to) {
    const Point from = m_current;
    Cubic(from + (control - from) * (2.0 / 3), to + (control - to) * (2.0 / 3), to);
}

void Path::Arc(double rx, double ry, double rotation, bool large, bool sweep, Point to) {
    const Point from = m_current;
    rx = std::abs(rx), ry = std::abs(ry);
    if (from == to) return;
    // In the plane where the ellipse is the unit circle.
    const double turn = rotation * c_pi / 180, cosine = std::cos(turn), sine = std::sin(turn);
    const Matrix fromCircle{rx * cosine, rx * sine, -ry * sine, ry * cosine, 0, 0};
    Matrix toCircle;
    if (!fromCircle.Invert(toCircle)) return Line(to);
    const Point a = toCircle.Apply(from), b = toCircle.Apply(to), half = (b - a) * 0.5;
    double stretch = Length(half);
    if (!std::isfinite(stretch) || stretch == 0) return Line(to);
    // The centre lies beside the chord's middle, at a distance that makes both ends' radii 1.
    const double away = stretch < 1 ? std::sqrt(1 / (stretch * stretch) - 1) : 0;
    stretch = std::max(stretch, 1.0);
    const Point aside{-half.y * away, half.x * away};
    const Point center = (a + b) * 0.5 + aside * (large == sweep ? -1.0 : 1.0);
    const Point first = a - center, last = b - center;
    double angle = std::atan2(Cross(first, last), Dot(first, last));
    if (sweep && angle < 0) angle += 2 * c_pi;
    if (!sweep && angle > 0) angle -= 2 * c_pi;
    const int pieces = std::max(static_cast<int>(std::ceil(std::abs(angle) / (c_pi / 2) - 1e-9)), 1);
    const double step = angle / pieces, reach = 4.0 / 3 * std::tan(step / 4), start = std::atan2(first.y, first.x);
    const auto place = [&](double at, double tangent) {
        const Point offset{std::cos(at) - tangent * std::sin(at), std::sin(at) + tangent * std::cos(at)};
        return fromCircle.Apply(center + offset * stretch);
    };
    for (int i = 0; i < pieces; ++i) {
        const double begin = start + i * step, end = begin + step;
        Cubic(place(begin, reach), place(end, -reach), i + 1 == pieces ? to : place(end, 0));
    }
}

void Path::Close() {
    if (!m_open) return;
    m_verbs.push_back(Verb::Close);
    m_current = m_start;
    m_open = false;
}

void Path::Rectangle(double x, double y, double width, double height, double rx, double ry) {
    rx = std::clamp(rx, 0.0, width / 2), ry = std::clamp(ry, 0.0, height / 2);
    const double right = x + width, bottom = y + height;
    Move({x + rx, y});
    Line({right - rx, y});
    if (rx > 0 && ry > 0) Arc(rx, ry, 0, false, true, {right, y + ry});
    Line({right, bottom - ry});
    if (rx > 0 && ry > 0) Arc(rx, ry, 0, false, true, {right - rx, bottom});
    Line({x + rx, bottom});
    if (rx > 0 && ry > 0) Arc(rx, ry, 0, false, true, {x, bottom - ry});
    Line({x, y + ry});
    if (rx > 0 && ry > 0) Arc(rx, ry, 0, false, true, {x + rx, y});
    Close();
}

void Path::Ellipse(Point center, double rx, double ry) {
    const auto at = [&](double x, double y) { return Point{center.x + rx * x, center.y + ry * y}; };
    Move(at(1, 0));
    Cubic(at(1, c_quarter), at(c_quarter, 1), at(0, 1));
    Cubic(at(-c_quarter, 1), at(-1, c_quarter), at(-1, 0));
    Cubic(at(-1, -c_quarter), at(-c_quarter, -1), at(0, -1));
    Cubic(at(c_quarter, -1), at(1, -c_quarter), at(1, 0));
    Close();
}

void Path::Append(const Path& tail, const Matrix& matrix) {
    m_verbs.insert(m_verbs.end(), tail.m_verbs.begin(), tail.m_verbs.end());
    for (const Point point : tail.m_points)
        m_points.push_back(matrix.Apply(point));
    m_open = false;
    m_start = m_current = matrix.Apply(tail.m_current);
}

Polylines Flatten(const Path& path, double tolerance, double reach) {
    Polylines lines;
    const Point* point = path.Points().data();
    for (const Path::Verb verb : path.Verbs()) {
        switch (verb) {
        case Path::Verb::Move: lines.push_back({{*point++}, false, {}}); break;
        case Path::Verb::Line: AddPoint(lines.back(), *point++); break;
        case Path::Verb::Cubic:
            AddCubic(lines.back(), point, tolerance, reach);
            point += 3;
            break;
        case Path::Verb::Close: lines.back().closed = true; break;
        }
    }
    return lines;
}

void Transform(Polylines& lines, const Matrix& matrix) {
    for (Polyline& line : lines)
        for (Point& point : line.points)
            point = matrix.Apply(point);
}

// ---- Stroke --------------------------------------------------------------------------------------------------------

namespace {

// Walks along lines and lets go of a piece at the end of every dash.
class Dasher {
public:
    Dasher(const StrokeStyle& style, std::size_t most) : m_style(style), m_most(most) {
        for (const double length : style.dashes)
            m_period += length;
    }

    bool Add(const Polyline& line) {
        Start();
        const std::size_t first = m_pieces.size(), count = line.points.size();
        const bool beginsInDash = IsInDash();
        if (beginsInDash) m_piece.points.push_back(line.points[0]);
        for (std::size_t i = 1; i < count + (line.closed ? 1 : 0); ++i)
            if (!Walk(line.points[i - 1], line.points[i % count])) return false;
        if (line.closed && beginsInDash && IsInDash() && m_pieces.size() > first) {
            auto& head = m_pieces[first].points;
            m_piece.points.insert(m_piece.points.end(), head.begin() + 1, head.end());
            head = std::move(m_piece.points);
        } else if (IsInDash() && m_pieces.size() == first && line.closed) {
            m_pieces.push_back(line);
        } else {
            LetGo();
        }
        m_piece = {};
        return true;
    }

    Polylines Take() { return std::move(m_pieces); }

private:
    bool IsInDash() const { return m_at % 2 == 0; }

    // To the dash or gap in which a line begins.
    void Start() {
        double offset = std::fmod(m_style.dashOffset, m_period);
        if (offset < 0) offset += m_period;
        for (m_at = 0; m_at + 1 < m_style.dashes.size() && offset >= m_style.dashes[m_at]; ++m_at)
            offset -= m_style.dashes[m_at];
        m_left = std::max(m_style.dashes[m_at] - offset, 0.0);
    }

    bool Walk(Point from, Point to) {
        const double length = Length(to - from);
        double walked = 0;
        for (; length - walked > m_left; m_left = m_style.dashes[m_at]) {
            walked += m_left;
            const Point point = from + (to - from) * (walked / length);
            if (IsInDash()) Put(point), LetGo();
            m_at = (m_at + 1) % m_style.dashes.size();
            if (IsInDash()) Put(point);
            if (++m_cuts > m_most) return false;
        }
        m_left -= length - walked;
        if (IsInDash()) Put(to);
        return m_points <= m_most;
    }

    void Put(Point point) {
        m_piece.points.push_back(point);
        ++m_points;
    }
    void LetGo() {
        if (!m_piece.points.empty()) m_pieces.push_back(std::move(m_piece));
        m_piece = {};
    }

    const StrokeStyle& m_style;
    std::size_t m_most, m_points = 0, m_cuts = 0;
    double m_period = 0;
    // Where in the pattern, and how much of that dash or gap is left.
    std::size_t m_at = 0;
    double m_left = 0;
    Polyline m_piece;
    Polylines m_pieces;
};

// Walks along a line and draws what is at its left; the way there and the way back make the outline of the stroke.
class Stroker {
public:
    Stroker(const StrokeStyle& style, double tolerance, Polylines& outlines)
        : m_style(style), m_half(style.width / 2), m_tolerance(tolerance), m_outlines(outlines) {}

    void Add(const Polyline& line) {
        // Steps too short to have a direction are left out.
        m_points.clear();
        m_cusps.clear();
        for (std::size_t i = 0, cusp = 0; i < line.points.size(); ++i) {
            const bool isCusp = cusp < line.cusps.size() && line.cusps[cusp] == i;
            if (isCusp) ++cusp;
            if (m_points.empty() || !IsNear(m_points.back(), line.points[i])) m_points.push_back(line.points[i]);
            if (isCusp) m_cusps.push_back(m_points.size() - 1);
        }
        if (m_points.empty()) return;
        if (line.closed && m_points.size() > 1 && IsNear(m_points.front(), m_points.back())) m_points.pop_back();
        const bool closed = line.closed && m_points.size() > 1;
        m_directions.clear();
        m_lengths.clear();
        const std::size_t count = m_points.size();
        for (std::size_t i = 0; i + (closed ? 0 : 1) < count; ++i) {
            const Point step = m_points[(i + 1) % count] - m_points[i];
            m_lengths.push_back(Length(step));
            m_directions.push_back(step * (1 / m_lengths.back()));
        }
        if (count == 1)
            Dot(m_points[0]);
        else if (closed && count > 2)
            Ring();
        else
            Ribbon(closed);
    }

private:
    static Point Left(Point direction) { return {direction.y, -direction.x}; }
    bool IsNear(Point a, Point b) const { return Length(b - a) < m_tolerance / 1000; }
    void Put(Point point) { m_outline.points.push_back(point); }
    void Finish() {
        m_outline.closed = true;
        m_outlines.push_back(std::move(m_outline));
        m_outline = {};
    }

    void Dot(Point center) {
        if (m_style.cap == Cap::Butt) return;
        End(center, {1, 0});
        End(center, {-1, 0});
        Finish();
    }

    void Ring() {
        const std::size_t count = m_points.size();
        for (std::size_t i = 0; i < count; ++i)
            Corner(i, (i + count - 1) % count, i, 1);
        Finish();
        for (std::size_t i = count; i-- > 0;)
            Corner(i, i, (i + count - 1) % count, -1);
        Finish();
    }

    // A closed line of two points is a way there and back: round at its ends if its joins are round.
    void Ribbon(bool closed) {
        const Cap cap = m_style.cap;
        if (closed) m_style.cap = m_style.join == Join::Round ? Cap::Round : Cap::Butt;
        const std::size_t last = closed ? 1 : m_points.size() - 1;
        for (std::size_t i = 1; i < last; ++i)
            Corner(i, i - 1, i, 1);
        End(m_points[last], m_directions[last - 1]);
        for (std::size_t i = last; i-- > 1;)
            Corner(i, i, i - 1, -1);
        End(m_points[0], m_directions[0] * -1);
        m_style.cap = cap;
        Finish();
    }

    // Turns around the end of a line that comes in `direction`.
    void End(Point center, Point direction) {
        const Point left = Left(direction) * m_half, ahead = direction * (m_style.cap == Cap::Square ? m_half : 0);
        if (m_style.cap == Cap::Round) return Turn(center, left, left * -1, c_pi);
        Put(center + left + ahead);
        Put(center - left + ahead);
    }

    void Turn(Point center, Point from, Point to, double angle) {
        const int pieces = ArcPieces(m_half, angle, m_tolerance);
        Put(center + from);
        for (int i = 1; i < pieces; ++i) {
            const double at = angle * i / pieces, cosine = std::cos(at), sine = std::sin(at);
            Put(center + Point{from.x * cosine - from.y * sine, from.x * sine + from.y * cosine});
        }
        Put(center + to);
    }

    // From segment `before` to segment `after`, both walked forwards (way 1) or backwards (way -1).
    void Corner(std::size_t at, std::size_t before, std::size_t after, double way) {
        const Point center = m_points[at], in = m_directions[before] * way, out = m_directions[after] * way;
        const Point left1 = Left(in) * m_half, left2 = Left(out) * m_half;
        const double cross = Cross(in, out), cosine = svg::Dot(in, out);
        // Where both offset lines meet, seen from the corner.
        const double meet = 1 + cosine;
        const Point miter = meet > 1e-9 ? (left1 + left2) * (1 / meet) : Point{};
        if (cross < 0) {
            // The inner side. Where the segments are too short for the meeting point, the way through the corner itself
            // keeps every part of the outline wound in the same sense.
            const double back = meet > 1e-9 ? m_half * std::abs(cross) / meet : HUGE_VAL;
            if (back <= std::min(m_lengths[before], m_lengths[after]) / 2) return Put(center + miter);
            Put(center + left1);
            Put(center);
            return Put(center + left2);
        }
        if (m_style.join == Join::Round || std::binary_search(m_cusps.begin(), m_cusps.end(), at))
            return Turn(center, left1, left2, std::atan2(std::abs(cross), cosine));
        // The ratio of miter length to width is 1 / sin(half the angle between the segments).
        if (m_style.join == Join::Miter && meet > 1e-9 && 2 / meet <= m_style.miterLimit * m_style.miterLimit)
            return Put(center + miter);
        Put(center + left1);
        Put(center + left2);
    }

    StrokeStyle m_style;
    double m_half, m_tolerance;
    Polylines& m_outlines;
    Polyline m_outline;
    std::vector<Point> m_points, m_directions;
    std::vector<std::size_t> m_cusps;
    std::vector<double> m_lengths;
};

}  // namespace

bool Dash(Polylines& lines, const StrokeStyle& style, std::size_t most) {
    if (style.dashes.empty()) return true;
    Dasher dasher(style, most);
    for (const Polyline& line : lines)
        if (!dasher.Add(line)) return false;
    lines = dasher.Take();
    return true;
}

Polylines Stroke(const Polylines& lines, const StrokeStyle& style, double tolerance) {
    Polylines outlines;
    if (!(style.width > 0)) return outlines;
    Stroker stroker(style, tolerance, outlines);
    for (const Polyline& line : lines)
        stroker.Add(line);
    return outlines;
}

}  // namespace kx::svg
