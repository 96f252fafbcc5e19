// UTF-8, a character at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kx {

// Takes the character at the front of `text` off it. False, and nothing is taken, if there is none in its shortest
// form.
inline bool TakeUtf8(std::string_view& text, char32_t& character) {
    if (text.empty()) return false;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size()) return false;
    char32_t read = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0u) != 0x80) return false;
        read = read << 6 | (byte(i) & 0x3Fu);
    }
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (read < least[length] || read > 0x10FFFF || (read >= 0xD800 && read < 0xE000)) return false;
    character = read;
    text.remove_prefix(length);
    return true;
}

// Appends the character in the form that the platform's wide texts have.
inline void AppendWide(std::wstring& text, char32_t character) {
    if (sizeof(wchar_t) == 2 && character >= 0x10000) {
        character -= 0x10000;
        text += static_cast<wchar_t>(0xD800 + (character >> 10));
        text += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
    } else {
        text += static_cast<wchar_t>(character);
    }
}

}  // namespace kx
