#include <kxdevui/light/modeshutter_rules.h>

namespace kx::modeshutter {

const wchar_t* ModeText(int mode) noexcept {
    static constexpr const wchar_t* texts[kModes] = {L"Fast", L"Soft", L"Aperture"};
    return mode >= 0 && mode < kModes ? texts[mode] : nullptr;
}

Mark MarkOf(int index, int count) noexcept {
    if (index < 0 || index >= count) return Mark::None;
    if (index == 0 || index == count - 1) return Mark::Label;
    const long long threeQuarters = 3LL * count / 4;
    return index == count / 4 || index == count / 2 || index == threeQuarters ? Mark::Tick : Mark::None;
}

}  // namespace kx::modeshutter
