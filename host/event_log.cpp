#include "event_log.h"

#include <windows.h>

#include <cstdarg>
#include <cwctype>
#include <sstream>

#include <kxsystem/kx_string.h>

namespace {

std::wstring Lower(std::wstring text) {
    for (wchar_t& letter : text)
        letter = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(letter)));
    return text;
}

}  // namespace

std::string Utf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    std::string utf8(3 * text.size(), '\0');
    utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, utf8.data(),
                                                             static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

bool PassesFilter(const std::wstring& line, const std::wstring& filter) {
    const std::wstring lower = Lower(line);
    std::wistringstream words(Lower(filter));
    for (std::wstring word; words >> word;) {
        if (lower.find(word) == std::wstring::npos) return false;
    }
    return true;
}

EventLog::~EventLog() {
    if (m_file) std::fclose(m_file);
}

bool EventLog::OpenFile(const std::wstring& path) {
    m_file = _wfopen(path.c_str(), L"wb");
    return m_file != nullptr;
}

void EventLog::Add(const wchar_t* who, const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    CKxStringW text;
    text.FormatV(400, format, arguments);
    va_end(arguments);
    m_lines.push_back(who + (L": " + text.str()));
    if (m_lines.size() > MostLines) m_lines.pop_front();
    Write(m_lines.back());
    if (m_viewer) m_viewer(m_lines.back());
}

void EventLog::Write(const std::wstring& line) {
    if (!m_file) return;
    std::fputs((Utf8(line) + "\r\n").c_str(), m_file);
    std::fflush(m_file);
}

EventLog& Log() {
    static EventLog log;
    return log;
}
