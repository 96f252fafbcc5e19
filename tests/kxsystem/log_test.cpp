#include <kxsystem/kx_log.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Records = std::vector<std::wstring>;

class Log : public testing::Test {
protected:
    void SetUp() override { CKxLogFile::SetSink(Keep, &m_records); }
    void TearDown() override { CKxLogFile::SetSink(nullptr, nullptr); }

    static void Keep(const wchar_t* record, void* context) { static_cast<Records*>(context)->push_back(record); }

    Records m_records;
};

}  // namespace

TEST_F(Log, OpensWithThePlaceOnce) {
    CKxLogFile::Location(L"devgui_base", 230);
    CKxLogFile::Line(L"zoom %g of %ls", 1.5, L"Größe");
    CKxLogFile::Line(L"no place");
    const int line = __LINE__ + 1;
    KX_LOG(L"here", L"text");
    CKxLogFile::Location(nullptr, -1);
    CKxLogFile::Line(nullptr);
    CKxLogFile::Location(std::wstring(100, L'x').c_str(), 1);
    CKxLogFile::Line(L"%ls", L"two\nlines\r\n");
    EXPECT_EQ(m_records, (Records{L"devgui_base(230): zoom 1.5 of Größe", L"?(0): no place",
                                  L"here(" + std::to_wstring(line) + L"): text", L"?(-1): ",
                                  std::wstring(63, L'x') + L"(1): two lines  "}));
}

TEST_F(Log, DoesNotKeepTheSourceKey) {
    std::wstring source = L"gone";
    CKxLogFile::Location(source.c_str(), 1);
    source.assign(L"else");
    CKxLogFile::Line(L"text");
    EXPECT_EQ(m_records, Records{L"gone(1): text"});
}

TEST_F(Log, ThePlaceBelongsToTheThread) {
    CKxLogFile::Location(L"main", 1);
    std::thread([] { CKxLogFile::Line(L"other"); }).join();
    CKxLogFile::Line(L"mine");
    EXPECT_EQ(m_records, (Records{L"?(0): other", L"main(1): mine"}));
}

TEST_F(Log, CutsAt1100Characters) {
    static const struct {
        std::size_t length;
        const wchar_t* tail;
        std::size_t kept;
    } c_cases[] = {{1099, L"", 1099},   {1100, L"", 1100},           {1101, L"", 1100},
                   {100000, L"", 1100}, {1098, L"\U0001F52C", 1100}, {1099, L"\U0001F52C", 1099}};
    for (const auto& c : c_cases) {
        m_records.clear();
        const std::wstring text = std::wstring(c.length, L'x') + c.tail;
        KX_LOG(L"s", L"%ls", text.c_str());
        ASSERT_EQ(m_records.size(), 1u);
        const std::wstring& record = m_records.front();
        EXPECT_EQ(record.substr(record.find(L' ') + 1), text.substr(0, c.kept)) << c.length;
    }
}

TEST_F(Log, AThrowingSinkCostsOnlyItsRecord) {
    CKxLogFile::SetSink([](const wchar_t*, void*) { throw std::runtime_error("full disk"); }, nullptr);
    EXPECT_NO_THROW(KX_LOG(L"s", L"lost"));
    CKxLogFile::SetSink(Keep, &m_records);
    CKxLogFile::Line(L"kept");
    EXPECT_EQ(m_records, Records{L"?(0): kept"});
}

TEST_F(Log, WhatTheSinkLogsIsDropped) {
    // Without the rule, the sink would call itself without end: it logs only while it has been called a few times.
    CKxLogFile::SetSink(
        [](const wchar_t* record, void* context) {
            Keep(record, context);
            if (static_cast<Records*>(context)->size() < 5) {
                CKxLogFile::Location(L"sink", 1);
                CKxLogFile::Line(L"from the sink");
            }
        },
        &m_records);
    CKxLogFile::Line(L"first");
    CKxLogFile::Line(L"second");
    EXPECT_EQ(m_records, (Records{L"?(0): first", L"?(0): second"}));
}

TEST_F(Log, ASinkMayReplaceItself) {
    CKxLogFile::SetSink([](const wchar_t*, void* context) { CKxLogFile::SetSink(Keep, context); }, &m_records);
    CKxLogFile::Line(L"first");
    CKxLogFile::Line(L"second");
    EXPECT_EQ(m_records, Records{L"?(0): second"});
}

TEST_F(Log, OneRecordAtATimeReachesTheSink) {
    constexpr std::size_t c_each = 500;
    const auto write = [] {
        for (std::size_t i = 0; i < c_each; ++i)
            KX_LOG(L"thread", L"%d", 7);
    };
    std::thread a(write), b(write), c(write);
    a.join();
    b.join();
    c.join();
    ASSERT_EQ(m_records.size(), 3 * c_each);
    for (const std::wstring& record : m_records)
        EXPECT_EQ(record, m_records.front());
}

TEST(LogDetail, IsOffAtFirst) {
    EXPECT_FALSE(CKxLogFile::Detail());
    CKxLogFile::SetDetail(true);
    EXPECT_TRUE(CKxLogFile::Detail());
    CKxLogFile::SetDetail(false);
    EXPECT_FALSE(CKxLogFile::Detail());
}
