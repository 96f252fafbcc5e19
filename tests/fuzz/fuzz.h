// What the fuzzers have in common.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

// A finding, unless it holds.
inline void Require(bool condition) {
    if (!condition) std::abort();
}

// Takes numbers off the input; zeros when there is nothing left.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    bool Empty() const { return m_size == 0; }
    template <class T>
    T Take() {
        T value{};
        const std::size_t taken = std::min(sizeof value, m_size);
        std::memcpy(&value, m_data, taken);
        m_data += taken;
        m_size -= taken;
        return value;
    }
    int Byte() { return Take<std::uint8_t>(); }
    bool OneIn(int n) { return Byte() % n == 0; }
    // Whole and half numbers for the most part, so many of 256: ties and bounds are met by these alone.
    double Number(int halves) {
        const int kind = Byte();
        if (kind < halves) return Take<std::int8_t>() / 2.0;
        if (kind < 240) return Take<std::int16_t>() / 64.0;
        return Take<double>();
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};
