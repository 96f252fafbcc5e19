// Visual styles that go and come while a program runs.
#pragma once

#include <windows.h>

#include <bench/imports.h>

#include <cstring>
#include <memory>

namespace kx::test {

// While it lives, the library finds no visual style on the platform's controls. What shows is told before and after, by
// WM_THEMECHANGED, as the platform tells it.
class WithoutStyles {
public:
    explicit WithoutStyles(HWND told) : told_(told) { Tell(told_); }
    ~WithoutStyles() { Restore(), Tell(told_); }
    WithoutStyles(const WithoutStyles&) = delete;
    WithoutStyles& operator=(const WithoutStyles&) = delete;

    static void Tell(HWND window) {
        const auto tell = [](HWND each, LPARAM) -> BOOL { return SendMessageW(each, WM_THEMECHANGED, 0, 0), TRUE; };
        tell(window, 0);
        EnumChildWindows(window, tell, 0);
    }

private:
    static FARPROC WINAPI Look(HMODULE module, const char* name) {
        if (std::strcmp(name, "GetWindowTheme") != 0) return GetProcAddress(module, name);
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(+[](HWND) -> HANDLE { return nullptr; }));
    }
    void Restore() { import_.reset(); }

    HWND told_;
    std::unique_ptr<Import> import_ = std::make_unique<Import>(L"kxbaseui.dll", &GetProcAddress, &Look);
};

}  // namespace kx::test
