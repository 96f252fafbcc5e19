// The storm: seeded random messages, sizes, zooms, states, mouse and keys against a control, with its invariants
// checked after every step.
//
// A control joins with a Subject: how it is made, what beside messages can happen to it, and what must hold. The same
// seed gives the same steps. KX_STORM_SEED and KX_STORM_STEPS replay or prolong a storm.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kx::test {

// splitmix64: the standard's distributions differ from library to library, and a seed has to mean the same everywhere.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t Next();
    int Below(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }
    bool OneIn(int count) { return Below(count) == 0; }
    // Mostly what a window has room for; sometimes zero, negative, or huge.
    long Coordinate();

private:
    std::uint64_t m_state;
};

struct Subject {
    // Makes the control anew in the parent, destroying what there was.
    std::function<void(HWND parent)> create;
    // The window that the next message is aimed at: the control's or one of its children; null while there is none.
    std::function<HWND(Dice&)> aim;
    // Things that only this control can do; each is done now and then.
    std::vector<std::function<void(Dice&)>> operations;
    // Empty while everything holds, otherwise what does not.
    std::function<std::string()> broken;
};

// Runs the storm: `steps` steps from `seed`. A failure names seed, step, and what the step did.
testing::AssertionResult Storm(Subject& subject, std::uint64_t seed, int steps);

// What KX_STORM_SEED and KX_STORM_STEPS say, or these.
std::uint64_t StormSeed(std::uint64_t seed);
int StormSteps(int steps);

}  // namespace kx::test
