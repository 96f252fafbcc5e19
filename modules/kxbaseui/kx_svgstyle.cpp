#include <kxbaseui/kx_svgstyle.h>

#include <algorithm>

namespace kx::svg {

namespace {

constexpr std::size_t c_mostDashes = 64;

// The value of a keyword; `value` stays for one that is not in the table.
template <class Value, std::size_t Count>
void Choose(const Properties& properties, std::string_view name,
            const std::pair<std::string_view, Value> (&table)[Count], Value& value) {
    const auto text = properties.Find(name);
    if (!text) return;
    for (const auto& [word, meaning] : table)
        if (*text == word) value = meaning;
}

void ReadPaint(const Properties& properties, std::string_view name, Color current, PaintChoice& paint) {
    auto text = properties.Find(name);
    if (!text) return;
    PaintChoice read;
    if (text->starts_with("url(")) {
        std::string_view rest;
        read.gradient = ParseReference(*text, rest);
        if (read.gradient.empty()) return;
        text = rest;
    }
    read.color = ParseColorOrCurrent(*text, current);
    if (read.color || *text == "none" || !read.gradient.empty()) paint = read;
}

// The words as CSS 2.1, 15.7 has them, for a medium size of 16.
double ReadFontSize(std::string_view text, double inherited) {
    static constexpr std::pair<std::string_view, double> c_sizes[] = {{"xx-small", 9}, {"x-small", 10}, {"small", 13},
                                                                      {"medium", 16},  {"large", 18},   {"x-large", 24},
                                                                      {"xx-large", 32}};
    for (const auto& [word, size] : c_sizes)
        if (text == word) return size;
    return std::max(TryLength(text, {inherited, inherited}).value_or(inherited), 0.0);
}

void ReadFont(const Properties& properties, Style& style) {
    if (const auto family = properties.Find("font-family")) style.font.family = *family;
    if (const auto size = properties.Find("font-size")) style.fontSize = ReadFontSize(*size, style.fontSize);
    if (const auto weight = properties.Find("font-weight"); weight && !weight->empty()) {
        const char first = weight->front();
        style.font.bold = first >= '0' && first <= '9' ? first >= '6' : weight->starts_with("bold");
    }
    if (const auto slant = properties.Find("font-style"))
        style.font.italic = *slant == "italic" || slant->starts_with("oblique");
    static constexpr std::pair<std::string_view, Anchor> c_anchors[] = {
        {"start", Anchor::Start}, {"middle", Anchor::Middle}, {"end", Anchor::End}};
    Choose(properties, "text-anchor", c_anchors, style.anchor);
}

void ReadDashes(std::string_view text, LengthBase base, std::vector<double>& dashes) {
    std::vector<double> read;
    double sum = 0;
    for (text = Trim(text); !text.empty() && text != "none";) {
        const std::string_view word = text.substr(0, text.find_first_of(", \t\r\n\f"));
        const auto length = TryLength(word, base);
        if (!length || *length < 0 || read.size() == c_mostDashes) return;
        read.push_back(*length);
        sum += *length;
        text.remove_prefix(word.size());
        text = Trim(text);
        if (text.starts_with(',')) text = Trim(text.substr(1));
    }
    // Nothing but gaps of no length is a whole line.
    if (sum == 0) read.clear();
    const std::size_t given = read.size();
    for (std::size_t i = 0; given % 2 != 0 && i < given; ++i)
        read.push_back(read[i]);
    dashes = std::move(read);
}

void ReadLine(const Properties& properties, LengthBase base, StrokeStyle& line) {
    static constexpr std::pair<std::string_view, Cap> c_caps[] = {
        {"butt", Cap::Butt}, {"round", Cap::Round}, {"square", Cap::Square}};
    static constexpr std::pair<std::string_view, Join> c_joins[] = {
        {"miter", Join::Miter}, {"round", Join::Round}, {"bevel", Join::Bevel}};
    if (const auto width = properties.Find("stroke-width")) line.width = TryLength(*width, base).value_or(line.width);
    if (const auto limit = properties.Find("stroke-miterlimit"))
        line.miterLimit = std::max(Scanner(*limit).TryNumber().value_or(line.miterLimit), 1.0);
    if (const auto dashes = properties.Find("stroke-dasharray")) ReadDashes(*dashes, base, line.dashes);
    if (const auto offset = properties.Find("stroke-dashoffset"))
        line.dashOffset = TryLength(*offset, base).value_or(line.dashOffset);
    Choose(properties, "stroke-linecap", c_caps, line.cap);
    Choose(properties, "stroke-linejoin", c_joins, line.join);
}

}  // namespace

Properties::Properties(const XmlNode& node) : m_node(node), m_name(node.name) {
    if (m_name.starts_with("svg:")) m_name.remove_prefix(4);
    if (m_name.find(':') != std::string_view::npos) m_name = {};
    const std::string* const style = node.Find("style");
    for (std::string_view rest = style ? std::string_view(*style) : std::string_view(); !rest.empty();) {
        const std::string_view declaration = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(declaration.size() + 1, rest.size()));
        const auto colon = declaration.find(':');
        if (colon == std::string_view::npos) continue;
        m_declarations.emplace_back(Trim(declaration.substr(0, colon)), Trim(declaration.substr(colon + 1)));
    }
}

std::optional<std::string_view> Properties::Find(std::string_view name) const {
    // The last of several holds.
    const auto declared = std::find_if(m_declarations.rbegin(), m_declarations.rend(),
                                       [&](const auto& declaration) { return declaration.first == name; });
    if (declared != m_declarations.rend())
        return declared->second == "inherit" ? std::nullopt : std::optional(declared->second);
    const std::string* const attribute = m_node.Find(name);
    if (!attribute || *attribute == "inherit") return std::nullopt;
    return Trim(*attribute);
}

std::string_view Properties::Attribute(std::string_view name) const {
    const std::string* const attribute = m_node.Find(name);
    return attribute ? std::string_view(*attribute) : std::string_view();
}

double Properties::Length(std::string_view name, LengthBase base, double otherwise) const {
    const auto text = Find(name);
    return text && *text != "auto" ? ParseLength(*text, base) : otherwise;
}

std::string_view Properties::Target() const {
    std::string_view target = Trim(Attribute("href"));
    if (target.empty()) target = Trim(Attribute("xlink:href"));
    return target.starts_with('#') ? target.substr(1) : std::string_view();
}

std::optional<Color> ParseColorOrCurrent(std::string_view text, Color current) {
    return EqualsIgnoringCase(text, "currentColor") ? current : ParseColor(text);
}

std::string_view ParseReference(std::string_view text, std::string_view& rest) {
    const auto end = text.find(')');
    if (!text.starts_with("url(") || end == std::string_view::npos) return {};
    rest = Trim(text.substr(end + 1));
    std::string_view target = Trim(text.substr(4, end - 4));
    if (target.size() > 1 && (target.front() == '"' || target.front() == '\'') && target.back() == target.front())
        target = target.substr(1, target.size() - 2);
    return target.starts_with('#') ? target.substr(1) : std::string_view();
}

Style ReadStyle(const Properties& properties, Style style, double diagonal) {
    if (const auto color = properties.Find("color"))
        style.color = ParseColorOrCurrent(*color, style.color).value_or(style.color);
    ReadFont(properties, style);
    ReadPaint(properties, "fill", style.color, style.fill);
    ReadPaint(properties, "stroke", style.color, style.stroke);
    if (const auto text = properties.Find("fill-opacity"))
        style.fillOpacity = ParsePart(*text).value_or(style.fillOpacity);
    if (const auto text = properties.Find("stroke-opacity"))
        style.strokeOpacity = ParsePart(*text).value_or(style.strokeOpacity);
    static constexpr std::pair<std::string_view, FillRule> c_rules[] = {{"nonzero", FillRule::NonZero},
                                                                        {"evenodd", FillRule::EvenOdd}};
    Choose(properties, "fill-rule", c_rules, style.fillRule);
    Choose(properties, "clip-rule", c_rules, style.clipRule);
    static constexpr std::pair<std::string_view, bool> c_visibilities[] = {
        {"visible", true}, {"hidden", false}, {"collapse", false}};
    Choose(properties, "visibility", c_visibilities, style.visible);
    ReadLine(properties, {diagonal, style.fontSize}, style.line);
    return style;
}

}  // namespace kx::svg
