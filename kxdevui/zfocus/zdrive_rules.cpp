#include <kxdevui/zfocus/zdrive_rules.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <kxsystem/kx_number.h>

namespace kx::zdrive {

namespace {

constexpr double kFarthest = 1e9, kNanometre = 0.001, kHalfNanometre = kNanometre / 2;
// Within that a drive is said to stand at a limit: its encoder is never still.
constexpr double kAt = 0.05;

double ToNanometres(double position) noexcept { return std::round(position * 1000) / 1000; }

bool IsAt(double a, double b) noexcept { return std::abs(a - b) < kAt; }

bool HasRange(const Drive& drive) noexcept {
    return Cleaned(drive.minimum) && Cleaned(drive.maximum) && *drive.minimum < *drive.maximum;
}

bool Cross(const Drive& drive) noexcept { return drive.lower && drive.upper && *drive.lower > *drive.upper; }

// The nearer one of limit and range, and which it is.
struct Bound {
    double at;
    Verdict what;
};
Bound LowestOf(const Drive& drive) noexcept {
    if (drive.lower && *drive.lower >= *drive.minimum) return {*drive.lower, Verdict::BelowLimit};
    return {*drive.minimum, Verdict::BeyondRange};
}
Bound HighestOf(const Drive& drive) noexcept {
    if (drive.upper && *drive.upper <= *drive.maximum) return {*drive.upper, Verdict::AboveLimit};
    return {*drive.maximum, Verdict::BeyondRange};
}

Move Judged(const Drive& drive, Position to) noexcept { return {to, Judge(drive, to), Verdict::Goes}; }

}  // namespace

Position Cleaned(Position position) noexcept {
    return position && std::abs(*position) <= kFarthest ? position : Position();
}

Verdict Judge(const Drive& drive, Position to) noexcept {
    if (!Cleaned(to)) return Verdict::NoPosition;
    if (!HasRange(drive)) return Verdict::NoRange;
    if (Cross(drive)) return Verdict::LimitsCross;
    if (drive.lower && *to < *drive.lower) return Verdict::BelowLimit;
    if (drive.upper && *to > *drive.upper) return Verdict::AboveLimit;
    return *to < *drive.minimum || *to > *drive.maximum ? Verdict::BeyondRange : Verdict::Goes;
}

Move StepFrom(const Drive& drive, double by) noexcept {
    const Position from = drive.target ? drive.target : drive.position;
    if (!Cleaned(from) || !IsStep(std::abs(by))) return {{}, Verdict::NoPosition, Verdict::Goes};
    if (!HasRange(drive) || Cross(drive)) return Judged(drive, from);
    const double to = ToNanometres(*from + by);
    const Bound end = by > 0 ? HighestOf(drive) : LowestOf(drive);
    const double left = by > 0 ? end.at - *from : *from - end.at;
    if (left < kHalfNanometre) return {{}, end.what, end.what};
    if (std::abs(by) <= left) return Judged(drive, to);
    return {end.at, Judge(drive, end.at), end.what};
}

Move EscapeOf(const Drive& drive) noexcept {
    if (!HasRange(drive)) return {{}, Verdict::NoRange, Verdict::Goes};
    return Judged(drive, drive.inverted ? HighestOf(drive).at : LowestOf(drive).at);
}

Retreat AfterEscape(const Retreat& before, Position stood) noexcept {
    return before.away ? before : Retreat{Cleaned(stood), true, false};
}

Retreat AfterReturn(const Retreat& before) noexcept { return {before.from, false, true}; }

// Having come back, the place is left for good.
Retreat AfterMove(const Retreat& before) noexcept { return {before.back ? Position() : before.from, false, false}; }

Position ReturnPlace(const Drive& drive) noexcept {
    const Position at = Cleaned(drive.position);
    if (!at || !HasRange(drive)) return at;
    const double low = LowestOf(drive).at, high = HighestOf(drive).at;
    return low <= high ? std::clamp(ToNanometres(*at), low, high) : *at;
}

Verdict JudgeLimit(const Drive& drive, bool upper, Position limit) noexcept {
    if (!limit) return Verdict::Goes;
    if (!Cleaned(limit)) return Verdict::NoPosition;
    if (!HasRange(drive)) return Verdict::NoRange;
    if (*limit < *drive.minimum || *limit > *drive.maximum) return Verdict::BeyondRange;
    const bool crosses = upper ? drive.lower && *limit < *drive.lower : drive.upper && *limit > *drive.upper;
    return crosses ? Verdict::LimitsCross : Verdict::Goes;
}

bool IsStep(double step) noexcept { return step >= kNanometre && step <= kFarthest; }

int NotchesOf(int delta, int& rest) noexcept {
    constexpr int kNotch = 120;
    if ((delta > 0) != (rest > 0)) rest = 0;
    const int turned = rest + delta;
    rest = turned % kNotch;
    return turned / kNotch;
}

// ---- What is said --------------------------------------------------------------------------------------------------

namespace {

// Of the considered position first, then of how things are.
void NoteWish(std::vector<Note>& notes, const Drive& drive, double to, Position low, Position high) {
    const Verdict verdict = Judge(drive, to);
    if (verdict == Verdict::BeyondRange)
        notes.push_back({NoteKind::Refusal, verdict, *drive.minimum, *drive.maximum});
    else if (verdict == Verdict::BelowLimit || verdict == Verdict::AboveLimit)
        notes.push_back({NoteKind::Refusal, verdict, drive.lower.value_or(to), drive.upper.value_or(to)});
    else if (verdict == Verdict::Goes && low && high && (to < *low || to > *high))
        notes.push_back({NoteKind::LeavesStack, verdict, *low, *high});
}

void NotePlace(std::vector<Note>& notes, const Drive& drive) {
    const Position at = Cleaned(drive.position);
    if (!at) return;
    const Bound low = LowestOf(drive), high = HighestOf(drive);
    const auto note = [&](NoteKind kind) { notes.push_back({kind, Verdict::Goes, low.at, high.at}); };
    const bool beyond = *at < *drive.minimum - kAt || *at > *drive.maximum + kAt;
    if (beyond) return note(NoteKind::OutsideRange);
    if (IsAt(*at, low.at))
        note(low.what == Verdict::BelowLimit ? NoteKind::AtLowerLimit : NoteKind::AtRangeEnd);
    else if (IsAt(*at, high.at))
        note(high.what == Verdict::AboveLimit ? NoteKind::AtUpperLimit : NoteKind::AtRangeEnd);
    else if (*at < low.at || *at > high.at)
        note(NoteKind::OutsideLimits);
}

}  // namespace

std::vector<Note> NotesOf(const Drive& drive, const Retreat& escape, Position considered) {
    std::vector<Note> notes;
    Position low = Cleaned(drive.stackBottom), high = Cleaned(drive.stackTop);
    if (low && high && *low > *high) std::swap(low, high);
    const bool hasRange = HasRange(drive), cross = Cross(drive);
    if (!hasRange) notes.push_back({NoteKind::NoRange});
    if (cross) notes.push_back({NoteKind::LimitsCross, Verdict::Goes, *drive.lower, *drive.upper});
    if (hasRange && !cross) {
        if (Cleaned(considered)) NoteWish(notes, drive, *considered, low, high);
        NotePlace(notes, drive);
        const bool reaches = low && high && (*low < LowestOf(drive).at || *high > HighestOf(drive).at);
        if (reaches) notes.push_back({NoteKind::StackBeyond, Verdict::Goes, *low, *high});
    }
    if (escape.away && escape.from) notes.push_back({NoteKind::Escaped, Verdict::Goes, *escape.from, 0});
    if (const Position off = drive.piezo ? OffMiddle(*drive.piezo) : Position())
        notes.push_back({*off == 0 ? NoteKind::PiezoInMiddle : NoteKind::PiezoOffMiddle, Verdict::Goes, *off, 0});
    return notes;
}

Position OffMiddle(const Piezo& piezo) noexcept {
    if (!Cleaned(piezo.position) || !Cleaned(piezo.minimum) || !Cleaned(piezo.maximum)) return {};
    if (!(piezo.minimum < piezo.maximum)) return {};
    // A piezo is never still to the nanometre.
    constexpr double kStill = 0.001;
    const double way = piezo.maximum - piezo.minimum, off = piezo.position - (piezo.minimum + way / 2);
    return std::abs(off) < way * kStill ? 0 : off;
}

CKxStringW PositionText(Position position, double fineStep) {
    if (!Cleaned(position)) return L"\u2013";
    const bool fine = IsStep(fineStep) && std::abs(fineStep * 100 - std::round(fineStep * 100)) > 0.01;
    // There is no negative zero.
    const double digits = fine ? 1000 : 100, shown = std::round(*position * digits) / digits + 0.0;
    return KX_FormatNumber(fine ? L"%.3f" : L"%.2f", shown);
}

// ---- The trace -----------------------------------------------------------------------------------------------------

bool Trace::Add(unsigned now, double position) noexcept {
    if (!Cleaned(position)) return false;
    if (m_count > 0) {
        // A clock that has been set back counts as one that stands.
        const unsigned passed = static_cast<int>(now - m_begun) > 0 ? (now - m_begun) / kSlotTime : 0;
        if (passed == 0) {
            Kept& newest = Ring(m_count - 1);
            const double low = std::min(newest.low, position), high = std::max(newest.high, position);
            const bool other = low != newest.low || high != newest.high || position != newest.last;
            newest.low = low;
            newest.high = high;
            newest.last = position;
            return other;
        }
        m_slot += passed;
        m_begun += passed * kSlotTime;
        while (m_count > 0 && m_slot - Ring(0).slot >= kSlots) {
            m_first = (m_first + 1) % kSlots;
            --m_count;
        }
    } else {
        m_begun = now;
        m_slot = 0;
    }
    Ring(m_count++) = {m_slot, position, position, position};
    return true;
}

bool Trace::Clear() noexcept {
    m_first = 0;
    return std::exchange(m_count, 0) > 0;
}

Trace::Slot Trace::At(std::size_t index) const noexcept {
    const Kept& kept = Ring(index);
    return {m_slot - kept.slot, kept.low, kept.high};
}

double Trace::Drift() const noexcept { return m_count < 2 ? 0 : Ring(m_count - 1).last - Ring(0).last; }

Span SpanOf(const Trace& trace) noexcept {
    if (trace.Count() == 0) return {};
    Span span{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (std::size_t i = 0; i < trace.Count(); ++i) {
        span.low = std::min(span.low, trace.At(i).low);
        span.high = std::max(span.high, trace.At(i).high);
    }
    constexpr double kLeast = 0.2;
    const double missing = (kLeast - (span.high - span.low)) / 2;
    return missing > 0 ? Span{span.low - missing, span.high + missing} : span;
}

}  // namespace kx::zdrive
