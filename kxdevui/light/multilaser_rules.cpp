#include <kxdevui/light/multilaser_rules.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kx::multilaser {

namespace {

// Of the logarithmic scale.
constexpr int kGap = 10, kToDecade = 20, kDecades = 4, kFirstDecade = -2;
constexpr double kFull = 100;

// Whole numbers divided by powers of ten are the very doubles that a person would write.
double Decimal(double digits, int exponent) { return digits / std::pow(10.0, -exponent); }

bool IsNumber(double value) { return std::isfinite(value); }

}  // namespace

int LastPlace(EKxPowerScale scale) noexcept {
    return scale == EKxPowerScale::Linear ? static_cast<int>(kFull) : kGap + kToDecade * kDecades;
}

double PowerAt(EKxPowerScale scale, int place) noexcept {
    place = std::clamp(place, 0, LastPlace(scale));
    if (scale == EKxPowerScale::Linear) return place;
    if (2 * place < kGap) return 0;
    const int step = std::max(place - kGap, 0), decade = step / kToDecade;
    const double digits = std::round(10 * std::pow(10.0, static_cast<double>(step % kToDecade) / kToDecade));
    return Decimal(digits * std::pow(10.0, decade), kFirstDecade - 1);
}

double PlaceOf(EKxPowerScale scale, double power) noexcept {
    if (!(power > 0)) return 0;
    if (scale == EKxPowerScale::Linear) return std::min(power, kFull);
    const double place = kGap + kToDecade * (std::log10(power) - kFirstDecade);
    return std::clamp<double>(place, kGap, LastPlace(scale));
}

int PlaceAfter(EKxPowerScale scale, double from, double to) noexcept {
    const int place = std::clamp(hpot::Truncated(std::round(to)), 0, LastPlace(scale));
    if (scale == EKxPowerScale::Linear || place >= kGap) return place;
    return to > from ? kGap : 0;
}

std::vector<hpot::Mark> MarksOf(EKxPowerScale scale) {
    std::vector<hpot::Mark> marks;
    if (scale == EKxPowerScale::Linear) {
        for (int percent = 0; percent <= 100; percent += 10)
            marks.push_back({static_cast<double>(percent), percent % 20 == 0});
        return marks;
    }
    marks.push_back({0, true, L"0"});
    static constexpr const wchar_t* labels[] = {L"0.01", L"0.1", L"1", L"10", L"100"};
    for (int decade = 0; decade <= kDecades; ++decade) {
        for (const double digit : {1.0, 2.0, 5.0}) {
            if (decade == kDecades && digit > 1) break;
            const double power = Decimal(digit * std::pow(10.0, decade), kFirstDecade);
            marks.push_back({PlaceOf(scale, power), digit == 1, digit == 1 ? labels[decade] : L""});
        }
    }
    return marks;
}

// ---- Lines ---------------------------------------------------------------------------------------------------------

SKxLaserLine Cleaned(SKxLaserLine line) {
    const auto percent = [](double value) { return IsNumber(value) ? std::clamp(value, 0.0, kFull) : 0; };
    if (!IsNumber(line.wavelength) || line.wavelength <= 0) line.wavelength = 0;
    if (!IsNumber(line.fullPower) || line.fullPower <= 0) line.fullPower = 0;
    if (line.measured && !IsNumber(*line.measured)) line.measured.reset();
    if (line.gain && !IsNumber(*line.gain)) line.gain.reset();
    line.power = percent(line.power);
    line.limit = percent(line.limit);
    return line;
}

std::vector<long> ByWavelength(std::span<const SKxLaserLine> lines) {
    std::vector<long> order(lines.size());
    std::iota(order.begin(), order.end(), 0L);
    const auto key = [&](long index) {
        const double wavelength = lines[static_cast<std::size_t>(index)].wavelength;
        return IsNumber(wavelength) && wavelength > 0 ? wavelength : HUGE_VAL;
    };
    std::stable_sort(order.begin(), order.end(), [&](long a, long b) { return key(a) < key(b); });
    return order;
}

double InUnit(const SKxLaserLine& line, EKxPowerUnit unit, double percent) noexcept {
    return unit == EKxPowerUnit::Milliwatts && line.fullPower > 0 ? percent * line.fullPower / 100 : percent;
}

double FromUnit(const SKxLaserLine& line, EKxPowerUnit unit, double number) noexcept {
    return unit == EKxPowerUnit::Milliwatts && line.fullPower > 0 ? number * 100 / line.fullPower : number;
}

SKxLaserLine Agreed(const SKxLaserLine& before, SKxLaserLine now, double wanted) {
    if (IsOperable(now) && now.power == before.power) now.power = std::min(wanted, now.limit);
    return now;
}

// ---- Several at once -----------------------------------------------------------------------------------------------

double MostFactor(std::span<const Linked> lines) noexcept {
    double most = HUGE_VAL;
    for (const Linked& each : lines) {
        if (each.base > 0) most = std::min(most, each.limit / each.base * 100);
    }
    return std::isfinite(most) ? std::max(most, 100.0) : 100;
}

std::vector<double> PowersAt(std::span<const Linked> lines, double factor) {
    factor = factor > 0 ? std::min(factor, MostFactor(lines)) : 0;
    std::vector<double> powers;
    for (const Linked& each : lines)
        powers.push_back(std::min(std::round(each.base * factor * 100) / 1e4, each.limit));
    return powers;
}

std::vector<SKxLaserSwitch> SoloSteps(std::span<const SKxLaserLine> lines, long line) {
    std::vector<SKxLaserSwitch> steps;
    if (line < 0 || line >= static_cast<long>(lines.size())) return steps;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].on && static_cast<long>(i) != line) steps.push_back({static_cast<long>(i), false});
    }
    if (!lines[static_cast<std::size_t>(line)].on) steps.push_back({line, true});
    return steps;
}

}  // namespace kx::multilaser
