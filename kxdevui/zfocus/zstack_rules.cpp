#include <kxdevui/zfocus/zstack_rules.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>

#include <kxsystem/kx_number.h>

namespace kx::zstack {

bool IsNoEntry(const wchar_t* text) { return !*text || std::wcscmp(text, L"N/A") == 0; }

std::optional<int> ReadCount(const wchar_t* text) {
    const CKxStringW plain = KX_HalfWidth(text);
    wchar_t* end = nullptr;
    const long long count = std::wcstoll(plain, &end, 10);
    if (end == plain.c_str()) return std::nullopt;
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
