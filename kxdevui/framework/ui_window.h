// For authors of controls: what every control's window has in common, its class, the way from a message to the object,
// and the small services around it. A control writes one Handle function and a line that names its habits:
//
//     LRESULT CALLBACK CMyControl::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
//         using namespace kx::ui;
//         return Entry<CMyControl, ByUserData<CMyControl>, WM_NCCREATE, Unbound::Default, &CMyControl::Handle>(
//             {window, id, wParam, lParam});
//     }
#pragma once

#include <windows.h>

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <type_traits>

#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_visualstyles.h>
#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_complaint.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/framework/ui_parts.h>

namespace kx::ui {

// A window message as a value.
struct Message {
    // As a window procedure gets them.
    HWND window;
    UINT id;
    WPARAM wParam;
    LPARAM lParam;

    // What the platform's default procedure makes of it.
    LRESULT Default() const noexcept { return DefWindowProcW(window, id, wParam, lParam); }
};

// A handler's answer; empty means "go on to the default".
using Handled = std::optional<LRESULT>;

// ---- Window classes ------------------------------------------------------------------------------------------------

// What a window is marked with so that a container knows it: the tag alone makes it a plain window still, tag and
// object make it a control. For windows of a class with 16 extra bytes; never for a dialog, whose extra bytes are the
// dialog manager's.
enum class Mark { None, Tag, TagAndObject };

// How the windows of one class of controls are made: one record for each. What is left out is as most have it.
struct ControlSpec {
    const wchar_t* name;                        // of the window class
    const wchar_t* object;                      // of the C++ class, for the log
    WNDPROC procedure;                          // its module is the class's
    UINT classStyle = CS_HREDRAW | CS_VREDRAW;  // CS_...
    int extraBytes = kWindowExtraBytes;         // of each window
    HBRUSH background = nullptr;                // null: none
    // Places its children by itself when it is sized, so the layout manager leaves them alone, fonts included.
    bool ownLayout = false;
    DWORD style = WS_TABSTOP;  // of each window, beside WS_CHILD and what the control's state adds
    DWORD extendedStyle = 0;
    Mark mark = Mark::TagAndObject;
    bool font = true;  // gets the default GUI font
};

// The module that holds a window procedure. A class belongs to the module that it was registered for, and a window of
// it is made in the name of that module.
KXDEVUI_API HINSTANCE ModuleOf(WNDPROC procedure) noexcept;

// Registers the class once, with the arrow cursor and for the module that holds the procedure, and keeps its atom. A
// failure is logged when the log's detail is on, and creation goes on: windows are made by the atom, never by the name,
// which may be that of another's class, and without one there is none. From then on that module stays loaded
// (kx_module.h).
KXDEVUI_API void EnsureClass(ATOM& atom, const ControlSpec& spec);

// ---- From the window to the object ---------------------------------------------------------------------------------

// See Mark.
KXDEVUI_API void MarkWindow(HWND window, Mark mark, CKxDevUI_Base* object);

// The living control that a marked window belongs to; null for every other window, whatever its extra bytes say.
KXDEVUI_API CKxDevUI_Base* ControlOf(HWND window) noexcept;

// A control's window while it is made, or made again: the focus that leaves the old one, and the news of the new one,
// may lead to a host's window that ends the control. Of is the one way in, and what makes windows asks for a Creation.
class KXDEVUI_API Creation {
public:
    // Ends the control's old window, and has `make`, called with the creation, make the new one; null, and nothing of
    // the control is touched, when it has gone with the old one.
    template <class T, class Make>
    static HWND Of(T* control, Make&& make) {
        KX_HasVisualStyles();
        const Creation creation(static_cast<RootOf<T>*>(control));
        control->Destroy();
        return creation ? make(creation) : nullptr;
    }

    // Makes the control's window as the record says, registering the class first: a child of `parent` at `at`, of this
    // size, of which what is negative is the nominal one that is held, with the control's id, visible and enabled as it
    // is. Null when there is no window, or when one who was told of it, as the parent is, has ended it or the control.
    HWND Window(CKxDevUI_Base* control, ATOM& atom, const ControlSpec& spec, HWND parent, POINT at, SIZE size) const;
    // The same for what is no CKxDevUI_Base: `object` is the creation parameter and knows its window by itself.
    HWND Window(void* object, ATOM& atom, const ControlSpec& spec, HWND parent, POINT at, SIZE size) const;

    // At the end, when what is in the window has been made: the window, or null when it or the control has gone.
    HWND Done(CKxDevUI_Base* control, HWND window) const;

    // Whether the control still lives.
    explicit operator bool() const noexcept { return static_cast<bool>(m_alive); }

private:
    // Says in the log, once, that another thread than the first makes controls.
    explicit Creation(const void* object) noexcept;

    Alive m_alive;
};

// The ties between a window and its control, where they are made and cut from outside.
class KXDEVUI_API Binding {
public:
    // Destroys a control's window, if it has one; nobody is told. False when the control is gone as well: the focus may
    // have gone to a host's window, which may have ended it.
    static bool EndWindow(CKxDevUI_Base* control);
    // The same at the end of the object itself, unless the window belongs to another, of which this is a copy. Of the
    // windows' messages only those of their end come to an object whose derived part is gone already.
    static void EndOwnWindow(CKxDevUI_Base* control);
    // The window is there.
    static void WindowCame(CKxDevUI_Base* object, HWND window) noexcept { object->m_hWnd = window; }
    // The window is gone: a handle that is kept would one day be another window's.
    static void WindowGone(CKxDevUI_Base* object, HWND window) noexcept;
    // The object is going: its window, if it lives, must not find it any more.
    static void CutLoose(CKxDevUI_Base* object) noexcept;
};

// A stored pointer as an object, or null when it does not live.
template <class T>
T* LivingObject(void* stored) noexcept {
    return Life::IsAlive(stored) ? static_cast<T*>(static_cast<RootOf<T>*>(stored)) : nullptr;
}

// The object in the window's user data.
template <class T>
struct ByUserData {
    // The living object of a window, or null; ties the two; unties them.
    static T* Find(HWND window) noexcept {
        return LivingObject<T>(reinterpret_cast<void*>(GetWindowLongPtrW(window, GWLP_USERDATA)));
    }
    static void Bind(HWND window, T* object) noexcept {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(static_cast<RootOf<T>*>(object)));
    }
    static void Unbind(HWND window) noexcept { SetWindowLongPtrW(window, GWLP_USERDATA, 0); }
    // Nobody finds anything by a window after its last message: a write saved, which takes a round trip under Wine.
    static void WindowGone(HWND) noexcept {}
};

// The object in the state of a child, for one that has its user data to itself: a write saved, too.
template <class T>
struct ByState {
    // The living object of a window, or null; ties the two.
    static T* Find(HWND window) noexcept {
        const auto state = FindState(window);
        return state ? LivingObject<T>(state->object) : nullptr;
    }
    static void Bind(HWND window, T* object) { StateOf(window)->object = static_cast<RootOf<T>*>(object); }
};

// The object in the class's map of instances; in the window's user data as well, like any other.
template <class T, std::map<HWND, T*>& Instances>
struct ByInstances {
    // The living object of a window, or null; ties the two; unties them.
    static T* Find(HWND window) noexcept {
        const auto found = Instances.find(window);
        return found != Instances.end() && Life::IsAlive(static_cast<RootOf<T>*>(found->second)) ? found->second
                                                                                                 : nullptr;
    }
    static void Bind(HWND window, T* object) {
        Instances[window] = object;
        ByUserData<T>::Bind(window, object);
    }
    static void Unbind(HWND window) noexcept {
        Instances.erase(window);
        ByUserData<T>::Unbind(window);
    }
    // What outlives the window's last message.
    static void WindowGone(HWND window) noexcept { Instances.erase(window); }
};

// ---- Windows on their way out --------------------------------------------------------------------------------------

// While it lives, `root` and the windows below it are being destroyed: their objects hear of the end (WM_DESTROY,
// WM_NCDESTROY) and of nothing else. Without it, the focus that leaves a dying edit would reach the host as a request,
// or a half-destroyed object as a virtual call.
class KXDEVUI_API Closing {
public:
    // From here to the end of the scope.
    explicit Closing(HWND root) noexcept;
    ~Closing();
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;

    // Whether this message finds its window on the way out and is not to be heard.
    static bool Silences(const Message& message) noexcept;

private:
    HWND m_root;
    Closing* m_outer;
};

// ---- Entry points --------------------------------------------------------------------------------------------------

// What a window answers while no object is known.
enum class Unbound { Default, Zero, One };

// Logs the exception that is being handled.
KXDEVUI_API void LogEscapedException() noexcept;
// Frees what belongs to the window (ui_paint.h) and takes its handle from the object if that still lives.
KXDEVUI_API void WindowGone(HWND window, void* object, const Alive& alive, bool isControl) noexcept;

// The platform's controls have got visual styles, or others, or lost them: the window is to be drawn so.
KXDEVUI_API void StylesChanged(HWND window) noexcept;

// Calls a handler; an exception is logged and counts as "not handled".
template <class Call>
Handled Guarded(Call&& call) noexcept {
    try {
        return call();
    } catch (...) {
        LogEscapedException();
        return std::nullopt;
    }
}

// The creation parameter of WM_NCCREATE and WM_CREATE.
inline void* CreationParameter(const Message& message) noexcept {
    return reinterpret_cast<const CREATESTRUCTW*>(message.lParam)->lpCreateParams;
}

// From a found object to its handler, and the end of the tie between window and object.
template <class T, class Lookup, Handled (T::*Handle)(const Message&)>
Handled Dispatch(T* object, const Message& message) noexcept {
    if (Closing::Silences(message)) return std::nullopt;
    const LosingFocus losing(message.id, message.wParam, message.lParam);
    if (message.id == WM_THEMECHANGED) StylesChanged(message.window);
    const Alive alive(static_cast<RootOf<T>*>(object));
    const Handled result = Guarded([&] { return (object->*Handle)(message); });
    if (message.id == WM_NCDESTROY) {
        Lookup::WindowGone(message.window);
        WindowGone(message.window, static_cast<RootOf<T>*>(object), alive, std::is_base_of_v<CKxDevUI_Base, T>);
    }
    return result;
}

// The platform's controls go on using what is theirs after a notification, whatever its receiver has done to them;
// Wine's edit and up-down have freed it by then. So a subclassed child that is inside its own procedure is unbound and
// hidden instead, and destroyed when that procedure has returned: when it is destroyed by itself, or when `window`, its
// parent, is going.
KXDEVUI_API void DestroySubclassed(HWND child) noexcept;
KXDEVUI_API void SpareBusyChildren(HWND window) noexcept;

// The answer to WM_GETOBJECT of a window that describes itself (ui_access.h).
KXDEVUI_API Handled AnswerGetObject(const Message& message) noexcept;

// The window procedure of a control class. The object is the creation parameter, bound at the message BindAt
// (WM_NCCREATE, WM_CREATE, or 0 where the control binds by hand).
template <class T, class Lookup, UINT BindAt, Unbound Answer, Handled (T::*Handle)(const Message&)>
LRESULT Entry(const Message& message) noexcept {
    if (message.id == WM_DESTROY) SpareBusyChildren(message.window);
    if (BindAt != 0 && message.id == BindAt) {
        if (T* object = LivingObject<T>(CreationParameter(message))) {
            Guarded([&]() -> Handled { return Lookup::Bind(message.window, object), std::nullopt; });
            if constexpr (std::is_base_of_v<CKxDevUI_Base, T>) Binding::WindowCame(object, message.window);
        }
    }
    if (message.id == WM_GETOBJECT) {
        if (const Handled answer = AnswerGetObject(message)) return *answer;
    }
    T* object = Lookup::Find(message.window);
    if (!object) {
        if (message.id == WM_NCDESTROY) DropState(message.window);
        if constexpr (Answer == Unbound::Zero) return 0;
        if constexpr (Answer == Unbound::One) return 1;
        return message.Default();
    }
    const Handled result = Dispatch<T, Lookup, Handle>(object, message);
    return result ? *result : message.Default();
}

// The dialog procedure of a control made from a template, bound to the parameter of WM_INITDIALOG. Not handled is 0,
// which leaves the message to the dialog manager.
template <class T, Handled (T::*Handle)(const Message&)>
INT_PTR DialogEntry(const Message& message) noexcept {
    using Lookup = ByUserData<T>;
    if (message.id == WM_INITDIALOG) {
        if (T* object = LivingObject<T>(reinterpret_cast<void*>(message.lParam))) Lookup::Bind(message.window, object);
    }
    T* object = Lookup::Find(message.window);
    if (!object) return 0;
    return Dispatch<T, Lookup, Handle>(object, message).value_or(0);
}

// Puts `procedure` before the window procedure of a child and `object` into its user data. False when the child is no
// window, or has been subclassed in this way before.
KXDEVUI_API bool Subclass(HWND child, WNDPROC procedure, void* object);
// The rest of the chain; 0 when the child is gone.
KXDEVUI_API LRESULT CallPrevious(const Message& message) noexcept;

// The window procedure of a subclassed child. Not handled goes on to the previous procedure, if the child still lives;
// without an object the previous procedure answers alone, or, with another Answer, it hears of its end only.
template <class T, Handled (T::*Handle)(const Message&), Unbound Answer = Unbound::Default,
          class Lookup = ByUserData<T>>
LRESULT SubclassEntry(const Message& message) noexcept {
    T* object = Lookup::Find(message.window);
    if (!object && Answer != Unbound::Default && message.id != WM_DESTROY && message.id != WM_NCDESTROY) {
        // Otherwise it would be asked to paint for ever.
        if (message.id == WM_PAINT) ValidateRect(message.window, nullptr);
        return Answer == Unbound::One ? 1 : 0;
    }
    const LosingFocus losing(message.id, message.wParam, message.lParam);
    Handled result;
    if (object && !Closing::Silences(message)) result = Guarded([&] { return (object->*Handle)(message); });
    return result ? *result : CallPrevious(message);
}

// ---- Small services ------------------------------------------------------------------------------------------------

// Sends WM_COMMAND with (id, code) and lParam to a control's parent or notification window; 0 when there is none.
KXDEVUI_API LRESULT Notify(HWND target, int id, int code, LPARAM lParam);

// Children have been laid out in unzoomed pixels: remember that and apply the zoom.
KXDEVUI_API void RegisterZoom(HWND window);
// The zoom has changed (WM_KX_ZOOM_CHANGED).
KXDEVUI_API void ApplyZoom(HWND window);

// Follows the pointer through WM_MOUSEMOVE and WM_MOUSELEAVE: asks for the leave notice on the first move, and returns
// true for the message with which the pointer came in or went out.
KXDEVUI_API bool TrackHover(const Message& message);

// Gives the window this bit of a style (GWL_STYLE, GWL_EXSTYLE) or takes it; returns what it had of it.
KXDEVUI_API LONG SetStyleBit(HWND window, int index, LONG bit, bool set);

// The keys of a button in a row, for its subclass: an arrow key calls `move` with the step that it means where
// `columns` buttons stand side by side, Enter clicks.
template <class Move>
Handled HandleRowKeys(const Message& message, int columns, Move&& move) {
    if (message.id == WM_GETDLGCODE) {
        // Only to the dialog manager, which asks about a message.
        const auto* asked = reinterpret_cast<const MSG*>(message.lParam);
        if (!asked) return std::nullopt;
        const bool enter = asked->message == WM_KEYDOWN && asked->wParam == VK_RETURN;
        return DLGC_BUTTON | DLGC_WANTARROWS | (enter ? DLGC_WANTMESSAGE : 0);
    }
    if (message.id != WM_KEYDOWN) return std::nullopt;
    if (message.wParam == VK_RETURN) {
        Notify(ParentOf(message.window), GetDlgCtrlID(message.window), BN_CLICKED,
               reinterpret_cast<LPARAM>(message.window));
        return 0;
    }
    const int step = StepOf(message.wParam, columns);
    if (step == 0) return std::nullopt;
    KX_ShowFocusFromNowOn(message.window);
    if (IsWindow(message.window)) move(step);
    return 0;
}

// The contents of WM_KX_UPDATE_DEVICE_BAND for a control with these flags.
template <class Flags>
struct DeviceBand {
    unsigned device;  // logical id
    Flags flags;      // what to refresh
};
// See DeviceBand; empty when the message carries no flags, which may be the record or as many bools.
template <class Flags>
std::optional<DeviceBand<Flags>> ReadDeviceBand(const Message& message) noexcept {
    if (message.lParam == 0) return std::nullopt;
    DeviceBand<Flags> band{static_cast<unsigned>(message.wParam), {}};
    std::memcpy(&band.flags, reinterpret_cast<const void*>(message.lParam), sizeof band.flags);
    return band;
}

}  // namespace kx::ui
