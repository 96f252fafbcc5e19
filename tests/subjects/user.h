// What a user may do to a control, and one who is not there: nobody answers a message box, a menu or a question.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace kx::test {

// A thing done with real input, mouse, wheel or keys, to one window, or by a screen reader.
struct Act {
    std::string name;  // "click at 1/2 of Button #10001"
    std::function<void()> run;
};

// "Edit #7": class and id.
std::string NameOfWindow(HWND window);

// Everything that can be done to a window that can be seen. An act does nothing when its window has gone.
std::vector<Act> ActsAt(HWND window);

// The mouse where no control is.
void MoveAway(HWND parent);

// While it lives, message boxes are answered with OK, the library's menus with their first command, and the platform's
// menus close again. `opened` hears what is open, "a box" or "a menu".
class NobodyAnswers {
public:
    explicit NobodyAnswers(std::function<void(const char*)> opened = nullptr);
    ~NobodyAnswers();
    NobodyAnswers(const NobodyAnswers&) = delete;
    NobodyAnswers& operator=(const NobodyAnswers&) = delete;

private:
    std::function<void(const char*)> opened_;
    UINT_PTR timer_;
};

}  // namespace kx::test
