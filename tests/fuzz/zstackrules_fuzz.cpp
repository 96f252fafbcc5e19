// A stack's numbers under any row of changes: what is refused changes nothing, and what is taken is a stack that the
// device can perform.
#include "fuzz.h"

#include <kxdevices/kx_zstackrules.h>

#include <optional>

using namespace kx::zstack;

namespace {

// Mostly near one another, now and then anywhere that a position may be.
Nm Position(Input& input) {
    Nm value = input.Take<std::int8_t>();
    if (input.OneIn(8)) {
        for (int i = 0; i < 5; ++i)
            value = value * 256 + input.Byte();
        value %= MaxPosition + 1;
    }
    return value;
}

void CheckEnds(const Stack& stack, const Range& device) {
    const Nm travel = device.max - device.min;
    const bool floating = (stack.type & 2) && !stack.home;
    for (const auto& end : {stack.top, stack.bottom}) {
        if (end) Require(floating ? std::abs(*end) <= travel : *end >= device.min && *end <= device.max);
    }
    if (stack.home) Require(*stack.home >= device.min && *stack.home <= device.max);
    if (stack.top && stack.bottom) Require(*stack.bottom <= *stack.top && *stack.top - *stack.bottom <= travel);
}

void CheckPlanes(const Stack& stack) {
    if (stack.step) Require(*stack.step >= 1);
    if (stack.count) Require(*stack.count >= 1 && *stack.count <= MaxCount);
    const auto remainder = Remainder(stack);
    if (!remainder) return;
    const Nm step = stack.step.value_or(0), last = step * (static_cast<Nm>(*stack.count) - 1);
    Require(*remainder >= 0 && *stack.top - *stack.bottom == last + *remainder);
    // A single plane that was asked for may leave more.
    if (*stack.count > 1) Require(*remainder < step);
    for (const bool fromTop : {false, true}) {
        Require(*PlaneAt(stack, 0, fromTop) >= *stack.bottom);
        Require(*PlaneAt(stack, *stack.count - 1, fromTop) <= *stack.top);
        Require(!PlaneAt(stack, *stack.count, fromTop));
    }
}

Outcome Change(Stack stack, Range& device, Input& input) {
    const int what = input.Byte();
    const bool adjust = (what & 16) != 0;
    switch (what % 10) {
    case 0: return WithTop(stack, device, Position(input), adjust);
    case 1: return WithBottom(stack, device, Position(input), adjust);
    case 2: return WithHome(stack, device, Position(input));
    case 3: return WithoutHome(stack);
    case 4: return WithStep(stack, Position(input));
    case 5: {
        const auto count = static_cast<unsigned>(Position(input));
        const auto changed = WithCount(stack, count);
        if (changed) Require(changed->count == count);
        return changed;
    }
    case 6: return WithType(stack, input.Take<std::int8_t>() % 9);
    case 7: {
        const Nm low = Position(input), length = std::abs(Position(input));
        if (length > MaxPosition - low) return eKxZStack_Invalid;
        device = {low, low + length};
        return OnDevice(stack, device, Position(input));
    }
    case 8: stack.top.reset(); return stack;
    default: stack.bottom.reset(); return stack;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double micrometres;
    if (size >= sizeof micrometres) {
        std::memcpy(&micrometres, data, sizeof micrometres);
        const auto nanometres = FromMicrometres(micrometres);
        if (nanometres) Require(FromMicrometres(ToMicrometres(*nanometres)) == nanometres);
    }
    Input input(data, size);
    Range device;
    Stack stack;
    while (!input.Empty()) {
        const auto changed = Change(stack, device, input);
        if (!changed) continue;
        stack = *changed;
        CheckEnds(stack, device);
        CheckPlanes(stack);
    }
    return 0;
}
