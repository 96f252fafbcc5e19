// The rules of a Z stack's numbers, as functions from one stack to the next. Free of Windows, so that they can be
// tested anywhere. docs/zstack.md has them as a table.
//
// Everything is counted in whole nanometres, so that 0.3 um in steps of 0.1 um are exactly three steps.
#pragma once

#include <cstdint>
#include <optional>

#include <kxdevices/kxdevices_api.h>

// What every accessor of CKxZStackData answers; anything but 0 is a failure. A getter that fails leaves its output
// alone, a setter the record.
enum EKxZStackStatus : int {
    eKxZStack_Ok = 0,
    eKxZStack_OutOfRange = -17,  // the value lies outside the range of the Z device
    eKxZStack_NotSet = -1,       // there is no such value
    eKxZStack_Invalid = -2,      // none for anybody: not a number, farther than a kilometre, a step below a nanometre
    eKxZStack_Reversed = -3,     // an end beyond the other one
    eKxZStack_Planes = -4,       // no such number of planes: none, over a million, or one for which there is no step
    eKxZStack_NoDevice = -5,     // no such Z device, or none chosen; or, where a record asks it, it does not answer
};

namespace kx::zstack {

// A position or a distance in nanometres.
using Nm = std::int64_t;

// Farther than this (one kilometre) no position is taken, device or not: sums of positions never overflow.
inline constexpr Nm MaxPosition = 1'000'000'000'000;

// More planes than this are refused.
inline constexpr unsigned MaxCount = 1'000'000;

// Micrometres to the nearest nanometre, halves away from zero; empty for what is not a number or beyond MaxPosition.
KXDEVICES_API std::optional<Nm> FromMicrometres(double micrometres) noexcept;
// And back.
KXDEVICES_API double ToMicrometres(Nm nanometres) noexcept;

// Where a Z device can go; min is not above max.
struct Range {
    // The ends; at first as far as positions go.
    Nm min = -MaxPosition;
    Nm max = MaxPosition;

    // The travel from end to end.
    Nm Length() const noexcept { return max - min; }
    // Whether the device can go there.
    bool Holds(Nm position) const noexcept { return position >= min && position <= max; }
};

// The numbers of a stack; empty is "not set".
struct Stack {
    // The type of the stack, 0 to 7; its positions; its step, above 0; the number of its planes, 1 to MaxCount.
    int type = 0;
    std::optional<Nm> top;
    std::optional<Nm> bottom;
    std::optional<Nm> home;
    std::optional<Nm> step;
    std::optional<unsigned> count;

    // Around home (2, 3, 6, 7), or held by its ends alone (0, 1, 4, 5).
    bool IsRelative() const noexcept { return (type & 2) != 0; }
    // Of the relative types, the one with equal distances (2, 6).
    bool IsSymmetric() const noexcept { return (type & 3) == 2; }
    // A relative stack without a home: its ends are distances from wherever Z stands when the series starts.
    bool IsFloating() const noexcept { return IsRelative() && !home; }
    // The distance between the ends, empty until both are set.
    std::optional<Nm> Extent() const noexcept { return top && bottom ? std::optional(*top - *bottom) : std::nullopt; }
    // Member by member.
    friend bool operator==(const Stack&, const Stack&) = default;
};

// The planes that fit: floor(extent / step) + 1. The extent is not below 0, the step above 0.
KXDEVICES_API Nm PlanesIn(Nm extent, Nm step) noexcept;
// The largest step, in whole nanometres, with which exactly `count` planes fit; empty when there is none, or the count
// is below 2.
KXDEVICES_API std::optional<Nm> StepFor(Nm extent, unsigned count) noexcept;
// What is left of the extent beyond the last plane; empty until ends and count are set, and the step or a count of 1.
KXDEVICES_API std::optional<Nm> Remainder(const Stack& stack) noexcept;
// The position of plane `index`, counted upwards from 0. The lowest is at the bottom; with `fromTop` the uppermost is
// at the top, and what is left lies below. Empty as for Remainder, and for an index that is not below the count.
KXDEVICES_API std::optional<Nm> PlaneAt(const Stack& stack, unsigned index, bool fromTop) noexcept;

// The stack after a change, or why the change is refused.
struct Outcome {
    // From the one or the other.
    Outcome(const Stack& changed) noexcept : stack(changed) {}
    Outcome(EKxZStackStatus refusal) noexcept : status(refusal) {}

    // Whether there is a stack, and the stack.
    explicit operator bool() const noexcept { return status == eKxZStack_Ok; }
    const Stack& operator*() const noexcept { return stack; }
    const Stack* operator->() const noexcept { return &stack; }

    // 0 with the stack after the change; anything else with none.
    EKxZStackStatus status = eKxZStack_Ok;
    Stack stack;
};

// Changes. `device` is the range of the Z device.
//
// An end: with `adjust` the other end may move. See docs/zstack.md.
KXDEVICES_API Outcome WithTop(Stack stack, const Range& device, Nm top, bool adjust) noexcept;
KXDEVICES_API Outcome WithBottom(Stack stack, const Range& device, Nm bottom, bool adjust) noexcept;
// The home, of a relative stack with its ends.
KXDEVICES_API Outcome WithHome(Stack stack, const Range& device, Nm home) noexcept;
KXDEVICES_API Stack WithoutHome(Stack stack) noexcept;
// The step fits the count, the count fits the step.
KXDEVICES_API Outcome WithStep(Stack stack, Nm step) noexcept;
KXDEVICES_API Outcome WithCount(Stack stack, unsigned count) noexcept;
// The type; the planes stay where they are.
KXDEVICES_API Outcome WithType(Stack stack, int type) noexcept;
// Another device, `offset` farther up in its own numbers at the same place in the sample.
KXDEVICES_API Stack OnDevice(Stack stack, const Range& device, Nm offset) noexcept;

// The Nyquist step along Z in nanometres, wavelength / (2 n (1 - cos a)) with sin a = NA / n; the wavelength in
// nanometres, NA above 0 and not above n.
KXDEVICES_API double NyquistStep(double numericalAperture, double immersionIndex, double wavelength) noexcept;

}  // namespace kx::zstack
