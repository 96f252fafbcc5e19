// kx::ui::Control: the root of the small controls, a window of parts under a title.
#pragma once

#include <windows.h>

#include <cstring>
#include <optional>
#include <type_traits>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_base.h>

namespace kx::ui {

struct Message;
class Parts;

// A control whose window holds parts (buttons, labels, other controls) that do the painting. The window's life, its
// looks and its focus are here; a control adds its parts, its commands and its device:
//
//     class Switch : public kx::ui::Control {
//     public:
//         Switch() : Control(this, {.name = L"Switch", .size = {96, 44}, .title = L"Beam"}) {}
//         bool Update(CDMApi_LogDevId device);    // if it shows a device: 0x0500 leads here, also, where it takes
//                                                 // flags, with those: Update(CDMApi_LogDevId, const SwitchBand&)
//     private:
//         friend class kx::ui::Control;
//         bool Make(const kx::ui::Parts& parts);  // makes the parts; false when one of them has ended the control
//         void Command(int id, int code);         // WM_COMMAND of a part, if there is any
//         void Adopt(HWND placeholder);           // what it keeps of a control whose place it takes, before the parts
//         std::optional<LRESULT> Handle(const kx::ui::Message& message);  // asked before all that is here, if need be
//     };
//
// Disabled, every part is. The focus goes on to the first part that can be used: the one at which Tab stops, if Tab
// stops at any.
class KXDEVUI_API Control : public CKxDevUI_Base {
public:
    // The windows belong to one object.
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    // Destroys the window.
    ~Control() override;

    // Makes the window at (x, y) in the parent's client area, with its parts, all by the zoom; an older one is
    // destroyed. A negative size keeps the one held. The flags are ignored: SetVisible and SetEnabled decide.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
    // Destroys the window; nobody is told.
    void Destroy();

    // Both are shown at once.
    void SetEnabled(bool enable) override;
    void SetTitle(const wchar_t* title) override;

protected:
    // What a control is before anybody sets anything.
    struct Design {
        const wchar_t* name;  // of the window class and of the C++ class
        SIZE size;            // unzoomed pixels
        CKxStringW title;     // in the language of the user interface
        // Tab stops at its parts, each by itself, and not at the control.
        bool tabsInside = false;
        // Places its parts itself whenever it is sized (WM_SIZE), and hands them the font that its window is given.
        bool ownLayout = false;
    };
    // For the control T that is being made.
    template <class T>
    Control(T*, const Design& design) : Control(ClassOf<T>(design), design) {}

    // Makes the window in the place of a control of a dialog, which is destroyed: at the same place in the tab order,
    // in the same pixels of the screen and the same font, with its id unless SetId has given one (other than 0), and as
    // shown, enabled and focused as that is. Null for what is no control of another window, belongs to a control of the
    // library already, or is not in `parent`, if that is given; then nothing is touched. Null too when a host ends the
    // control meanwhile.
    HWND CreateInPlaceOf(HWND parent, HWND placeholder);

    // A part by its id; null while there is none. Handles that a control keeps itself it has to forget at WM_DESTROY.
    HWND PartAt(int id) const { return GetDlgItem(m_hWnd, id); }

    // Ends the parts, without a word to anybody, and has them made anew: there are others now. The window is as large
    // as the size held again, and the focus stays in it. Nothing happens without a window. The parent, which is
    // told of every window, may have ended the control afterwards.
    void Remake();
    // The same for a control with its own layout, in the size and the font that it has now: the platform cannot change
    // what a part is.
    void RemakeInPlace();

    // The window that shows the title, where the control has made one.
    HWND m_label = nullptr;

private:
    // One class of controls, and the functions that it has. They are no virtual ones: where the order of those is
    // given, there is no room for more.
    struct Class {
        const wchar_t* name;
        bool tabsInside;
        bool ownLayout;
        WNDPROC procedure;
        bool (*make)(Control&, const Parts&);
        void (*command)(Control&, int id, int code);
        void (*update)(Control&, CDMApi_LogDevId, const void* flags);
        std::optional<LRESULT> (*handle)(Control&, const Message&);
        void (*adopt)(Control&, HWND placeholder);
        ATOM atom;
    };
    Control(Class& own, const Design& design);
    static LRESULT Answer(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
    std::optional<LRESULT> Handle(const Message& message);
    bool MakePartsAnew(bool inPlace);
    HWND MakeAt(const Creation& creation, HWND parent, POINT at, SIZE size);

    // The window class belongs to the module that holds its procedure, so each class of controls has one of its own.
    template <class T>
    static LRESULT CALLBACK ProcedureOf(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
        return Answer(window, id, wParam, lParam);
    }
    template <class T, class Result, class Flags>
    static Flags FlagsOf(Result (T::*update)(CDMApi_LogDevId, const Flags&));
    template <class T>
    static Class& ClassOf(const Design& design) {
        static Class made{design.name, design.tabsInside, design.ownLayout, ProcedureOf<T>, nullptr,
                          nullptr,     nullptr,           nullptr,          nullptr,        0};
        made.make = [](Control& control, const Parts& parts) { return static_cast<T&>(control).Make(parts); };
        if constexpr (requires { &T::Command; })
            made.command = [](Control& control, int id, int code) { static_cast<T&>(control).Command(id, code); };
        if constexpr (requires(T & control, CDMApi_LogDevId device) { control.Update(device); })
            made.update = [](Control& control, CDMApi_LogDevId id, const void*) {
                static_cast<T&>(control).Update(id);
            };
        if constexpr (requires { FlagsOf(&T::Update); })
            made.update = [](Control& control, CDMApi_LogDevId id, const void* flags) {
                decltype(FlagsOf(&T::Update)) copy{};
                // Also from a host that sends as many bools.
                if (flags) std::memcpy(&copy, flags, sizeof copy), static_cast<T&>(control).Update(id, copy);
            };
        if constexpr (requires { &T::Adopt; })
            made.adopt = [](Control& control, HWND placeholder) { static_cast<T&>(control).Adopt(placeholder); };
        if constexpr (!std::is_same_v<decltype(&T::Handle), decltype(&Control::Handle)>)
            made.handle = [](Control& control, const Message& message) {
                return static_cast<T&>(control).Handle(message);
            };
        return made;
    }

    Class* m_class;  // null once the derived part has gone
};

}  // namespace kx::ui
