#include <kxdevui/zfocus/zstack_rules.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>

#include <kxdevices/kx_zstackrules.h>
#include <kxdevui/zfocus/zstack_ids.h>
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

namespace {

constexpr wchar_t kMicrometres[] = L"\u00B5m";

// The step with which the most planes fit, the planes with the smallest step.
Nm LeastStep(std::optional<Nm> extent) { return extent ? *extent / MaxCount + 1 : 1; }
Nm MostPlanes(std::optional<Nm> extent) { return extent ? std::min(PlanesIn(*extent, 1), Nm{MaxCount}) : MaxCount; }

ui::Allowed DistanceIn(bool above, const Bounds& known) {
    if (known.home) return {0, above ? known.highest - *known.home : *known.home - known.lowest, true, kMicrometres};
    const double length = known.highest - known.lowest;
    return {0, above ? length + known.bottom.value_or(0) : length - known.top.value_or(0), true, kMicrometres};
}

// An end stops at the device's and at `inner`, where there is one.
ui::Allowed EndIn(bool above, const Bounds& known, std::optional<double> inner) {
    const double low = above ? inner.value_or(known.lowest) : known.lowest;
    const double high = above ? known.highest : inner.value_or(known.highest);
    return {low, high, true, kMicrometres};
}

}  // namespace

ui::Allowed AllowedIn(int edit, const Bounds& known) {
    const auto extent = known.top && known.bottom ? FromMicrometres(*known.top - *known.bottom) : std::nullopt;
    const bool above = edit == IDC_ZS_EDIT_TOP || edit == IDC_ZS_EDIT_ABOVE;
    switch (edit) {
    case IDC_ZS_EDIT_STEP:
        return {ToMicrometres(LeastStep(extent)), std::numeric_limits<double>::infinity(), true, kMicrometres};
    case IDC_ZS_EDIT_STEPS: return {1, static_cast<double>(MostPlanes(extent)), true, L"", true};
    case IDC_ZS_EDIT_RANGE: return {0, known.highest - known.lowest, true, kMicrometres};
    case IDC_ZS_EDIT_BELOW:
    case IDC_ZS_EDIT_ABOVE:
        if (HasDistances(known.type)) return DistanceIn(above, known);
        return EndIn(above, known, above ? known.bottom : known.top);
    default:
        if (IsHeldByEnds(known.type)) return EndIn(above, known, std::nullopt);
        if (known.home) return EndIn(above, known, known.home);
        // Signed, from wherever Z stands.
        const double most = DistanceIn(above, known).maximum;
        return {above ? 0 : 0 - most, above ? most : 0, true, kMicrometres};
    }
}

}  // namespace kx::zstack
