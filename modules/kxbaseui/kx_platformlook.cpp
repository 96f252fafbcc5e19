#include "kx_platformlook.h"

#include <map>
#include <string>

#include <kxsystem/kx_log.h>

namespace kx {

FARPROC SystemFunction(const wchar_t* library, const char* name) {
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module ? GetProcAddress(module, name) : nullptr;
}

namespace {

// Looked up once.
template <class Function>
Function* Find(const wchar_t* library, const char* name) {
    static auto& found = *new std::map<std::string, FARPROC>;
    const auto [entry, isNew] = found.try_emplace(name, nullptr);
    if (isNew) {
        entry->second = SystemFunction(library, name);
        if (!entry->second) KX_LOG(L"kx_platformlook", L"%ls has no %hs here; done without", library, name);
    }
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(entry->second));
}

}  // namespace

void SetControlTheme(HWND control, ControlTheme theme) {
    using Function = HRESULT WINAPI(HWND, const wchar_t*, const wchar_t*);
    Function* const set = Find<Function>(L"uxtheme.dll", "SetWindowTheme");
    if (!set) return;
    // A blank, because Wine takes an empty name for none given.
    const wchar_t* const name = theme == ControlTheme::None   ? L" "
                                : theme == ControlTheme::Dark ? L"DarkMode_Explorer"
                                                              : nullptr;
    set(control, name, theme == ControlTheme::None ? L" " : nullptr);
}

bool HasDarkScrollBars() {
    static const bool has = [] {
        using Open = HANDLE WINAPI(HWND, const wchar_t*);
        using Close = HRESULT WINAPI(HANDLE);
        Open* const open = Find<Open>(L"uxtheme.dll", "OpenThemeData");
        Close* const close = Find<Close>(L"uxtheme.dll", "CloseThemeData");
        const HANDLE theme = open && close ? open(nullptr, L"DarkMode_Explorer::ScrollBar") : nullptr;
        if (theme) close(theme);
        return theme != nullptr;
    }();
    return has;
}

void SetDarkTitle(HWND window, bool dark) {
    using Function = HRESULT WINAPI(HWND, DWORD, const void*, DWORD);
    Function* const set = Find<Function>(L"dwmapi.dll", "DwmSetWindowAttribute");
    if (!set) return;
    const BOOL value = dark;
    // The attribute's number, and what it was before that was settled.
    for (const DWORD attribute : {20u, 19u})
        if (SUCCEEDED(set(window, attribute, &value, sizeof value))) return;
    static bool told = false;
    if (!told) KX_LOG(L"kx_platformlook", L"title bars cannot be dark here");
    told = true;
}

}  // namespace kx
