// Tells what the devices of a configuration file are. The file does not say, so it is inferred, and each guess is
// remarked on with its reason. The rules, in the order of their weight, are tabulated in docs/configuration.md.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "config_file.h"

namespace kx::config {

enum class DeviceKind {
    Other,  // nothing tells, or nothing here shows such a device (cameras, ports)
    Turret,
    FilterWheel,
    LightPath,
    TirfMirror,
    Shutter,
    Laser,
    ZDrive,
    Stage,
};

// What a filter wheel holds.
enum class FilterKind { Emission, Excitation, Cube, NeutralDensity, Polariser };

// Where the light is that a shutter shuts.
enum class ShutterKind { Epi, Dia, Auxiliary };

// What the numbers of an objective's label are, as far as it tells them.
struct ObjectiveNumbers {
    double magnification = 0;      // 0: not told
    double numericalAperture = 0;  // 0: not told
    std::wstring immersion;        // "Air", "Water", "Oil", "Silicone" or "Glycerol"
    double refractiveIndex = 1;    // of the immersion
};

// "Plan Apo 60x/1.40 Oil": a number with an x behind it, then a numerical aperture. Air where no immersion is told.
ObjectiveNumbers ReadObjective(const std::wstring& label);

// The first number from 350 to 1,100 that stands by itself, in nanometres; 0 when there is none.
int ReadWavelength(const std::wstring& text);

// Whether a label says that a position has nothing in it: "Empty", "None", "Position-3" or no text.
bool IsEmptyPosition(const std::wstring& label);

// A property's range.
struct Limits {
    int line;
    double minimum, maximum;
    std::wstring unit;  // "um" for all lengths
};

// A device, with all that the file says of it.
struct Device {
    int line = 0;
    std::wstring label, module, name;
    DeviceKind kind = DeviceKind::Other;
    std::wstring reason;                           // why it has that kind
    FilterKind filter = FilterKind::Emission;      // of a filter wheel
    ShutterKind shutter = ShutterKind::Auxiliary;  // of a shutter
    std::vector<std::wstring> positions;           // texts of the labels; empty where the file has a gap
    std::optional<int> start;                      // the position that the file asks for
    int direction = 0;                             // of a Z drive: 1 when a greater position is nearer to the sample
    std::optional<double> delay;                   // milliseconds
    std::map<std::wstring, Limits, std::less<>> limits;  // by property; Z drives have Position, stages X and Y
    std::wstring parent;                                 // label of its hub

    // Null when the property has none.
    const Limits* LimitsOf(std::wstring_view property) const;
};

// A calibrated size of the camera's pixels.
struct PixelSize {
    std::wstring preset;
    double micrometres = 0;
    double optimalZ = 0;  // micrometres; 0: not told
};

// A stand as its file describes it, devices in the order of the file. The roles are indices into them.
struct Stand {
    std::vector<Device> devices;
    std::optional<std::size_t> shutter, focus, stage;
    bool autoShutter = false;
    std::vector<PixelSize> pixelSizes;
};

// Puts the records together. What speaks of a device that the file does not have is an error, wherever it stands: the
// order of the lines does not matter, but where two say the same, the later one counts.
Stand InferStand(const ConfigFile& file, Remarks& remarks);

}  // namespace kx::config
