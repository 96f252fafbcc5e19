#include <kxdevui/framework/field_rules.h>

#include <algorithm>
#include <cmath>

#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

constexpr wchar_t kSource[] = L"devgui_editbox";
constexpr std::wstring_view kAround = L" \t\r\n\u00A0\u2007\u2009\u202F\u3000\u200B\u200E\u200F\u061C\uFEFF";
// Between the values of a list.
constexpr std::wstring_view kBlanks = L" \u00A0\u202F";

// Characters of a refused text that an answer repeats.
constexpr std::size_t kMostQuoted = 30;

bool IsOneOf(wchar_t character, std::wstring_view set) { return set.find(character) != std::wstring_view::npos; }

wchar_t AsciiOf(wchar_t typed) noexcept {
    if (typed < 0x80) return typed;
    if (const int digit = KX_DigitOf(typed); digit >= 0) return static_cast<wchar_t>(L'0' + digit);
    switch (typed) {
    case L'\u2212':
    case L'\uFF0D': return L'-';
    case L'\uFF0B': return L'+';
    case L'\u066B':
    case L'\uFF0C': return L',';
    case L'\uFF0E': return L'.';
    default: return typed;
    }
}

}  // namespace

std::wstring_view Trimmed(std::wstring_view text) noexcept {
    const auto first = text.find_first_not_of(kAround);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kAround) - first + 1);
}

std::optional<wchar_t> NumberCharacter(wchar_t typed, wchar_t separator) noexcept {
    if (separator != 0 && (typed == separator || IsOneOf(typed, kBlanks))) return typed;
    const wchar_t written = AsciiOf(typed);
    if (written == L',' && separator != L',') return L'.';
    return written != 0 && IsOneOf(written, kNumberParts) ? std::optional(written) : std::nullopt;
}

std::optional<std::wstring> NumberPasted(std::wstring_view pasted, wchar_t separator) {
    if (pasted.size() > kMostPasted) return std::nullopt;
    std::wstring written;
    for (const wchar_t character : Trimmed(pasted)) {
        const auto taken = NumberCharacter(character, separator);
        if (!taken) return std::nullopt;
        written += *taken;
    }
    if (separator == 0 && std::count(written.begin(), written.end(), L'.') > 1) return std::nullopt;
    return written;
}

FieldText Written(const FieldText& field, std::wstring_view written, std::size_t most) {
    const std::size_t first = std::min({field.first, field.last, field.text.size()});
    const std::size_t last = std::min(std::max(field.first, field.last), field.text.size());
    if (field.text.size() - (last - first) + written.size() > most) return field;
    FieldText result{field.text, first + written.size(), first + written.size()};
    result.text.replace(first, last - first, written);
    return result;
}

bool MayBeEntered(std::wstring_view text, const Allowed& allowed) {
    if (Trimmed(text).empty()) return allowed.mayBeEmpty;
    double value = 0;
    return KX_StringToDouble(std::wstring(text).c_str(), value) && value >= allowed.minimum && value <= allowed.maximum;
}

std::wstring AllowedText(const Allowed& allowed) {
    const bool from = std::isfinite(allowed.minimum), to = std::isfinite(allowed.maximum);
    const wchar_t* both = allowed.whole ? L"%1 to %2, whole numbers" : L"%1 to %2";
    const wchar_t* text = from && to ? both : from ? L"%1 or more" : to ? L"%2 or less" : L"a number";
    const std::wstring unit = *allowed.unit ? L" " + std::wstring(allowed.unit) : std::wstring();
    // With so many digits that who types them is within, and not so many that a sum shows what it lacks.
    const auto bound = [](double value) { return KX_FormatNumber(L"%.12g", value).str(); };
    std::wstring result = KX_GetTranslation(text, kSource).str();
    const auto fill = [&result](std::wstring_view place, const std::wstring& with) {
        if (const auto at = result.find(place); at != std::wstring::npos) result.replace(at, place.size(), with);
    };
    // The unit stands once, behind the bound that is told last.
    fill(L"%1", bound(allowed.minimum) + (to ? L"" : unit));
    fill(L"%2", bound(allowed.maximum) + unit);
    return result;
}

std::wstring RefusedText(std::wstring_view text, std::wstring_view why) {
    return std::wstring(L"\"").append(text.substr(0, kMostQuoted)).append(L"\": ").append(why);
}

}  // namespace kx::ui
