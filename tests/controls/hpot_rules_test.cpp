// The slider's rules as tables, the odd results too.
#include <gtest/gtest.h>
#include <kxdevui/controls/hpot_rules.h>

#include <cmath>
#include <limits>

namespace kx::hpot {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
constexpr auto kNegative = static_cast<eHPotType>(-1);

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
Scale OfType(eHPotType type) {
    Scale scale;
    scale.type = type;
    return scale;
}

TEST(HPotRules, PlaceValues) {
    const struct {
        Scale scale;
        double value;
        int length, position;
    } rows[] = {
        {Linear(0, 100, 1), 0, 200, 0},
        {Linear(0, 100, 1), 100, 200, 200},
        {Linear(0, 100, 1), 33.4, 200, 66},
        {Linear(0, 100, 1), 0.499, 200, 0},
        {Linear(0, 100, 1), -0.499, 200, 0},  // truncated towards zero, not down
        {Linear(0, 100, 1), -10, 200, -20},
        {Linear(100, 0, 1), 100, 200, 0},  // reversed: the minimum stands at the start as well
        {Linear(100, 0, 1), 75, 200, 50},
        {Linear(100, 0, 1), 0, 200, 200},
        {Linear(5, 5, 1), 5, 200, 0},
        {Linear(0, 100, 1), 50, 0, 0},
        {Linear(0, 1e-300, 0), 1e300, 200, kMost},
        {Linear(0, 100, 1), -kInf, 200, kLeast},
        {Linear(0, 100, 1), kNaN, 200, 0},
        {Linear(-1.7e308, 1.7e308, 0), 0, 200, 0},
        {List({1, 2, 4, 8}), 2, 70, 10},
        {List({8, 4, 2, 1}, eHPotType_ColorSlider), 2, 70, 60},
        {List({}), 3, 70, 0},
        {Regions({0, 10, 100, 1000}, 1), 0, 300, 0},
        {Regions({0, 10, 100, 1000}, 1), 5, 300, 50},
        {Regions({0, 10, 100, 1000}, 1), 10, 300, 100},
        {Regions({0, 10, 100, 1000}, 1), 55, 300, 150},
        {Regions({0, 10, 100, 1000}, 1), 1000, 300, 300},
        {Regions({0, 10, 100, 1000}, 1), -5, 300, -50},
        {Regions({0, 10, 100, 1000}, 1), 1900, 300, 400},
        {Regions({1000, 100, 10, 0}, 1), 550, 300, 50},
        {Regions({1000, 100, 10, 0}, 1), 5, 300, 249},  // 250 less a rounding error, cut
        {Regions({0, 10, 10, 20}, 1), 15, 300, 250},
        {Regions({7}, 1), 7, 300, 0},
        {OfType(eHPotType_LinearRegions), 50, 300, 150},  // without bounds: proportional
        {OfType(kNegative), -12.9, 300, -12},
        {OfType(static_cast<eHPotType>(9)), 1e12, 300, kMost},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ValueToThumbPos(row.scale, row.value, row.length), row.position)
            << "row " << &row - rows << ", value " << row.value;
    }
}

TEST(HPotRules, SnapValues) {
    const struct {
        Scale scale;
        double value;
        bool fromTrack;
        Held held;
        bool stick;
        double snapped;
        int index;
    } rows[] = {
        {Linear(0, 100, 10), 34.9, true, {}, false, 30, 0},
        {Linear(0, 100, 10), 35, false, {}, false, 40, 0},
        {Linear(5, 100, 10), 11, false, {}, false, 15, 0},  // the grid starts at the minimum
        {Linear(0, 100, 40), 100, false, {}, false, 120, 0},  // and may lead out of the range
        {Linear(0, 100, 10), -4, false, {}, false, 0, 0},
        {Linear(0, 100, 10), -6, false, {}, false, 0, 0},  // truncated: below the minimum not rounded
        {Linear(0, 100, 10), -16, false, {}, false, -10, 0},
        {Linear(100, 0, 10), 93, false, {}, false, 100, 0},  // and on a reversed scale not either
        {Linear(100, 0, 10), 84, false, {}, false, 90, 0},
        {Linear(100, 0, -10), 84, false, {}, false, 80, 0},
        {Linear(0, 100, 0), 12.345, true, {}, false, 12.345, 0},
        {Linear(0, 1e300, 1e-300), 1e299, false, {}, false, 1e299, 0},
        {List({1, 2, 4, 8}), 2.9, true, {}, false, 2, 1},
        {List({1, 2, 4, 8}), 3, true, {}, false, 4, 2},  // a tie goes to the later entry
        {List({1, 2, 4, 8}), 1e9, true, {}, false, 8, 3},
        {List({8, 4, 2, 1}), 3, true, {}, false, 2, 2},
        {List({5, 1, 9, 1}), 0, true, {}, false, 1, 3},
        {List({1, 2, 4, 8}), 2.4, true, {2, 1}, true, 4, 2},
        {List({1, 2, 4, 8}), 1.6, true, {2, 1}, true, 1, 0},
        {List({1, 2, 4, 8}), 2, true, {2, 1}, true, 2, 1},
        {List({1, 2, 4, 8}), 3.5, true, {2, 1}, true, 4, 2},  // another is nearest: no step beyond it
        {List({1, 2, 4, 8}), 9, true, {8, 3}, true, 8, 3},
        {List({1, 2, 4, 8}), 0, true, {1, 0}, true, 1, 0},
        {List({8, 4, 2, 1}), 4.5, true, {4, 1}, true, 2, 2},  // "up" is the next entry, whatever it holds
        {List({}), 3.3, true, {7, 2}, true, 3.3, 2},
        {List({1, 2}), kNaN, true, {}, false, 1, 0},
        {Regions({0, 10, 100}, 3), 50, true, {}, false, 9, 0},      // the middle of the track is the second bound
        {Regions({0, 10, 100}, 3), 75, true, {}, false, 55, 0},     // from 10 in steps of 3
        {Regions({0, 10, 100}, 3), 100, true, {}, false, 100, 0},
        {Regions({0, 10, 100}, 3), 50, false, {}, false, 49, 0},
        {Regions({0, 10, 100}, 4), 2, false, {}, false, 4, 0},      // half a step away from zero
        {Regions({100, 50, 0}, 7), 30, false, {}, false, 30, 0},
        {Regions({100, 50, 0}, 7), 28, false, {}, false, 30, 0},    // reversed: the first bound not below it
        {Regions({0, 10, 100}, 0), 75, true, {}, false, 55, 0},
        {Regions({7}, 2), 10, true, {}, false, 11, 0},
        {Regions({}, 2), 10, true, {}, false, 10, 0},
        {OfType(kNegative), 3.7, true, {}, false, 3.7, 0},
    };
    for (const auto& row : rows) {
        const Held found = ThumbPosToValue(row.scale, row.value, row.fromTrack, row.held, row.stick);
        EXPECT_DOUBLE_EQ(found.value, row.snapped) << "row " << &row - rows << ", value " << row.value;
        EXPECT_EQ(found.index, row.index) << "row " << &row - rows;
    }
}

TEST(HPotRules, MoveByWheelUnits) {
    const struct {
        Scale scale;
        Held held;
        int steps;
        double moved;
    } rows[] = {
        {Linear(0, 100, 1), {50, 0}, 1, 60},
        {Linear(0, 100, 1), {50, 0}, -3, 20},
        {Linear(0, 100, 1), {95, 0}, 1, 100},
        {Linear(100, 0, 1), {5, 0}, -1, 0},  // reversed: the interval between the two
        {Linear(0, 100, 1, 10, 2.5), {50, 0}, 2, 55},
        {Linear(0, 100, 1), {120, 0}, 0, 100},
        {Linear(0, 100, 1, 1e308), {50, 0}, kMost, 50},  // no number: nothing happens
        {List({1, 2, 4, 8}), {2, 1}, 1, 4},
        {List({1, 2, 4, 8}), {2, 1}, kMost, 8},
        {List({1, 2, 4, 8}), {2, 1}, kLeast, 1},
        {List({8, 4, 2, 1}), {4, 1}, 1, 2},
        {List({5, 100, 9}), {5, 0}, 1, 9},  // unsorted: kept in the range
        {List({}), {3, 0}, 1, 3},
        {Regions({0, 10, 100}, 4), {2, 0}, 1, 6},
        {Regions({0, 10, 100}, 4), {8, 0}, 1, 10},   // stops at the bound
        {Regions({0, 10, 100}, 4), {10, 0}, 1, 14},  // and leaves it
        {Regions({0, 10, 100}, 4), {10.000001, 0}, 1, 14.000001},
        {Regions({0, 10, 100}, 4), {9.999999, 0}, 1, 13.999999},  // which is at the bound, not before it
        {Regions({0, 10, 100}, 4), {14, 0}, -5, 10},
        {Regions({0, 10, 20, 100}, 30), {5, 0}, 1, 10},  // the first of two bounds
        {Regions({0, 10, 20, 100}, 30), {25, 0}, -1, 20},
        {Regions({100, 10, 0}, 4), {12, 0}, -1, 10},
        {Regions({0, 10, 100}, 4), {98, 0}, 1, 100},
        {Regions({0, 10, 100}, 0), {50, 0}, 1, 50},
        {Regions({}, 4), {50, 0}, 1, 50},
        {OfType(kNegative), {120, 0}, 1, 120},
    };
    for (const auto& row : rows) {
        EXPECT_DOUBLE_EQ(CalculateMove(row.scale, row.held, row.steps), row.moved)
            << "row " << &row - rows << ", from " << row.held.value;
    }
}

TEST(HPotRules, LeadBackFromTheTrack) {
    const struct {
        Scale scale;
        int position, length;
        double raw;
    } rows[] = {
        {Linear(10, 20, 1), 50, 100, 15}, {Linear(20, 10, 1), 25, 100, 17.5}, {Linear(10, 20, 1), -50, 100, 10},
        {Linear(10, 20, 1), 50, 0, 10},   {Linear(20, 10, 1), 500, 100, 10},  {Linear(-1.7e308, 1.7e308, 0), 0, 9, -1.7e308},
    };
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(ThumbPosToRaw(row.scale, row.position, row.length), row.raw) << "row " << &row - rows;
}

TEST(HPotRules, WriteValuesAsShortAsTheyStayApart) {
    const struct {
        std::vector<double> values;
        std::vector<std::wstring> texts;
    } rows[] = {
        {{0, 50, 100}, {L"0", L"50", L"100"}},
        {{0, 0.5, 1}, {L"0", L"0.5", L"1"}},
        {{1, 1.5, 2, 4, 8.25}, {L"1", L"1.5", L"2", L"4", L"8.25"}},
        {{1.0 / 3, 2.0 / 3, 1}, {L"0.333", L"0.667", L"1"}},
        {{0.001, 1, 1000}, {L"0.001", L"1", L"1000"}},
        {{123456.7, 200000}, {L"123457", L"200000"}},
        {{0, 2.5e7, 5e7}, {L"0", L"2.5e7", L"5e7"}},
        {{0, 1e-6, 2e-6}, {L"0", L"1e-6", L"2e-6"}},
        {{-1e-9, 100}, {L"-1e-9", L"1e2"}},
        {{1e300, -1e300}, {L"1e300", L"-1e300"}},
        {{5, 5}, {L"5", L"5"}},
        {{}, {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Labels(row.values), row.texts) << "row " << &row - rows;
}

// "position label", a dot for a small tick.
std::wstring Drawn(const Scale& scale, int length) {
    const auto width = [](const std::wstring& text) { return static_cast<int>(6 * text.size()); };
    std::wstring drawn;
    int end = -1000;
    for (const Tick& tick : Ticks(scale, {length, 5, 5, 9, 4, width})) {
        if (tick.label.empty()) {
            drawn += L".";
            continue;
        }
        drawn += L" " + std::to_wstring(tick.position) + L":" + tick.label + L" ";
        EXPECT_TRUE(tick.major);
        EXPECT_GE(tick.labelLeft, std::max(-5, end + 9)) << "labels overlap or leave the room";
        end = tick.labelLeft + width(tick.label);
    }
    EXPECT_LE(end, length + 5);
    return drawn;
}

TEST(HPotRules, LayOutTicks) {
    const struct {
        Scale scale;
        int length;
        const wchar_t* drawn;
    } rows[] = {
        {Linear(0, 100, 1), 140, L" 0:0 ... 28:20 ... 56:40 ... 84:60 ... 112:80 ... 140:100 "},
        {Linear(100, 0, 1), 60, L" 0:100 .... 30:50 .... 60:0 "},
        {Linear(3, 17, 1), 140, L".... 20:5 ......... 70:10 ......... 120:15 ...."},
        {Linear(0.37, 0.43, 0), 50, L" 0:0.37  50:0.43 "},
        {Linear(5, 5, 1), 140, L" 0:5 "},
        {Linear(1e15, 1e15 + 1, 0), 140, L" 0:1e15 ."},
        {Linear(-1.7e308, 1.7e308, 0), 140, L" 0:-1.7e308 "},
        {Linear(0, 100, 1), 0, L""},
        {List({1, 2, 4, 8, 16, 32, 64, 128}), 254, L" 0:1 .. 30:16  62:32  126:64  254:128 "},
        {List({}), 100, L""},
        {List({3}), 100, L" 0:3 "},
        {Regions({0, 10, 100, 1000}, 1), 150, L" 0:0  50:10  100:100  150:1000 "},
        {OfType(kNegative), 100, L""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Drawn(row.scale, row.length), row.drawn) << "row " << &row - rows;
    Scale regions = Regions({0, 10, 110}, 1);
    regions.regionSteps = {2, 1};
    EXPECT_EQ(Drawn(regions, 100), L" 0:0 .... 50:10 ......... 100:110 ");
}

}  // namespace
}  // namespace kx::hpot
