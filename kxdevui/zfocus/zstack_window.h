// What the Z stack panel keeps with its window: what it has shown last.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <optional>
#include <string>

#include <kxdevices/kx_zstackdata.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/zfocus/zstack_grips.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxsystem/kx_string.h>

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

// A text beside the scale, at a row of it.
struct Label {
    int row;
    std::wstring text;
    COLORREF color;
};

// A grip that is being dragged: its position when the pointer was at row `pressed`, the row that it is at now, and what
// the record was before.
struct Drag {
    Grip grip;
    double from;
    int pressed;
    int row;
    StackNumbers before;
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
    // What the magnified scale shows, unless it is the stack, and the notches of the wheel that have led there.
    std::optional<Stretch> view;
    int notches = 0;
    // Of the labels beside the scale, as they were painted; 0 before.
    int labelHeight = 0;
    // The grip that keys move, and what was before they did; the one that is dragged; why the last place was refused.
    Grip grip = Grip::Top;
    std::optional<StackNumbers> beforeKeys;
    std::optional<Drag> drag;
    std::optional<CKxStringW> refusal;

    // What the magnified scale shows of these values, and whether that is a part of the other.
    Stretch StretchOf(const ScaleValues& values) const { return view ? *view : StackStretch(values); }
    bool IsMagnified(const ScaleValues& values) const { return view || (values.top && values.bottom); }
};

// Where the parts of the scale are; grips stand between the bars, text from `labels` to the right end.
struct Places {
    RECT whole, grips, stack;
    long labels;
};
Places PlacesIn(const RECT& area, bool grips);
Axis AxisOf(const RECT& bar, const Stretch& stretch);
void DrawFunnel(HDC dc, const Places& places, const ScaleValues& values, const Stretch& stretch);

// The button that is named as a grip's line is.
inline int ButtonOf(Grip grip) {
    return grip == Grip::Top ? IDC_ZS_TOP : grip == Grip::Home ? IDC_ZS_HOME : IDC_ZS_BOTTOM;
}

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
