#include "settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace kx::host {

namespace {

constexpr std::string_view kHead = "[kxdevhost]", kEnd = "[end]";
constexpr int kMaxLanguage = 0x3FF, kMaxScheme = Settings::Automatic, kMaxPage = 99, kMinSize = 300, kMaxSize = 10000;

struct Entry {
    std::string_view name;
    int Settings::*value;
    bool (*allowed)(int value);
};

bool IsSize(int value) { return value == 0 || (value >= kMinSize && value <= kMaxSize); }

constexpr std::array kEntries{
    Entry{"zoom", &Settings::zoom, [](int v) { return v == 100 || v == 125 || v == 150 || v == 200; }},
    Entry{"language", &Settings::language, [](int v) { return v >= 0 && v <= kMaxLanguage; }},
    Entry{"scheme", &Settings::scheme, [](int v) { return v >= 0 && v <= kMaxScheme; }},
    Entry{"page", &Settings::page, [](int v) { return v >= 0 && v <= kMaxPage; }},
    Entry{"width", &Settings::width, IsSize},
    Entry{"height", &Settings::height, IsSize},
};

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::optional<int> ReadNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

Settings ReadSettings(std::string_view text) {
    Settings read;
    std::array<bool, kEntries.size()> seen{};
    if (TakeLine(text) != kHead) return {};
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        // Without its end the file was cut off while it was written.
        if (line == kEnd) return text.empty() && (read.width == 0) == (read.height == 0) ? read : Settings{};
        const std::size_t equals = std::min(line.find('='), line.size());
        const auto entry = std::find_if(kEntries.begin(), kEntries.end(),
                                        [&](const Entry& each) { return each.name == line.substr(0, equals); });
        if (equals == line.size() || entry == kEntries.end()) return {};
        const std::optional<int> number = ReadNumber(line.substr(equals + 1));
        bool& again = seen[static_cast<std::size_t>(entry - kEntries.begin())];
        if (!number || !entry->allowed(*number) || again) return {};
        again = true;
        read.*entry->value = *number;
    }
    return {};
}

std::string WriteSettings(const Settings& settings) {
    std::string text(kHead);
    for (const Entry& each : kEntries)
        text += "\r\n" + std::string(each.name) + "=" + std::to_string(settings.*each.value);
    return text + "\r\n" + std::string(kEnd) + "\r\n";
}

}  // namespace kx::host
