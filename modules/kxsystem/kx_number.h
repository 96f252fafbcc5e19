// Numbers typed by users.
#pragma once

#include <kxsystem/kxsystem_api.h>

// Converts a whole text to a number, or refuses it and leaves `value` as it is. Taken are: blanks, tabs and no-break
// blanks (also narrow ones) around; a sign; digits with one `.` or `,` as the decimal separator (".5" and "5." too); an
// exponent ("1e2"). Refused are: null, nothing but blanks, a second separator (so a pasted "1,234.5" never
// becomes 1.234 or 1), a blank inside, any other letter or unit, infinities, not-a-number, values too large for a
// double and numbers of more than 1,000 characters. A value too small for a double is 0, and there is no negative zero.
// "1,234" is 1.234: there is no grouping. The result does not depend on the language of the system. May be called from
// any thread.
KXSYSTEM_API bool KX_StringToDouble(const wchar_t* text, double& value);
