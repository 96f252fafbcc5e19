// The one way by which the host's panels ask for something: what is granted is kept, can be taken back, and done again.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "rules/history.h"

// A thing on the microscope that the user can ask to be another way; its value is a number, whatever it means.
struct Wish {
    std::wstring what;                            // which thing; no other has this name
    std::wstring name;                            // what it is called, in English
    std::function<std::optional<double>()> read;  // where it is or is going; empty when nobody knows
    std::function<bool(double)> ask;              // false: the device refuses
    std::function<std::wstring(double)> text;     // a value in words
    // Both values of a change in words, where they say more together.
    std::function<std::wstring(double, double)> change = {};
    kx::host::Light light = kx::host::Light::None;
    std::wstring panel;  // whose switch makes the host refuse; empty: only that of all panels does
};

class Requests {
public:
    // Whether the host refuses it, whatever its device says.
    static bool Refuses(const Wish& wish);
    // The user asks for a value: whether it was granted. What the wish refers to has to live until Clear.
    bool Ask(const Wish& wish, double value);

    // For the message loop: tells what the user's hands do.
    void Note(const MSG& message);
    // What is asked for next is a step of its own: a modal dialog has hands that nobody tells of.
    void BeginStep() { m_gestures.Press(); }

    // Which gesture they are at (rules/history.h).
    unsigned Gesture() const { return m_gestures.Now(); }

    // Takes the last change back, or does it again, by asking for it as the user does: it may be refused, and then
    // stays where it is; what would raise the light, and what has changed since, is left and forgotten. What came of
    // it, for the user; whether it was done.
    struct Outcome {
        std::wstring told;
        bool done;
    };
    Outcome Undo();
    Outcome Redo();

    // "Objective 20x -> 60x": the next one, empty when there is none; all that can be taken back, the latest first.
    std::wstring NameToUndo() const { return NameOf(m_history.ToUndo()); }
    std::wstring NameToRedo() const { return NameOf(m_history.ToRedo()); }
    std::vector<std::wstring> Names() const;

    // Forgets all.
    void Clear() { *this = {}; }

private:
    std::wstring NameOf(const kx::host::Change* change) const;
    // Whether a change was made; one that never can be is to be forgotten.
    enum class Replayed { Done, Refused, Impossible };
    Replayed Replay(const kx::host::Change& change, const std::wstring& name, std::wstring& told);

    kx::host::History m_history;
    kx::host::Gestures m_gestures;
    std::map<std::wstring, Wish> m_wishes;
    bool m_replays = false;
};

// The host has one; panels are told no way to it.
Requests& TheRequests();
