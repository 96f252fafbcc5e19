// The edit boxes' rules against the grammars as regular expressions, the narrow C functions and arithmetic.
#include "fuzz.h"

#include <kxdevui/controls/editbox_rules.h>

#include <array>
#include <cstdio>
#include <regex>

using namespace kx::ui;

namespace {

std::wstring Widened(const std::string& text) { return {text.begin(), text.end()}; }

void CheckFormat(const std::string& format) {
    static const std::regex whole("([^%]|%%|%[-+ #0]*[0-9]{0,4}(\\.[0-9]{0,4})?l?[aAeEfFgG])*");
    const std::wstring wide = Widened(format);
    const int doubles = CountDoubles(wide.c_str());
    Require((doubles >= 0) == std::regex_match(format, whole));
    Require(IsNumberFormat(wide.c_str()) == (doubles == 1) && (doubles == 1 || !DecimalsOf(wide.c_str())));

    for (const double value : {0.0, -1.5, 123456.789, 1e308, 5e-324}) {
        std::string expected(20100, '\0');
        if (doubles == 1) std::snprintf(expected.data(), expected.size(), format.c_str(), value);
        expected.resize(std::min<std::size_t>(std::strlen(expected.c_str()), 255));
        Require(std::wstring(FormatNumber(value, wide.c_str()).data()) == Widened(expected));
    }
}

void CheckList(const std::string& text, char separator) {
    static const std::regex number("[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?");
    if (!IsSeparator(static_cast<wchar_t>(separator))) return;
    std::vector<double> values;
    std::string wrong;
    for (std::size_t at = 0; at <= text.size() && wrong.empty();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        std::string piece = text.substr(at, end - at);
        while (!piece.empty() && std::strchr(" \t\r\n", piece.front()))
            piece.erase(0, 1);
        while (!piece.empty() && std::strchr(" \t\r\n", piece.back()))
            piece.pop_back();
        if (std::regex_match(piece, number)) {
            values.push_back(std::strtod(piece.c_str(), nullptr));
        } else {
            wrong = piece;
        }
        at = end + 1;
    }
    const ValueList list = SplitValues(Widened(text), static_cast<wchar_t>(separator));
    Require(list.wrong == Widened(wrong));
    Require(list.values == (wrong.empty() ? values : std::vector<double>()));
    const std::string cut = text.substr(0, 100);
    const double first = std::strtod(cut.c_str(), nullptr);
    Require(ReadNumber(Widened(text)) == (std::isnan(first) ? 0 : first));
}

void CheckSpin(const std::array<double, 4>& numbers, int steps) {
    if (std::isnan(numbers[0]) || std::isnan(numbers[1])) return;
    const double low = std::min(numbers[0], numbers[1]), high = std::max(numbers[0], numbers[1]), range = high - low;
    for (const wchar_t* format : {L"%g", L"%.0f", L"%.3f"}) {
        const double step = SpinStep(low, high, format);
        Require(step > 0 && std::isfinite(step));
        if (format[1] == L'g' && std::isfinite(range) && range > 1e-290) {
            Require(step * 100 <= range * 1.00001 && step * 250 >= range * 0.99999);
            const double digit = step / std::pow(10, std::floor(std::log10(step) + 1e-6));
            Require(std::abs(digit - 1) < 1e-6 || std::abs(digit - 2) < 1e-6 || std::abs(digit - 5) < 1e-6);
        }
        const double value = SpinTo(numbers[2], steps, step, low, high);
        Require(value >= low && value <= high && ViolatedBound(value, low, high) == Bound::None);
        if (numbers[2] >= low && numbers[2] <= high && steps != 0) {
            Require(steps > 0 ? value > numbers[2] || value == high : value < numbers[2] || value == low);
        }
        const int position = SpinPosition(numbers[2], low, high, 0, 1000);
        if (!std::isfinite(low) || !std::isfinite(high)) continue;
        Require(position >= 0 && position <= 1000);
        const double back = SpinValue(position, low, high, 0, 1000);
        Require(back >= low && back <= high);
        const bool fine = range > 1e-9 * std::max(std::abs(low), std::abs(high)) && range > 1e-290;
        Require(!fine || SpinPosition(back, low, high, 0, 1000) == position);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    std::string text;
    // ASCII alone: beyond it, narrow and wide functions differ.
    for (std::size_t i = 2; i < size && data[i]; ++i)
        text += static_cast<char>(data[i] & 0x7F ? data[i] & 0x7F : ';');
    switch (data[0] % 3) {
    case 0: CheckFormat(text); break;
    case 1: CheckList(text, static_cast<char>(data[1] & 0x7F)); break;
    default: {
        std::array<double, 4> numbers{};
        std::memcpy(numbers.data(), data + 2, std::min(size - 2, sizeof numbers));
        CheckSpin(numbers, static_cast<std::int8_t>(data[1]));
    }
    }
    return 0;
}
