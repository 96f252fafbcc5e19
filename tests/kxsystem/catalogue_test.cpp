#include <kxsystem/kx_catalogue.h>

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

namespace {

struct Result {
    CKxCatalogueRemark refusal;
    std::vector<CKxCatalogueRemark> duplicates;
    std::optional<CKxCatalogue> catalogue;

    explicit Result(std::string_view po) : catalogue(CKxCatalogue::Read(po, refusal, duplicates)) {}

    // The translation; "-" if there is none.
    std::wstring Get(std::wstring_view context, std::wstring_view text) const {
        const std::wstring* const found = catalogue ? catalogue->Find(context, text) : nullptr;
        return found ? *found : L"-";
    }
};

const std::string c_header = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";
const std::string c_entry = "msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"A\"\n";

}  // namespace

TEST(Catalogue, Takes) {
    static const struct {
        const char* name;
        std::string po;
        const wchar_t* expected;
    } c_cases[] = {
        {"plain", c_header + c_entry, L"A"},
        {"no header", c_entry, L"A"},
        {"no charset", "msgid \"\"\nmsgstr \"Language: de\\n\"\n" + c_entry, L"A"},
        {"charset in other letters",
         "msgid \"\"\nmsgstr \"X: y\\ncontent-TYPE: text/plain; CHARSET=utf-8 \\n\"" + c_entry, L"A"},
        {"charset in another line", "msgid \"\"\nmsgstr \"X-Was: charset=latin1\\n\"" + c_entry, L"A"},
        {"byte order mark", "\xEF\xBB\xBF" + c_header + c_entry, L"A"},
        {"CRLF", "msgctxt \"c\"\r\nmsgid \"a\"\r\nmsgstr \"\"\r\n\"A\"\r\n\"B\"\r\n", L"AB"},
        {"no newline at the end", "msgctxt \"c\" msgid \"a\" msgstr \"A\"", L"A"},
        {"many lines", "msgctxt \"\"\n\"c\"\nmsgid \"\"\n\n\"a\"\nmsgstr \"x\"\n  \"y\" \"z\"\n", L"xyz"},
        {"escapes", "msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"\\n\\t\\r\\a\\b\\f\\v\\\\\\\"\"", L"\n\t\r\a\b\f\v\\\""},
        {"a hash in a text", "msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"#, fuzzy\"", L"#, fuzzy"},
        {"2, 3 and 4 bytes", "msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xAC\"",
         L"ä€\U0001F52C"},
        {"all comments", "# \"\n#. x\n#: y:1\n#, c-format\n#| msgid \"b\"\n" + c_entry + "# end", L"A"},
        {"fuzzy", "#, c-format, fuzzy\n" + c_entry, L"-"},
        {"fuzzy as a part of a word", "#, fuzzyless\n#. fuzzy\n" + c_entry, L"A"},
        {"fuzzy for one entry only", "#, fuzzy\nmsgid \"b\"\nmsgstr \"B\"\n" + c_entry, L"A"},
        {"fuzzy, then right", "#, fuzzy\nmsgctxt \"c\"\nmsgid \"a\"\nmsgstr \"X\"\n" + c_entry, L"A"},
        {"untranslated", "msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"\"\n", L"-"},
        {"obsolete", c_header + "#~ msgctxt \"c\"\n#~ msgid \"a\"\n#~ msgstr \"A\"\n", L"-"},
        {"fuzzy and obsolete", "#, fuzzy\n#~ msgid \"b\"\n#~ msgstr \"B\"\n\n" + c_entry, L"A"},
        {"plural", "msgctxt \"c\"\nmsgid \"a\"\nmsgid_plural \"b\"\nmsgstr[0] \"A\"\nmsgstr[1] \"B\"\n", L"-"},
        {"after a plural", "msgid \"a\"\nmsgid_plural \"b\"\nmsgstr[0] \"X\"\nmsgstr[1] \"B\"\n" + c_entry, L"A"},
        {"other context", "msgctxt \"d\"\nmsgid \"a\"\nmsgstr \"A\"\n", L"-"},
        {"no context", "msgid \"a\"\nmsgstr \"A\"\n", L"-"},
    };
    for (const auto& c : c_cases) {
        const Result result(c.po);
        EXPECT_TRUE(result.catalogue) << c.name << ": line " << result.refusal.line << ", " << result.refusal.reason;
        EXPECT_EQ(result.Get(L"c", L"a"), c.expected) << c.name;
        EXPECT_TRUE(result.duplicates.empty()) << c.name;
    }
}

TEST(Catalogue, RefusesWithTheLine) {
    const std::string charset = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=";
    const std::string after = "msgid \"b\"\nmsgstr \"B\"\n";
    const struct {
        std::string po;
        int line;
        const char* reason;
    } cases[] = {
        {"", 1, "without any entry"},
        {"# nothing\n", 2, "without any entry"},
        {c_entry + "msgid \"b\"\nmsgstr \"B", 5, "a text that is not closed"},
        {c_entry + "msgid \"b\"\nmsgstr \"B\n\"\n" + after, 5, "a text that is not closed"},
        {c_entry + "msgid \"b\"\nmsgstr \"B\\", 5, "a text that is not closed"},
        {c_entry + "msgid \"b\"\nmsgstr \"B\\\n\"", 5, "a text that is not closed"},
        {c_entry + "msgid \"b\"", 4, "an entry that is not complete"},
        {c_entry + "msgid \"b\"\nmsgstr", 5, "an entry that is not complete"},
        {c_entry + "msgctxt \"b\"", 4, "an entry that is not complete"},
        {c_entry + "msgid \"b\"\nmsgid_plural \"bs\"", 5, "an entry that is not complete"},
        {c_entry + "msgid \"b\"\nmsg", 5, "an unknown keyword"},
        {c_entry + "msgid \"b\"\n" + after, 5, "an entry that is not complete"},
        {c_entry + "msgid \"b\"\n# here\nmsgstr \"B\"\n", 5, "an entry that is not complete"},
        {"msgctxt \"c\"\nmsgctxt \"c\"\n" + after, 2, "an entry that is not complete"},
        {"msgctxt \"c\"\nmsgstr \"B\"\n", 2, "a misplaced msgstr"},
        {c_entry + "msgstr \"B\"\n", 4, "a misplaced msgstr"},
        {c_entry + "msgid_plural \"B\"\n", 4, "a misplaced msgid_plural"},
        {c_entry + "msgstr[0] \"B\"\n", 4, "a misplaced msgstr[]"},
        {"msgid \"b\"\nmsgid_plural \"bs\"\nmsgstr \"B\"\n", 3, "a misplaced msgstr"},
        {"msgid \"b\"\nmsgid_plural \"bs\"\nmsgstr[1] \"B\"\n", 3, "a wrong number of a plural form"},
        {"msgid \"b\"\nmsgid_plural \"bs\"\nmsgstr[0 \"B\"\n", 3, "a wrong number of a plural form"},
        {"msgid msgstr \"B\"\n", 1, "a keyword without a text"},
        {"\"stray\"\n" + after, 1, "a text without a keyword"},
        {c_entry + "# c\n\"stray\"\n", 5, "a text without a keyword"},
        {c_entry + "domain \"x\"\n", 4, "an unknown keyword"},
        {c_entry + "msgid 'b'\n", 4, "a keyword without a text"},
        {c_entry + "MSGID \"b\"\n", 4, "an unknown keyword"},
        {c_entry + "msgid \"b\\q\"\n", 4, "a wrong escape"},
        {c_entry + "msgid \"b\\101\"\n", 4, "a wrong escape"},
        {c_entry + "msgid \"b\\x41\"\n", 4, "a wrong escape"},
        {charset + "ISO-8859-1\\n\"\n", 1, "a charset other than UTF-8"},
        {charset + "CHARSET\\n\"\n", 1, "a charset other than UTF-8"},
        {c_entry + charset + "UTF-16\"\n" + after, 4, "a charset other than UTF-8"},
        {"#, fuzzy\n" + charset + "latin1\\n\"\n", 2, "a charset other than UTF-8"},
        {c_entry + "msgid \"b\"\nmsgstr \"\xE4\"\n", 5, "not UTF-8"},
        {c_entry + "# \xE4\n", 4, "not UTF-8"},
        {c_entry + "# overlong \xC0\xAF", 4, "not UTF-8"},
        {c_entry + "# overlong \xE0\x80\xAF", 4, "not UTF-8"},
        {c_entry + "# overlong \xF0\x80\x80\xAF", 4, "not UTF-8"},
        {c_entry + "# surrogate \xED\xA0\x80", 4, "not UTF-8"},
        {c_entry + "# too large \xF4\x90\x80\x80", 4, "not UTF-8"},
        {c_entry + "# cut \xE2\x82", 4, "not UTF-8"},
        {c_entry + "msgid \"\xC3\"\n\"\xA4\"", 4, "not UTF-8"},
        {"\xFF\xFE" + c_entry, 1, "not UTF-8"},
        {c_entry + "msgid \"b\0\""s, 4, "a zero byte"},
        {c_entry + "# a\rmsgid", 4, "a carriage return without a line feed"},
        {std::string(CKxCatalogue::MaxSize, '\n') + c_entry, 1, "larger than 16 MB"},
    };
    for (const auto& c : cases) {
        const Result result(c.po);
        const std::string shown = c.po.substr(0, 200);
        EXPECT_FALSE(result.catalogue) << shown;
        EXPECT_EQ(result.refusal.line, c.line) << shown;
        EXPECT_STREQ(result.refusal.reason, c.reason) << shown;
    }
}

TEST(Catalogue, TheFirstOfDuplicatesHolds) {
    const Result result(c_entry + "\nmsgctxt \"c\"\nmsgid \"a\"\nmsgstr \"X\"\n\n# again\n" + c_entry +
                        "msgctxt \"d\"\nmsgid \"a\"\nmsgstr \"D\"\n");
    EXPECT_EQ(result.Get(L"c", L"a"), L"A");
    EXPECT_EQ(result.Get(L"d", L"a"), L"D");
    ASSERT_EQ(result.duplicates.size(), 2u);
    EXPECT_EQ(result.duplicates[0].line, 5);
    EXPECT_EQ(result.duplicates[1].line, 10);
}

TEST(Catalogue, AddMissingKeepsItsOwn) {
    Result mine(c_entry + "msgid \"b\"\nmsgstr \"B\"\n"),
        other("msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"X\"\nmsgid \"z\"\nmsgstr \"Z\"\n");
    mine.catalogue->AddMissing(std::move(*other.catalogue));
    EXPECT_EQ(mine.Get(L"c", L"a"), L"A");
    EXPECT_EQ(mine.Get(L"", L"b"), L"B");
    EXPECT_EQ(mine.Get(L"", L"z"), L"Z");
}
