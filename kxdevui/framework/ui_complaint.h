// For authors of controls: message boxes about what the user has entered, also where a box must not be shown.
//
// A window that is told that it loses the focus must not open another one: the platform is in the midst of handing the
// focus on, and with two windows that do so a program may wait for ever. What is to be said there is said a moment
// later, when that is done.
#pragma once

#include <windows.h>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// While it lives, a message is handled by which a window is told, or tells its parent, that it loses the focus.
class KXDEVUI_API LosingFocus {
public:
    // From here to the end of the scope, if this message is one.
    LosingFocus(UINT id, WPARAM wParam, LPARAM lParam) noexcept
        : m_isOne(id == WM_KILLFOCUS || (id == WM_COMMAND && HIWORD(wParam) == EN_KILLFOCUS && lParam != 0)) {
        if (m_isOne) Count(1);
    }
    ~LosingFocus() {
        if (m_isOne) Count(-1);
    }
    LosingFocus(const LosingFocus&) = delete;
    LosingFocus& operator=(const LosingFocus&) = delete;

private:
    static void Count(int change) noexcept;

    bool m_isOne;
};

// Shows a box owned by `owner` about what is in `field`, which may be null; the focus goes back to where it was. Where
// a window loses the focus, the box comes when the platform gets to it, if both windows are still there. A field with
// the habit (KxFieldHabits::answer) has an answer beside it instead, at once.
//
// False when nothing is shown because another of these boxes stands, or waits, over the same top-level window: the
// focus that a box takes from a field is nobody's leaving, and of two fields that are wrong at once the first is told.
// The text is logged then, and the focus is not to be sent anywhere.
KXDEVUI_API bool Complain(HWND owner, HWND field, const wchar_t* text, const wchar_t* caption, UINT style);

// The owner of such a box that stands over the top-level window that this one is in, or is about to give the focus
// back; null for none.
KXDEVUI_API HWND WhoComplains(HWND window) noexcept;

}  // namespace kx::ui
