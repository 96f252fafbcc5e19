// Counts what a process holds, and looks for growth.
//
//     EXPECT_TRUE(NoGrowth(1000, [&] { CreateFillPaintDestroy(parent.Window()); }));
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace kx::test {

struct Counts {
    std::array<int, 256> gdiByType{};  // index: the type byte of the GDI handle table
    int gdi = 0;
    int windows = 0;  // of this thread: top-level, message-only and all below them
    long long heapBlocks = 0;
    long long heapBytes = 0;

    static Counts Now();
    static Counts Gdi();  // GDI objects alone, quick enough to be taken after every step of a long test
};

// Runs the body some rounds to warm up (caches, lazily loaded libraries), counts, runs the rounds, counts again.
// Messages are handled after every round. Fails when anything has grown, and says what and by how much per round.
[[nodiscard]] testing::AssertionResult NoGrowth(int rounds, const std::function<void()>& body, int warmUp = 50);

}  // namespace kx::test
