#include <kxdevui/light/iris_rules.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include <kxdevui/framework/ui_nearest.h>

namespace kx::iris {

std::vector<double> Table(std::vector<double> steps) {
    std::erase_if(steps, [](double step) { return !std::isfinite(step) || step < 0; });
    std::ranges::sort(steps);
    steps.erase(std::unique(steps.begin(), steps.end()), steps.end());
    return steps;
}

double Nearest(const std::vector<double>& table, double aperture) noexcept {
    return table.empty() ? aperture : table[static_cast<std::size_t>(ui::NearestIndex(aperture, table))];
}

const wchar_t* UnitText(int unit) noexcept {
    switch (unit) {
    case eKxIrisUnit_Percent: return L"%";
    case eKxIrisUnit_Millimetres: return L"mm";
    default: return L"";
    }
}

double Opening(const std::vector<double>& table, double aperture) noexcept {
    if (table.empty() || !(table.back() > 0) || !(aperture > 0)) return 0;
    return std::min(aperture / table.back(), 1.0);
}

double NAOf(const std::vector<double>& table, int unit, double widestNA, double aperture) noexcept {
    const bool isDiameter = unit == eKxIrisUnit_Percent || unit == eKxIrisUnit_Millimetres;
    return isDiameter && widestNA > 0 && std::isfinite(widestNA) ? widestNA * Opening(table, aperture) : 0;
}

double ApertureFor(const std::vector<double>& table, int unit, double widestNA, double objectiveNA,
                   double part) noexcept {
    const double widest = table.empty() ? 0 : NAOf(table, unit, widestNA, table.back());
    if (!(widest > 0) || !(objectiveNA > 0) || !std::isfinite(objectiveNA)) return -1;
    return std::min(part * objectiveNA / widest, 1.0) * table.back();
}

std::string Picture(double opening, const Look& look) {
    constexpr int kBlades = 6;
    constexpr double kMiddle = 24, kRing = 22, kWidest = 19;
    const double open = std::isfinite(opening) ? std::clamp(opening, 0.0, 1.0) : 0;
    const double hole = open * kWidest, turned = (1 - open) * std::numbers::pi / 3;
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 48 48\"><circle cx=\"24\" cy=\"24\" "
                      "r=\"22\" fill=\"" +
                      look.blade + "\"/>",
                corners, edges;
    const auto point = [](char step, double x, double y) {
        char text[48];
        std::snprintf(text, sizeof text, "%c%.2f %.2f", step, kMiddle + x, kMiddle + y);
        return std::string(text);
    };
    for (int i = 0; i < kBlades; ++i) {
        const double at = turned + 2 * std::numbers::pi * i / kBlades, x = hole * std::cos(at), y = hole * std::sin(at);
        corners += point(i ? 'L' : 'M', x, y);
        // Each edge of the hole goes on as that of a blade, out to the ring.
        const double along = at + 2 * std::numbers::pi / 3;
        const double inward = x * std::cos(along) + y * std::sin(along);
        const double length = -inward - std::sqrt(inward * inward - hole * hole + kRing * kRing);
        edges += point('M', x, y) + point('L', x + length * std::cos(along), y + length * std::sin(along));
    }
    if (hole > 0) svg += "<path d=\"" + corners + "Z\" fill=\"" + look.light + "\"/>";
    return svg + "<path d=\"" + edges + "\" fill=\"none\" stroke=\"" + look.edge +
           "\" stroke-width=\"1.4\"/><circle cx=\"24\" cy=\"24\" r=\"22\" fill=\"none\" stroke=\"" + look.edge +
           "\" stroke-width=\"2\"/></svg>";
}

}  // namespace kx::iris
