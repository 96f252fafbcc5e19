#include "random.h"

#include <climits>

namespace kx {

std::uint64_t Random::Next() {  // splitmix64
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

int Random::Below(int limit) { return limit > 0 ? static_cast<int>(Next() % static_cast<std::uint64_t>(limit)) : 0; }

int Random::Between(int first, int last) { return first + Below(last - first + 1); }

int Random::Length() {
    if (!OneIn(4)) return Between(0, 400);
    return Of({-1, -1, 0, 0, 1, -7, -40000, 2000, 32767, 32768, 1000000, INT_MAX, INT_MIN});
}

}  // namespace kx
