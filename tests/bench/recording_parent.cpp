#include <bench/recording_parent.h>

#include <commctrl.h>

namespace kx::test {

RecordingParent::RecordingParent(SIZE client) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = L"KxRecordingParent";
    RegisterClassW(&windowClass);

    constexpr DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    RECT frame{0, 0, client.cx, client.cy};
    AdjustWindowRectEx(&frame, style, FALSE, WS_EX_CONTROLPARENT);
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, windowClass.lpszClassName, L"Test", style, 20, 20,
                              frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr, nullptr, this);
    if (!window_) {
        ADD_FAILURE() << "the parent window could not be made: error " << GetLastError();
        return;
    }
    ShowWindow(window_, SW_SHOWNORMAL);
    SetForegroundWindow(window_);
    UpdateWindow(window_);
}

bool RecordingParent::IsWatched(UINT message, LPARAM lParam) const {
    // Controls with a visual style ask with every paint whether their parent draws: no news.
    if (message == WM_NOTIFY && lParam && reinterpret_cast<const NMHDR*>(lParam)->code == NM_CUSTOMDRAW) return false;
    return watched_.contains(message) || (message >= WM_USER && message < 0x8000);
}

LRESULT CALLBACK RecordingParent::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<RecordingParent*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<RecordingParent*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->Handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT RecordingParent::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = window_;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        window_ = nullptr;
    }
    if (IsWatched(message, lParam)) record_.Message(message, wParam, lParam);
    const auto found = replies_.find(message);
    if (found == replies_.end()) return DefWindowProcW(window, message, wParam, lParam);
    // A copy: the reply may set another answer to the same message.
    return Reply(found->second)(wParam, lParam);
}

}  // namespace kx::test
