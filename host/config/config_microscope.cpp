#include "config_microscope.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxfilters/kx_objectives.h>

#include "default_config.h"

namespace kx::config {

namespace {

// ---- Values --------------------------------------------------------------------------------------------------------

std::vector<std::wstring> FilledPositions(const Device& device) {
    std::vector<std::wstring> names = device.positions;
    for (std::wstring& name : names) {
        if (IsEmptyPosition(name)) name.clear();
    }
    return names;
}

// The objective of a label, which the database learns of.
SKxSimObjective ObjectiveOf(const std::wstring& label) {
    const ObjectiveNumbers numbers = ReadObjective(label);
    CKxStringW magnification;
    if (numbers.magnification > 0) magnification.Format(20, L"%gx", numbers.magnification);
    SKxDDBObjectiveItem item;
    // It refuses, and logs, numbers that no objective has: a dry objective of 1.4 is told without its immersion.
    const bool real = numbers.magnification > 0 && numbers.numericalAperture > 0 &&
                      numbers.numericalAperture < numbers.refractiveIndex;
    if (real && !CKxDeviceDatabase::DBGetObjectiveParam(label, &item, false)) {
        item = {label,
                label,
                numbers.magnification,
                numbers.numericalAperture,
                0,
                numbers.immersion,
                numbers.refractiveIndex};
        CKxDeviceDatabase::DBSetObjective(item);
    }
    return {label, magnification.str(), label};
}

EKxFilterType FilterTypeOf(FilterKind kind) {
    switch (kind) {
    case FilterKind::Excitation: return eKxFilterType_Excitation;
    case FilterKind::Cube: return eKxFilterType_Cube;
    case FilterKind::NeutralDensity: return eKxFilterType_NeutralDensity;
    case FilterKind::Polariser: return eKxFilterType_Polariser;
    case FilterKind::Emission: break;
    }
    return eKxFilterType_Emission;
}

std::vector<double> AperturesOf(const Device& device) {
    constexpr int kSteps = 10;
    const Limits* const limits = device.LimitsOf(L"Aperture");
    if (!limits) return {};
    std::vector<double> apertures(kSteps);
    for (int i = 0; i < kSteps; ++i)
        apertures[static_cast<std::size_t>(i)] =
            limits->minimum + (limits->maximum - limits->minimum) * i / (kSteps - 1);
    return apertures;
}

SKxSimRange RangeOf(const Device& device, std::wstring_view property) {
    const Limits* const limits = device.LimitsOf(property);
    return limits ? SKxSimRange{limits->minimum, limits->maximum} : SKxSimRange{};
}

// Whether the position that the file asks for is the one of two with this label; without labels, the second.
bool StartsAt(const Device& device, const wchar_t* label) {
    if (!device.start) return false;
    const auto start = static_cast<std::size_t>(*device.start);
    return start < device.positions.size() ? Lower(device.positions[start]) == label : start == 1;
}

// ---- Devices -------------------------------------------------------------------------------------------------------

class Builder {
public:
    explicit Builder(CKxSimMicroscope& devices) : m_devices(devices) {}

    CDMApi_LogDevId Build(const Device& device);
    Microscope& Result() { return m_result; }

private:
    void BuildTurret(const Device& device);
    void BuildWheel(const Device& device);
    void BuildLightPath(const Device& device);
    void BuildTirfMirror(const Device& device);
    void BuildShutter(const Device& device);
    void BuildLaser(const Device& device);
    void BuildZDrive(const Device& device);
    void BuildStage(const Device& device);
    void BuildOther(const Device& device);

    // Moves without taking time, and takes its time from then on.
    template <class Simulated, class Position>
    void Begin(Simulated& simulated, const Device& device, Position position) {
        if (device.start) {
            simulated.SetSpeed(0);
            simulated.MoveTo(position);
            simulated.Tick();
        }
        Finish(simulated, device);
    }
    template <class Simulated>
    void Finish(Simulated& simulated, const Device& device) {
        constexpr double kSpeed = 150;
        simulated.SetSpeed(static_cast<unsigned>(std::lround(device.delay.value_or(kSpeed))));
        m_built = simulated.GetLogDevId();
    }

    CKxSimMicroscope& m_devices;
    Microscope m_result;
    CDMApi_LogDevId m_built = 0;
};

CDMApi_LogDevId Builder::Build(const Device& device) {
    switch (device.kind) {
    case DeviceKind::Turret: BuildTurret(device); break;
    case DeviceKind::FilterWheel: BuildWheel(device); break;
    case DeviceKind::LightPath: BuildLightPath(device); break;
    case DeviceKind::TirfMirror: BuildTirfMirror(device); break;
    case DeviceKind::Shutter: BuildShutter(device); break;
    case DeviceKind::Laser: BuildLaser(device); break;
    case DeviceKind::ZDrive: BuildZDrive(device); break;
    case DeviceKind::Stage: BuildStage(device); break;
    case DeviceKind::Other: BuildOther(device); break;
    }
    return m_built;
}

void Builder::BuildTurret(const Device& device) {
    std::vector<SKxSimObjective> objectives;
    for (const std::wstring& label : FilledPositions(device))
        objectives.push_back(label.empty() ? SKxSimObjective{} : ObjectiveOf(label));
    auto& turret = m_devices.Add<CKxSimNosepiece>(device.label.c_str(), std::move(objectives));
    Begin(turret, device, device.start.value_or(0));
    m_result.turrets.push_back(m_built);
}

void Builder::BuildWheel(const Device& device) {
    auto& wheel = m_devices.Add<CKxSimFilterChanger>(device.label.c_str(), FilledPositions(device),
                                                     SKxSimFilterChangerKind{FilterTypeOf(device.filter), true, true});
    Begin(wheel, device, device.start.value_or(0));
    m_result.wheels.push_back(m_built);
}

void Builder::BuildLightPath(const Device& device) {
    auto& path = m_devices.Add<CKxSimLightPath>(device.label.c_str(), device.positions);
    Begin(path, device, device.start.value_or(0));
    m_result.lightPaths.push_back(m_built);
}

void Builder::BuildTirfMirror(const Device& device) {
    auto& mirror = m_devices.Add<CKxSimTIRFMirror>(device.label.c_str());
    Begin(mirror, device, StartsAt(device, L"tirf"));
    m_result.tirfMirrors.push_back(m_built);
}

void Builder::BuildShutter(const Device& device) {
    EKxShutterType type = eKxShutterType_Epi;
    if (device.shutter == ShutterKind::Dia) {
        type = eKxShutterType_Dia;
    } else if (device.shutter == ShutterKind::Auxiliary) {
        // There are two of these; a third one shares the second's title.
        const auto is = [](EKxShutterType sought) {
            return [sought](CDMApi_LogDevId id) { return DMApi::Shutter_GetShutterType(id) == sought; };
        };
        const auto& all = m_result.shutters;
        type = std::any_of(all.begin(), all.end(), is(eKxShutterType_Aux1)) ? eKxShutterType_Aux2 : eKxShutterType_Aux1;
    }
    auto& shutter = m_devices.Add<CKxSimShutter>(device.label.c_str(), type, AperturesOf(device));
    if (StartsAt(device, L"open")) {
        shutter.SetSpeed(0);
        shutter.SetOpen(true);
        shutter.Tick();
    }
    Finish(shutter, device);
    m_result.shutters.push_back(m_built);
}

void Builder::BuildLaser(const Device& device) {
    const bool single = device.positions.empty();
    std::vector<std::wstring> ports = single ? std::vector{device.label} : device.positions;
    // A single port is switched on and off; of several, one is in use.
    auto& laser = m_devices.Add<CKxSimLaserOutput>(device.label.c_str(), std::move(ports), single, device.name.c_str());
    if (device.start) laser.SetPortUsed(*device.start, true);
    Finish(laser, device);
    laser.TurnLightOff();
    const int own = ReadWavelength(device.label);
    const Limits* const power = device.LimitsOf(L"Power");
    if (power) laser.SetPowerRange({power->minimum, power->maximum});
    m_result.lasers.push_back(
        {m_built, own != 0 ? own : ReadWavelength(device.name), power && !power->unit.empty() ? power->unit : L"%"});
}

void Builder::BuildZDrive(const Device& device) {
    const SKxSimRange range = RangeOf(device, L"Position");
    auto& drive = m_devices.Add<CKxSimZDrive>(device.label.c_str(), range);
    drive.SetInverted(device.direction > 0);
    Finish(drive, device);
    m_result.zDrives.push_back({m_built, range.minimum, range.maximum, device.direction});
}

void Builder::BuildStage(const Device& device) {
    const SKxSimRange x = RangeOf(device, L"X"), y = RangeOf(device, L"Y");
    Finish(m_devices.Add<CKxSimStage>(device.label.c_str(), x, y), device);
    m_result.stages.push_back({m_built, x, y});
}

void Builder::BuildOther(const Device& device) {
    Finish(m_devices.Add<CKxSimOther>(device.label.c_str(), device.name.c_str()), device);
    m_result.others.push_back(m_built);
}

}  // namespace

Microscope BuildMicroscope(const Stand& stand, CKxSimMicroscope& devices) {
    Builder builder(devices);
    std::vector<CDMApi_LogDevId> ids;
    for (const Device& device : stand.devices)
        ids.push_back(builder.Build(device));
    const auto idOf = [&](std::optional<std::size_t> index) { return index ? ids[*index] : 0; };
    Microscope result = std::move(builder.Result());
    result.shutter = idOf(stand.shutter);
    result.focus = idOf(stand.focus);
    result.stage = idOf(stand.stage);
    result.autoShutter = stand.autoShutter;
    result.pixelSizes = stand.pixelSizes;
    return result;
}

std::string_view DefaultConfig() { return kDefaultConfig; }

}  // namespace kx::config
