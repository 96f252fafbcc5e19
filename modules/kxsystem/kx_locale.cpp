#include <kxsystem/kx_locale.h>

#include <windows.h>

namespace {
LANGID s_chosen = 0;
}

unsigned short CKxLocale::GetModuleLangId() { return s_chosen ? s_chosen : GetUserDefaultUILanguage(); }

unsigned short CKxLocale::GetSecondaryLangID() { return MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US); }

void CKxLocale::SetModuleLangId(unsigned short langId) { s_chosen = langId; }
