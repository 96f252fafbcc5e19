// The properties of SVG elements: where they stand, how they are inherited.
#pragma once

#include <kxbaseui/kx_svg.h>
#include <kxbaseui/kx_svgvalues.h>
#include <kxbaseui/kx_xml.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kx::svg {

// An element's attributes and its style, which goes first.
class Properties {
public:
    explicit Properties(const XmlNode& node);

    // The name without its prefix; empty for an element of a foreign vocabulary.
    std::string_view Name() const { return m_name; }
    std::optional<std::string_view> Find(std::string_view name) const;
    // Attributes that no style can set.
    std::string_view Attribute(std::string_view name) const;
    double Length(std::string_view name, LengthBase base, double otherwise) const;
    // The target's id of href="#id", or empty.
    std::string_view Target() const;

private:
    const XmlNode& m_node;
    std::string_view m_name;
    std::vector<std::pair<std::string_view, std::string_view>> m_declarations;
};

// fill or stroke: nothing, a colour, or a gradient by its id with what holds if there is no such gradient.
struct PaintChoice {
    std::string gradient;
    std::optional<Color> color;
};

enum class Anchor : std::uint8_t { Start, Middle, End };

// What an element inherits.
struct Style {
    Color color;
    PaintChoice fill{{}, Color{}}, stroke;
    double fillOpacity = 1, strokeOpacity = 1;
    FillRule fillRule = FillRule::NonZero, clipRule = FillRule::NonZero;
    StrokeStyle line;
    GlyphSource::Font font;
    double fontSize = 16;
    Anchor anchor = Anchor::Start;
    bool visible = true;
};

// A colour, or currentColor, which is `current`.
std::optional<Color> ParseColorOrCurrent(std::string_view text, Color current);

// The id of url(#id), or empty; `rest` becomes what stands behind.
std::string_view ParseReference(std::string_view text, std::string_view& rest);

// The style of an element within one that has `inherited`. Values that are not understood count as not given;
// `diagonal` is what a stroke's percentages are of.
Style ReadStyle(const Properties& properties, Style inherited, double diagonal);

}  // namespace kx::svg
