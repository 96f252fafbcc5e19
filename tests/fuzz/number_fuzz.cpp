// KX_StringToDouble against a second opinion: the grammar as a regular expression, the value from strtod.
#include <kxsystem/kx_number.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <regex>
#include <string>

namespace {

// std::regex recurses for each character.
constexpr std::size_t c_longest = 1200;

std::optional<double> Reference(const std::wstring& text) {
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

// A byte is a character, but for two that stand for the blanks beyond Latin-1 and a digit that is none of ours.
wchar_t Character(std::uint8_t byte) {
    switch (byte) {
    case 0x80: return L'\u202F';
    case 0x81: return L'\u0661';
    default: return static_cast<wchar_t>(byte);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::wstring text;
    for (std::size_t i = 0; i < size && i < c_longest && data[i]; ++i)
        text += Character(data[i]);
    const std::optional<double> expected = Reference(text);
    constexpr double c_untouched = 12345.678;
    double value = c_untouched;
    const bool taken = KX_StringToDouble(text.c_str(), value);
    if (taken != expected.has_value() || value != expected.value_or(c_untouched) || (value == 0 && std::signbit(value)))
        std::abort();
    return 0;
}
