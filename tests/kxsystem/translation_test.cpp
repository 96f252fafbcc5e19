#include <bench/bench.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

namespace {

struct Translation : testing::Test {
    Translation() {
        CKxLogFile::SetSink(
            [](const wchar_t* record, void* log) { static_cast<decltype(m_log)*>(log)->push_back(record); }, &m_log);
    }
    ~Translation() override {
        CKxLogFile::SetSink(nullptr, nullptr);
        CKxLocale::SetModuleLangId(0);
    }
    static bool Add(WORD language, std::string_view po) { return KX_AddCatalogue(language, po.data(), po.size()); }

    std::vector<std::wstring> m_log;
};

}  // namespace

TEST_F(Translation, FollowsTheLanguageAndFallsBackToTheText) {
    EXPECT_EQ(CKxLocale::GetModuleLangId(), GetUserDefaultUILanguage());
    EXPECT_EQ(CKxLocale::GetSecondaryLangID(), 0x0409);
    // German, Austrian, French, Spanish, Japanese, English, Finnish, none.
    static const std::pair<WORD, const wchar_t*> c_cases[] = {
        {0x0407, L"Fehler!"}, {0x0C07, L"Fehler!"}, {0x040C, L"Erreur\u00A0!"}, {0x0C0A, L"¡Error!"},
        {0x0411, L"エラー"},  {0x0409, L"Error!"},  {0x040B, L"Error!"},        {0x03FF, L"Error!"}};
    for (const auto& [language, error] : c_cases) {
        CKxLocale::SetModuleLangId(language);
        EXPECT_EQ(CKxLocale::GetModuleLangId(), language);
        EXPECT_STREQ(KX_GetTranslation(L"Error!", L"devgui_base"), error) << language;
        EXPECT_STREQ(KX_GetTranslation(L"Error!", L"a remark", L"devgui_base"), error);
    }
    CKxLocale::SetModuleLangId(0);
    EXPECT_EQ(CKxLocale::GetModuleLangId(), GetUserDefaultUILanguage());
    CKxLocale::SetModuleLangId(LANG_GERMAN);
    EXPECT_STREQ(KX_GetTranslation(L"Error!", L"devgui_none"), L"Error!");
    EXPECT_STREQ(KX_GetTranslation(L"Error!", nullptr), L"Error!");
    EXPECT_STREQ(KX_GetTranslation(L"Error?", L"devgui_base"), L"Error?");
    EXPECT_STREQ(KX_GetTranslation(nullptr, L"devgui_base"), L"");
    EXPECT_STREQ(KX_GetTranslation(nullptr, nullptr, nullptr), L"");
    EXPECT_TRUE(m_log.empty());
}

TEST_F(Translation, AddedCataloguesGoFirst) {
    const std::string go = "msgctxt \"host\"\nmsgid \"Go\"\nmsgstr ";
    CKxLocale::SetModuleLangId(LANG_GERMAN);
    ASSERT_TRUE(Add(LANG_GERMAN,
                    go + "\"Los\"\nmsgctxt \"devgui_radio\"\nmsgid \"You have to choose value.\"\nmsgstr \"Eins\""));
    EXPECT_STREQ(KX_GetTranslation(L"Go", L"host"), L"Los");
    EXPECT_STREQ(KX_GetTranslation(L"Error!", L"devgui_base"), L"Fehler!");
    ASSERT_TRUE(Add(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN_SWISS), go + "\"Hopp\""));
    EXPECT_STREQ(KX_GetTranslation(L"Go", L"host"), L"Hopp");
    EXPECT_STREQ(KX_GetTranslation(L"You have to choose value.", L"devgui_radio"), L"Eins");
    // A language that the tree has not, and one that nobody has asked for yet.
    ASSERT_TRUE(Add(LANG_CZECH, go + "\"Start\""));
    CKxLocale::SetModuleLangId(LANG_CZECH);
    EXPECT_STREQ(KX_GetTranslation(L"Go", L"host"), L"Start");
    CKxLocale::SetModuleLangId(LANG_FRENCH);
    EXPECT_STREQ(KX_GetTranslation(L"Go", L"host"), L"Go");
    EXPECT_TRUE(m_log.empty());
}

TEST_F(Translation, KnowsOtherCharsetsAndPlurals) {
    // A text of one character in its charset, and what it is.
    static const std::tuple<const char*, const char*, const wchar_t*> c_charsets[] = {
        {"ISO-8859-2", "\xB1", L"\u0105"}, {"windows-1251", "\xC4", L"\u0414"}, {"CP1252", "\x80", L"\u20AC"},
        {"KOI8-R", "\xC4", L"\u0434"},     {"EUC-JP", "\xB8\xF7", L"\u5149"},   {"Shift_JIS", "\x95\x5C", L"\u8868"}};
    const auto po = [](const std::string& charset, const std::string& text) {
        return "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=" + charset +
               "\\n\"\nmsgctxt \"host\"\nmsgid \"x\"\nmsgstr \"" + text + "\"\n";
    };
    CKxLocale::SetModuleLangId(LANG_POLISH);
    for (const auto& [charset, text, expected] : c_charsets) {
        EXPECT_TRUE(Add(LANG_POLISH, po(charset, text))) << charset;
        EXPECT_STREQ(KX_GetTranslation(L"x", L"host"), expected) << charset;
    }
    EXPECT_TRUE(m_log.empty());
    for (const auto& [charset, text] :
         {std::pair{"EUC-JP", "\x8F\xB0\xA1"}, {"EUC-JP", "\xB8"}, {"x-own", "\xB8"}, {"ISO-8859-99", "\xB8"}})
        EXPECT_FALSE(Add(LANG_POLISH, po(charset, text))) << charset;
    ASSERT_EQ(m_log.size(), 4U);
    EXPECT_NE(m_log[0].find(L"line 5: not in its charset"), std::wstring::npos) << m_log[0].c_str();

    ASSERT_TRUE(
        Add(LANG_POLISH,
            "msgid \"\"\nmsgstr \"Plural-Forms: nplurals=2; plural=n!=1;\\n\"\nmsgctxt \"host\"\nmsgid \"%u plane\"\n"
            "msgid_plural \"%u planes\"\nmsgstr[0] \"one\"\nmsgstr[1] \"many\"\n"));
    EXPECT_STREQ(KX_GetTranslation(L"%u plane", L"%u planes", 1, L"host"), L"one");
    EXPECT_STREQ(KX_GetTranslation(L"%u plane", L"%u planes", 5, L"host"), L"many");
    EXPECT_STREQ(KX_GetTranslation(L"%u line", L"%u lines", 1, L"host"), L"%u line");
    EXPECT_STREQ(KX_GetTranslation(L"%u line", L"%u lines", 0, nullptr), L"%u lines");
    EXPECT_STREQ(KX_GetTranslation(L"%u line", nullptr, 0, nullptr), L"");
}

TEST_F(Translation, FaultyCataloguesAreLogged) {
    CKxLocale::SetModuleLangId(LANG_DANISH);
    ASSERT_TRUE(
        Add(LANG_DANISH, "msgctxt \"h\"\nmsgid \"a\"\nmsgstr \"1\"\nmsgctxt \"h\"\nmsgid \"a\"\nmsgstr \"2\"\n"));
    EXPECT_STREQ(KX_GetTranslation(L"a", L"h"), L"1");
    EXPECT_FALSE(Add(LANG_DANISH, "msgctxt \"host\"\nmsgid \"Half\"\nmsgstr \"Halv\"\n\nmsgid \"b"));
    EXPECT_STREQ(KX_GetTranslation(L"Half", L"host"), L"Half");
    EXPECT_FALSE(Add(LANG_DANISH, ""));
    EXPECT_FALSE(KX_AddCatalogue(LANG_DANISH, nullptr, 100));
    EXPECT_FALSE(Add(LANG_NEUTRAL, "msgid \"a\"\nmsgstr \"A\"\n"));
    ASSERT_EQ(m_log.size(), 5u);
    EXPECT_TRUE(m_log[0].ends_with(L"0x06, line 4: a second entry for one text")) << m_log[0];
    EXPECT_TRUE(m_log[1].ends_with(L"0x06 is refused, line 5: a text that is not closed")) << m_log[1];
}
