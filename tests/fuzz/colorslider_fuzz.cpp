// The colour slider's rules against the same formulas, written down a second time; and what every layout has to keep.
#include "scale_fuzz.h"

#include <kxdevui/light/colorslider_rules.h>

using namespace kx::colorslider;

namespace {

using Table = std::vector<double>;
double At(const Table& table, int i) { return table[static_cast<std::size_t>(i)]; }
// Differences of these are exact.
bool IsSmall(double v) { return std::fabs(v) < 1e4 && v * 64 == std::round(v * 64); }

// ---- The formulas --------------------------------------------------------------------------------------------------

int Nearest(double v, const Table& t) {
    int i = 0;
    const int count = static_cast<int>(t.size());
    while (i < count - 1 && !(std::fabs(v - At(t, i)) < std::fabs(v - At(t, i + 1))))
        i++;
    return i;
}

void CheckNearest(double v, const Table& t) {
    const int found = NearestEntry(v, t);
    Require(found >= 0 && (found < static_cast<int>(t.size()) || t.empty()));
    if (std::all_of(t.begin(), t.end(), IsSmall) && IsSmall(v)) Require(found == Nearest(v, t));
    if (t.empty() || !std::is_sorted(t.begin(), t.end())) return;
    if (v <= t.front()) Require(At(t, found) == t.front());
    if (v >= t.back()) Require(At(t, found) == t.back());
}

void CheckRange(double lo, double hi, double held, const Table& t) {
    const double a = At(t, NearestEntry(lo, t)), b = At(t, NearestEntry(hi, t));
    const Range r = RangeFor(lo, hi, held, t);
    Require(r.minimum.value == (lo == held ? std::fmin(a, b) : a));
    Require(r.maximum.value == (lo == held ? b : std::fmax(a, b)));
    for (const Entry& e : {r.minimum, r.maximum})
        Require(At(t, e.index) == e.value);
    const Range dragged = Ordered(Snapped(lo, hi, t), GivesWay::Minimum);
    Require(dragged.maximum.value == b && dragged.minimum.value == std::fmin(a, b));
}

void CheckMove(int lo, int hi, bool first, int steps, const Table& t) {
    const long long last = static_cast<long long>(t.size()) - 1;
    const auto cut = [last](long long i) { return i < 0 ? 0 : i > last ? last : i; };
    const Range r = MovedRange({{0, lo}, {0, hi}}, first ? Thumb::Minimum : Thumb::Maximum, steps, t);
    const long long moved = cut((first ? 0LL + lo : 0LL + hi) + steps);
    Require(r.minimum.index == (first ? moved : std::min<long long>(lo, moved)));
    Require(r.maximum.index == (first ? std::max<long long>(hi, moved) : moved));
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
    CheckNearest(lo, table);
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
