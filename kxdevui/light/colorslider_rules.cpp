#include <kxdevui/light/colorslider_rules.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace kx::colorslider {

namespace {

// |value - a| < |value - b|, decided without the differences where these would lose what tells them apart.
bool IsNearer(double value, double a, double b) {
    if (value <= std::min(a, b)) return a < b;
    if (value >= std::max(a, b)) return a > b;
    return std::abs(value - a) < std::abs(value - b);
}

Entry EntryAt(int index, std::span<const double> table) { return {table[static_cast<std::size_t>(index)], index}; }

}  // namespace

int NearestEntry(double value, std::span<const double> table) noexcept {
    const int count = static_cast<int>(table.size());
    if (count == 0) return 0;
    for (int i = 0; i < count - 1; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (IsNearer(value, table[at], table[at + 1])) return i;
    }
    return count - 1;
}

int MovedIndex(int index, int steps, int count) noexcept {
    const long long last = std::max(count, 1) - 1;
    return static_cast<int>(std::clamp<long long>(static_cast<long long>(index) + steps, 0, last));
}

Range Snapped(double minimum, double maximum, std::span<const double> table) noexcept {
    return {EntryAt(NearestEntry(minimum, table), table), EntryAt(NearestEntry(maximum, table), table)};
}

Range Ordered(const Range& range, GivesWay thumb) noexcept {
    if (!(range.minimum.value > range.maximum.value)) return range;
    return thumb == GivesWay::Minimum ? Range{range.maximum, range.maximum} : Range{range.minimum, range.minimum};
}

Range RangeFor(double minimum, double maximum, double heldMinimum, std::span<const double> table) noexcept {
    return Ordered(Snapped(minimum, maximum, table), minimum == heldMinimum ? GivesWay::Minimum : GivesWay::Maximum);
}

Range MovedRange(const Range& range, Thumb thumb, int steps, std::span<const double> table) noexcept {
    const int count = static_cast<int>(table.size());
    int minimum = range.minimum.index, maximum = range.maximum.index;
    if (thumb == Thumb::Minimum) {
        minimum = MovedIndex(minimum, steps, count);
        maximum = MovedIndex(std::max(maximum, minimum), 0, count);
    } else {
        maximum = MovedIndex(maximum, steps, count);
        minimum = MovedIndex(std::min(minimum, maximum), 0, count);
    }
    return {EntryAt(minimum, table), EntryAt(maximum, table)};
}

Thumb ThumbFor(long pointer, long minimum, long maximum, long trackLength) noexcept {
    if (minimum == maximum && pointer == minimum) return minimum >= trackLength ? Thumb::Minimum : Thumb::Maximum;
    const long long twice = 2LL * pointer, middle = static_cast<long long>(minimum) + maximum;
    if (twice == middle) return pointer < maximum ? Thumb::Minimum : Thumb::Maximum;
    // On a reversed scale the maximum stands to the left.
    return (twice < middle) == (minimum <= maximum) ? Thumb::Minimum : Thumb::Maximum;
}

// ---- Layout --------------------------------------------------------------------------------------------------------

namespace {

constexpr int kLargest = 16000;  // windows have 16 bits for a coordinate
constexpr int kEditHeight = 17, kEditHeightWithArrows = 21, kArrowsWidth = 17;
constexpr int kTextTop = 2, kTextHeight = 15;

int Size(int wanted) { return std::clamp(wanted, 0, kLargest); }

bool IsOneRow(const LayoutRequest& r) {
    return r.layout == eColorSliderLayout_OneRow || r.layout == eColorSliderLayout_OneRowSpin;
}

bool IsRange(const LayoutRequest& r) { return r.type == eColorSliderType_Range; }

int EditHeight(const LayoutRequest& r) {
    if (IsRange(r)) return kEditHeight;
    if (r.editHeight >= 0) return r.editHeight;
    return r.layout == eColorSliderLayout_OneRowSpin ? kEditHeightWithArrows : kEditHeight;
}

void LayOutOneRow(const LayoutRequest& r, Layout& at) {
    at.nameColumn = r.nameTextWidth > 0 ? r.nameTextWidth + 10 : 0;
    at.width = at.nameColumn + r.sliderWidth;
    at.height = r.sliderHeight + 30;
    at.thumb.x = at.nameColumn;
    at.name = {4, kTextTop, std::max(0, at.nameColumn - 10), kTextHeight};
    if (!r.showEdit) return;

    at.editColumn = at.nameColumn + 11 + r.sliderWidth;
    int last = at.editColumn;
    if (IsRange(r)) {
        // The slider's width, although it is the edit box that stands between: hosts count on these columns.
        last = at.secondEditColumn = at.editColumn + r.sliderWidth + 5;
        at.minimumEdit = {at.editColumn, 0, r.editWidth, EditHeight(r)};
    }
    at.edit = {last, 0, r.editWidth, EditHeight(r)};
    at.unitColumn = last + r.editWidth + 3;
    at.width = at.unitColumn;
    if (r.unitTextWidth > 0) {
        at.width += r.unitTextWidth + 5;
        at.unit = {at.unitColumn, kTextTop, at.width - at.unitColumn, kTextHeight};
    }
    if (r.layout == eColorSliderLayout_OneRowSpin && !IsRange(r)) {
        const int arrows = std::min(kArrowsWidth, r.editWidth);
        at.edit.cx -= arrows;
        at.spin = {last + at.edit.cx, 0, arrows, at.edit.cy};
    }
}

void LayOutTwoRows(const LayoutRequest& r, Layout& at) {
    at.width = r.sliderWidth + 10;
    if (r.editAtPosition) at.width = std::max(at.width, r.editX + r.editWidth);
    at.height = r.sliderHeight + 60;
    at.thumb.y = r.editAtPosition ? 3 : 18;
    const bool atPosition = r.editAtPosition && !IsRange(r);
    const int unit = r.showEdit && r.unitTextWidth > 0 ? r.unitTextWidth + 5 : 0;
    if (r.showEdit) {
        at.edit = {r.sliderWidth - r.editWidth - unit + 4, 0, r.editWidth, EditHeight(r)};
        if (atPosition) at.edit.x = r.editX, at.edit.y = r.editY;
        at.unit = {atPosition ? r.editX + r.editWidth : r.sliderWidth - unit + 4, kTextTop, unit, kTextHeight};
        if (IsRange(r)) {
            at.minimumEdit = {r.sliderWidth - (2 * r.editWidth + 2) - unit, 0, r.editWidth, EditHeight(r)};
        }
    }
    if (r.editAtPosition && r.layout != eColorSliderLayout_ColorPoint) return;
    int room = r.sliderWidth - r.editWidth - unit - 10;
    if (IsRange(r)) room -= r.editWidth + (r.layout == eColorSliderLayout_ColorPoint ? 10 : 15);
    at.name = {4, kTextTop, std::max(0, room), kTextHeight};
}

}  // namespace

Layout LayOut(const LayoutRequest& request) noexcept {
    LayoutRequest r = request;
    for (int* size : {&r.sliderWidth, &r.sliderHeight, &r.nameTextWidth, &r.unitTextWidth, &r.editWidth})
        *size = Size(*size);
    for (int* place : {&r.editX, &r.editY})
        *place = std::clamp(*place, -kLargest, kLargest);
    r.editHeight = std::clamp(r.editHeight, -1, kLargest);

    Layout at;
    at.thumb = {0, 0, r.sliderWidth + 10, r.sliderHeight + 25};
    at.thumbSize = (r.sliderHeight + 25) / 2 + 2;
    if (IsOneRow(r)) {
        LayOutOneRow(r, at);
    } else {
        LayOutTwoRows(r, at);
    }
    return at;
}

}  // namespace kx::colorslider
