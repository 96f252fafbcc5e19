// The diagnostic log.
//
// Every record is one line that opens with the place it came from: "devgui_base(230): text", or "?(0): text" if none
// was named. Line breaks and other control characters within the text become blanks. A record goes to the sink that the
// host has set, or else to the debugger (OutputDebugString). Writing never fails its caller: a sink that throws, a text
// that cannot be formatted or a full disk costs the record, nothing else. Records may come from any thread; the sink is
// called under a lock, and what it logs itself is dropped.
#pragma once

#include <kxsystem/kxsystem_api.h>

// The log of the process; static functions only.
class KXSYSTEM_API CKxLogFile {
public:
    // Whether detailed records are wanted; false at first. The library writes lines about failed window classes and
    // rejected input only then.
    static bool Detail();
    static void SetDetail(bool on);

    // Names the place (a source key, cut to 63 characters, and a line) for the next Line on this thread.
    static void Location(const wchar_t* source, int line);

    // Writes one record, printf-style (as CKxString::Format: %ls for a wide text), its text cut to 1,100 characters,
    // under the place named by the last Location, which is used up by it.
    static void Line(const wchar_t* format, ...);

    // Receives each record without line end; `context` is what SetSink was given. A null sink goes back to the
    // debugger. After SetSink has returned, the sink before it is not called any more. Sinks must not wait for threads
    // that may be writing records.
    using Sink = void (*)(const wchar_t* record, void* context);
    static void SetSink(Sink sink, void* context);
};

// One record with its place: KX_LOG(L"devgui_base", L"zoom %g refused", zoom).
#define KX_LOG(source, ...) (CKxLogFile::Location(source, __LINE__), CKxLogFile::Line(__VA_ARGS__))
