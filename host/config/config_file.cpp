#include "config_file.h"

#include <algorithm>
#include <cmath>
#include <span>

#include <kxsystem/kx_number.h>
#include <kxsystem/kx_utf8.h>

namespace kx::config {

namespace {

using Fields = std::vector<std::wstring>;

wchar_t LowerOf(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; }

// ---- Bytes to text -------------------------------------------------------------------------------------------------

std::optional<std::wstring> FromUtf8(std::string_view bytes) {
    std::wstring text;
    while (!bytes.empty()) {
        char32_t character = 0;
        if (!TakeUtf8(bytes, character)) return std::nullopt;
        AppendWide(text, character);
    }
    return text;
}

std::vector<std::string_view> SplitLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        std::string_view line = bytes.substr(at, end - at);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        at = end + 1;
    }
    return lines;
}

std::wstring Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L" \t\r");
    if (first == std::wstring_view::npos) return {};
    return std::wstring(text.substr(first, text.find_last_not_of(L" \t\r") - first + 1));
}

Fields Split(std::wstring_view line) {
    Fields fields;
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find(L',', at), line.size());
        fields.push_back(Trimmed(line.substr(at, end - at)));
        at = end + 1;
    }
    return fields;
}

// ---- Fields --------------------------------------------------------------------------------------------------------

std::optional<double> NumberIn(const std::wstring& text, double low, double high) {
    double value = 0;
    if (!KX_StringToDouble(text.c_str(), value) || value < low || value > high) return std::nullopt;
    return value;
}

std::optional<int> IntegerIn(const std::wstring& text, int low, int high) {
    const std::optional<double> value = NumberIn(text, low, high);
    // Digits and a sign alone: "1.0" and "1e1" count nothing.
    if (!value || text.find_first_not_of(L"+-0123456789") != std::wstring::npos) return std::nullopt;
    return static_cast<int>(*value);
}

// How many micrometres the unit is; empty for what is no length.
std::optional<double> Micrometres(const std::wstring& unit) {
    if (unit == L"nm") return 0.001;
    if (unit == L"mm") return 1000.0;
    // The micro sign and the Greek letter look alike.
    if (unit == L"um" || unit == L"\u00B5m" || unit == L"\u03BCm") return 1.0;
    return std::nullopt;
}

// ---- Commands ------------------------------------------------------------------------------------------------------

class Reader {
public:
    explicit Reader(Remarks& remarks) : m_remarks(remarks) {}

    void Take(int line, const std::wstring& text);
    ConfigFile Done() { return std::move(m_file); }

private:
    using Handler = void (Reader::*)(const Fields&);
    struct Command {
        const wchar_t* name;
        std::size_t fewest, most;  // fields, the command itself included
        Handler handler;           // null: skipped
    };
    static const Command kCommands[];
    static const Command kDirectives[];

    void Dispatch(std::span<const Command> commands, Fields fields);
    void Device(const Fields& fields);
    void Property(const Fields& fields);
    void CoreProperty(const std::wstring& role, const std::wstring& value);
    void Label(const Fields& fields);
    void FocusDirection(const Fields& fields);
    void Delay(const Fields& fields);
    void ConfigGroup(const Fields& fields);
    void ConfigPixelSize(const Fields& fields);
    void PixelSize(const Fields& fields);
    void OptimalZ(const Fields& fields);
    void AddPixelSize(const Fields& fields, bool optimalZ);
    void Parent(const Fields& fields);
    void Limits(const Fields& fields);

    void Say(RemarkKind kind, std::wstring text) { m_remarks.Add(m_line, kind, std::move(text)); }
    void Error(std::wstring text) { Say(RemarkKind::Error, std::move(text)); }
    std::optional<bool> Flag(const std::wstring& text);

    Remarks& m_remarks;
    ConfigFile m_file;
    int m_line = 0;
};

// clang-format off
const Reader::Command Reader::kCommands[] = {
    {L"Device",               4, 4, &Reader::Device},
    {L"Property",             3, 4, &Reader::Property},
    {L"Label",                4, 4, &Reader::Label},
    {L"FocusDirection",       3, 3, &Reader::FocusDirection},
    {L"Delay",                3, 3, &Reader::Delay},
    {L"ConfigGroup",          2, 6, &Reader::ConfigGroup},
    {L"ConfigPixelSize",      5, 5, &Reader::ConfigPixelSize},
    {L"PixelSize_um",         3, 3, &Reader::PixelSize},
    {L"PixelSizeOptimalZ_Um", 3, 3, &Reader::OptimalZ},
    {L"Parent",               3, 3, &Reader::Parent},
    // Written by earlier programs, and of no use any more.
    {L"Config",       1, 99, nullptr},
    {L"Equipment",    1, 99, nullptr},
    {L"ImageSynchro", 1, 99, nullptr},
};
const Reader::Command Reader::kDirectives[] = {
    {L"Limits", 5, 6, &Reader::Limits},
};
// clang-format on

void Reader::Take(int line, const std::wstring& text) {
    m_line = line;
    const std::wstring trimmed = Trimmed(text);
    if (trimmed.starts_with(L"#@")) {
        Dispatch(kDirectives, Split(std::wstring_view(trimmed).substr(2)));
    } else if (!trimmed.empty() && trimmed.front() != L'#') {
        Dispatch(kCommands, Split(trimmed));
    }
}

void Reader::Dispatch(std::span<const Command> commands, Fields fields) {
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [&](const Command& each) { return fields.front() == each.name; });
    if (command == commands.end()) return Say(RemarkKind::Unknown, Quoted(fields.front()) + L" is no known command");
    if (!command->handler) return Say(RemarkKind::Skipped, Quoted(fields.front()) + L" is obsolete");
    if (fields.size() < command->fewest) {
        return Error(Quoted(fields.front()) + L" needs " + std::to_wstring(command->fewest - 1) + L" fields, " +
                     std::to_wstring(fields.size() - 1) + L" are given");
    }
    if (fields.size() > command->most) {
        Error(L"what follows field " + std::to_wstring(command->most - 1) + L" does not belong here");
    }
    fields.resize(command->most);
    (this->*command->handler)(fields);
}

void Reader::Device(const Fields& fields) {
    const std::wstring& label = fields[1];
    if (label.empty()) return Error(L"a device needs a label");
    if (label == L"Core") return Error(L"\"Core\" is no label for a device");
    const auto same = std::find_if(m_file.devices.begin(), m_file.devices.end(),
                                   [&](const DeviceLine& each) { return each.label == label; });
    if (same != m_file.devices.end()) {
        return Error(Quoted(label) + L" is a device already, from line " + std::to_wstring(same->line));
    }
    if (m_file.devices.size() == Bounds::devices) {
        return Error(Quoted(label) + L" is one too many: there are at most " + std::to_wstring(Bounds::devices) +
                     L" devices");
    }
    m_file.devices.push_back({m_line, label, fields[2], fields[3]});
}

void Reader::Property(const Fields& fields) {
    if (fields[1] == L"Core") return CoreProperty(fields[2], fields[3]);
    m_file.settings.push_back({m_line, {}, {}, fields[1], fields[2], fields[3]});
}

void Reader::CoreProperty(const std::wstring& role, const std::wstring& value) {
    Roles& roles = m_file.roles;
    if (role == L"Shutter") {
        roles.shutter = {m_line, value};
    } else if (role == L"Focus") {
        roles.focus = {m_line, value};
    } else if (role == L"XYStage") {
        roles.stage = {m_line, value};
    } else if (role == L"AutoShutter") {
        if (const std::optional<bool> flag = Flag(value)) roles.autoShutter = flag;
    } else if (role == L"Initialize") {
        // When the devices are started makes no difference to simulated ones.
        Flag(value);
    } else {
        Say(RemarkKind::Skipped, L"the role " + Quoted(role) + L" has no meaning here");
    }
}

std::optional<bool> Reader::Flag(const std::wstring& text) {
    const std::optional<int> value = IntegerIn(text, 0, 1);
    if (!value) Error(Quoted(text) + L" is neither 0 nor 1");
    return value ? std::optional(*value == 1) : std::nullopt;
}

void Reader::Label(const Fields& fields) {
    const std::optional<int> position = IntegerIn(fields[2], 0, Bounds::position);
    if (!position) return Error(Quoted(fields[2]) + L" is no position from 0 to " + std::to_wstring(Bounds::position));
    m_file.labels.push_back({m_line, fields[1], *position, fields[3]});
}

void Reader::FocusDirection(const Fields& fields) {
    const std::optional<int> direction = IntegerIn(fields[2], -1, 1);
    if (!direction) return Error(Quoted(fields[2]) + L" is no focus direction: -1, 0 or 1");
    m_file.directions.push_back({m_line, fields[1], *direction});
}

void Reader::Delay(const Fields& fields) {
    const std::optional<double> delay = NumberIn(fields[2], 0, Bounds::delay);
    if (!delay) return Error(Quoted(fields[2]) + L" is no delay from 0 to 60000 ms");
    m_file.delays.push_back({m_line, fields[1], *delay});
}

void Reader::ConfigGroup(const Fields& fields) {
    // A group may be named before it has a preset, and a preset before it has a setting.
    if (!fields[3].empty()) m_file.settings.push_back({m_line, fields[1], fields[2], fields[3], fields[4], fields[5]});
}

void Reader::ConfigPixelSize(const Fields& fields) {
    m_file.settings.push_back({m_line, {}, fields[1], fields[2], fields[3], fields[4]});
}

void Reader::PixelSize(const Fields& fields) { AddPixelSize(fields, false); }
void Reader::OptimalZ(const Fields& fields) { AddPixelSize(fields, true); }

void Reader::AddPixelSize(const Fields& fields, bool optimalZ) {
    const std::optional<double> size = NumberIn(fields[2], 0, Bounds::number);
    if (!size) return Error(Quoted(fields[2]) + L" is no size in micrometres");
    m_file.pixelSizes.push_back({m_line, fields[1], *size, optimalZ});
}

void Reader::Parent(const Fields& fields) { m_file.parents.push_back({m_line, fields[1], fields[2]}); }

void Reader::Limits(const Fields& fields) {
    const std::optional<double> micrometres = Micrometres(fields[5]);
    const double factor = micrometres.value_or(1.0), most = Bounds::number / factor;
    const std::optional<double> minimum = NumberIn(fields[3], -most, most), maximum = NumberIn(fields[4], -most, most);
    if (!minimum || !maximum) return Error(Quoted(fields[minimum ? 4 : 3]) + L" is no limit");
    if (*minimum >= *maximum) return Error(L"the minimum " + fields[3] + L" is not below the maximum " + fields[4]);
    m_file.limits.push_back({m_line, fields[1], fields[2], *minimum * factor, *maximum * factor,
                             micrometres ? std::wstring(L"um") : fields[5]});
}

// What can be said before any line is looked at; the lines that count.
std::vector<std::string_view> LinesOf(std::string_view bytes, Remarks& remarks) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        remarks.Add(1, RemarkKind::Error, L"the file is in UTF-16, which is not read");
        return {};
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        remarks.Add(1, RemarkKind::Skipped, L"a byte order mark");
        bytes.remove_prefix(3);
    }
    if (bytes.size() <= Bounds::fileBytes) return SplitLines(bytes);
    // The line that the bound cuts is left out: half a line would say something else.
    const std::string_view kept = bytes.substr(0, Bounds::fileBytes);
    std::vector<std::string_view> lines = SplitLines(kept.substr(0, kept.rfind('\n') + 1));
    remarks.Add(static_cast<int>(lines.size()) + 1, RemarkKind::Error,
                L"the file is longer than 4 MB: the rest is not read");
    return lines;
}

}  // namespace

// ---- The whole -----------------------------------------------------------------------------------------------------

void Remarks::Add(int line, RemarkKind kind, std::wstring text) {
    if (m_full) return;
    m_full = m_all.size() == Bounds::remarks;
    if (m_full) {
        text = L"there is more to be said than is listed";
        line = std::max(line, m_all.back().line);
    }
    // Later steps speak of earlier lines; the last remark stays the last.
    const auto place = m_full ? m_all.end()
                              : std::upper_bound(m_all.begin(), m_all.end(), line,
                                                 [](int sought, const Remark& each) { return sought < each.line; });
    m_all.insert(place, {line, m_full ? RemarkKind::Skipped : kind, std::move(text)});
}

ConfigFile ReadConfig(std::string_view bytes, AnsiToText ansi, Remarks& remarks) {
    const std::vector<std::string_view> lines = LinesOf(bytes, remarks);
    const auto strange =
        std::find_if(lines.begin(), lines.end(), [](std::string_view each) { return !FromUtf8(each); });
    const bool utf8 = strange == lines.end();
    if (!utf8) {
        remarks.Add(static_cast<int>(strange - lines.begin()) + 1, RemarkKind::Guess,
                    L"this is not UTF-8: the whole file is read as ANSI");
    }
    Reader reader(remarks);
    int line = 0;
    for (const std::string_view each : lines) {
        ++line;
        if (each.size() > Bounds::lineBytes) {
            remarks.Add(line, RemarkKind::Error, L"the line is longer than 4096 bytes");
        } else if (each.find('\0') != std::string_view::npos) {
            remarks.Add(line, RemarkKind::Error, L"the line has a zero byte");
        } else {
            reader.Take(line, utf8 ? FromUtf8(each).value_or(L"") : ansi(each));
        }
    }
    return reader.Done();
}

std::wstring Lower(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerOf);
    return lower;
}

std::wstring Quoted(std::wstring_view text) {
    constexpr std::size_t kMost = 40;
    const bool fits = text.size() <= kMost;
    return L"\"" + std::wstring(fits ? text : text.substr(0, kMost)) + (fits ? L"\"" : L"...\"");
}

}  // namespace kx::config
