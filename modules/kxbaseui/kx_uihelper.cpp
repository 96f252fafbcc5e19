#include <kxbaseui/kx_uihelper.h>

#include <algorithm>
#include <unordered_set>

#include <kxsystem/kx_log.h>

#include "kx_subclass.h"

namespace {

// Not a property of the window, which under Wine would be asked for from another process.
std::unordered_set<HWND>& SkippedWindows() {
    static auto* windows = new std::unordered_set<HWND>;
    return *windows;
}

LRESULT CALLBACK SkippedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCDESTROY) SkippedWindows().erase(window);
    return kx::CallRest(SkippedProc, window, message, wParam, lParam);
}

bool IsChildWindow(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0; }

RECT WorkArea(HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

RECT ClientOnScreen(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    MapWindowPoints(window, HWND_DESKTOP, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

RECT AreaOf(HWND window) {
    return IsChildWindow(window) ? ClientOnScreen(GetAncestor(window, GA_PARENT)) : WorkArea(window);
}

// The rectangle to be centred on: an owner that is minimised or hidden shows nothing that one could be centred on.
RECT RectOfAnchor(HWND window, HWND anchor) {
    RECT rect{};
    if (anchor && IsWindowVisible(anchor) && !IsIconic(anchor) && GetWindowRect(anchor, &rect)) return rect;
    return AreaOf(window);
}

}  // namespace

bool CKxUIHelper::AlignWnd(HWND window, HWND anchor, int mode, bool keepInside, const RECT* area) {
    if (!IsWindow(window)) return false;
    if (mode != eKxAlign_CenterOwner && mode != eKxAlign_CenterAnchor) {
        KX_LOG(L"kx_uihelper", L"there is no way %d to align a window", mode);
        return false;
    }
    if (mode == eKxAlign_CenterOwner || !anchor) anchor = GetParent(window);

    const RECT around = RectOfAnchor(window, anchor);
    RECT own{};
    GetWindowRect(window, &own);
    const long width = own.right - own.left, height = own.bottom - own.top;
    POINT place{around.left + (around.right - around.left - width) / 2,
                around.top + (around.bottom - around.top - height) / 2};
    if (keepInside) {
        const RECT limits = area ? *area : AreaOf(window);
        // The far edge first: of a window too large for the area, the top-left corner is the part worth seeing.
        place.x = std::max(std::min(place.x, limits.right - width), limits.left);
        place.y = std::max(std::min(place.y, limits.bottom - height), limits.top);
    }
    if (IsChildWindow(window)) ScreenToClient(GetAncestor(window, GA_PARENT), &place);
    return SetWindowPos(window, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE;
}

void KX_MarkWindowToSkipPaint(HWND window) {
    if (kx::Subclass(window, SkippedProc)) SkippedWindows().insert(window);
}

bool KX_IsWindowMarkedToSkipPaint(HWND window) { return SkippedWindows().contains(window); }
