#include <kxsystem/kx_color.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// A bell whose two sides differ in width.
double Lobe(double nanometres, double centre, double below, double above) {
    const double t = (nanometres - centre) * (nanometres < centre ? below : above);
    return std::exp(-0.5 * t * t);
}

std::array<double, 3> MatchingFunctions(double nm) {
    return {1.056 * Lobe(nm, 599.8, 0.0264, 0.0323) + 0.362 * Lobe(nm, 442.0, 0.0624, 0.0374) -
                0.065 * Lobe(nm, 501.1, 0.0490, 0.0382),
            0.821 * Lobe(nm, 568.8, 0.0213, 0.0247) + 0.286 * Lobe(nm, 530.9, 0.0613, 0.0322),
            1.217 * Lobe(nm, 437.0, 0.0845, 0.0278) + 0.681 * Lobe(nm, 459.0, 0.0385, 0.0725)};
}

std::array<double, 3> LinearRgb(const std::array<double, 3>& xyz) {
    const auto [x, y, z] = xyz;
    return {3.2406 * x - 1.5372 * y - 0.4986 * z, -0.9689 * x + 1.8758 * y + 0.0415 * z,
            0.0557 * x - 0.2040 * y + 1.0570 * z};
}

double Encoded(double linear) {
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

double Brightness(double nm) {
    return std::clamp(std::min((nm - 380) / (420 - 380), (780 - nm) / (780 - 700)), 0.0, 1.0);
}

}  // namespace

unsigned long KX_RGBFromWavelength(double nanometres) noexcept {
    if (!(nanometres > 380 && nanometres < 780)) return 0;
    // Above, the eye sees one and the same red, while the fit, exact to the small amounts of light there, goes astray
    // in their ratios.
    constexpr double reddest = 650;
    const std::array<double, 3> rgb = LinearRgb(MatchingFunctions(std::min(nanometres, reddest)));
    const double brightest = *std::max_element(rgb.begin(), rgb.end());
    unsigned long color = 0;
    for (std::size_t i = 0; i < rgb.size(); ++i) {
        const double share = std::max(0.0, rgb[i] / brightest) * Brightness(nanometres);
        color |= static_cast<unsigned long>(std::lround(255 * Encoded(share))) << (8 * i);
    }
    return color;
}

unsigned long KX_RGBFromWavelength2(double nanometres) noexcept { return KX_RGBFromWavelength(nanometres); }
