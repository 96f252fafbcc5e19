// The Z scale's rules: where positions lie, which planes are told apart, what a click means.
#include <gtest/gtest.h>

#include <kxdevui/zfocus/zstack_scale.h>

#include <cmath>
#include <limits>

namespace {

using namespace kx::zstack;

TEST(ZScale, DrawsOneTickAPlaneAndFewerWhereTheyAreDense) {
    const double infinity = std::numeric_limits<double>::infinity(), nan = std::nan("");
    const struct {
        double first, pitch;
        unsigned planes;
        std::vector<int> rows;
    } table[] = {{0, 10, 3, {100, 90, 80}},
                 {0, 1, 101, {100, 95, 90, 85, 80, 75, 70, 65, 60, 55, 50, 45, 40, 35, 30, 25, 20, 15, 10, 5, 0}},
                 {0, 0.25, 81, {100, 95, 90, 85, 80}},
                 {-20, 10, 4, {100, 90}},
                 {95, 10, 4'000'000'000u, {5}},
                 {-1e9, 10, 4'000'000'000u, {100, 90, 80, 70, 60, 50, 40, 30, 20, 10, 0}},
                 {50, 0, 1, {50}},
                 {0, nan, 4'000'000'000u, {}},
                 {0, infinity, 3, {}},
                 {0, -10, 3, {100}}};
    for (const auto& row : table) {
        ScaleValues values;
        values.firstPlane = row.first;
        values.pitch = row.pitch;
        values.planes = row.planes;
        EXPECT_EQ(PlaneRows(values, {{0, 100}, 0, 100}, 3), row.rows) << row.first << " by " << row.pitch;
    }
}

TEST(ZScale, ShowsTheDeviceAndTheStack) {
    ScaleValues values{
        .rangeMin = 0, .rangeMax = 1000, .top = 520, .bottom = 500, .home = {}, .z = 5, .firstPlane = {}};
    EXPECT_EQ(WholeStretch(values).low, -50);
    EXPECT_EQ(StackStretch(values).low, 497);
    values.home = 490;
    EXPECT_EQ(StackStretch(values).high, 524.5);
    values.top.reset();
    EXPECT_EQ(StackStretch(values).high, 1050) << "half a stack is none";
    values.rangeMax = values.rangeMin = 7;
    EXPECT_GT(WholeStretch(values).high, WholeStretch(values).low);
    EXPECT_GT(WholeStretch({}).high, WholeStretch({}).low);
}

TEST(ZScale, TakesAClickForTheMarkNearToIt) {
    const ScaleValues values{
        .rangeMin = 0, .rangeMax = 100, .top = 80.4, .bottom = 20, .home = {}, .z = {}, .firstPlane = {}};
    const Axis axis{{-10, 110}, 0, 1200};
    const struct {
        int row;
        double z;
    } table[] = {{296, 80.4}, {293, 80.4}, {292, 80.8}, {900, 20},  {500, 60},
                 {97, 100},   {20, 100},   {1190, 0},   {-50, 100}, {5000, 0}};
    for (const auto& [row, z] : table)
        EXPECT_EQ(ClickedZ(values, axis, row, 3), z) << row;
    EXPECT_EQ(ClickedZ({}, axis, 500, 3), std::nullopt) << "nobody knows where the device may go";
}

TEST(ZScale, KeepsLabelsApart) {
    for (auto [tops, spread] : {std::pair<std::vector<int>, std::vector<int>>{{5, 50, 90}, {5, 50, 90}},
                                {{-7, 0, 50}, {0, 10, 50}},
                                {{40, 42, 45}, {40, 50, 60}},
                                {{88, 95, 97}, {70, 80, 90}}}) {
        SpreadLabels(tops, 10, 0, 100);
        EXPECT_EQ(tops, spread);
    }
}

}  // namespace
