#include <bench/bench.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_string.h>

#include <clocale>
#include <cmath>
#include <tuple>

TEST(StringToDouble, TakesNumbersAndRefusesTheRest) {
    const auto zeros = [](std::size_t count) { return std::wstring(count, L'0'); };
    const std::pair<std::wstring, double> taken[] = {
        // clang-format off
        {L"007", 7}, {L"+7", 7}, {L"9007199254740993", 9007199254740992.0}, {L"1,234", 1.234}, {L".5", .5}, {L",5", .5},
        {L"5.", 5}, {L"-5,", -5}, {L"1E+2", 100}, {L"1,5e-2", 0.015}, {L"5.e1", 50}, {L" \t12\t ", 12},
        {L"\u00A012\u00A0", 12}, {L"\u202F-12", -12}, {L"\uFF0D\uFF10\uFF19\uFF0E5", -9.5}, {L"\uFF0B1e\uFF12", 100},
        {L"1.7976931348623157e308", 1.7976931348623157e308}, {L"5e-324", 5e-324}, {L"1e-400", 0}, {L"-1e-400", 0},
        {L"0.00001e-330", 0}, {L"1e-99999999999999999999", 0}, {L"0e99999999999999999999", 0}, {L"-0", 0},
        // The exponent makes up for the digits: what is too large or too small is told by the whole, not by a part.
        {L"0." + zeros(900) + L"1e901", 1}, {L"1" + zeros(900) + L"e-1300", 0}, {zeros(999) + L"5", 5},
        // clang-format on
    };
    const std::wstring refused[] = {
        // clang-format off
        L"", L" ", L"\u00A0", L".", L"-", L"-.", L"--1", L"+-1", L"- 1", L"1\u2212", L"1,234.5", L"1.2.3", L"1..2",
        L"1 234", L"1\u00A0234", L"1'234", L"1\n", L"1\uFEFF", L"e5", L"1e", L"1e+", L"1e1.5", L"1e 5", L"1e309",
        L"-1e309", L"1e9999999999999999999", L"12um", L"0x10", L"1p3", L"1f", L"1d", L"inf", L"nan",
        L"\u0661", L"1\uFF0C5", L"\uFF1A", L"\u0131", zeros(1000) + L"5",
        // clang-format on
    };
    for (const auto& [text, expected] : taken) {
        double value = 42;
        EXPECT_TRUE(KX_StringToDouble(text.c_str(), value) && value == expected) << text.substr(0, 80) << value;
        EXPECT_EQ(std::signbit(value), value < 0) << text;
    }
    double value = 42;
    for (const std::wstring& text : refused)
        EXPECT_FALSE(KX_StringToDouble(text.c_str(), value) || value != 42) << text.substr(0, 80);
    EXPECT_FALSE(KX_StringToDouble(nullptr, value) || value != 42);
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
        const std::tuple<const wchar_t*, double, std::size_t> rows[] = {
            {L" 2.5x", 2.5, 4},          {L"2,5x", 2, 1}, {L"x", 0, 0}, {L"1.5.2", 1.5, 3},
            {L"\uFF12\uFF0E5x", 2.5, 3}, {nullptr, 0, 0}};
        for (const auto& [text, value, length] : rows) {
            std::size_t taken = 42;
            EXPECT_EQ(KX_LeadingNumber(text, &taken), value) << locale;
            EXPECT_EQ(taken, length) << locale;
        }
    }
    std::setlocale(LC_ALL, "C");
}

TEST(DigitOf, KnowsAllScripts) {
    const std::pair<wchar_t, int> rows[] = {{L'0', 0},    {L'9', 9},    {L'/', -1},  {L':', -1},   {0x0661, 1},
                                            {0x096A, 4},  {0xABF9, 9},  {0xFF10, 0}, {0xFF19, 9},  {0xFF1A, -1},
                                            {0x00B2, -1}, {0x2460, -1}, {0x0031, 1}, {0x4E94, -1}, {0, -1}};
    for (const auto& [character, digit] : rows)
        EXPECT_EQ(KX_DigitOf(character), digit) << int{character};
}

TEST(CKxString, NullCountsAsEmpty) {
    const wchar_t* const null = nullptr;
    CKxStringW text(null);
    EXPECT_TRUE(text.IsEmpty() && text == null && !(CKxStringW(L"a") == null));
    text += null, text += L"b";
    EXPECT_STREQ(text, L"b");
    text.Format(10, null);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CKxString, FormatCuts) {
    for (const std::size_t length : std::initializer_list<std::size_t>{0, 1, 6, 7, 8, std::string::npos}) {
        const std::wstring expected = std::wstring(L"<12;ab>").substr(0, length);
        CKxStringW wide(L"what was there before, and is longer");
        wide.Format(length, L"<%d;%ls>", 12, L"ab");
        EXPECT_EQ(wide.str(), expected);
        CKxStringA narrow("what was there before, and is longer");
        narrow.Format(length, "<%d;%s>", 12, "ab");
        EXPECT_EQ(std::wstring(narrow.str().begin(), narrow.str().end()), expected);
    }
    // Itself into itself.
    CKxStringW text(L"a text that is longer than what fits into the object itself");
    const std::wstring before = text.str();
    text.Format(200, L"[%ls]", text.c_str());
    EXPECT_EQ(text.str(), L"[" + before + L"]");
}
