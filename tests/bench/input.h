// Real input, injected where the mouse and the keyboard come in, and the handling of messages.
//
// Points are client coordinates of the window. Its top-level window is brought to the foreground first, and all
// messages are handled after every step, as a user's hand is slow. A step that would reach another window fails the
// test.
//
// A control that runs a loop of its own inside a press (a menu, a modal drag) keeps Press from returning until that
// loop ends: post what ends it before.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <string_view>

namespace kx::test {

// Handles all messages that wait.
void Pump();

// Handles messages until the condition holds; false when it still does not at the end of the time.
[[nodiscard]] bool PumpUntil(const std::function<bool()>& condition,
                             std::chrono::milliseconds timeout = std::chrono::seconds(5));

// While it lives, Pump gives the window's messages to IsDialogMessage first, as a host does for Tab and the arrow keys.
class DialogKeys {
public:
    explicit DialogKeys(HWND window);
    ~DialogKeys();
    DialogKeys(const DialogKeys&) = delete;
    DialogKeys& operator=(const DialogKeys&) = delete;

private:
    HWND previous_;
};

// Makes the window's top-level window the foreground window.
void BringToFront(HWND window);

enum class Button { Left, Right };

void MoveTo(HWND window, int x, int y);
void Press(HWND window, int x, int y, Button button = Button::Left);
void Release(Button button = Button::Left);  // where the mouse is

// Two clicks are never taken for a double click, however soon they follow.
void Click(HWND window, int x, int y, Button button = Button::Left);
void DoubleClick(HWND window, int x, int y, Button button = Button::Left);

// Turns the wheel where the mouse is: 120 is one notch away from the user. Modifiers: MOD_SHIFT, MOD_CONTROL, MOD_ALT.
void Wheel(int delta, UINT modifiers = 0);

// A key down and up, for the window that has the focus.
void Key(WORD virtualKey, UINT modifiers = 0);

// Types a text; \n, \t and \b are the Enter, Tab and Backspace keys.
void Type(std::wstring_view text);

}  // namespace kx::test
