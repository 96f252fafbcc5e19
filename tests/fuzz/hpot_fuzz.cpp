// The slider's rules against the same formulas, written down a second time, where no table has all their branches; and
// what every drawn scale has to keep.
#include "scale_fuzz.h"

#include <cfloat>

using namespace kx::hpot;

namespace {

double Finite(Input& input) {
    const double number = input.Number(160);
    return std::isfinite(number) ? number : 1;
}

bool IsSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

int Whole(double value) {
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return value == value ? static_cast<int>(value) : 0;
}

// The ends of regions are the same from the track as they are by value. Regions that are next to nothing beside their
// values have no ends to be told apart, and what leads out of the numbers is left as it came.
void CheckEnds(const Scale& s) {
    const Held held;
    const auto value = [&](double v, bool fromTrack) { return ThumbPosToValue(s, v, fromTrack, held, false).value; };
    Require(IsSame(value(s.maximum, true), value(s.maximum, false)));
    const int last = static_cast<int>(s.values.size()) - 1;
    const double width = (s.maximum - s.minimum) / last;
    if (s.type != eHPotType_LinearRegions || last < 1 || !std::isfinite(width)) return;
    if (std::fabs(width) <= 1e-9 * std::fmax(std::fabs(s.minimum), std::fabs(s.maximum))) return;
    double largest = 0;
    for (const double each : s.values)
        largest = std::fmax(largest, std::fabs(each));
    if (s.step != 0 && !std::isfinite(4 * largest / s.step)) return;
    for (int i = 1; i < last; i++)
        Require(IsSame(value(s.minimum + i * width, true), value(s.values[static_cast<std::size_t>(i)], false)));
}

// ---- The formulas --------------------------------------------------------------------------------------------------

bool IsList(const Scale& s) { return s.type == 1 || s.type == 3; }
int Last(const Scale& s) { return static_cast<int>(s.values.size()) - 1; }
double V(const Scale& s, int i) { return s.values[static_cast<std::size_t>(i)]; }

int Nearest(const Scale& s, double v) {
    int best = 0;
    for (int i = 1; i <= Last(s); i++)
        if (!(std::fabs(v - V(s, i)) > std::fabs(v - V(s, best))) && v == v) best = i;
    return best;
}

Held Value(const Scale& s, double v, bool fromTrack, const Held& held, bool stick) {
    const double raw = v;
    if (IsList(s)) {
        if (s.values.empty()) return {v, held.index};
        int i = Nearest(s, v);
        if (stick && i == held.index) {
            const int larger = V(s, 0) > V(s, Last(s)) ? i - 1 : i + 1, to = v > held.value ? larger : 2 * i - larger;
            if (v != held.value && v == v && to >= 0 && to <= Last(s)) return {V(s, to), to};
        }
        return {V(s, i), i};
    }
    if (s.type == 0 && s.step != 0) v = std::trunc((v - s.minimum) / s.step + 0.5) * s.step + s.minimum;
    if (s.type == 2) {
        const double w = (s.maximum - s.minimum) / Last(s);
        if (fromTrack && Last(s) >= 1 && w != 0) {
            const double at = (v - s.minimum) / w, most = std::fmax(std::fabs(s.minimum), std::fabs(s.maximum));
            const double blur = 8 * DBL_EPSILON * (most / std::fabs(w) + Last(s));
            int end = w > 0 ? v >= s.maximum ? Last(s) : 0 : v <= s.maximum ? Last(s) : 0;
            for (int i = 1; i <= Last(s) && end == 0; i++)
                if (std::round(at) == i && std::fabs(at - i) <= blur) end = i;
            const int i = std::min(std::max(Whole(at), 0), Last(s) - 1);
            v = end > 0 ? V(s, end) : V(s, i) + (v - (i * w + s.minimum)) * (V(s, i + 1) - V(s, i)) / w;
        }
        if (s.step != 0 && !s.values.empty()) {
            int k = 1;
            while (k <= Last(s) && !(V(s, k) >= v))
                k++;
            if (k > Last(s)) k = 1;
            v = V(s, k - 1) + std::round((v - V(s, k - 1)) / s.step) * s.step;
        }
    }
    return {std::isfinite(v) ? v : raw, held.index};
}

double Cut(const Scale& s, double v) {
    const double low = std::fmin(s.minimum, s.maximum), high = std::fmax(s.minimum, s.maximum);
    return v < low ? low : v > high ? high : v;
}

double Micro(double v) { return std::round(v * 1e5) / 1e5; }

double Move(const Scale& s, const Held& held, int steps) {
    double v = held.value;
    if (s.type == 0) v += steps * (s.wheelStepOverride != 0 ? s.wheelStepOverride : s.wheelStep);
    if (IsList(s) && Last(s) >= 0)
        v = V(s, static_cast<int>(std::min<long long>(std::max(0LL, 0LL + held.index + steps), Last(s))));
    if (s.type == 2 && Last(s) >= 0) {
        v = Cut(s, v + steps * s.step);
        // The bound that is met first.
        double first = v;
        for (const double bound : s.values) {
            if (Micro(held.value) < Micro(v) && Micro(bound) > Micro(held.value) && Micro(bound) < Micro(first))
                first = bound;
            if (Micro(held.value) > Micro(v) && Micro(bound) < Micro(held.value) && Micro(bound) > Micro(first))
                first = bound;
        }
        v = first;
    }
    const bool moves = s.type == 0 || ((IsList(s) || s.type == 2) && Last(s) >= 0);
    if (!moves) return held.value;
    return Cut(s, std::isfinite(v) ? v : held.value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Scale scale;
    scale.type = static_cast<eHPotType>(input.Byte() % 6 - 1);
    scale.minimum = Finite(input);
    scale.maximum = Finite(input);
    scale.step = Finite(input);
    scale.wheelStep = Finite(input);
    scale.wheelStepOverride = Finite(input);
    const int count = input.Byte() % 9;
    const bool sorted = !input.OneIn(4);
    for (int i = 0; i < count; ++i) {
        scale.values.push_back(Finite(input));
        if (i > 0) scale.regionSteps.push_back(Finite(input));
    }
    if (sorted) std::sort(scale.values.begin(), scale.values.end());
    if (sorted && count % 2 == 0) std::reverse(scale.values.begin(), scale.values.end());
    if (count > 0 && scale.type != eHPotType_Linear) {
        scale.minimum = scale.values.front();
        scale.maximum = scale.values.back();
    }
    const int length = input.Take<std::int16_t>() % 1500;
    const int steps = !input.OneIn(8) ? input.Take<std::int8_t>() : std::numeric_limits<int>::max();
    const Held held{Finite(input), count > 0 ? input.Byte() % count : 0};
    const double value = input.Number(160);
    const bool fromTrack = !input.OneIn(2), stick = !input.OneIn(2);

    const double extent = std::fabs(scale.maximum - scale.minimum);
    if (extent > 1e-290 && extent < 1e290 && (scale.type == eHPotType_Linear || IsList(scale)))
        Require(ValueToThumbPos(scale, scale.minimum, length) == 0 &&
                std::abs(ValueToThumbPos(scale, scale.maximum, length) - length) <= 1);
    Require(NearestEntry(scale, value) == Nearest(scale, value));
    const Held found = ThumbPosToValue(scale, value, fromTrack, held, stick);
    const Held expected = Value(scale, value, fromTrack, held, stick);
    Require(IsSame(found.value, expected.value) && found.index == expected.index);
    Require(CalculateMove(scale, held, steps) == Move(scale, held, steps));
    const double raw = ThumbPosToRaw(scale, input.Take<std::int16_t>(), length);
    Require(raw == Cut(scale, raw));
    CheckEnds(scale);
    CheckTicks(Ticks(scale, SpaceFor(length)), length);
    return 0;
}
