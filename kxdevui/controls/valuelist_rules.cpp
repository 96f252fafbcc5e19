#include <kxdevui/controls/valuelist_rules.h>

#include <windows.h>

#include <array>
#include <charconv>
#include <cmath>

#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

namespace kx::ui {

namespace {

bool BeginsWith(std::wstring_view text, std::wstring_view beginning) {
    if (text.size() < beginning.size()) return false;
    const int length = static_cast<int>(beginning.size());
    return CompareStringOrdinal(text.data(), length, beginning.data(), length, TRUE) == CSTR_EQUAL;
}

void MakeRoom(ListChoice& choice, int at) {
    for (int& index : choice.indexes)
        if (index >= at) ++index;
}

void CloseUp(ListChoice& choice, int at) {
    std::erase(choice.indexes, at);
    for (int& index : choice.indexes)
        if (index > at) --index;
}

}  // namespace

bool IsText(std::wstring_view value, const wchar_t* wanted) {
    return value.substr(0, kComparedCharacters) == (wanted ? wanted : L"");
}

int CopyText(std::wstring_view text, wchar_t* buffer, int size) {
    if (!buffer || size < 1 || static_cast<std::size_t>(size) < text.size()) return -1;
    const std::size_t copied = text.copy(buffer, static_cast<std::size_t>(size) - 1);
    buffer[copied] = L'\0';
    return static_cast<int>(copied);
}

double NumberIn(std::wstring_view text) { return KX_LeadingNumber(std::wstring(text.substr(0, kNumberText)).c_str()); }

std::wstring TextOfNumber(double number) {
    if (!std::isfinite(number)) return {};
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

std::wstring NothingChosen() { return KX_GetTranslation(L"You have to choose value.", L"devgui_radio").str(); }

int ValueList::Insert(std::wstring text, int index) {
    if (index == -1) index = Count();
    if (index < 0 || index > Count()) return -1;
    auto value = std::make_unique<ListValue>();
    value->text = std::move(text);
    m_values.insert(m_values.begin() + index, std::move(value));
    MakeRoom(m_chosen, index);
    MakeRoom(m_before, index);
    return index;
}

bool ValueList::Remove(int index) {
    if (!Has(index)) return false;
    m_values.erase(m_values.begin() + index);
    CloseUp(m_chosen, index);
    CloseUp(m_before, index);
    return true;
}

void ValueList::Clear() {
    m_values.clear();
    m_chosen.indexes.clear();
    m_before.indexes.clear();
    m_hasPictures = false;
}

int ValueList::Find(const wchar_t* text) const {
    return FindText(Count(), text, [this](int i) { return std::wstring_view(At(i).text); });
}

std::wstring_view ValueList::ChosenText() const {
    return First() >= 0 ? std::wstring_view(At(First()).text) : std::wstring_view(m_chosen.typed);
}

void ValueList::Try(ListChoice choice) { m_before = std::exchange(m_chosen, std::move(choice)); }

int ValueList::Reach(int from, int by) const {
    if (Count() == 0 || by == 0) return from;
    const int step = by > 0 || from < 0 ? 1 : -1;
    const long long wanted = std::clamp(0LL + from + by, 0LL, Count() - 1LL);
    if (wanted == from) return from;
    for (int i = static_cast<int>(wanted); Has(i); i += step)
        if (IsUsable(i)) return i;
    for (int i = static_cast<int>(wanted) - step; Has(i) && i != from; i -= step)
        if (IsUsable(i)) return i;
    return from;
}

int TypeAhead::Type(wchar_t letter, std::uint32_t time, const ValueList& list, int from) {
    if (!IsTyping(time)) m_typed.clear();
    m_last = time;
    m_typed += letter;
    const bool again = m_typed.find_first_not_of(m_typed.front()) == std::wstring::npos;
    const std::wstring_view looked = again ? std::wstring_view(m_typed).substr(0, 1) : m_typed;
    // One letter leads on, several may be those that the value here begins with.
    const int count = list.Count(), first = std::max(from, -1) + (again ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        const int at = (std::max(first, 0) + i) % count;
        if (list.IsUsable(at) && BeginsWith(list.At(at).text, looked)) return at;
    }
    m_typed.pop_back();
    return -1;
}

}  // namespace kx::ui
