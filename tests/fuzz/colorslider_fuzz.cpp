// The colour slider's rules against the same formulas, written down a second time; and what every layout has to keep.
#include <kxdevui/controls/hpot_rules.h>
#include <kxdevui/light/colorslider_rules.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace kx::colorslider;

namespace {

// Takes numbers off the input; zeros when there is nothing left.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    template <class T>
    T Take() {
        T value{};
        const std::size_t taken = std::min(sizeof value, m_size);
        std::memcpy(&value, m_data, taken);
        m_data += taken;
        m_size -= taken;
        return value;
    }
    // Whole and half numbers for the most part: ties are met by these alone.
    double Number() {
        const auto kind = Take<std::uint8_t>();
        if (kind < 200) return Take<std::int8_t>() / 2.0;
        if (kind < 240) return Take<std::int16_t>() / 64.0;
        return Take<double>();
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

void Require(bool condition) {
    if (!condition) std::abort();
}

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
    const auto width = [](const std::wstring& text) { return static_cast<int>(6 * text.size()); };
    const auto ticks = kx::hpot::MarkTicks(scale, marks, {length, 5, 7, 9, 4, width});
    int before = -1, end = -1000;
    for (const auto& tick : ticks) {
        Require(tick.position > before && tick.position <= length);
        before = tick.position;
        if (tick.label.empty()) continue;
        Require(tick.major && tick.labelLeft >= -5 && tick.labelLeft >= end + 9);
        end = tick.labelLeft + width(tick.label);
        Require(end <= length + 7);
    }
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
    const int count = input.Take<std::uint8_t>() % 12;
    const bool sorted = input.Take<std::uint8_t>() % 4 != 0;
    for (int i = 0; i < count; ++i) {
        const double number = input.Number();
        if (std::isfinite(number)) table.push_back(number);
    }
    if (sorted) std::sort(table.begin(), table.end());
    const double lo = input.Number(), hi = input.Number(), other = input.Number();
    const double held = input.Take<std::uint8_t>() % 2 != 0 ? lo : other;
    const int steps = input.Take<std::uint8_t>() % 8 != 0 ? input.Take<std::int8_t>() : input.Take<std::int32_t>();
    CheckNearest(lo, table);
    Require(MovedIndex(0, steps, 0) == 0);
    if (!table.empty()) {
        const int entries = static_cast<int>(table.size());
        const int a = input.Take<std::uint8_t>() % entries, b = input.Take<std::uint8_t>() % entries;
        CheckRange(lo, hi, held, table);
        CheckMove(std::min(a, b), std::max(a, b), steps % 2 == 0, steps, table);
        CheckMarks(table, input.Take<std::int16_t>() % 900, input.Take<std::uint8_t>());
    }
    LayoutRequest request;
    request.type = static_cast<EColorSliderType>(input.Take<std::uint8_t>() % 6);
    request.layout = static_cast<EColorSliderLayoutType>(input.Take<std::uint8_t>() % 5);
    request.showEdit = input.Take<std::uint8_t>() % 2 != 0;
    request.editAtPosition = input.Take<std::uint8_t>() % 4 == 0;
    for (int* each : {&request.sliderWidth, &request.sliderHeight, &request.nameTextWidth, &request.unitTextWidth,
                      &request.editWidth, &request.editHeight, &request.editX, &request.editY})
        *each = input.Take<std::uint8_t>() % 4 != 0 ? input.Take<std::int16_t>() : input.Take<std::int32_t>();
    const Layout at = LayOut(request);
    Require(at.thumb.cx >= 10 && at.thumb.cy >= 25 && at.width >= 0 && at.height >= 30);
    for (const Place& place : {at.name, at.unit, at.edit, at.minimumEdit, at.spin})
        Require(place.cx >= 0 && place.cy >= 0);
    Require(request.showEdit || !(at.edit.IsWanted() || at.minimumEdit.IsWanted() || at.unit.IsWanted()));
    Require(ThumbFor(steps, 3, 9, 20) == (steps <= 6 ? Thumb::Minimum : Thumb::Maximum));
    return 0;
}
