// What a control has as members for its parts: a row of buttons, another control (devgui_numberfield.h has a field for
// a number).
#pragma once

#include <windows.h>

#include <functional>

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

    // The buttons have the ids from `first` on.
    explicit RadioRow(int first) noexcept : m_first(first) {}

    // Makes `count` buttons, or as many as a row may have, `gap` pixels apart, all in unzoomed pixels; none is down.
    // False when the control has gone.
    bool Make(const Parts& parts, int count, const std::function<CKxStringW(int)>& textOf, const RECT& place, long gap);
    // Has one of them down in the control's window, or, with -1, none.
    void Show(HWND control, int index) const;
    // The index of the button that WM_COMMAND tells to have been clicked; -1 for everything else.
    int ClickedBy(int id, int code) const noexcept;

private:
    int m_first;
    int m_count = 0;
};

// Makes a control in the window of another, in unzoomed pixels, and as enabled as that is; false when the outer one has
// gone with that.
KXDEVUI_API bool MakePart(CKxDevUI_Base& part, const Parts& parts, const RECT& place);
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
    bool Make(const Parts& parts, const RECT& place) { return MakePart(*this, parts, place); }
};

}  // namespace kx::ui
