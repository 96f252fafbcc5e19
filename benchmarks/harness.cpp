#include "harness.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>

namespace kx::bench {

namespace {

// Made by whichever file comes first.
std::vector<Row>& Registered() {
    static std::vector<Row> rows;
    return rows;
}

using Clock = std::chrono::steady_clock;
using Work = std::function<void()>;

constexpr int kBlocks = 30;  // of each side
constexpr double kBlockSeconds = 0.025;
constexpr double kShortestBlock = 0.020;

// What the work has posted must not be answered within the next block.
void DrainMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

double SecondsFor(const Work& work, int rounds) {
    DrainMessages();
    const auto start = Clock::now();
    for (int i = 0; i < rounds; ++i)
        work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// One side of a comparison: repeats its work as often as fills a block.
class Side {
public:
    explicit Side(const Work& work) : m_work(work) {
        // Caches fill; work that is longer than a block has none worth waiting for.
        for (int i = 0; i < 3 && SecondsFor(m_work, 1) < kBlockSeconds; ++i) {
        }
        for (double seconds = 0; (seconds = SecondsFor(m_work, m_rounds)) < kBlockSeconds;) {
            const double factor = seconds > 0 ? kBlockSeconds / seconds * 1.1 : 10.0;
            m_rounds = static_cast<int>(std::ceil(m_rounds * std::clamp(factor, 1.1, 10.0)));
        }
    }

    // The time of one round. A block that a calibration in a slow moment made too short grows for good.
    double Block() {
        double seconds = 0;
        while ((seconds = SecondsFor(m_work, m_rounds)) < kShortestBlock)
            m_rounds += m_rounds / 4 + 1;
        return seconds / m_rounds;
    }

private:
    const Work& m_work;
    int m_rounds = 1;
};

double Percentile(const std::vector<double>& sorted, double part) {
    const double place = part * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], place - static_cast<double>(below));
}

}  // namespace

Ratio Measure(const Work& subjectWork, const Work& referenceWork) {
    Side subject(subjectWork), reference(referenceWork);
    std::vector<double> ratios;
    for (int i = 0; i < kBlocks; i += 2) {
        const double a1 = subject.Block(), b1 = reference.Block(), b2 = reference.Block(), a2 = subject.Block();
        ratios.push_back(a1 / b1);
        ratios.push_back(a2 / b2);
    }
    std::sort(ratios.begin(), ratios.end());
    return {Percentile(ratios, 0.5), Percentile(ratios, 0.1), Percentile(ratios, 0.9)};
}

Rows::Rows(const std::vector<Row>& rows) { Registered().insert(Registered().end(), rows.begin(), rows.end()); }

const std::vector<Row>& AllRows() { return Registered(); }

}  // namespace kx::bench
