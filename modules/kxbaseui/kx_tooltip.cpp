#include <kxbaseui/kx_tooltip.h>

#include <commctrl.h>

#include "kx_subclass.h"

namespace {

// The property of a parent that names its tooltip window.
constexpr wchar_t kProperty[] = L"KxToolTip";

// The parent is subclassed for one reason: a popup owned by a child window belongs in truth to its top-level window and
// would outlive the panel.
LRESULT CALLBACK ParentProc(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) {
    // While the tools still live: the tooltip window has its hooks in them, which it takes out only as it goes.
    if (message == WM_DESTROY) DestroyWindow(static_cast<HWND>(RemovePropW(parent, kProperty)));
    return kx::CallRest(ParentProc, parent, message, wParam, lParam);
}

TOOLINFOW ToolInfo(HWND tool, const wchar_t* text) {
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V1_SIZE;  // what every version of the common controls takes
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    info.hwnd = GetAncestor(tool, GA_PARENT);
    info.uId = reinterpret_cast<UINT_PTR>(tool);
    info.lpszText = const_cast<wchar_t*>(text);
    return info;
}

HWND ToolTipOf(HWND parent) { return static_cast<HWND>(GetPropW(parent, kProperty)); }

HWND MakeToolTip(HWND parent) {
    static const bool registered = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
        return InitCommonControlsEx(&classes) != FALSE;
    }();
    if (!registered) return nullptr;
    const HWND window =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, parent, nullptr, nullptr, nullptr);
    if (!window) return nullptr;
    SendMessageW(window, TTM_SETMAXTIPWIDTH, 0, 400);  // without a width, "\r\n" breaks no line
    if (!kx::Subclass(parent, ParentProc)) {
        DestroyWindow(window);
        return nullptr;
    }
    SetPropW(parent, kProperty, window);
    return window;
}

}  // namespace

HWND KX_CreateToolTipWindow(HWND tool, const wchar_t* text) {
    const HWND parent = IsWindow(tool) ? GetAncestor(tool, GA_PARENT) : nullptr;
    if (!parent || parent == GetDesktopWindow()) return nullptr;
    HWND window = ToolTipOf(parent);
    if (!window) {
        if (!text || !*text) return nullptr;
        window = MakeToolTip(parent);
        if (!window) return nullptr;
    }
    TOOLINFOW info = ToolInfo(tool, text ? text : L"");
    TOOLINFOW known = ToolInfo(tool, nullptr);
    if (SendMessageW(window, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&known))) {
        SendMessageW(window, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    } else {
        SendMessageW(window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    }
    return window;
}

void KX_UpdateToolTipWindow(HWND tool, const wchar_t* text) { KX_CreateToolTipWindow(tool, text); }

void KX_DeleteToolTip(HWND tool) {
    const HWND parent = IsWindow(tool) ? GetAncestor(tool, GA_PARENT) : nullptr;
    const HWND window = parent ? ToolTipOf(parent) : nullptr;
    if (!window) return;
    TOOLINFOW info = ToolInfo(tool, nullptr);
    SendMessageW(window, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}
