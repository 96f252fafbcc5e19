#include <kxdevui/framework/ui_window.h>

#include <atomic>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_module.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_members.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxsystem/kx_log.h>

#include <exception>

namespace kx::ui {

static_assert(WM_KX_ZOOM_CHANGED == CKxGUILayoutManager::ZoomChangedMessage);

namespace {

thread_local Closing* s_closing = nullptr;

bool IsSelfOrBelow(HWND window, HWND root) { return window == root || IsChild(root, window); }

}  // namespace

HINSTANCE ModuleOf(WNDPROC procedure) noexcept {
    HINSTANCE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(procedure), &module);
    return module;
}

void EnsureClass(ATOM& atom, const ControlSpec& spec) {
    if (atom) return;
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = spec.classStyle;
    description.lpfnWndProc = spec.procedure;
    description.cbWndExtra = spec.extraBytes;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = spec.background;
    description.lpszClassName = spec.name;
    description.hInstance = ModuleOf(spec.procedure);
    if (spec.ownLayout) CKxGUILayoutManager::AddClassWithOwnLayout(spec.name);
    atom = RegisterClassExW(&description);
    if (atom) KX_KeepLoaded(spec.procedure);
    if (!atom && CKxLogFile::Detail()) {
        KX_LOG(spec.object, L"%ls::Create - RegisterClass failed - lasterror = %d", spec.object,
               static_cast<int>(GetLastError()));
    }
}

void MarkWindow(HWND window, Mark mark, CKxDevUI_Base* object) {
    if (mark == Mark::None) return;
    SetWindowLongPtrW(window, kTagWord, kWindowTag);
    if (mark == Mark::TagAndObject) SetWindowLongPtrW(window, kObjectWord, reinterpret_cast<LONG_PTR>(object));
}

CKxDevUI_Base* ControlOf(HWND window) noexcept {
    if (GetClassLongPtrW(window, GCL_CBWNDEXTRA) != static_cast<ULONG_PTR>(kWindowExtraBytes) ||
        GetWindowLongPtrW(window, kTagWord) != kWindowTag) {
        return nullptr;
    }
    // The tag alone proves nothing: any class may have 16 extra bytes with any number in them.
    return LivingObject<CKxDevUI_Base>(reinterpret_cast<void*>(GetWindowLongPtrW(window, kObjectWord)));
}

namespace {

HWND MakeWindow(ATOM& atom, const ControlSpec& spec, HWND parent, POINT at, SIZE size, int id, DWORD state,
                void* object) {
    EnsureClass(atom, spec);
    const DWORD style = WS_CHILD | spec.style | state | StyleOfPartIn(parent);
    return CreateWindowExW(spec.extendedStyle, MAKEINTATOM(atom), nullptr, style, at.x, at.y, size.cx, size.cy, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ModuleOf(spec.procedure), object);
}

}  // namespace

Creation::Creation(const void* object) noexcept : m_alive(object) {
    static const DWORD s_thread = GetCurrentThreadId();
    static std::atomic_flag s_told;
    if (GetCurrentThreadId() != s_thread && !s_told.test_and_set())
        KX_LOG(L"ui_window", L"a second thread makes controls; they share what belongs to the first");
}

HWND Creation::Window(CKxDevUI_Base* control, ATOM& atom, const ControlSpec& spec, HWND parent, POINT at,
                      SIZE size) const {
    if (size.cx >= 0) control->m_width = size.cx;
    if (size.cy >= 0) control->m_height = size.cy;
    const DWORD state = (control->m_visible ? DWORD{WS_VISIBLE} : 0) | (control->m_enabled ? 0 : DWORD{WS_DISABLED});
    const HWND window =
        MakeWindow(atom, spec, parent, at, {control->m_width, control->m_height}, control->m_id, state, control);
    if (!Done(control, window)) return nullptr;
    MarkWindow(window, spec.mark, control);
    if (spec.font) SetFont(window, KX_GetDefaultGuiFont());
    return Done(control, window);
}

HWND Creation::Window(void* object, ATOM& atom, const ControlSpec& spec, HWND parent, POINT at, SIZE size) const {
    const HWND window = MakeWindow(atom, spec, parent, at, size, 0, WS_VISIBLE, object);
    if (!window || !m_alive) return nullptr;
    MarkWindow(window, spec.mark, nullptr);
    if (spec.font) SetFont(window, KX_GetDefaultGuiFont());
    return m_alive ? window : nullptr;
}

HWND Creation::Done(CKxDevUI_Base* control, HWND window) const {
    return window && m_alive && control->m_hWnd == window ? window : nullptr;
}

bool Binding::EndWindow(CKxDevUI_Base* control) {
    const HWND window = control->m_hWnd;
    if (!window) return true;
    const Alive alive(control);
    const Closing closing(window);
    DestroyWindow(window);
    if (!alive) return false;
    if (control->m_hWnd == window) control->m_hWnd = nullptr;
    return true;
}

void Binding::EndOwnWindow(CKxDevUI_Base* control) {
    const HWND window = control->m_hWnd;
    if (!window || GetWindowLongPtrW(window, GWLP_USERDATA) != reinterpret_cast<LONG_PTR>(control)) return;
    const Closing closing(window);
    DestroyWindow(window);
}

void Binding::WindowGone(CKxDevUI_Base* object, HWND window) noexcept {
    if (object->m_hWnd == window) object->m_hWnd = nullptr;
}

void Binding::CutLoose(CKxDevUI_Base* object) noexcept {
    const HWND window = object->m_hWnd;
    if (!window || !IsWindow(window)) return;
    if (GetWindowLongPtrW(window, GWLP_USERDATA) == reinterpret_cast<LONG_PTR>(object)) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    }
    if (ControlOf(window) == object) SetWindowLongPtrW(window, kObjectWord, 0);
}

Closing::Closing(HWND root) noexcept : m_root(root), m_outer(s_closing) { s_closing = this; }

Closing::~Closing() { s_closing = m_outer; }

bool Closing::Silences(const Message& message) noexcept {
    if (!s_closing || message.id == WM_DESTROY || message.id == WM_NCDESTROY) return false;
    for (const Closing* closing = s_closing; closing; closing = closing->m_outer) {
        if (IsSelfOrBelow(message.window, closing->m_root)) return true;
    }
    return false;
}

void LogEscapedException() noexcept {
    try {
        throw;
    } catch (const std::exception& exception) {
        KX_LOG(L"ui_window", L"an exception left a handler: %hs", exception.what());
    } catch (...) {
        KX_LOG(L"ui_window", L"an exception of unknown type left a handler");
    }
}

void StylesChanged(HWND window) noexcept {
    KX_VisualStylesChanged();
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
}

void WindowGone(HWND window, void* object, const Alive& alive, bool isControl) noexcept {
    Activity::WindowGone(window);
    DropState(window);
    if (isControl && alive) Binding::WindowGone(static_cast<CKxDevUI_Base*>(object), window);
}

bool Subclass(HWND child, WNDPROC procedure, void* object) {
    if (!IsWindow(child)) return false;
    const auto state = StateOf(child);
    if (state->previous) return false;
    KX_KeepLoaded(procedure);
    // Nothing is there at first, and each of these takes as long as a hundredth of a button under Wine.
    if (object || GetWindowLongPtrW(child, GWLP_USERDATA) != 0)
        SetWindowLongPtrW(child, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    state->previous =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    return state->previous != nullptr;
}

namespace {

// Calls of previous procedures that have not returned, of all children together.
thread_local int s_running = 0;

}  // namespace

LRESULT CallPrevious(const Message& message) noexcept {
    const auto state = FindState(message.window);
    if (!state || !state->previous || !IsWindow(message.window)) return 0;
    if (message.id == WM_GETOBJECT) {
        if (const Handled answer = AnswerGetObject(message)) return *answer;
    }
    ++state->running;
    ++s_running;
    const LRESULT result = CallWindowProcW(state->previous, message.window, message.id, message.wParam, message.lParam);
    --s_running;
    --state->running;
    if (message.id == WM_NCDESTROY) DropState(message.window);
    // Owner-drawn buttons are drawn anew by Windows; under Wine they are not.
    if (message.id == WM_UPDATEUISTATE) InvalidateRect(message.window, nullptr, FALSE);
    if (state->orphaned && state->running == 0) {
        state->orphaned = false;
        DestroyWindow(message.window);
    }
    return result;
}

namespace {

// Whether the child is inside its own procedure; it is then on its own.
bool SpareIfBusy(HWND child) noexcept {
    const auto state = FindState(child);
    if (!state || state->running == 0) return false;
    SetWindowLongPtrW(child, GWLP_USERDATA, 0);
    state->object = nullptr;
    state->orphaned = true;
    // Where the platform has no place for windows without a screen, a hidden one is out of the way as well.
    if (!SetParent(child, HWND_MESSAGE)) {
        ShowWindow(child, SW_HIDE);
        SetParent(child, nullptr);
    }
    return true;
}

}  // namespace

void DestroySubclassed(HWND child) noexcept {
    if (!SpareIfBusy(child)) DestroyWindow(child);
}

void SpareBusyChildren(HWND window) noexcept {
    // Looking through the children costs a round trip for each under Wine, and hardly ever is one of them at work.
    if (s_running == 0) return;
    HWND next = nullptr;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = next) {
        next = GetWindow(child, GW_HWNDNEXT);
        SpareIfBusy(child);
    }
}

LRESULT Notify(HWND target, int id, int code, LPARAM lParam) {
    return target ? SendMessageW(target, WM_COMMAND, MAKEWPARAM(id, code), lParam) : 0;
}

void RegisterZoom(HWND window) {
    // At 100 % they stand right already, and the manager takes those that it does not know, or finds elsewhere than it
    // put them, as they stand.
    if (CKxGUILayoutManager::GetGuiZoom() == 1.0) return;
    CKxGUILayoutManager::DeleteWindowDimsForGuiZoom(window);
    CKxGUILayoutManager::ResizeWindowToGuiZoom(window, 1.0);
}

void ApplyZoom(HWND window) {
    CKxGUILayoutManager::ResizeWindowToGuiZoom(window, CKxGUILayoutManager::GetPreviousGuiZoom());
}

LONG SetStyleBit(HWND window, int index, LONG bit, bool set) {
    const LONG style = GetWindowLongW(window, index);
    if (const LONG wanted = set ? style | bit : style & ~bit; wanted != style) SetWindowLongW(window, index, wanted);
    return style & bit;
}

bool TrackHover(const Message& message) {
    const auto state = StateOf(message.window);
    if (message.id == WM_MOUSELEAVE) return std::exchange(state->hovered, false);
    if (message.id != WM_MOUSEMOVE || state->hovered) return false;
    state->hovered = true;
    TRACKMOUSEEVENT request{sizeof request, TME_LEAVE, message.window, 0},
        granted{sizeof granted, TME_QUERY, nullptr, 0};
    const bool follows = TrackMouseEvent(&request) && TrackMouseEvent(&granted) &&
                         granted.hwndTrack == message.window && (granted.dwFlags & TME_LEAVE) != 0;
    // A late move may come when the pointer is elsewhere already; Wine then promises a leave notice that never comes.
    if (!follows) PostMessageW(message.window, WM_MOUSELEAVE, 0, 0);
    return true;
}

}  // namespace kx::ui
