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

// A finding, unless it holds.
inline void Require(bool condition) {
    if (!condition) std::abort();
}
