// Scales, links and orders of laser lines as tables. Expected powers are decimals, compared exactly.
#include <controls/control_test.h>
#include <kxdevui/light/multilaser_rules.h>

namespace kx::multilaser {
namespace {

using test::kInf, test::kNaN;
constexpr auto kLog = EKxPowerScale::Logarithmic, kLinear = EKxPowerScale::Linear;

TEST(LaserScale, HasEqualStepsPerDecadeAndZeroByItself) {
    const double digits[] = {1,   1.1, 1.3, 1.4, 1.6, 1.8, 2,   2.2, 2.5, 2.8,
                             3.2, 3.5, 4,   4.5, 5,   5.6, 6.3, 7.1, 7.9, 8.9};
    for (int i = 0; i < 80; ++i) {
        const double tenths = std::round(digits[i % 20] * 10), by[] = {1000, 100, 10, 1};
        EXPECT_EQ(PowerAt(kLog, 10 + i), tenths / by[i / 20]) << i;
        EXPECT_NEAR(PlaceOf(kLog, PowerAt(kLog, 10 + i)), 10 + i, 0.3);
    }
    const std::tuple<EKxPowerScale, int, double> ends[] = {
        {kLog, -1, 0},   {kLog, 0, 0},    {kLog, 4, 0},    {kLog, 5, 0.01},  {kLog, 9, 0.01},     {kLog, 12, 0.013},
        {kLog, 90, 100}, {kLog, 91, 100}, {kLinear, 7, 7}, {kLinear, -5, 0}, {kLinear, 1000, 100}};
    for (const auto& [scale, place, power] : ends)
        EXPECT_EQ(PowerAt(scale, place), power) << place;
    const std::tuple<EKxPowerScale, double, double> places[] = {
        {kLog, 0, 0},          {kLog, -1, 0},      {kLog, kNaN, 0},     {kLog, 1e-300, 10}, {kLog, 0.01, 10},
        {kLog, 0.1, 30},       {kLog, 1, 50},      {kLog, 10, 70},      {kLog, 100, 90},    {kLog, kInf, 90},
        {kLinear, 12.5, 12.5}, {kLinear, kNaN, 0}, {kLinear, kInf, 100}};
    for (const auto& [scale, power, place] : places)
        EXPECT_NEAR(PlaceOf(scale, power), place, 1e-9) << power;
}

TEST(LaserScale, StepsOverTheGapAndTicksAtOneTwoFive) {
    const std::tuple<EKxPowerScale, double, double, int> steps[] = {
        {kLog, 0, 1, 10},       {kLog, 10, 9, 0},   {kLog, 0, 5, 10},   {kLog, 12, 7, 0},
        {kLog, 36.8, 37.8, 38}, {kLog, 89, 94, 90}, {kLinear, 0, 1, 1}, {kLinear, 99.5, 1e9, 100},
        {kLinear, 3, -1e9, 0},  {kLog, 0, kNaN, 0}};
    for (const auto& [scale, from, to, place] : steps)
        EXPECT_EQ(PlaceAfter(scale, from, to), place) << from << " to " << to;
    std::wstring ticks;
    for (const hpot::Mark& mark : MarksOf(kLog))
        ticks += std::to_wstring(std::lround(mark.value)) + (mark.isLabelled ? L"=" + mark.label : L"") + L" ";
    EXPECT_EQ(ticks, L"0=0 10=0.01 16 24 30=0.1 36 44 50=1 56 64 70=10 76 84 90=100 ");
}

TEST(LaserLink, KeepsRatiosAndStopsAtTheFirstLimit) {
    struct Row {
        std::vector<Linked> lines;
        double factor, most;
        std::vector<double> powers;
    };
    const Row rows[] = {
        {{{10, 100}, {20, 100}}, 150, 500, {15, 30}},
        {{{10, 100}, {20, 30}}, 400, 150, {15, 30}},  // the second is at its limit, and the first stops with it
        {{{12.5, 100}, {33.3, 100}}, 33, 10000 / 33.3, {4.125, 10.989}},
        {{{0.07, 100}, {0.3, 100}}, 10, 10000 / 0.3, {0.007, 0.03}},
        {{{40, 100}, {0, 100}}, 250, 250, {100, 0}},
        {{{40, 100}}, 0, 250, {0}},
        {{{40, 100}}, -5, 250, {0}},
        {{{40, 100}}, kNaN, 250, {0}},
        {{{40, 100}}, kInf, 250, {100}},
        {{{40, 30}, {10, 100}}, 200, 100, {30, 10}},  // over its limit already: nothing rises
        {{{0, 100}}, 300, 100, {0}},
        {{}, 200, 100, {}},
    };
    for (const Row& row : rows) {
        EXPECT_DOUBLE_EQ(MostFactor(row.lines), row.most);
        EXPECT_EQ(PowersAt(row.lines, row.factor), row.powers) << row.factor;
    }
}

TEST(LaserLines, AreSortedCleanedAndSoloed) {
    std::vector<SKxLaserLine> lines(6);
    const double wavelengths[] = {640, kNaN, 405, 561, 0, 405};
    for (std::size_t i = 0; i < lines.size(); ++i)
        lines[i].wavelength = wavelengths[i], lines[i].on = i % 2 == 0;
    EXPECT_EQ(ByWavelength(lines), (std::vector<long>{2, 5, 3, 0, 1, 4}));
    EXPECT_EQ(SoloSteps(lines, 3), (std::vector<SKxLaserSwitch>{{0, false}, {2, false}, {4, false}, {3, true}}));
    EXPECT_EQ(SoloSteps(lines, 2), (std::vector<SKxLaserSwitch>{{0, false}, {4, false}}));
    EXPECT_TRUE(SoloSteps(lines, 6).empty() && SoloSteps(lines, -1).empty());
    const SKxLaserLine bad =
        Cleaned({.wavelength = kInf, .power = kNaN, .limit = kNaN, .fullPower = -1, .measured = kNaN, .gain = kInf});
    EXPECT_EQ(bad, (SKxLaserLine{.limit = 0}));
    EXPECT_EQ(Cleaned({.power = 1e9, .limit = 1e9}).power, 100);
    const SKxLaserLine line{.fullPower = 150};
    EXPECT_EQ(InUnit(line, EKxPowerUnit::Milliwatts, 10), 15);
    EXPECT_EQ(FromUnit(line, EKxPowerUnit::Milliwatts, 15), 10);
    EXPECT_EQ(InUnit({}, EKxPowerUnit::Milliwatts, 10), 10) << "of one whose full power is not known";
}

}  // namespace
}  // namespace kx::multilaser
