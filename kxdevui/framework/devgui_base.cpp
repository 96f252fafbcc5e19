#include <kxdevui/framework/devgui_base.h>

#include <cwchar>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

CKxDevUI_Base::CKxDevUI_Base() { kx::ui::Life::Begin(this); }

CKxDevUI_Base::CKxDevUI_Base(long height, long width) : m_width(width), m_height(height) { kx::ui::Life::Begin(this); }

CKxDevUI_Base::CKxDevUI_Base(const CKxDevUI_Base& other)
    : m_hWnd(other.m_hWnd), m_width(other.m_width), m_height(other.m_height), m_enabled(other.m_enabled),
      m_flag(other.m_flag), m_visible(other.m_visible), m_title(other.m_title), m_id(other.m_id) {
    kx::ui::Life::Begin(this);
}

CKxDevUI_Base::~CKxDevUI_Base() {
    kx::ui::Binding::CutLoose(this);
    kx::ui::Life::End(this);
}

bool CKxDevUI_Base::GetEnabled() { return m_enabled; }

void CKxDevUI_Base::SetEnabled(bool enable) { m_enabled = enable; }

bool CKxDevUI_Base::GetVisible() { return m_visible; }

void CKxDevUI_Base::SetVisible(bool visible) {
    if (visible == m_visible) return;
    m_visible = visible;
    ShowWindow(m_hWnd, visible ? SW_SHOW : SW_HIDE);
}

CKxStringW CKxDevUI_Base::GetTitle() { return m_title; }

void CKxDevUI_Base::SetTitle(const wchar_t* title) {
    if (!(m_title == title)) m_title = title;
}

void CKxDevUI_Base::SetFocus() { ::SetFocus(m_hWnd); }

void CKxDevUI_Base::SetRedraw(bool redraw) { SendMessageW(m_hWnd, WM_SETREDRAW, redraw ? TRUE : FALSE, 0); }

void CKxDevUI_Base::GetWindowSize(SIZE* size) {
    if (!size) return;
    size->cx = m_width;
    size->cy = m_height;
}

void CKxDevUI_Base::RefreshWindow() {
    // Without a window this would invalidate the desktop.
    if (m_hWnd) {
        RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
    }
}

void CKxDevUI_Base::GetWindowPosition(long* x, long* y) {
    const RECT rect = RectInParent(m_hWnd);
    if (x) *x = rect.left;
    if (y) *y = rect.top;
}

void CKxDevUI_Base::GetWindowRectangle(RECT* rect) {
    if (rect) *rect = RectInParent(m_hWnd);
}

void CKxDevUI_Base::MoveWindow(long x, long y) {
    if (x == -1 || y == -1) {
        long currentX = 0, currentY = 0;
        GetWindowPosition(&currentX, &currentY);
        if (x == -1) x = currentX;
        if (y == -1) y = currentY;
    }
    ::MoveWindow(m_hWnd, x, y, m_width, m_height, TRUE);
}

void CKxDevUI_Base::MoveWindowRelative(long dx, long dy) {
    const RECT rect = RectInParent(m_hWnd);
    ::MoveWindow(m_hWnd, kx::ui::Sum(rect.left, dx), kx::ui::Sum(rect.top, dy), rect.right - rect.left,
                 rect.bottom - rect.top, TRUE);
}

void CKxDevUI_Base::ResizeWindow(long cx, long cy) {
    if (cx == -1 || cy == -1) {
        RECT rect{};
        GetWindowRectangle(&rect);
        if (cx == -1) cx = rect.right - rect.left;
        if (cy == -1) cy = rect.bottom - rect.top;
    }
    m_width = cx;
    m_height = cy;
    SetWindowPos(m_hWnd, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CKxDevUI_Base::ResizeWindowRelative(long dcx, long dcy) {
    m_width = kx::ui::Sum(m_width, dcx);
    m_height = kx::ui::Sum(m_height, dcy);
    SetWindowPos(m_hWnd, nullptr, 0, 0, m_width, m_height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool CKxDevUI_Base::HandleMouseWheel(WPARAM, LPARAM) { return false; }

long CKxDevUI_Base::GetWidth() const { return CKxGUILayoutManager::Zoomed(m_width); }
long CKxDevUI_Base::GetHeight() const { return CKxGUILayoutManager::Zoomed(m_height); }

long CKxDevUI_Base::GetPositionX() const { return GetWndX(m_hWnd); }
long CKxDevUI_Base::GetPositionY() const { return GetWndY(m_hWnd); }

void CKxDevUI_Base::SetTabStop(bool stop) { kx::ui::SetStyleBit(m_hWnd, GWL_STYLE, WS_TABSTOP, stop); }

void CKxDevUI_Base::CorrectZOrder(HWND next) {
    // No window before it means that it is the first, and null then says "to the top".
    SetWindowPos(m_hWnd, GetWindow(next, GW_HWNDPREV), 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

void CKxDevUI_Base::ReportError(const wchar_t* text, bool showMessageBox, HWND focusAfter, HWND labelWindow) {
    constexpr std::size_t kBufferSize = 1000;
    wchar_t message[kBufferSize] = L"";
    if (labelWindow) {
        const int length = GetWindowTextW(labelWindow, message, static_cast<int>(kBufferSize));
        const bool hasColon = length > 0 && message[length - 1] == L':';
        std::wcsncat(message, hasColon ? L" " : L": ", kBufferSize - 1 - std::wcslen(message));
    }
    std::wcsncat(message, text ? text : L"", kBufferSize - 1 - std::wcslen(message));

    if (showMessageBox) {
        const CKxStringW caption = KX_GetTranslation(L"Error!", L"devgui_base");
        if (!kx::ui::Complain(m_hWnd, focusAfter, message, caption, MB_ICONERROR)) return;
    } else {
        CKxLogFile::Location(L"devgui_base", 230);
        if (CKxLogFile::Detail()) CKxLogFile::Line(L"CKxDevUI_Base::ReportError - %ls", message);
    }
    if (focusAfter) ::SetFocus(focusAfter);
}
