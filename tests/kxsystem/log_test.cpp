#include <bench/bench.h>
#include <kxsystem/kx_log.h>

#include <stdexcept>
#include <thread>

namespace {

using Records = std::vector<std::wstring>;

struct Log : testing::Test {
    void SetUp() override { CKxLogFile::SetSink(Keep, &m_records); }
    void TearDown() override { CKxLogFile::SetSink(nullptr, nullptr); }
    static void Keep(const wchar_t* record, void* context) { static_cast<Records*>(context)->push_back(record); }

    Records m_records;
};

}  // namespace

TEST_F(Log, OpensWithThePlaceOnce) {
    EXPECT_FALSE(CKxLogFile::Detail()) << "off at first";
    std::wstring source = L"devgui_base";
    CKxLogFile::Location(source.c_str(), 230);
    source.assign(L"else");
    std::thread([] { CKxLogFile::Line(L"the place belongs to the thread"); }).join();
    CKxLogFile::Line(L"zoom %g of %ls", 1.5, L"Größe");
    CKxLogFile::Line(L"no place");
    const int line = __LINE__ + 1;
    KX_LOG(L"here", L"text");
    CKxLogFile::Location(nullptr, -1);
    CKxLogFile::Line(nullptr);
    CKxLogFile::Location(std::wstring(100, L'x').c_str(), 1);
    CKxLogFile::Line(L"%ls", L"two\nlines\r\n");
    EXPECT_EQ(m_records, (Records{L"?(0): the place belongs to the thread", L"devgui_base(230): zoom 1.5 of Größe",
                                  L"?(0): no place", L"here(" + std::to_wstring(line) + L"): text", L"?(-1): ",
                                  std::wstring(63, L'x') + L"(1): two lines  "}));
}

TEST_F(Log, CutsAt1100Characters) {
    const std::wstring lens = L"\U0001F52C";
    const std::pair<std::size_t, std::wstring> cases[] = {{1099, L""},   {1100, L""},  {1101, L""},
                                                          {100000, L""}, {1098, lens}, {1099, lens}};
    for (const auto& [length, tail] : cases) {
        m_records.clear();
        const std::wstring text = std::wstring(length, L'x') + tail;
        CKxLogFile::Line(L"%ls", text.c_str());
        // Half a surrogate pair is no character.
        const std::size_t kept = length == 1099 ? 1099 : 1100;
        EXPECT_EQ(m_records, Records{L"?(0): " + text.substr(0, kept)}) << length;
    }
}

TEST_F(Log, SinksMayThrowLogAndReplaceThemselves) {
    const std::pair<CKxLogFile::Sink, Records> cases[] = {
        {[](const wchar_t*, void*) { throw std::runtime_error("full disk"); }, {}},
        // What it logs itself is dropped; else it would call itself without end, and stops after a few times.
        {[](const wchar_t* record, void* context) {
             Keep(record, context);
             if (static_cast<Records*>(context)->size() < 5) KX_LOG(L"sink", L"from the sink");
         },
         {L"?(0): first", L"?(0): second"}},
        {[](const wchar_t*, void* context) { CKxLogFile::SetSink(Keep, context); }, {L"?(0): second"}},
    };
    for (const auto& [sink, records] : cases) {
        m_records.clear();
        CKxLogFile::SetSink(sink, &m_records);
        for (const wchar_t* const text : {L"first", L"second"})
            EXPECT_NO_THROW(CKxLogFile::Line(text));
        EXPECT_EQ(m_records, records);
    }
}
