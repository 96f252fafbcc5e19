#include <kxbaseui/kx_svg.h>

#include <kxbaseui/kx_svgsheet.h>
#include <kxbaseui/kx_svgstyle.h>
#include <kxbaseui/kx_svgvalues.h>
#include <kxbaseui/kx_xml.h>
#include <kxsystem/kx_utf8.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <iterator>
#include <map>
#include <numbers>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace kx::svg {

namespace {

// Pixels that a flattened curve may be off.
constexpr double c_tolerance = 0.02;

// Elements that would draw something.
constexpr std::string_view c_leftOut[] = {"image",   "foreignObject",    "script",        "textPath",
                                          "animate", "animateTransform", "animateMotion", "set"};

// What an element finds around it.
struct Surroundings {
    Style style;
    Matrix matrix;
    // Width and height of the box that percentages are of.
    Point viewport;
    int depth = 0;
};

Box BoundsOf(const Polylines& lines) {
    Point least{HUGE_VAL, HUGE_VAL}, most{-HUGE_VAL, -HUGE_VAL};
    for (const Polyline& line : lines) {
        for (const Point point : line.points) {
            least = {std::min(least.x, point.x), std::min(least.y, point.y)};
            most = {std::max(most.x, point.x), std::max(most.y, point.y)};
        }
    }
    return {least.x, least.y, most.x - least.x, most.y - least.y};
}

class Drawing {
public:
    Drawing(const XmlNode& root, Image& image, Color currentColor, GlyphSource* glyphs,
            std::vector<std::string>* leftOut)
        : m_root(root), m_image(&image), m_glyphs(glyphs), m_leftOut(leftOut),
          m_rasterizer(image.width, image.height, SvgLimits::Work) {
        m_first.style.color = currentColor;
    }

    void Draw() {
        const Properties properties(m_root);
        if (properties.Name() != "svg") throw Refusal{};
        Collect(m_root);
        Surroundings around = m_first;
        around.viewport = {static_cast<double>(m_image->width), static_cast<double>(m_image->height)};
        // Without a box of its own, the drawing's nominal size is scaled to the image.
        Box box{0, 0, around.viewport.x, around.viewport.y};
        box.width = properties.Length("width", {box.width, 16}, box.width);
        box.height = properties.Length("height", {box.height, 16}, box.height);
        EnterBox(properties, box, around.viewport, around);
        DrawStyled(m_root, properties, around);
    }

private:
    void Spend(std::size_t work) {
        if (!m_rasterizer.Spend(work)) throw Refusal{};
    }

    void Collect(const XmlNode& node) {
        if (const std::string* const id = node.Find("id")) m_byId.emplace(*id, &node);
        for (const XmlNode& child : node.children)
            Collect(child);
    }

    const XmlNode* FindById(std::string_view id) const {
        const auto found = m_byId.find(id);
        return found == m_byId.end() ? nullptr : found->second;
    }

    // What a property refers to by url(#id), if it is an element of this name.
    const XmlNode* FindReferred(const Properties& properties, std::string_view property, std::string_view name) const {
        std::string_view rest;
        const auto text = properties.Find(property);
        const XmlNode* const node = text ? FindById(ParseReference(*text, rest)) : nullptr;
        return node && Properties(*node).Name() == name ? node : nullptr;
    }

    void LeaveOut(std::string_view kind) {
        if (m_leftOut && std::find(m_leftOut->begin(), m_leftOut->end(), kind) == m_leftOut->end())
            m_leftOut->emplace_back(kind);
    }

    static void EnterBox(const Properties& properties, Box box, Point viewport, Surroundings& around) {
        if (const std::string_view text = properties.Attribute("viewBox"); !text.empty()) {
            const std::vector<double> numbers = ParseNumbers(text, 4);
            if (numbers.size() != 4) throw Refusal{};
            box = {numbers[0], numbers[1], numbers[2], numbers[3]};
        }
        around.matrix =
            around.matrix * FitBox(box, viewport.x, viewport.y, properties.Attribute("preserveAspectRatio"));
        around.viewport = {box.width, box.height};
    }

    LengthBase Across(const Surroundings& around) const { return {around.viewport.x, around.style.fontSize}; }
    LengthBase Down(const Surroundings& around) const { return {around.viewport.y, around.style.fontSize}; }
    LengthBase Diagonal(const Surroundings& around) const {
        return {svg::Length(around.viewport) / std::numbers::sqrt2, around.style.fontSize};
    }

    // ---- Elements --------------------------------------------------------------------------------------------------

    void DrawNode(const XmlNode& node, const Surroundings& outside) {
        if (node.name.empty()) return;
        const Properties properties(node);
        Surroundings around = outside;
        if (const std::string_view text = properties.Attribute("transform"); !text.empty())
            around.matrix = around.matrix * ParseTransform(text);
        DrawStyled(node, properties, around);
    }

    void DrawStyled(const XmlNode& node, const Properties& properties, Surroundings around) {
        if (++m_elements > SvgLimits::Elements || ++around.depth > SvgLimits::Depth) throw Refusal{};
        // One long attribute, used often, is read as often.
        std::size_t length = 0;
        for (const auto& attribute : node.attributes)
            length += attribute.second.size();
        Spend(8 * length);
        if (properties.Find("display") == "none") return;
        around.style = ReadStyle(properties, std::move(around.style), Diagonal(around).whole);
        if (const XmlNode* const filter = FindReferred(properties, "filter", "filter")) {
            LeaveOut("filter");
            if (IsBlur(*filter)) return;
        }
        const XmlNode *const clip = FindReferred(properties, "clip-path", "clipPath"), *const mask = FindReferred(
                                                                                           properties, "mask", "mask");
        const auto text = properties.Find("opacity");
        const double opacity = text && !m_clipping ? ParsePart(*text).value_or(1) : 1;
        if (opacity == 1 && !clip && !mask) return DrawKind(node, properties, around);

        // All of it is drawn by itself first: what overlaps within it must not shine through.
        Image layer = DrawLayer([&] { DrawKind(node, properties, around); });
        if (clip) Cut(layer, DrawClip(*clip, node, around), Cover::Opacity);
        if (mask) Cut(layer, DrawMask(*mask, around), Cover::Brightness);
        Blend(*m_image, layer, opacity);
    }

    template <class Draw>
    Image DrawLayer(Draw draw) {
        Image layer{m_image->width, m_image->height, std::vector<std::uint32_t>(m_image->pixels.size())};
        Spend(layer.pixels.size());
        Image* const below = std::exchange(m_image, &layer);
        draw();
        m_image = below;
        return layer;
    }

    Image DrawClip(const XmlNode& clip, const XmlNode& node, Surroundings around) {
        const Properties properties(clip);
        around.style = m_first.style;
        around.matrix = around.matrix * ParseTransform(properties.Attribute("transform"));
        if (properties.Attribute("clipPathUnits") == "objectBoundingBox") EnterBoundsOf(node, around);
        return DrawCover(clip, around, true);
    }

    // Its own region is not looked at.
    Image DrawMask(const XmlNode& mask, Surroundings around) {
        around.style = m_first.style;
        return DrawCover(mask, around, false);
    }

    Image DrawCover(const XmlNode& cover, const Surroundings& around, bool clipping) {
        return DrawLayer([&] {
            const bool clippingBefore = std::exchange(m_clipping, clipping);
            const XmlNode* const coverBefore = std::exchange(m_cover, &cover);
            DrawStyled(cover, Properties(cover), around);
            m_clipping = clippingBefore;
            m_cover = coverBefore;
        });
    }

    // To a space in which the box around a shape is from 0 to 1.
    void EnterBoundsOf(const XmlNode& node, Surroundings& around) {
        Path path;
        if (!ReadShape(Properties(node), around, path)) return LeaveOut("clip-path in units of a group");
        const Box bounds = BoundsOf(Flatten(path, c_tolerance));
        around.matrix = around.matrix * Matrix{bounds.width, 0, 0, bounds.height, bounds.x, bounds.y};
    }

    // Whether a filter gives nothing but a blurred picture: a shadow or a shine, which would stand there hard without
    // it. One that lays the shape itself over its shadow is left out alone.
    static bool IsBlur(const XmlNode& filter) {
        bool blurred = false;
        for (const XmlNode& child : filter.children) {
            const Properties properties(child);
            const std::string_view name = properties.Name();
            blurred =
                blurred || (name == "feGaussianBlur" && Scanner(properties.Attribute("stdDeviation")).TryNumber() > 0);
            const auto isSource = [](const XmlNode& node) {
                return Properties(node).Attribute("in") == "SourceGraphic" ||
                       Properties(node).Attribute("in2") == "SourceGraphic";
            };
            const bool lays = name == "feMerge" || name == "feBlend" || name == "feComposite";
            if (lays && (isSource(child) || std::any_of(child.children.begin(), child.children.end(), isSource)))
                return false;
        }
        return blurred;
    }

    void DrawKind(const XmlNode& node, const Properties& properties, const Surroundings& around) {
        const std::string_view name = properties.Name();
        if (name == "g" || name == "a" || (name == "svg" && &node == &m_root)) return DrawChildren(node, around);
        // A clip path or a mask, in place of what it is one of; where it stands, it is not drawn.
        if (&node == m_cover) return DrawChildren(node, around);
        if (name == "switch") return DrawFirst(node, around);
        if (std::find(std::begin(c_leftOut), std::end(c_leftOut), name) != std::end(c_leftOut)) LeaveOut(name);
        if (name == "svg") return DrawInner(node, properties, around, {});
        if (name == "use") return DrawUse(properties, around);
        if (name == "text") return DrawText(node, around);
        Path path;
        if (ReadShape(properties, around, path)) DrawPath(path, around);
    }

    void DrawChildren(const XmlNode& node, const Surroundings& around) {
        for (const XmlNode& child : node.children)
            DrawNode(child, around);
    }

    // Of a switch's children, the first that asks for nothing; what one asks for is a program's own.
    void DrawFirst(const XmlNode& node, const Surroundings& around) {
        const auto first = std::find_if(node.children.begin(), node.children.end(), [](const XmlNode& child) {
            return !child.name.empty() && !child.Find("requiredExtensions") &&
                   Properties(child).Name() != "foreignObject";
        });
        if (first != node.children.end()) DrawNode(*first, around);
    }

    // An svg within the drawing, or a symbol; `size` is a use's, 0 for what it leaves open.
    void DrawInner(const XmlNode& node, const Properties& properties, Surroundings around, Point size) {
        Box box{properties.Length("x", Across(around), 0), properties.Length("y", Down(around), 0),
                properties.Length("width", Across(around), around.viewport.x),
                properties.Length("height", Down(around), around.viewport.y)};
        if (size.x > 0) box.width = size.x;
        if (size.y > 0) box.height = size.y;
        around.matrix = around.matrix * Matrix{1, 0, 0, 1, box.x, box.y};
        EnterBox(properties, {0, 0, box.width, box.height}, {box.width, box.height}, around);
        DrawChildren(node, around);
    }

    void DrawUse(const Properties& properties, Surroundings around) {
        const XmlNode* const target = FindById(properties.Target());
        if (!target) return;
        around.matrix =
            around.matrix *
            Matrix{1, 0, 0, 1, properties.Length("x", Across(around), 0), properties.Length("y", Down(around), 0)};
        const Properties inner(*target);
        if (inner.Name() != "symbol") return DrawNode(*target, around);
        const Point size{properties.Length("width", Across(around), 0), properties.Length("height", Down(around), 0)};
        around.style = ReadStyle(inner, std::move(around.style), Diagonal(around).whole);
        if (++around.depth > SvgLimits::Depth) throw Refusal{};
        DrawInner(*target, inner, around, size);
    }

    // False for what is no shape, or one without extent.
    bool ReadShape(const Properties& properties, const Surroundings& around, Path& path) const {
        const std::string_view name = properties.Name();
        const auto x = [&](std::string_view key) { return properties.Length(key, Across(around), 0); };
        const auto y = [&](std::string_view key) { return properties.Length(key, Down(around), 0); };
        if (name == "path") {
            path = ParsePathData(properties.Attribute("d"));
        } else if (name == "rect") {
            const double width = x("width"), height = y("height");
            if (!(width > 0 && height > 0)) return false;
            // One radius given holds for both.
            const double rx = properties.Length("rx", Across(around), -1),
                         ry = properties.Length("ry", Down(around), -1);
            path.Rectangle(x("x"), y("y"), width, height, rx < 0 ? ry : rx, ry < 0 ? rx : ry);
        } else if (name == "circle") {
            const double radius = properties.Length("r", Diagonal(around), 0);
            if (!(radius > 0)) return false;
            path.Ellipse({x("cx"), y("cy")}, radius, radius);
        } else if (name == "ellipse") {
            const double rx = x("rx"), ry = y("ry");
            if (!(rx > 0 && ry > 0)) return false;
            path.Ellipse({x("cx"), y("cy")}, rx, ry);
        } else if (name == "line") {
            path.Move({x("x1"), y("y1")});
            path.Line({x("x2"), y("y2")});
        } else if (name == "polyline" || name == "polygon") {
            const std::vector<double> numbers = ParseNumbers(properties.Attribute("points"), 2 * c_mostPoints);
            if (numbers.size() % 2 != 0) throw Refusal{};
            for (std::size_t i = 0; i < numbers.size(); i += 2) {
                const Point point{numbers[i], numbers[i + 1]};
                i == 0 ? path.Move(point) : path.Line(point);
            }
            if (name == "polygon") path.Close();
        }
        return !path.IsEmpty();
    }

    // ---- Painting --------------------------------------------------------------------------------------------------

    void DrawPath(const Path& path, const Surroundings& around) {
        const Style& style = around.style;
        const double scale = around.matrix.Scale();
        if (!style.visible || !around.matrix.IsFinite() || !(scale > 0)) return;
        const double tolerance = c_tolerance / scale;
        const bool stroked = style.stroke.color || !style.stroke.gradient.empty();
        Polylines lines = Flatten(path, tolerance, stroked && !m_clipping ? style.line.width / 2 : 0);
        if (m_clipping) return FillLines(lines, style.clipRule, Paint(Color{}), around);
        const Box bounds = BoundsOf(lines);
        PaintLines(lines, style.fill, style.fillOpacity, style.fillRule, bounds, around);
        if (!stroked) return;
        if (!Dash(lines, style.line, c_mostPoints)) throw Refusal{};
        PaintLines(Stroke(lines, style.line, tolerance), style.stroke, style.strokeOpacity, FillRule::NonZero, bounds,
                   around);
    }

    void PaintLines(Polylines lines, const PaintChoice& choice, double opacity, FillRule rule, const Box& bounds,
                    const Surroundings& around) {
        const Paint paint = MakePaint(choice, opacity, bounds, around);
        if (!paint.IsEmpty()) FillLines(std::move(lines), rule, paint, around);
    }

    void FillLines(Polylines lines, FillRule rule, const Paint& paint, const Surroundings& around) {
        Transform(lines, around.matrix);
        m_rasterizer.Add(lines);
        m_rasterizer.Fill(*m_image, rule, paint);
        if (m_rasterizer.IsExhausted()) throw Refusal{};
    }

    Paint MakePaint(const PaintChoice& choice, double opacity, const Box& bounds, const Surroundings& around) {
        const XmlNode* const gradient = choice.gradient.empty() ? nullptr : FindById(choice.gradient);
        if (gradient) {
            const std::string_view kind = Properties(*gradient).Name();
            if (kind == "linearGradient" || kind == "radialGradient")
                return MakeGradient(*gradient, opacity, bounds, around);
            LeaveOut(kind);
        }
        if (!choice.color) return {};
        Color color = *choice.color;
        color.alpha *= opacity;
        return Paint(color);
    }

    // A gradient and those that it refers to, nearest first: each may leave values and stops to the next.
    std::vector<Properties> GradientChain(const XmlNode& gradient, const XmlNode*& stops) {
        std::vector<Properties> chain;
        stops = nullptr;
        for (const XmlNode* next = &gradient; next && chain.size() < 8; next = FindById(chain.back().Target())) {
            chain.emplace_back(*next);
            if (!stops && HasStops(*next)) stops = next;
        }
        return chain;
    }

    bool HasStops(const XmlNode& gradient) {
        const auto [found, isNew] = m_hasStops.try_emplace(&gradient, false);
        if (isNew) {
            Spend(64 * gradient.children.size());
            found->second = std::any_of(gradient.children.begin(), gradient.children.end(),
                                        [](const XmlNode& child) { return Properties(child).Name() == "stop"; });
        }
        return found->second;
    }

    // Most drawings use a gradient again and again; some thousand colours are mixed for it once.
    Paint::Ramp RampOf(const XmlNode& gradient, double opacity, const Style& style) {
        const Color& color = style.color;
        const RampKey key{&gradient, opacity, color.red, color.green, color.blue, color.alpha};
        if (const auto found = m_ramps.find(key); found != m_ramps.end()) return found->second;
        Spend(64 * gradient.children.size());
        if (m_ramps.size() == c_mostRamps) m_ramps.clear();
        return m_ramps[key] = Paint::MakeRamp(ReadStops(gradient, opacity, style));
    }

    Paint MakeGradient(const XmlNode& gradient, double opacity, const Box& bounds, const Surroundings& around) {
        const XmlNode* stopsOf = nullptr;
        const std::vector<Properties> chain = GradientChain(gradient, stopsOf);
        if (!stopsOf) return {};
        const auto find = [&](std::string_view name) {
            for (const Properties& properties : chain)
                if (const std::string_view text = properties.Attribute(name); !text.empty()) return text;
            return std::string_view();
        };
        const bool ofBox = find("gradientUnits") != "userSpaceOnUse";
        Matrix toPixels = around.matrix;
        if (ofBox) toPixels = toPixels * Matrix{bounds.width, 0, 0, bounds.height, bounds.x, bounds.y};
        toPixels = toPixels * ParseTransform(find("gradientTransform"));
        const auto length = [&](std::string_view name, LengthBase base, std::string_view otherwise) {
            const std::string_view text = find(name);
            return ParseLength(text.empty() ? otherwise : text, ofBox ? LengthBase{1, 1} : base);
        };
        const LengthBase across = Across(around), down = Down(around);
        const std::string_view method = find("spreadMethod");
        const Paint::Spread spread = method == "reflect"  ? Paint::Spread::Reflect
                                     : method == "repeat" ? Paint::Spread::Repeat
                                                          : Paint::Spread::Pad;
        const Paint::Ramp ramp = RampOf(*stopsOf, opacity, around.style);
        if (chain.front().Name() == "linearGradient")
            return Paint::Linear({length("x1", across, "0"), length("y1", down, "0")},
                                 {length("x2", across, "100%"), length("y2", down, "0")}, ramp, spread, toPixels);
        const Point center{length("cx", across, "50%"), length("cy", down, "50%")};
        const Point focus{find("fx").empty() ? center.x : length("fx", across, ""),
                          find("fy").empty() ? center.y : length("fy", down, "")};
        return Paint::Radial(center, length("r", Diagonal(around), "50%"), focus, ramp, spread, toPixels);
    }

    static std::vector<Paint::Stop> ReadStops(const XmlNode& gradient, double opacity, const Style& style) {
        std::vector<Paint::Stop> stops;
        for (const XmlNode& child : gradient.children) {
            const Properties properties(child);
            if (properties.Name() != "stop") continue;
            if (stops.size() == SvgLimits::Stops) throw Refusal{};
            Paint::Stop stop;
            if (const auto text = properties.Find("offset")) stop.offset = ParsePart(*text).value_or(0);
            if (const auto text = properties.Find("stop-color"))
                stop.color = ParseColorOrCurrent(*text, style.color).value_or(Color{});
            if (const auto text = properties.Find("stop-opacity")) stop.color.alpha *= ParsePart(*text).value_or(1);
            stop.color.alpha *= opacity;
            stops.push_back(stop);
        }
        return stops;
    }

    // ---- Text ------------------------------------------------------------------------------------------------------

    // Text in one style; where it begins, if that is said, and by how much it is shifted.
    struct Run {
        Surroundings around;
        std::u32string characters;
        std::optional<double> x, y;
        Point shift;
    };

    void DrawText(const XmlNode& node, const Surroundings& around) {
        if (!m_glyphs) return;
        std::vector<Run> runs;
        ReadText(node, around, runs);
        // A blank at the end would shift a centred text.
        if (!runs.empty() && runs.back().characters.ends_with(U' ')) runs.back().characters.pop_back();
        Point at;
        for (std::size_t begin = 0; begin < runs.size();) {
            std::size_t end = begin + 1;
            while (end < runs.size() && !runs[end].x && !runs[end].y)
                ++end;
            at = {runs[begin].x.value_or(at.x), runs[begin].y.value_or(at.y)};
            DrawChunk(runs, begin, end, at);
            begin = end;
        }
    }

    void ReadText(const XmlNode& node, const Surroundings& around, std::vector<Run>& runs) {
        const Properties properties(node);
        const auto first = [&](std::string_view name, LengthBase base) -> std::optional<double> {
            const std::string_view text = Trim(properties.Attribute(name));
            // A list places letter by letter; only its first place is taken.
            if (text.empty()) return std::nullopt;
            return ParseLength(text.substr(0, text.find_first_of(" ,\t\r\n")), base);
        };
        Run run{around, {}, first("x", Across(around)), first("y", Down(around)), {}};
        run.shift = {first("dx", Across(around)).value_or(0), first("dy", Down(around)).value_or(0)};
        for (const XmlNode& child : node.children) {
            if (child.name.empty()) {
                run.characters = Decode(child.text, runs.empty() || runs.back().characters.ends_with(U' '));
                runs.push_back(std::move(run));
            } else if (Properties(child).Name() == "tspan") {
                if (++m_elements > SvgLimits::Elements || around.depth >= SvgLimits::Depth) throw Refusal{};
                if (run.x || run.y || !(run.shift == Point{})) runs.push_back(run);
                Surroundings inner = around;
                ++inner.depth;
                inner.style = ReadStyle(Properties(child), around.style, Diagonal(around).whole);
                ReadText(child, inner, runs);
            }
            run = Run{around, {}, std::nullopt, std::nullopt, {}};
        }
    }

    // Blanks of all kinds in a row are one, and none at the beginning.
    std::u32string Decode(std::string_view text, bool afterBlank) {
        Spend(text.size());
        std::u32string characters;
        for (char32_t character = 0; !text.empty() && TakeUtf8(text, character);) {
            const bool blank = character <= U' ';
            if (blank && afterBlank) continue;
            characters += blank ? U' ' : character;
            afterBlank = blank;
        }
        m_characters += characters.size();
        if (m_characters > SvgLimits::Characters) throw Refusal{};
        return characters;
    }

    // Places the runs one after the other, from `at` on or around it; `at` is moved behind them.
    void DrawChunk(const std::vector<Run>& runs, std::size_t begin, std::size_t end, Point& at) {
        std::vector<Path> paths(end - begin);
        Point pen;
        for (std::size_t i = begin; i < end; ++i) {
            const Style& style = runs[i].around.style;
            pen = pen + runs[i].shift;
            for (const char32_t character : runs[i].characters) {
                Path glyph;
                double advance = 0;
                if (!m_glyphs->Outline(style.font, character, glyph, advance)) continue;
                if (glyph.Size() > c_mostPoints) throw Refusal{};
                paths[i - begin].Append(glyph, {style.fontSize, 0, 0, style.fontSize, pen.x, pen.y});
                pen.x += advance * style.fontSize;
            }
        }
        const Anchor anchor = runs[begin].around.style.anchor;
        at.x -= anchor == Anchor::Middle ? pen.x / 2 : anchor == Anchor::End ? pen.x : 0;
        for (std::size_t i = begin; i < end; ++i) {
            Surroundings around = runs[i].around;
            around.matrix = around.matrix * Matrix{1, 0, 0, 1, at.x, at.y};
            if (!paths[i - begin].IsEmpty()) DrawPath(paths[i - begin], around);
        }
        at = at + pen;
    }

    const XmlNode& m_root;
    Image* m_image;
    GlyphSource* m_glyphs;
    std::vector<std::string>* m_leftOut;
    Rasterizer m_rasterizer;
    // Drawing the shape of a clip path: what is filled, opaque.
    bool m_clipping = false;
    // The clip path or mask that is being drawn.
    const XmlNode* m_cover = nullptr;
    Surroundings m_first;
    std::unordered_map<std::string_view, const XmlNode*> m_byId;
    std::unordered_map<const XmlNode*, bool> m_hasStops;
    using RampKey = std::tuple<const XmlNode*, double, std::uint8_t, std::uint8_t, std::uint8_t, double>;
    static constexpr std::size_t c_mostRamps = 64;
    std::map<RampKey, Paint::Ramp> m_ramps;
    int m_elements = 0;
    std::size_t m_characters = 0;
};

}  // namespace

bool Render(std::string_view text, int width, int height, Color currentColor, GlyphSource* glyphs, Image& image,
            std::vector<std::string>* leftOut) {
    image = {};
    if (leftOut) leftOut->clear();
    if (width < 1 || height < 1 || width > SvgLimits::Side || height > SvgLimits::Side) return false;
    try {
        std::optional<XmlNode> root = ReadXml(text);
        if (!root || !ApplySheets(*root)) return false;
        Image drawn{width, height, {}};
        drawn.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        Drawing(*root, drawn, currentColor, glyphs, leftOut).Draw();
        image = std::move(drawn);
        return true;
    } catch (const Refusal&) {
    } catch (const std::exception&) {
        // Out of memory.
    }
    return false;
}

}  // namespace kx::svg
