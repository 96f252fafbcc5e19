#include <kxbaseui/kx_tooltip.h>

#include <commctrl.h>

#include <unordered_map>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>

#include "kx_schemetip.h"
#include "kx_subclass.h"

namespace {

// The tooltip window of each top-level window, and of each tool. No properties of theirs, which under Wine would be
// asked for from another process.
std::unordered_map<HWND, HWND>& ToolTips() {
    static auto* windows = new std::unordered_map<HWND, HWND>;
    return *windows;
}
std::unordered_map<HWND, HWND>& Tools() {
    static auto* tools = new std::unordered_map<HWND, HWND>;
    return *tools;
}

HWND Found(const std::unordered_map<HWND, HWND>& windows, HWND key) {
    const auto found = windows.find(key);
    return found == windows.end() ? nullptr : found->second;
}

void ZoomToolTip(HWND tip) {
    SendMessageW(tip, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), FALSE);
    // Without a width, "\r\n" breaks no line.
    SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, CKxGUILayoutManager::Zoomed(400));
}

// The zoom is told to all windows of the thread. The tooltip ends with the window that owns it.
LRESULT CALLBACK TipProc(HWND tip, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CKxGUILayoutManager::ZoomChangedMessage) ZoomToolTip(tip);
    if (message == WM_DESTROY) {
        const auto isTips = [tip](const auto& entry) { return entry.second == tip; };
        std::erase_if(ToolTips(), isTips);
        std::erase_if(Tools(), isTips);
    }
    return kx::CallRest(TipProc, tip, message, wParam, lParam);
}

bool IsForToolTips(UINT message) {
    switch (message) {
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP: return true;
    default: return false;
    }
}

// What TTF_SUBCLASS would do, by the common controls' own subclassing, which is slow under Wine (kx_subclass.h).
LRESULT CALLBACK ToolProc(HWND tool, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) KX_DeleteToolTip(tool);
    if (const HWND tip = IsForToolTips(message) ? Found(Tools(), tool) : nullptr) {
        const DWORD at = GetMessagePos();
        const POINT place{static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
        MSG relayed{tool, message, wParam, lParam, static_cast<DWORD>(GetMessageTime()), place};
        SendMessageW(tip, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
    }
    return kx::CallRest(ToolProc, tool, message, wParam, lParam);
}

TOOLINFOW ToolInfo(HWND tool, const wchar_t* text) {
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V1_SIZE;  // what every version of the common controls takes
    info.uFlags = TTF_IDISHWND;
    info.hwnd = GetAncestor(tool, GA_PARENT);
    info.uId = reinterpret_cast<UINT_PTR>(tool);
    info.lpszText = const_cast<wchar_t*>(text);
    return info;
}

HWND MakeToolTip(HWND root) {
    static const bool registered = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
        return InitCommonControlsEx(&classes) != FALSE;
    }();
    if (!registered) return nullptr;
    const HWND window =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, root, nullptr, nullptr, nullptr);
    if (!window) return nullptr;
    ZoomToolTip(window);
    kx::Subclass(window, TipProc);
    kx::FollowColorSchemeInToolTip(window);
    ToolTips()[root] = window;
    return window;
}

}  // namespace

HWND KX_CreateToolTipWindow(HWND tool, const wchar_t* text) {
    const HWND root = IsWindow(tool) ? GetAncestor(tool, GA_ROOT) : nullptr;
    if (!root || root == tool) return nullptr;
    HWND window = KX_GetToolTipWindow(tool);
    if (!window) {
        if (!text || !*text || !(window = MakeToolTip(root))) return nullptr;
    }
    TOOLINFOW info = ToolInfo(tool, text ? text : L"");
    if (Found(Tools(), tool) == window) {
        SendMessageW(window, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    } else if (KX_DeleteToolTip(tool); text && *text && kx::Subclass(tool, ToolProc)) {
        // It has none yet, or has been moved to another window.
        SendMessageW(window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
        Tools()[tool] = window;
    }
    return window;
}

void KX_UpdateToolTipWindow(HWND tool, const wchar_t* text) { KX_CreateToolTipWindow(tool, text); }

HWND KX_GetToolTipWindow(HWND tool) { return IsWindow(tool) ? Found(ToolTips(), GetAncestor(tool, GA_ROOT)) : nullptr; }

void KX_DeleteToolTip(HWND tool) {
    const auto gone = Tools().extract(tool);
    if (!gone) return;
    TOOLINFOW info = ToolInfo(tool, nullptr);
    SendMessageW(gone.mapped(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}
