// Windows beside the control under test, and where windows stand.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kx::test {

// A visible child with this rectangle in its parent's client area.
inline HWND AddChild(HWND parent, const wchar_t* className, int id, const RECT& place, DWORD style = 0,
                     const wchar_t* text = L"") {
    return CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

// "left top width height" in the parent's client area.
inline std::string PlaceOf(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    MapWindowPoints(nullptr, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&r), 2);
    return std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right - r.left) + " " +
           std::to_string(r.bottom - r.top);
}

inline std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

// Dialogs that nobody wrote for this library: calls with the name, "#12" for a numbered one, and the module of each.
template <class Call>
void ForEachPlatformDialog(Call call) {
    const auto append = [](HMODULE, const wchar_t*, wchar_t* name, LONG_PTR list) -> BOOL {
        reinterpret_cast<std::vector<std::wstring>*>(list)->push_back(
            IS_INTRESOURCE(name) ? L"#" + std::to_wstring(reinterpret_cast<ULONG_PTR>(name)) : name);
        return TRUE;
    };
    for (const wchar_t* file : {L"comdlg32.dll", L"shell32.dll", L"comctl32.dll", L"wininet.dll", L"cryptui.dll"}) {
        const HMODULE module = LoadLibraryExW(file, nullptr, LOAD_LIBRARY_AS_DATAFILE);
        std::vector<std::wstring> names;
        if (module) EnumResourceNamesW(module, RT_DIALOG, append, reinterpret_cast<LONG_PTR>(&names));
        for (const std::wstring& name : names)
            call(name, module);
        if (module) FreeLibrary(module);
    }
}

}  // namespace kx::test
