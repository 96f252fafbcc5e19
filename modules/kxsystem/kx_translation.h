// Translations: every text that a user sees passes through KX_GetTranslation.
//
// The texts live in gettext catalogues (modules/kxsystem/po, one file a language, the source key as msgctxt), which the
// build puts into the module. A host may add catalogues of its own. A text without a translation is shown in English.
#pragma once

#include <kxsystem/kx_string.h>
#include <kxsystem/kxsystem_api.h>

// The text in the current language (CKxLocale::GetModuleLangId, of which only the primary part counts). `source` is the
// key of the place that shows it, the name of a source file such as L"devgui_base". English (unless the host has added
// a catalogue for it), an unknown language, an unknown key and an unknown text all give `text` as it is; null gives the
// empty text.
KXSYSTEM_API CKxStringW KX_GetTranslation(const wchar_t* text, const wchar_t* source);

// The same with a remark for translators between the two; the remark is never shown and takes no part in the search.
KXSYSTEM_API CKxStringW KX_GetTranslation(const wchar_t* text, const wchar_t* remark, const wchar_t* source);

// The form of a text for a number of things: singular("%u plane"), plural("%u planes"). The catalogue's header says
// which of its forms it is ("Plural-Forms: nplurals=2; plural=n != 1;"); without a translation it is `singular` for 1
// and `plural` for all others. The caller puts the number into it. Null gives the empty text.
KXSYSTEM_API CKxStringW KX_GetTranslation(const wchar_t* singular, const wchar_t* plural, unsigned long long number,
                                          const wchar_t* source);

// Adds a catalogue: the text of a .po file, `size` bytes of UTF-8 or of a charset that its header names and the
// platform converts (ISO-8859-x, the code pages of Windows, KOI8, EUC-JP without characters of three bytes, Shift_JIS,
// EUC-KR, GB, Big5), for a primary language (LANG_GERMAN, ...; of a LANGID only that part counts, and LANG_NEUTRAL is
// refused). Its entries go before those already there. The catalogue is taken whole or not at all: one that is cut off,
// has a wrong escape, is not in the charset that it names, is not a .po file, has no entry or is larger than 16 MB is
// refused, with a line in the log that names the line of the catalogue. Fuzzy, untranslated and obsolete entries are
// passed over, and plural ones that have not as many forms as the header says. Of two others for one (source, text) the
// first holds; the second is logged. A placeholder lost in translation is not noticed here but when the text is
// formatted: check catalogues with `msgfmt --check` first.
KXSYSTEM_API bool KX_AddCatalogue(unsigned short primaryLanguage, const char* po, std::size_t size);
