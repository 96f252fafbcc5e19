// The rules of controls with a list of values (radio group, combo box, list box), as functions of values: how texts are
// compared and read, what is selected, where keys and typed letters lead to. None of them needs a window.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// Characters of a value's text that are compared.
inline constexpr std::size_t kComparedCharacters = 254;
// Those that a number is read from.
inline constexpr std::size_t kNumberText = 99;

// Whether a value's text is the one looked for, upper and lower case and every blank told apart; null is the empty one.
KXDEVUI_API bool IsText(std::wstring_view value, const wchar_t* wanted);
// The first of `count` values whose text, as `textAt` tells it, is the one looked for; -1 when there is none.
template <class TextAt>
int FindText(int count, const wchar_t* wanted, TextAt&& textAt) {
    for (int i = 0; i < count; ++i) {
        if (IsText(textAt(i), wanted)) return i;
    }
    return -1;
}

// Copies a text, cut to `size` - 1 characters; how many were copied. -1 for no buffer and for one of fewer characters
// than the text.
KXDEVUI_API int CopyText(std::wstring_view text, wchar_t* buffer, int size);

// The number that a value's text begins with; 0 when there is none.
KXDEVUI_API double NumberIn(std::wstring_view text);
// The shortest text that reads as this number; empty for what is none.
KXDEVUI_API std::wstring TextOfNumber(double number);

// Calls `insert` for each value, at `start` and the places that follow, or at -1 each time.
template <class Value, class Insert>
void InsertEach(const Value* values, int count, int start, Insert&& insert) {
    for (int i = 0; values && i < count; ++i)
        insert(values[i], start == -1 ? -1 : static_cast<int>(std::min<long long>(INT32_MAX, 0LL + start + i)));
}

// What a user who has chosen nothing is told, translated.
KXDEVUI_API std::wstring NothingChosen();

// One value of a list.
struct ListValue {
    std::wstring text;                   // as it stands in the list
    std::int64_t userData = 0;           // the host's own
    bool enabled = true;                 // whether the user can choose it
    int image = 0;                       // as the bitmap pool numbers them; 0 for none
    std::optional<std::uint32_t> color;  // of a patch before the text
};

// What is chosen: values by their indexes, in order; where text can be typed, also one that is no value's.
struct ListChoice {
    std::vector<int> indexes;  // in order
    std::wstring typed;        // no value's text; empty for none
    // The same choice.
    bool operator==(const ListChoice&) const = default;
};

// The values, what is chosen of them, and, while a host is asked, what was chosen before. Both choices follow their
// values when others come and go.
class KXDEVUI_API ValueList {
public:
    ValueList() = default;
    ValueList(const ValueList&) = delete;
    ValueList& operator=(const ValueList&) = delete;

    // How many there are.
    int Count() const noexcept { return static_cast<int>(m_values.size()); }
    // Whether one with this index is among them.
    bool Has(int index) const noexcept { return index >= 0 && index < Count(); }
    // Of a value that is there.
    ListValue& At(int index) { return *m_values[static_cast<std::size_t>(index)]; }
    const ListValue& At(int index) const { return *m_values[static_cast<std::size_t>(index)]; }
    // Whether the user can choose it.
    bool IsUsable(int index) const { return Has(index) && At(index).enabled; }
    // Whether there is room for a picture before the texts.
    bool HasPictures() const noexcept { return m_hasPictures; }
    void ShowPictures() noexcept { m_hasPictures = true; }

    // At the index, at the end for -1; where it is then, -1 for an index that is neither there nor next.
    int Insert(std::wstring text, int index);
    // False for a value that is not there.
    bool Remove(int index);
    void Clear();
    int Find(const wchar_t* text) const;

    // What is chosen.
    const ListChoice& Chosen() const noexcept { return m_chosen; }
    // Chooses, without a way back.
    void Choose(ListChoice choice) { m_chosen = std::move(choice); }
    // The first that is chosen; -1 for none.
    int First() const noexcept { return m_chosen.indexes.empty() ? -1 : m_chosen.indexes.front(); }
    std::wstring_view ChosenText() const;
    // Chooses, and holds what was chosen before; gives that back.
    void Try(ListChoice choice);
    void TakeBack() { m_chosen = m_before; }

    // Where `by` values on leads to from one (-1: from none): what cannot be used is passed over, or, at an end, the
    // last before it is taken. The value itself when there is nowhere to go.
    int Reach(int from, int by) const;

private:
    // Of thousands, one that comes before all others moves none of them, and those that move up are but pointers.
    std::deque<std::unique_ptr<ListValue>> m_values;
    ListChoice m_chosen, m_before;
    bool m_hasPictures = false;
};

// Letters that are typed one after the other lead to the next value that begins with them; the same one again leads
// on, and one that leads nowhere is forgotten. Upper and lower case count alike, and what cannot be used is passed
// over.
class KXDEVUI_API TypeAhead {
public:
    // So long after the last a letter begins anew, in milliseconds.
    static constexpr std::uint32_t kPause = 1000;

    // The value that the letter leads to from this one; -1 for none.
    int Type(wchar_t letter, std::uint32_t time, const ValueList& list, int from);
    // Whether a blank belongs to what is being typed.
    bool IsTyping(std::uint32_t time) const noexcept { return !m_typed.empty() && time - m_last < kPause; }

private:
    std::wstring m_typed;
    std::uint32_t m_last = 0;
};

}  // namespace kx::ui
