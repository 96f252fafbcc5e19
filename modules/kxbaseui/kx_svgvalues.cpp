#include <kxbaseui/kx_svgvalues.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <utility>

namespace kx::svg {

namespace {

constexpr std::string_view c_blanks = " \t\r\n\f";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

struct NamedColor {
    std::string_view name;
    unsigned rgb;
};

// clang-format off
constexpr NamedColor c_colors[] = {
    {"aliceblue", 0xF0F8FF}, {"antiquewhite", 0xFAEBD7}, {"aqua", 0x00FFFF}, {"aquamarine", 0x7FFFD4},
    {"azure", 0xF0FFFF}, {"beige", 0xF5F5DC}, {"bisque", 0xFFE4C4}, {"black", 0x000000}, {"blanchedalmond", 0xFFEBCD},
    {"blue", 0x0000FF}, {"blueviolet", 0x8A2BE2}, {"brown", 0xA52A2A}, {"burlywood", 0xDEB887}, {"cadetblue", 0x5F9EA0},
    {"chartreuse", 0x7FFF00}, {"chocolate", 0xD2691E}, {"coral", 0xFF7F50}, {"cornflowerblue", 0x6495ED},
    {"cornsilk", 0xFFF8DC}, {"crimson", 0xDC143C}, {"cyan", 0x00FFFF}, {"darkblue", 0x00008B}, {"darkcyan", 0x008B8B},
    {"darkgoldenrod", 0xB8860B}, {"darkgray", 0xA9A9A9}, {"darkgreen", 0x006400}, {"darkgrey", 0xA9A9A9},
    {"darkkhaki", 0xBDB76B}, {"darkmagenta", 0x8B008B}, {"darkolivegreen", 0x556B2F}, {"darkorange", 0xFF8C00},
    {"darkorchid", 0x9932CC}, {"darkred", 0x8B0000}, {"darksalmon", 0xE9967A}, {"darkseagreen", 0x8FBC8F},
    {"darkslateblue", 0x483D8B}, {"darkslategray", 0x2F4F4F}, {"darkslategrey", 0x2F4F4F}, {"darkturquoise", 0x00CED1},
    {"darkviolet", 0x9400D3}, {"deeppink", 0xFF1493}, {"deepskyblue", 0x00BFFF}, {"dimgray", 0x696969},
    {"dimgrey", 0x696969}, {"dodgerblue", 0x1E90FF}, {"firebrick", 0xB22222}, {"floralwhite", 0xFFFAF0},
    {"forestgreen", 0x228B22}, {"fuchsia", 0xFF00FF}, {"gainsboro", 0xDCDCDC}, {"ghostwhite", 0xF8F8FF},
    {"gold", 0xFFD700}, {"goldenrod", 0xDAA520}, {"gray", 0x808080}, {"green", 0x008000}, {"greenyellow", 0xADFF2F},
    {"grey", 0x808080}, {"honeydew", 0xF0FFF0}, {"hotpink", 0xFF69B4}, {"indianred", 0xCD5C5C}, {"indigo", 0x4B0082},
    {"ivory", 0xFFFFF0}, {"khaki", 0xF0E68C}, {"lavender", 0xE6E6FA}, {"lavenderblush", 0xFFF0F5},
    {"lawngreen", 0x7CFC00}, {"lemonchiffon", 0xFFFACD}, {"lightblue", 0xADD8E6}, {"lightcoral", 0xF08080},
    {"lightcyan", 0xE0FFFF}, {"lightgoldenrodyellow", 0xFAFAD2}, {"lightgray", 0xD3D3D3}, {"lightgreen", 0x90EE90},
    {"lightgrey", 0xD3D3D3}, {"lightpink", 0xFFB6C1}, {"lightsalmon", 0xFFA07A}, {"lightseagreen", 0x20B2AA},
    {"lightskyblue", 0x87CEFA}, {"lightslategray", 0x778899}, {"lightslategrey", 0x778899},
    {"lightsteelblue", 0xB0C4DE}, {"lightyellow", 0xFFFFE0}, {"lime", 0x00FF00}, {"limegreen", 0x32CD32},
    {"linen", 0xFAF0E6}, {"magenta", 0xFF00FF}, {"maroon", 0x800000}, {"mediumaquamarine", 0x66CDAA},
    {"mediumblue", 0x0000CD}, {"mediumorchid", 0xBA55D3}, {"mediumpurple", 0x9370DB}, {"mediumseagreen", 0x3CB371},
    {"mediumslateblue", 0x7B68EE}, {"mediumspringgreen", 0x00FA9A}, {"mediumturquoise", 0x48D1CC},
    {"mediumvioletred", 0xC71585}, {"midnightblue", 0x191970}, {"mintcream", 0xF5FFFA}, {"mistyrose", 0xFFE4E1},
    {"moccasin", 0xFFE4B5}, {"navajowhite", 0xFFDEAD}, {"navy", 0x000080}, {"oldlace", 0xFDF5E6}, {"olive", 0x808000},
    {"olivedrab", 0x6B8E23}, {"orange", 0xFFA500}, {"orangered", 0xFF4500}, {"orchid", 0xDA70D6},
    {"palegoldenrod", 0xEEE8AA}, {"palegreen", 0x98FB98}, {"paleturquoise", 0xAFEEEE}, {"palevioletred", 0xDB7093},
    {"papayawhip", 0xFFEFD5}, {"peachpuff", 0xFFDAB9}, {"peru", 0xCD853F}, {"pink", 0xFFC0CB}, {"plum", 0xDDA0DD},
    {"powderblue", 0xB0E0E6}, {"purple", 0x800080}, {"rebeccapurple", 0x663399}, {"red", 0xFF0000},
    {"rosybrown", 0xBC8F8F}, {"royalblue", 0x4169E1}, {"saddlebrown", 0x8B4513}, {"salmon", 0xFA8072},
    {"sandybrown", 0xF4A460}, {"seagreen", 0x2E8B57}, {"seashell", 0xFFF5EE}, {"sienna", 0xA0522D},
    {"silver", 0xC0C0C0}, {"skyblue", 0x87CEEB}, {"slateblue", 0x6A5ACD}, {"slategray", 0x708090},
    {"slategrey", 0x708090}, {"snow", 0xFFFAFA}, {"springgreen", 0x00FF7F}, {"steelblue", 0x4682B4}, {"tan", 0xD2B48C},
    {"teal", 0x008080}, {"thistle", 0xD8BFD8}, {"tomato", 0xFF6347}, {"turquoise", 0x40E0D0}, {"violet", 0xEE82EE},
    {"wheat", 0xF5DEB3}, {"white", 0xFFFFFF}, {"whitesmoke", 0xF5F5F5}, {"yellow", 0xFFFF00}, {"yellowgreen", 0x9ACD32},
};
// clang-format on

Color FromRgb(unsigned rgb) {
    return {static_cast<std::uint8_t>(rgb >> 16 & 0xFF), static_cast<std::uint8_t>(rgb >> 8 & 0xFF),
            static_cast<std::uint8_t>(rgb & 0xFF), 1};
}

std::optional<Color> ParseHexColor(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    const bool brief = digits.size() == 3 || digits.size() == 4, withAlpha = digits.size() == 4 || digits.size() == 8;
    if (!brief && digits.size() != 6 && digits.size() != 8) return std::nullopt;
    if (brief) {
        // Each digit twice.
        value = (value & 0xF000) << 12 | (value & 0xF00) << 8 | (value & 0xF0) << 4 | (value & 0xF);
        value |= value << 4;
    }
    Color color = FromRgb(withAlpha ? value >> 8 : value);
    if (withAlpha) color.alpha = (value & 0xFF) / 255.0;
    return color;
}

// "r, g, b)" or "r g b / a)", each a number up to 255 or a percentage.
std::optional<Color> ParseRgbFunction(std::string_view arguments) {
    Scanner scanner(arguments);
    double parts[4] = {0, 0, 0, 1};
    int count = 0;
    while (count < 4) {
        const auto number = scanner.TryNumber();
        if (!number) break;
        const bool percent = scanner.TakeIf('%');
        parts[count] = std::clamp(*number / (percent ? 100 : count < 3 ? 255 : 1), 0.0, 1.0);
        ++count;
        scanner.SkipSeparator();
        if (count == 3 && scanner.TakeIf('/')) scanner.SkipBlanks();
    }
    if (count < 3 || !scanner.TakeIf(')')) return std::nullopt;
    scanner.SkipBlanks();
    if (!scanner.IsAtEnd()) return std::nullopt;
    const auto level = [](double part) { return static_cast<std::uint8_t>(Rounded(part * 255)); };
    return Color{level(parts[0]), level(parts[1]), level(parts[2]), parts[3]};
}

// ---- Transforms ----------------------------------------------------------------------------------------------------

Matrix Rotation(double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
}

Matrix MakeTransform(std::string_view name, const std::vector<double>& n) {
    const std::size_t count = n.size();
    const auto tangent = [&] { return std::tan(n[0] * std::numbers::pi / 180); };
    if (name == "matrix" && count == 6) return {n[0], n[1], n[2], n[3], n[4], n[5]};
    if (name == "translate" && count == 1) return {1, 0, 0, 1, n[0], 0};
    if (name == "translate" && count == 2) return {1, 0, 0, 1, n[0], n[1]};
    if (name == "scale" && count == 1) return {n[0], 0, 0, n[0], 0, 0};
    if (name == "scale" && count == 2) return {n[0], 0, 0, n[1], 0, 0};
    if (name == "rotate" && count == 1) return Rotation(n[0]);
    if (name == "rotate" && count == 3)
        return Matrix{1, 0, 0, 1, n[1], n[2]} * Rotation(n[0]) * Matrix{1, 0, 0, 1, -n[1], -n[2]};
    if (name == "skewX" && count == 1) return {1, 0, tangent(), 1, 0, 0};
    if (name == "skewY" && count == 1) return {1, tangent(), 0, 1, 0, 0};
    throw Refusal{};
}

// ---- Path data -----------------------------------------------------------------------------------------------------

class PathReader {
public:
    explicit PathReader(std::string_view text) : m_scanner(text) {}

    Path Read() {
        char command = '\0';
        while (!m_scanner.IsAtEnd()) {
            if (IsLetter(m_scanner.Peek())) {
                command = m_scanner.Take();
                m_scanner.SkipBlanks();
            } else if (Lower(command) == 'z') {
                throw Refusal{};
            }
            if (m_path.IsEmpty() && Lower(command) != 'm') throw Refusal{};
            m_relative = command >= 'a';
            Segment(Lower(command));
            m_last = Lower(command);
            // More pairs after a move are lines.
            if (command == 'm') command = 'l';
            if (command == 'M') command = 'L';
            if (m_path.Size() > c_mostPoints) throw Refusal{};
        }
        return std::move(m_path);
    }

private:
    Point To() {
        const Point pair = m_scanner.Pair();
        return m_relative ? m_path.Current() + pair : pair;
    }

    // The last control point seen from the other side of the current point, after a curve of the same kind.
    Point Mirrored(std::string_view kinds) const {
        const Point current = m_path.Current();
        return kinds.find(m_last) == std::string_view::npos ? current : current * 2 - m_control;
    }

    void Segment(char command) {
        const Point current = m_path.Current();
        switch (command) {
        case 'm': m_path.Move(To()); break;
        case 'l': m_path.Line(To()); break;
        case 'h': m_path.Line({m_scanner.Number() + (m_relative ? current.x : 0), current.y}); break;
        case 'v': m_path.Line({current.x, m_scanner.Number() + (m_relative ? current.y : 0)}); break;
        case 'z': m_path.Close(); break;
        case 'c':
        case 's': {
            const Point first = command == 'c' ? To() : Mirrored("cs");
            m_control = To();
            m_path.Cubic(first, m_control, To());
            break;
        }
        case 'q':
        case 't':
            m_control = command == 'q' ? To() : Mirrored("qt");
            m_path.Quadratic(m_control, To());
            break;
        case 'a': Arc(); break;
        default: throw Refusal{};
        }
        m_scanner.SkipSeparator();
    }

    void Arc() {
        const Point radii = m_scanner.Pair();
        const double rotation = m_scanner.Number();
        const bool large = m_scanner.Flag(), sweep = m_scanner.Flag();
        m_path.Arc(radii.x, radii.y, rotation, large, sweep, To());
    }

    Scanner m_scanner;
    Path m_path;
    Point m_control;
    char m_last = '\0';
    bool m_relative = false;
};

}  // namespace

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(c_blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(c_blanks) - first + 1);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

// ---- Scanner -------------------------------------------------------------------------------------------------------

char Scanner::Take() {
    const char c = Peek();
    if (!m_rest.empty()) m_rest.remove_prefix(1);
    return c;
}

bool Scanner::TakeIf(char c) {
    if (!m_rest.starts_with(c)) return false;
    m_rest.remove_prefix(1);
    return true;
}

std::string_view Scanner::Word() {
    const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), IsLetter);
    const std::string_view word = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
    m_rest.remove_prefix(word.size());
    return word;
}

std::optional<double> Scanner::TryNumber() {
    const auto at = [this](std::size_t i) { return i < m_rest.size() ? m_rest[i] : '\0'; };
    const bool sign = at(0) == '+' || at(0) == '-';
    std::size_t end = sign ? 1 : 0, digits = 0;
    for (; IsDigit(at(end)); ++end)
        ++digits;
    if (at(end) == '.') {
        for (++end; IsDigit(at(end)); ++end)
            ++digits;
    }
    if (digits == 0) return std::nullopt;
    // "2em" has no exponent.
    if (Lower(at(end)) == 'e') {
        std::size_t exponent = end + 1;
        if (at(exponent) == '+' || at(exponent) == '-') ++exponent;
        if (IsDigit(at(exponent))) {
            for (end = exponent; IsDigit(at(end));)
                ++end;
        }
    }
    double value = 0;
    const char* const text = m_rest.data();
    const auto [stop, error] = std::from_chars(text + (at(0) == '+' ? 1 : 0), text + end, value);
    if (error != std::errc() || stop != text + end || std::abs(value) > c_largestNumber) throw Refusal{};
    m_rest.remove_prefix(end);
    return value;
}

double Scanner::Number() {
    const auto number = TryNumber();
    if (!number) throw Refusal{};
    SkipSeparator();
    return *number;
}

Point Scanner::Pair() {
    const double x = Number();
    return {x, Number()};
}

bool Scanner::Flag() {
    const char digit = Take();
    if (digit != '0' && digit != '1') throw Refusal{};
    SkipSeparator();
    return digit == '1';
}

void Scanner::SkipBlanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(c_blanks), m_rest.size())); }

void Scanner::SkipSeparator() {
    SkipBlanks();
    if (TakeIf(',')) SkipBlanks();
}

// ---- Values --------------------------------------------------------------------------------------------------------

std::optional<double> TryLength(std::string_view text, LengthBase base) {
    Scanner scanner(Trim(text));
    const auto number = scanner.TryNumber();
    if (!number) return std::nullopt;
    const std::string_view unit = scanner.Rest();
    const std::pair<std::string_view, double> units[] = {
        {"", 1},           {"px", 1},  {"pt", 4.0 / 3}, {"pc", 16},          {"mm", 96 / 25.4},
        {"cm", 96 / 2.54}, {"in", 96}, {"em", base.em}, {"ex", base.em / 2}, {"%", base.whole / 100}};
    for (const auto& [name, factor] : units)
        if (unit == name) return *number * factor;
    return std::nullopt;
}

double ParseLength(std::string_view text, LengthBase base) {
    const auto length = TryLength(text, base);
    if (!length) throw Refusal{};
    return *length;
}

std::optional<double> ParsePart(std::string_view text) {
    Scanner scanner(Trim(text));
    const auto number = scanner.TryNumber();
    if (!number) return std::nullopt;
    const bool percent = scanner.TakeIf('%');
    if (!scanner.IsAtEnd()) return std::nullopt;
    return std::clamp(percent ? *number / 100 : *number, 0.0, 1.0);
}

std::optional<Color> ParseColor(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('#')) return ParseHexColor(text.substr(1));
    if (text.size() > 4 && EqualsIgnoringCase(text.substr(0, 4), "rgb(")) return ParseRgbFunction(text.substr(4));
    if (text.size() > 5 && EqualsIgnoringCase(text.substr(0, 5), "rgba(")) return ParseRgbFunction(text.substr(5));
    if (EqualsIgnoringCase(text, "transparent")) return Color{0, 0, 0, 0};
    for (const NamedColor& color : c_colors)
        if (EqualsIgnoringCase(text, color.name)) return FromRgb(color.rgb);
    return std::nullopt;
}

Matrix ParseTransform(std::string_view text) {
    Matrix matrix;
    for (Scanner scanner(text); !scanner.IsAtEnd(); scanner.SkipSeparator()) {
        const std::string_view name = scanner.Word();
        scanner.SkipBlanks();
        if (!scanner.TakeIf('(')) throw Refusal{};
        std::vector<double> numbers;
        for (scanner.SkipBlanks(); !scanner.TakeIf(')');) {
            if (numbers.size() == 6) throw Refusal{};
            numbers.push_back(scanner.Number());
        }
        matrix = matrix * MakeTransform(name, numbers);
    }
    return matrix;
}

Path ParsePathData(std::string_view text) { return PathReader(text).Read(); }

std::vector<double> ParseNumbers(std::string_view text, std::size_t most) {
    std::vector<double> numbers;
    for (Scanner scanner(text); !scanner.IsAtEnd();) {
        if (numbers.size() == most) throw Refusal{};
        numbers.push_back(scanner.Number());
    }
    return numbers;
}

Matrix FitBox(const Box& box, double width, double height, std::string_view preserveAspectRatio) {
    if (!(box.width > 0 && box.height > 0)) throw Refusal{};
    double scaleX = width / box.width, scaleY = height / box.height;
    double alignX = 0.5, alignY = 0.5;
    const std::string_view text = Trim(preserveAspectRatio);
    const std::string_view align = text.substr(0, text.find_first_of(c_blanks));
    if (align == "none") return {scaleX, 0, 0, scaleY, -box.x * scaleX, -box.y * scaleY};
    if (!text.empty()) {
        // xMinYMid and its kind; what is none of them is centred.
        const auto part = [&](std::size_t at) {
            const std::string_view word = align.size() == 8 ? align.substr(at, 3) : std::string_view();
            return word == "Min" ? 0.0 : word == "Max" ? 1.0 : 0.5;
        };
        alignX = part(1), alignY = part(5);
    }
    scaleX = scaleY = text.ends_with("slice") ? std::max(scaleX, scaleY) : std::min(scaleX, scaleY);
    return {scaleX,
            0,
            0,
            scaleY,
            (width - box.width * scaleX) * alignX - box.x * scaleX,
            (height - box.height * scaleY) * alignY - box.y * scaleY};
}

}  // namespace kx::svg
