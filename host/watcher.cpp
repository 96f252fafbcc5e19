#include "watcher.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <utility>

#include "event_log.h"
#include "main_window.h"
#include "rules/mnemonics.h"

namespace {

// The timer procedure has no parameter for it.
Watcher* s_watcher = nullptr;
constexpr UINT kLookMilliseconds = 30;

std::wstring Place(const std::wstring& name, const RECT& rect) {
    std::wstring place = L"Place: " + name;
    for (const long number : {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top})
        place += L" " + std::to_wstring(number);
    return place;
}

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = L"";
    GetClassNameW(window, own, 32);
    return std::wcscmp(own, name) == 0;
}

// The entries of a menu; `owner` is the window whose bar it is, or null when it is open in a window of its own.
void AddMenu(HWND owner, HMENU menu, std::vector<std::wstring>& places) {
    for (UINT i = 0; i < static_cast<UINT>(std::max(0, GetMenuItemCount(menu))); ++i) {
        wchar_t text[80] = L"";
        RECT rect{};
        if (GetMenuStringW(menu, i, text, 80, MF_BYPOSITION) > 0 && GetMenuItemRect(owner, menu, i, &rect))
            places.push_back(Place(L"Menu/" + kx::host::WithoutMnemonic(text), rect));
    }
}

template <class Act>
void ForEachChild(HWND parent, const Act& act) {
    EnumChildWindows(
        parent,
        [](HWND child, LPARAM param) {
            (*reinterpret_cast<const Act*>(param))(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&act));
}

template <class Act>
void ForEachOwnWindow(const Act& act) {
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM param) {
            if (IsWindowVisible(window)) (*reinterpret_cast<const Act*>(param))(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&act));
}

}  // namespace

void Watcher::Start() {
    s_watcher = this;
    SetTimer(nullptr, 0, kLookMilliseconds, OnTimer);
}

void CALLBACK Watcher::OnTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    if (IsWindow(s_watcher->m_window.Handle())) {
        s_watcher->Look();
    } else {
        KillTimer(nullptr, timer);
    }
}

void Watcher::Look() {
    Places places = AllPlaces();
    if (places == m_seen && places != m_told) {
        for (const std::wstring& place : places)
            Log().Write(place);
        Log().Write(L"Places: told");
        m_told = places;
    }
    m_seen = std::move(places);
    if (const HWND focus = GetFocus()) {
        const std::wstring name = NameOf(focus);
        if (std::exchange(m_focus, name) != name) Log().Write(L"Focus: " + name);
    }
    wchar_t text[200] = L"";
    GetDlgItemTextW(m_window.Handle(), MainWindow::StatusId, text, 200);
    if (std::exchange(m_status, text) != text) Log().Write(std::wstring(L"Status:") + text);
}

Watcher::Places Watcher::AllPlaces() const {
    Places places;
    ForEachOwnWindow([&](HWND top) {
        if (IsOfClass(top, L"#32768")) {
            const auto menu = reinterpret_cast<HMENU>(SendMessageW(top, MN_GETHMENU, 0, 0));
            if (menu) AddMenu(nullptr, menu, places);
            return;
        }
        AddMenu(top, GetMenu(top), places);
        AddControls(top, places);
    });
    return places;
}

void Watcher::AddControls(HWND top, Places& places) const {
    RECT whole{};
    GetWindowRect(top, &whole);
    places.push_back(Place(top == m_window.Handle() ? L"Host" : L"Dialog", whole));
    std::map<std::wstring, int> alike;
    ForEachChild(top, [&](HWND control) {
        RECT rect{};
        if (GetDlgCtrlID(control) <= 0 || !IsWindowVisible(control) || !GetWindowRect(control, &rect)) return;
        std::wstring name = NameOf(control);
        if (const int number = ++alike[name]; number > 1) name += L"#" + std::to_wstring(number);
        places.push_back(Place(name, rect));
    });
}

std::wstring Watcher::OwnerOf(HWND control) const {
    if (GetAncestor(control, GA_ROOT) != m_window.Handle()) return L"Dialog";
    for (const auto& page : m_window.Pages()) {
        for (CKxDevUI_Container* each : page->Panels()) {
            const auto* panel = dynamic_cast<const HostPanel*>(each);
            if (panel && IsChild(*panel, control)) return std::wstring(page->Name()) + L"/" + panel->Name();
        }
    }
    return L"Host";
}

std::wstring Watcher::NameOf(HWND control) const {
    return OwnerOf(control) + L"/" + std::to_wstring(GetDlgCtrlID(control));
}
