#include <kxdevui/framework/devgui_habits.h>

#include <array>
#include <cstddef>

#include <kxsystem/kx_log.h>

namespace {

// The habits are in the value itself: a property needs no freeing then, and goes with its window.
constexpr wchar_t kProperty[] = L"KxFieldHabits";
constexpr ULONG_PTR kGiven = 1;

constexpr std::array kHabits = {&KxFieldHabits::select,   &KxFieldHabits::revert, &KxFieldHabits::numbersOnly,
                                &KxFieldHabits::goOn,     &KxFieldHabits::answer, &KxFieldHabits::editKeys,
                                &KxFieldHabits::tableOnly};

}  // namespace

bool KX_SetFieldHabits(HWND window, const KxFieldHabits& habits) {
    ULONG_PTR value = kGiven;
    for (std::size_t i = 0; i < kHabits.size(); ++i) {
        if (habits.*kHabits[i]) value |= kGiven << (i + 1);
    }
    if (IsWindow(window) && SetPropW(window, kProperty, reinterpret_cast<HANDLE>(value))) return true;
    KX_LOG(L"devgui_habits", L"window %p takes no habits", static_cast<void*>(window));
    return false;
}

KxFieldHabits KX_GetFieldHabits(HWND window) {
    KxFieldHabits habits;
    for (; window; window = GetParent(window)) {
        const auto value = reinterpret_cast<ULONG_PTR>(GetPropW(window, kProperty));
        if (value == 0) continue;
        for (std::size_t i = 0; i < kHabits.size(); ++i)
            habits.*kHabits[i] = (value & (kGiven << (i + 1))) != 0;
        break;
    }
    return habits;
}
