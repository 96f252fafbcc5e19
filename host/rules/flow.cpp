#include "flow.h"

#include <algorithm>

namespace kx::host {

Flow FlowIntoColumns(std::span<const Size> sizes, long width, long gap) {
    Flow flow;
    long column = 0;
    for (const Size& size : sizes)
        column = std::max(column, size.width);
    const long fitting = (width - gap) / std::max(1L, column + gap);
    const long count = std::clamp(fitting, 1L, std::max(1L, static_cast<long>(sizes.size())));
    std::vector<long> bottoms(static_cast<std::size_t>(count), gap);
    for (const Size& size : sizes) {
        const auto shortest = std::min_element(bottoms.begin(), bottoms.end());
        flow.places.push_back({gap + static_cast<long>(shortest - bottoms.begin()) * (column + gap), *shortest});
        if (size.width > 0 && size.height > 0) *shortest += size.height + gap;
    }
    flow.height = *std::max_element(bottoms.begin(), bottoms.end());
    return flow;
}

long ScrollPosition(long wanted, long content, long window) {
    return std::clamp(wanted, 0L, std::max(0L, content - window));
}

}  // namespace kx::host
