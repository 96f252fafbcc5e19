// What the Z stack panel makes of a typed entry, as functions of values; its dialog's layout likewise.
#pragma once

#include <optional>

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

}  // namespace kx::zstack
