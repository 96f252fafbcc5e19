#include "config_infer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <span>

#include <kxsystem/kx_number.h>

namespace kx::config {

namespace {

using Words = std::vector<std::wstring>;

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
// Letters beyond ASCII belong to words as well.
bool IsLetter(wchar_t c) { return (c >= L'a' && c <= L'z') || c > 0xBF; }

// ---- Texts ---------------------------------------------------------------------------------------------------------

// Words in lower case. Numbers keep their point and stand apart from letters, so that "60x" is "60" and "x"; capitals
// begin words, so that "FilterWheel" and "XYStage" are two each; other signs are words of their own.
Words WordsOf(const std::wstring& text) {
    Words words;
    const std::wstring lower = Lower(text);
    enum { None, Letters, Number } before = None;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = lower[i];
        const bool point = c == L'.' && before == Number && i + 1 < text.size() && IsDigit(text[i + 1]);
        const auto now = IsDigit(c) || point ? Number : IsLetter(c) ? Letters : None;
        const auto capital = [&](std::size_t at) { return lower[at] != text[at]; };
        const bool hump = now == Letters && before == Letters && capital(i) &&
                          (!capital(i - 1) || (i + 1 < text.size() && IsLetter(lower[i + 1]) && !capital(i + 1)));
        if (c == L' ' || c == L'_' || c == L'-' || c == L'\t') {
            before = None;
            continue;
        }
        if (now == None || now != before || hump) words.emplace_back();
        words.back() += c;
        before = now;
    }
    return words;
}

bool Has(const Words& words, std::initializer_list<const wchar_t*> sought) {
    return std::any_of(words.begin(), words.end(), [&](const std::wstring& word) {
        return std::any_of(sought.begin(), sought.end(), [&](const wchar_t* each) { return word == each; });
    });
}

// Whether two words follow each other.
bool HasPair(const Words& words, const wchar_t* first, const wchar_t* second) {
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        if (words[i] == first && words[i + 1] == second) return true;
    }
    return false;
}

double NumberOf(const std::wstring& word) {
    double value = 0;
    return !word.empty() && IsDigit(word.front()) && KX_StringToDouble(word.c_str(), value) ? value : 0;
}

bool IsWavelength(const std::wstring& word) {
    const double value = NumberOf(word);
    return value >= 350 && value <= 1100;
}

// ---- What a label reads like ---------------------------------------------------------------------------------------

bool ReadsLikeObjective(const std::wstring& label) { return ReadObjective(label).magnification > 0; }

bool ReadsLikeFilter(const std::wstring& label) {
    const Words words = WordsOf(label);
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!IsWavelength(words[i])) continue;
        // "525/50", "LP 515", "515 LP", "BP 525"
        if (i + 2 < words.size() && words[i + 1] == L"/" && NumberOf(words[i + 2]) > 0) return true;
        const auto edge = [&](std::size_t at) {
            return at < words.size() && Has({words[at]}, {L"lp", L"sp", L"bp", L"long", L"short", L"band"});
        };
        if (edge(i + 1) || (i > 0 && edge(i - 1))) return true;
    }
    return Has(words, {L"dapi",      L"hoechst",  L"fitc",      L"gfp",      L"egfp",   L"cfp", L"yfp",
                       L"rfp",       L"tritc",    L"rhodamine", L"mcherry",  L"cherry", L"tx",  L"texas",
                       L"cy",        L"bfp",      L"filter",    L"dichroic", L"cube",   L"nd",  L"polariser",
                       L"polarizer", L"analyser", L"analyzer",  L"quad",     L"triple"});
}

bool ReadsLikePath(const std::wstring& label) {
    return Has(WordsOf(label),
               {L"eye", L"eyes", L"eyepiece", L"eyepieces", L"ocular", L"oculars", L"bino", L"binocular", L"camera",
                L"cam", L"left", L"right", L"port", L"side", L"front", L"rear", L"bottom"});
}

struct Pair {
    const wchar_t *one, *other;
};

// Whether the labels are just these two, in either order.
bool AreJust(const std::vector<std::wstring>& labels, std::span<const Pair> pairs) {
    if (labels.size() != 2) return false;
    const std::wstring first = Lower(labels[0]), second = Lower(labels[1]);
    return std::any_of(pairs.begin(), pairs.end(), [&](const Pair& pair) {
        return (first == pair.one && second == pair.other) || (second == pair.one && first == pair.other);
    });
}

constexpr std::array kShutterPairs{Pair{L"closed", L"open"}, Pair{L"close", L"open"}, Pair{L"shut", L"open"}};
constexpr std::array kTirfPairs{Pair{L"epi", L"tirf"}, Pair{L"widefield", L"tirf"}};

// ---- What a name reads like ----------------------------------------------------------------------------------------

bool NamesZ(const Words& words) {
    return Has(words, {L"z", L"zdrive", L"zstage", L"focus", L"piezo"}) && !Has(words, {L"auto", L"autofocus"});
}

bool NamesLaser(const Words& words) {
    return Has(words, {L"laser", L"lasers", L"aotf", L"combiner", L"fibre", L"fiber"});
}

struct NameRule {
    DeviceKind kind;
    bool labels;  // needs positions
    bool (*fits)(const Words& words);
};

// The first that fits counts.
constexpr std::array kNameRules{
    NameRule{DeviceKind::TirfMirror, true, [](const Words& w) { return Has(w, {L"tirf"}) && Has(w, {L"mirror"}); }},
    NameRule{DeviceKind::Shutter, false,
             [](const Words& w) {
                 return Has(w, {L"shutter", L"shutters"});
             }},
    NameRule{DeviceKind::Laser, false, NamesLaser},
    NameRule{DeviceKind::Turret, true,
             [](const Words& w) {
                 return Has(w, {L"objective", L"objectives", L"nosepiece"});
             }},
    NameRule{DeviceKind::LightPath, true,
             [](const Words& w) {
                 return HasPair(w, L"light", L"path") || Has(w, {L"lightpath", L"prism", L"port"});
             }},
    NameRule{DeviceKind::FilterWheel, true,
             [](const Words& w) {
                 return Has(w, {L"filter", L"filters", L"wheel", L"cube", L"cubes", L"dichroic", L"reflector"});
             }},
    NameRule{DeviceKind::Stage, false,
             [](const Words& w) {
                 return Has(w, {L"xystage"}) || (Has(w, {L"xy"}) && Has(w, {L"stage", L"drive"}));
             }},
    NameRule{DeviceKind::ZDrive, false, NamesZ},
};

FilterKind FilterKindOf(const Device& device, const Words& words) {
    if (Has(words, {L"excitation", L"exciter", L"ex", L"exc"})) return FilterKind::Excitation;
    if (Has(words, {L"cube", L"cubes", L"dichroic", L"turret", L"block", L"reflector"})) return FilterKind::Cube;
    const auto all = [&](std::initializer_list<const wchar_t*> sought) {
        return std::any_of(device.positions.begin(), device.positions.end(),
                           [&](const std::wstring& each) { return Has(WordsOf(each), sought); });
    };
    if (Has(words, {L"nd", L"neutral", L"attenuator"}) || all({L"nd"})) return FilterKind::NeutralDensity;
    if (Has(words, {L"polariser", L"polarizer", L"analyser", L"analyzer"}) ||
        all({L"polariser", L"polarizer", L"analyser", L"analyzer"})) {
        return FilterKind::Polariser;
    }
    return FilterKind::Emission;
}

ShutterKind ShutterKindOf(const Words& words) {
    if (Has(words, {L"dia", L"transmitted", L"trans", L"brightfield", L"bf", L"halogen"})) return ShutterKind::Dia;
    if (Has(words, {L"epi", L"reflected", L"fluorescence", L"fluo", L"excitation"})) return ShutterKind::Epi;
    return ShutterKind::Auxiliary;
}

const wchar_t* NameOf(DeviceKind kind) {
    switch (kind) {
    case DeviceKind::Turret: return L"an objective turret";
    case DeviceKind::FilterWheel: return L"a filter wheel";
    case DeviceKind::LightPath: return L"a light path";
    case DeviceKind::TirfMirror: return L"a TIRF mirror";
    case DeviceKind::Shutter: return L"a shutter";
    case DeviceKind::Laser: return L"a laser unit";
    case DeviceKind::ZDrive: return L"a Z drive";
    case DeviceKind::Stage: return L"a stage";
    case DeviceKind::Other: break;
    }
    return L"a device of no known kind";
}

// ---- Putting together ----------------------------------------------------------------------------------------------

class Inference {
public:
    Inference(const ConfigFile& file, Remarks& remarks) : m_file(file), m_remarks(remarks) {}

    Stand Infer() {
        TakeDevices();
        TakeLabels();
        TakeNumbers();
        TakeRoles();
        TakePixelSizes();
        for (std::size_t i = 0; i < m_stand.devices.size(); ++i)
            Classify(i);
        TakeStarts();
        return std::move(m_stand);
    }

private:
    void TakeDevices();
    void TakeLabels();
    void TakeNumbers();
    void TakeRoles();
    void TakePixelSizes();
    void TakeStarts();
    void Classify(std::size_t index);
    void CheckAperture(Device& device);
    void LeaveOut(Device& device);
    void EnsureRange(Device& device, const wchar_t* property, int minimum, int maximum);
    bool ByUse(std::size_t index);
    bool ByLabels(Device& device);
    bool ByName(Device& device);
    static void Decide(Device& device, DeviceKind kind, std::wstring reason);

    // Null, and an error, for a device that the file does not have.
    Device* Find(int line, const std::wstring& label);
    std::optional<std::size_t> Role(const RoleLine& role);
    void Say(int line, RemarkKind kind, std::wstring text) { m_remarks.Add(line, kind, std::move(text)); }

    const ConfigFile& m_file;
    Remarks& m_remarks;
    Stand m_stand;
    std::map<std::wstring, std::size_t> m_index;
    std::map<std::size_t, int> m_directed;  // line of the focus direction
};

void Inference::TakeDevices() {
    for (const DeviceLine& each : m_file.devices) {
        m_index[each.label] = m_stand.devices.size();
        Device device;
        device.line = each.line;
        device.label = each.label;
        device.module = each.module;
        device.name = each.name;
        m_stand.devices.push_back(std::move(device));
    }
}

Device* Inference::Find(int line, const std::wstring& label) {
    const auto found = m_index.find(label);
    if (found != m_index.end()) return &m_stand.devices[found->second];
    Say(line, RemarkKind::Error, L"there is no device " + Quoted(label));
    return nullptr;
}

void Inference::TakeLabels() {
    std::map<std::pair<const Device*, int>, int> lines;
    for (const LabelLine& each : m_file.labels) {
        Device* const device = Find(each.line, each.device);
        if (!device) continue;
        const auto [known, isNew] = lines.try_emplace({device, each.position}, each.line);
        if (!isNew) {
            Say(each.line, RemarkKind::Error,
                L"position " + std::to_wstring(each.position) + L" of " + Quoted(each.device) +
                    L" has a label already, from line " + std::to_wstring(known->second) + L": this one counts");
        }
        const auto position = static_cast<std::size_t>(each.position);
        if (device->positions.size() <= position) device->positions.resize(position + 1);
        device->positions[position] = each.text;
    }
}

void Inference::TakeNumbers() {
    for (const DirectionLine& each : m_file.directions) {
        if (Device* const device = Find(each.line, each.device)) {
            device->direction = each.direction;
            m_directed[m_index[each.device]] = each.line;
        }
    }
    for (const DelayLine& each : m_file.delays) {
        if (Device* const device = Find(each.line, each.device)) device->delay = each.milliseconds;
    }
    for (const ParentLine& each : m_file.parents) {
        Device* const device = Find(each.line, each.device);
        if (device && Find(each.line, each.hub)) device->parent = each.hub;
    }
    for (const LimitsLine& each : m_file.limits) {
        Device* const device = Find(each.line, each.device);
        if (!device) continue;
        device->limits[each.property] = {each.line, each.minimum, each.maximum, each.unit};
    }
}

std::optional<std::size_t> Inference::Role(const RoleLine& role) {
    if (role.device.empty() || !Find(role.line, role.device)) return std::nullopt;
    return m_index[role.device];
}

void Inference::TakeRoles() {
    m_stand.shutter = Role(m_file.roles.shutter);
    m_stand.focus = Role(m_file.roles.focus);
    m_stand.stage = Role(m_file.roles.stage);
    m_stand.autoShutter = m_file.roles.autoShutter.value_or(false);
}

void Inference::TakePixelSizes() {
    std::map<std::wstring, std::size_t> index;
    for (const PixelSizeLine& each : m_file.pixelSizes) {
        const auto [known, isNew] = index.try_emplace(each.preset, m_stand.pixelSizes.size());
        if (isNew) m_stand.pixelSizes.push_back({each.preset});
        PixelSize& size = m_stand.pixelSizes[known->second];
        (each.optimalZ ? size.optimalZ : size.micrometres) = each.micrometres;
    }
}

// ---- Deciding ------------------------------------------------------------------------------------------------------

void Inference::Decide(Device& device, DeviceKind kind, std::wstring reason) {
    device.kind = kind;
    device.reason = std::move(reason);
}

void Inference::Classify(std::size_t index) {
    Device& device = m_stand.devices[index];
    if (!ByUse(index) && !ByLabels(device) && !ByName(device)) {
        if (device.positions.empty()) return LeaveOut(device);
        Decide(device, DeviceKind::LightPath, L"it has positions, and nothing tells of what");
    }
    Words words = WordsOf(device.label);
    const Words more = WordsOf(device.name);
    words.insert(words.end(), more.begin(), more.end());
    if (device.kind == DeviceKind::FilterWheel) device.filter = FilterKindOf(device, words);
    if (device.kind == DeviceKind::Shutter) device.shutter = ShutterKindOf(words);
    Say(device.line, RemarkKind::Guess,
        Quoted(device.label) + L" is taken for " + NameOf(device.kind) + L": " + device.reason);
    if (device.kind == DeviceKind::ZDrive) {
        const bool piezo = Has(words, {L"piezo"});
        EnsureRange(device, L"Position", piezo ? 0 : -5000, piezo ? 200 : 5000);
    } else if (device.kind == DeviceKind::Stage) {
        EnsureRange(device, L"X", -50000, 50000);
        EnsureRange(device, L"Y", -50000, 50000);
    } else if (device.kind == DeviceKind::Shutter) {
        CheckAperture(device);
    }
}

void Inference::CheckAperture(Device& device) {
    const Limits* const limits = device.LimitsOf(L"Aperture");
    if (!limits || (limits->minimum >= 0 && limits->maximum <= 100)) return;
    Say(limits->line, RemarkKind::Error, L"an aperture goes from 0 to 100 %");
    device.limits.erase(L"Aperture");
}

// Nothing shows such a device; some are there for reasons that can be told.
void Inference::LeaveOut(Device& device) {
    const bool hub = std::any_of(m_stand.devices.begin(), m_stand.devices.end(),
                                 [&](const Device& each) { return each.parent == device.label; });
    const bool camera = Has(WordsOf(device.label + L" " + device.name), {L"camera", L"cam", L"ccd", L"cmos"});
    device.reason = hub      ? L"other devices hang on it"
                    : camera ? L"its name reads like a camera"
                             : L"nothing tells its kind";
    Say(device.line, hub || camera ? RemarkKind::Skipped : RemarkKind::Unknown,
        Quoted(device.label) + L" has no place on a panel: " + device.reason);
}

// The range of what moves has to be known, and be one of lengths.
void Inference::EnsureRange(Device& device, const wchar_t* property, int minimum, int maximum) {
    if (const Limits* limits = device.LimitsOf(property)) {
        if (limits->unit.empty() || limits->unit == L"um") return;
        Say(limits->line, RemarkKind::Error, Quoted(limits->unit) + L" is no unit of length");
    }
    device.limits[property] = {device.line, static_cast<double>(minimum), static_cast<double>(maximum), L"um"};
    Say(device.line, RemarkKind::Guess,
        property + (L" of " + Quoted(device.label)) + L" is taken to go from " + std::to_wstring(minimum) + L" to " +
            std::to_wstring(maximum) + L" um");
}

bool Inference::ByUse(std::size_t index) {
    Device& device = m_stand.devices[index];
    if (m_stand.shutter == index) {
        Decide(device, DeviceKind::Shutter, L"it has the role of the shutter");
    } else if (m_stand.stage == index) {
        Decide(device, DeviceKind::Stage, L"it has the role of the stage");
    } else if (m_stand.focus == index) {
        Decide(device, DeviceKind::ZDrive, L"it has the role of the focus");
    } else if (const auto directed = m_directed.find(index); directed != m_directed.end()) {
        Decide(device, DeviceKind::ZDrive,
               L"line " + std::to_wstring(directed->second) + L" gives its focus direction");
    } else {
        return false;
    }
    return true;
}

bool Inference::ByLabels(Device& device) {
    if (AreJust(device.positions, kShutterPairs)) {
        Decide(device, DeviceKind::Shutter, L"its labels are open and closed");
        return true;
    }
    if (AreJust(device.positions, kTirfPairs)) {
        Decide(device, DeviceKind::TirfMirror, L"its labels are the axis and TIRF");
        return true;
    }
    struct Reading {
        DeviceKind kind;
        bool (*fits)(const std::wstring& label);
        const wchar_t* what;
    };
    static constexpr std::array kReadings{Reading{DeviceKind::Turret, ReadsLikeObjective, L"objectives"},
                                          Reading{DeviceKind::FilterWheel, ReadsLikeFilter, L"filters"},
                                          Reading{DeviceKind::LightPath, ReadsLikePath, L"light paths"}};
    // Ports of a laser are fibres and mirrors, which read like much else.
    if (NamesLaser(WordsOf(device.label)) || NamesLaser(WordsOf(device.name))) return false;
    const auto speaking = std::count_if(device.positions.begin(), device.positions.end(),
                                        [](const std::wstring& each) { return !IsEmptyPosition(each); });
    for (const Reading& reading : kReadings) {
        const auto fitting = std::count_if(device.positions.begin(), device.positions.end(), reading.fits);
        if (fitting == 0 || fitting * 2 < speaking) continue;
        Decide(device, reading.kind,
               std::to_wstring(fitting) + L" of " + std::to_wstring(speaking) + L" labels read like " + reading.what);
        return true;
    }
    return false;
}

bool Inference::ByName(Device& device) {
    // The user's own name says more than the driver's.
    for (const std::wstring* name : {&device.label, &device.name}) {
        const Words words = WordsOf(*name);
        for (const NameRule& rule : kNameRules) {
            if (!rule.fits(words) || (rule.labels && device.positions.empty())) continue;
            Decide(device, rule.kind, L"its name " + Quoted(*name) + L" reads like it");
            return true;
        }
    }
    return false;
}

// ---- Where devices stand at first ----------------------------------------------------------------------------------

void Inference::TakeStarts() {
    for (const SettingLine& each : m_file.settings) {
        if (each.device == L"Core") continue;
        Device* const device = Find(each.line, each.device);
        const bool startup =
            (each.group.empty() && each.preset.empty()) || (each.group == L"System" && each.preset == L"Startup");
        if (!device || !startup) continue;
        // A shutter without labels is closed at 0 and open at 1.
        const bool plain = device->kind == DeviceKind::Shutter && device->positions.empty();
        const auto count = static_cast<double>(plain ? 2 : device->positions.size());
        if (each.property == L"State" && count > 0) {
            double position = 0;
            const bool fits = KX_StringToDouble(each.value.c_str(), position) && position >= 0 && position < count &&
                              position == std::floor(position);
            if (fits) {
                device->start = static_cast<int>(position);
            } else {
                Say(each.line, RemarkKind::Error, Quoted(each.value) + L" is no position of " + Quoted(device->label));
            }
        } else if (each.property == L"Label" && !device->positions.empty()) {
            const auto found = std::find(device->positions.begin(), device->positions.end(), each.value);
            if (found != device->positions.end() && !each.value.empty()) {
                device->start = static_cast<int>(found - device->positions.begin());
            } else {
                Say(each.line, RemarkKind::Error, Quoted(each.value) + L" is no label of " + Quoted(device->label));
            }
        }
    }
}

}  // namespace

const Limits* Device::LimitsOf(std::wstring_view property) const {
    const auto found = limits.find(property);
    return found == limits.end() ? nullptr : &found->second;
}

bool IsEmptyPosition(const std::wstring& label) {
    const Words words = WordsOf(label);
    return words.empty() || Has(words, {L"empty", L"none", L"blank", L"free"}) ||
           (words.size() == 2 && Has({words[0]}, {L"position", L"pos", L"state"}));
}

Stand InferStand(const ConfigFile& file, Remarks& remarks) { return Inference(file, remarks).Infer(); }

// ---- Numbers in labels ---------------------------------------------------------------------------------------------

ObjectiveNumbers ReadObjective(const std::wstring& label) {
    ObjectiveNumbers numbers;
    numbers.immersion = L"Air";
    const std::wstring lower = Lower(label);
    const Words words = WordsOf(label);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const double number = NumberOf(words[i]);
        if (numbers.magnification == 0) {
            // "1x1" is a camera's binning.
            const bool times = i + 1 < words.size() && words[i + 1] == L"x";
            const bool binning = times && i + 2 < words.size() && IsDigit(words[i + 2].front()) &&
                                 lower.find(words[i] + L"x" + words[i + 2]) != std::wstring::npos;
            if (times && number >= 0.5 && number <= 250 && !binning) numbers.magnification = number;
        } else if (numbers.numericalAperture == 0 && number >= 0.01 && number < 1.7) {
            numbers.numericalAperture = number;
        }
    }
    // clang-format off
    struct Immersion { std::initializer_list<const wchar_t*> words; const wchar_t* name; double index; };
    const Immersion immersions[] = {
        {{L"oil", L"oel", L"o"},                    L"Oil",      1.518},
        {{L"water", L"wi", L"w"},                   L"Water",    1.333},
        {{L"silicone", L"sil"},                     L"Silicone", 1.406},
        {{L"glycerol", L"glycerine", L"gly"},       L"Glycerol", 1.472},
    };
    // clang-format on
    for (const Immersion& each : immersions) {
        if (!Has(words, each.words)) continue;
        numbers.immersion = each.name;
        numbers.refractiveIndex = each.index;
    }
    return numbers;
}

int ReadWavelength(const std::wstring& text) {
    for (const std::wstring& word : WordsOf(text)) {
        if (IsWavelength(word)) return static_cast<int>(std::lround(NumberOf(word)));
    }
    return 0;
}

}  // namespace kx::config
