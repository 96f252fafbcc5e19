#include <kxdevui/framework/ui_control.h>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxsystem/kx_log.h>

namespace kx::ui {

namespace {

bool CanHaveFocus(HWND part) {
    return IsWindowEnabled(part) && IsWindowVisible(part) && !(SendMessageW(part, WM_GETDLGCODE, 0, 0) & DLGC_STATIC);
}

HWND PartForFocus(HWND window) {
    HWND first = nullptr;
    for (HWND part = GetWindow(window, GW_CHILD); part; part = GetWindow(part, GW_HWNDNEXT)) {
        if (!CanHaveFocus(part)) continue;
        if (GetWindowLongW(part, GWL_STYLE) & static_cast<LONG>(WS_TABSTOP)) return part;
        if (!first) first = part;
    }
    return first;
}

}  // namespace

Handled HandleFace(const Message& message, PaintMode mode) {
    switch (message.id) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        const auto draw = [&](HDC dc, const RECT& area) { Activity::DrawFace(message.window, dc, area); };
        return Paint(message, mode, KX_GetSysColorBrush(COLOR_BTNFACE), draw);
    }
    case WM_ERASEBKGND: return Erase(message);
    case WM_KX_ZOOM_CHANGED: ApplyZoom(message.window); return std::nullopt;
    case WM_KX_DESCRIBE: return Describe(message, [](KxAccess& access) { access.role = ROLE_SYSTEM_GROUPING; });
    default: return std::nullopt;
    }
}

LRESULT AnswerTextColor(const Message& message, bool enabled) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    SetTextColor(dc, KX_GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    SetBkColor(dc, KX_GetSysColor(COLOR_BTNFACE));
    return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_BTNFACE));
}

void EnableAll(HWND window, bool enable) {
    HWND next = nullptr;
    for (HWND part = GetWindow(window, GW_CHILD); part; part = next) {
        next = GetWindow(part, GW_HWNDNEXT);
        Enable(part, enable);
    }
}

KeepsFocus::KeepsFocus(HWND window) noexcept
    : m_window(window), m_had(window && IsChild(window, GetFocus()) != FALSE) {}

KeepsFocus::~KeepsFocus() {
    if (m_had && !GetFocus() && IsWindow(m_window) && IsWindowEnabled(m_window)) ::SetFocus(m_window);
}

// ---- The root of small controls -----------------------------------------------------------------------------------

Control::Control(Class& own, const Design& design) : m_class(&own) {
    m_width = design.size.cx;
    m_height = design.size.cy;
    m_title = design.title;
}

Control::~Control() {
    m_class = nullptr;
    Binding::EndOwnWindow(this);
}

HWND Control::MakeAt(const Creation& creation, HWND parent, POINT at, SIZE size) {
    const HWND window = creation.Window(this, m_class->atom,
                                        {.name = m_class->name,
                                         .object = m_class->name,
                                         .procedure = m_class->procedure,
                                         .ownLayout = m_class->ownLayout,
                                         .style = m_class->tabsInside ? DWORD{0} : DWORD{WS_TABSTOP},
                                         .extendedStyle = m_class->tabsInside ? DWORD{WS_EX_CONTROLPARENT} : 0,
                                         .font = !m_class->ownLayout},
                                        parent, at, size);
    const Parts parts(window, this);
    return parts && m_class->make(*this, parts) ? window : nullptr;
}

HWND Control::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    const bool isPart = IsMakingPartIn(parent);
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        const HWND window = MakeAt(creation, parent, {x, y}, {cx, cy});
        if (!window) return nullptr;
        if (!isPart) RegisterZoom(window);
        return creation.Done(this, window);
    });
}

// It stands among controls that have their sizes and fonts, whether those are zoomed already or will be: so no zoom of
// its own.
HWND Control::CreateInPlaceOf(HWND parent, HWND placeholder) {
    const HWND own = ParentOf(placeholder);
    const auto state = FindState(placeholder);
    const bool taken = ControlOf(placeholder) || (state && state->previous) || IsChild(m_hWnd, placeholder);
    if (!own || taken || (parent && parent != own)) {
        KX_LOG(L"devgui_control", L"window %p is no control of window %p that could be replaced",
               static_cast<void*>(placeholder), static_cast<void*>(parent));
        return nullptr;
    }
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        if (!IsWindow(placeholder)) return nullptr;
        constexpr LONG kept = WS_TABSTOP | WS_GROUP;
        const LONG style = GetWindowLongW(placeholder, GWL_STYLE);
        const RECT place = RectInParent(placeholder);
        const bool focused = GetFocus() == placeholder;
        if (m_id == 0) m_id = GetDlgCtrlID(placeholder);
        m_visible = (style & WS_VISIBLE) != 0;
        m_enabled = (style & WS_DISABLED) == 0;
        if (m_class->adopt) m_class->adopt(*this, placeholder);
        const HWND window =
            MakeAt(creation, own, {place.left, place.top}, {place.right - place.left, place.bottom - place.top});
        if (!window) return nullptr;
        SetWindowLongW(window, GWL_STYLE, (GetWindowLongW(window, GWL_STYLE) & ~kept) | (style & kept));
        SetFont(window, reinterpret_cast<HFONT>(SendMessageW(placeholder, WM_GETFONT, 0, 0)));
        CorrectZOrder(placeholder);
        if (focused) ::SetFocus(window);
        // The end of an edit that is typed into, say, is told to the parent.
        DestroyWindow(placeholder);
        return creation.Done(this, window);
    });
}

void Control::Destroy() { Binding::EndWindow(this); }

void Control::Remake() { MakePartsAnew(false); }

void Control::RemakeInPlace() {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(m_hWnd, WM_GETFONT, 0, 0));
    RECT client{};
    GetClientRect(m_hWnd, &client);
    if (!MakePartsAnew(true)) return;
    SetFont(m_hWnd, font);
    SendMessageW(m_hWnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}

bool Control::MakePartsAnew(bool inPlace) {
    const HWND window = m_hWnd, focus = GetFocus();
    const Parts parts(window, this);
    if (!parts) return false;
    const bool hadFocus = focus && IsChild(window, focus);
    {
        const Closing closing(window);
        // What loses it by its end would leave it to nobody.
        if (hadFocus) ::SetFocus(window);
        m_label = nullptr;
        // The parent is told of each, and may end the control.
        while (const HWND part = parts ? GetWindow(window, GW_CHILD) : nullptr)
            DestroySubclassed(part);
    }
    if (!parts) return false;
    // The parts stand unzoomed, and so has the window to.
    if (!inPlace) SetWindowPos(window, nullptr, 0, 0, m_width, m_height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (!parts || !m_class->make(*this, parts)) return false;
    if (!inPlace) RegisterZoom(window);
    if (const HWND part = hadFocus && GetFocus() == window ? PartForFocus(window) : nullptr) ::SetFocus(part);
    return static_cast<bool>(parts);
}

void Control::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    if (m_hWnd) EnableWindow(m_hWnd, enable);
}

void Control::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    if (m_label) SetWindowTextW(m_label, m_title);
}

LRESULT Control::Answer(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
    return Entry<Control, ByUserData<Control>, WM_NCCREATE, Unbound::Default, &Control::Handle>(
        {window, id, wParam, lParam});
}

Handled Control::Handle(const Message& message) {
    if (message.id == WM_DESTROY) m_label = nullptr;
    if (!m_class) return std::nullopt;
    if (m_class->handle) {
        const Alive alive(this);
        const Handled answer = m_class->handle(*this, message);
        if (answer || !alive) return answer;
    }
    switch (message.id) {
    case WM_COMMAND:
        if (m_class->command) m_class->command(*this, LOWORD(message.wParam), HIWORD(message.wParam));
        return 0;
    case WM_KX_UPDATE_DEVICE_BAND:
        if (m_class->update)
            m_class->update(*this, static_cast<CDMApi_LogDevId>(message.wParam),
                            reinterpret_cast<const void*>(message.lParam));
        return 0;
    case WM_CTLCOLORSTATIC: return AnswerTextColor(message, IsWindowEnabled(message.window) != FALSE);
    case WM_ENABLE: EnableAll(message.window, message.wParam != FALSE); return std::nullopt;
    case WM_SETFOCUS:
        if (const HWND part = PartForFocus(message.window)) ::SetFocus(part);
        return 0;
    default: return HandleFace(message, {.children = true, .buffered = false});
    }
}

}  // namespace kx::ui
