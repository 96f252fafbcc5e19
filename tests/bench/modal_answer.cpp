#include <bench/modal_answer.h>

#include <commctrl.h>

#include <gtest/gtest.h>

namespace kx::test {
namespace {

constexpr UINT answerMessage = WM_APP;

ModalAnswer* youngest = nullptr;

std::wstring Text(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

DialogTexts Read(HWND dialog) {
    DialogTexts texts{Text(dialog), {}};
    EnumChildWindows(
        dialog,
        [](HWND child, LPARAM param) -> BOOL {
            reinterpret_cast<DialogTexts*>(param)->controls.emplace(GetDlgCtrlID(child) & 0xFFFF, Text(child));
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&texts));
    return texts;
}

}  // namespace

std::wstring DialogTexts::TextOf(int id) const {
    const auto found = controls.find(id);
    return found == controls.end() ? std::wstring() : found->second;
}

ModalAnswer::ModalAnswer(Action action) : action_(std::move(action)), older_(youngest) {
    window_ = CreateWindowW(L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowSubclass(window_, Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    hook_ = SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId());
    if (!window_ || !hook_) ADD_FAILURE() << "dialogs cannot be answered: error " << GetLastError();
    youngest = this;
}

ModalAnswer::ModalAnswer(int button) : ModalAnswer([button](HWND dialog) { PressButton(dialog, button); }) {}

ModalAnswer::~ModalAnswer() {
    youngest = older_;
    UnhookWindowsHookEx(hook_);
    DestroyWindow(window_);
}

LRESULT CALLBACK ModalAnswer::Hook(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (youngest && code == HCBT_ACTIVATE && GetClassWord(window, GCW_ATOM) == 32770) youngest->Activated(window);
    if (code == HCBT_DESTROYWND)
        for (ModalAnswer* each = youngest; each; each = each->older_)
            each->seen_.erase(window);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// A dialog is activated again when one that it opened closes: only the first time counts. The answer waits until the
// dialog's message loop runs: ended during its activation, a dialog would be shown after its end.
void ModalAnswer::Activated(HWND dialog) {
    for (const ModalAnswer* each = this; each; each = each->older_)
        if (each->seen_.contains(dialog)) return;
    seen_.insert(dialog);
    PostMessageW(window_, answerMessage, reinterpret_cast<WPARAM>(dialog), 0);
}

LRESULT CALLBACK ModalAnswer::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR self) {
    if (message != answerMessage) return DefSubclassProc(window, message, wParam, lParam);
    reinterpret_cast<ModalAnswer*>(self)->Answer(reinterpret_cast<HWND>(wParam));
    return 0;
}

void ModalAnswer::Answer(HWND dialog) {
    if (!IsWindow(dialog)) return;
    dialogs_.push_back(Read(dialog));
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
