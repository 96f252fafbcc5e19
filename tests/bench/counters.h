// Looks for growth in what a process holds.
//
//     EXPECT_TRUE(NoGrowth(1000, [&] { CreateFillPaintDestroy(parent.Window()); }));
#pragma once

#include <bench/input.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <diagnostics/counts.h>

namespace kx::test {

using kx::Counts;

// Runs the body some rounds to warm up (caches, lazily loaded libraries), counts, runs the rounds, counts again.
// Messages are handled after every round. Fails when anything has grown, and says what and by how much per round.
[[nodiscard]] inline testing::AssertionResult NoGrowth(int rounds, const std::function<void()>& body, int warmUp = 50) {
#ifdef _GLIBCXX_ASSERTIONS
    // A build with checks, in which a round takes several times as long; the optimised one counts them all.
    rounds = rounds / 5 + 1;
#endif
    const auto run = [&body](int count) {
        for (int i = 0; i < count; ++i)
            body(), Pump();
    };
    Counts::Begin();
    run(warmUp);
    const Counts before = Counts::Now();
    run(rounds);
    const std::string growth = Growth(before, Counts::Now(), rounds);
    if (growth.empty()) return testing::AssertionSuccess() << "nothing has grown";
    return testing::AssertionFailure() << "grown over " << rounds << " rounds:" << growth;
}

}  // namespace kx::test
