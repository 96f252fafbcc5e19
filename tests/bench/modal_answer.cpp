#include <bench/modal_answer.h>

#include <commctrl.h>
#include <gtest/gtest.h>

namespace kx::test {
namespace {

constexpr UINT answerMessage = WM_APP;

}  // namespace

ModalAnswer::ModalAnswer(Action action)
    : action_(std::move(action)), hook_(SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId())) {
    if (!hook_ || s_only) ADD_FAILURE() << "dialogs cannot be answered: error " << GetLastError();
    s_only = this;
}

ModalAnswer::ModalAnswer(int button) : ModalAnswer([button](HWND dialog) { PressButton(dialog, button); }) {}

ModalAnswer::~ModalAnswer() {
    s_only = nullptr;
    UnhookWindowsHookEx(hook_);
}

// A dialog is activated again when one that it opened closes: only the first time counts. The answer waits until the
// dialog's message loop runs: ended during its activation, a dialog would be shown after its end.
LRESULT CALLBACK ModalAnswer::Hook(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && GetClassWord(window, GCW_ATOM) == 32770 && !GetPropW(window, L"KxAnswered")) {
        SetPropW(window, L"KxAnswered", window);
        SetWindowSubclass(window, Procedure, 0, 0);
        PostMessageW(window, answerMessage, 0, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK ModalAnswer::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    // Wine does not free what is not taken away.
    if (message == WM_NCDESTROY) RemoveWindowSubclass(dialog, Procedure, 0);
    if (message != answerMessage || !s_only) return DefSubclassProc(dialog, message, wParam, lParam);
    s_only->Answer(dialog);
    return 0;
}

void ModalAnswer::Answer(HWND dialog) {
    ++count_;
    action_(dialog);
    // An ended dialog is hidden at once, and destroyed when its loop gets to it.
    if (IsWindow(dialog) && IsWindowVisible(dialog)) {
        ADD_FAILURE() << "a dialog is still open after its answer";
        EndDialog(dialog, IDCANCEL);
    }
}

void PressButton(HWND dialog, int id) {
    const HWND button = GetDlgItem(dialog, id);
    if (!button || !IsWindowEnabled(button)) {
        ADD_FAILURE() << "the dialog has no enabled button " << id;
        return;
    }
    SendMessageW(button, BM_CLICK, 0, 0);
}

}  // namespace kx::test
