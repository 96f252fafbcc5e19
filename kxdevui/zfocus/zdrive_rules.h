// The rules of a Z drive as functions of values: where it may be sent, where steps and an escape lead, what is to be
// said before a move, what the trace of the last minute keeps. Nothing here knows of windows or of the clock; positions
// are in micrometres.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::zdrive {

// In micrometres; empty where it is not known.
using Position = std::optional<double>;

// The same, or none for what is no number or farther from 0 than a kilometre.
KXDEVUI_API Position Cleaned(Position position) noexcept;

// Where a piezo on the drive stands, and the ends of its own way.
struct Piezo {
    // In micrometres, none of which are the drive's.
    double position = 0;
    double minimum = 0;
    double maximum = 0;
    // All of it the same.
    bool operator==(const Piezo&) const = default;
};

// All that is known of a drive; what is not, is empty.
struct Drive {
    // Where it can go, and where the user lets it go.
    Position minimum = {};
    Position maximum = {};
    Position lower = {};
    Position upper = {};
    // A rising Z takes the objective away from the sample.
    bool inverted = false;
    // Where it stands, is going or stands after its last move, has its home.
    Position position = {};
    Position target = {};
    Position home = {};
    // The ends of the Z stack, in either order.
    Position stackTop = {};
    Position stackBottom = {};
    // The piezo that stands on it.
    std::optional<Piezo> piezo = {};
    // All of it the same.
    bool operator==(const Drive&) const = default;
};

// What becomes of a wish.
enum class Verdict {
    Goes,         // it may be asked for
    NoPosition,   // what is wanted, or where it stands, is no number
    NoRange,      // nobody knows where the drive can go
    LimitsCross,  // no position is within both
    BelowLimit,
    AboveLimit,
    BeyondRange,
};

// Whether the drive may be sent there.
KXDEVUI_API Verdict Judge(const Drive& drive, Position to) noexcept;

// Where a wish leads.
struct Move {
    // Empty where it leads nowhere; whether it may be asked for; what has shortened a step, Goes if nothing has.
    Position to = {};
    Verdict verdict = Verdict::Goes;
    Verdict end = Verdict::Goes;
    // All of it the same.
    bool operator==(const Move&) const = default;
};
// From where the drive is going, by so much up (positive) or down: a step that would end beyond a limit, or the range,
// ends there. One that begins there or farther out goes nowhere. To whole nanometres, but for an end.
KXDEVUI_API Move StepFrom(const Drive& drive, double by) noexcept;
// To the end at which the objective is farthest from the sample: the lower one, of an inverted drive the upper.
KXDEVUI_API Move EscapeOf(const Drive& drive) noexcept;

// What a control remembers of an escape.
struct Retreat {
    // From where it began; whether the drive has been sent away, or back, and nowhere else since.
    Position from = {};
    bool away = false;
    bool back = false;
    // All of it the same.
    bool operator==(const Retreat&) const = default;
};
// The same after an escape was agreed to: a second one, before anything else, began where the first did. After a
// return, and after any other move.
KXDEVUI_API Retreat AfterEscape(const Retreat& before, Position stood) noexcept;
KXDEVUI_API Retreat AfterReturn(const Retreat& before) noexcept;
KXDEVUI_API Retreat AfterMove(const Retreat& before) noexcept;

// Where a return from here leads: one that has crept beyond a limit comes back to the limit. To whole nanometres.
KXDEVUI_API Position ReturnPlace(const Drive& drive) noexcept;

// Whether a limit may be there; empty lifts it, which may always be. One beyond the other is LimitsCross.
KXDEVUI_API Verdict JudgeLimit(const Drive& drive, bool upper, Position limit) noexcept;

// Whether a step has a size that can be gone by.
KXDEVUI_API bool IsStep(double step) noexcept;

// The whole notches of a turn of the wheel, of which 120 are one; what is left over is kept for the next turn, but for
// one the other way round.
KXDEVUI_API int NotchesOf(int delta, int& rest) noexcept;

// What is to be said of a drive before it moves.
enum class NoteKind {
    Refusal,        // what is considered cannot be: `verdict`
    LeavesStack,    // what is considered lies outside of the stack
    LimitsCross,    // as they are now
    NoRange,        // nobody knows where it can go
    OutsideLimits,  // it stands there
    OutsideRange,   // the same
    AtLowerLimit,
    AtUpperLimit,
    AtRangeEnd,
    StackBeyond,  // the stack reaches beyond a limit or the range
    Escaped,      // `from` says from where
    PiezoInMiddle,
    PiezoOffMiddle,  // by `from`, up as positive
};
// One such thing.
struct Note {
    // What it is; of a refusal why; the bounds that are spoken of, or what the kind says.
    NoteKind kind;
    Verdict verdict = Verdict::Goes;
    double from = 0;
    double to = 0;
    // All of it the same.
    bool operator==(const Note&) const = default;
};
// What is wrong comes first; from and to are the bounds that are spoken of. `considered` is a position that the user is
// about to ask for.
KXDEVUI_API std::vector<Note> NotesOf(const Drive& drive, const Retreat& escape, Position considered);

// By how much a piezo is off the middle of its own way, which is none of the drive's; empty for what has no way.
KXDEVUI_API Position OffMiddle(const Piezo& piezo) noexcept;

// "4012.35", or with a third decimal where steps are as fine; a dash for none.
KXDEVUI_API CKxStringW PositionText(Position position, double fineStep);

// The last minute of a drive that stands, in slots of half a second: however many samples come, and for however long,
// it does not grow.
class KXDEVUI_API Trace {
public:
    // How long a slot and all of them are, in milliseconds, and how many there are.
    static constexpr unsigned kSlotTime = 500;
    static constexpr unsigned kWindow = 60000;
    static constexpr std::size_t kSlots = kWindow / kSlotTime;

    // One of them.
    struct Slot {
        // In slots, of which the newest has 0; its lowest and its highest sample.
        unsigned age;
        double low;
        double high;
    };

    // A sample, at a time of the time counter, which wraps around. True when the picture is another one.
    bool Add(unsigned now, double position) noexcept;
    // It has been sent elsewhere: all begins anew. True when there was something.
    bool Clear() noexcept;

    // The oldest first.
    std::size_t Count() const noexcept { return m_count; }
    Slot At(std::size_t index) const noexcept;
    // How far it has gone since the first sample that is kept; 0 for fewer than two.
    double Drift() const noexcept;

private:
    struct Kept {
        unsigned slot = 0;  // half seconds since the first sample
        double low = 0;
        double high = 0;
        double last = 0;
    };
    Kept& Ring(std::size_t index) noexcept { return m_ring[(m_first + index) % kSlots]; }
    const Kept& Ring(std::size_t index) const noexcept { return m_ring[(m_first + index) % kSlots]; }

    std::array<Kept, kSlots> m_ring{};
    std::size_t m_first = 0;
    std::size_t m_count = 0;
    unsigned m_slot = 0;   // the number of the newest
    unsigned m_begun = 0;  // when that began
};

// The bounds of a trace's picture.
struct Span {
    // Never less than 0.2 um apart, so that noise of nanometres is no mountain.
    double low = 0;
    double high = 0;
};
// Of this trace; nothing of an empty one.
KXDEVUI_API Span SpanOf(const Trace& trace) noexcept;

}  // namespace kx::zdrive
