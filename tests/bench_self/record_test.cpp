#include <bench/bench.h>

namespace {

using namespace kx::test;

TEST(Record, ComparesEntryByEntry) {
    // One letter an entry; one before a question mark need not come.
    const struct {
        const char *expected, *actual;
        bool fits;
    } rows[] = {
        {"", "", true},        {"ab", "a", false},   {"a", "ab", false}, {"ab", "ba", false},
        {"ab?c", "abc", true}, {"ab?c", "ac", true}, {"a?a", "a", true}, {"ab?c", "acb", false},
    };
    for (const auto& row : rows) {
        std::vector<Expected> expected;
        for (const char letter : std::string_view(row.expected)) {
            if (letter != '?') expected.push_back(Text({letter}));
            if (letter == '?') expected.back() = expected.back().Optional();
        }
        Recorder record;
        for (const char letter : std::string_view(row.actual))
            record.Text({letter});
        EXPECT_EQ(bool(Compare(expected, record.Entries())), row.fits) << row.expected << " " << row.actual;
    }
    const Entry command = MakeEntry(WM_COMMAND, MAKEWPARAM(7, EN_CHANGE), 0x1234), own = MakeEntry(0x0500, 1, -2);
    EXPECT_FALSE(Command(8, EN_CHANGE).Fits(command) || Command(7, EN_UPDATE).Fits(command) ||
                 Command(7, EN_CHANGE, HWND{}).Fits(command) || HScroll(7).Fits(command) || Msg(0x0500, 2).Fits(own) ||
                 Msg(0x0500, 1, 2).Fits(own) || Text(own.text).Fits(own));
}

}  // namespace
