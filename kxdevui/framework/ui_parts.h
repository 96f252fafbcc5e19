// For authors of controls: the windows inside a control, how they are made, and what is asked and told of them
// everywhere.
#pragma once

#include <windows.h>

#include <span>
#include <type_traits>

#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/framework/ui_life.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {

// Pointers stored with windows are pointers to the root of the object, which is what Life knows.
template <class T>
using RootOf = std::conditional_t<std::is_base_of_v<CKxDevUI_Base, T>, CKxDevUI_Base, T>;

// The id of the label with a control's title.
inline constexpr int kTitleId = 10100;

// Makes the windows in a control's window, in unzoomed pixels and the GUI font of 100 %: RegisterZoom follows when all
// are there. Every window that comes is told to the parent, which may end the control. So each call keeps the window in
// a member of the control by itself, and answers false when the control has gone: then nothing of it may be touched,
// and nothing more is made.
class KXDEVUI_API Parts {
public:
    // For the window of this object, which Life knows.
    template <class T>
    Parts(HWND window, T* object) noexcept : m_window(window), m_alive(static_cast<RootOf<T>*>(object)) {}
    // Whether window and object are still there.
    explicit operator bool() const noexcept { return m_alive && IsWindow(m_window); }
    // Where they are made.
    HWND Window() const noexcept { return m_window; }

    // A visible child of any class, disabled in a window that is.
    bool Add(HWND& held, const wchar_t* windowClass, int id, const wchar_t* text, const RECT& place,
             DWORD style = 0) const;
    // A static text, shown as it is: a name may have an ampersand in it.
    bool Label(HWND& held, int id, const wchar_t* text, const RECT& place, DWORD style = SS_LEFT) const;
    // A button that stays down while it is chosen, in the colours of the scheme, with the text shown as it is. It
    // releases no other button. `automatic`: a click shows it pressed before anybody is asked. A procedure that is
    // given comes before the button's own (CallPrevious in ui_window.h); a style is added to the button's.
    bool PushRadio(HWND& held, int id, const wchar_t* text, const RECT& place, bool automatic,
                   WNDPROC procedure = nullptr, DWORD style = 0) const;
    // A drop-down list. The place is that of field and list together.
    bool DropDown(HWND& held, int id, const RECT& place) const;
    // The same for a control that finds its parts by their ids.
    bool Label(int id, const wchar_t* text, const RECT& place, DWORD style = SS_LEFT) const;
    bool PushRadio(int id, const wchar_t* text, const RECT& place, bool automatic) const;

private:
    HWND m_window;
    Alive m_alive;
};

// The style of such a button, to change it later (BM_SETSTYLE).
KXDEVUI_API DWORD PushRadioStyle(bool automatic) noexcept;
// A text for a button, which takes a single ampersand for the mark of a mnemonic.
KXDEVUI_API CKxStringW AsButtonText(const CKxStringW& text);

// The whole text of a window; empty for none.
KXDEVUI_API CKxStringW TextOf(HWND window);
// Another text, where it is another one: setting it paints, and under Wine costs far more than reading. A null window
// is ignored.
KXDEVUI_API void SetTextOf(HWND window, const CKxStringW& text);
// The parent of a control in a dialog; null when it is no window, or a top-level one.
KXDEVUI_API HWND ParentOf(HWND window) noexcept;
// WM_SETFONT; a null window is ignored.
KXDEVUI_API void SetFont(HWND window, HFONT font, bool redraw = false) noexcept;
// BoldifyCaptions (devgui.h) for a zoom: 1.0 in a dialog that is still as the template has it.
void BoldifyCaptionsAt(HWND window, double zoom);
// Enables or disables where that changes anything; a null window is ignored.
KXDEVUI_API void Enable(HWND window, bool enable) noexcept;

// Whether what is typed into an edit goes through the user's input method, as it does at first: not where a number is
// asked for, which such a method would hold back until it is converted.
KXDEVUI_API void UseInputMethod(HWND edit, bool use) noexcept;

// Has `window` never painted over by `below`, a sibling whose place reaches under it.
KXDEVUI_API void PutAbove(HWND window, HWND below) noexcept;

// -1 or +1, a row up or down, or 0 for what is no arrow key.
KXDEVUI_API int StepOf(WPARAM key, int columns = 1) noexcept;
// The button that an arrow key leads to: from `from` by `step`, over those that cannot be used. Steps of one go around
// the ends; larger ones, between rows, stay where there is no row, as does every step where there is nothing else.
KXDEVUI_API int NextButton(int from, int step, std::span<const bool> usable) noexcept;

}  // namespace kx::ui
