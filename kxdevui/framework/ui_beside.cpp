#include <kxdevui/framework/ui_beside.h>

#include <algorithm>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

namespace {

constexpr int kGap = 5;  // unzoomed, between the anchor and the window
constexpr UINT_PTR kTimer = 1;
constexpr UINT kLookMilliseconds = 100;

// Whose end the Escape key is.
Beside* s_escaped = nullptr;

RECT PlaceFor(const RECT& anchor, SIZE size) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&anchor, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const long gap = CKxGUILayoutManager::Zoomed(kGap), below = anchor.bottom + gap;
    const long y = below + size.cy <= work.bottom ? below : anchor.top - gap - size.cy;
    const long x = std::max(work.left, std::min(anchor.left, work.right - size.cx));
    return {x, y, x + size.cx, y + size.cy};
}

}  // namespace

HWND Beside::Show(HWND anchor, BesidePicture picture, std::function<bool()> stays, Ends ends) {
    End();
    RECT place{};
    if (!IsWindowVisible(anchor) || !GetWindowRect(anchor, &place)) return nullptr;
    EnsureClass(m_atom, {.name = m_name, .object = m_name, .procedure = WndProc, .extraBytes = 0});
    const RECT at = PlaceFor(place, picture.size);
    const HWND window =
        CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_TRANSPARENT, MAKEINTATOM(m_atom),
                        picture.text.c_str(), WS_POPUP, at.left, at.top, at.right - at.left, at.bottom - at.top,
                        GetAncestor(anchor, GA_ROOT), nullptr, ModuleOf(WndProc), this);
    if (!window) return nullptr;
    m_window = window;
    m_anchor = anchor;
    m_picture = std::move(picture);
    m_stays = std::move(stays);
    if (ends == Ends::ByEscape) {
        if (s_escaped && s_escaped != this) s_escaped->m_hook.reset();
        s_escaped = this;
        m_hook.reset(SetWindowsHookExW(WH_KEYBOARD, HearKey, nullptr, GetCurrentThreadId()));
    }
    SetTimer(window, kTimer, kLookMilliseconds, nullptr);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    UpdateWindow(window);
    return m_window;
}

void Beside::Change(BesidePicture picture) {
    RECT anchor{}, now{};
    if (!GetWindowRect(m_window, &now) || !GetWindowRect(m_anchor, &anchor)) return;
    const RECT at = PlaceFor(anchor, picture.size);
    const bool same = EqualRect(&at, &now) && picture.text == m_picture.text;
    if (!EqualRect(&at, &now))
        SetWindowPos(m_window, nullptr, at.left, at.top, at.right - at.left, at.bottom - at.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    if (picture.text != m_picture.text) SetWindowTextW(m_window, picture.text.c_str());
    m_picture = std::move(picture);
    if (!same) InvalidateRect(m_window, nullptr, FALSE);
}

void Beside::End() {
    const HWND window = m_window;
    Gone();
    if (window) DestroyWindow(window);
}

void Beside::Gone() {
    m_window = m_anchor = nullptr;
    m_picture = {};
    m_stays = nullptr;
    m_hook.reset();
}

LRESULT CALLBACK Beside::HearKey(int code, WPARAM wParam, LPARAM lParam) {
    constexpr LPARAM isReleased = LPARAM{1} << 31;
    if (code != HC_ACTION || wParam != VK_ESCAPE || (lParam & isReleased) != 0 || !s_escaped->m_window)
        return CallNextHookEx(nullptr, code, wParam, lParam);
    s_escaped->End();
    return 1;
}

void Beside::LookAgain() {
    const HWND window = m_window;
    // It may be replaced while it is asked.
    const auto stays = m_stays;
    const bool goes = !IsWindowVisible(m_anchor) || (stays && !stays());
    if (goes && m_window == window) End();
}

LRESULT CALLBACK Beside::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    const Message message{window, id, wParam, lParam};
    if (id == WM_NCCREATE)
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(CreationParameter(message)));
    auto* const self = reinterpret_cast<Beside*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const bool shown = self && self->m_window == window;
    switch (id) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
        if (!shown) break;
        return Guarded([&]() -> Handled {
                   return Paint(message, {}, KX_GetSysColorBrush(COLOR_INFOBK), [self](HDC dc, const RECT& area) {
                       SetBkMode(dc, TRANSPARENT);
                       SetTextColor(dc, KX_GetSysColor(COLOR_INFOTEXT));
                       self->m_picture.draw(dc, area);
                   });
               })
            .value_or(0);
    case WM_ERASEBKGND: return 1;
    case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
    case WM_NCHITTEST: return HTTRANSPARENT;
    case WM_TIMER:
        if (shown) Guarded([self]() -> Handled { return self->LookAgain(), 0; });
        return 0;
    case WM_SYSCOLORCHANGE: InvalidateRect(window, nullptr, FALSE); return 0;
    case WM_DESTROY:
        // Also with its owner.
        if (shown) self->Gone();
        return 0;
    case WM_NCDESTROY: DropState(window); break;
    default: break;
    }
    return message.Default();
}

}  // namespace kx::ui
