// What typed parts find, what is remarked on positions, what has changed.
#include <bench/bench.h>
#include <kxdevui/optics/objectivecard_rules.h>
#include <kxdevui/setup/setup_rules.h>

namespace {

using namespace kx::setup;
using kx::test::Narrow;

const Entry oil{L"a", L"Plan Apo 60x/1.40 Oil", L"Oil", 60, 1.4, 130, L"0.17 mm", 60};
const Entry water{L"b", L"Plan Apo 25x/1.10 Water", L"Water", 25, 1.1, 2000, L"", 75};
const Entry dry{L"c", L"Plan Apo 20x/0.75", L"Air", 20, 0.75, 1000, L"", 60};
const Entry other{L"", L"Old 10x", L"", 0, 0, 0, L"", 0, false};
const Entry none;

TEST(SetupRules, FindWhatIsTypedAndChosen) {
    // clang-format off
    const std::pair<Search, const char*> cases[] = {
        {{}, "abc"}, {{L"APO"}, "abc"}, {{L"apo oil"}, "a"}, {{L"oil plan"}, "a"}, {{L" 60x "}, "a"},
        {{L"1,4"}, "a"}, {{L"\uFF12\uFF10x"}, "c"}, {{L"x\u3000wat"}, "b"}, {{L"oils"}, ""}, {{L"60 25"}, ""},
        {{L"", 20}, "c"}, {{L"", 0, 1.1}, "ab"}, {{L"", 0, 0.75, L"Air"}, "c"}, {{L"60", 25}, ""},
        {{L"", 0, 0, L"Oil"}, "a"},
    };
    // clang-format on
    for (const auto& [search, expected] : cases) {
        std::string found;
        for (const Entry& each : {oil, water, dry})
            if (IsFound(each, search)) found += Narrow(each.key);
        EXPECT_EQ(found, expected) << Narrow(search.typed) << ' ' << search.magnification << ' ' << search.NA;
    }
    const std::vector<Entry> all{oil, dry, oil, other};
    EXPECT_EQ(MagnificationsOf(all), (std::vector<double>{20, 60}));
    EXPECT_EQ(AperturesOf(all), (std::vector<double>{0.75, 1.4}));
    EXPECT_EQ(GroupsOf(all), (std::vector<std::wstring>{L"Oil", L"Air"}));
}

TEST(SetupRules, RemarkOnPositions) {
    using R = Remark;
    const std::tuple<std::vector<Entry>, std::size_t, std::vector<Remark>> cases[] = {
        {{oil, none}, 1, {{R::Empty}}},
        {{oil, none}, 2, {}},
        {{oil, dry, other}, 2, {{R::Unknown}}},
        {{other, oil, other}, 2, {{R::Unknown}, {R::Duplicate, 0}}},
        {{oil, dry, oil}, 0, {{R::Duplicate, 2}}},
        // Around the ring, over empty positions; not with one neighbour alone, nor beside one that nobody knows.
        {{oil, none, dry, none, water}, 2, {{R::DryAmongWet}}},
        {{dry, oil, water}, 0, {{R::DryAmongWet}}},
        {{dry, oil}, 0, {}},
        {{oil, dry, other}, 1, {}},
        {{oil, dry, dry}, 1, {{R::Duplicate, 2}}},
        {{dry}, 0, {}},
        {{water, dry, oil, none}, 0, {{R::OtherParfocal}}},
        {{water, dry}, 1, {}},
    };
    for (const auto& [positions, at, remarks] : cases)
        EXPECT_EQ(RemarksOn(positions, at), remarks) << at << " of " << positions.size();
    EXPECT_EQ(TextOf({R::Duplicate, 2}), L"Also in position 3");
    EXPECT_EQ(DetailsOf(oil), L"Working distance: 130 µm\nCover glass: 0.17 mm\nParfocal distance: 60 mm");
    EXPECT_EQ(DetailsOf(other) + kx::ui::LengthText(15700).str(), L"15.7 mm");
}

TEST(SetupRules, TellWhatHasChanged) {
    Entry renamed = oil;
    renamed.name = L"another name";
    EXPECT_EQ(Changed(std::vector{oil, none, dry, other}, std::vector{renamed, water, none, other}),
              (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(FilterNamed(L"390/40 482/25").group, L"390/40, 482/25");
    EXPECT_FALSE(FilterNamed(L"x").known);
}

}  // namespace
