// For authors of controls: the object by which a window answers clients of Microsoft Active Accessibility
// (devgui_access.h). A control fills its record at WM_KX_DESCRIBE; all else is here.
#pragma once

#include <kxdevui/framework/devgui_access.h>
#include <kxdevui/framework/ui_window.h>

#include <initializer_list>

#include <oleacc.h>

namespace kx::ui {

// The answer to WM_KX_DESCRIBE: `fill` is called with the record of the window itself.
template <class Fill>
LRESULT Describe(const Message& message, Fill&& fill) {
    if (message.lParam == 0 || message.wParam != 0) return FALSE;
    fill(*reinterpret_cast<KxAccess*>(message.lParam));
    return TRUE;
}

// The same for what is inside: `fill` gets the window and its record, and says whether it knows more of it. Empty for
// every other message.
template <class Fill>
Handled DescribePart(const Message& message, Fill&& fill) {
    if (message.id != WM_KX_DESCRIBE || message.lParam == 0 || message.wParam == 0) return std::nullopt;
    return fill(reinterpret_cast<HWND>(message.wParam), *reinterpret_cast<KxAccess*>(message.lParam)) ? TRUE : FALSE;
}

// A text as it is read aloud: in one line, without the ampersands that underline letters and the colon at its end.
KXDEVUI_API CKxStringW AsRead(const CKxStringW& text);
// Texts one after the other, as they are read: "Cyan, Power"; without the empty ones.
KXDEVUI_API CKxStringW Listed(std::initializer_list<CKxStringW> texts);
// A unit in words, "micrometres"; one that nobody knows as it is.
KXDEVUI_API CKxStringW UnitInWords(const CKxStringW& unit);

// Whether the window is told of by its object; all that is told of it, also by the windows that it is in.
bool IsTold(HWND window);
KxAccess RecordOf(HWND window);
// Whether a user could use it: it and all that it is in are shown and enabled, by no box in front of them either.
bool CanBeUsed(HWND window);

// The window is gone: clients that hold its object get CO_E_OBJNOTCONNECTED from now on.
void AccessLost(HWND window) noexcept;

}  // namespace kx::ui
