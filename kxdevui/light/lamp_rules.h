// The rules of lamps as functions of values: their scales, what colour a filament has, and what is said of their time.
// Nothing here knows of windows.
#pragma once

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::lamp {

// The intensities that a lamp can be set to, to a millionth.
struct Scale {
    // From here to there; what lies between is as far apart as the step, all of it for a step of 0.
    double minimum = 0;
    double maximum = 0;
    double step = 0;

    // Whether there is anything to be set.
    bool IsThere() const noexcept { return minimum < maximum; }
    // All of it the same.
    bool operator==(const Scale&) const = default;
};

// The scale that a lamp tells. There is none where the largest is no finite number or not above the least; a least that
// is no finite number, or negative, is 0; a step that is none of these, or wider than the scale, is no step.
KXDEVUI_API Scale ScaleOf(double minimum, double maximum, double step) noexcept;

// Whether an intensity lies on the scale, between two steps as well; the intensity moved between its ends; the one that
// can be set nearest to it, where the largest always can be.
KXDEVUI_API bool Has(const Scale& scale, double intensity) noexcept;
KXDEVUI_API double Clamped(const Scale& scale, double intensity) noexcept;
KXDEVUI_API double Nearest(const Scale& scale, double intensity) noexcept;

// How far arrows, wheel and keys go: a step, or, where there is none, the largest of 1, 2 and 5 times a power of ten
// that is no more than a hundredth of the scale. Where so many of them lead to.
KXDEVUI_API double StrideOf(const Scale& scale) noexcept;
KXDEVUI_API double After(const Scale& scale, double intensity, long strides) noexcept;

// "%" or "V"; nothing for any other number.
KXDEVUI_API const wchar_t* UnitText(int unit) noexcept;

// The colour temperature of a halogen lamp, in kelvin, from that at its largest intensity; 0 where it cannot be told.
// By the rerating rules of lighting engineering it goes with the voltage to the power of 0.42, and the light with that
// to the power of 3.4: so it goes with the light to the power of 0.42 / 3.4. They are made for some tenths of the
// voltage, and a guide below that.
KXDEVUI_API double ColorTemperature(int unit, double fullTemperature, double maximum, double intensity) noexcept;

// "2390 K", in tens; nothing for 0, and for what is no finite number or negative.
KXDEVUI_API CKxStringW KelvinText(double kelvin);

// What is left of a time to wait for: "40 s" up to a minute and a half, then whole minutes, none of them too early.
// Where nobody knows the seconds, "40 %", the part that is done (0 to 1); nothing where nobody knows that either.
KXDEVUI_API CKxStringW LeftText(double done, double seconds);

// "412 / 2000 h", in whole hours that are over, or "412 h" where nobody knows how many it is good for; nothing for
// hours that are no finite number or negative. Whether it has burnt longer than that.
KXDEVUI_API CKxStringW HoursText(double burnt, double rated);
KXDEVUI_API bool IsWornOut(double burnt, double rated) noexcept;

}  // namespace kx::lamp
