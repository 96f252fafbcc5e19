// What a control has as members for its parts: a row of buttons, another control (devgui_numberfield.h has a field for
// a number).
#pragma once

#include <windows.h>

#include <utility>
#include <vector>

#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {

class Parts;

// Push-like radio buttons side by side in a control's window, of which one is down at most; a click presses none by
// itself. The arrow keys move the focus over those that can be used, around the ends, Space and Enter click. Tab stops
// at one: at the one that is down or, later, at the one that has had the focus.
class KXDEVUI_API RadioRow {
public:
    // No row has more buttons.
    static constexpr int kMost = 16;

    // The buttons have the ids from `first` on, and these texts; none is down.
    explicit RadioRow(int first, std::vector<CKxStringW> texts = {}) : m_first(first) { Take(std::move(texts)); }

    // Makes the buttons, `gap` pixels apart, all in unzoomed pixels; a style is added to theirs. False when the control
    // has gone.
    bool Make(const Parts& parts, const RECT& place, long gap, DWORD style = 0);
    // Gives the buttons in the control's window other texts; what is beyond kMost is left out. False when there are
    // more or fewer than before: none is down then, and the control has its parts made anew (Control::Remake).
    [[nodiscard]] bool SetTexts(HWND control, const std::vector<CKxStringW>& texts);
    // How many there are.
    int Count() const noexcept { return static_cast<int>(m_texts.size()); }
    // Has one of them down in the control's window; none for an index that no button has. It is kept.
    void Show(HWND control, long index);
    // The one that is down; -1 for none.
    int Shown() const noexcept { return m_index; }
    // The index of the button that WM_COMMAND tells to have been clicked; -1 for everything else.
    int ClickedBy(int id, int code) const noexcept;

private:
    void Take(std::vector<CKxStringW> texts);
    void Mark(HWND control) const;

    int m_first;
    int m_index = -1;
    std::vector<CKxStringW> m_texts;
};

// Makes a control in the window of another, in unzoomed pixels, and as enabled as that is; false when the outer one has
// gone with that. A style is added to the window's.
KXDEVUI_API bool MakePart(CKxDevUI_Base& part, const Parts& parts, const RECT& place, DWORD style = 0);
// Whether that is going on in this window: what is made there stands unzoomed until all of it is there. With that
// style.
KXDEVUI_API bool IsMakingPartIn(HWND window) noexcept;
KXDEVUI_API DWORD StyleOfPartIn(HWND window) noexcept;
// Ends it before its object ends.
KXDEVUI_API void EndPart(CKxDevUI_Base& part);

// A control that is a member of another, which it ends with.
template <class T>
class PartControl : public T {
public:
    using T::T;
    // Without a window.
    PartControl() = default;
    ~PartControl() override { EndPart(*this); }

    // See MakePart.
    bool Make(const Parts& parts, const RECT& place, DWORD style = 0) { return MakePart(*this, parts, place, style); }
};

}  // namespace kx::ui
