// Where panels stand on a page, and what the file with the settings is answered with.
#include <bench/bench.h>
#include <host/rules/flow.h>
#include <host/rules/settings.h>

#include <sstream>
#include <tuple>

using namespace kx::host;
using namespace std::string_literals;

namespace {

// "x,y x,y ... : height"
std::string Places(const std::vector<Size>& sizes, long width) {
    const Flow flow = FlowIntoColumns(sizes, width, 8);
    std::ostringstream text;
    for (const Place& place : flow.places)
        text << place.x << ',' << place.y << ' ';
    text << ": " << flow.height;
    return text.str();
}

}  // namespace

TEST(HostRules, PanelsFlowIntoTheShortestColumn) {
    // clang-format off
    const std::tuple<std::vector<Size>, long, const char*> rows[] = {
        {{}, 500, ": 8"}, {{{100, 50}}, 500, "8,8 : 66"},
        // Exactly wide enough for two columns, and a pixel less.
        {{{100, 50}, {100, 30}, {100, 20}, {100, 10}}, 224, "8,8 116,8 116,46 8,66 : 84"},
        {{{100, 50}, {100, 30}, {100, 20}}, 223, "8,8 8,66 8,104 : 132"},
        // The widest makes the columns; equal heights begin at the left again.
        {{{40, 50}, {100, 50}, {60, 50}}, 240, "8,8 116,8 8,66 : 124"},
        // No more columns than panels; too narrow, or no width at all, is still one.
        {{{100, 50}, {100, 50}}, 9999, "8,8 116,8 : 66"}, {{{100, 50}, {100, 50}}, -5, "8,8 8,66 : 124"},
        {{{0, 0}, {100, 50}, {0, 0}}, 100, "8,8 8,8 8,66 : 66"}};
    // clang-format on
    for (const auto& [sizes, width, places] : rows)
        EXPECT_EQ(Places(sizes, width), places) << width;
}

TEST(HostRules, ScrollingEndsWithTheContent) {
    const long rows[][4] = {{50, 300, 100, 50}, {250, 300, 100, 200}, {-9, 300, 100, 0}, {50, 80, 100, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(ScrollPosition(row[0], row[1], row[2]), row[3]) << row[0];
}

TEST(HostRules, SettingsAreReadWholeOrNotAtAll) {
    const Settings none, all{150, 7, 2, 3, 688, 650};
    const std::string text = WriteSettings(all);
    const std::string body = "zoom=150\nlanguage=7\nscheme=2\npage=3\nwidth=688\nheight=650\n";
    EXPECT_EQ(ReadSettings(text), all);
    EXPECT_EQ(ReadSettings("[kxdevhost]\n" + body + "[end]"), all);
    EXPECT_EQ(ReadSettings("[kxdevhost]\nzoom=125\n[end]\n"), Settings{.zoom = 125});
    for (const std::string& whole : {""s, "[other]\n" + body + "[end]\n", "[kxdevhost]\n" + body + "[end]\nmore"})
        EXPECT_EQ(ReadSettings(whole), none) << whole;
    for (const std::string& line :
         {body + "zoom=150", "zoom=130"s, "zoom=150x"s, "zoom="s, "zoom=99999999999"s, "page=-1"s, "scheme=5"s,
          "width=688"s, "width=9\nheight=650"s, "unknown=1"s, "zoom"s, "\0"s})
        EXPECT_EQ(ReadSettings("[kxdevhost]\n" + line + "\n[end]\n"), none) << line;
    // Cut anywhere before its last line's text is whole.
    for (std::size_t i = 0; i + 2 < text.size(); ++i)
        EXPECT_EQ(ReadSettings(text.substr(0, i)), none) << i;
}
