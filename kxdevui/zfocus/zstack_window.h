// What the Z stack panel keeps with its window: what it has shown last.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/zfocus/zstack_scale.h>

namespace kx::zstack {

// What the fields of positions and of step and planes are made of; empty is not set.
struct ShownPositions {
    std::optional<int> type;
    std::optional<double> top, bottom, home;
    friend bool operator==(const ShownPositions&, const ShownPositions&) = default;
};
struct ShownSteps {
    std::optional<double> step, suggested;
    std::optional<unsigned int> count;
    friend bool operator==(const ShownSteps&, const ShownSteps&) = default;
};

// A refresh compares with it and touches nothing that is the same.
struct Shown {
    std::optional<ShownPositions> positions;
    std::optional<ShownSteps> steps;
    bool typed = false;  // the text of a field is not what a refresh has made it
    ScaleValues scale;
    std::optional<double> hover;         // under the pointer
    std::optional<unsigned int> device;  // of the record
    std::optional<bool> inverted;        // as the tooltips say
};

inline std::shared_ptr<Shown> ShownOf(HWND panel) {
    const auto state = ui::StateOf(panel);
    if (!state->own) state->own = std::make_shared<Shown>();
    return std::static_pointer_cast<Shown>(state->own);
}

// The width of the arrow that opens the piezo button's menu, in pixels on the screen.
long ArrowWidth();

// The colour of the mark where Z stands, told from the stack's by hue on a light and on a dark ground.
COLORREF MarkColor();

// Whether Z stands at a position, as far as its numbers show.
inline bool StandsAt(const ScaleValues& values, const std::optional<double>& position) {
    return values.z && position && *values.z - *position < 0.005 && *position - *values.z < 0.005;
}

}  // namespace kx::zstack
