// Answers the dialogs and message boxes that code under test opens on this thread.
//
//     ModalAnswer answer(IDYES);                          // presses Yes, in every one that opens
//     AskAndDelete();
//     ASSERT_EQ(answer.Count(), 1u);
//     EXPECT_EQ(answer.Dialogs()[0].TextOf(0xFFFF), L"Delete?");
//
// The answer runs inside the dialog's own message loop, once per dialog, also for a dialog that an answer opens in
// turn. A dialog that is still open after its answer fails the test and is cancelled, so that the test ends. There is
// one such object at a time.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kx::test {

// What a dialog showed when it opened, by the ids of its controls. A message box has its text at 0xFFFF.
struct DialogTexts {
    std::map<int, std::wstring> controls;
    // Empty when there is none with this id.
    std::wstring TextOf(int id) const { return controls.contains(id) ? controls.at(id) : L""; }
};

class ModalAnswer {
public:
    using Action = std::function<void(HWND dialog)>;

    explicit ModalAnswer(Action action);
    explicit ModalAnswer(int button);  // presses the button with this id
    ~ModalAnswer();
    ModalAnswer(const ModalAnswer&) = delete;
    ModalAnswer& operator=(const ModalAnswer&) = delete;

    size_t Count() const { return dialogs_.size(); }
    const std::vector<DialogTexts>& Dialogs() const { return dialogs_; }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR);
    void Answer(HWND dialog);

    Action action_;
    HHOOK hook_;
    std::vector<DialogTexts> dialogs_;
    static inline ModalAnswer* s_only = nullptr;
};

// Presses a dialog's button as a user does. Fails the test when the dialog has no such button or it is disabled.
void PressButton(HWND dialog, int id);

}  // namespace kx::test
