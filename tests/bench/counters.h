// Looks for growth in what a process holds.
//
//     EXPECT_TRUE(NoGrowth(1000, [&] { CreateFillPaintDestroy(parent.Window()); }));
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include <diagnostics/counts.h>

namespace kx::test {

using kx::Counts;

// Runs the body some rounds to warm up (caches, lazily loaded libraries), counts, runs the rounds, counts again.
// Messages are handled after every round. Fails when anything has grown, and says what and by how much per round.
[[nodiscard]] testing::AssertionResult NoGrowth(int rounds, const std::function<void()>& body, int warmUp = 50);

}  // namespace kx::test
