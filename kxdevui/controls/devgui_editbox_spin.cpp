#include <kxdevui/controls/devgui_editbox_spin.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/editbox_rules.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_arithmetic.h>
#include <kxdevui/framework/ui_field.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

using kx::ui::Alive;

namespace {

constexpr int kMostPositions = 1000000;
constexpr long kArrowsWidth = 17;
constexpr int kPageSteps = 10;

// After so many seconds, so many steps at a time.
constexpr std::array<UDACCEL, 3> kAcceleration{{{0, 1}, {2, 5}, {5, 20}}};

int StepsHeld(DWORD milliseconds) {
    UINT steps = 1;
    for (const UDACCEL& each : kAcceleration) {
        if (milliseconds >= each.nSec * 1000) steps = each.nInc;
    }
    return static_cast<int>(steps);
}

}  // namespace

// ---- The arrows ----------------------------------------------------------------------------------------------------

CKxDevUI_SpinBox::CKxDevUI_SpinBox()
    : m_first(-kMostPositions), m_last(kMostPositions), m_lowest(-kMostPositions), m_highest(kMostPositions) {
    m_width = kArrowsWidth;
    m_height = 20;
}

CKxDevUI_SpinBox::~CKxDevUI_SpinBox() { Destroy(); }

bool CKxDevUI_SpinBox::IsOwn() const {
    const auto self = reinterpret_cast<LONG_PTR>(static_cast<const CKxDevUI_Base*>(this));
    return m_hWnd && GetWindowLongPtrW(m_hWnd, GWLP_USERDATA) == self;
}

HWND CKxDevUI_SpinBox::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::ui::Creation::Of(this, [&](const kx::ui::Creation& creation) -> HWND {
        if (cx >= 0) m_width = cx;
        if (cy >= 0) m_height = cy;
        // Registers the platform's class; once is enough, and each time costs.
        static const bool registered = [] {
            const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_UPDOWN_CLASS};
            return InitCommonControlsEx(&wanted) != FALSE;
        }();
        if (!registered) return nullptr;
        DWORD style = WS_CHILD;
        if (m_visible) style |= WS_VISIBLE;
        if (!m_enabled) style |= WS_DISABLED;
        const HWND window = CreateWindowExW(0, UPDOWN_CLASSW, nullptr, style, x, y, m_width, m_height, parent,
                                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(m_id)),
                                            kx::ui::ModuleOf(WndProc_UpDown), nullptr);
        if (!creation) {
            // Nobody else knows of it.
            if (window) DestroyWindow(window);
            return nullptr;
        }
        m_hWnd = window;
        if (!window) return nullptr;
        // Wine's makes itself 16 wide at most as it is created, and would be wider after a zoom there and back.
        RECT made{};
        GetWindowRect(m_hWnd, &made);
        if (made.right - made.left != m_width) {
            SetWindowPos(m_hWnd, nullptr, 0, 0, m_width, m_height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        SendMessageW(m_hWnd, UDM_SETACCEL, kAcceleration.size(), reinterpret_cast<LPARAM>(kAcceleration.data()));
        SendMessageW(m_hWnd, UDM_SETRANGE32, static_cast<WPARAM>(m_lowest), m_highest);
        kx::ui::Subclass(m_hWnd, WndProc_UpDown, static_cast<CKxDevUI_Base*>(this));
        return m_hWnd;
    });
}

void CKxDevUI_SpinBox::Destroy() {
    const HWND window = IsOwn() ? m_hWnd : nullptr;
    m_hWnd = nullptr;
    if (!window) return;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    kx::ui::DestroySubclassed(window);
}

void CKxDevUI_SpinBox::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    EnableWindow(m_hWnd, enable ? TRUE : FALSE);
}

void CKxDevUI_SpinBox::SetRange(double first, double last, int count) {
    if (!std::isfinite(first) || !std::isfinite(last) || count < 1 || count > kMostPositions) {
        KX_LOG(L"devgui_editbox", L"%d positions from %g to %g are no range", count, first, last);
        return;
    }
    m_first = first;
    m_last = last;
    m_lowest = 0;
    m_highest = count - 1;
    SendMessageW(m_hWnd, UDM_SETRANGE32, 0, m_highest);
    SetPosition(GetPosition());
}

double CKxDevUI_SpinBox::ValueOf(int position) const {
    return kx::ui::SpinValue(position, m_first, m_last, m_lowest, m_highest);
}

int CKxDevUI_SpinBox::PositionOf(double value) const {
    return kx::ui::SpinPosition(value, m_first, m_last, m_lowest, m_highest);
}

void CKxDevUI_SpinBox::SetPosition(int position) {
    SendMessageW(m_hWnd, UDM_SETPOS32, 0, std::clamp(position, m_lowest, m_highest));
}

int CKxDevUI_SpinBox::GetPosition() const { return static_cast<int>(SendMessageW(m_hWnd, UDM_GETPOS32, 0, 0)); }

LRESULT CALLBACK CKxDevUI_SpinBox::WndProc_UpDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return kx::ui::SubclassEntry<CKxDevUI_SpinBox, &CKxDevUI_SpinBox::Handle, kx::ui::Unbound::Zero>(
        {window, message, wParam, lParam});
}

kx::ui::Handled CKxDevUI_SpinBox::Handle(const kx::ui::Message& message) {
    switch (message.id) {
    case WM_KX_DESCRIBE: return kx::ui::Describe(message, [this](KxAccess& access) { access.name = m_title; });
    case WM_NCDESTROY: kx::ui::Binding::WindowGone(this, message.window); return std::nullopt;
    case WM_PAINT:
    case WM_PRINTCLIENT:
        // In the system's own colours the platform paints it best.
        if (KX_GetColorScheme() == eKxColorScheme_System) return std::nullopt;
        return PaintArrows(message);
    default: return std::nullopt;
    }
}

namespace {

void DrawArrow(HDC dc, RECT half, bool up, bool pressed, int color) {
    const bool contrast = KX_GetColorScheme() == eKxColorScheme_HighContrast;
    const int face = contrast  ? pressed ? COLOR_BTNSHADOW : COLOR_BTNFACE
                     : pressed ? COLOR_3DLIGHT
                               : COLOR_BTNHIGHLIGHT;
    FillRect(dc, &half, KX_GetSysColorBrush(face));
    FrameRect(dc, &half, KX_GetSysColorBrush(COLOR_BTNSHADOW));
    const long base = std::max(2L, (half.right - half.left) / 5), x = (half.left + half.right) / 2;
    const long y = (half.top + half.bottom) / 2, tip = up ? y - base / 2 : y + base / 2,
               foot = up ? tip + base : tip - base;
    const POINT corners[] = {{x - base, foot}, {x + base, foot}, {x, tip}};
    const kx::ui::Selection brush(dc, KX_GetSysColorBrush(color));
    const kx::ui::Selection pen(dc, GetStockObject(NULL_PEN));
    Polygon(dc, corners, 3);
}

}  // namespace

LRESULT CKxDevUI_SpinBox::PaintArrows(const kx::ui::Message& message) {
    const HWND window = message.window;
    return kx::ui::Paint(message, {}, KX_GetSysColorBrush(COLOR_BTNFACE), [window](HDC dc, const RECT& area) {
        POINT pointer{};
        GetCursorPos(&pointer);
        ScreenToClient(window, &pointer);
        const bool held = GetCapture() == window;
        const int color = IsWindowEnabled(window) ? COLOR_BTNTEXT : COLOR_GRAYTEXT;
        const RECT upper{area.left, area.top, area.right, area.bottom / 2 + 1};
        const RECT lower{area.left, area.bottom / 2, area.right, area.bottom};
        DrawArrow(dc, upper, true, held && PtInRect(&upper, pointer), color);
        DrawArrow(dc, lower, false, held && PtInRect(&lower, pointer), color);
    });
}

// ---- The edit box --------------------------------------------------------------------------------------------------

CKxDevUI_EditBoxSpin::CKxDevUI_EditBoxSpin() {
    m_attachedWidth = kArrowsWidth;
    m_hook = [](CKxDevUI_EditBox& box, const kx::ui::Message& message) {
        return static_cast<CKxDevUI_EditBoxSpin&>(box).HandleSpin(message);
    };
}

CKxDevUI_EditBoxSpin::~CKxDevUI_EditBoxSpin() { DestroyOwn(); }

HWND CKxDevUI_EditBoxSpin::Create(HWND parent, long x, long y, long cx, long cy, bool visible, bool enabled) {
    if (!CKxDevUI_EditBox::Create(parent, x, y, cx, cy, visible, enabled)) return nullptr;
    const RECT place = AttachedRect();
    const Alive alive(this);
    const HWND arrows =
        m_spin.Create(m_hWnd, place.left, 0, place.right - place.left, place.bottom - place.top, true, true);
    if (!alive || !m_hWnd) return nullptr;
    m_attached = arrows;
    ClipChildren();
    return m_hWnd;
}

HWND CKxDevUI_EditBoxSpin::Create(HWND parent, HWND placeholder, bool inside) {
    if (!CKxDevUI_EditBox::Create(parent, placeholder)) return nullptr;
    if (!inside) ResizeWindow(kx::ui::Sum(m_width, kArrowsWidth), m_height);
    return m_hWnd;
}

void CKxDevUI_EditBoxSpin::SetEnabled(bool enable) {
    m_spin.SetEnabled(enable && HasRoom());
    CKxDevUI_EditBox::SetEnabled(enable);
}

void CKxDevUI_EditBoxSpin::SetRestriction(double minimum, double maximum) {
    CKxDevUI_EditBox::SetRestriction(minimum, maximum);
    m_spin.SetEnabled(m_enabled && HasRoom());
}

void CKxDevUI_EditBoxSpin::OnSpin(int steps) {
    if (m_readOnly) return;
    const double step = kx::ui::SpinStep(m_minimum, m_maximum, m_format);
    ShowWithin(kx::ui::SpinTo(GetNumber(), steps, step, m_minimum, m_maximum));
}

void CKxDevUI_EditBoxSpin::Spin(int steps) {
    const Alive alive(this);
    const HWND window = m_hWnd;
    if (!IsFocused()) SetFocus();
    if (alive && m_hWnd == window) kx::ui::ShowAsTyped(m_edit, [this, steps] { OnSpin(steps); });
}

kx::ui::Handled CKxDevUI_EditBoxSpin::HandleSpin(const kx::ui::Message& message) {
    if (message.window == m_edit) return HandleKey(message);
    if (message.id == WM_ENABLE) m_spin.SetEnabled(message.wParam != 0 && HasRoom());
    if (message.id != WM_NOTIFY || !message.lParam) return std::nullopt;
    const auto* header = reinterpret_cast<const NMHDR*>(message.lParam);
    if (header->hwndFrom != m_attached || header->code != static_cast<UINT>(UDN_DELTAPOS)) return std::nullopt;
    Spin(reinterpret_cast<const NMUPDOWN*>(message.lParam)->iDelta);
    return 1;  // the position stays where it is: there is always room to both sides
}

kx::ui::Handled CKxDevUI_EditBoxSpin::HandleKey(const kx::ui::Message& message) {
    if (message.id == WM_MOUSEWHEEL) {
        if (const int notches = KX_TakeWheelNotches(message.window, message.wParam)) Spin(notches);
        return 0;
    }
    if (message.id != WM_KEYDOWN) return std::nullopt;
    constexpr LPARAM repeated = LPARAM{1} << 30;
    const auto now = static_cast<DWORD>(GetMessageTime());
    if (!(message.lParam & repeated)) m_keyDownTime = now;
    const int steps = StepsHeld(now - m_keyDownTime);
    switch (message.wParam) {
    case VK_UP: Spin(steps); return 0;
    case VK_DOWN: Spin(-steps); return 0;
    case VK_PRIOR: Spin(kPageSteps * steps); return 0;
    case VK_NEXT: Spin(-kPageSteps * steps); return 0;
    default: return std::nullopt;
    }
}
