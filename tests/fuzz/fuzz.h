// What the fuzzers have in common.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

// What a fuzzer does with an input.
void Fuzz(std::string_view input);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A block of its own, so that a step beyond its end is seen.
    const std::vector<char> block(data, data + size);
    Fuzz({block.data(), size});
    return 0;
}

// A finding, unless it holds.
inline void Require(bool condition) {
    if (!condition) std::abort();
}
