// The colour of light of one wavelength.
#pragma once

#include <kxsystem/kxsystem_api.h>

// The colour that a screen shows for monochromatic light, as 0x00BBGGRR (COLORREF), for a wavelength in nanometres: the
// CIE 1931 2-degree colour matching functions, in the analytic fit of Wyman, Sloan and Shirley ("Simple Analytic
// Approximations to the CIE XYZ Color Matching Functions", JCGT 2(2), 2013), turned into sRGB (IEC 61966-2-1) at full
// brightness; from 650 nm on all is one red. What lies outside of the screen's gamut is brought to its border. Towards
// the ends of the visible range, below 420 and above 700 nm, the colour fades; at 380 and 780 nm and beyond, and for
// what is not a number, it is black. The two names are one conversion. May be called from any thread.
KXSYSTEM_API unsigned long KX_RGBFromWavelength(double nanometres) noexcept;
KXSYSTEM_API unsigned long KX_RGBFromWavelength2(double nanometres) noexcept;
