#include <bench/bench.h>

#include <commctrl.h>

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
        EXPECT_EQ(static_cast<bool>(Compare(expected, record.Entries())), row.fits)
            << row.expected << " " << row.actual;
    }
}

TEST(Record, FitsMessagesByTheirParts) {
    const Entry command = MakeEntry(WM_COMMAND, MAKEWPARAM(7, EN_CHANGE), 0x1234);
    const Entry scroll = MakeEntry(WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 65535), 0);
    const Entry own = MakeEntry(0x0500, 1, -2);
    const struct {
        Expected expected;
        const Entry& entry;
        bool fits;
    } rows[] = {
        {Command(8, EN_CHANGE), command, false},
        {Command(7, EN_CHANGE, HWND{}), command, false},
        {HScroll(TB_THUMBTRACK, -1), scroll, true},
        {HScroll(TB_THUMBTRACK, 1), scroll, false},
        {Command(TB_THUMBTRACK, -1), scroll, false},
        {Msg(0x0500, 2, Any), own, false},
        {Msg(0x0500, 1, 2), own, false},
        {Text(own.text), own, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.expected.Fits(row.entry), row.fits) << row.expected.Text() << " and " << row.entry.text;
}

TEST(Record, WritesCallsAsTheyRead) {
    EXPECT_EQ(CallText("OnChange", 1, 2.5, true, L"\u00B5m", std::string("x")),
              "OnChange(1, 2.5, true, \"\xC2\xB5m\", \"x\")");
}

TEST(Record, KeepsMessagesAndCallsInOneOrder) {
    Recorder record;
    RecordingParent parent(record);
    record.Clear();
    parent.Answer(0x0500, [&](WPARAM wParam, LPARAM) {
        record.Call("OnAsked", wParam);
        return 42;
    });
    parent.Answer(WM_COMMAND, 1);
    parent.Ignore({0x0502});
    parent.Watch({WM_SYSCOLORCHANGE});

    EXPECT_EQ(SendMessageW(parent.Window(), 0x0500, 5, 0), 42);
    EXPECT_EQ(SendMessageW(parent.Window(), WM_COMMAND, 7, 0), 1);
    SendMessageW(parent.Window(), 0x0502, 0, 0);
    SendMessageW(parent.Window(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_TRUE(record.Matches({Msg(0x0500, 5, 0), Call("OnAsked", 5), Command(7, 0), Msg(WM_SYSCOLORCHANGE)}));
    EXPECT_TRUE(record.Matches({})) << "a comparison empties the record";
}

}  // namespace
