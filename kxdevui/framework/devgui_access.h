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
// user's language, with whole words for units ("micrometres").
struct KxAccess {
    long role = 0;     // ROLE_SYSTEM_...; 0: as the platform has it
    CKxStringW name;   // empty: the window's text, the label before it, or the title of the control that it is in
    CKxStringW value;  // of sliders, fields and the like; empty: as the platform has it
    CKxStringW
        description;      // what else there is to know: a state that the role has no word for, why something is refused
    CKxStringW shortcut;  // the key, as in a menu
    CKxStringW action;    // what `act` does, a verb ("Press"); empty: nothing is done by default
    long state = 0;       // STATE_SYSTEM_... beside what the window itself says (enabled, visible, focus)

    // A client's action, and its value as a text; both ask the host as a user's entry would, and light goes no further
    // than it would by that. Null where there is none; false: the value is refused. They may end the control.
    std::function<void()> act;
    std::function<bool(const CKxStringW& value)> setValue;

    // Parts that are no windows, in reading order; `place` is in the window's client area, in pixels of the screen.
    RECT place{};
    std::vector<KxAccess> parts;
};

// Asks a window of the library, or of a host, to fill the record: lParam is a KxAccess*. The answer is TRUE where it
// did; all that is left out is as the platform has it. No window sends it while it is being destroyed.
inline constexpr UINT WM_KX_DESCRIBE = WM_APP + 0x3FD;  // 0x83FD

// For a host's window that answers WM_KX_DESCRIBE: to be given all its messages, first of all. True for WM_GETOBJECT
// (OBJID_CLIENT), with the answer; every other message goes on its way. The windows of the library do so by themselves.
KXDEVUI_API bool KX_AnswerGetObject(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& answer);

// Tells clients that something has changed: EVENT_OBJECT_VALUECHANGE, _STATECHANGE, _NAMECHANGE, _SELECTION and the
// like; `part` counts from 1, 0 is the window itself. To be called after the change, once, and not while nothing
// changed.
KXDEVUI_API void KX_TellAccess(HWND window, DWORD event, long part = 0);
