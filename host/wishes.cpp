#include "wishes.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <utility>

#include <kxdevui/light/iris_rules.h>
#include <kxdevui/light/lamp_rules.h>
#include <kxdevui/light/nd_rules.h>
#include <kxsystem/kx_time.h>

#include "text.h"

namespace {

using kx::host::Light;

template <class... Values>
std::wstring Formatted(const wchar_t* format, Values... values) {
    CKxStringW text;
    text.Format(60, format, values...);
    return text.str();
}

std::optional<double> Target(const IKxDevice& device) {
    long target = 0;
    return device.GetTargetPosition(target) ? std::optional<double>(target) : std::nullopt;
}

template <class Device, class NameOf>
Wish ByPlaces(Device& device, NameOf nameOf) {
    Wish wish = PlaceOf<Device>(device);
    wish.text = [nameOf](double at) {
        CKxStringW name;
        nameOf(static_cast<long>(at), name);
        return name.Length() > 0 ? name.str() : Formatted(L"%g", at + 1);
    };
    return wish;
}

std::wstring OnOrOff(double on) { return Text(on != 0 ? L"on" : L"off").str(); }

std::wstring OpenOrClosed(double open) { return Text(open != 0 ? L"open" : L"closed").str(); }

// Of what has a shutter of its own.
template <class Device>
Wish ByShutter(Device& device) {
    Wish wish = WishOf(device, L"open");
    wish.read = [&device] { return std::optional<double>(device.IsShutterOpen()); };
    wish.ask = [&device](double open) { return device.SetShutter(open != 0); };
    wish.text = OpenOrClosed;
    wish.light = Light::More;
    return wish;
}

// A property of a line of a laser engine, of which more is more light.
Wish OfLine(CKxSimLaserEngine& engine, long line, const wchar_t* property) {
    Wish wish = WishOf(engine, (std::to_wstring(line) + L" " + property).c_str());
    SKxLaserLine told;
    if (engine.GetLine(line, told)) wish.name = told.name.str() + Formatted(L" %g nm", told.wavelength);
    wish.light = Light::More;
    return wish;
}

template <class Of>
std::optional<double> ToldOf(const CKxSimLaserEngine& engine, long line, Of of) {
    SKxLaserLine told;
    return engine.GetLine(line, told) ? std::optional<double>(of(told)) : std::nullopt;
}

// By the light that they let through.
constexpr std::array kModes{eKxShutterMode_Aperture, eKxShutterMode_Soft, eKxShutterMode_Fast};
constexpr std::array kModeNames{L"aperture", L"soft", L"fast"};

}  // namespace

Wish WishOf(const IKxDevice& device, const wchar_t* property) {
    Wish wish;
    wish.what = std::to_wstring(device.GetLogDevId()) + L' ' + property;
    wish.name = device.GetKey().str();
    return wish;
}

Wish PlaceOf(CKxSimNosepiece& turret) {
    Wish wish = ByPlaces(turret, [&turret](long at, CKxStringW& name) {
        CKxStringW objective;
        turret.GetObjectiveName(at, objective);
        turret.GetMagnification(objective, name);
        if (name.Length() == 0) name = objective;
    });
    wish.name = L"Objective";
    return wish;
}

Wish PlaceOf(CKxSimFilterChanger& wheel) {
    return ByPlaces(wheel, [&wheel](long at, CKxStringW& name) { wheel.GetFilterName(at, name); });
}

Wish PlaceOf(CKxSimLightPath& path) {
    return ByPlaces(path, [&path](long at, CKxStringW& name) { path.GetPositionName(at, name); });
}

Wish PlaceOf(CKxSimTIRFMirror& mirror) {
    Wish wish = WishOf(mirror, L"place");
    wish.read = [&mirror]() -> std::optional<double> {
        bool tirf = false;
        if (mirror.GetDeviceState() == eKxDeviceState_Moving) return Target(mirror);
        return mirror.GetState(tirf) ? std::optional<double>(tirf) : std::nullopt;
    };
    wish.ask = [&mirror](double to) { return mirror.MoveTo(to != 0); };
    wish.text = [](double at) { return at != 0 ? L"TIRF" : L"EPI"; };
    return wish;
}

Wish PlaceOf(CKxSimZDrive& drive) {
    Wish wish = WishOf(drive, L"place");
    // On its way it tells no target.
    wish.read = [&drive]() -> std::optional<double> {
        double z = 0;
        const bool known = drive.GetDeviceState() == eKxDeviceState_Ready && drive.GetPosition(z);
        return known ? std::optional(z) : std::nullopt;
    };
    wish.ask = [&drive](double to) { return drive.MoveTo(to); };
    wish.text = [](double at) { return Formatted(L"%.2f µm", at); };
    return wish;
}

Asked LimitOf(CKxSimZDrive& drive, bool upper, std::optional<double> limit) {
    constexpr double kNone = std::numeric_limits<double>::infinity();
    Wish wish = WishOf(drive, upper ? L"upper" : L"lower");
    wish.name = upper ? L"Upper limit" : L"Lower limit";
    wish.read = [&drive, upper] {
        double at = kNone;
        upper ? drive.GetUpperLimit(at) : drive.GetLowerLimit(at);
        return std::optional(at);
    };
    wish.ask = [&drive, upper](double to) {
        const std::optional<double> wanted = to == kNone ? std::nullopt : std::optional(to);
        return upper ? drive.SetUpperLimit(wanted) : drive.SetLowerLimit(wanted);
    };
    wish.text = [](double at) { return at == kNone ? Text(L"none").str() : Formatted(L"%.2f µm", at); };
    return {wish, limit.value_or(kNone)};
}

Wish SpeedOf(CKxSimZDrive& drive) {
    Wish wish = WishOf(drive, L"speed");
    wish.name = L"Speed";
    wish.read = [&drive]() -> std::optional<double> {
        double speed = 0, slowest = 0, fastest = 0;
        return drive.GetSpeed(speed, slowest, fastest) ? std::optional(speed) : std::nullopt;
    };
    wish.ask = [&drive](double speed) { return drive.SetTravelSpeed(speed); };
    wish.text = [](double speed) { return Formatted(L"%g µm/s", speed); };
    return wish;
}

Wish JoystickOf(CKxSimZDrive& drive) {
    Wish wish = WishOf(drive, L"joystick");
    wish.name = L"Joystick locked";
    wish.read = [&drive]() -> std::optional<double> {
        bool locked = false;
        return drive.GetJoystickLock(locked) ? std::optional<double>(locked) : std::nullopt;
    };
    wish.ask = [&drive](double lock) { return drive.SetJoystickLock(lock != 0), true; };
    wish.text = OnOrOff;
    return wish;
}

Wish PlaceOf(SKxSimZDrive& drive, const wchar_t* name) {
    Wish wish = ValueOf(name, name, drive.to, L"%.2f µm");
    wish.ask = [&drive](double to) { return drive.Start(to, KX_GetTimeCounter()), true; };
    return wish;
}

Wish OpeningOf(CKxSimShutter& shutter) {
    Wish wish = WishOf(shutter, L"open");
    wish.read = [&shutter]() -> std::optional<double> {
        switch (shutter.GetDeviceState()) {
        case eKxDeviceState_Moving: return Target(shutter);
        case eKxDeviceState_Ready: return shutter.GetState();
        default: return std::nullopt;
        }
    };
    wish.ask = [&shutter](double open) { return shutter.SetOpen(open != 0); };
    wish.text = OpenOrClosed;
    wish.light = Light::More;
    return wish;
}

Wish ApertureOf(CKxSimShutter& shutter) {
    Wish wish = WishOf(shutter, L"aperture");
    wish.read = [&shutter] { return std::optional(shutter.GetAperture()); };
    wish.ask = [&shutter](double percent) { return shutter.SetAperture(percent); };
    wish.text = [](double percent) { return Formatted(L"%g %%", percent); };
    wish.light = Light::More;
    return wish;
}

Wish ApertureOf(CKxSimIris& iris) {
    Wish wish = WishOf(iris, L"aperture");
    wish.read = [&iris] {
        double aperture = 0;
        return iris.GetTarget(aperture) ? std::optional(aperture) : std::nullopt;
    };
    wish.ask = [&iris](double aperture) { return iris.SetAperture(aperture); };
    wish.text = [unit = kx::iris::UnitText(iris.GetUnit())](double of) { return Formatted(L"%g %ls", of, unit); };
    wish.light = Light::More;
    return wish;
}

Wish OpeningOf(CKxSimIris& iris) { return ByShutter(iris); }
Wish OpeningOf(CKxSimNDFilter& filter) { return ByShutter(filter); }
Wish OpeningOf(CKxSimLamp& lamp) { return ByShutter(lamp); }

Wish UseOf(CKxSimLamp& lamp) {
    Wish wish = WishOf(lamp, L"use");
    wish.read = [&lamp] { return std::optional<double>(lamp.IsOn()); };
    wish.ask = [&lamp](double on) { return lamp.SetOn(on != 0); };
    wish.text = OnOrOff;
    wish.light = Light::More;
    return wish;
}

Wish IntensityOf(CKxSimLamp& lamp) {
    Wish wish = WishOf(lamp, L"intensity");
    wish.read = [&lamp] {
        double intensity = 0;
        return lamp.GetIntensity(intensity) ? std::optional(intensity) : std::nullopt;
    };
    wish.ask = [&lamp](double intensity) { return lamp.SetIntensity(intensity); };
    wish.text = [unit = kx::lamp::UnitText(lamp.GetUnit())](double of) { return Formatted(L"%g %ls", of, unit); };
    wish.light = Light::More;
    return wish;
}

// By the light that it lets through, so that undo knows what is more.
Asked AttenuationOf(CKxSimNDFilter& filter, long wheel, long position) {
    Wish wish = WishOf(filter, (L"wheel " + std::to_wstring(wheel)).c_str());
    wish.read = [&filter, wheel]() -> std::optional<double> {
        long at = 0;
        if (!filter.GetTarget(wheel, at)) return std::nullopt;
        return filter.GetTransmission(wheel, at);
    };
    wish.ask = [&filter, wheel](double through) {
        for (long i = 0; i < filter.GetPositionCount(wheel); ++i) {
            if (filter.GetTransmission(wheel, i) == through) return filter.MoveTo(wheel, i);
        }
        return false;
    };
    wish.text = [](double through) { return kx::nd::PercentText(through).str(); };
    wish.light = Light::More;
    return {wish, filter.GetTransmission(wheel, position)};
}

Asked ModeOf(CKxSimShutter& shutter, EKxShutterMode mode) {
    const auto indexOf = [](EKxShutterMode of) {
        return static_cast<double>(std::find(kModes.begin(), kModes.end(), of) - kModes.begin());
    };
    Wish wish = WishOf(shutter, L"mode");
    wish.read = [&shutter, indexOf] { return std::optional(indexOf(shutter.GetMode())); };
    wish.ask = [&shutter](double index) { return shutter.SetMode(kModes.at(static_cast<std::size_t>(index))); };
    wish.text = [](double index) { return Text(kModeNames.at(static_cast<std::size_t>(index))).str(); };
    wish.light = Light::More;
    return {wish, indexOf(mode)};
}

Wish PortOf(CKxSimLaserOutput& laser) {
    Wish wish = WishOf(laser, L"port");
    wish.read = [&laser]() -> std::optional<double> {
        for (long i = 0; i < laser.GetPortCount(); ++i) {
            if (laser.IsPortUsed(i)) return i;
        }
        return std::nullopt;
    };
    wish.ask = [&laser](double port) { return laser.SetPortUsed(static_cast<long>(port), true); };
    wish.text = [&laser](double port) { return laser.GetPortName(static_cast<long>(port)).str(); };
    wish.light = Light::Moves;
    return wish;
}

Wish UseOf(CKxSimLaserOutput& laser, long port) {
    Wish wish = WishOf(laser, (L"port " + std::to_wstring(port)).c_str());
    if (laser.GetPortCount() > 1) wish.name += L", " + laser.GetPortName(port).str();
    wish.read = [&laser, port] { return std::optional<double>(laser.IsPortUsed(port)); };
    wish.ask = [&laser, port](double use) { return laser.SetPortUsed(port, use != 0); };
    wish.text = OnOrOff;
    wish.light = Light::More;
    return wish;
}

Wish PowerOf(CKxSimLaserOutput& laser, const CKxStringW& unit) {
    Wish wish = WishOf(laser, L"power");
    wish.read = [&laser] { return std::optional(laser.GetPower()); };
    wish.ask = [&laser](double power) { return laser.SetPower(power); };
    wish.text = [unit](double power) { return Formatted(L"%.4g %ls", power, unit.c_str()); };
    wish.light = Light::More;
    return wish;
}

Wish UseOf(CKxSimLaserEngine& engine, long line) {
    Wish wish = OfLine(engine, line, L"use");
    wish.read = [&engine, line] { return ToldOf(engine, line, [](const SKxLaserLine& told) { return told.on; }); };
    wish.ask = [&engine, line](double on) { return engine.SetLineOn(line, on != 0); };
    wish.text = OnOrOff;
    return wish;
}

Wish PowerOf(CKxSimLaserEngine& engine, long line) {
    Wish wish = OfLine(engine, line, L"power");
    wish.read = [&engine, line] { return ToldOf(engine, line, [](const SKxLaserLine& told) { return told.power; }); };
    wish.ask = [&engine, line](double percent) { return engine.SetLinePower(line, percent); };
    wish.text = [](double percent) { return Formatted(L"%.4g %%", percent); };
    return wish;
}

Wish SubsetOf(CKxSimLaserEngine& engine, long subset) {
    Wish wish = WishOf(engine, (L"subset " + std::to_wstring(subset)).c_str());
    SKxLaserSubset told;
    if (engine.GetSubset(subset, told)) wish.name += L", " + told.name.str();
    wish.read = [&engine, subset]() -> std::optional<double> {
        SKxLaserSubset now;
        return engine.GetSubset(subset, now) ? std::optional<double>(now.active) : std::nullopt;
    };
    wish.ask = [&engine, subset](double active) { return engine.SetSubsetActive(subset, active != 0); };
    wish.text = OnOrOff;
    wish.light = Light::Moves;
    return wish;
}

Wish ValueOf(const wchar_t* what, const std::wstring& name, double& value, const wchar_t* format, Light light) {
    Wish wish;
    wish.what = what, wish.name = name, wish.light = light;
    wish.read = [&value] { return std::optional(value); };
    wish.ask = [&value](double to) { return value = to, true; };
    wish.text = [format](double of) { return Formatted(format, of); };
    return wish;
}

Wish SwitchOf(const wchar_t* what, const std::wstring& name, bool& on, Light light) {
    Wish wish;
    wish.what = what, wish.name = name, wish.light = light;
    wish.read = [&on] { return std::optional<double>(on); };
    wish.ask = [&on](double to) { return on = to != 0, true; };
    wish.text = OnOrOff;
    return wish;
}

// ---- A planned series ----------------------------------------------------------------------------------------------

struct SeriesStates {
    static constexpr std::size_t kMost = 60;  // somewhat more than changes that can be taken back
    std::map<int, CKxZStackData> states;
    int now = Next();
    int before = 0;  // of this gesture
    unsigned gesture = 0;

    // What is left of others in the history is not mistaken for one of these.
    static int Next() {
        static int last = 0;
        return ++last;
    }
    bool Is(int state, const CKxZStackData& series) const {
        bool equal = false;
        const auto found = states.find(state);
        return found != states.end() && found->second.IsEqual(series, &equal) == eKxZStack_Ok && equal;
    }
    int NumberOf(const CKxZStackData& next) {
        const unsigned current = TheRequests().Gesture();
        if (Is(now, next)) return now;
        const bool goesOn = std::exchange(gesture, current) == current && now != before;
        if (!goesOn) before = now;
        if (goesOn && Is(before, next)) return before;
        const int number = goesOn ? now : Next();
        states[number] = next;
        if (states.size() > kMost) states.erase(states.begin());
        return number;
    }
};

Asked SeriesOf(const wchar_t* what, CKxZStackData& agreed, const CKxZStackData& next,
               std::weak_ptr<SeriesStates>& past) {
    auto states = past.lock();
    if (!states || !states->Is(states->now, agreed)) {
        states = std::make_shared<SeriesStates>();
        states->states[states->now] = agreed;
        past = states;
    }
    Wish wish;
    wish.what = what;
    wish.name = L"Z series";
    wish.read = [states] { return std::optional<double>(states->now); };
    wish.ask = [states, &agreed](double to) {
        const auto found = states->states.find(static_cast<int>(to));
        if (found == states->states.end()) return false;
        agreed = found->second;
        states->now = found->first;
        return true;
    };
    wish.text = [states](double at) {
        const auto found = states->states.find(static_cast<int>(at));
        double top = 0, bottom = 0;
        const bool known = found != states->states.end() && found->second.GetTop(&top) == eKxZStack_Ok &&
                           found->second.GetBottom(&bottom) == eKxZStack_Ok;
        return known ? Formatted(L"%.2f \u2026 %.2f \u00B5m", bottom, top) : Text(L"No series yet").str();
    };
    return {wish, static_cast<double>(states->NumberOf(next))};
}
