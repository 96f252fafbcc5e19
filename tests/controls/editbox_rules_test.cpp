#include "control_test.h"

#include <kxdevui/controls/editbox_rules.h>

namespace {

using namespace kx::ui;
using kx::test::kInf, kx::test::kNaN;

TEST(EditBoxRules, TakeFormatsOfOneDouble) {
    // clang-format off
    const struct { const wchar_t* format; int doubles, decimals; const wchar_t* shown; } rows[] = {
        {L"%g", 1, -1, L"1.5"},            {L"%.2f", 1, 2, L"1.50"},           {L"%f", 1, 6, L"1.500000"},
        {L"%lf ms", 1, 6, L"1.500000 ms"}, {L"%+08.3f%%", 1, 3, L"+001.500%"}, {L"100%% %.0f", 1, 0, L"100% 2"},
        {L"%#.f", 1, 0, L"2."},            {L"%%", 0, -1, nullptr},            {L"%g;%g", 2, -1, nullptr},
    };
    // clang-format on
    for (const auto& row : rows) {
        const std::string name = kx::test::Narrow(row.format);
        EXPECT_EQ(CountDoubles(row.format), row.doubles) << name;
        EXPECT_EQ(DecimalsOf(row.format).value_or(-1), row.decimals) << name;
        EXPECT_STREQ(FormatNumber(1.5, row.format).data(), row.shown ? row.shown : L"") << name;
    }
    for (const wchar_t* refused :
         std::initializer_list<const wchar_t*>{nullptr, L"%", L"%d", L"%ls %g", L"%n%g", L"%*g", L"%.*f", L"%Lf",
                                               L"%1$f", L"%10000f", L"%.10000f", L"%5%", L"%I64f", L"%g %"}) {
        EXPECT_EQ(CountDoubles(refused), -1) << kx::test::Narrow(refused ? refused : L"null");
        EXPECT_FALSE(DecimalsOf(refused));
    }
    EXPECT_EQ(std::wstring(FormatNumber(-1e308, L"%.50f").data()).size(), 255u);
}

TEST(EditBoxRules, ReadNumbersAsC) {
    const std::pair<std::wstring, double> rows[] = {
        {L"", 0}, {L" -1.5e2 mm", -150}, {L".5.5", 0.5}, {L"nan", 0}, {std::wstring(99, L'0') + L"12", 1}};
    for (const auto& [text, value] : rows)
        EXPECT_EQ(ReadNumber(text), value) << kx::test::Narrow(text);
}

TEST(EditBoxRules, SplitLists) {
    const std::tuple<const wchar_t*, wchar_t, std::vector<double>, const wchar_t*> rows[] = {
        {L" 1.5 ;;\t2\u00A0; ", L';', {1.5, 2}, L""},
        {L"400 500  \uFF1600", L' ', {400, 500, 600}, L""},
        {L"1;2a;x", L';', {}, L"2a"},
        {L"0x10", L';', {}, L"0x10"},
        {L"1,5;2", L';', {}, L"1,5"},
        {L"1;2-3", L';', {}, L"2-3"},
        {L"-1e999|+2", L'|', {-kInf, 2}, L""},
    };
    for (const auto& [text, separator, values, wrong] : rows) {
        const ValueList list = SplitValues(text, separator);
        EXPECT_EQ(list.values, values) << kx::test::Narrow(text);
        EXPECT_EQ(list.wrong, wrong);
    }
    for (const wchar_t c : {L'0', L'\uFF10', L'.', L'-', L'e', L'\0', L';', L',', L' ', L'/'})
        EXPECT_EQ(IsSeparator(c), std::wstring(L";, /").find(c) != std::wstring::npos) << int{c};
}

TEST(EditBoxRules, ChooseTheStep) {
    const std::tuple<double, double, const wchar_t*, double> rows[] = {
        {0, 100, L"%g", 1},       {0, 1, L"%g", 0.01},     {400, 700, L"%g", 2},     {0, 0.06, L"%g", 0.0005},
        {0, 1000, L"%g", 10},     {5, 5, L"%g", 1},        {-kInf, kInf, L"%g", 1},  {-1e308, 1e308, L"%g", 1},
        {0, 1e6, L"%.0f", 1},     {0, 100, L"%.2f", 0.01}, {0, 100.5, L"%.2f", 0.1}, {0, 10000, L"%.1f dB", 10},
        {0, kInf, L"%.2f", 0.01}, {3, 3, L"%.3f", 0.001},  {0, 1, nullptr, 0.01},    {0, 5e-324, L"%g", 1},
    };
    for (const auto& [minimum, maximum, format, step] : rows)
        EXPECT_DOUBLE_EQ(SpinStep(minimum, maximum, format), step) << minimum << " " << maximum;
}

TEST(EditBoxRules, StepOntoTheBounds) {
    const std::tuple<double, int, double, double, double, double> rows[] = {
        {9.5, 1, 1, 0.5, 10, 10}, {0.5, -1, 1, 0.5, 10, 0.5},
        {50, 1, 1, 0, 10, 10},    {-50, 5, 1, 0, 10, 0},
        {kNaN, 1, 1, 3, 10, 4},   {kNaN, 0, 1, -kInf, 10, 0},
        {5, 3, kNaN, 0, 9, 5},    {5, 1000000, 1e305, 0, 9, 9},
        {kInf, -1, 1, 0, 10, 10}, {1e20, 1, 1, 0, 2e20, std::nextafter(1e20, 2e20)},
    };
    for (const auto& [value, steps, step, minimum, maximum, expected] : rows)
        EXPECT_EQ(SpinTo(value, steps, step, minimum, maximum), expected) << value;
}

}  // namespace
