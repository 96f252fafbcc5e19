// CKxStringW and CKxStringA: the text types that cross the borders of the modules.
//
// A thin layer over the standard strings: it takes null pointers as empty texts, converts to a plain pointer where one
// is wanted, and formats. Anything else is done on str().
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <string>
#include <utility>

// The string over one type of character.
template <class Char>
class CKxString {
public:
    CKxString() = default;
    // A null pointer gives the empty text.
    CKxString(const Char* text) : m_text(text ? text : &s_zero) {}
    CKxString(std::basic_string<Char> text) noexcept : m_text(std::move(text)) {}

    // The text as a zero-terminated array, valid until the string changes.
    operator const Char*() const noexcept { return m_text.c_str(); }
    const Char* c_str() const noexcept { return m_text.c_str(); }

    // The standard string inside, for everything that this class leaves out.
    std::basic_string<Char>& str() noexcept { return m_text; }
    const std::basic_string<Char>& str() const noexcept { return m_text; }

    // The number of characters; whether there is none; takes all away.
    std::size_t Length() const noexcept { return m_text.size(); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }

    // Appends; `tail` may be this string.
    CKxString& operator+=(const CKxString& tail) {
        m_text += tail.m_text;
        return *this;
    }
    friend CKxString operator+(CKxString head, const CKxString& tail) { return head += tail; }

    friend bool operator==(const CKxString& a, const CKxString& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator==(const CKxString& a, const Char* b) noexcept {
        return a.m_text.compare(b ? b : &s_zero) == 0;
    }
    friend bool operator<(const CKxString& a, const CKxString& b) noexcept { return a.m_text < b.m_text; }

    // Replaces the text by the result of printf-style formatting, cut to maxLength characters (at most MaxFormat). A
    // null format, or one that the C runtime refuses, gives the empty text. The text itself may be among the arguments.
    // In a wide format %ls is a wide text and %hs a narrow one; the runtimes disagree on %s there, so leave it alone.
    static constexpr std::size_t MaxFormat = 1 << 20;
    void Format(std::size_t maxLength, const Char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        FormatV(maxLength, format, arguments);
        va_end(arguments);
    }
    void FormatV(std::size_t maxLength, const Char* format, va_list arguments) {
        std::basic_string<Char> room((maxLength < MaxFormat ? maxLength : MaxFormat) + 1, Char{});
        const int length = format ? Print(room.data(), room.size(), format, arguments) : 0;
        // The C runtimes disagree on what a cut text returns; all of them fill the room they were given.
        room.back() = Char{};
        room.resize(length == 0 ? 0 : std::char_traits<Char>::length(room.c_str()));
        m_text = std::move(room);
    }

private:
    static int Print(char* room, std::size_t size, const char* format, va_list arguments) {
        return std::vsnprintf(room, size, format, arguments);
    }
    static int Print(wchar_t* room, std::size_t size, const wchar_t* format, va_list arguments) {
        return std::vswprintf(room, size, format, arguments);
    }

    static constexpr Char s_zero{};
    std::basic_string<Char> m_text;
};

// Texts for users are wide, those for machines (SVG) narrow.
using CKxStringW = CKxString<wchar_t>;
using CKxStringA = CKxString<char>;
