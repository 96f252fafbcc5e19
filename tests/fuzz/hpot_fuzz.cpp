// The slider's rules against the same formulas, written down a second time; and what every drawn scale has to keep.
#include <kxdevui/controls/hpot_rules.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace kx::hpot;

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
    // Whole and half numbers for the most part: ties and bounds are met by these alone.
    double Number() {
        const auto kind = Take<std::uint8_t>();
        if (kind < 160) return Take<std::int8_t>() / 2.0;
        if (kind < 240) return Take<std::int16_t>() / 64.0;
        return Take<double>();
    }
    double Finite() {
        const double number = Number();
        return std::isfinite(number) ? number : 1;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

void Require(bool condition) {
    if (!condition) std::abort();
}

bool IsSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

int Whole(double value) {
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    return value == value ? static_cast<int>(value) : 0;
}

// ---- The formulas --------------------------------------------------------------------------------------------------

bool IsList(const Scale& s) { return s.type == 1 || s.type == 3; }
int Last(const Scale& s) { return static_cast<int>(s.values.size()) - 1; }
double V(const Scale& s, int i) { return s.values[static_cast<std::size_t>(i)]; }

int Position(const Scale& s, double v, int length) {
    if (s.type < 0 || s.type > 3) return Whole(v);
    if (s.maximum == s.minimum) return 0;
    if (s.type != 2 || Last(s) < 1) return Whole((v - s.minimum) * length / (s.maximum - s.minimum));
    const double w = std::fabs((s.maximum - s.minimum) / Last(s));
    int i = 0;
    if (s.maximum > s.minimum) {
        while (i < Last(s) - 1 && V(s, i + 1) < v)
            i++;
        const double part = V(s, i + 1) == V(s, i) ? 0 : (v - V(s, i)) * w / std::fabs(V(s, i + 1) - V(s, i));
        return Whole((part + i * w) * length / (s.maximum - s.minimum));
    }
    while (i < Last(s) - 1 && V(s, i + 1) > v)
        i++;
    const double part = V(s, i + 1) == V(s, i) ? 0 : (V(s, i) - v) * w / std::fabs(V(s, i + 1) - V(s, i));
    return Whole((part + i * w) * length / (s.minimum - s.maximum));
}

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
            if (v > held.value && i < Last(s)) return {V(s, i + 1), i + 1};
            if (v < held.value && i >= 1) return {V(s, i - 1), i - 1};
        }
        return {V(s, i), i};
    }
    if (s.type == 0 && s.step != 0) v = std::trunc((v - s.minimum) / s.step + 0.5) * s.step + s.minimum;
    if (s.type == 2) {
        const double w = (s.maximum - s.minimum) / Last(s);
        if (fromTrack && Last(s) >= 1 && w != 0) {
            const int i = std::min(std::max(Whole((v - s.minimum) / w), 0), Last(s) - 1);
            v = V(s, i) + (v - (i * w + s.minimum)) * (V(s, i + 1) - V(s, i)) / w;
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

// ---- The drawn scale -----------------------------------------------------------------------------------------------

void CheckTicks(const Scale& s, int length) {
    const auto width = [](const std::wstring& text) { return static_cast<int>(6 * text.size()); };
    const TickSpace space{length, 5, 7, 9, 4, width};
    int before = -1, end = std::numeric_limits<int>::min() / 2;
    for (const Tick& tick : Ticks(s, space)) {
        Require(tick.position >= before && tick.position >= 0 && tick.position <= length);
        before = tick.position;
        if (tick.label.empty()) continue;
        Require(tick.labelLeft >= -5 && tick.labelLeft >= end + 9);
        end = tick.labelLeft + width(tick.label);
        Require(end <= length + 7);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Scale scale;
    scale.type = static_cast<eHPotType>(input.Take<std::uint8_t>() % 6 - 1);
    scale.minimum = input.Finite();
    scale.maximum = input.Finite();
    scale.step = input.Finite();
    scale.wheelStep = input.Finite();
    scale.wheelStepOverride = input.Finite();
    const int count = input.Take<std::uint8_t>() % 9;
    const bool sorted = input.Take<std::uint8_t>() % 4 != 0;
    for (int i = 0; i < count; ++i) {
        scale.values.push_back(input.Finite());
        if (i > 0) scale.regionSteps.push_back(input.Finite());
    }
    if (sorted) std::sort(scale.values.begin(), scale.values.end());
    if (sorted && count % 2 == 0) std::reverse(scale.values.begin(), scale.values.end());
    if (count > 0 && scale.type != eHPotType_Linear) {
        scale.minimum = scale.values.front();
        scale.maximum = scale.values.back();
    }
    const int length = input.Take<std::int16_t>() % 1500;
    const int steps = input.Take<std::uint8_t>() % 8 != 0 ? input.Take<std::int8_t>() : std::numeric_limits<int>::max();
    const Held held{input.Finite(), count > 0 ? input.Take<std::uint8_t>() % count : 0};
    const double value = input.Number();
    const bool fromTrack = input.Take<std::uint8_t>() % 2 != 0, stick = input.Take<std::uint8_t>() % 2 != 0;

    Require(ValueToThumbPos(scale, value, length) == Position(scale, value, length));
    Require(NearestEntry(scale, value) == Nearest(scale, value));
    const Held found = ThumbPosToValue(scale, value, fromTrack, held, stick);
    const Held expected = Value(scale, value, fromTrack, held, stick);
    Require(IsSame(found.value, expected.value) && found.index == expected.index);
    Require(CalculateMove(scale, held, steps) == Move(scale, held, steps));
    const double raw = ThumbPosToRaw(scale, input.Take<std::int16_t>(), length);
    Require(raw == Cut(scale, raw));
    CheckTicks(scale, length);
    return 0;
}
