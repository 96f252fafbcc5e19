// What a host was told, as entries in one order, and how they read.
//
//     Recorder record;
//     record.Call("OnCommand", 7, L"text");
//     EXPECT_EQ(record.Take(), "OnCommand(7, \"text\")");
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace kx::test {

// UTF-16 as UTF-8, for reports.
std::string Narrow(std::wstring_view text);

// "WM_COMMAND"; of any other message the number, "0x4E".
std::string NameOf(UINT message);

// "Name(1, 2.5, true, "text")": how a callback is written down.
template <class... Arguments>
std::string CallText(std::string_view name, const Arguments&... arguments) {
    std::ostringstream out;
    out << std::boolalpha << name << '(';
    [[maybe_unused]] const char* separator = "";
    [[maybe_unused]] const auto print = [&]<class T>(const T& value) {
        out << std::exchange(separator, ", ");
        if constexpr (std::is_convertible_v<const T&, std::wstring_view>)
            out << '"' << Narrow(value) << '"';
        else if constexpr (std::is_convertible_v<const T&, std::string_view>)
            out << '"' << std::string_view(value) << '"';
        else if constexpr (std::is_enum_v<T>)
            out << static_cast<long long>(value);
        else
            out << value;
    };
    (print(arguments), ...);
    out << ')';
    return out.str();
}

class Recorder {
public:
    Recorder() = default;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Of WM_COMMAND and the scroll messages both halves, and the id of the window they come from, or what they tell
    // instead (small numbers pass for windows), "7:768#7"; the number of any other message.
    void Message(UINT message, WPARAM wParam, LPARAM lParam);
    void Text(std::string text) { entries_.push_back(std::move(text)); }

    // Writes down a callback: record.Call("OnCommand", id).
    template <class... Arguments>
    void Call(std::string_view name, const Arguments&... arguments) {
        Text(CallText(name, arguments...));
    }

    const std::vector<std::string>& Entries() const { return entries_; }
    void Clear() { entries_.clear(); }
    // All of it in one row, which it empties: "SetTop(70, 0) Changed(3)".
    std::string Take();

private:
    std::vector<std::string> entries_;
};

}  // namespace kx::test
