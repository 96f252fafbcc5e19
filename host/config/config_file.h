// Reads device configuration files: text in, records and remarks out. Knows nothing of windows, devices or files.
//
// A line is a command with fields separated by commas; there is no quoting, so no field holds a comma. Blanks around a
// field do not count, empty lines and lines that begin with # are comments. The format is told in
// docs/configuration.md.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kx::config {

// What the bounds are; what lies beyond is reported and left out, the rest of the file counts.
struct Bounds {
    static constexpr std::size_t fileBytes = 4u << 20;
    static constexpr std::size_t lineBytes = 4096;
    static constexpr std::size_t devices = 256;
    static constexpr std::size_t remarks = 1000;
    static constexpr int position = 99;       // of a label, counted from 0
    static constexpr double number = 1e9;     // either sign; lengths in micrometres
    static constexpr double delay = 60000.0;  // milliseconds
};

enum class RemarkKind {
    Guess,    // something that the file does not say was inferred
    Unknown,  // a line, property or device that means nothing here
    Error,    // something wrong: the line, or the part of it that is named, does not count
    Skipped,  // understood, and of no use here
};

// Something to be said about a line, which counts from 1.
struct Remark {
    int line;
    RemarkKind kind;
    std::wstring text;
};

// Remarks in the order of their lines; after Bounds::remarks of them a last one tells that more were left out.
class Remarks {
public:
    void Add(int line, RemarkKind kind, std::wstring text);
    const std::vector<Remark>& All() const noexcept { return m_all; }

private:
    std::vector<Remark> m_all;
    bool m_full = false;
};

// Each record has the line that it stands on. Names are as in the file, and need not be those of a device.

// Device,label,module,name
struct DeviceLine {
    int line;
    std::wstring label, module, name;
};

// Label,device,index,text
struct LabelLine {
    int line;
    std::wstring device;
    int position;  // 0 to Bounds::position
    std::wstring text;
};

// Property,device,property[,value] and the presets' ConfigGroup,group,preset,device,property,value and
// ConfigPixelSize,preset,device,property,value
struct SettingLine {
    int line;
    std::wstring group, preset;  // empty where there is none
    std::wstring device, property, value;
};

// FocusDirection,device,direction
struct DirectionLine {
    int line;
    std::wstring device;
    int direction;  // -1, 0 (not known) or 1
};

// Delay,device,milliseconds
struct DelayLine {
    int line;
    std::wstring device;
    double milliseconds;  // 0 to Bounds::delay
};

// PixelSize_um,preset,size and PixelSizeOptimalZ_Um,preset,step
struct PixelSizeLine {
    int line;
    std::wstring preset;
    double micrometres;  // not negative
    bool optimalZ;
};

// Parent,device,hub
struct ParentLine {
    int line;
    std::wstring device, hub;
};

// #@ Limits,device,property,min,max[,unit]
struct LimitsLine {
    int line;
    std::wstring device, property;
    double minimum, maximum;  // minimum < maximum
    std::wstring unit;        // nm, um and mm have become "um" with the numbers converted; others as written
};

// Property,Core,role,value: the last one of each counts. Empty texts and lines 0 where the file says nothing.
struct RoleLine {
    int line = 0;
    std::wstring device;
};

struct Roles {
    RoleLine shutter, focus, stage;
    std::optional<bool> autoShutter;
};

// What a file says, in the order of its lines.
struct ConfigFile {
    std::vector<DeviceLine> devices;  // with labels that differ
    std::vector<LabelLine> labels;
    std::vector<SettingLine> settings;
    std::vector<DirectionLine> directions;
    std::vector<DelayLine> delays;
    std::vector<PixelSizeLine> pixelSizes;
    std::vector<ParentLine> parents;
    std::vector<LimitsLine> limits;
    Roles roles;
};

// Makes text of bytes in the system's code page, one line at a time.
using AnsiToText = std::wstring (*)(std::string_view bytes);

// Reads a file's bytes. They are UTF-8, with or without a byte order mark; if any line is not, the whole file is taken
// for ANSI. A file in UTF-16 is refused as a whole: one error, no record.
ConfigFile ReadConfig(std::string_view bytes, AnsiToText ansi, Remarks& remarks);

// Helpers that the other steps share: ASCII letters in lower case; the text in quotes, cut where it is too long for a
// remark.
std::wstring Lower(std::wstring_view text);
std::wstring Quoted(std::wstring_view text);

}  // namespace kx::config
