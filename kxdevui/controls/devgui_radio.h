// CKxDevUI_Radio: a run of radio buttons as one value.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <vector>

#include <kxdevui/framework/devgui_base.h>

namespace kx::ui {
struct Message;
}

// Makes one control with a list of values of a run of radio buttons: the value is the text of the button that is
// checked. It is normally made of the controls of a dialog template (Create(first, count, title)); an empty group has
// no values.
//
// Values count from 0. An index that is not there is ignored by setters and answered with 0 or an empty text; a null
// text is the empty text.
//
// When the user or SetSelection checks a button, the notification window (the group's parent) gets WM_COMMAND with the
// group's id in the low and 0x0401 in the high word of wParam, and the button's window in lParam; also when the button
// was checked before. The group asks nobody and moves no device: a host that refuses selects the old value again, which
// is told like any selection.
//
// The group is a tab stop of its dialog: its window passes the focus on to the checked button, or the first that can be
// chosen, and the arrow keys move between the buttons and check them.
class KXDEVUI_API CKxDevUI_Radio : public CKxDevUI_Base {
public:
    // Nominal size 100 by 50, no values.
    CKxDevUI_Radio();
    // The copy refers to the same windows, whose messages go on to the object that made them.
    CKxDevUI_Radio(const CKxDevUI_Radio& other) = default;
    CKxDevUI_Radio& operator=(const CKxDevUI_Radio& other) = default;
    // Destroys the window if it is this object's.
    ~CKxDevUI_Radio() override;

    // An empty group at (x, y) in the parent's client area, which becomes the notification window. A negative size
    // keeps the nominal one. The two flags are ignored: SetVisible and SetEnabled decide.
    HWND Create(HWND parent, long x, long y, long width, long height, bool, bool) override;

    // Makes a group of controls that stand in a dialog one after the other: `first` and the siblings that follow it in
    // the tab order, up to `count`, are replaced by radio buttons with their texts (cut to 254 characters) at their
    // places. The group covers them and `title`, which moves into it and may be null; it takes the place of `first` in
    // the tab order. The title ends at (dx, dx) where dx is its distance from the group's left edge; the distance from
    // the top is not used. A title that cannot move in (no window, the parent, a window around it) is left out.
    //
    // Returns the group's window. Null, and nothing is touched, when `first` has no parent or belongs to this group, or
    // `count` is below 1; null too when a host ends the group meanwhile, out of a message that a control's end sends.
    HWND Create(HWND first, int count, HWND title);

    // Destroys the windows; the values are gone.
    void Destroy();

    // Enables or disables every button when the state differs from the one held, those that SetValueEnabled has set
    // among them. Enabling also enables the group's window, which is made disabled while the state is. Where the window
    // is disabled alone, as by a container, the buttons show it, and come back as they were.
    void SetEnabled(bool enable) override;
    // Also the text of the title window.
    void SetTitle(const wchar_t* title) override;

    // ---- Values ----

    // Selects the value with this text, as a click on its button would, but takes the focus in the active window alone;
    // false when there is none.
    KXDEVUI_OVERLOADS(virtual bool SetSelection(const wchar_t* text), virtual void SetSelection(int index));

    // The first selected value; -1 when none is.
    virtual int GetSelectionIndex();

    // The selected text, cut to `size` - 1 characters; returns the length copied. -1, and nothing is copied, when
    // `size` is smaller than the length of the text, for null, or when nothing is selected.
    // Without a buffer, the number that the selected text (its first 99 characters) begins with, in C's notation; 0
    // when there is none.
    KXDEVUI_OVERLOADS(virtual int GetSelection(wchar_t* buffer, int size), virtual double GetSelection());

    // The value with exactly this text, upper and lower case told apart, of the first 254 characters; -1 when there is
    // none.
    virtual int GetIndex(const wchar_t* text);

    // How many values there are.
    virtual int GetValuesCount();

    // A number of the host's for each value, 0 at first.
    virtual std::int64_t GetUserData(int index);
    virtual void SetUserData(int index, std::int64_t value);

    // The text of a value; whether its button can be chosen, whatever SetEnabled said before. A button that has the
    // focus and is disabled hands it to the one that the group gives it to.
    virtual void SetValueName(int index, const wchar_t* name);
    virtual void SetValueEnabled(int index, bool enable);

    // Not supported, values come from the dialog: -1 always. InsertValues calls InsertValue for each value, with
    // start, start + 1, ... or always -1, so that a control that overrides it can insert.
    KXDEVUI_OVERLOADS(virtual int InsertValue(double value, int index),
                      virtual int InsertValue(const wchar_t* value, int index));
    KXDEVUI_OVERLOADS(virtual void InsertValues(const double* values, int count, int start),
                      virtual void InsertValues(const wchar_t** values, int count, int start));

    // Whether a value is selected. If not, "You have to choose value." is told, translated and after the title's text,
    // in a message box or, without `show`, in the log, and the first button gets the focus.
    virtual bool CheckRestriction(bool show);
    // The same by name.
    bool IsAllowed(EKxComplaint complaint) { return CheckRestriction(complaint == EKxComplaint::Shown); }

protected:
    // A button was clicked: tells the notification window.
    void onSelChange(int index);
    // WM_COMMAND of a button; always 0.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    // The window procedure of the group.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

    // The dialog's title inside the group, or null; the buttons by index; how many controls the last Create took; who
    // is told of selections.
    HWND m_titleWindow = nullptr;
    std::vector<HWND> m_buttons;
    int m_taken = 0;
    HWND m_notify = nullptr;

private:
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    HWND ButtonAt(int index) const;
    HWND SelectedButton() const;
    HWND FocusButton() const;
    void FollowWindow();
    void TakeTitle(HWND title, const RECT& place, const RECT& group);
    HWND MakeButton(const wchar_t* text, const RECT& place, const RECT& group);
};
