#include <kxdevui/controls/editbox_rules.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>
#include <numeric>

#include <kxdevui/framework/field_rules.h>
#include <kxsystem/kx_number.h>

namespace kx::ui {

namespace {

// More would only cost time: the text is cut long before.
constexpr std::size_t kMostDigits = 4;

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsOneOf(wchar_t c, std::wstring_view set) { return set.find(c) != std::wstring_view::npos; }

// One conversion, from behind its per cent sign.
struct Conversion {
    bool literal = false;  // "%%"
    int precision = -1;    // as written; -1 when it is not
    wchar_t type = 0;      // 0: none that prints a double
};

// Takes digits from the front; empty when there are more than are taken.
std::optional<int> TakeDigits(std::wstring_view& rest) {
    int value = 0;
    std::size_t count = 0;
    for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1)) {
        if (++count > kMostDigits) return std::nullopt;
        value = value * 10 + (rest.front() - L'0');
    }
    return value;
}

Conversion TakeConversion(std::wstring_view& rest) {
    const auto take = [&rest](std::wstring_view set) {
        if (rest.empty() || !IsOneOf(rest.front(), set)) return false;
        rest.remove_prefix(1);
        return true;
    };
    Conversion conversion;
    if (take(L"%")) {
        conversion.literal = true;
        return conversion;
    }
    while (take(L"-+ #0")) {
    }
    if (!TakeDigits(rest)) return {};
    if (take(L".")) {
        const auto precision = TakeDigits(rest);
        if (!precision) return {};
        conversion.precision = *precision;
    }
    take(L"l");
    if (!rest.empty() && IsOneOf(rest.front(), L"aAeEfFgG")) {
        conversion.type = rest.front();
        rest.remove_prefix(1);
    }
    return conversion;
}

// Calls `each` for every conversion of a double; false when the format holds anything else.
template <class Each>
bool ForEachDouble(std::wstring_view format, const Each& each) {
    for (;;) {
        const auto sign = format.find(L'%');
        if (sign == std::wstring_view::npos) return true;
        format.remove_prefix(sign + 1);
        const Conversion conversion = TakeConversion(format);
        if (conversion.literal) continue;
        if (!conversion.type) return false;
        each(conversion);
    }
}

// The largest 1, 2 or 5 times a power of ten that is no larger than `limit`, which is positive and finite.
double RoundStep(double limit) {
    const double power = std::pow(10.0, std::floor(std::log10(limit)));
    if (!(power > 0)) return limit;  // too small for a power of ten
    // The logarithm of a power of ten may come out a hair too small or too large.
    const double room = limit * (1 + 1e-9);
    for (const double factor : {10.0, 5.0, 2.0, 1.0}) {
        if (power * factor <= room) return power * factor;
    }
    return power / 2;
}

}  // namespace

int CountDoubles(const wchar_t* format) noexcept {
    int count = 0;
    return format && ForEachDouble(format, [&count](const Conversion&) { ++count; }) ? count : -1;
}

bool IsNumberFormat(const wchar_t* format) noexcept { return CountDoubles(format) == 1; }

std::optional<int> DecimalsOf(const wchar_t* format) noexcept {
    if (!IsNumberFormat(format)) return std::nullopt;
    std::optional<int> decimals;
    ForEachDouble(format, [&decimals](const Conversion& conversion) {
        constexpr int unwritten = 6;
        if (conversion.type == L'f' || conversion.type == L'F') {
            decimals = conversion.precision < 0 ? unwritten : conversion.precision;
        }
    });
    return decimals;
}

NumberText FormatNumber(double value, const wchar_t* format) noexcept {
    NumberText text{};
    if (!IsNumberFormat(format)) return text;
    KX_FormatNumber(format, value).str().copy(text.data(), text.size() - 1);
    return text;
}

double ReadNumber(std::wstring_view text) noexcept {
    std::array<wchar_t, kNumberCharacters + 1> cut{};
    text.substr(0, kNumberCharacters).copy(cut.data(), kNumberCharacters);
    const double value = KX_LeadingNumber(cut.data());
    return std::isnan(value) ? 0.0 : value;
}

bool IsReadAs(std::wstring_view text, double read) noexcept {
    double value = read;
    KX_StringToDouble(std::wstring(text).c_str(), value);
    return std::abs(value - read) <= std::abs(value) * 1e-12;
}

bool IsSeparator(wchar_t character) noexcept {
    const wchar_t text[] = {character, L'\0'};
    return character != L'\0' && !IsOneOf(KX_HalfWidth(text).str().front(), kNumberParts);
}

ValueList SplitValues(std::wstring_view text, wchar_t separator) {
    ValueList list;
    while (!text.empty()) {
        const auto end = std::min(text.find(separator), text.size());
        const std::wstring piece(Trimmed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (piece.empty()) continue;
        // Of what the C runtime takes beside digits (nan, inf, hexadecimal), nothing is meant by a user.
        std::size_t taken = 0;
        const double value = KX_LeadingNumber(piece.c_str(), &taken);
        if (KX_HalfWidth(piece.c_str()).str().find_first_not_of(kNumberParts) != std::wstring::npos ||
            taken != piece.size()) {
            return {{}, piece};
        }
        list.values.push_back(value);
    }
    return list;
}

Bound ViolatedBound(double value, double minimum, double maximum) noexcept {
    if (value > maximum) return Bound::Maximum;
    return value >= minimum ? Bound::None : Bound::Minimum;
}

double SpinStep(double minimum, double maximum, const wchar_t* format) noexcept {
    const double range = maximum - minimum;
    const bool usable = range / 100 > 0 && std::isfinite(range);
    const auto decimals = DecimalsOf(format);
    if (!decimals) return usable ? RoundStep(range / 100) : 1.0;
    if (*decimals == 0) return 1.0;
    // Beyond this, a double has no more decimals.
    const double last = std::pow(10.0, -std::min(*decimals, std::numeric_limits<double>::max_exponent10));
    return usable && range > last * 10000 ? RoundStep(range / 1000) : last;
}

double SpinTo(double value, int steps, double step, double minimum, double maximum) noexcept {
    if (std::isnan(value)) value = std::isfinite(minimum) ? minimum : 0.0;
    double moved = value + steps * step;
    if (steps != 0 && moved == value) moved = std::nextafter(value, steps > 0 ? maximum : minimum);
    if (std::isnan(moved)) moved = value;  // a step that is no number itself
    return std::clamp(moved, minimum, maximum);
}

double SpinValue(int position, double first, double last, int lowest, int highest) noexcept {
    if (position <= lowest || highest <= lowest) return first;
    if (position >= highest) return last;
    return std::lerp(first, last, (static_cast<double>(position) - lowest) / (static_cast<double>(highest) - lowest));
}

int SpinPosition(double value, double first, double last, int lowest, int highest) noexcept {
    // Halves, because the range may be wider than the largest double.
    const double part = (value / 2 - first / 2) / (last / 2 - first / 2);
    if (std::isnan(part) || highest <= lowest) return lowest;
    const double offset = std::clamp(part, 0.0, 1.0) * (static_cast<double>(highest) - lowest);
    return static_cast<int>(std::round(lowest + offset));
}

}  // namespace kx::ui
