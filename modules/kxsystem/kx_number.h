// Numbers typed by users.
#pragma once

#include <kxsystem/kxsystem_api.h>

// Converts a whole text to a number, or refuses it and leaves `value` as it is. Taken are: blanks, tabs and no-break
// blanks around; a sign; digits with one `.` or `,` as the decimal separator (".5" and "5." too); an exponent ("1e2").
// Refused are: nothing at all, a second separator (so a pasted "1,234.5" never becomes 1.234 or 1), any other letter or
// unit, infinities, not-a-number and values too large for a double. A value too small for a double is 0. "1,234" is
// 1.234: there is no grouping. The result does not depend on the language of the system.
KXSYSTEM_API bool KX_StringToDouble(const wchar_t* text, double& value);
