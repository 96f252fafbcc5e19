#include <kxdevices/kx_zstackrules.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kx::zstack {

namespace {

void Shift(std::optional<Nm>& position, Nm by) noexcept {
    if (position) *position += by;
}

// The ends, and the home of a relative stack, which its ends hang on.
void ShiftAll(Stack& stack, Nm by) noexcept {
    Shift(stack.top, by);
    Shift(stack.bottom, by);
    if (stack.IsRelative()) Shift(stack.home, by);
}

// The shortest way into the range for what lies between `low` and `high`, which is not longer than the range.
Nm WayInto(const Range& range, Nm low, Nm high) noexcept {
    if (low < range.min) return range.min - low;
    if (high > range.max) return range.max - high;
    return 0;
}

Nm Middle(const Stack& stack) noexcept {
    const Nm sum = *stack.top + *stack.bottom;
    return (sum - (sum % 2 != 0 && sum < 0 ? 1 : 0)) / 2;
}

// Where positions may lie. Distances from an unknown place are limited by the travel alone.
Range Reach(const Stack& stack, const Range& device) noexcept {
    return stack.IsFloating() ? Range{-device.Length(), device.Length()} : device;
}

// An end has moved: the step stays and the count follows; before there is a step, the step follows a known count.
Outcome Recounted(Stack stack) noexcept {
    const auto extent = stack.Extent();
    if (!extent) return stack;
    if (stack.step) {
        const Nm planes = PlanesIn(*extent, *stack.step);
        if (planes > Nm{MaxCount}) return eKxZStack_Planes;
        stack.count = static_cast<unsigned>(planes);
    } else if (stack.count) {
        stack.step = StepFor(*extent, *stack.count);
    }
    return stack;
}

Range Mirrored(const Range& range) noexcept { return {-range.max, -range.min}; }

Stack Mirrored(Stack stack) noexcept {
    std::swap(stack.top, stack.bottom);
    for (auto* position : {&stack.top, &stack.bottom, &stack.home}) {
        if (*position) **position = -**position;
    }
    return stack;
}

// The other end, or the whole of a relative stack, makes room for a top that is refused as it stands.
Outcome WithTopAdjusted(Stack stack, const Range& device, Nm top) noexcept {
    const Range reach = Reach(stack, device);
    const Nm bottom = *stack.bottom;
    if (top > reach.max) {
        // The device's end stops the stack, which keeps the length that was asked for.
        if (stack.IsFloating() || top - bottom > device.Length()) return eKxZStack_OutOfRange;
        const Nm back = reach.max - top;
        stack.top = top;
        ShiftAll(stack, back);
        if (stack.IsRelative() && !device.Holds(*stack.home)) return eKxZStack_OutOfRange;
    } else if (top < bottom) {
        // On the wrong side of home it is a mistake (a negative range), else the stack starts anew at the other place.
        if (stack.IsRelative() && top < stack.home.value_or(0)) return eKxZStack_Reversed;
        stack.bottom = std::max(reach.min, top - stack.Extent().value_or(0));
        stack.top = top;
    } else {
        stack.top = top;
        stack.bottom = std::max(bottom, top - device.Length());
    }
    return Recounted(stack);
}

}  // namespace

std::optional<Nm> FromMicrometres(double micrometres) noexcept {
    // What sums of positions leave of half a nanometre is still half of one.
    const double nanometres = std::round(std::round(micrometres * 1e9) / 1e6);
    // Also false for what is not a number.
    if (!(std::abs(nanometres) <= static_cast<double>(MaxPosition))) return std::nullopt;
    return static_cast<Nm>(nanometres);
}

double ToMicrometres(Nm nanometres) noexcept { return static_cast<double>(nanometres) / 1000.0; }

Nm PlanesIn(Nm extent, Nm step) noexcept { return extent / step + 1; }

std::optional<Nm> StepFor(Nm extent, unsigned count) noexcept {
    if (count < 2) return std::nullopt;
    const Nm step = extent / (Nm{count} - 1);
    // Cut to whole nanometres, a step may have become so short that another plane fits.
    if (step < 1 || PlanesIn(extent, step) != Nm{count}) return std::nullopt;
    return step;
}

std::optional<Nm> Remainder(const Stack& stack) noexcept {
    const auto extent = stack.Extent();
    if (!extent || !stack.count || (!stack.step && *stack.count > 1)) return std::nullopt;
    return *extent - stack.step.value_or(0) * (Nm{*stack.count} - 1);
}

std::optional<Nm> PlaneAt(const Stack& stack, unsigned index, bool fromTop) noexcept {
    const auto remainder = Remainder(stack);
    if (!remainder || index >= *stack.count) return std::nullopt;
    return *stack.bottom + (fromTop ? *remainder : 0) + stack.step.value_or(0) * Nm{index};
}

Outcome WithTop(Stack stack, const Range& device, Nm top, bool adjust) noexcept {
    const Range reach = Reach(stack, device);
    const bool fits = !stack.bottom || (top >= *stack.bottom && top - *stack.bottom <= device.Length());
    if (top < reach.min) return eKxZStack_OutOfRange;
    if (reach.Holds(top) && fits) {
        stack.top = top;
        return Recounted(stack);
    }
    if (!adjust || !stack.bottom)
        return reach.Holds(top) && top < *stack.bottom ? eKxZStack_Reversed : eKxZStack_OutOfRange;
    return WithTopAdjusted(stack, device, top);
}

Outcome WithBottom(Stack stack, const Range& device, Nm bottom, bool adjust) noexcept {
    const auto mirrored = WithTop(Mirrored(stack), Mirrored(device), -bottom, adjust);
    return mirrored ? Outcome(Mirrored(*mirrored)) : mirrored;
}

Outcome WithHome(Stack stack, const Range& device, Nm home) noexcept {
    if (!device.Holds(home)) return eKxZStack_OutOfRange;
    if (stack.IsRelative()) {
        const Nm by = home - stack.home.value_or(0);
        Shift(stack.top, by);
        Shift(stack.bottom, by);
        const Nm low = stack.bottom ? *stack.bottom : stack.top.value_or(home);
        const Nm high = stack.top ? *stack.top : low;
        const Nm back = WayInto(device, low, high);
        Shift(stack.top, back);
        Shift(stack.bottom, back);
    }
    stack.home = home;
    return stack;
}

Stack WithoutHome(Stack stack) noexcept {
    if (stack.IsRelative() && stack.home) ShiftAll(stack, -*stack.home);
    stack.home.reset();
    return stack;
}

Outcome WithStep(Stack stack, Nm step) noexcept {
    if (step < 1) return eKxZStack_Invalid;
    stack.step = step;
    return Recounted(stack);
}

Outcome WithCount(Stack stack, unsigned count) noexcept {
    if (count < 1 || count > MaxCount) return eKxZStack_Planes;
    // A field that is left as it was must not change the step.
    if (stack.count == count) return stack;
    const auto extent = stack.Extent();
    if (extent && count > 1) {
        const auto step = StepFor(*extent, count);
        if (!step) return eKxZStack_Planes;
        stack.step = step;
    }
    stack.count = count;
    return stack;
}

Outcome WithType(Stack stack, int type) noexcept {
    if (type < 0 || type > 7) return eKxZStack_Invalid;
    const bool wasFloating = stack.IsFloating(), wasRelative = stack.IsRelative();
    const bool sameKind = (stack.type & 3) == (type & 3);
    stack.type = type;
    if (sameKind) return stack;
    if (!stack.IsRelative()) {
        // Distances from an unknown place are no positions.
        if (wasFloating) stack.top = stack.bottom = std::nullopt;
        return stack;
    }
    if (!stack.Extent()) {
        // One position without a home is no distance from it.
        if (!wasRelative && !stack.home) stack.top = stack.bottom = std::nullopt;
        return stack;
    }
    const Nm middle = Middle(stack);
    if (wasFloating) {
        if (stack.IsSymmetric()) ShiftAll(stack, -middle);
    } else if (stack.IsSymmetric() || !stack.home || !Range{*stack.bottom, *stack.top}.Holds(*stack.home)) {
        stack.home = middle;
    }
    return stack;
}

Stack OnDevice(Stack stack, const Range& device, Nm offset) noexcept {
    const bool floating = stack.IsFloating();
    if (!floating) {
        ShiftAll(stack, offset);
        if (!stack.IsRelative()) {
            Shift(stack.home, offset);
            if (stack.home && !device.Holds(*stack.home)) stack.home.reset();
        }
    }
    const auto held = stack.IsRelative() ? stack.home : std::nullopt;
    Nm low = MaxPosition * 4, high = -low;
    for (const auto& position : {stack.top, stack.bottom, held}) {
        if (!position) continue;
        low = std::min(low, *position);
        high = std::max(high, *position);
    }
    if (low > high) return stack;
    const Range reach = Reach(stack, device);
    if (high - low > device.Length() || (floating && !(reach.Holds(low) && reach.Holds(high)))) {
        stack.top = stack.bottom = std::nullopt;
        if (held) stack.home.reset();
    } else if (!floating) {
        ShiftAll(stack, WayInto(device, low, high));
    }
    return stack;
}

double NyquistStep(double numericalAperture, double immersionIndex, double wavelength) noexcept {
    const double sine = numericalAperture / immersionIndex;
    const double cosine = std::sqrt(std::max(0.0, 1.0 - sine * sine));
    // 1 - cos a, written so that a small angle keeps its digits.
    return wavelength * (1.0 + cosine) / (2.0 * immersionIndex * sine * sine);
}

}  // namespace kx::zstack
