#include <kxdevui/zfocus/zstack_rules.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>

namespace kx::zstack {

bool IsNoEntry(const wchar_t* text) { return !*text || std::wcscmp(text, L"N/A") == 0; }

std::optional<int> ReadCount(const wchar_t* text) {
    wchar_t* end = nullptr;
    const long long count = std::wcstoll(text, &end, 10);
    if (end == text) return std::nullopt;
    return static_cast<int>(
        std::clamp<long long>(count, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

double PositionAbove(int type, std::optional<double> home, double entry) {
    return HasDistances(type) ? home.value_or(0.0) + std::abs(entry) : entry;
}

double PositionBelow(int type, std::optional<double> home, double entry) {
    return HasDistances(type) ? home.value_or(0.0) - std::abs(entry) : entry;
}

}  // namespace kx::zstack
