// Device configuration files: what must be true of every stand, whatever the bytes.
#include "fuzz.h"

#include <host/config/config_infer.h>

#include <set>

using namespace kx::config;

namespace {

std::wstring FromLatin(std::string_view bytes) {
    std::wstring text;
    for (const char each : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(each));
    return text;
}

bool MovesWithin(const Device& device, const wchar_t* property) {
    const Limits* const limits = device.LimitsOf(property);
    return limits && limits->minimum < limits->maximum && (limits->unit == L"um" || limits->unit.empty());
}

void CheckDevice(const Device& device) {
    Require(!device.label.empty() && !device.reason.empty() && device.positions.size() <= 100);
    switch (device.kind) {
    case DeviceKind::ZDrive: Require(MovesWithin(device, L"Position")); break;
    case DeviceKind::Stage: Require(MovesWithin(device, L"X") && MovesWithin(device, L"Y")); break;
    case DeviceKind::Shutter: Require(device.start.value_or(0) < 2 || device.positions.size() > 2); break;
    case DeviceKind::Laser: break;
    case DeviceKind::Other: Require(device.positions.empty()); break;
    default: Require(!device.positions.empty());
    }
    const std::size_t positions = device.kind == DeviceKind::Shutter ? std::max<std::size_t>(2, device.positions.size())
                                                                     : device.positions.size();
    Require(!device.start || (*device.start >= 0 && static_cast<std::size_t>(*device.start) < positions));
    for (const std::wstring& each : device.positions) {
        const ObjectiveNumbers numbers = ReadObjective(each);
        Require(numbers.magnification == 0 || (numbers.magnification >= 0.5 && numbers.magnification <= 250));
        const int wavelength = ReadWavelength(each);
        Require(wavelength == 0 || (wavelength >= 350 && wavelength <= 1100));
    }
}

}  // namespace

void Fuzz(std::string_view bytes) {
    Remarks remarks;
    const ConfigFile file = ReadConfig(bytes, FromLatin, remarks);
    const Stand stand = InferStand(file, remarks);
    Require(stand.devices.size() == file.devices.size());
    std::set<std::wstring> labels;
    for (const Device& device : stand.devices) {
        CheckDevice(device);
        Require(labels.insert(device.label).second);
        Require(std::any_of(remarks.All().begin(), remarks.All().end(),
                            [&](const Remark& each) { return each.line == device.line; }));
    }
    for (const auto& role : {stand.shutter, stand.focus, stand.stage})
        Require(!role || *role < stand.devices.size());
    Require(!stand.focus || stand.focus == stand.shutter || stand.focus == stand.stage ||
            stand.devices[*stand.focus].kind == DeviceKind::ZDrive);

    const int lines = static_cast<int>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    int line = 1;
    for (const Remark& each : remarks.All()) {
        Require(each.line >= line && each.line <= lines && !each.text.empty());
        line = each.line;
    }
}
