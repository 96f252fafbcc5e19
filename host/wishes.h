// What can be asked of the simulated devices. They have to live until Requests::Clear.
#pragma once

#include <memory>

#include <kxdevices/kx_simdevices.h>
#include <kxdevices/kx_simlamp.h>
#include <kxdevices/kx_simlaserengine.h>
#include <kxdevices/kx_simlight.h>
#include <kxdevices/kx_zstackdata.h>

#include "requests.h"

// A wish with the value that is asked for.
struct Asked {
    Wish wish;
    double value;
};

// A property of a device, to be filled: the number in the registry is its own, while two may have the same name.
Wish WishOf(const IKxDevice& device, const wchar_t* property);

// The place of any device that has positions, MoveTo and GetPosition; places are called by their numbers.
template <class Device>
Wish PlaceOf(Device& device) {
    Wish wish = WishOf(device, L"place");
    wish.read = [&device]() -> std::optional<double> {
        long place = 0;
        const bool moves = device.GetDeviceState() == eKxDeviceState_Moving;
        if (moves ? !device.GetTargetPosition(place) : !device.GetPosition(place)) return std::nullopt;
        return place;
    };
    wish.ask = [&device](double to) { return device.MoveTo(static_cast<long>(to)); };
    wish.text = [](double at) { return std::to_wstring(static_cast<long>(at) + 1); };
    return wish;
}

// The same by the names of the positions; by micrometres.
Wish PlaceOf(CKxSimNosepiece& turret);
Wish PlaceOf(CKxSimFilterChanger& wheel);
Wish PlaceOf(CKxSimLightPath& path);
Wish PlaceOf(CKxSimTIRFMirror& mirror);
Wish PlaceOf(CKxSimZDrive& drive);
// A Z drive: one of its limits, infinite for none, its speed, whether the joystick is locked.
Asked LimitOf(CKxSimZDrive& drive, bool upper, std::optional<double> limit);
Wish SpeedOf(CKxSimZDrive& drive);
Wish JoystickOf(CKxSimZDrive& drive);
// A shutter: open or closed, as far as it opens in percent, and how.
Wish OpeningOf(CKxSimShutter& shutter);
Wish ApertureOf(CKxSimShutter& shutter);
Asked ModeOf(CKxSimShutter& shutter, EKxShutterMode mode);
// An iris: how far it is open, in its unit, and its shutter.
Wish ApertureOf(CKxSimIris& iris);
Wish OpeningOf(CKxSimIris& iris);
// Neutral density: what a wheel lets through, by its position; its shutter.
Asked AttenuationOf(CKxSimNDFilter& filter, long wheel, long position);
Wish OpeningOf(CKxSimNDFilter& filter);
// A lamp: whether it is on, how bright it is set, in its unit, and its shutter.
Wish UseOf(CKxSimLamp& lamp);
Wish IntensityOf(CKxSimLamp& lamp);
Wish OpeningOf(CKxSimLamp& lamp);
// A laser unit: the port that it uses, if it is one at a time; whether it uses a port; its power.
Wish PortOf(CKxSimLaserOutput& laser);
Wish UseOf(CKxSimLaserOutput& laser, long port);
Wish PowerOf(CKxSimLaserOutput& laser, const CKxStringW& unit);

// A laser engine: whether a line is on, its power; the subset that is in use, or whether one is.
Wish UseOf(CKxSimLaserEngine& engine, long line);
Wish PowerOf(CKxSimLaserEngine& engine, long line);
Wish SubsetOf(CKxSimLaserEngine& engine, long subset);

// Where a drive that is a value is to go.
Wish PlaceOf(SKxSimZDrive& drive, const wchar_t* name);
// Something that is no device of the registry: its value is there; on or off.
Wish ValueOf(const wchar_t* what, const std::wstring& name, double& value, const wchar_t* format,
             kx::host::Light light = kx::host::Light::None);
Wish SwitchOf(const wchar_t* what, const std::wstring& name, bool& on, kx::host::Light light = kx::host::Light::None);
// A planned series is to be another one. What it was is kept, in `past`, as long as that can be taken back; all that
// one gesture makes of it is one change.
struct SeriesStates;
Asked SeriesOf(const wchar_t* what, CKxZStackData& agreed, const CKxZStackData& next,
               std::weak_ptr<SeriesStates>& past);
