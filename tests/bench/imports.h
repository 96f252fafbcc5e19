// Functions that one module takes from another, replaced for a while: what is asked of them can be written down.
//
//     const Import import(L"kxdevui.dll", &DrawTextW, &MyDrawText);
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace kx::test {

// While it lives, the module calls `mine` wherever it has imported `theirs`.
class Import {
public:
    template <class Function>
    Import(const wchar_t* module, Function* theirs, Function* mine) : theirs_(reinterpret_cast<void*>(theirs)) {
        auto* const base = reinterpret_cast<std::byte*>(GetModuleHandleW(module));
        if (!base) return;
        const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
        const auto* const header = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
        const auto& table = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
        for (; from->Name; ++from)
            for (auto* place = reinterpret_cast<void**>(base + from->FirstThunk); *place; ++place)
                if (*place == theirs_) places_.push_back(place), Write(place, reinterpret_cast<void*>(mine));
    }
    ~Import() {
        for (void** const place : places_)
            Write(place, theirs_);
    }
    Import(const Import&) = delete;
    Import& operator=(const Import&) = delete;

    std::size_t Count() const { return places_.size(); }

private:
    static void Write(void** place, void* function) {
        DWORD before = 0;
        VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &before);
        *place = function;
        VirtualProtect(place, sizeof(*place), before, &before);
    }

    std::vector<void**> places_;
    void* theirs_;
};

// While it lives, the library finds no visual style on the platform's controls. What shows is told before and after, by
// WM_THEMECHANGED, as the platform tells it.
class WithoutStyles {
public:
    explicit WithoutStyles(HWND told) : told_(told) { Tell(told_); }
    ~WithoutStyles() { import_.reset(), Tell(told_); }

private:
    static void Tell(HWND window) {
        const auto tell = [](HWND each, LPARAM) -> BOOL { return SendMessageW(each, WM_THEMECHANGED, 0, 0), TRUE; };
        tell(window, 0);
        EnumChildWindows(window, tell, 0);
    }
    static FARPROC WINAPI Look(HMODULE module, const char* name) {
        if (std::strcmp(name, "GetWindowTheme") != 0) return GetProcAddress(module, name);
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(+[](HWND) -> HANDLE { return nullptr; }));
    }

    HWND told_;
    std::unique_ptr<Import> import_ = std::make_unique<Import>(L"kxbaseui.dll", &GetProcAddress, &Look);
};

}  // namespace kx::test
