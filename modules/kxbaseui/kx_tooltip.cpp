#include <kxbaseui/kx_tooltip.h>

#include <commctrl.h>

#include <unordered_map>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

#include "kx_schemetip.h"
#include "kx_subclass.h"

namespace {

// The tooltip window of each parent. Not a property of the parent, which under Wine would be asked for from another
// process for every tool.
std::unordered_map<HWND, HWND>& ToolTips() {
    static auto* windows = new std::unordered_map<HWND, HWND>;
    return *windows;
}

HWND ToolTipOf(HWND parent) {
    const auto found = ToolTips().find(parent);
    return found == ToolTips().end() ? nullptr : found->second;
}

void ZoomToolTip(HWND tip) {
    SendMessageW(tip, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    // Without a width, "\r\n" breaks no line.
    SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, CKxGUILayoutManager::Zoomed(400));
}

// The parent is subclassed because a popup owned by a child window belongs in truth to its top-level window and would
// outlive the panel; the zoom is heard on the way.
LRESULT CALLBACK ParentProc(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) {
    // While the tools still live: the tooltip window has its hooks in them, which it takes out only as it goes.
    if (message == WM_DESTROY) {
        if (auto gone = ToolTips().extract(parent)) DestroyWindow(gone.mapped());
    }
    if (message == CKxGUILayoutManager::ZoomChangedMessage) {
        if (const HWND tip = ToolTipOf(parent)) ZoomToolTip(tip);
    }
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
    ZoomToolTip(window);
    if (!kx::Subclass(parent, ParentProc)) {
        DestroyWindow(window);
        return nullptr;
    }
    kx::FollowColorSchemeInToolTip(window);
    ToolTips()[parent] = window;
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

HWND KX_GetToolTipWindow(HWND tool) { return IsWindow(tool) ? ToolTipOf(GetAncestor(tool, GA_PARENT)) : nullptr; }

void KX_DeleteToolTip(HWND tool) {
    const HWND window = KX_GetToolTipWindow(tool);
    if (!window) return;
    TOOLINFOW info = ToolInfo(tool, nullptr);
    SendMessageW(window, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}
