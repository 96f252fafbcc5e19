// The slider's rules as tables, the odd results too.
#include "control_test.h"

#include <kxdevui/controls/hpot_rules.h>

#include <algorithm>

namespace kx::hpot {
namespace {

using test::kInf, test::kNaN;
constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();

Scale Linear(double minimum, double maximum, double step, double wheelStep = 10, double wheelOverride = 0) {
    return {eHPotType_Linear, minimum, maximum, step, wheelStep, wheelOverride, {}, {}};
}
Scale List(std::vector<double> values, eHPotType type = eHPotType_NonLinear) {
    const double first = values.empty() ? 0 : values.front(), last = values.empty() ? 0 : values.back();
    return {type, first, last, 0, 10, 0, std::move(values), {}};
}
Scale Regions(std::vector<double> values, double step) {
    Scale scale = List(std::move(values), eHPotType_LinearRegions);
    scale.step = step;
    return scale;
}
Scale OfType(int type) { return {static_cast<eHPotType>(type), 0, 100, 0, 10, 0, {}, {}}; }
const Scale kUp = Linear(0, 100, 1), kDown = Linear(100, 0, 1);
const Scale kTens = Linear(0, 100, 10), kTensDown = Linear(100, 0, 10);
const Scale kList = List({1, 2, 4, 8}), kListDown = List({8, 4, 2, 1}, eHPotType_ColorSlider), kEmpty = List({});
const Scale kRegions = Regions({0, 10, 100, 1000}, 1), kRegionsDown = Regions({1000, 100, 10, 0}, 1);
const Scale kThrees = Regions({0, 10, 100}, 3), kFours = Regions({0, 10, 100}, 4);
const Scale kTwos = Regions({0, 3, 10, 31}, 2);
const Scale kSevensDown = Regions({100, 50, 0}, 7);

TEST(HPotRules, PlaceValues) {
    // clang-format off
    const struct { Scale scale; double value; int length, position; } rows[] = {
        {kUp, 0, 200, 0}, {kUp, 100, 200, 200}, {kUp, 33.4, 200, 66}, {kUp, 0.499, 200, 0}, {kUp, 50, 0, 0},
        // Truncated towards zero, not down; reversed, the minimum stands at the start as well.
        {kUp, -0.499, 200, 0}, {kUp, -10, 200, -20}, {kDown, 100, 200, 0}, {kDown, 75, 200, 50},
        {kUp, kNaN, 200, 0}, {kUp, -kInf, 200, kLeast}, {Linear(0, 1e-300, 0), 1e300, 200, kMost},
        {kList, 2, 70, 10}, {kListDown, 2, 70, 60}, {kEmpty, 3, 70, 0},
        {kRegions, 5, 300, 50}, {kRegions, 10, 300, 100}, {kRegions, 55, 300, 150}, {kRegions, 1000, 300, 300},
        {kRegions, -5, 300, -50}, {kRegions, 1900, 300, 400},
        {kRegionsDown, 550, 300, 50}, {kRegionsDown, 5, 300, 249},  // 250 less a rounding error, cut
        {Regions({0, 10, 10, 20}, 1), 15, 300, 250}, {Regions({7}, 1), 7, 300, 0},
        {OfType(eHPotType_LinearRegions), 50, 300, 150},  // without bounds: proportional
    };
    // clang-format on
    for (const auto& row : rows)
        EXPECT_EQ(ValueToThumbPos(row.scale, row.value, row.length), row.position) << "row " << &row - rows;
}

TEST(HPotRules, SnapValues) {
    // clang-format off
    using Stick = std::optional<Held>;
    const struct { Scale scale; double value; bool track; double snapped; int index = 0; Stick stick = {}; } rows[] = {
        {kTens, 34.9, true, 30}, {kTens, 35, false, 40}, {kTens, -4, false, 0},
        // The grid starts at the minimum, and may lead out of the range.
        {Linear(5, 100, 10), 11, false, 15}, {Linear(0, 100, 40), 100, false, 120},
        // Truncated: neither below the minimum nor on a reversed scale rounded.
        {kTens, -6, false, 0}, {kTens, -16, false, -10}, {kTensDown, 93, false, 100}, {kTensDown, 84, false, 90},
        {kList, 2.9, true, 2, 1}, {kList, 3, true, 4, 2} /* a tie goes to the later entry */, {kList, 1e9, true, 8, 3},
        {kListDown, 3, true, 2, 2}, {List({5, 1, 9, 1}), 0, true, 1, 3}, {kList, kNaN, true, 1},
        // The middle of the track is the second bound; from there in steps of 3.
        {kThrees, 50, true, 9}, {kThrees, 75, true, 55}, {kThrees, 100, true, 100}, {kThrees, 50, false, 49},
        {kFours, 2, false, 4},  // half a step away from zero
        {kSevensDown, 30, false, 30}, {kSevensDown, 28, false, 30},  // reversed: the first bound not below it
        {OfType(-1), 3.7, true, 3.7}, {kEmpty, 3.3, true, 3.3},
        // At the end of each region, and beyond the last, as the bound itself, also where the steps lead elsewhere.
        {kTwos, 31, true, 32}, {kTwos, 31, false, 32}, {kTwos, 99, true, 32}, {kTwos, 62.0 / 3, true, 11},
        {Regions({170, 130, 100, 40, 10, 3, 0}, 4), 170 - 170 / 6.0 * 2, true, 98}, {Regions({0, 10, 63, 118}, 10), 118, true, 123},
        {Regions({118, 63, 10, 0}, 10), 0, true, -2},
        // Sticking to neighbours of what is held, by value: up is the larger one.
        {kList, 2.4, true, 4, 2, {{2, 1}}}, {kList, 1.6, true, 1, 0, {{2, 1}}}, {kList, 2, true, 2, 1, {{2, 1}}},
        {kList, 3.5, true, 4, 2, {{2, 1}}},  // another is nearest: no step beyond it
        {kList, 9, true, 8, 3, {{8, 3}}}, {kList, 0, true, 1, 0, {{1, 0}}}, {kEmpty, 3.3, true, 3.3, 2, {{7, 2}}},
        {kListDown, 4.5, true, 8, 0, {{4, 1}}}, {List({100, 50, 0}), 40, true, 0, 2, {{50, 1}}},
    };
    // clang-format on
    for (const auto& row : rows) {
        const Held held = row.stick.value_or(Held{});
        const Held found = ThumbPosToValue(row.scale, row.value, row.track, held, row.stick.has_value());
        EXPECT_DOUBLE_EQ(found.value, row.snapped) << "row " << &row - rows;
        EXPECT_EQ(found.index, row.index) << "row " << &row - rows;
    }
}

TEST(HPotRules, MoveByWheelUnits) {
    // clang-format off
    const struct { Scale scale; Held held; int steps; double moved; } rows[] = {
        {kUp, {50}, 1, 60}, {kUp, {50}, -3, 20}, {kUp, {95}, 1, 100}, {kUp, {120}, 0, 100},
        {kDown, {5}, -1, 0},  // reversed: the interval between the two
        {Linear(0, 100, 1, 10, 2.5), {50}, 2, 55}, {Linear(0, 100, 1, 1e308), {50}, kMost, 50},  // no number: nothing
        {kList, {2, 1}, 1, 4}, {kList, {2, 1}, kMost, 8}, {kList, {2, 1}, kLeast, 1}, {kListDown, {4, 1}, 1, 2},
        {List({5, 100, 9}), {5}, 1, 9} /* unsorted: kept in the range */, {kEmpty, {3}, 1, 3},
        // Stops at a bound and leaves it; a hair before one is at it.
        {kFours, {2}, 1, 6}, {kFours, {8}, 1, 10}, {kFours, {10}, 1, 14}, {kFours, {10.000001}, 1, 14.000001},
        {kFours, {9.999999}, 1, 13.999999}, {kFours, {14}, -5, 10}, {kFours, {98}, 1, 100},
        {Regions({0, 10, 20, 100}, 30), {5}, 1, 10}, {Regions({0, 10, 20, 100}, 30), {25}, -1, 20},
        {Regions({100, 10, 0}, 4), {12}, -1, 10}, {Regions({}, 4), {50}, 1, 50}, {OfType(-1), {120}, 1, 120},
    };
    // clang-format on
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(CalculateMove(row.scale, row.held, row.steps), row.moved) << "row " << &row - rows;
}

// "position label", a dot for a small tick.
std::wstring Drawn(const Scale& scale, int length) {
    const auto width = [](const std::wstring& text) { return static_cast<int>(6 * text.size()); };
    std::wstring drawn;
    int end = -1000;
    for (const Tick& tick : Ticks(scale, {length, 5, 5, 9, 4, width})) {
        drawn += tick.label.empty() ? L"." : L" " + std::to_wstring(tick.position) + L":" + tick.label + L" ";
        if (tick.label.empty()) continue;
        EXPECT_TRUE(tick.major);
        EXPECT_GE(tick.labelLeft, std::max(-5, end + 9)) << "labels overlap or leave the room";
        end = tick.labelLeft + width(tick.label);
    }
    EXPECT_LE(end, length + 5);
    return drawn;
}

TEST(HPotRules, LayOutTicks) {
    // clang-format off
    const struct { Scale scale; int length; const wchar_t* drawn; } rows[] = {
        {kUp, 140, L" 0:0 ... 28:20 ... 56:40 ... 84:60 ... 112:80 ... 140:100 "},
        {kDown, 60, L" 0:100 .... 30:50 .... 60:0 "},
        {Linear(3, 17, 1), 140, L".... 20:5 ......... 70:10 ......... 120:15 ...."},
        {Linear(0.37, 0.43, 0), 50, L" 0:0.37  50:0.43 "}, {Linear(5, 5, 1), 140, L" 0:5 "}, {kUp, 0, L""},
        {List({1, 2, 4, 8, 16, 32, 64, 128}), 254, L" 0:1 .. 30:16  62:32  126:64  254:128 "},
        {kEmpty, 100, L""}, {List({3}), 100, L" 0:3 "}, {kRegions, 150, L" 0:0  50:10  100:100  150:1000 "},
        {OfType(-1), 100, L""},
        // Seven characters are readable, eight are not.
        {List({0, 1e6}), 100, L" 0:0  100:1000000 "}, {List({0, 1e7}), 100, L" 0:0  100:1e7 "},
    };
    // clang-format on
    for (const auto& row : rows)
        EXPECT_EQ(Drawn(row.scale, row.length), row.drawn) << "row " << &row - rows;
    Scale regions = Regions({0, 10, 110}, 1);
    regions.regionSteps = {2, 1};
    EXPECT_EQ(Drawn(regions, 100), L" 0:0 .... 50:10 ......... 100:110 ");
}

}  // namespace
}  // namespace kx::hpot
