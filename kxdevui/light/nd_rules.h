// The rules of neutral density as functions of values. Nothing here knows of windows.
#pragma once

#include <span>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::nd {

// The optical density of what lets this part of the light through, and the other way round: OD = -lg T (ISO 5-1, of a
// filter that does not scatter). Infinite for what is opaque. What is no number, is negative or above 1 is none.
KXDEVUI_API double DensityOf(double transmission) noexcept;
KXDEVUI_API double TransmissionOf(double density) noexcept;

// Whether a filter can let this part through.
KXDEVUI_API bool IsTransmission(double transmission) noexcept;

// What filters in series let through: the product. No number if one of them is none.
KXDEVUI_API double InSeries(std::span<const double> transmissions) noexcept;

// "12.5 %", in up to three figures; "OD 0.9", in up to two decimals, and with the sign of infinity. "?" for what is no
// transmission.
KXDEVUI_API CKxStringW PercentText(double transmission);
KXDEVUI_API CKxStringW DensityText(double transmission);

}  // namespace kx::nd
