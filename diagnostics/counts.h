// Counts what a process holds, for whoever looks for growth: the tests and the host's endurance run.
#pragma once

#include <windows.h>

#include <array>
#include <string>

namespace kx {

struct Counts {
    std::array<int, 256> gdiByType{};  // index: the type byte of the GDI handle table
    int gdi = 0;
    int windows = 0;  // of this thread: top-level, message-only and all below them
    long long heapBlocks = 0;
    long long heapBytes = 0;

    // Once, before the windows are made among which growth is looked for: of the labels that end from then on, the
    // heap's counts leave out what the platform keeps.
    static void Begin();
    static Counts Now();
    static Counts Gdi();  // GDI objects alone, quick enough to be taken after every step of a long test
};

// What has grown over so many rounds and by how much, a line each; empty when nothing has.
std::string Growth(const Counts& before, const Counts& after, int rounds);

}  // namespace kx
