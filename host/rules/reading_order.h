// In which order what stands on a page is read: values only, no windows. All measures are in the same pixels.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace kx::host {

struct Box {
    long left;
    long top;
    long right;
    long bottom;
};

// The indices of the boxes as they are read: row by row where gaps go through from side to side, within a row column by
// column where gaps go through it from the top to the bottom, and so on within a column. What no gap divides goes by
// its corners, from the top and then from the left.
std::vector<std::size_t> ReadingOrder(std::span<const Box> boxes);

}  // namespace kx::host
