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
    for (const std::size_t length : std::initializer_list<std::size_t>{0, 1, 6, 7, 8, std::string::npos}) {
        const std::wstring expected = std::wstring(L"<12;ab>").substr(0, length);
        CKxStringW wide(L"what was there before, and is longer");
        wide.Format(length, L"<%d;%ls>", 12, L"ab");
        EXPECT_EQ(wide.str(), expected);
        CKxStringA narrow("what was there before, and is longer");
        narrow.Format(length, "<%d;%s>", 12, "ab");
        EXPECT_EQ(std::wstring(narrow.str().begin(), narrow.str().end()), expected);
    }
}

TEST(CKxString, FormatsItselfIntoItself) {
    CKxStringW text(L"a text that is longer than what fits into the object itself");
    const std::wstring before = text.str();
    text.Format(200, L"[%ls]", text.c_str());
    EXPECT_EQ(text.str(), L"[" + before + L"]");
}
