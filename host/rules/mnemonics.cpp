#include "mnemonics.h"

#include <algorithm>

namespace kx::host {

namespace {

constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

wchar_t Capital(wchar_t letter) {
    return letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - L'a' + L'A') : letter;
}

bool IsLetter(wchar_t character) {
    return std::wstring_view(kLetters).find(Capital(character)) != std::wstring_view::npos;
}

// Where a letter of its own stands, not behind `end`; npos for nowhere.
std::size_t FindFree(const std::wstring& text, std::size_t end, const std::wstring& taken, bool firstOfWord) {
    for (std::size_t i = 0; i < end; ++i) {
        const bool begins = i == 0 || text[i - 1] == L' ';
        if ((begins || !firstOfWord) && IsLetter(text[i]) && taken.find(Capital(text[i])) == std::wstring::npos)
            return i;
    }
    return std::wstring::npos;
}

}  // namespace

std::vector<std::wstring> WithMnemonics(std::vector<std::wstring> texts) {
    std::wstring taken;
    for (std::wstring& text : texts) {
        text = WithoutMnemonic(text);
        const std::size_t end = std::min(text.find(L'\t'), text.size());
        std::size_t at = FindFree(text, end, taken, true);
        if (at == std::wstring::npos) at = FindFree(text, end, taken, false);
        if (at != std::wstring::npos) {
            taken += Capital(text[at]);
            text.insert(at, 1, L'&');
            continue;
        }
        const auto free = std::find_if(std::begin(kLetters), std::end(kLetters) - 1,
                                       [&](wchar_t letter) { return taken.find(letter) == std::wstring::npos; });
        if (free == std::end(kLetters) - 1) continue;
        taken += *free;
        const std::size_t dots = text.rfind(L"...", end);
        text.insert(dots != std::wstring::npos && dots + 3 == end ? dots : end, std::wstring(L"(&") + *free + L")");
    }
    return texts;
}

wchar_t MnemonicOf(const std::wstring& text) {
    for (std::size_t i = 0; (i = text.find(L'&', i)) != std::wstring::npos; i += 2)
        if (i + 1 < text.size() && text[i + 1] != L'&') return Capital(text[i + 1]);
    return 0;
}

std::wstring WithoutMnemonic(const std::wstring& text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == L'&' && i + 1 < text.size() && text[i + 1] == L'&';
        if (isPair) plain += text[i++];
        if (isPair || text[i] != L'&') plain += text[i];
    }
    return plain;
}

}  // namespace kx::host
