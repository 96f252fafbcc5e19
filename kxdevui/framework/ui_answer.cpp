#include <kxdevui/framework/ui_answer.h>

#include <algorithm>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_uihelper.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/framework/ui_window.h>

namespace kx::ui {

namespace {

// Unzoomed pixels: between the anchor and the answer, around its text, its widest line, the room of its sign.
constexpr int kGap = 5, kInset = 5, kWidest = 320, kSign = 14;

constexpr UINT_PTR kTimer = 1;
constexpr UINT kLookMilliseconds = 100;
// So long to find it and to read each of its characters.
constexpr DWORD kFindMilliseconds = 3000, kCharacterMilliseconds = 60;

struct Answer {
    HWND window = nullptr;
    HWND anchor = nullptr;
    RECT place{};  // of the anchor, on the screen
    DWORD from = 0, during = 0;
};

Answer& Shown() {
    static Answer answer;
    return answer;
}

void End() {
    if (const HWND window = std::exchange(Shown(), {}).window) DestroyWindow(window);
}

void LookAgain() {
    const Answer& shown = Shown();
    RECT place{};
    const bool stays = IsWindowVisible(shown.anchor) && GetWindowRect(shown.anchor, &place) &&
                       EqualRect(&place, &shown.place) && GetTickCount() - shown.from < shown.during;
    if (!stays) End();
}

LRESULT PaintAnswer(const Message& message) {
    return Paint(message, {}, KX_GetSysColorBrush(COLOR_INFOBK), [&message](HDC dc, RECT area) {
        const COLORREF alert = KX_GetVorGuiColor(eKxVorGuiColor_Alert);
        const Brush edge(CreateSolidBrush(alert));
        FrameRect(dc, &area, edge.get());
        const auto inset = CKxGUILayoutManager::Zoomed(kInset);
        InflateRect(&area, -inset, -inset);
        SetBkMode(dc, TRANSPARENT);
        {
            const Selection font(dc, KX_GetDefaultGuiFontBold());
            SetTextColor(dc, alert);
            DrawTextW(dc, L"!", 1, &area, DT_LEFT | DT_NOPREFIX);
        }
        area.left += CKxGUILayoutManager::Zoomed(kSign);
        const Selection font(dc, KX_GetDefaultGuiFont());
        SetTextColor(dc, KX_GetSysColor(COLOR_INFOTEXT));
        const CKxStringW text = TextOf(message.window);
        DrawTextW(dc, text, -1, &area, DT_LEFT | DT_NOPREFIX | DT_WORDBREAK);
    });
}

LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    const Message message{window, id, wParam, lParam};
    switch (id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: return Guarded([&]() -> Handled { return PaintAnswer(message); }).value_or(0);
    case WM_ERASEBKGND: return 1;
    case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
    case WM_NCHITTEST: return HTTRANSPARENT;
    case WM_TIMER: LookAgain(); return 0;
    case WM_SYSCOLORCHANGE: InvalidateRect(window, nullptr, FALSE); return 0;
    case WM_DESTROY:
        // Also with its owner.
        if (Shown().window == window) Shown() = {};
        return 0;
    case WM_NCDESTROY: DropState(window); return message.Default();
    default: return message.Default();
    }
}

SIZE SizeFor(const std::wstring& text) {
    const WindowDC dc(nullptr);
    const Selection font(dc, KX_GetDefaultGuiFont());
    RECT area{0, 0, CKxGUILayoutManager::Zoomed(kWidest), 0};
    DrawTextW(dc, text.c_str(), -1, &area, DT_LEFT | DT_NOPREFIX | DT_WORDBREAK | DT_CALCRECT);
    const long around = 2 * CKxGUILayoutManager::Zoomed(kInset);
    return {area.right + around + CKxGUILayoutManager::Zoomed(kSign), area.bottom + around};
}

POINT PlaceFor(const RECT& anchor, SIZE size) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&anchor, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const long gap = CKxGUILayoutManager::Zoomed(kGap), below = anchor.bottom + gap;
    const long y = below + size.cy <= work.bottom ? below : anchor.top - gap - size.cy;
    return {std::max(work.left, std::min(anchor.left, work.right - size.cx)), y};
}

}  // namespace

void ShowAnswer(HWND anchor, const std::wstring& text) {
    End();
    RECT place{};
    if (text.empty() || !IsWindowVisible(anchor) || !GetWindowRect(anchor, &place)) return;
    static ATOM atom = 0;
    EnsureClass(atom, {.name = L"KxDevUI_Answer", .object = L"kx::ui::Answer", .procedure = WndProc, .extraBytes = 0});
    const SIZE size = SizeFor(text);
    const POINT at = PlaceFor(place, size);
    const HWND window = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_TRANSPARENT,
                                        MAKEINTATOM(atom), text.c_str(), WS_POPUP, at.x, at.y, size.cx, size.cy,
                                        GetAncestor(anchor, GA_ROOT), nullptr, ModuleOf(WndProc), nullptr);
    if (!window) return;
    const auto reading = static_cast<DWORD>(std::min<std::size_t>(text.size(), 200)) * kCharacterMilliseconds;
    Shown() = {window, anchor, place, GetTickCount(), kFindMilliseconds + reading};
    SetTimer(window, kTimer, kLookMilliseconds, nullptr);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    UpdateWindow(window);
    NotifyWinEvent(EVENT_SYSTEM_ALERT, window, OBJID_CLIENT, CHILDID_SELF);
}

void HideAnswer(HWND anchor) noexcept {
    if (anchor && Shown().anchor == anchor) End();
}

HWND AnswerWindow() noexcept { return Shown().window; }

}  // namespace kx::ui
