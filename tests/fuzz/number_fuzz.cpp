// KX_StringToDouble against a second opinion: the grammar as a regular expression, the value from strtod.
#include "fuzz.h"

#include <kxsystem/kx_number.h>

#include <algorithm>
#include <optional>
#include <regex>

namespace {

// std::regex recurses for each character.
constexpr std::size_t c_longest = 1200;

std::optional<double> Reference(std::wstring text) {
    std::replace(text.begin(), text.end(), L'\uFF15', L'5');
    static const std::wregex c_grammar(L"[ \t\u00A0\u202F]*([+-]?([0-9]+[.,]?[0-9]*|[.,][0-9]+)([eE][+-]?[0-9]+)?)"
                                       L"[ \t\u00A0\u202F]*");
    std::wsmatch match;
    if (!std::regex_match(text, match, c_grammar) || match[1].length() > 1000) return std::nullopt;
    std::string plain;
    for (const wchar_t c : match[1].str())
        plain += c == L',' ? '.' : static_cast<char>(c);
    // The program never calls setlocale, so strtod reads as in the C locale.
    const double value = std::strtod(plain.c_str(), nullptr);
    return std::isinf(value) ? std::nullopt : std::optional(value);
}

}  // namespace

void Fuzz(std::string_view bytes) {
    std::wstring text;
    for (const char each : bytes.substr(0, std::min(bytes.find('\0'), c_longest))) {
        // A character, but for the blank beyond Latin-1, a digit that is none of ours and one that is.
        const auto byte = static_cast<unsigned char>(each);
        text += byte == 0x80   ? L'\u202F'
                : byte == 0x81 ? L'\u0661'
                : byte == 0x82 ? L'\uFF15'
                               : static_cast<wchar_t>(byte);
    }
    const std::optional<double> expected = Reference(text);
    constexpr double c_untouched = 12345.678;
    double value = c_untouched;
    const bool taken = KX_StringToDouble(text.c_str(), value);
    Require(taken == expected.has_value() && value == expected.value_or(c_untouched));
    Require(value != 0 || !std::signbit(value));
}
