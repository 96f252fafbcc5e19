#include <kxdevui/light/lamp_rules.h>

#include <algorithm>
#include <cmath>

#include <kxsystem/kx_number.h>

namespace kx::lamp {

namespace {

// Without what additions of steps leave behind.
double Tidy(double value) noexcept {
    constexpr double kMillion = 1e6;
    const double tidy = std::round(value * kMillion) / kMillion;
    return std::isfinite(tidy) ? tidy : value;
}

bool IsPositive(double value) noexcept { return std::isfinite(value) && value > 0; }

bool IsSome(double value) noexcept { return std::isfinite(value) && value >= 0; }

}  // namespace

Scale ScaleOf(double minimum, double maximum, double step) noexcept {
    const double least = IsPositive(minimum) ? minimum : 0;
    if (!std::isfinite(maximum) || !(maximum > least)) return {};
    return {least, maximum, IsPositive(step) && step <= maximum - least ? step : 0};
}

bool Has(const Scale& scale, double intensity) noexcept {
    return scale.IsThere() && intensity >= scale.minimum && intensity <= scale.maximum;
}

double Clamped(const Scale& scale, double intensity) noexcept {
    return scale.IsThere() ? std::clamp(intensity, scale.minimum, scale.maximum) : intensity;
}

double Nearest(const Scale& scale, double intensity) noexcept {
    const double wanted = Clamped(scale, intensity);
    if (!(scale.step > 0)) return Clamped(scale, Tidy(wanted));
    const double step = Tidy(scale.minimum + std::round((wanted - scale.minimum) / scale.step) * scale.step);
    const double nearest = Clamped(scale, step);
    return scale.maximum - wanted < std::abs(wanted - nearest) ? scale.maximum : nearest;
}

double StrideOf(const Scale& scale) noexcept {
    if (scale.step > 0 || !scale.IsThere()) return scale.step;
    constexpr double kParts = 100;
    const double most = (scale.maximum - scale.minimum) / kParts, decade = std::pow(10, std::floor(std::log10(most)));
    // A part that is such a number may miss it by its last digit.
    const double digit = most / decade * (1 + 1e-9);
    return (digit >= 5 ? 5 : digit >= 2 ? 2 : 1) * decade;
}

// What stands between two steps goes to the next of them first.
double After(const Scale& scale, double intensity, long strides) noexcept {
    const double from = Clamped(scale, intensity), stride = StrideOf(scale);
    if (!(scale.step > 0)) return Nearest(scale, from + static_cast<double>(strides) * stride);
    constexpr double kSlack = 1e-6;
    const double at = (from - scale.minimum) / stride;
    const double step = strides > 0 ? std::floor(at + kSlack) : std::ceil(at - kSlack);
    return Clamped(scale, Tidy(scale.minimum + (step + static_cast<double>(strides)) * stride));
}

const wchar_t* UnitText(int unit) noexcept {
    switch (unit) {
    case eKxLampUnit_Percent: return L"%";
    case eKxLampUnit_Volts: return L"V";
    default: return L"";
    }
}

double ColorTemperature(int unit, double fullTemperature, double maximum, double intensity) noexcept {
    constexpr double kByVoltage = 0.42, kLightByVoltage = 3.4;
    if (!IsPositive(fullTemperature) || !IsPositive(maximum) || !IsPositive(intensity)) return 0;
    const double power = unit == eKxLampUnit_Volts     ? kByVoltage
                         : unit == eKxLampUnit_Percent ? kByVoltage / kLightByVoltage
                                                       : 0;
    return power > 0 ? fullTemperature * std::pow(intensity / maximum, power) : 0;
}

CKxStringW KelvinText(double kelvin) {
    return IsPositive(kelvin) ? KX_FormatNumber(L"%.0f K", std::round(kelvin / 10) * 10) : CKxStringW();
}

CKxStringW LeftText(double done, double seconds) {
    constexpr double kMinute = 60, kShort = 90;
    if (IsSome(seconds) && seconds <= kShort) return KX_FormatNumber(L"%.0f s", std::ceil(seconds));
    if (IsSome(seconds)) return KX_FormatNumber(L"%.0f min", std::ceil(seconds / kMinute));
    return done >= 0 && done <= 1 ? KX_FormatNumber(L"%.0f %%", std::floor(done * 100)) : CKxStringW();
}

CKxStringW HoursText(double burnt, double rated) {
    if (!IsSome(burnt)) return {};
    const CKxStringW hours = KX_FormatNumber(L"%.0f", std::floor(burnt));
    return IsPositive(rated) ? hours + KX_FormatNumber(L" / %.0f h", rated) : hours + L" h";
}

bool IsWornOut(double burnt, double rated) noexcept { return IsSome(burnt) && IsPositive(rated) && burnt > rated; }

}  // namespace kx::lamp
