// Where panels stand on a page that scrolls: values only, no windows. All measures are in the same pixels.
#pragma once

#include <span>
#include <vector>

namespace kx::host {

struct Size {
    long width;
    long height;
};

struct Place {
    long x;
    long y;
};

// Places, in the order of the sizes, and the height that they take, with a gap below.
struct Flow {
    std::vector<Place> places;
    long height = 0;
};

// Columns as wide as the widest size, as many as fit into `width` with a gap around each, at least one and at most one
// a size. Each size goes to the shortest column, of several to the leftmost, so that the order is kept from the top
// down. A size without width or height takes no room, and gets none of the gap.
Flow FlowIntoColumns(std::span<const Size> sizes, long width, long gap);

// How far a page is scrolled when `wanted` is asked for: neither above its content nor beyond its end.
long ScrollPosition(long wanted, long content, long window);

}  // namespace kx::host
