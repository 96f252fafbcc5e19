#include "mnemonics.h"

#include <algorithm>
#include <map>

namespace kx::host {

namespace {

constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

wchar_t Capital(wchar_t letter) {
    return letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - L'a' + L'A') : letter;
}

bool IsLetter(wchar_t character) {
    return std::wstring_view(kLetters).find(Capital(character)) != std::wstring_view::npos;
}

// The places of a text's letters before `end`, those that begin a word first.
std::vector<std::size_t> PlacesIn(const std::wstring& text, std::size_t end) {
    std::vector<std::size_t> places;
    for (const bool begins : {true, false})
        for (std::size_t i = 0; i < end; ++i)
            if (IsLetter(text[i]) && (i == 0 || text[i - 1] == L' ') == begins) places.push_back(i);
    return places;
}

// Who has which letter. One that finds all of its own taken moves another to a letter that is free, and that one a
// third, as far as it goes (Kuhn's matching): brackets behind a text are for what has no letter at all.
class Letters {
public:
    // `kept` stay with those that have them.
    Letters(const std::vector<std::wstring>& texts, const std::vector<wchar_t>& kept)
        : m_texts(texts), m_fixed(kept.size()) {
        for (std::size_t i = 0; i < m_fixed; ++i)
            m_holders[kept[i]] = i;
        for (std::size_t i = m_fixed; i < texts.size(); ++i) {
            std::wstring tried;
            Give(i, tried);
        }
    }

    // Where the letter of a text stands; npos for none.
    std::size_t PlaceIn(std::size_t text) const {
        for (const std::size_t place : PlacesOf(text))
            if (const auto found = m_holders.find(Capital(m_texts[text][place]));
                found != m_holders.end() && found->second == text)
                return place;
        return std::wstring::npos;
    }
    // A letter that nobody has, which is taken then; 0 when none is left.
    wchar_t TakeFree() {
        for (const wchar_t* letter = kLetters; *letter; ++letter)
            if (m_holders.try_emplace(*letter, m_texts.size()).second) return *letter;
        return 0;
    }

private:
    std::vector<std::size_t> PlacesOf(std::size_t text) const {
        return PlacesIn(m_texts[text], std::min(m_texts[text].find(L'\t'), m_texts[text].size()));
    }

    bool Give(std::size_t text, std::wstring& tried) {
        // What is free comes first: nobody is moved without need.
        for (const bool moves : {false, true}) {
            for (const std::size_t place : PlacesOf(text)) {
                const wchar_t letter = Capital(m_texts[text][place]);
                const auto holder = m_holders.find(letter);
                if (!moves && holder != m_holders.end()) continue;
                if (moves && tried.find(letter) != std::wstring::npos) continue;
                tried += letter;
                if (moves && (holder->second < m_fixed || !Give(holder->second, tried))) continue;
                m_holders[letter] = text;
                return true;
            }
        }
        return false;
    }

    const std::vector<std::wstring>& m_texts;
    std::size_t m_fixed;
    std::map<wchar_t, std::size_t> m_holders;
};

}  // namespace

std::vector<std::wstring> WithMnemonics(std::vector<std::wstring> texts, std::size_t fixed) {
    std::vector<wchar_t> kept;
    for (std::size_t i = 0; i < fixed; ++i)
        kept.push_back(MnemonicOf(texts[i]));
    for (std::size_t i = fixed; i < texts.size(); ++i)
        texts[i] = WithoutMnemonic(texts[i]);
    const std::vector<std::wstring> plain = texts;
    Letters letters(plain, kept);
    for (std::size_t i = fixed; i < texts.size(); ++i) {
        std::wstring& text = texts[i];
        if (const std::size_t at = letters.PlaceIn(i); at != std::wstring::npos) {
            text.insert(at, 1, L'&');
            continue;
        }
        const wchar_t free = letters.TakeFree();
        if (free == 0) continue;
        const std::size_t end = std::min(text.find(L'\t'), text.size()), dots = text.rfind(L"...", end);
        text.insert(dots != std::wstring::npos && dots + 3 == end ? dots : end, std::wstring(L"(&") + free + L")");
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
