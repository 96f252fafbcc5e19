#include <kxdevui/controls/devgui_imagebutton.h>

#include <algorithm>

#include <windowsx.h>

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/imagebutton_rules.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>

using namespace kx::ui;
using kx::imagebutton::Places;

namespace {

constexpr UINT_PTR kRepeatTimer = 1;

long TextHeight(HWND button) {
    const WindowDC dc(button);
    const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(button, WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return metrics.tmHeight;
}

void DrawArrow(HDC dc, const RECT& area, COLORREF color) {
    const Selection brush(dc, GetStockObject(DC_BRUSH)), pen(dc, GetStockObject(NULL_PEN));
    SetDCBrushColor(dc, color);
    const long half = CKxGUILayoutManager::Zoomed(3);
    const long x = (area.left + area.right) / 2, y = (area.top + area.bottom - half) / 2;
    const POINT corners[] = {{x - half, y}, {x + half, y}, {x, y + half}};
    Polygon(dc, corners, 3);
}

bool IsFirst(const Message& key) { return (HIWORD(key.lParam) & KF_REPEAT) == 0; }

}  // namespace

CKxDevUI_ImageButton::CKxDevUI_ImageButton()
    : ButtonControl(this, {.name = L"KxDevUI_ImageButton", .size = {28, 28}, .title = {}, .ownLayout = true},
                    Drawn::ByControl) {}

CKxDevUI_ImageButton::~CKxDevUI_ImageButton() { Binding::EndOwnWindow(this); }

bool CKxDevUI_ImageButton::Make(const Parts& parts) {
    m_heldBy = 0;
    m_menuOpen = false;
    return MakeButton(parts, BS_OWNERDRAW, ButtonProc);
}

// ---- Settings ------------------------------------------------------------------------------------------------------

void CKxDevUI_ImageButton::SetImages(const KxButtonImages<const wchar_t*>& names) {
    const auto find = [](const wchar_t* name) { return name ? CKxBitmapPool::AddImageBaseUI(name) : 0; };
    m_images = {find(names.normal), find(names.hovered), find(names.pressed), find(names.checked),
                find(names.disabled)};
    Redraw();
}

void CKxDevUI_ImageButton::SetTextPlace(EKxButtonText place) {
    m_textPlace = place;
    Redraw();
}

void CKxDevUI_ImageButton::SetToggle(bool toggle) {
    m_toggle = toggle;
    StopRepeating();
    Redraw();
}

void CKxDevUI_ImageButton::SetState(bool on) { Hold(on ? 1 : 0); }

void CKxDevUI_ImageButton::SetAutoRepeat(int delay, int interval) {
    m_delay = std::max(0, delay);
    m_interval = std::max<int>(USER_TIMER_MINIMUM, interval);
    StopRepeating();
}

void CKxDevUI_ImageButton::SetMenu(const CKxMenu& menu) {
    m_menu = menu;
    Redraw();
}

void CKxDevUI_ImageButton::Redraw() const {
    if (m_button) InvalidateRect(m_button, nullptr, FALSE);
}

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_ImageButton::OnClickRequest(bool&) { NotifyParent(m_id); }
void CKxDevUI_ImageButton::OnStateChangeRequest(bool, bool&) { NotifyParent(m_id); }
void CKxDevUI_ImageButton::OnMenuRequest(int command) { NotifyParent(command); }

// False when the host has refused, or ended the control.
bool CKxDevUI_ImageButton::Click() {
    if (!m_toggle) return IsGranted(0, [this](bool& veto) { OnClickRequest(veto); });
    const bool on = m_state == 0;
    const bool granted = IsGranted(on ? 1 : 0, [&](bool& veto) { OnStateChangeRequest(on, veto); });
    if (granted) SetState(on);
    return granted;
}

void CKxDevUI_ImageButton::OpenMenu() {
    if (m_menu.GetCount() == 0 || m_menuOpen) return;
    RECT place{};
    GetWindowRect(m_button, &place);
    const Alive alive(this);
    m_menuOpen = true;
    Redraw();
    const int command = m_menu.TrackContextMenu(eKxMenuTrack_ReturnCommand | eKxMenuTrack_KeepControl, place.left,
                                                place.bottom, m_hWnd);
    if (!alive) return;
    m_menuOpen = false;
    Redraw();
    if (command != 0 && m_hWnd) OnMenuRequest(command);
}

// ---- While it is held ----------------------------------------------------------------------------------------------

Handled CKxDevUI_ImageButton::Press(const Message& message, int key) {
    if (m_delay == 0 || m_toggle || m_heldBy != 0) return std::nullopt;
    const Alive alive(this);
    m_heldBy = key;
    // Takes mouse and focus, which may be the end.
    CallPrevious(message);
    const bool granted = alive && m_button == message.window && Click();
    if (!alive) return 0;
    // It may have been let go meanwhile.
    if (granted && m_heldBy == key && GetCapture() == m_button) {
        SetTimer(m_button, kRepeatTimer, static_cast<UINT>(m_delay), nullptr);
    } else {
        StopRepeating();
    }
    return 0;
}

void CKxDevUI_ImageButton::Repeat() {
    const HWND button = m_button;
    // A release that somebody else has swallowed must not leave a stage on its way.
    const bool held = m_heldBy != 0 && GetCapture() == button && GetKeyState(m_heldBy) < 0 && IsWindowVisible(button);
    const Alive alive(this);
    if (!held && GetCapture() == button) ReleaseCapture();
    // No second one while the host is still busy with this.
    KillTimer(button, kRepeatTimer);
    const bool granted = held && Click();
    if (!alive || m_button != button) return;
    if (granted && m_heldBy != 0) {
        SetTimer(button, kRepeatTimer, static_cast<UINT>(m_interval), nullptr);
    } else {
        StopRepeating();
    }
}

void CKxDevUI_ImageButton::StopRepeating() {
    if (m_heldBy == 0) return;
    m_heldBy = 0;
    if (m_button) KillTimer(m_button, kRepeatTimer);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

void CKxDevUI_ImageButton::Command(int, int code) {
    // One that repeats has asked when it was pressed.
    if (code == BN_CLICKED && (m_toggle || m_delay == 0)) Click();
}

Handled CKxDevUI_ImageButton::Handle(const Message& message) {
    switch (message.id) {
    case WM_MEASUREITEM:
        return m_menu.MeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(message.lParam)) ? Handled(TRUE) : Handled();
    case WM_DRAWITEM: {
        if (message.lParam == 0) return 1;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
        if (item.CtlType == ODT_MENU) return m_menu.DrawItem(item) ? Handled(TRUE) : Handled();
        Draw(item);
        return 1;
    }
    // A dialog's way to a toggle.
    case BM_SETCHECK: SetState(message.wParam != BST_UNCHECKED); return 0;
    case WM_DESTROY: StopRepeating(); return HandleWindow(message);
    default: return HandleWindow(message);
    }
}

LRESULT CALLBACK CKxDevUI_ImageButton::ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return SubclassEntry<CKxDevUI_ImageButton, &CKxDevUI_ImageButton::HandleButton, Unbound::Default,
                         ByState<CKxDevUI_ImageButton>>({window, id, wParam, lParam});
}

Handled CKxDevUI_ImageButton::HandleButton(const Message& message) {
    const HWND button = message.window;
    if (button != m_button) return std::nullopt;
    if (TrackHover(message)) Redraw();
    const POINT at{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    switch (message.id) {
    case WM_ERASEBKGND: return 1;
    // The second of two quick clicks is one more: the platform would tell of it otherwise.
    case WM_LBUTTONDBLCLK: return SendMessageW(button, WM_LBUTTONDOWN, message.wParam, message.lParam);
    case WM_LBUTTONDOWN: {
        // With the buttons swapped it is the platform's affair which of them it calls the left one.
        if (!IsOnArrow(at)) return Press(message, GetKeyState(VK_RBUTTON) < 0 ? VK_RBUTTON : VK_LBUTTON);
        const Alive alive(this);
        ::SetFocus(button);
        if (alive && m_button == button) OpenMenu();
        return 0;
    }
    case WM_MOUSEMOVE: {
        RECT client{};
        GetClientRect(button, &client);
        if (m_heldBy != 0 && m_heldBy != VK_SPACE && !PtInRect(&client, at)) ReleaseCapture();
        return std::nullopt;
    }
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
    case WM_KILLFOCUS: StopRepeating(); return std::nullopt;
    case WM_ENABLE:
        if (message.wParam) return std::nullopt;
        StopRepeating();
        if (GetCapture() == button) ReleaseCapture();
        return std::nullopt;
    case WM_KX_DESCRIBE:
        return Describe(message, [this](KxAccess& access) {
            if (m_toggle) access.role = ROLE_SYSTEM_CHECKBUTTON;
            if (m_toggle && m_state != 0 && IsKnown()) access.state |= STATE_SYSTEM_CHECKED;
            if (m_menu.GetCount() > 0) access.state |= STATE_SYSTEM_HASPOPUP;
        });
    case WM_TIMER:
        if (message.wParam != kRepeatTimer) return std::nullopt;
        Repeat();
        return 0;
    case WM_GETDLGCODE:
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYDOWN: return HandleKey(message);
    default: return std::nullopt;
    }
}

Handled CKxDevUI_ImageButton::HandleKey(const Message& message) {
    const bool hasMenu = m_menu.GetCount() > 0;
    const auto opens = [&](WPARAM key) { return hasMenu && (key == VK_DOWN || key == VK_F4); };
    if (message.id == WM_GETDLGCODE) {
        // Only to the dialog manager, which asks about a message.
        const auto* const asked = reinterpret_cast<const MSG*>(message.lParam);
        if (!asked || asked->message != WM_KEYDOWN) return std::nullopt;
        return asked->wParam == VK_RETURN || opens(asked->wParam) ? Handled(DLGC_BUTTON | DLGC_WANTMESSAGE)
                                                                  : std::nullopt;
    }
    const WPARAM key = message.wParam;
    if (message.id == WM_KEYUP) {
        if (key == VK_SPACE) StopRepeating();
        return std::nullopt;
    }
    // Alt and F4 end the program.
    if (message.id == WM_SYSKEYDOWN ? hasMenu && key == VK_DOWN : opens(key)) {
        OpenMenu();
        return 0;
    }
    if (message.id == WM_SYSKEYDOWN) return std::nullopt;
    if (key == VK_SPACE && IsFirst(message)) return Press(message, VK_SPACE);
    if (key != VK_RETURN) return std::nullopt;
    // A key that is kept down is one click.
    if (IsFirst(message)) Click();
    return 0;
}

// ---- Drawing -------------------------------------------------------------------------------------------------------

bool CKxDevUI_ImageButton::IsOnArrow(POINT at) const {
    RECT client{};
    GetClientRect(m_button, &client);
    const Places places = kx::imagebutton::Arrange({client.right, client.bottom}, {.hasMenu = m_menu.GetCount() > 0},
                                                   CKxGUILayoutManager::GetGuiZoom());
    return PtInRect(&places.arrow, at) != FALSE;
}

void CKxDevUI_ImageButton::Draw(const DRAWITEMSTRUCT& item) const {
    const bool enabled = (item.itemState & ODS_DISABLED) == 0, known = IsKnown();
    // A state that nobody knows is shown as none.
    const bool checked = m_toggle && m_state != 0 && known, on = checked && m_requests->ShowsHeld();
    const int asked = ButtonLook(item), look = asked | (on ? eKxButtonLook_On : 0);
    const bool pressed = (asked & eKxButtonLook_Pressed) != 0;
    const bool hasMenu = m_menu.GetCount() > 0;
    const int image = kx::imagebutton::ImageOf(
        m_images, {.enabled = enabled, .pressed = pressed, .on = checked, .hovered = (asked & eKxButtonLook_Hot) != 0});
    const bool hasText = m_textPlace != EKxButtonText::None && !m_title.IsEmpty();
    PaintItem(item, KX_GetSysColorBrush(COLOR_BTNFACE), [&](HDC dc, const RECT& area) {
        Places places =
            kx::imagebutton::Arrange({area.right, area.bottom},
                                     {.text = hasText ? m_textPlace : EKxButtonText::None,
                                      .textHeight = m_textPlace == EKxButtonText::Below ? TextHeight(item.hwndItem) : 0,
                                      .hasImage = m_images.normal != CKxBitmapPool::NoImage,
                                      .hasMenu = hasMenu},
                                     CKxGUILayoutManager::GetGuiZoom());
        KX_DrawButtonBackground(dc, places.body, look, COLOR_BTNFACE);
        if (hasMenu) {
            const int shared = asked & ~(eKxButtonLook_Pressed | eKxButtonLook_Focused);
            const int arrow = shared | (m_menuOpen ? eKxButtonLook_Pressed : 0);
            KX_DrawButtonBackground(dc, places.arrow, arrow, COLOR_BTNFACE);
            DrawArrow(dc, places.arrow, KX_GetButtonTextColor(arrow));
        }
        const long moved = pressed || on ? 1 : 0;
        OffsetRect(&places.image, moved, moved);
        OffsetRect(&places.text, moved, moved);
        const bool pale = !known || (!enabled && m_images.disabled == CKxBitmapPool::NoImage);
        CKxBitmapPool::DrawOptimalImage(dc, image, places.image, !pale);
        if (hasText) {
            const Selection font(dc, reinterpret_cast<HFONT>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0)));
            SetBkMode(dc, TRANSPARENT);
            SetTextColor(dc, KX_GetButtonTextColor(look));
            const UINT across = IsRectEmpty(&places.image) || m_textPlace == EKxButtonText::Below ? DT_CENTER : DT_LEFT;
            const UINT letters = KX_ShowsMnemonics(item.hwndItem) ? 0 : DT_HIDEPREFIX;
            DrawTextW(dc, m_title, -1, &places.text, across | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | letters);
        }
        m_requests->DrawButton(dc, area, places.body, enabled);
        if (ShowsFocus(item)) KX_DrawButtonFocus(dc, places.body, look, 3);
    });
}
