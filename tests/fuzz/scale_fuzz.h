// What every drawn scale has to keep.
#pragma once

#include "fuzz.h"

#include <kxdevui/controls/hpot_rules.h>

inline int WidthOf(const std::wstring& text) { return static_cast<int>(6 * text.size()); }
inline kx::hpot::TickSpace SpaceFor(int length) { return {length, 5, 7, 9, 4, WidthOf}; }

inline void CheckTicks(const std::vector<kx::hpot::Tick>& ticks, int length) {
    int before = 0, end = std::numeric_limits<int>::min() / 2;
    for (const auto& tick : ticks) {
        Require(tick.position >= before && tick.position <= length);
        before = tick.position;
        if (tick.label.empty()) continue;
        Require(tick.labelLeft >= -5 && tick.labelLeft >= end + 9);
        end = tick.labelLeft + WidthOf(tick.label);
        Require(end <= length + 7);
    }
}
