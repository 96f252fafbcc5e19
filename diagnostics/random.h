// Random numbers for runs that have to come out the same again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace kx {

// The same numbers from the same seed with every compiler and library, which the standard's distributions do not give.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next();
    int Below(int limit);              // 0 to limit - 1
    int Between(int first, int last);  // both included
    bool OneIn(int n) { return Below(n) == 0; }
    int AnyInt() { return static_cast<int>(static_cast<std::uint32_t>(Next())); }
    int Length();  // a coordinate or size: usual, -1, zero, negative, huge

    template <class T>
    const T& Of(const std::vector<T>& values) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
    }
    template <class T>
    T Of(std::initializer_list<T> values) {
        return values.begin()[Below(static_cast<int>(values.size()))];
    }

private:
    std::uint64_t state_;
};

}  // namespace kx
