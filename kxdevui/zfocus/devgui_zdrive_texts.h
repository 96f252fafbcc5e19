// What a Z drive's control says, in the language of the user interface.
#pragma once

#include <kxdevui/zfocus/zdrive_rules.h>
#include <kxsystem/kx_string.h>

namespace kx::zdrive {

// One of the control's texts; numbers as they were typed, with the unit, and in brackets.
CKxStringW Translated(const wchar_t* text);
CKxStringW NumberText(double number);
CKxStringW Micrometres(double number);
CKxStringW InBrackets(const CKxStringW& text);

// Why a wish is not asked for; the bounds are those that the verdict speaks of.
CKxStringW WhyNot(Verdict verdict, double low, double high);
CKxStringW NoteText(const Note& note);

}  // namespace kx::zdrive
