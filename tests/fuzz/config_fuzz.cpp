// Device configuration files: the devices and labels against a reader that knows nothing else, and what must be true of
// every stand.
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

std::string Trimmed(std::string text) {
    constexpr char blanks[] = " \t\r";
    text.erase(0, std::min(text.find_first_not_of(blanks), text.size()));
    text.erase(text.find_last_not_of(blanks) + 1);
    return text;
}

std::vector<std::vector<std::string>> LinesOf(std::string_view bytes) {
    std::vector<std::vector<std::string>> lines(1);
    std::string field;
    for (const char each : std::string(bytes) + "\n") {
        if (each == ',' || each == '\n') {
            lines.back().push_back(Trimmed(field));
            field.clear();
            if (each == '\n') lines.emplace_back();
        } else {
            field += each;
        }
    }
    return lines;
}

bool IsPosition(std::string text) {
    if (text.starts_with('+')) text.erase(0, 1);
    return !text.empty() && text.size() < 6 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }) &&
           std::atoi(text.c_str()) <= 99;
}

// Plain text alone: the rest is a matter of encodings.
void CompareWithPlainReader(std::string_view bytes, const ConfigFile& file) {
    const auto plain = [](char c) { return c > 0; };
    if (!std::all_of(bytes.begin(), bytes.end(), plain)) return;
    std::set<std::string> devices;
    std::size_t device = 0, label = 0;
    for (const auto& fields : LinesOf(bytes)) {
        if (fields.size() >= 4 && fields[0] == "Device" && !fields[1].empty() && fields[1] != "Core" &&
            devices.insert(fields[1]).second) {
            Require(device < file.devices.size());
            const DeviceLine& read = file.devices[device++];
            Require(read.label == FromLatin(fields[1]) && read.module == FromLatin(fields[2]));
        } else if (fields.size() >= 4 && fields[0] == "Label" && IsPosition(fields[2])) {
            Require(label < file.labels.size());
            const LabelLine& read = file.labels[label++];
            Require(read.device == FromLatin(fields[1]) && read.text == FromLatin(fields[3]));
            Require(read.position == std::atoi(fields[2].c_str()));
        }
    }
    Require(device == file.devices.size());
    // A position of many digits may be small all the same.
    Require(label <= file.labels.size());
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A block of its own, so that a step beyond its end is seen.
    const std::vector<char> block(data, data + size);
    const std::string_view bytes(block.data(), block.size());
    Remarks remarks;
    const ConfigFile file = ReadConfig(bytes, FromLatin, remarks);
    CompareWithPlainReader(bytes, file);
    const Stand stand = InferStand(file, remarks);
    Require(stand.devices.size() == file.devices.size());
    for (const Device& device : stand.devices) {
        CheckDevice(device);
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
    return 0;
}
