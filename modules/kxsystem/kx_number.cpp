#include <kxsystem/kx_number.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdarg>
#include <cwchar>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace {

// Far longer than any number that is meant, and short enough that the exponent can make up for all of its digits.
constexpr std::size_t c_maxLength = 1000;

// Beyond this, an exponent only says "too large" or "too small".
constexpr int c_maxExponent = 100000;

constexpr std::wstring_view c_blanks = L" \t\u00A0\u202F";

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

std::wstring_view Trim(std::wstring_view text) {
    const auto first = text.find_first_not_of(c_blanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(c_blanks) - first + 1);
}

// The number as std::from_chars wants it, and what is needed to tell a huge one from a tiny one.
class Number {
public:
    bool Read(std::wstring_view text) {
        TakeSign(text);
        if (!TakeDigits(text)) return false;
        return text.empty() || TakeExponent(text);
    }

    bool Value(double& value) const {
        double result = 0;
        const auto [end, error] = std::from_chars(m_plain.data(), m_plain.data() + m_length, result);
        if (error == std::errc::result_out_of_range) {
            if (m_point + m_exponent > 0) return false;
            result = 0;
        } else if (error != std::errc{} || end != m_plain.data() + m_length) {
            return false;
        }
        // Adding zero turns the negative zero, which would be shown as "-0", into the usual one.
        value = result + 0.0;
        return true;
    }

private:
    void Add(wchar_t c) { m_plain[m_length++] = static_cast<char>(c); }

    static bool Skip(std::wstring_view& text, std::wstring_view any) {
        if (text.empty() || any.find(text.front()) == std::wstring_view::npos) return false;
        text.remove_prefix(1);
        return true;
    }

    // from_chars knows no plus.
    void TakeSign(std::wstring_view& text) {
        if (text.starts_with(L'-')) Add(L'-');
        Skip(text, L"+-");
    }

    bool TakeDigits(std::wstring_view& text) {
        bool any = false, significant = false, fraction = false;
        for (; !text.empty(); text.remove_prefix(1)) {
            const wchar_t c = text.front();
            if (!fraction && (c == L'.' || c == L',')) {
                fraction = true;
                Add(L'.');
                continue;
            }
            if (!IsDigit(c)) break;
            any = true;
            significant = significant || c != L'0';
            if (significant && !fraction)
                ++m_point;
            else if (!significant && fraction)
                --m_point;
            Add(c);
        }
        return any;
    }

    bool TakeExponent(std::wstring_view text) {
        if (!Skip(text, L"eE")) return false;
        const bool negative = text.starts_with(L'-');
        Skip(text, L"+-");
        if (text.empty() || !std::all_of(text.begin(), text.end(), IsDigit)) return false;
        for (const wchar_t c : text)
            m_exponent = std::min(m_exponent * 10 + (c - L'0'), c_maxExponent);
        if (negative) m_exponent = -m_exponent;
        Add(L'e');
        char* const room = m_plain.data() + m_length;
        m_length = static_cast<std::size_t>(std::to_chars(room, m_plain.data() + m_plain.size(), m_exponent).ptr -
                                            m_plain.data());
        return true;
    }

    std::array<char, c_maxLength + 16> m_plain{};
    std::size_t m_length = 0;
    int m_exponent = 0;
    // Where the decimal point stands behind the first digit that is not 0: 3 for 123, 0 for 0.5, -1 for 0.05.
    int m_point = 0;
};

// What stands between a number and its decimals in the program's locale. The C runtime can be asked for it in other
// ways, but this one is sure to be what it writes.
wchar_t LocalPoint() {
    std::array<wchar_t, 16> text{};
    std::swprintf(text.data(), text.size(), L"%.1f", 0.5);
    return text[1];
}

}  // namespace

bool KX_StringToDouble(const wchar_t* text, double& value) {
    const CKxStringW plain = KX_HalfWidth(text);
    const std::wstring_view trimmed = Trim(plain.str());
    Number number;
    return trimmed.size() <= c_maxLength && number.Read(trimmed) && number.Value(value);
}

CKxStringW KX_FormatNumber(const wchar_t* format, ...) {
    const wchar_t point = LocalPoint();
    // Stands for the format's own commas while those of the numbers are exchanged; no character of any text.
    constexpr wchar_t c_kept = 0xFFFE;
    std::wstring plain(format ? format : L"");
    if (point != L'.') std::replace(plain.begin(), plain.end(), point, c_kept);
    CKxStringW text;
    va_list arguments;
    va_start(arguments, format);
    text.FormatV(c_maxLength, plain.c_str(), arguments);
    va_end(arguments);
    if (point == L'.') return text;
    std::replace(text.str().begin(), text.str().end(), point, L'.');
    std::replace(text.str().begin(), text.str().end(), c_kept, point);
    return text;
}

double KX_LeadingNumber(const wchar_t* text, std::size_t* length) {
    std::wstring local = KX_HalfWidth(text).str();
    if (const wchar_t point = LocalPoint(); point != L'.') {
        local.resize(std::min(local.size(), local.find(point)));
        std::replace(local.begin(), local.end(), L'.', point);
    }
    wchar_t* end = nullptr;
    const double value = std::wcstod(local.c_str(), &end);
    if (length) *length = static_cast<std::size_t>(end - local.c_str());
    return value;
}

int KX_DigitOf(wchar_t character) noexcept {
    // Where the ten digits of each script begin that Unicode has within its first 65,536 characters.
    static constexpr wchar_t c_zeros[] = {
        0x0030, 0x0660, 0x06F0, 0x07C0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0BE6, 0x0C66, 0x0CE6, 0x0D66,
        0x0DE6, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x1090, 0x17E0, 0x1810, 0x1946, 0x19D0, 0x1A80, 0x1A90, 0x1B50,
        0x1BB0, 0x1C40, 0x1C50, 0xA620, 0xA8D0, 0xA900, 0xA9D0, 0xA9F0, 0xAA50, 0xABF0, 0xFF10};
    const auto beyond = std::upper_bound(std::begin(c_zeros), std::end(c_zeros), character);
    if (beyond == std::begin(c_zeros)) return -1;
    const int digit = character - *std::prev(beyond);
    return digit < 10 ? digit : -1;
}

CKxStringW KX_HalfWidth(const wchar_t* text) {
    CKxStringW plain(text);
    for (wchar_t& each : plain.str()) {
        constexpr wchar_t c_zero = 0xFF10;
        const bool isDigit = each >= c_zero && KX_DigitOf(each) >= 0;
        // The full-width forms stand in the order of the usual ones.
        if (isDigit || each == 0xFF0E || each == 0xFF0D || each == 0xFF0B)
            each = static_cast<wchar_t>(each - c_zero + L'0');
    }
    return plain;
}
