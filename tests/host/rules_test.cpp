// Where panels stand on a page, what the file with the settings is answered with, and what can be undone.
#include <bench/bench.h>
#include <host/rules/flow.h>
#include <host/rules/history.h>
#include <host/rules/mnemonics.h>
#include <host/rules/reading_order.h>
#include <host/rules/settings.h>
#include <host/rules/stage_place.h>

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

TEST(HostRules, PanelsAreReadByRowsThenByColumns) {
    const std::tuple<std::vector<Box>, std::vector<std::size_t>> rows[] = {
        {{}, {}},
        // A row over two columns, of which neither ends where the other does.
        {{{60, 20, 100, 90}, {0, 50, 50, 90}, {0, 20, 50, 45}, {0, 0, 100, 10}}, {3, 2, 1, 0}},
        {{{60, 0, 100, 40}, {0, 0, 50, 40}, {60, 50, 100, 90}, {0, 50, 50, 90}}, {1, 0, 3, 2}},
        // What nothing divides.
        {{{5, 5, 30, 30}, {0, 0, 20, 20}}, {1, 0}}};
    for (const auto& [boxes, expected] : rows)
        EXPECT_EQ(ReadingOrder(boxes), expected);
}

TEST(HostRules, EachTextHasALetterThatNoOtherHas) {
    using Texts = std::vector<std::wstring>;
    const std::tuple<Texts, Texts> rows[] = {
        {{L"Save...", L"Stop all", L"Stop", L"Stop"}, {L"&Save...", L"Stop &all", L"S&top", L"St&op"}},
        // One moves another, and that one a third, before it goes without.
        {{L"Ab", L"Bc", L"Cd", L"A"}, {L"A&b", L"B&c", L"C&d", L"&A"}},
        {{L"日本語", L"列...\tF1", L"列\tB"}, {L"日本語(&A)", L"列(&B)...\tF1", L"列(&C)\tB"}},
        {{L"R&&D", L"&Run", L"Été"}, {L"&R&&D", L"R&un", L"É&té"}}};
    for (const auto& [texts, expected] : rows)
        EXPECT_EQ(WithMnemonics(texts), expected);
    EXPECT_EQ(WithMnemonics({L"A&b", L"Bc", L"B"}, 1), (Texts{L"A&b", L"B&c", L"B(&A)"}));
    EXPECT_EQ(MnemonicOf(L"A&&b &c"), L'C');
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

namespace {

// "a121" is a change of a from 1 to 2 by gesture 1; - undoes, + does again, x and y forget the next of each. What is
// left: "a12 b01 | a34", the last after the line having been undone.
std::string Left(const std::string& script) {
    History history;
    std::istringstream words(script);
    for (std::string word; words >> word;) {
        switch (word[0]) {
        case '-': history.Undone(); break;
        case '+': history.Redone(); break;
        case 'x': history.ForgetUndo(); break;
        case 'y': history.ForgetRedo(); break;
        default:
            history.Record({{static_cast<wchar_t>(word[0])},
                            word[1] - '0' + 0.0,
                            word[2] - '0' + 0.0,
                            static_cast<unsigned>(word[3])});
        }
    }
    std::ostringstream text;
    const auto tell = [&](const Change& each) {
        text << static_cast<char>(each.what[0]) << each.from << each.to << ' ';
    };
    for (const auto done = history.Done(); const Change& each : std::vector(done.rbegin(), done.rend()))
        tell(each);
    for (text << "| "; history.ToRedo(); history.Redone())
        tell(*history.ToRedo());
    return text.str();
}

// The end of the stage, halves of a hundredth, beyond what fits.
TEST(HostRules, APlaceOfTheStageIsOneNumber) {
    using kx::host::StagePlace;
    const std::pair<StagePlace, StagePlace> rows[] = {{{0, 0}, {0, 0}},
                                                      {{-50000, 35000}, {-50000, 35000}},
                                                      {{0.01, -0.014}, {0.01, -0.01}},
                                                      {{1e9, -1e9}, {100000, -100000}}};
    for (const auto& [place, back] : rows)
        EXPECT_EQ(kx::host::StagePlaceOf(NumberOf(place)), back) << place.x << ' ' << place.y;
}

}  // namespace

TEST(HostRules, WhatWasAskedForCanBeTakenBack) {
    const std::pair<const char*, const char*> rows[] = {
        {"a121 b012", "a12 b01 | "},
        // A drag is one change, and none when it comes back; another thing between makes two of it.
        {"a121 a231 a341", "a14 | "},
        {"a121 a231 a311", "| "},
        {"a121 b011 a231", "a12 b01 a23 | "},
        {"a111", "| "},
        {"a121 b012 -", "a12 | b01 "},
        {"a121 b012 - - +", "a12 | b01 "},
        // What comes new goes on from where the undoing has led to.
        {"a121 b012 - a233", "a12 a23 | "},
        {"a121 b011 - a231", "a12 a23 | "},
        {"a121 b012 x", "a12 | "},
        {"a121 b012 a233 x", "a13 b01 | "},
        {"a121 a212 x", "| "},
        {"a121 a232 - - y", "| a13 "},
        {"a121 b012 - y", "a12 | "},
        {"a121 b012 - x", "| b01 "}};
    for (const auto& [script, left] : rows)
        EXPECT_EQ(Left(script), left) << script;
    History many;
    for (int i = 0; i < 60; ++i)
        many.Record({L"a", i + 0.0, i + 1.0, static_cast<unsigned>(i)});
    EXPECT_EQ(many.Done().size(), History::Most);
    EXPECT_EQ(many.Done().back().from, 10);
    EXPECT_EQ(many.LastOf(L"a"), 60);
    EXPECT_EQ(many.LastOf(L"b"), std::nullopt);
}

TEST(HostRules, UndoNeitherRaisesLightNorMovesWhatHasMovedSince) {
    constexpr std::optional<double> unknown;
    const std::tuple<double, double, std::optional<double>, Light, Verdict> rows[] = {
        {2, 1, 2, Light::None, Verdict::Ask},          {2, 1, unknown, Light::None, Verdict::Ask},
        {2, 1, 3, Light::None, Verdict::HasChanged},   {0.3, 0.1, 0.1 + 0.2, Light::None, Verdict::Ask},
        {2, 5, 2, Light::More, Verdict::Raises},       {5, 2, 5, Light::More, Verdict::Ask},
        {5, 2, 1, Light::More, Verdict::Raises},       {5, 2, 7, Light::More, Verdict::HasChanged},
        {5, 2, unknown, Light::More, Verdict::Raises}, {1, 0, unknown, Light::More, Verdict::Ask},
        {1, 0, 1, Light::Moves, Verdict::Raises}};
    for (const auto& [from, to, now, light, verdict] : rows)
        EXPECT_EQ(Judge({L"a", from, to}, now, light), verdict) << from << ' ' << to;
}

TEST(HostRules, AGestureLastsUntilTheNextPressOrAPauseOfTheWheel) {
    Gestures gestures;
    std::string numbers;
    const auto note = [&] { numbers += std::to_string(gestures.Now()); };
    for (const int time : {-1, -200, 300, 801, -1, 802}) {
        time == -1 ? gestures.Press() : gestures.Turn(static_cast<unsigned>(time));
        note();
    }
    // Acts of a control; 0 is none.
    for (const int act : {7, -1, 7, -1, 8, 0, -1, 7}) {
        act == -1 ? gestures.Press() : gestures.Belongs(static_cast<unsigned>(act));
        note();
    }
    EXPECT_EQ(numbers, "12234556577788");
}
