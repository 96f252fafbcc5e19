// What the Z stack panel keeps with its window: what it has shown last.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/zfocus/zstack_scale.h>

namespace kx::zstack {

// What the fields of positions are made of; empty is not set.
struct ShownPositions {
    // As the record's getters say.
    std::optional<int> type;
    std::optional<double> top;
    std::optional<double> bottom;
    std::optional<double> home;
    // Member by member.
    friend bool operator==(const ShownPositions&, const ShownPositions&) = default;
};

// The same for step and planes.
struct ShownSteps {
    // As the record's getters say.
    std::optional<double> step;
    std::optional<double> suggested;
    std::optional<unsigned int> count;
    // Member by member.
    friend bool operator==(const ShownSteps&, const ShownSteps&) = default;
};

// A refresh compares with it and touches nothing that is the same.
struct Shown {
    // What the last refresh showed; the device's index, and whether the tooltips speak of an inverted stand.
    std::optional<ShownPositions> positions;
    std::optional<ShownSteps> steps;
    ScaleValues scale;
    std::optional<unsigned int> device;
    std::optional<bool> inverted;
    // The text of a field is not what a refresh has made it.
    bool typed = false;
    // The position under the pointer.
    std::optional<double> hover;
};

// The panel's, made when there is none.
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
