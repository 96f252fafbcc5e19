#include <bench/bench.h>

#include <commctrl.h>

namespace {

using namespace kx::test;

std::vector<Entry> Entries(std::initializer_list<const char*> texts) {
    Recorder record;
    for (const char* text : texts)
        record.Text(text);
    return record.Entries();
}

TEST(Record, ComparesEntryByEntry) {
    const Expected a = Text("a"), b = Text("b"), c = Text("c");
    const struct {
        const char* name;
        std::vector<Expected> expected;
        std::vector<Entry> actual;
        bool fits;
    } rows[] = {
        {"both empty", {}, {}, true},
        {"same", {a, b}, Entries({"a", "b"}), true},
        {"missing at the end", {a, b}, Entries({"a"}), false},
        {"extra", {a}, Entries({"a", "b"}), false},
        {"other order", {a, b}, Entries({"b", "a"}), false},
        {"optional comes", {a, b.Optional(), c}, Entries({"a", "b", "c"}), true},
        {"optional stays away", {a, b.Optional(), c}, Entries({"a", "c"}), true},
        {"optional before the same entry", {a.Optional(), a}, Entries({"a"}), true},
        {"optional in the wrong place", {a, b.Optional(), c}, Entries({"a", "c", "b"}), false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(static_cast<bool>(Compare(row.expected, row.actual)), row.fits) << row.name;
}

TEST(Record, FitsMessagesByTheirParts) {
    const auto from = reinterpret_cast<HWND>(LPARAM{0x1234});
    const Entry command = MakeEntry(WM_COMMAND, MAKEWPARAM(7, EN_CHANGE), 0x1234);
    const Entry scroll = MakeEntry(WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 65535), 0);
    const Entry own = MakeEntry(0x0500, 1, -2);
    const struct {
        Expected expected;
        const Entry& entry;
        bool fits;
    } rows[] = {
        {Command(7, EN_CHANGE), command, true},
        {Command(7, EN_CHANGE, from), command, true},
        {Command(8, EN_CHANGE), command, false},
        {Command(7, EN_CHANGE, HWND{}), command, false},
        {HScroll(TB_THUMBTRACK, -1), scroll, true},
        {HScroll(TB_THUMBTRACK, 1), scroll, false},
        {Command(TB_THUMBTRACK, -1), scroll, false},
        {Msg(0x0500, Any, -2), own, true},
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
