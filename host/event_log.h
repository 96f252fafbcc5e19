// The log pane: every callback and message as the host gets it, a line each.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

class EventLog {
public:
    EventLog() = default;
    ~EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    // The list box that shows the lines; it belongs to the parent.
    HWND Create(HWND parent, int id);

    // Writes all lines from now on to a file as well, in UTF-8.
    bool OpenFile(const std::wstring& path);

    void Add(const wchar_t* who, const wchar_t* format, ...);

private:
    HWND m_list = nullptr;
    std::FILE* m_file = nullptr;
};

// The host has one log; panels are told no way to it.
EventLog& Log();
