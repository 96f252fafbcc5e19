// What the Z stack panel keeps with its window: what it has shown last.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <optional>
#include <string>

#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/framework/ui_window.h>
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

// What the number in a field is.
enum class Meaning { Position, Distance, Range, Step, Count };

// What a refresh has written into a field, and the number that the text was made of, which has more digits.
struct Entry {
    // As it was written; the number is empty where nothing is set.
    std::wstring text;
    Meaning meaning = Meaning::Position;
    std::optional<double> value;
};

// Where a label stands at 100 %, and whether it has been made wider than that.
struct LabelPlace {
    RECT unzoomed;
    bool widened;
};

// A refresh compares with it and touches nothing that is the same.
struct Shown {
    // What the last refresh showed; the device's index, and whether the tooltips speak of an inverted stand.
    std::optional<ShownPositions> positions;
    std::optional<ShownSteps> steps;
    std::array<Entry, 8> entries;  // of the edits by their ids, from the top's
    std::array<LabelPlace, 11> labels{};
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

// What the record answers. It is the host's and may throw: then that is logged, and it has failed.
template <class Call>
int Ask(Call&& call) noexcept {
    return static_cast<int>(ui::Guarded([&]() -> ui::Handled { return call(); }).value_or(eKxZStack_NoDevice));
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
