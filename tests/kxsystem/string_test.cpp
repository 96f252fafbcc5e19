#include <kxsystem/kx_string.h>

#include <gtest/gtest.h>

TEST(CKxString, NullCountsAsEmpty) {
    const wchar_t* const null = nullptr;
    CKxStringW text(null);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_TRUE(text == null);
    EXPECT_FALSE(CKxStringW(L"a") == null);
    text += null;
    text += L"b";
    EXPECT_STREQ(text, L"b");
    text.Format(10, null);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CKxString, FormatCuts) {
    static const struct {
        std::size_t maxLength;
        const wchar_t* expected;
    } c_cases[] = {{0, L""},        {1, L"<"},       {4, L"<12;"},      {6, L"<12;ab"},
                   {7, L"<12;ab>"}, {8, L"<12;ab>"}, {100, L"<12;ab>"}, {static_cast<std::size_t>(-1), L"<12;ab>"}};
    for (const auto& c : c_cases) {
        CKxStringW wide(L"what was there before, and is longer");
        wide.Format(c.maxLength, L"<%d;%ls>", 12, L"ab");
        EXPECT_STREQ(wide, c.expected) << c.maxLength;
        CKxStringA narrow("what was there before, and is longer");
        narrow.Format(c.maxLength, "<%d;%s>", 12, "ab");
        EXPECT_EQ(std::wstring(narrow.str().begin(), narrow.str().end()), c.expected) << c.maxLength;
    }
}

TEST(CKxString, FormatsItselfIntoItself) {
    CKxStringW text(L"a text that is longer than what fits into the object itself");
    const std::wstring before = text.str();
    text.Format(200, L"[%ls]", text.c_str());
    EXPECT_EQ(text.str(), L"[" + before + L"]");
}
