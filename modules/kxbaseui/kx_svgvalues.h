// What stands in the attributes of SVG: numbers, lengths, colours, transforms, path data.
#pragma once

#include <kxbaseui/kx_path.h>
#include <kxbaseui/kx_raster.h>

#include <optional>
#include <string_view>
#include <vector>

namespace kx::svg {

// Thrown by what reads geometry when a value is malformed or beyond a limit: half a drawing would be worse than none.
struct Refusal {};

// Numbers beyond this, and paths of more points, are refused.
constexpr double c_largestNumber = 1e7;
constexpr std::size_t c_mostPoints = 20'000;

std::string_view Trim(std::string_view text);
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

// Takes numbers and signs off the front of a text; blanks before them, and a comma between them, go with them.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_rest(text) { SkipBlanks(); }

    bool IsAtEnd() const { return m_rest.empty(); }
    // 0 at the end.
    char Peek() const { return m_rest.empty() ? '\0' : m_rest.front(); }
    char Take();
    bool TakeIf(char c);
    // A word of ASCII letters, possibly empty.
    std::string_view Word();
    // Nothing, and nothing taken, if no number stands there.
    std::optional<double> TryNumber();
    double Number();
    Point Pair();
    // The single digit 0 or 1, which needs no separator after it.
    bool Flag();
    void SkipSeparator();
    void SkipBlanks();
    std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

// What a length is relative to: 100 % and 1 em, in user units.
struct LengthBase {
    double whole = 0;
    double em = 16;
};

// A length in user units (px, pt, pc, mm, cm, in, em, ex, %); nothing if it is none. ParseLength refuses instead.
std::optional<double> TryLength(std::string_view text, LengthBase base);
double ParseLength(std::string_view text, LengthBase base);
// A number or a percentage between 0 and 1; nothing if it is neither.
std::optional<double> ParsePart(std::string_view text);

// #rgb, #rgba, #rrggbb, #rrggbbaa, rgb() and rgba() with numbers or percentages, the named colours, transparent.
// Nothing for anything else.
std::optional<Color> ParseColor(std::string_view text);

Matrix ParseTransform(std::string_view text);
Path ParsePathData(std::string_view text);
std::vector<double> ParseNumbers(std::string_view text, std::size_t most);

// The transform that fits `box` (x, y, width, height) into a viewport by the rules of preserveAspectRatio.
struct Box {
    double x = 0, y = 0, width = 0, height = 0;
};
Matrix FitBox(const Box& box, double width, double height, std::string_view preserveAspectRatio);

}  // namespace kx::svg
