// What a host was told, as entries in one order, and their comparison with what was expected.
//
//     Recorder record;
//     record.Call("OnCommand", 7, L"text");
//     EXPECT_TRUE(record.Matches({Call("OnCommand", 7, L"text"), Msg(0x0500, Any, 3).Optional()}));
//
// A failure shows expected and actual entries side by side.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace kx::test {

// UTF-16 as UTF-8, for reports.
std::string Narrow(std::wstring_view text);

// "WM_COMMAND", or the number of a message that has no well-known name.
std::string NameOf(UINT message);

// Stands for any wParam or lParam.
inline constexpr std::nullopt_t Any = std::nullopt;

// One thing the host was told: a message or, when message is 0, a line of text.
struct Entry {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;  // as it came: what it points to is gone
    std::string text;   // how it reads in a report
};

Entry MakeEntry(UINT message, WPARAM wParam, LPARAM lParam);

// One entry that should come. Made by the functions below.
class Expected {
public:
    Expected(std::string text, std::function<bool(const Entry&)> test)
        : text_(std::move(text)), test_(std::move(test)) {}

    // The same, but it need not come.
    Expected Optional() const;

    bool IsOptional() const { return optional_; }
    bool Fits(const Entry& entry) const { return test_(entry); }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
    std::function<bool(const Entry&)> test_;
    bool optional_ = false;
};

Expected Msg(UINT message, std::optional<WPARAM> wParam = Any, std::optional<LPARAM> lParam = Any);
Expected Command(int id, std::optional<int> code = Any, std::optional<HWND> from = Any);
Expected HScroll(int code, std::optional<int> position = Any, std::optional<HWND> from = Any);
Expected Text(std::string text);

namespace detail {
template <class T>
void Print(std::ostream& out, const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        out << (value ? "true" : "false");
    } else if constexpr (std::is_convertible_v<const T&, std::wstring_view>) {
        out << '"' << Narrow(value) << '"';
    } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
        out << '"' << std::string_view(value) << '"';
    } else if constexpr (std::is_enum_v<T>) {
        out << static_cast<long long>(value);
    } else {
        out << value;
    }
}
}  // namespace detail

// "Name(1, 2.5, true, "text")": how a callback is written down.
template <class... Arguments>
std::string CallText(std::string_view name, const Arguments&... arguments) {
    std::ostringstream out;
    [[maybe_unused]] const char* separator = "";
    out << name << '(';
    ((out << separator, separator = ", ", detail::Print(out, arguments)), ...);
    out << ')';
    return out.str();
}

template <class... Arguments>
Expected Call(std::string_view name, const Arguments&... arguments) {
    return Text(CallText(name, arguments...));
}

// Compares entry by entry. Fails on a missing, an additional, a different entry, or a different order.
testing::AssertionResult Compare(const std::vector<Expected>& expected, const std::vector<Entry>& actual);

class Recorder {
public:
    Recorder() = default;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void Add(Entry entry) { entries_.push_back(std::move(entry)); }
    void Text(std::string text);

    // Writes down a callback: record.Call("OnCommand", id).
    template <class... Arguments>
    void Call(std::string_view name, const Arguments&... arguments) {
        Text(CallText(name, arguments...));
    }

    const std::vector<Entry>& Entries() const { return entries_; }
    void Clear() { entries_.clear(); }
    // All of it in one row, which it empties: "SetTop(70, 0) Changed(3)".
    std::string Take();

    // Compares the whole record and empties it, so that the next step of a test starts anew.
    [[nodiscard]] testing::AssertionResult Matches(const std::vector<Expected>& expected);

private:
    std::vector<Entry> entries_;
};

}  // namespace kx::test
