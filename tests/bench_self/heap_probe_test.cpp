// Deliberate faults for scripts/heap-check, which runs them to see that the platform's heap checks find faults at all.
#include <gtest/gtest.h>

#include <windows.h>

namespace {

// Of the platform, not of the language: the compiler would see the fault and refuse it.
volatile char* Block() { return static_cast<volatile char*>(HeapAlloc(GetProcessHeap(), 0, 21)); }
void Free(volatile char* block) { HeapFree(GetProcessHeap(), 0, const_cast<char*>(block)); }

// With its heap broken, the process would not come to its end by itself.
class HeapProbe : public testing::Test {
protected:
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
