// How the rows of the benchmark are measured.
//
// A row compares two pieces of work by the ratio of their times, never by the times: those are the machine's. Blocks of
// the two alternate A B B A, so that a machine that grows slower or faster wrongs neither; each neighbouring pair gives
// one ratio, of which the row keeps the median and the spread.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kx::bench {

// The subject's time divided by the reference's, over all pairs of blocks.
struct Ratio {
    double median;
    double low;   // 10th percentile
    double high;  // 90th percentile
};

// Both are called many times within a block, so each has to leave things as it found them.
Ratio Measure(const std::function<void()>& subject, const std::function<void()>& reference);

struct Row {
    std::string name;
    std::string against;
    double limit;        // of the median
    Ratio (*measure)();  // makes the windows, and measures
};

// A row cannot be measured because what it compares was not made, or does not do what it should.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};
inline void Require(bool condition, const char* what) {
    if (!condition) throw Fault(what);
}

// The same work on both sides. Where that does not come out as 1, no other row means anything.
inline constexpr double kQuietLow = 0.95, kQuietHigh = 1.05;
Row SameWork();

// The rows of a file *_rows.cpp, which are measured because they are there: `const Rows s_rows{{{"name", ...}}};`
struct Rows {
    explicit Rows(const std::vector<Row>& rows);
};
const std::vector<Row>& AllRows();

}  // namespace kx::bench
