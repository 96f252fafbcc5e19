// A stack's numbers under any row of changes: what is refused changes nothing, and what is taken is a stack that the
// device can perform.
#include <kxdevices/kx_zstackrules.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>

using namespace kx::zstack;

namespace {

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    bool Empty() const { return m_size == 0; }
    std::uint8_t Next() {
        if (m_size == 0) return 0;
        --m_size;
        return *m_data++;
    }
    // Mostly near one another, now and then anywhere that a position may be.
    Nm Position() {
        Nm value = static_cast<std::int8_t>(Next());
        if (Next() % 8 == 0) {
            for (int i = 0; i < 5; ++i)
                value = value * 256 + Next();
            value %= MaxPosition + 1;
        }
        return value;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

void Require(bool condition) {
    if (!condition) std::abort();
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

std::optional<Stack> Change(Stack stack, Range& device, Bytes& bytes) {
    const std::uint8_t what = bytes.Next();
    const bool adjust = (what & 16) != 0;
    switch (what % 10) {
    case 0: return WithTop(stack, device, bytes.Position(), adjust);
    case 1: return WithBottom(stack, device, bytes.Position(), adjust);
    case 2: return WithHome(stack, device, bytes.Position());
    case 3: return WithoutHome(stack);
    case 4: return WithStep(stack, bytes.Position());
    case 5: {
        const auto count = static_cast<unsigned>(bytes.Position());
        const auto changed = WithCount(stack, count);
        if (changed) Require(changed->count == count);
        return changed;
    }
    case 6: return WithType(stack, static_cast<std::int8_t>(bytes.Next()) % 9);
    case 7: {
        const Nm low = bytes.Position(), length = std::abs(bytes.Position());
        if (length > MaxPosition - low) return std::nullopt;
        device = {low, low + length};
        return OnDevice(stack, device, bytes.Position());
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
    Bytes bytes(data, size);
    Range device;
    Stack stack;
    while (!bytes.Empty()) {
        const auto changed = Change(stack, device, bytes);
        if (!changed) continue;
        stack = *changed;
        CheckEnds(stack, device);
        CheckPlanes(stack);
    }
    return 0;
}
