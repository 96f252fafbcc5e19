#include "event_log.h"

#include <cstdarg>

#include <kxsystem/kx_string.h>

EventLog::~EventLog() {
    if (m_file) std::fclose(m_file);
}

HWND EventLog::Create(HWND parent, int id) {
    m_list = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr,
                             WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOSEL, 0, 0, 0, 0, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    return m_list;
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
    const CKxStringW line = CKxStringW(who) + L": " + text;

    if (m_file) {
        char utf8[2000];
        const int length =
            WideCharToMultiByte(CP_UTF8, 0, line, static_cast<int>(line.Length()), utf8, sizeof utf8, nullptr, nullptr);
        std::fwrite(utf8, 1, static_cast<std::size_t>(length), m_file);
        std::fputs("\r\n", m_file);
        std::fflush(m_file);
    }
    if (!m_list) return;
    constexpr LRESULT kMostLines = 2000;
    if (SendMessageW(m_list, LB_GETCOUNT, 0, 0) >= kMostLines) SendMessageW(m_list, LB_DELETESTRING, 0, 0);
    const LRESULT index = SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    SendMessageW(m_list, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
}

EventLog& Log() {
    static EventLog log;
    return log;
}
