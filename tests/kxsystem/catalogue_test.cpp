#include <bench/bench.h>
#include <kxsystem/kx_catalogue.h>

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

void ExpectRefusal(const std::string& po, int line, const char* reason) {
    const Result result(po);
    EXPECT_FALSE(result.catalogue) << po.substr(0, 200);
    EXPECT_EQ(result.refusal.line, line) << po.substr(0, 200);
    EXPECT_STREQ(result.refusal.reason, reason) << po.substr(0, 200);
}

}  // namespace

TEST(Catalogue, Takes) {
    const std::string a = "msgctxt \"c\"\nmsgid \"a\"\nmsgstr ";
    // clang-format off
    const struct { const char* name; std::string po; const wchar_t* expected; } cases[] = {
        {"plain", c_header + c_entry, L"A"}, {"byte order mark", "\xEF\xBB\xBF" + c_header + c_entry, L"A"},
        {"ASCII under any name", "msgid \"\"\nmsgstr \"Content-Type: x; charset=CHARSET\\n\"\n" + c_entry, L"A"},
        {"no charset", "msgid \"\"\nmsgstr \"Language: de\\n\"\n" + c_entry, L"A"},
        {"charset in capitals", "msgid \"\"\nmsgstr \"X: y\\ncontent-TYPE: x; CHARSET=utf-8 \\n\"" + c_entry, L"A"},
        {"charset in another line", "msgid \"\"\nmsgstr \"X-Was: charset=latin1\\n\"" + c_entry, L"A"},
        {"CRLF", "msgctxt \"c\"\r\nmsgid \"a\"\r\nmsgstr \"\"\r\n\"A\"\r\n\"B\"\r\n", L"AB"},
        {"no newline at the end", "msgctxt \"c\" msgid \"a\" msgstr \"A\"", L"A"},
        {"many lines", "msgctxt \"\"\n\"c\"\nmsgid \"\"\n\n\"a\"\nmsgstr \"x\"\n  \"y\" \"z\"\n", L"xyz"},
        {"escapes", a + "\"\\n\\t\\r\\a\\b\\f\\v\\\\\\\"\"", L"\n\t\r\a\b\f\v\\\""},
        {"a hash in a text", a + "\"#, fuzzy\"", L"#, fuzzy"}, {"untranslated", a + "\"\"\n", L"-"},
        {"2, 3 and 4 bytes", a + "\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xAC\"", L"ä€\U0001F52C"},
        {"all comments", "# \"\n#. x\n#: y:1\n#, c-format\n#| msgid \"b\"\n" + c_entry + "# end", L"A"},
        {"fuzzy", "#, c-format, fuzzy\n" + c_entry, L"-"},
        {"fuzzy as a part of a word", "#, fuzzyless\n#. fuzzy\n" + c_entry, L"A"},
        {"fuzzy, then right", "#, fuzzy\n" + a + "\"X\"\n" + c_entry, L"A"},
        {"fuzzy and obsolete", "#, fuzzy\n#~ msgid \"b\"\n#~ msgstr \"B\"\n\n" + c_entry, L"A"},
        {"obsolete", c_header + "#~ msgctxt \"c\"\n#~ msgid \"a\"\n#~ msgstr \"A\"\n", L"-"},
        {"plural", "msgctxt \"c\"\nmsgid \"a\"\nmsgid_plural \"b\"\nmsgstr[0] \"A\"\nmsgstr[1] \"B\"\n", L"-"},
        {"after a plural", "msgid \"a\"\nmsgid_plural \"b\"\nmsgstr[0] \"X\"\nmsgstr[1] \"B\"\n" + c_entry, L"A"},
        {"other context", "msgctxt \"d\"\nmsgid \"a\"\nmsgstr \"A\"\n", L"-"},
        {"no context", "msgid \"a\"\nmsgstr \"A\"\n", L"-"},
    };
    // clang-format on
    for (const auto& c : cases) {
        const Result result(c.po);
        EXPECT_TRUE(result.catalogue) << c.name << ": line " << result.refusal.line << ", " << result.refusal.reason;
        EXPECT_EQ(result.Get(L"c", L"a"), c.expected) << c.name;
        EXPECT_TRUE(result.duplicates.empty()) << c.name;
    }
}

TEST(Catalogue, RefusesWithTheLine) {
    const std::string charset = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=";
    const std::string b = "msgid \"b\"", bs = b + "\nmsgid_plural \"bs\"", after = b + "\nmsgstr \"B\"\n";
    // The line, and what is on line 4 and after it.
    // clang-format off
    const std::pair<const char*, std::vector<std::pair<int, std::string>>> table[] = {
        {"a text that is not closed", {{5, b + "\nmsgstr \"B"}, {5, b + "\nmsgstr \"B\n\"\n" + after},
                                       {5, b + "\nmsgstr \"B\\"}, {5, b + "\nmsgstr \"B\\\n\""}}},
        {"an entry that is not complete", {
            {4, b}, {4, "msgctxt \"b\""}, {5, bs}, {5, b + "\nmsgstr"}, {5, b + "\n" + after},
            {5, b + "\n# here\nmsgstr \"B\"\n"}, {5, "msgctxt \"c\"\nmsgctxt \"c\"\n" + after}}},
        {"an unknown keyword", {{5, b + "\nmsg"}, {4, "domain \"x\"\n"}, {4, "MSGID \"b\"\n"}}},
        {"a misplaced msgstr", {{5, "msgctxt \"c\"\nmsgstr \"B\""}, {4, "msgstr \"B\""}, {6, bs + "\nmsgstr \"B\""}}},
        {"a misplaced msgid_plural", {{4, "msgid_plural \"B\"\n"}}},
        {"a misplaced msgstr[]", {{4, "msgstr[0] \"B\"\n"}}},
        {"a wrong number of a plural form", {{6, bs + "\nmsgstr[1] \"B\"\n"}, {6, bs + "\nmsgstr[0 \"B\"\n"}}},
        {"a keyword without a text", {{4, "msgid msgstr \"B\"\n"}, {4, "msgid 'b'\n"}}},
        {"a text without a keyword", {{5, "# c\n\"stray\"\n"}}},
        {"a wrong escape", {{4, "msgid \"b\\q\"\n"}, {4, "msgid \"b\\101\"\n"}, {4, "msgid \"b\\x41\"\n"}}},
        {"a charset other than UTF-8", {
            {4, charset + "ISO-8859-1\\n\"\n# \xC3\xA4"}, {4, charset + "UTF-16\"\n# \xC3\xA4\n" + after},
            {5, "#, fuzzy\n" + charset + "latin1\\n\"\n# \xC3\xA4"}}},
        // Alone, in two texts, cut, overlong, a surrogate, beyond all characters.
        {"not UTF-8", {
            {5, b + "\nmsgstr \"\xE4\"\n"}, {4, "msgid \"\xC3\"\n\"\xA4\""}, {4, "# \xE2\x82"}, {4, "# \xC0\xAF"},
            {4, "# \xE0\x80\xAF"}, {4, "# \xF0\x80\x80\xAF"}, {4, "# \xED\xA0\x80"}, {4, "# \xF4\x90\x80\x80"}}},
        {"a zero byte", {{4, "msgid \"b\0\""s}}}, {"a carriage return without a line feed", {{4, "# a\rmsgid"}}},
    };
    // clang-format on
    for (const auto& [reason, cases] : table)
        for (const auto& [line, rest] : cases)
            ExpectRefusal(c_entry + rest, line, reason);
    ExpectRefusal("", 1, "without any entry");
    ExpectRefusal("# nothing\n", 2, "without any entry");
    ExpectRefusal("\"stray\"\n" + after, 1, "a text without a keyword");
    ExpectRefusal("\xFF\xFE" + c_entry, 1, "not UTF-8");
    ExpectRefusal(std::string(CKxCatalogue::MaxSize, '\n') + c_entry, 1, "larger than 16 MB");
}

TEST(Catalogue, ConvertsLineByLine) {
    // What the platform does for a host: here "a" in two bytes is one of them, and a backslash may be the second.
    const auto convert = [](const std::string& charset, std::string_view line) -> std::optional<std::string> {
        if (charset != "x-twice") return std::nullopt;
        std::string utf8;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line[i] != '\x81') {
                utf8 += line[i];
            } else if (++i == line.size()) {
                return std::nullopt;
            } else {
                utf8 += "\xC3\xA4";
            }
        }
        return utf8;
    };
    const auto header = [](const std::string& name) {
        return "msgid \"\"\nmsgstr \"\"\n\"X: y\\n\"\n\"Content-Type: text/plain; Charset=" + name + "\\n\"\n";
    };
    const std::string entry = "msgctxt \"c\"\nmsgid \"a\"\nmsgstr \"\x81\\A";
    CKxCatalogueRemark refusal;
    std::vector<CKxCatalogueRemark> duplicates;
    const auto taken = CKxCatalogue::Read(header("X-Twice") + entry + "\"\n", refusal, duplicates, convert);
    ASSERT_TRUE(taken) << refusal.line << refusal.reason;
    EXPECT_EQ(*taken->Find(L"c", L"a"), L"äA");
    EXPECT_FALSE(CKxCatalogue::Read(header("x-twice") + entry + "\x81\n", refusal, duplicates, convert));
    EXPECT_EQ(refusal.line, 7);
    EXPECT_FALSE(CKxCatalogue::Read(header("x-once") + entry + "\"\n", refusal, duplicates, convert));
    EXPECT_EQ(refusal.line, 1);
}

TEST(Catalogue, ChoosesPluralsByTheHeadersRule) {
    // clang-format off
    const struct { const char* rule; std::vector<std::pair<unsigned long long, std::size_t>> forms; } table[] = {
        {"nplurals=2; plural=(n != 1);", {{0, 1}, {1, 0}, {2, 1}}}, {"nplurals=2; plural=n>1", {{0, 0}, {1, 0}, {2, 1}}},
        {"nplurals=1; plural=0;", {{0, 0}, {7, 0}}},
        {"nplurals=3; plural=n%10==1 && n%100!=11 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2;",
         {{1, 0}, {11, 2}, {21, 0}, {3, 1}, {13, 2}, {104, 1}, {0, 2}}},
        // What binds how: * before +, + before <, < before ==, && before ||, and ! before all; - from the left.
        {"nplurals=8; plural=1+n*2", {{2, 5}}}, {"nplurals=8; plural=n-2-1", {{5, 2}}}, {"nplurals=2; plural=2==1<n", {{5, 0}}},
        {"nplurals=2; plural=n || 0 && 0", {{1, 1}}}, {"nplurals=2; plural=!n==0", {{1, 1}, {0, 0}}}, {"nplurals=4; plural=n/0+n%0", {{9, 0}}},
        {"nplurals=2; plural=n", {{1, 1}, {2, 0}, {~0ULL, 0}}},
    };
    const char* const refused[] = {"", "nplurals=2", "nplurals=0; plural=0", "nplurals=9; plural=0", "nplurals=2; plural=n n", "nplurals=2; plural=(n",
                                   "nplurals=2; plural=n?1", "nplurals=2; plural=m", "nplurals=2; plural=1 +", "nplurals=2; plural=12345678901"};
    // clang-format on
    for (const auto& [rule, forms] : table) {
        const auto read = CKxPluralRule::Read(rule);
        ASSERT_TRUE(read) << rule;
        for (const auto& [number, form] : forms)
            EXPECT_EQ(read->FormFor(number), form) << rule << " for " << number;
    }
    for (const char* const rule : refused)
        EXPECT_FALSE(CKxPluralRule::Read(rule)) << rule;
    EXPECT_FALSE(CKxPluralRule::Read("nplurals=2; plural=" + std::string(40, '(') + "n" + std::string(40, ')')));
    EXPECT_FALSE(CKxPluralRule::Read("nplurals=2; plural=" + std::string(40, '!') + "n"));

    const std::string header = "msgid \"\"\nmsgstr \"Plural-Forms: nplurals=2; plural=n > 1;\\n\"\n";
    const std::string a = "msgctxt \"c\"\nmsgid \"a\"\nmsgid_plural \"as\"\n",
                      forms = "msgstr[0] \"A\"\nmsgstr[1] \"B\"\n";
    const auto find = [](const std::string& po, unsigned long long number) {
        const Result result(po);
        const std::wstring* const found = result.catalogue ? result.catalogue->Find(L"c", L"a", number) : nullptr;
        return found ? *found : L"-";
    };
    EXPECT_EQ(find(header + a + forms, 1), L"A");
    EXPECT_EQ(find(header + a + forms, 2), L"B");
    // Another number of forms, an empty one, no rule, not for certain: English then.
    for (const std::string& po :
         {header + a + "msgstr[0] \"A\"\n", header + a + forms + "msgstr[2] \"C\"\n",
          header + a + "msgstr[0] \"A\"\nmsgstr[1] \"\"\n", a + forms, header + "#, fuzzy\n" + a + forms})
        EXPECT_EQ(find(po, 1), L"-") << po;
}
