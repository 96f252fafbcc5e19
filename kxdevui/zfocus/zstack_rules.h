// What the Z stack panel makes of a typed entry, as functions of values; its dialog's layout likewise.
#pragma once

#include <limits>
#include <optional>

#include <kxdevui/framework/field_rules.h>

namespace kx::zstack {

// The types that hold their ends; whose range, or whose distances from home, can be typed. The bit of value 4 makes no
// difference.
constexpr bool IsHeldByEnds(int type) { return (type & ~4) == 0 || (type & ~4) == 1; }
constexpr bool HasRange(int type) { return (type & ~4) == 2; }
constexpr bool HasDistances(int type) { return (type & ~4) == 3; }

// An entry that asks for nothing: empty, or the placeholder "N/A" to the letter.
bool IsNoEntry(const wchar_t* text);

// A number of planes, read as by the conversion "%d": blanks, a sign, digits; what follows is ignored. Beyond the range
// of int it is the nearest end. Empty when there is no digit.
std::optional<int> ReadCount(const wchar_t* text);

// The position that an entry above or below asks for. For the types with distances the entry is one from home, or from
// 0 without a home, and its sign means nothing; for the others it is the position.
double PositionAbove(int type, std::optional<double> home, double entry);
double PositionBelow(int type, std::optional<double> home, double entry);

// What is known of a record when a field has to say what it allows: its type, its positions, the range of its device.
struct Bounds {
    // In micrometres; the range of no device is infinite.
    int type = 0;
    std::optional<double> top, bottom, home;
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
};

// What the edit with this id allows, as the rules of CKxZStackData have it (docs/zstack.md): a hint for the user, as
// the record is the judge. Beyond the device's range a position above or below asks whether the other end shall move,
// and one beside Top or Bottom moves it.
ui::Allowed AllowedIn(int edit, const Bounds& known);

}  // namespace kx::zstack
