// The colour slider's rules under any table: what every range, scale and layout has to keep.
#include "scale_fuzz.h"

#include <kxdevui/light/colorslider_rules.h>

using namespace kx::colorslider;

namespace {

using Table = std::vector<double>;
double At(const Table& table, int i) { return table[static_cast<std::size_t>(i)]; }

// Of a sorted table the thumbs never cross, and no other entry is nearer.
void CheckRange(double lo, double hi, double held, const Table& t) {
    const int found = NearestEntry(lo, t);
    Require(found >= 0 && found < static_cast<int>(t.size()));
    const Range wanted = RangeFor(lo, hi, held, t), dragged = Ordered(Snapped(lo, hi, t), GivesWay::Minimum);
    for (const Entry& each : {wanted.minimum, wanted.maximum, dragged.minimum})
        Require(At(t, each.index) == each.value);
    if (!std::is_sorted(t.begin(), t.end())) return;
    Require(wanted.minimum.value <= wanted.maximum.value && dragged.minimum.value <= dragged.maximum.value);
    for (const double each : t)
        Require(!(std::fabs(lo - each) < std::fabs(lo - At(t, found)) * (1 - 1e-9)));
}

void CheckMove(int lo, int hi, bool first, int steps, const Table& t) {
    const int last = static_cast<int>(t.size()) - 1;
    const Range r = MovedRange({{0, lo}, {0, hi}}, first ? Thumb::Minimum : Thumb::Maximum, steps, t);
    Require(r.minimum.index <= r.maximum.index);
    const int moved = first ? r.minimum.index : r.maximum.index, before = std::clamp(first ? lo : hi, 0, last);
    Require(moved >= 0 && moved <= last && (steps < 0 ? moved <= before : moved >= before));
}

void CheckMarks(const Table& t, int length, std::uint8_t labelled) {
    kx::hpot::Scale scale;
    scale.type = eHPotType_ColorSlider;
    scale.values = t;
    scale.minimum = t.front();
    scale.maximum = t.back();
    std::vector<kx::hpot::Mark> marks;
    for (std::size_t i = 0; i < t.size(); ++i)
        marks.push_back({t[i], ((labelled >> (i % 8)) & 1) != 0});
    const auto ticks = kx::hpot::MarkTicks(scale, marks, SpaceFor(length));
    CheckTicks(ticks, length);
    for (std::size_t i = 0; i < ticks.size(); ++i)
        Require((i == 0 || ticks[i].position > ticks[i - 1].position) && (ticks[i].major || ticks[i].label.empty()));
    for (const auto& mark : marks) {
        const int at = kx::hpot::ValueToThumbPos(scale, mark.value, length);
        const auto isThere = [at](const auto& tick) { return tick.position == at; };
        Require(length <= 0 || at < 0 || at > length || std::any_of(ticks.begin(), ticks.end(), isThere));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Table table;
    const int count = input.Byte() % 12;
    const bool sorted = !input.OneIn(4);
    for (int i = 0; i < count; ++i) {
        const double number = input.Number(200);
        if (std::isfinite(number)) table.push_back(number);
    }
    if (sorted) std::sort(table.begin(), table.end());
    const double lo = input.Number(200), hi = input.Number(200), other = input.Number(200);
    const double held = !input.OneIn(2) ? lo : other;
    const int steps = !input.OneIn(8) ? input.Take<std::int8_t>() : input.Take<std::int32_t>();
    Require(MovedIndex(0, steps, 0) == 0);
    if (!table.empty()) {
        const int entries = static_cast<int>(table.size());
        const int a = input.Byte() % entries, b = input.Byte() % entries;
        CheckRange(lo, hi, held, table);
        CheckMove(std::min(a, b), std::max(a, b), steps % 2 == 0, steps, table);
        CheckMarks(table, input.Take<std::int16_t>() % 900, input.Take<std::uint8_t>());
    }
    LayoutRequest request;
    request.type = static_cast<EColorSliderType>(input.Byte() % 6);
    request.layout = static_cast<EColorSliderLayoutType>(input.Byte() % 5);
    request.showEdit = !input.OneIn(2);
    request.editAtPosition = input.OneIn(4);
    for (int* each : {&request.sliderWidth, &request.sliderHeight, &request.nameTextWidth, &request.unitTextWidth,
                      &request.editWidth, &request.editHeight, &request.editX, &request.editY})
        *each = !input.OneIn(4) ? input.Take<std::int16_t>() : input.Take<std::int32_t>();
    const Layout at = LayOut(request);
    Require(at.thumb.cx >= 10 && at.thumb.cy >= 25 && at.width >= 0 && at.height >= 30);
    for (const Place& place : {at.name, at.unit, at.edit, at.minimumEdit, at.spin})
        Require(place.cx >= 0 && place.cy >= 0);
    Require(request.showEdit || !(at.edit.IsWanted() || at.minimumEdit.IsWanted() || at.unit.IsWanted()));
    Require(ThumbFor(steps, 3, 9, 20) == (steps <= 6 ? Thumb::Minimum : Thumb::Maximum));
    return 0;
}
