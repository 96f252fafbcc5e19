#include "kx_subclass.h"

#include <kxbaseui/kx_module.h>

#include <map>
#include <utility>

namespace kx {

namespace {

// What stood there before, by window and the procedure put before it. Windows belong to the GUI thread, and so does
// this.
std::map<std::pair<HWND, WNDPROC>, WNDPROC>& Previous() {
    static auto& previous = *new std::map<std::pair<HWND, WNDPROC>, WNDPROC>;
    return previous;
}

}  // namespace

bool Subclass(HWND window, WNDPROC procedure) {
    // A window of another thread would come here on that one.
    if (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) return false;
    KX_KeepLoaded(procedure);
    const auto [entry, isNew] = Previous().try_emplace({window, procedure}, nullptr);
    if (!isNew) return true;
    // Before the exchange: the first message may come with it.
    entry->second = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    return true;
}

LRESULT CallRest(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = Previous().find({window, procedure});
    if (found == Previous().end()) return DefWindowProcW(window, message, wParam, lParam);
    const WNDPROC rest = found->second;
    if (message == WM_NCDESTROY) Previous().erase(found);
    return CallWindowProcW(rest, window, message, wParam, lParam);
}

}  // namespace kx

void KX_KeepLoaded(WNDPROC procedure) noexcept {
    HMODULE stays = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(procedure), &stays);
}
