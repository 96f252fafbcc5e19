// Where panels stand on a page, and what the file with the settings is answered with.
#include <bench/bench.h>
#include <host/rules/flow.h>
#include <host/rules/settings.h>

#include <sstream>
#include <string>

using namespace kx::host;

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
    const struct {
        std::vector<Size> sizes;
        long width;
        const char* places;
    } rows[] = {
        // clang-format off
        {{},                                               500,  ": 8"},
        {{{100, 50}},                                      500,  "8,8 : 66"},
        // Exactly wide enough for two columns, and a pixel less.
        {{{100, 50}, {100, 30}, {100, 20}, {100, 10}},     224,  "8,8 116,8 116,46 8,66 : 84"},
        {{{100, 50}, {100, 30}, {100, 20}},                223,  "8,8 8,66 8,104 : 132"},
        // The widest makes the columns; equal heights begin at the left again.
        {{{40, 50}, {100, 50}, {60, 50}},                  240,  "8,8 116,8 8,66 : 124"},
        // No more columns than panels; too narrow, or no width at all, is still one.
        {{{100, 50}, {100, 50}},                           9999, "8,8 116,8 : 66"},
        {{{100, 50}, {100, 50}},                           -5,   "8,8 8,66 : 124"},
        {{{0, 0}, {100, 50}, {0, 0}},                      100,  "8,8 8,8 8,66 : 66"},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(Places(row.sizes, row.width), row.places) << row.width;
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
    const struct {
        std::string text;
        Settings read;
    } rows[] = {
        // clang-format off
        {text,                                            all},
        {"[kxdevhost]\n" + body + "[end]",                all},
        {"[kxdevhost]\nzoom=125\n[end]\n",               {.zoom = 125}},
        {"",                                              none},
        {"[other]\n" + body + "[end]\n",                  none},
        {"[kxdevhost]\n" + body,                          none},
        {"[kxdevhost]\n" + body + "[end]\nmore",          none},
        {"[kxdevhost]\n" + body + "zoom=150\n[end]\n",    none},
        {"[kxdevhost]\nzoom=130\n[end]\n",               none},
        {"[kxdevhost]\nzoom=150x\n[end]\n",              none},
        {"[kxdevhost]\nzoom=\n[end]\n",                  none},
        {"[kxdevhost]\nzoom=99999999999\n[end]\n",       none},
        {"[kxdevhost]\npage=-1\n[end]\n",                none},
        {"[kxdevhost]\nscheme=4\n[end]\n",               none},
        {"[kxdevhost]\nwidth=688\n[end]\n",              none},
        {"[kxdevhost]\nwidth=9\nheight=650\n[end]\n",    none},
        {"[kxdevhost]\nunknown=1\n[end]\n",              none},
        {"[kxdevhost]\nzoom\n[end]\n",                   none},
        {std::string("[kxdevhost]\0\n[end]\n", 20),      none},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadSettings(row.text), row.read) << row.text;
    // Cut anywhere before its last line's text is whole.
    for (std::size_t i = 0; i + 2 < text.size(); ++i)
        EXPECT_EQ(ReadSettings(text.substr(0, i)), none) << i;
}
