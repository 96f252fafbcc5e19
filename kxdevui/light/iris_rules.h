// The rules of irises as functions of values: their tables, what a diameter is as a numerical aperture, and the
// picture. Nothing here knows of windows.
#pragma once

#include <string>
#include <vector>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/kxdevui_api.h>

namespace kx::iris {

// No iris has more steps, whatever its driver says.
inline constexpr long kMostSteps = 10000;

// The steps of an iris from the narrowest on, each once; those that are negative or no finite number are left out.
KXDEVUI_API std::vector<double> Table(std::vector<double> steps);

// The step nearest to an aperture, the wider of two equally near; the aperture itself where there are none.
KXDEVUI_API double Nearest(const std::vector<double>& table, double aperture) noexcept;

// "%", "mm", or nothing for steps and for any other number.
KXDEVUI_API const wchar_t* UnitText(int unit) noexcept;

// How far an iris is open, from 0 to 1: the part of its widest diameter, of steps the part of the highest. 0 where that
// cannot be told.
KXDEVUI_API double Opening(const std::vector<double>& table, double aperture) noexcept;

// The numerical aperture of the light behind an aperture diaphragm. By Abbe's sine condition, which lenses for
// illumination fulfil as well, it grows with the diameter. 0 for steps, whose diameter nobody knows, and where the
// widest is not known.
KXDEVUI_API double NAOf(const std::vector<double>& table, int unit, double widestNA, double aperture) noexcept;

// The aperture at which the light has so much of the objective's numerical aperture, no wider than the widest; below 0
// where it cannot be told.
KXDEVUI_API double ApertureFor(const std::vector<double>& table, int unit, double widestNA, double objectiveNA,
                               double part) noexcept;

// The custom since Koehler: less and diffraction shows, more and the contrast goes. A coupled diaphragm takes the
// middle.
inline constexpr double kLeastPart = 0.7;
inline constexpr double kUsualPart = 0.75;
inline constexpr double kMostPart = 0.8;

// The picture of an iris that is open so far (0 to 1), of six blades around a hole that turns as it grows, as SVG.
// Colours are "#RRGGBB": of the blades, their edges, and what shines through; closed by a shutter, the hole is empty.
struct Look {
    // As above.
    std::string blade;
    std::string edge;
    std::string light;
};
KXDEVUI_API std::string Picture(double opening, const Look& look);

}  // namespace kx::iris
