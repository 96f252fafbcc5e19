#include <kxbaseui/kx_threadwindows.h>

namespace kx {

namespace {

BOOL CALLBACK Append(HWND window, LPARAM list) noexcept {
    try {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    } catch (...) {
        return FALSE;
    }
}

}  // namespace

std::vector<HWND> ThreadWindows() noexcept {
    std::vector<HWND> tops;
    EnumThreadWindows(GetCurrentThreadId(), Append, reinterpret_cast<LPARAM>(&tops));
    std::vector<HWND> all;
    for (const HWND top : tops) {
        if (!Append(top, reinterpret_cast<LPARAM>(&all))) return {};
        // Walks down in pre-order, so a parent stands before its children.
        EnumChildWindows(top, Append, reinterpret_cast<LPARAM>(&all));
    }
    return all;
}

std::vector<HWND> WindowsBelow(HWND window) noexcept {
    std::vector<HWND> all;
    EnumChildWindows(window, Append, reinterpret_cast<LPARAM>(&all));
    return all;
}

}  // namespace kx
