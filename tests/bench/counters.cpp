#include <bench/counters.h>

#include <bench/input.h>

#include <string>

namespace kx::test {

testing::AssertionResult NoGrowth(int rounds, const std::function<void()>& body, int warmUp) {
#ifdef _GLIBCXX_ASSERTIONS
    // A build with checks, in which a round takes several times as long; the optimised one counts them all.
    rounds = rounds / 5 + 1;
#endif
    const auto run = [&body](int count) {
        for (int i = 0; i < count; ++i) {
            body();
            Pump();
        }
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
