// What a user has asked of the microscope, so that it can be taken back: as values, without devices and windows.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kx::host {

// What a greater value of a thing means for the light that leaves the microscope.
enum class Light {
    None,   // nothing
    More,   // more light: a power, an open shutter, a lamp that is on
    Moves,  // each value sends it elsewhere, where nobody may be waiting for it: the ports of a laser unit
};

// One change of one thing.
struct Change {
    std::wstring what;  // which thing
    double from = 0, to = 0;
    unsigned gesture = 0;  // see Gestures

    bool operator==(const Change&) const = default;
};

// The changes that can be taken back, and those that have been.
class History {
public:
    // The oldest go first.
    static constexpr std::size_t Most = 50;

    // A change that the user has asked for and been granted: those that were taken back are gone with it. One that
    // changes nothing is none; one of the same thing by the same gesture goes on with the last, and a drag that ends
    // where it began leaves nothing.
    void Record(const Change& change);
    // The next one to take back, and to do again; null when there is none.
    const Change* ToUndo() const { return m_done == 0 ? nullptr : &m_changes[m_done - 1]; }
    const Change* ToRedo() const { return m_done == m_changes.size() ? nullptr : &m_changes[m_done]; }
    // It has been.
    void Undone() { --m_done; }
    void Redone() { ++m_done; }
    // It never can be, and is forgotten: its thing stays where it has come to, and the change of it before, or after,
    // begins or ends there.
    void ForgetUndo();
    void ForgetRedo();
    // What can be taken back, the latest first.
    std::vector<Change> Done() const;
    // Where a thing was sent last, if that is to be found here.
    std::optional<double> LastOf(const std::wstring& what) const;

private:
    std::vector<Change> m_changes;
    std::size_t m_done = 0;
};

// Whether a thing may be brought from where a change has left it to where it was, or with from and to exchanged there
// again. `now` is where it stands or is going; empty when nobody knows.
enum class Verdict {
    Ask,         // its device is to be asked
    Raises,      // more light than there is now: never by undo or redo. What nobody knows counts as dark.
    HasChanged,  // it has been moved since by something else, and nobody expects it to jump
};
Verdict Judge(const Change& change, std::optional<double> now, Light light);
// The change that takes this one back.
Change Reversed(const Change& change);

// Counts what a hand does: a button or key that is pressed begins a gesture, which lasts while it is down and repeats
// itself; turns of the wheel are one while they follow each other within half a second.
class Gestures {
public:
    // Which one it is now; tells of a press; tells of a turn of the wheel at that time, in milliseconds.
    unsigned Now() const { return m_number; }
    void Press() { Begin(), m_isWheel = false; }
    void Turn(unsigned time);
    // Tells that this belongs to an act that a control counts, however many presses it takes: the gesture in which that
    // began goes on until the next press. 0 is none.
    void Belongs(unsigned act);

private:
    void Begin() { m_number = ++m_last; }

    unsigned m_number = 0;
    unsigned m_last = 0;
    unsigned m_act = 0;
    unsigned m_ofAct = 0;
    unsigned m_turned = 0;
    bool m_isWheel = false;
};

}  // namespace kx::host
