// The host's own texts.
#pragma once

#include <kxsystem/kx_translation.h>

// A text in the language of the user interface.
inline CKxStringW Text(const wchar_t* english) { return KX_GetTranslation(english, L"host"); }
