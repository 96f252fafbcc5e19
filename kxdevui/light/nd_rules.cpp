#include <kxdevui/light/nd_rules.h>

#include <cmath>
#include <limits>

namespace kx::nd {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

}  // namespace

bool IsTransmission(double transmission) noexcept { return transmission >= 0 && transmission <= 1; }

// Without the sign of a zero.
double DensityOf(double transmission) noexcept {
    return IsTransmission(transmission) ? 0.0 - std::log10(transmission) : kNone;
}

double TransmissionOf(double density) noexcept { return density >= 0 ? std::pow(10, -density) : kNone; }

double InSeries(std::span<const double> transmissions) noexcept {
    double product = 1;
    for (const double each : transmissions)
        product *= IsTransmission(each) ? each : kNone;
    return product;
}

CKxStringW PercentText(double transmission) {
    CKxStringW text(L"?");
    if (IsTransmission(transmission)) text.Format(32, L"%.3g %%", transmission * 100);
    return text;
}

CKxStringW DensityText(double transmission) {
    CKxStringW text(L"?");
    if (transmission == 0)
        text = L"OD \u221E";
    else if (IsTransmission(transmission))
        text.Format(32, L"OD %g", std::round(DensityOf(transmission) * 100) / 100);
    return text;
}

}  // namespace kx::nd
