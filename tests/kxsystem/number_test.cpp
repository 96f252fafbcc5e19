#include <kxsystem/kx_number.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <optional>
#include <string>

namespace {

// Without a number the text is refused, and the value stays as it was.
void ExpectNumber(const wchar_t* text, std::optional<double> expected) {
    double value = 42;
    const std::string shown = text ? testing::PrintToString(std::wstring(text).substr(0, 80)) : "null";
    EXPECT_EQ(KX_StringToDouble(text, value), expected.has_value()) << shown;
    EXPECT_EQ(value, expected.value_or(42)) << shown;
    EXPECT_EQ(std::signbit(value), value < 0) << shown;
}

}  // namespace

TEST(StringToDouble, TakesNumbers) {
    static const struct {
        const wchar_t* text;
        double value;
    } c_cases[] = {
        // clang-format off
        {L"0", 0}, {L"007", 7}, {L"-7", -7}, {L"+7", 7}, {L"9007199254740993", 9007199254740992.0},
        {L"1.5", 1.5}, {L"1,5", 1.5}, {L"1,234", 1.234}, {L".5", .5}, {L",5", .5}, {L"5.", 5}, {L"-5,", -5},
        {L"0.1", .1}, {L"1e2", 100}, {L"1E+2", 100}, {L"1,5e-2", 0.015}, {L"5.e1", 50},
        {L" \t12\t ", 12}, {L"\u00A012\u00A0", 12}, {L"\u202F-12", -12},
        {L"1.7976931348623157e308", 1.7976931348623157e308}, {L"5e-324", 5e-324}, {L"1e-400", 0}, {L"-1e-400", 0},
        {L"0.00001e-330", 0}, {L"1e-99999999999999999999", 0}, {L"0e99999999999999999999", 0}, {L"-0", 0},
        // clang-format on
    };
    for (const auto& c : c_cases)
        ExpectNumber(c.text, c.value);
}

TEST(StringToDouble, RefusesTheRest) {
    static const wchar_t* const c_cases[] = {
        // clang-format off
        nullptr, L"", L" ", L"\u00A0", L".", L",", L"-", L"+", L"-.", L"--1", L"+-1", L"- 1", L"1\u2212",
        L"1,234.5", L"1.234,5", L"1.2.3", L"1,2,3", L"1..2", L"1 234", L"1\u00A0234", L"1'234", L"1\n", L"1\uFEFF",
        L"e5", L"1e", L"1e+", L"1e1.5", L"1e 5", L"1e5e5", L"1e309", L"-1e309", L"1e9999999999999999999",
        L"12 um", L"12um", L"0x10", L"1p3", L"1f", L"1d", L"inf", L"-inf", L"INFINITY", L"nan",
        L"\u0661", L"\uFF11", L"\u0131",
        // clang-format on
    };
    for (const wchar_t* const text : c_cases)
        ExpectNumber(text, std::nullopt);
}

// The exponent makes up for the digits: what is too large or too small is told by the whole, not by a part.
TEST(StringToDouble, LongNumbers) {
    const auto zeros = [](std::size_t count) { return std::wstring(count, L'0'); };
    ExpectNumber((L"0." + zeros(900) + L"1e901").c_str(), 1);
    ExpectNumber((L"1" + zeros(900) + L"e-1300").c_str(), 0);
    ExpectNumber((zeros(999) + L"5").c_str(), 5);
    ExpectNumber((zeros(1000) + L"5").c_str(), std::nullopt);
}

// Hosts set the locale of their users.
TEST(FormatNumber, WritesAndReadsAsInTheCLocale) {
    for (const char* locale : {"C", "German"}) {
        ASSERT_TRUE(std::setlocale(LC_ALL, locale)) << locale;
        wchar_t local[8] = L"";
        std::swprintf(local, 8, L"%.1f", 0.5);
        EXPECT_EQ(local[1], *locale == 'C' ? L'.' : L',') << "the C runtime's own";
        EXPECT_EQ(KX_FormatNumber(L"<%0.2f, %+g>, %d", 0.5, 1.25, 3), L"<0.50, +1.25>, 3") << locale;
        EXPECT_TRUE(KX_FormatNumber(nullptr).IsEmpty());
        const struct {
            const wchar_t* text;
            double value;
            std::size_t length;
        } rows[] = {{L" 2.5x", 2.5, 4}, {L"2,5x", 2, 1}, {L"x", 0, 0}, {L"1.5.2", 1.5, 3}, {nullptr, 0, 0}};
        for (const auto& row : rows) {
            std::size_t length = 42;
            EXPECT_EQ(KX_LeadingNumber(row.text, &length), row.value) << locale;
            EXPECT_EQ(length, row.length) << locale;
        }
    }
    std::setlocale(LC_ALL, "C");
}
