// Answers the dialogs and message boxes that code under test opens on this thread.
//
//     ModalAnswer answer(IDYES);                          // presses Yes, in every one that opens
//     AskAndDelete();
//     EXPECT_EQ(answer.Count(), 1u);
//
// The answer runs inside the dialog's own message loop, once per dialog, also for a dialog that an answer opens in
// turn. A dialog that is still open after its answer fails the test and is cancelled, so that the test ends. There is
// one such object at a time.
#pragma once

#include <windows.h>

#include <functional>

namespace kx::test {

class ModalAnswer {
public:
    using Action = std::function<void(HWND dialog)>;

    explicit ModalAnswer(Action action);
    explicit ModalAnswer(int button);  // presses the button with this id
    ~ModalAnswer();
    ModalAnswer(const ModalAnswer&) = delete;
    ModalAnswer& operator=(const ModalAnswer&) = delete;

    unsigned Count() const { return count_; }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR);
    void Answer(HWND dialog);

    Action action_;
    HHOOK hook_;
    unsigned count_ = 0;
    static inline ModalAnswer* s_only = nullptr;
};

// Presses a dialog's button as a user does. Fails the test when the dialog has no such button or it is disabled.
void PressButton(HWND dialog, int id);

}  // namespace kx::test
