// For authors of controls: an answer beside a field or a button, in the place of a message box: why something has not
// been taken. It is not in the way of the next key.
#pragma once

#include <windows.h>

#include <string>

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// Shows the text below `anchor`, above it where the screen ends, in front of everything and outside of the anchor: for
// some seconds, and not after the anchor has been hidden, moved or destroyed. It takes no focus and no mouse, and
// screen readers are told of an alert whose name is the text. There is one answer at a time. An anchor that is not on
// screen gets none.
KXDEVUI_API void ShowAnswer(HWND anchor, const std::wstring& text);

// Ends the answer, if it is this anchor's.
KXDEVUI_API void HideAnswer(HWND anchor) noexcept;

// The window of the answer that is shown; null when there is none. Its text is the answer's.
KXDEVUI_API HWND AnswerWindow() noexcept;

}  // namespace kx::ui
