#include "reading_order.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace kx::host {

namespace {

using Group = std::vector<std::size_t>;
using Side = long Box::*;

// The group in parts that gaps divide; one part when there is none.
std::vector<Group> Divided(Group group, std::span<const Box> boxes, Side from, Side to) {
    std::stable_sort(group.begin(), group.end(),
                     [&](std::size_t a, std::size_t b) { return boxes[a].*from < boxes[b].*from; });
    std::vector<Group> parts;
    long end = 0;
    for (const std::size_t each : group) {
        if (parts.empty() || boxes[each].*from >= end) parts.emplace_back(), end = boxes[each].*to;
        parts.back().push_back(each);
        end = std::max(end, boxes[each].*to);
    }
    return parts;
}

void Append(Group group, std::span<const Box> boxes, Group& order) {
    for (const auto& [from, to] : {std::pair(&Box::top, &Box::bottom), {&Box::left, &Box::right}}) {
        const std::vector<Group> parts = Divided(group, boxes, from, to);
        if (parts.size() < 2) continue;
        for (const Group& part : parts)
            Append(part, boxes, order);
        return;
    }
    std::stable_sort(group.begin(), group.end(), [&](std::size_t a, std::size_t b) {
        return std::tie(boxes[a].top, boxes[a].left) < std::tie(boxes[b].top, boxes[b].left);
    });
    order.insert(order.end(), group.begin(), group.end());
}

}  // namespace

std::vector<std::size_t> ReadingOrder(std::span<const Box> boxes) {
    Group all(boxes.size()), order;
    std::iota(all.begin(), all.end(), std::size_t{0});
    Append(all, boxes, order);
    return order;
}

}  // namespace kx::host
