// The Z scale's rules: where positions and planes lie, what a click means; and where the question's parts stand.
#include <controls/control_test.h>
#include <kxdevui/zfocus/yesnokeep_layout.h>
#include <kxdevui/zfocus/zstack_scale.h>

namespace {

using namespace kx::zstack;

TEST(ZScale, DrawsOneTickAPlaneAndFewerWhereTheyAreDense) {
    const std::tuple<double, double, unsigned, std::vector<int>> table[] = {
        {0, 10, 3, {100, 90, 80}}, {0, 0.25, 81, {100, 95, 90, 85, 80}},
        {-20, 10, 4, {100, 90}},   {-1e9, 10, 4'000'000'000u, {100, 90, 80, 70, 60, 50, 40, 30, 20, 10, 0}},
        {50, 0, 1, {50}},          {0, kx::test::kInf, 3, {}},
        {0, -10, 3, {100}}};
    for (const auto& [first, pitch, planes, rows] : table) {
        ScaleValues values;
        values.firstPlane = first, values.pitch = pitch, values.planes = planes;
        EXPECT_EQ(PlaneRows(values, {{0, 100}, 0, 100}, 3), rows) << first << " by " << pitch;
    }
}

TEST(ZScale, TakesAClickForTheMarkNearToIt) {
    const ScaleValues values{
        .rangeMin = 0, .rangeMax = 100, .top = 80.4, .bottom = 20, .home = {}, .z = {}, .firstPlane = {}};
    const Axis axis{{-10, 110}, 0, 1200};
    const std::pair<int, double> rows[] = {{296, 80.4}, {293, 80.4}, {292, 80.8}, {900, 20},  {500, 60},
                                           {97, 100},   {20, 100},   {1190, 0},   {-50, 100}, {5000, 0}};
    for (const auto& [row, z] : rows)
        EXPECT_EQ(ClickedZ(values, axis, row, 3), z) << row;
    EXPECT_EQ(ClickedZ({}, axis, 500, 3), std::nullopt) << "nobody knows where the device may go";
}

TEST(ZScale, KeepsLabelsApart) {
    using Tops = std::vector<int>;
    const std::pair<Tops, Tops> rows[] = {{{5, 50, 90}, {5, 50, 90}},
                                          {{-7, 0, 50}, {0, 10, 50}},
                                          {{40, 42, 45}, {40, 50, 60}},
                                          {{88, 95, 97}, {70, 80, 90}}};
    for (auto [tops, spread] : rows) {
        SpreadLabels(tops, 10, 0, 100);
        EXPECT_EQ(tops, spread);
    }
}

// A wide question, buttons that are wider, an icon that is higher.
TEST(YesNoKeep, StandsInItsPlaces) {
    for (const auto& [icon, question, places] :
         {std::tuple{32, SIZE{400, 40}, "10 10 42 42, 52 10 452 50, 52 60 452 80, 102 90 192 114, 402 115, 464 138"},
          {32, SIZE{99, 10}, "10 10 42 42, 52 10 151 20, 52 30 352 50, 52 60 142 84, 352 85, 364 108"},
          {90, SIZE{99, 10}, "10 10 100 100, 110 10 209 20, 110 30 410 50, 110 110 200 134, 410 135, 422 158"}}) {
        const auto at = PlaceYesNoKeep({{icon, icon}, question, {1, 20}, {{{90, 24}, {100, 25}, {90, 24}}}, 1, 3, 7});
        std::ostringstream text;
        for (const RECT& each : {at.icon, at.question, at.check, at.buttons[0]})
            text << each.left << ' ' << each.top << ' ' << each.right << ' ' << each.bottom << ", ";
        text << at.buttons[2].right << ' ' << at.buttons[1].bottom << ", " << at.dialog.cx << ' ' << at.dialog.cy;
        EXPECT_EQ(text.str(), places);
    }
}

}  // namespace
