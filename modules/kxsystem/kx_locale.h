// The user-interface language.
#pragma once

#include <kxsystem/kxsystem_api.h>

// The language of the process; static functions only.
class KXSYSTEM_API CKxLocale {
public:
    // The current user-interface language, a LANGID. The system's until SetModuleLangId is called.
    static unsigned short GetModuleLangId();

    // The language that stands in where something is missing in the current one: English (United States).
    static unsigned short GetSecondaryLangID();

    // Chooses the language. Texts fetched and dialogs made from now on use it; what is on screen stays as it is. 0 goes
    // back to the system's language.
    static void SetModuleLangId(unsigned short langId);
};
