#include <kxsystem/kx_log.h>
#include <kxsystem/kx_string.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdarg>
#include <mutex>

namespace {

constexpr std::size_t c_maxLength = 1100;

void ToDebugger(const wchar_t* record, void*) {
    OutputDebugStringW(record);
    OutputDebugStringW(L"\n");
}

std::atomic<bool> s_detail{false};

// Recursive, so that a sink may put another one in its place.
std::recursive_mutex s_sinkLock;
CKxLogFile::Sink s_sink = ToDebugger;
void* s_sinkContext = nullptr;

struct Place {
    std::array<wchar_t, 64> source{L'?'};
    int line = 0;
};
thread_local Place t_place;
thread_local bool t_writing = false;

// One record is one line, and half a surrogate pair at the cut is no character.
void MakeLine(std::wstring& text) {
    if (!text.empty() && IS_HIGH_SURROGATE(text.back())) text.pop_back();
    std::replace_if(
        text.begin(), text.end(), [](wchar_t c) { return c < L' '; }, L' ');
}

void Write(const Place& place, const wchar_t* format, va_list arguments) {
    CKxStringW record, text;
    text.FormatV(c_maxLength, format, arguments);
    MakeLine(text.str());
    record.Format(place.source.size() + 16, L"%ls(%d): ", place.source.data(), place.line);
    record += text;

    const std::lock_guard lock(s_sinkLock);
    s_sink(record, s_sinkContext);
}

}  // namespace

bool CKxLogFile::Detail() { return s_detail; }

void CKxLogFile::SetDetail(bool on) { s_detail = on; }

void CKxLogFile::Location(const wchar_t* source, int line) {
    if (t_writing) return;
    t_place = Place{.line = line};
    if (!source) return;
    t_place.source = {};
    for (std::size_t i = 0; i + 1 < t_place.source.size() && source[i]; ++i)
        t_place.source[i] = source[i];
}

void CKxLogFile::Line(const wchar_t* format, ...) {
    if (t_writing) return;
    t_writing = true;
    va_list arguments;
    va_start(arguments, format);
    try {
        Write(std::exchange(t_place, Place{}), format, arguments);
    } catch (...) {
        // The record is lost: there is no better place to tell it than the one that just failed.
    }
    va_end(arguments);
    t_writing = false;
}

void CKxLogFile::SetSink(Sink sink, void* context) {
    const std::lock_guard lock(s_sinkLock);
    s_sink = sink ? sink : ToDebugger;
    s_sinkContext = context;
}
