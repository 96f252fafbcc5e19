// Where the scale of a slider has its ticks, and what stands below them.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>
#include <utility>

#include <kxdevui/controls/hpot_rules.h>

namespace kx::hpot {

namespace {

// ---- Texts ---------------------------------------------------------------------------------------------------------

// The standard's formatting for people depends on the locale that a host may have set; this does not.
std::string Formatted(double value, std::chars_format format, int digits) {
    char text[400];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value, format, digits);
    if (error != std::errc{}) return {};
    return {text, end};
}

// "2.500" as "2.5", "-0" as "0", "2.50e+07" as "2.5e7".
std::string Shortened(std::string text) {
    std::string exponent;
    if (const auto e = text.find('e'); e != std::string::npos) {
        int power = 0;
        std::from_chars(text.data() + e + (text[e + 1] == '+' ? 2 : 1), text.data() + text.size(), power);
        text.erase(e);
        if (power != 0) exponent = 'e' + std::to_string(power);
    }
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    return text == "-0" || text == "0" ? "0" : text + exponent;
}

// What each text may be wrong by.
std::vector<double> Tolerances(std::span<const double> values) {
    std::vector<double> sorted(values.begin(), values.end()), tolerances;
    std::sort(sorted.begin(), sorted.end());
    for (const double value : values) {
        const auto [low, high] = std::equal_range(sorted.begin(), sorted.end(), value);
        double tolerance = value == 0 ? HUGE_VAL : std::abs(value) / 200;
        if (low != sorted.begin()) tolerance = std::min(tolerance, (value - *(low - 1)) / 20);
        if (high != sorted.end()) tolerance = std::min(tolerance, (*high - value) / 20);
        tolerances.push_back(tolerance);
    }
    return tolerances;
}

struct Texts {
    std::vector<std::string> each;
    std::size_t longest = 0;
};

// All values in one format, with as few digits as the tolerances allow; empty when 17 would not do.
std::optional<Texts> Fitting(std::span<const double> values, const std::vector<double>& tolerances,
                             std::chars_format format) {
    for (int digits = 0; digits <= 17; ++digits) {
        Texts texts;
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::string text = Shortened(Formatted(values[i], format, digits));
            double shown = 0;
            std::from_chars(text.data(), text.data() + text.size(), shown);
            if (!(std::abs(shown - values[i]) <= tolerances[i])) break;
            texts.longest = std::max(texts.longest, text.size());
            texts.each.push_back(std::move(text));
        }
        if (texts.each.size() == values.size()) return texts;
    }
    return std::nullopt;
}

// ---- Places --------------------------------------------------------------------------------------------------------

// The bounds of an unsorted list may stand anywhere.
bool IsOnTrack(int position, const TickSpace& space) { return position >= 0 && position <= space.trackLength; }

struct Place {
    int left, right;
};

// Where a text of this width stands for a tick: centred, and moved into the room. Empty when it is wider than that.
std::optional<Place> PlaceOf(int position, int width, const TickSpace& space) {
    const int first = -space.before, last = space.trackLength + space.after - width;
    if (last < first) return std::nullopt;
    const int left = std::clamp(position - width / 2, first, last);
    return Place{left, left + width};
}

// Gives each tick its text unless it comes too near to another. The first and the last come first: they say how far the
// scale reaches. Returns whether all of them have one; with `allOrNone` the first that has none ends it, and with
// `aside` one that comes too near may come a third nearer, somewhat to the right of its tick.
bool PlaceLabels(std::vector<Tick>& ticks, const std::vector<std::wstring>& labels, const TickSpace& space,
                 bool allOrNone, bool aside = false) {
    std::vector<Place> taken;
    const auto isFree = [&](const std::optional<Place>& at, int gap) {
        return at && std::none_of(taken.begin(), taken.end(), [&](const Place& each) {
                   return at->left < each.right + gap && each.left < at->right + gap;
               });
    };
    const auto place = [&](std::size_t i) {
        const int width = space.widthOf(labels[i]);
        auto at = PlaceOf(ticks[i].position, width, space);
        if (!isFree(at, space.labelGap)) {
            // Over the text still, a tick is known for its own.
            const int closer = 2 * space.labelGap / 3, farthest = aside ? width / 3 : -1;
            int by = 0;
            while (by <= farthest && !isFree(at = PlaceOf(ticks[i].position + by, width, space), closer))
                ++by;
            if (by > farthest) return false;
        }
        taken.push_back(*at);
        ticks[i].label = labels[i];
        ticks[i].labelLeft = at->left;
        ticks[i].major = true;
        return true;
    };
    bool all = true;
    if (!ticks.empty()) all = place(0);
    if (ticks.size() > 1) all &= place(ticks.size() - 1);
    for (std::size_t i = 1; i + 1 < ticks.size() && (all || !allOrNone); ++i)
        all &= place(i);
    return all;
}

// A tick at each value, those left out that would stand too near to the one before.
std::vector<Tick> TicksAt(const Scale& scale, std::span<const double> values, const TickSpace& space) {
    struct Stop {
        int position;
        double value;
    };
    std::vector<Stop> stops, kept;
    for (const double value : values) {
        const int position = ValueToThumbPos(scale, value, space.trackLength);
        if (IsOnTrack(position, space)) stops.push_back({position, value});
    }
    std::sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) { return a.position < b.position; });
    for (const Stop& stop : stops) {
        if (kept.empty() || stop.position - kept.back().position >= space.tickGap) kept.push_back(stop);
    }
    if (kept.size() > 1) kept.back() = stops.back();
    std::vector<double> shown;
    std::vector<Tick> ticks;
    for (const Stop& stop : kept) {
        shown.push_back(stop.value);
        ticks.push_back({stop.position, false, {}, 0});
    }
    PlaceLabels(ticks, Labels(shown), space, false);
    return ticks;
}

// ---- Linear --------------------------------------------------------------------------------------------------------

// A step of mantissa * 10 ^ exponent.
struct RoundStep {
    int mantissa;  // 1, 2 or 5
    int exponent;

    // Dividing by a power of ten gives the very double that a person would write, multiplying by a tenth does not.
    double Times(double count) const {
        const double digits = count * mantissa;
        return exponent < 0 ? digits / std::pow(10.0, -exponent) : digits * std::pow(10.0, exponent);
    }
    RoundStep Next() const {
        return mantissa == 1   ? RoundStep{2, exponent}
               : mantissa == 2 ? RoundStep{5, exponent}
                               : RoundStep{1, exponent + 1};
    }
};

struct Multiple {
    double count;  // how many steps
    double value;
};

// The multiples of a step within the range.
std::vector<Multiple> Multiples(const Scale& scale, RoundStep step) {
    const auto [low, high] = std::minmax(scale.minimum, scale.maximum);
    constexpr double slack = 1e-9;
    const double first = std::ceil(low / step.Times(1) - slack), last = std::floor(high / step.Times(1) + slack);
    std::vector<Multiple> multiples;
    for (int i = 0; i <= Truncated(last - first); ++i)
        multiples.push_back({first + i, Clamped(scale, step.Times(first + i))});
    return multiples;
}

// The finest of the steps whose multiples are as far apart as this, in pixels; empty when numbers end there.
std::optional<RoundStep> FinestStep(const Scale& scale, int trackLength, int pixels) {
    const double least = std::abs(scale.maximum - scale.minimum) * pixels / trackLength;
    if (!std::isnormal(least) || std::abs(std::log10(least)) > 290) return std::nullopt;
    RoundStep step{1, static_cast<int>(std::floor(std::log10(least)))};
    while (step.Times(1) < least)
        step = step.Next();
    return step;
}

// How many of the finer steps make a coarser one, if that is a whole number; else 0.
double Ratio(RoundStep finer, RoundStep coarser) {
    const double ratio = coarser.Times(1) / finer.Times(1);
    return std::abs(ratio - std::round(ratio)) < 1e-6 ? std::round(ratio) : 0;
}

// Small ticks between those at the multiples of a step, the finest that are far enough apart and lead from one to the
// next.
void AddFineTicks(std::vector<Tick>& ticks, const Scale& scale, RoundStep fine, RoundStep step, int trackLength) {
    while (Ratio(fine, step) == 0)
        fine = fine.Next();
    const double ratio = Ratio(fine, step);
    for (const auto& [count, value] : Multiples(scale, fine)) {
        if (std::fmod(count, ratio) != 0) ticks.push_back({ValueToThumbPos(scale, value, trackLength), false, {}, 0});
    }
}

std::vector<Tick> LinearTicks(const Scale& scale, const TickSpace& space) {
    const auto finest = FinestStep(scale, space.trackLength, std::max(space.tickGap, 1));
    const auto legible = FinestStep(scale, space.trackLength, std::max(1, space.labelGap + space.widthOf(L"0")));
    const double ends[] = {scale.minimum, scale.maximum};
    if (!finest || !legible) return TicksAt(scale, ends, space);
    const double range = std::abs(scale.maximum - scale.minimum);
    for (RoundStep step = *legible; step.Times(1) <= range; step = step.Next()) {
        std::vector<Tick> ticks;
        std::vector<double> values;
        for (const Multiple& multiple : Multiples(scale, step)) {
            values.push_back(multiple.value);
            ticks.push_back({ValueToThumbPos(scale, multiple.value, space.trackLength), true, {}, 0});
        }
        if (values.size() < 2) break;
        if (!PlaceLabels(ticks, Labels(values), space, true)) continue;
        AddFineTicks(ticks, scale, *finest, step, space.trackLength);
        return ticks;
    }
    return TicksAt(scale, ends, space);
}

// ---- Regions -------------------------------------------------------------------------------------------------------

// Small ticks at a region's steps, or at 2, 5, 10 ... of them where they would stand too close.
void AddRegionTicks(std::vector<Tick>& ticks, const Scale& scale, std::size_t region, const TickSpace& space) {
    const double from = scale.values[region], to = scale.values[region + 1];
    const double step = std::abs(scale.regionSteps[region]), extent = std::abs(to - from);
    const double pixels = static_cast<double>(space.trackLength) / static_cast<double>(scale.values.size() - 1);
    if (!(step > 0) || !(extent > 0)) return;
    RoundStep factor{1, 0};
    while (factor.exponent < 9 && step * factor.Times(1) / extent * pixels < std::max(space.tickGap, 1))
        factor = factor.Next();
    const double stride = step * factor.Times(1);
    for (int i = 1; i < Truncated(std::ceil(std::min(extent / stride, pixels))); ++i) {
        const double value = from + (to > from ? i : -i) * stride;
        const int position = ValueToThumbPos(scale, value, space.trackLength);
        if (IsOnTrack(position, space)) ticks.push_back({position, false, {}, 0});
    }
}

std::vector<Tick> RegionTicks(const Scale& scale, const TickSpace& space) {
    std::vector<Tick> ticks = TicksAt(scale, scale.values, space);
    for (std::size_t i = 0; i < scale.regionSteps.size() && i + 1 < scale.values.size(); ++i)
        AddRegionTicks(ticks, scale, i, space);
    return ticks;
}

std::vector<Tick> Sorted(std::vector<Tick> ticks) {
    std::stable_sort(ticks.begin(), ticks.end(), [](const Tick& a, const Tick& b) { return a.position < b.position; });
    return ticks;
}

}  // namespace

std::vector<std::wstring> Labels(std::span<const double> values) {
    const std::vector<double> tolerances = Tolerances(values);
    const double largest = std::accumulate(values.begin(), values.end(), 0.0,
                                           [](double most, double value) { return std::max(most, std::abs(value)); });
    std::optional<Texts> plain;
    if (largest < 1e15) plain = Fitting(values, tolerances, std::chars_format::fixed);
    constexpr std::size_t readable = 7;
    if (!plain || plain->longest > readable) {
        auto scientific = Fitting(values, tolerances, std::chars_format::scientific);
        if (!plain || (scientific && scientific->longest < plain->longest)) plain = std::move(scientific);
    }
    std::vector<std::wstring> labels(values.size());
    for (std::size_t i = 0; plain && i < values.size(); ++i)
        labels[i].assign(plain->each[i].begin(), plain->each[i].end());
    return labels;
}

std::vector<Tick> Ticks(const Scale& scale, const TickSpace& space) {
    if (space.trackLength <= 0) return {};
    std::vector<Tick> ticks;
    if (scale.IsList()) {
        ticks = TicksAt(scale, scale.values, space);
    } else if (scale.type == eHPotType_LinearRegions) {
        ticks = RegionTicks(scale, space);
    } else if (scale.type == eHPotType_Linear) {
        ticks = LinearTicks(scale, space);
    }
    return Sorted(std::move(ticks));
}

std::vector<Tick> MarkTicks(const Scale& scale, std::span<const Mark> marks, const TickSpace& space) {
    if (space.trackLength <= 0) return {};
    std::vector<Tick> labelled, plain;
    std::vector<double> shown;
    std::vector<std::wstring> own;
    for (const Mark& mark : marks) {
        const Tick tick{ValueToThumbPos(scale, mark.value, space.trackLength), mark.isLabelled, {}, 0};
        if (!IsOnTrack(tick.position, space)) continue;
        (mark.isLabelled ? labelled : plain).push_back(tick);
        if (mark.isLabelled) shown.push_back(mark.value), own.push_back(mark.label);
    }
    std::vector<std::wstring> labels = Labels(shown);
    for (std::size_t i = 0; i < own.size(); ++i)
        if (!own[i].empty()) labels[i] = own[i];
    PlaceLabels(labelled, labels, space, false, true);
    labelled.insert(labelled.end(), plain.begin(), plain.end());
    std::vector<Tick> ticks;
    for (Tick& tick : Sorted(std::move(labelled))) {
        if (ticks.empty() || ticks.back().position != tick.position) {
            ticks.push_back(std::move(tick));
        } else if (ticks.back().label.empty() && !tick.label.empty()) {
            ticks.back() = std::move(tick);
        }
    }
    return ticks;
}

}  // namespace kx::hpot
