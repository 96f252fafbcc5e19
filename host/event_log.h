// What the host hears: every callback and message as it gets it, a line each.
#pragma once

#include <cstdio>
#include <deque>
#include <functional>
#include <string>
#include <utility>

class EventLog {
public:
    // The oldest lines go first.
    static constexpr std::size_t MostLines = 20'000;

    EventLog() = default;
    ~EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    // Writes all lines from now on to a file as well, in UTF-8.
    bool OpenFile(const std::wstring& path);
    // Told of each new line; null ends it.
    void SetViewer(std::function<void(const std::wstring& line)> viewer) { m_viewer = std::move(viewer); }

    void Add(const wchar_t* who, const wchar_t* format, ...);
    // A line for the file alone.
    void Write(const std::wstring& line);
    void Clear() { m_lines.clear(); }
    const std::deque<std::wstring>& Lines() const { return m_lines; }

private:
    std::deque<std::wstring> m_lines;
    std::function<void(const std::wstring&)> m_viewer;
    std::FILE* m_file = nullptr;
};

// The host has one log; panels are told no way to it.
EventLog& Log();

// A text as UTF-8, for files.
std::string Utf8(const std::wstring& text);

// Whether a line belongs to what a filter lets through: it contains every word of it, upper or lower case.
bool PassesFilter(const std::wstring& line, const std::wstring& filter);
