// What screen readers and other clients of Microsoft Active Accessibility are told of a window: a small record, filled
// when somebody asks. The windows of the library answer by themselves; a host's own panel answers WM_KX_DESCRIBE as
// they do.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

// One thing that can be named: a window, or a part of one that is no window of its own. Texts are for the ear, in the
// user's language.
struct KxAccess {
    long role = 0;    // ROLE_SYSTEM_...; 0: what the platform's control is
    CKxStringW name;  // empty: the window's text, the label before it, or the title of the control that it is in
    CKxStringW
        unit;  // as it is shown ("\u00B5m"): told after the name in words; empty: that of the label behind a field
    CKxStringW value;        // of sliders, fields and the like; empty: as the platform's control has it
    CKxStringW description;  // what else there is to know; empty: what its control tells of its device ("Moving")
    CKxStringW shortcut;     // the key, as in a menu
    CKxStringW action;       // what `act` does, a verb ("Press"); empty: nothing is done by default
    long state = 0;          // STATE_SYSTEM_... beside what the window itself says (enabled, visible, focus)

    // A client's action, and its value as a text; both ask the host as a user's entry would, and light goes no further
    // than it would by that. Null where there is none; false: the value is refused. They may end the control.
    std::function<void()> act;
    std::function<bool(const CKxStringW& value)> setValue;

    // Where a part is, in the window's client area, in pixels of the screen.
    RECT place{};
    // How many parts a window has that are no windows, in reading order, and each when it is asked for, from 1 on.
    long parts = 0;
    std::function<KxAccess(long part)> part;
};

// Asks a window of the library, or of a host, to fill the record: lParam is a KxAccess*. The answer is TRUE where it
// did; all that is left out is as the platform has it. No window sends it while it is being destroyed.
//
// With a window inside in wParam, it is that window's record, which is filled already and may be changed: a field is
// called after what stands before it, and its control knows more. The inner control is asked first. Where the answer
// is TRUE, nothing gets its name from the control's title.
inline constexpr UINT WM_KX_DESCRIBE = WM_APP + 0x3FD;  // 0x83FD

// For a host's window that answers WM_KX_DESCRIBE: to be given all its messages, first of all. True for WM_GETOBJECT
// (OBJID_CLIENT), with the answer; every other message goes on its way. The windows of the library do so by themselves.
KXDEVUI_API bool KX_AnswerGetObject(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer);

// Tells clients that something has changed: EVENT_OBJECT_VALUECHANGE, _STATECHANGE, _NAMECHANGE, _SELECTION and the
// like; `part` counts from 1, 0 is the window itself. To be called after the change, once, and not while nothing
// changed. It costs nothing before the first client has asked for a window of the library.
KXDEVUI_API void KX_TellAccess(HWND window, DWORD event, long part = 0);
