#include <kxsystem/kx_number.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

TEST(StringToDouble, TakesNumbers) {
    static const struct {
        const wchar_t* text;
        double value;
    } c_cases[] = {
        {L"0", 0},
        {L"7", 7},
        {L"007", 7},
        {L"-7", -7},
        {L"+7", 7},
        {L"1.5", 1.5},
        {L"1,5", 1.5},
        {L"1,234", 1.234},
        {L".5", 0.5},
        {L",5", 0.5},
        {L"5.", 5},
        {L"-5,", -5},
        {L"1e2", 100},
        {L"1E+2", 100},
        {L"1,5e-2", 0.015},
        {L"5.e1", 50},
        {L" \t12\t ", 12},
        {L"\u00A012\u00A0", 12},
        {L"\u202F-12", -12},
        {L"1.7976931348623157e308", 1.7976931348623157e308},
        {L"5e-324", 5e-324},
        {L"0.1", 0.1},
        {L"9007199254740993", 9007199254740992.0},
        {L"1e-400", 0},
        {L"-1e-400", 0},
        {L"0.00001e-330", 0},
        {L"1e-99999999999999999999", 0},
        {L"0e99999999999999999999", 0},
        {L"-0", 0},
    };
    for (const auto& c : c_cases) {
        double value = 42;
        EXPECT_TRUE(KX_StringToDouble(c.text, value)) << testing::PrintToString(c.text);
        EXPECT_EQ(value, c.value) << testing::PrintToString(c.text);
        EXPECT_EQ(std::signbit(value), c.value < 0) << testing::PrintToString(c.text);
    }
}

TEST(StringToDouble, RefusesTheRestAndLeavesTheValue) {
    static const wchar_t* const c_cases[] = {
        nullptr,
        L"",
        L" ",
        L"\u00A0",
        L".",
        L",",
        L"-",
        L"+",
        L"-.",
        L"1,234.5",
        L"1.234,5",
        L"1.2.3",
        L"1,2,3",
        L"1..2",
        L"1 234",
        L"1\u00A0234",
        L"1'234",
        L"--1",
        L"+-1",
        L"- 1",
        L"e5",
        L"1e",
        L"1e+",
        L"1e1.5",
        L"1e 5",
        L"1e5e5",
        L"12 um",
        L"12um",
        L"0x10",
        L"1p3",
        L"inf",
        L"INFINITY",
        L"nan",
        L"-inf",
        L"1e309",
        L"-1e309",
        L"1\n",
        L"1\u2212",
        L"\u0661",
        L"\uFF11",
        L"1f",
        L"1d",
        L"1\uFEFF",
        L"1e9999999999999999999",
        L"\u0131",
        L"\u0131"
        L"1",
    };
    for (const wchar_t* const text : c_cases) {
        double value = 42;
        EXPECT_FALSE(KX_StringToDouble(text, value)) << (text ? testing::PrintToString(text) : "null");
        EXPECT_EQ(value, 42) << (text ? testing::PrintToString(text) : "null");
    }
}

// The exponent makes up for the digits: what is too large or too small is told by the whole, not by a part.
TEST(StringToDouble, LongNumbers) {
    const auto zeros = [](std::size_t count) { return std::wstring(count, L'0'); };
    const struct {
        std::wstring text;
        bool taken;
        double value;
    } cases[] = {
        {L"0." + zeros(900) + L"1e901", true, 1},
        {L"1" + zeros(900) + L"e-900", true, 1},
        {L"1" + zeros(400), false, 42},
        {L"0." + zeros(400) + L"1", true, 0},
        {L"1" + zeros(900) + L"e-1300", true, 0},
        {L"0." + zeros(500) + L"1e900", false, 42},
        {zeros(999) + L"5", true, 5},
        {zeros(1000) + L"5", false, 42},
        {std::wstring(2000, L' ') + L"5", true, 5},
        {L"1e-" + zeros(900) + L"1", true, .1},
        {L"0.1" + std::wstring(900, L'9'), true, .2},
        {std::wstring(100000, L'9'), false, 42},
    };
    for (const auto& c : cases) {
        double value = 42;
        EXPECT_EQ(KX_StringToDouble(c.text.c_str(), value), c.taken) << c.text.size();
        EXPECT_EQ(value, c.value) << c.text.size();
    }
}
