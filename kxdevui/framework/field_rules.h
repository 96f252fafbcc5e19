// The rules of fields that take a number, as functions of values: which characters a number has, what becomes of a text
// when something is typed or pasted into it, whether it may be entered. None of them needs a window.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// All characters that a number may have.
inline constexpr std::wstring_view kNumberParts = L"0123456789+-.eE";

// The character that is written for a typed one, in a field whose values are separated by `separator` (0: one value):
// digits of every script become 0 to 9, a comma and a full-width point become the point unless they separate, the
// typographic minus becomes the hyphen. Empty for what no number has; a list has blanks and its separator as well.
KXDEVUI_API std::optional<wchar_t> NumberCharacter(wchar_t typed, wchar_t separator) noexcept;

// A pasted text as it is written: as above for each character, and trimmed. Empty when one of its characters is in no
// number, and, in a field for one value, when a second point says that points or commas group: of a pasted text
// everything is taken or nothing.
inline constexpr std::size_t kMostPasted = 1000;  // characters
KXDEVUI_API std::optional<std::wstring> NumberPasted(std::wstring_view pasted, wchar_t separator);

// A text, and what is selected in it: from `first` up to `last`, which is the caret's place.
struct FieldText {
    // In characters.
    std::wstring text;
    std::size_t first = 0;
    std::size_t last = 0;
    // The same text with the same selection.
    bool operator==(const FieldText&) const = default;
};

// The text without what spreadsheets and web pages put around a number: blanks of all kinds, line ends, marks of
// direction.
KXDEVUI_API std::wstring_view Trimmed(std::wstring_view text) noexcept;

// The same with `written` in the place of what is selected; unchanged when it would become longer than `most`
// characters. A selection beyond the text ends with it.
KXDEVUI_API FieldText Written(const FieldText& field, std::wstring_view written, std::size_t most);

// What a field for one number allows.
struct Allowed {
    double minimum;             // may be infinite
    double maximum;             // may be infinite
    bool mayBeEmpty = true;     // an empty text says nothing, and is no fault
    const wchar_t* unit = L"";  // as shown behind the bounds
    bool whole = false;         // for AllowedText alone; of an interval with both ends
};

// Whether a text may be entered: nothing but one number in digits, blanks around it apart, that lies in the interval.
KXDEVUI_API bool MayBeEntered(std::wstring_view text, const Allowed& allowed);

// What is allowed, in the user's language: "0 to 100 mW", "0 mW or more", "100 mW or less", "a number", "1 to 9, whole
// numbers".
KXDEVUI_API std::wstring AllowedText(const Allowed& allowed);

// The answer to a text that its field shows no more: "500": 0 to 100 mW. A long text is cut.
KXDEVUI_API std::wstring RefusedText(std::wstring_view text, std::wstring_view why);

}  // namespace kx::ui
