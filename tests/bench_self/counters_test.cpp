// What a broken bench would silently pass: leaks and touches of the dead that nobody sees.
#include <bench/bench.h>
#include <bench/grave.h>

namespace {

using namespace kx::test;

// Each leak must be seen, one object per round, and blamed on the right kind.
void ExpectSeen(const char* kind, const std::function<void()>& leak) {
    const std::string report = NoGrowth(100, leak, 10).message();
    const size_t at = report.find(std::string(kind) + ":");
    ASSERT_NE(at, std::string::npos) << kind << " is not in: " << report;
    EXPECT_NE(report.find("(1 per round)", at), std::string::npos) << report;
}

TEST(Counters, SeeWhatLeaks) {
    RecordingParent parent;
    std::vector<HGDIOBJ> objects;
    std::vector<std::unique_ptr<int>> blocks;
    blocks.reserve(1000);
    const auto leak = [](HWND owner, DWORD style) {
        CreateWindowW(L"STATIC", L"", style, 0, 0, 5, 5, owner, nullptr, nullptr, nullptr);
    };
    ExpectSeen("brush or pen", [&] { objects.push_back(CreateSolidBrush(RGB(1, 2, 3))); });
    ExpectSeen("DC", [&] { objects.push_back(CreateCompatibleDC(nullptr)); });
    ExpectSeen("windows", [&] { leak(parent.Window(), WS_CHILD); });
    ExpectSeen("windows", [&] { leak(HWND_MESSAGE, 0); });
    ExpectSeen("heap blocks", [&] { blocks.push_back(std::make_unique<int>(1)); });
}

TEST(Grave, SeesATouchAndTheProgramGoesOn) {
    auto object = MakeBuried<int>(5);
    const volatile int* const dead = object.get();
    object.reset();
    EXPECT_EQ(TakeTouch(), "");
    EXPECT_EQ(*dead, 5);
    EXPECT_NE(TakeTouch().find("byte 0 of a dead object is read by"), std::string::npos);
    EXPECT_EQ(TakeTouch(), "");
}

// ---- Deliberate faults, by which scripts/heap-check sees that the platform's heap checks find them ----

// Of the platform, not of the language: the compiler would see the fault and refuse it.
volatile char* Block() { return static_cast<volatile char*>(HeapAlloc(GetProcessHeap(), 0, 21)); }
void Free(volatile char* block) { HeapFree(GetProcessHeap(), 0, const_cast<char*>(block)); }

// With its heap broken, the process would not come to its end by itself.
struct HeapProbe : testing::Test {
    void TearDown() override { TerminateProcess(GetCurrentProcess(), 0); }
    volatile char* const block = Block();
};

TEST_F(HeapProbe, DISABLED_Overrun) {
    block[21] = 7;
    Free(block);
}

TEST_F(HeapProbe, DISABLED_UseAfterFree) {
    Free(block);
    block[9] = 3;
    for (int i = 0; i < 100; ++i)
        Free(Block());
}

TEST_F(HeapProbe, DISABLED_DoubleFree) {
    Free(block);
    Free(block);
}

}  // namespace
