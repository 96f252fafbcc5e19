// Windows beside the control under test, and where windows stand.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

namespace kx::test {

// A visible child with this rectangle in its parent's client area.
inline HWND AddChild(HWND parent, const wchar_t* className, int id, const RECT& place, DWORD style = 0,
                     const wchar_t* text = L"") {
    return CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

// A column of a list view.
inline void AddColumn(HWND list, int width) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH, column.cx = width, column.pszText = const_cast<wchar_t*>(L"Column");
    SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
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

}  // namespace kx::test
