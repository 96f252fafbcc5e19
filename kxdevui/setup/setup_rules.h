// The rules of the setup dialogs, as functions of values: what a typed part finds, what is to be remarked on what
// stands in the positions, what has changed. None of them needs a window.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::setup {

// What can stand in a position: an objective, a filter, a part of a condenser. What a kind has not, or nobody knows, is
// 0 or empty.
struct Entry {
    std::wstring key = {};     // in its database
    std::wstring name = {};    // "Plan Apo 60x/1.40 Oil"
    std::wstring group = {};   // the immersion of an objective, the method of a condenser
    double magnification = 0;  // of an objective
    double NA = 0;
    double WD = 0;                 // micrometres
    std::wstring correction = {};  // for the cover glass
    double parfocal = 0;           // millimetres
    bool known = true;             // whether the database has it

    // Nothing stands there.
    bool IsEmpty() const noexcept { return key.empty() && name.empty(); }
    // Whether it is the same thing: by key, without one by name.
    bool Is(const Entry& other) const noexcept { return key == other.key && (!key.empty() || name == other.name); }
};

// What the user is looking for; what is 0 or empty restricts nothing.
struct Search {
    std::wstring typed = {};   // parts of a name
    double magnification = 0;  // exactly this
    double NA = 0;             // at least this
    std::wstring group = {};   // exactly this
};

// Whether the entry is among what is looked for: every part typed, with blanks between them, is in the name, in upper
// or lower case; a comma between digits is a point ("60x 1,4"), full-width characters are the usual ones.
KXDEVUI_API bool IsFound(const Entry& entry, const Search& search);

// The distinct values of all entries, rising, as choices to search by.
KXDEVUI_API std::vector<double> MagnificationsOf(std::span<const Entry> entries);
KXDEVUI_API std::vector<double> AperturesOf(std::span<const Entry> entries);
// In the order in which they come.
KXDEVUI_API std::vector<std::wstring> GroupsOf(std::span<const Entry> entries);

// What the user is to know of a position. Nothing of it forbids anything.
struct Remark {
    enum Kind {
        Empty,          // nothing stands there
        Unknown,        // the database does not have it, or its name tells nothing
        Duplicate,      // the same stands in the position `other`
        DryAmongWet,    // a dry objective, between two with an immersion
        OtherParfocal,  // another parfocal distance than most of the others have
    };
    Kind kind;
    std::size_t other = 0;  // a position
    // The same remark.
    bool operator==(const Remark&) const = default;
};

// The remarks on one position, in the order above. A turret is a ring: the neighbours of a position are the nearest on
// either side that are not empty, and have to be two. Of as many with one distance as with another, the smaller one is
// that of most.
KXDEVUI_API std::vector<Remark> RemarksOn(std::span<const Entry> positions, std::size_t position);

// The positions whose entry is another one now, of as many as both have.
KXDEVUI_API std::vector<std::size_t> Changed(std::span<const Entry> before, std::span<const Entry> after);

// In the language of the user: a remark; what the database knows, line by line ("Working distance: 130 µm"), without
// what it does not.
KXDEVUI_API std::wstring TextOf(const Remark& remark);
KXDEVUI_API std::wstring DetailsOf(const Entry& entry);

// A filter by its name: its bands, "525/50", are its group.
KXDEVUI_API Entry FilterNamed(const std::wstring& name);

}  // namespace kx::setup
