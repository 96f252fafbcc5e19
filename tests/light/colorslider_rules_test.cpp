// The colour slider's rules as tables: every tie, and what is not the same on both sides.
#include "lamps.h"

#include <kxdevui/controls/hpot_rules.h>
#include <kxdevui/light/colorslider_rules.h>

#include <cfloat>

namespace kx::colorslider {
namespace {

using test::kInf, test::kNaN;
using Table = std::vector<double>;

TEST(ColorSliderRules, SnapToTheTable) {
    const Table usual{0, 10, 20, 40};
    const std::tuple<Table, double, int> rows[] = {
        // clang-format off
        {usual, 0, 0}, {usual, 4.999, 0}, {usual, 5, 1}, {usual, 5.001, 1}, {usual, 15, 2}, {usual, 30, 3},
        {usual, 29.999, 2}, {usual, -7, 0}, {usual, 1000, 3},
        {usual, -kInf, 0}, {usual, kInf, 3}, {usual, -DBL_MAX, 0}, {usual, -1e300, 0}, {usual, kNaN, 3},
        {{}, 5, 0}, {{7}, -kInf, 0}, {{7}, 7, 0},
        {{40, 20, 10, 0}, 30, 1}, {{40, 20, 10, 0}, -5, 3}, {{40, 20, 10, 0}, 41, 0},
        {{5, 5, 5}, 5, 2}, {{5, 5, 9}, 4, 1}, {{0, 9, 9}, 20, 2},
        {{0, 10, 5, 30}, 8, 1}, {{0, 10, 5, 30}, 2, 0},  // unsorted: the walk ends where it gets farther
        {{-DBL_MAX, DBL_MAX}, 0, 1}, {test::Entries(10000, 1), 5000.5, 5001}, {test::Entries(10000, 1), 1e9, 9999},
        // clang-format on
    };
    for (const auto& [table, value, index] : rows)
        EXPECT_EQ(NearestEntry(value, table), index) << value << " of " << table.size();
}

TEST(ColorSliderRules, KeepARangeInOrder) {
    const Table table{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    const std::array<double, 5> rows[] = {
        {5, 3, 5, 3, 3},    // only the maximum moved: the minimum makes room
        {7, 3, 5, 7, 7},    // the minimum moved: the maximum does
        {5.2, 3, 5, 5, 5},  // another number, though the same entry
        {20, -20, 5, 10, 10}, {5, -kInf, 5, 0, 0}, {4.5, 4.4, 4.5, 4, 4},
    };
    for (const auto& [minimum, maximum, heldMinimum, newMinimum, newMaximum] : rows) {
        const Range range = RangeFor(minimum, maximum, heldMinimum, table);
        EXPECT_EQ(std::pair(range.minimum.value, range.maximum.value), std::pair(newMinimum, newMaximum)) << minimum;
        EXPECT_EQ(range.minimum.index + range.maximum.index, newMinimum + newMaximum);
    }
}

TEST(ColorSliderRules, GiveAClickToAThumb) {
    const std::tuple<long, long, long, Thumb> rows[] = {
        {0, 20, 60, Thumb::Minimum},  {39, 20, 60, Thumb::Minimum}, {40, 20, 60, Thumb::Minimum},
        {41, 20, 60, Thumb::Maximum}, {90, 20, 60, Thumb::Maximum}, {49, 50, 50, Thumb::Minimum},
        {51, 50, 50, Thumb::Maximum}, {50, 50, 50, Thumb::Maximum}, {100, 100, 100, Thumb::Minimum},
        {0, 0, 0, Thumb::Maximum},    {10, 60, 20, Thumb::Maximum}, {70, 60, 20, Thumb::Minimum},  // a reversed scale
    };
    for (const auto& [pointer, minimum, maximum, thumb] : rows)
        EXPECT_EQ(ThumbFor(pointer, minimum, maximum, 100), thumb) << pointer << " " << minimum;
}

// Marks of one pixel are one tick, which has the label of one of them.
TEST(ColorSliderRules, MarkAPixelOnce) {
    const hpot::Scale scale{eHPotType_ColorSlider, 0, 100, 0, 10, 0, {0, 50, 50.1, 100}, {}};
    const auto width = [](const std::wstring& text) { return static_cast<int>(6 * text.size()); };
    const hpot::Mark marks[] = {{0, false}, {50, false}, {50.1, true}, {100, false}};
    std::wstring drawn;
    for (const hpot::Tick& tick : hpot::MarkTicks(scale, marks, {90, 5, 5, 9, 4, width}))
        drawn += std::to_wstring(tick.position) + L":" + tick.label + L" ";
    EXPECT_EQ(drawn, L"0: 45:50 90: ");
}

// Slider 100 x 10, name 40, unit 12 and edit 30 wide.
TEST(ColorSliderRules, LayOutTheParts) {
    constexpr auto power = eColorSliderType_Gradient, range = eColorSliderType_Range;
    constexpr auto two = eColorSliderLayout_TwoRows, one = eColorSliderLayout_OneRow,
                   spin = eColorSliderLayout_OneRowSpin, point = eColorSliderLayout_ColorPoint,
                   none = static_cast<EColorSliderLayoutType>(77);
    // Size, the columns of name, edit, second edit, unit; thumb, name, edit, minimum's edit, unit.
    const std::tuple<EColorSliderType, EColorSliderLayoutType, int, bool, int, const char*> rows[] = {
        {power, two, 100, true, 30, "110 70|-1 -1 -1 -1|0 18 110 35|4 2 43 15|57 0 30 17|0 0 0 0|87 2 17 15"},
        {range, two, 100, true, 30, "110 70|-1 -1 -1 -1|0 18 110 35|4 2 0 15|57 0 30 17|21 0 30 17|87 2 17 15"},
        {range, point, 200, true, 30, "210 70|-1 -1 -1 -1|0 18 210 35|4 2 103 15|157 0 30 17|121 0 30 17|187 2 17 15"},
        {power, one, 100, true, 30, "211 40|50 161 -1 194|50 0 110 35|4 2 40 15|161 0 30 17|0 0 0 0|194 2 17 15"},
        {power, spin, 100, true, 30, "211 40|50 161 -1 194|50 0 110 35|4 2 40 15|161 0 13 21|0 0 0 0|194 2 17 15"},
        {range, one, 100, true, 30, "316 40|50 161 266 299|50 0 110 35|4 2 40 15|266 0 30 17|161 0 30 17|299 2 17 15"},
        {power, one, 100, false, 30, "150 40|50 -1 -1 -1|50 0 110 35|4 2 40 15|0 0 0 0|0 0 0 0|0 0 0 0"},
        {power, none, -9, true, -1, "10 70|-1 -1 -1 -1|0 18 10 35|4 2 0 15|-13 0 0 17|0 0 0 0|-13 2 17 15"},
    };
    for (const auto& [type, layout, width, showEdit, editWidth, placed] : rows) {
        const Layout at = LayOut({type, layout, width, 10, 40, 12, showEdit, editWidth});
        std::ostringstream out;
        out << at.width << ' ' << at.height << '|' << at.nameColumn << ' ' << at.editColumn << ' '
            << at.secondEditColumn << ' ' << at.unitColumn;
        for (const Place& part : {at.thumb, at.name, at.edit, at.minimumEdit, at.unit})
            out << '|' << part.x << ' ' << part.y << ' ' << part.cx << ' ' << part.cy;
        EXPECT_EQ(out.str(), placed);
        EXPECT_EQ(at.spin.IsWanted(), layout == spin);
    }
}

}  // namespace
}  // namespace kx::colorslider
