// The container's content, life and message routing; devgui_container_create.cpp makes it from templates and dialogs.
#include <kxdevui/framework/devgui_container.h>

#include <algorithm>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_uihelper.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/framework/ui_window.h>
#include <kxsystem/kx_log.h>

using kx::ui::Alive;

namespace {

constexpr wchar_t kSource[] = L"devgui_container";

// The windows that WaitForDialog waits for, innermost first. Their destruction is sent and never posted, so it has to
// wake the message loop.
struct Waiting {
    explicit Waiting(HWND container) noexcept : window(container), outer(s_innermost) { s_innermost = this; }
    ~Waiting() { s_innermost = outer; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    static void Wake(HWND gone) noexcept {
        for (const Waiting* waiting = s_innermost; waiting; waiting = waiting->outer) {
            if (waiting->window == gone) PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
        }
    }

    HWND window;
    Waiting* outer;
    static thread_local Waiting* s_innermost;
};
thread_local Waiting* Waiting::s_innermost = nullptr;

}  // namespace

ATOM CKxDevUI_Container::m_Atom = 0;

CKxDevUI_Container::CKxDevUI_Container() {
    m_width = 100;
    m_height = 50;
}

CKxDevUI_Container::~CKxDevUI_Container() {
    // Before the window goes: its messages must not come to an object whose derived part is gone already. The
    // window may keep its pointer to it until then; to clear it is two round trips under Wine.
    kx::ui::Life::End(static_cast<CKxDevUI_Base*>(this));
    Destroy();
    m_hWnd = nullptr;
}

HWND CKxDevUI_Container::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return kx::ui::Creation::Of(this, [&](const kx::ui::Creation& creation) -> HWND {
        m_parent = parent;
        m_modal = false;
        m_adopted = m_adopting;
        // When the window is there, OnInit has run.
        return creation.Window(this, m_Atom,
                               {.name = L"KxDevUI_Container",
                                .object = L"CKxDevUI_Container",
                                .procedure = WndProc,
                                .classStyle = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS,
                                .background = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH))},
                               parent, {x, y}, {cx, cy});
    });
}

// ---- Content -------------------------------------------------------------------------------------------------------

bool CKxDevUI_Container::CanTake(HWND window) const {
    if (m_hWnd && IsWindow(window) && window != m_hWnd && !IsChild(window, m_hWnd) && window != GetDesktopWindow()) {
        return true;
    }
    KX_LOG(kSource, L"window %p cannot become a child of container %p", static_cast<void*>(window),
           static_cast<void*>(m_hWnd));
    return false;
}

void CKxDevUI_Container::TakeWindow(HWND window) {
    if (GetAncestor(window, GA_PARENT) != m_hWnd) SetParent(window, m_hWnd);
}

void CKxDevUI_Container::InsertWindow(HWND child) {
    if (!child || !CanTake(child)) return;
    if (GetAncestor(child, GA_PARENT) != m_hWnd) {
        TakeWindow(child);
        SetWindowPos(child, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
    }
    if (CKxDevUI_Base* control = kx::ui::ControlOf(child)) {
        InsertElement(control);
    } else {
        m_windows.push_back(child);
    }
}

void CKxDevUI_Container::InsertElement(CKxDevUI_Base* element) {
    if (!element) return;
    const HWND window = *element;
    if (element == this || (window && m_hWnd && !CanTake(window))) return;
    m_elements.remove_if([](const Element& each) { return !each.alive; });
    m_elements.push_back({element, Alive(element)});
    if (window && m_hWnd) TakeWindow(window);
    if (auto* const container = m_tabInside ? dynamic_cast<CKxDevUI_Container*>(element) : nullptr)
        container->SetTabInside(true);
}

void CKxDevUI_Container::InsertChildren() {
    HWND next = nullptr;
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT);
        InsertWindow(child);
    }
}

CKxDevUI_Base* CKxDevUI_Container::GetElement(int id) {
    const auto found = std::find_if(m_elements.begin(), m_elements.end(), [id](const Element& element) {
        return element.alive && element.object->GetId() == id;
    });
    return found == m_elements.end() ? nullptr : found->object;
}

HWND CKxDevUI_Container::GetWindow(int id) {
    const HWND child = GetDlgItem(m_hWnd, id);
    // Callers only ask whether the result is null.
    return child ? child : reinterpret_cast<HWND>(GetElement(id));
}

std::list<HWND> CKxDevUI_Container::GetWindows() { return m_windows; }

RECT* CKxDevUI_Container::UnionArea(int id, RECT* area, bool reset) {
    if (!area) return nullptr;
    if (reset) *area = {};
    if (const HWND child = GetDlgItem(m_hWnd, id)) {
        const RECT rect = RectInParent(child), before = *area;
        UnionRect(area, &before, &rect);
    }
    return area;
}

// ---- Life ----------------------------------------------------------------------------------------------------------

void CKxDevUI_Container::Init(bool forward) { m_forward = forward; }

void CKxDevUI_Container::Quit(int result) {
    if (m_modal) {
        EndDialog(m_hWnd, result);
    } else {
        DestroyWindow(m_hWnd);
    }
}

void CKxDevUI_Container::WaitForDialog() {
    const HWND window = m_hWnd;
    if (!IsWindow(window)) {
        KX_LOG(kSource, L"there is no window to wait for");
        return;
    }
    const Waiting waiting(window);
    MSG message;
    while (IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_CLOSE || message.message == WM_DESTROY) return;
        if (IsDialogMessageW(window, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    // Taken off the queue here, but meant for the whole program.
    if (IsWindow(window) && message.message == WM_QUIT) PostQuitMessage(static_cast<int>(message.wParam));
}

void CKxDevUI_Container::Destroy() {
    const Alive alive(this);
    if (const HWND window = m_hWnd) {
        const kx::ui::Closing closing(window);
        const std::list<HWND> windows(m_windows);
        // Otherwise each of its windows would be taken off the screen by itself. The focus may go to a host's window
        // now, which may end this object.
        if (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) ShowWindow(window, SW_HIDE);
        for (const HWND each : windows)
            DestroyWindow(each);
        DestroyWindow(window);
        Waiting::Wake(window);
        // A dialog's OnDestroy has run.
        if (!alive) return;
        m_hWnd = nullptr;
    }
    m_windows.clear();
    m_elements.clear();
}

void CKxDevUI_Container::BoldifyCaptions() { ::BoldifyCaptions(m_hWnd); }

void CKxDevUI_Container::SetTabInside(bool inside) {
    if (inside != m_tabInside && !inside) {
        kx::ui::SetStyleBit(m_hWnd, GWL_STYLE, WS_TABSTOP, m_givenStop != 0);
        kx::ui::SetStyleBit(m_hWnd, GWL_EXSTYLE, WS_EX_CONTROLPARENT, m_givenControlParent != 0);
    }
    if (std::exchange(m_tabInside, inside) != inside) LetTabIn();
    for (const Element& each : m_elements) {
        if (auto* const container = each.alive ? dynamic_cast<CKxDevUI_Container*>(each.object) : nullptr)
            container->SetTabInside(inside);
    }
}

// The dialog manager goes into a window only if it says so, and all around it.
void CKxDevUI_Container::LetTabIn() {
    if (!m_tabInside || !m_hWnd) return;
    m_givenStop = kx::ui::SetStyleBit(m_hWnd, GWL_STYLE, WS_TABSTOP, false);
    m_givenControlParent = kx::ui::SetStyleBit(m_hWnd, GWL_EXSTYLE, WS_EX_CONTROLPARENT, true);
    for (HWND each = m_hWnd; GetWindowLongW(each, GWL_STYLE) & WS_CHILD; each = GetAncestor(each, GA_PARENT)) {
        kx::ui::SetStyleBit(each, GWL_STYLE, WS_TABSTOP, false);
        kx::ui::SetStyleBit(each, GWL_EXSTYLE, WS_EX_CONTROLPARENT, true);
    }
}

void CKxDevUI_Container::AlignWindow(bool toParent) {
    CKxUIHelper::AlignWnd(m_hWnd, toParent ? m_parent : nullptr,
                          toParent ? eKxAlign_CenterAnchor : eKxAlign_CenterOwner, true, nullptr);
}

// ---- Operations of the base ----------------------------------------------------------------------------------------

void CKxDevUI_Container::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    const Alive alive(this);
    // Copies, because what is enabled may insert, remove or destroy.
    const HWND window = m_hWnd;
    const auto elements = m_elements;
    for (const HWND each : std::list<HWND>(m_windows))
        EnableWindow(each, enable);
    for (const Element& element : elements) {
        if (alive && element.alive) element.object->SetEnabled(enable);
    }
    if (enable) EnableWindow(window, TRUE);
}

void CKxDevUI_Container::SetTitle(const wchar_t* title) {
    if (m_modal) SetWindowTextW(m_hWnd, title ? title : L"");
    if (m_storeTitle) CKxDevUI_Base::SetTitle(title);
}

void CKxDevUI_Container::RefreshWindow() { CKxDevUI_Base::RefreshWindow(); }

// ---- Default handlers ----------------------------------------------------------------------------------------------

LRESULT CKxDevUI_Container::Forward(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_forward ? SendMessageW(m_parent, message, wParam, lParam) : 0;
}

LRESULT CKxDevUI_Container::OnInit(UINT, WPARAM, LPARAM) { return 1; }
LRESULT CKxDevUI_Container::OnDestroy(UINT, WPARAM, LPARAM) { return 1; }
LRESULT CKxDevUI_Container::OnCommand(UINT message, WPARAM wParam, LPARAM lParam) {
    return Forward(message, wParam, lParam);
}
LRESULT CKxDevUI_Container::OnNotify(UINT message, WPARAM wParam, LPARAM lParam) {
    return Forward(message, wParam, lParam);
}
LRESULT CKxDevUI_Container::OnScroll(UINT message, WPARAM wParam, LPARAM lParam, bool) {
    return Forward(message, wParam, lParam);
}
LRESULT CKxDevUI_Container::OnDrawItem(UINT message, WPARAM wParam, LPARAM lParam) {
    return Forward(message, wParam, lParam);
}
LRESULT CKxDevUI_Container::OnCtlColorStatic(UINT, WPARAM, LPARAM) { return 0; }
LRESULT CKxDevUI_Container::OnMouseActivate(UINT, WPARAM, LPARAM) { return 0; }
void CKxDevUI_Container::OnUpdateDeviceBand(WPARAM, LPARAM) {}
LRESULT CKxDevUI_Container::OnMouseWheel(WPARAM, LPARAM) { return 0; }

// ---- Routing -------------------------------------------------------------------------------------------------------

LRESULT CALLBACK CKxDevUI_Container::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace kx::ui;
    return Entry<CKxDevUI_Container, ByUserData<CKxDevUI_Container>, WM_CREATE, Unbound::Default,
                 &CKxDevUI_Container::Handle>({window, message, wParam, lParam});
}

INT_PTR CALLBACK CKxDevUI_Container::DlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return kx::ui::DialogEntry<CKxDevUI_Container, &CKxDevUI_Container::HandleDialog>(
        {dialog, message, wParam, lParam});
}

namespace {

// A handler's 0 means that the default procedure is to have the message.
kx::ui::Handled UnlessZero(LRESULT result) { return result != 0 ? kx::ui::Handled(result) : std::nullopt; }

}  // namespace

kx::ui::Handled CKxDevUI_Container::Handle(const kx::ui::Message& message) {
    const auto [window, id, wParam, lParam] = message;
    switch (id) {
    case WM_CREATE: {
        const RECT rect = RectInParent(window);
        m_hWnd = window;
        m_width = rect.right - rect.left;
        m_height = rect.bottom - rect.top;
        LetTabIn();
        return m_adopted ? 1 : OnInit(1, wParam, lParam);
    }
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        const auto draw = [&message](HDC dc, const RECT& area) {
            kx::ui::Activity::DrawFace(message.window, dc, area);
        };
        return kx::ui::Paint(message, {.defaultFirst = true, .children = true, .buffered = false},
                             KX_GetSysColorBrush(COLOR_BTNFACE), draw);
    }
    case WM_ERASEBKGND: return kx::ui::Erase(message);
    case WM_COMMAND: return UnlessZero(OnCommand(id, wParam, lParam));
    case WM_NOTIFY: return UnlessZero(OnNotify(id, wParam, lParam));
    case WM_DRAWITEM: return UnlessZero(OnDrawItem(id, wParam, lParam));
    case WM_HSCROLL: return UnlessZero(OnScroll(id, wParam, lParam, true));
    case WM_VSCROLL: return UnlessZero(OnScroll(id, wParam, lParam, false));
    case WM_CTLCOLORSTATIC: return UnlessZero(OnCtlColorStatic(id, wParam, lParam));
    case kx::ui::WM_KX_UPDATE_DEVICE_BAND: OnUpdateDeviceBand(wParam, lParam); return 0;
    case kx::ui::WM_KX_MOUSE_WHEEL: return OnMouseWheel(wParam, lParam);
    case kx::ui::WM_KX_ZOOM_CHANGED:
        kx::ui::ApplyZoom(window);
        ::BoldifyCaptions(window);
        return std::nullopt;
    case WM_NCDESTROY: Waiting::Wake(window); return std::nullopt;
    default: return std::nullopt;
    }
}

kx::ui::Handled CKxDevUI_Container::HandleDialog(const kx::ui::Message& message) {
    const auto [dialog, id, wParam, lParam] = message;
    switch (id) {
    case WM_INITDIALOG: {
        KX_UnscaleDialog(dialog);
        const RECT rect = RectInParent(dialog);
        m_hWnd = dialog;
        m_shown = true;
        m_width = rect.right - rect.left;
        m_height = rect.bottom - rect.top;
        if (m_modal) {
            kx::ui::BoldifyCaptionsAt(dialog, 1.0);
            InsertChildren();
        }
        return OnInit(id, wParam, lParam);
    }
    case WM_DESTROY: return OnDestroy(id, wParam, lParam);
    case WM_MOUSEACTIVATE: return OnMouseActivate(id, wParam, lParam);
    case WM_DRAWITEM: return OnDrawItem(id, wParam, lParam);
    case WM_NOTIFY: return OnNotify(id, wParam, lParam);
    case WM_COMMAND: return OnCommand(id, wParam, lParam);
    case WM_HSCROLL: return OnScroll(id, wParam, lParam, true);
    case WM_VSCROLL: return OnScroll(id, wParam, lParam, false);
    case WM_CTLCOLORSTATIC: return OnCtlColorStatic(id, wParam, lParam);
    case WM_NCDESTROY: Waiting::Wake(dialog); return std::nullopt;
    default: return std::nullopt;
    }
}
