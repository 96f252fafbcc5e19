// The rules of the edit boxes as functions of values: which display formats are taken, how texts become numbers and
// numbers texts, which bound a value violates, how far a step of the spin box goes. None of them needs a window.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// ---- Formats -------------------------------------------------------------------------------------------------------

// How many doubles a printf-style format converts; -1 when it asks for anything else, or for what could not be printed
// safely. Taken are any text, "%%", and conversions a, e, f, g in either case with the flags "-+ #0", a width and a
// precision of up to four digits, and the l that changes nothing. Refused are `*`, other lengths, other conversions, a
// lone "%" and the null pointer.
KXDEVUI_API int CountDoubles(const wchar_t* format) noexcept;

// Whether a format can display a value: it converts exactly one double.
KXDEVUI_API bool IsNumberFormat(const wchar_t* format) noexcept;

// The decimals that a display format always shows: the precision of its f conversion. Empty for the other conversions,
// whose decimals depend on the value, and for what is no display format.
KXDEVUI_API std::optional<int> DecimalsOf(const wchar_t* format) noexcept;

// A value as text, cut to 255 characters. Empty for what is no display format.
using NumberText = std::array<wchar_t, 256>;
KXDEVUI_API NumberText FormatNumber(double value, const wchar_t* format) noexcept;

// ---- Numbers -------------------------------------------------------------------------------------------------------

// The number that a text begins with, as the C runtime converts it, of the first 100 characters. 0 when there is none;
// also for "nan", which says so itself.
inline constexpr std::size_t kNumberCharacters = 100;
KXDEVUI_API double ReadNumber(std::wstring_view text) noexcept;

// Whether that, `read`, is the whole text's number, as far as anybody could tell: it is another one for "12,5", and may
// be for one of many digits. True for what is none.
KXDEVUI_API bool IsReadAs(std::wstring_view text, double read) noexcept;

// Whether a character can stand between values: any that is no part of a number. 0 cannot.
KXDEVUI_API bool IsSeparator(wchar_t character) noexcept;

// The values of a text, in order. Blanks around a value are skipped, and a piece of nothing else is no value, so that a
// separator at the end means nothing. A piece that is no number in digits makes the whole text invalid.
struct ValueList {
    std::vector<double> values;  // none when the text is invalid
    std::wstring wrong;          // the first piece that is no number; empty when the text is valid
};
// Splits a text into that.
KXDEVUI_API ValueList SplitValues(std::wstring_view text, wchar_t separator);

// ---- Bounds --------------------------------------------------------------------------------------------------------

// Which end of [minimum, maximum] a value lies beyond. What is not a number lies below every minimum. The bounds are in
// order and are numbers; either may be infinite.
enum class Bound { None, Minimum, Maximum };
KXDEVUI_API Bound ViolatedBound(double value, double minimum, double maximum) noexcept;

// ---- Spinning ------------------------------------------------------------------------------------------------------

// What one step of a spin box adds:
// - a format without decimals ("%.0f"): 1;
// - a format with decimals ("%.2f"): 1 of the last decimal, or, where the range has more than 10,000 of those, the
//   largest 1, 2 or 5 times a power of ten of which the range has at least 1,000;
// - any other format ("%g"): the largest 1, 2 or 5 times a power of ten of which the range has at least 100, and 1 when
//   the range is empty, infinite, or too small to be divided.
KXDEVUI_API double SpinStep(double minimum, double maximum, const wchar_t* format) noexcept;

// Where `steps` steps up (negative: down) lead from a value: never beyond a bound and, where the next step would be,
// exactly onto it. A step too small for so large a value still goes to the next one that there is. A value that is not
// a number counts as the minimum, or 0 when that is infinite.
KXDEVUI_API double SpinTo(double value, int steps, double step, double minimum, double maximum) noexcept;

// The positions lowest to highest of an up-down stand for values evenly spread from first to last, which are finite:
// the value of a position, and the position nearest to a value. What lies outside counts as the nearer end; what is not
// a number has the lowest position, and so has every value where there is but one.
KXDEVUI_API double SpinValue(int position, double first, double last, int lowest, int highest) noexcept;
KXDEVUI_API int SpinPosition(double value, double first, double last, int lowest, int highest) noexcept;

}  // namespace kx::ui
