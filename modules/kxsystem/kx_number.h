// Numbers typed by users, and numbers as texts: the same whatever locale the program has set, as hosts do (setlocale).
#pragma once

#include <kxsystem/kx_string.h>
#include <kxsystem/kxsystem_api.h>

// Converts a whole text to a number, or refuses it and leaves `value` as it is. Taken are: blanks, tabs and no-break
// blanks (also narrow ones) around; a sign; digits with one `.` or `,` as the decimal separator (".5" and "5." too); an
// exponent ("1e2"). Refused are: null, nothing but blanks, a second separator (so a pasted "1,234.5" never
// becomes 1.234 or 1), a blank inside, any other letter or unit, infinities, not-a-number, values too large for a
// double and numbers of more than 1,000 characters. A value too small for a double is 0, and there is no negative zero.
// "1,234" is 1.234: there is no grouping. The result does not depend on the language of the system. May be called from
// any thread. Full-width characters are what KX_HalfWidth makes of them.
KXSYSTEM_API bool KX_StringToDouble(const wchar_t* text, double& value);

// Numbers by a printf-style format, with the point of the C locale: "%0.2f" of 0.5 is "0.50". For conversions of
// numbers only: a text among the arguments may lose its commas. Cut to 1,000 characters; empty for a null format. May
// be called from any thread that does not change the locale meanwhile.
KXSYSTEM_API CKxStringW KX_FormatNumber(const wchar_t* format, ...);

// The number that a text begins with, as wcstod reads it in the C locale: blanks before it are skipped, "2.5x" is 2.5,
// "2,5x" is 2; full-width characters as above. `length` gets how many characters it took; 0 and 0 when there is none,
// or for null.
KXSYSTEM_API double KX_LeadingNumber(const wchar_t* text, std::size_t* length = nullptr);

// What a decimal digit of any script stands for, 0 to 9; -1 for every other character. Superscripts and numbers in
// circles are no digits of a number.
KXSYSTEM_API int KX_DigitOf(wchar_t character) noexcept;

// A text as Japanese keyboards write it, with the full-width forms that a number may have (digits, point, minus and
// plus sign) as the usual ones, and all else as it is, character by character. Null is the empty text.
KXSYSTEM_API CKxStringW KX_HalfWidth(const wchar_t* text);
