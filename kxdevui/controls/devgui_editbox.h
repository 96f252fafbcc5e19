// CKxDevUI_EditBox: a numeric edit field with a label, an allowed interval and a display format.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include <kxdevui/framework/devgui_base.h>

namespace kx::ui {
struct Message;
}

// An edit field for a number. A label stands to the left of it; a format says how a number is displayed, an interval
// which numbers are allowed. Nothing that the user types is changed or refused by itself, unless the host has given it
// habits (devgui_habits.h): the host asks CheckRestriction when it wants to know, mostly on Enter and when the focus
// has gone. Full-width digits, point and sign count as the usual ones, wherever they come from; an input method is not
// offered.
//
// The window holds the label (a "Static") and the edit (an "Edit"), which it lays out whenever its own size changes. It
// is no tab stop, but a dialog finds the edit in it. It answers WM_GETTEXT, WM_SETTEXT and WM_GETTEXTLENGTH with the
// text of the edit, so that GetDlgItemText and SetDlgItemText work with its id.
//
// Events reach the host as virtual callbacks and, by their default implementations, as WM_COMMAND to the window's
// parent, with the control id in the low and the code in the high word of wParam:
//
//     OnEnter      0x0401                  the Enter key                   lParam: the edit box's window
//     OnChange     0x0300 (EN_CHANGE)      the text has changed            lParam: the edit box's window
//     OnSetFocus   0x0100 (EN_SETFOCUS)    the edit has got the focus      lParam: the edit box's window
//     OnKillFocus  0x0200 (EN_KILLFOCUS)   the edit has lost the focus     lParam: the edit box's window
//     OnChar       0x0102                  a character has been typed      lParam: the character code
//
// OnChange comes for every change of the text, whoever made it, and not for a text set to what it was. Making and
// destroying an edit box sends nothing. A callback may destroy the window and delete the object: an edit in the midst
// of a message then lives on, hidden and silent, until the platform is done with it. That holds for as long as it is
// the edit box, or a window above it, that is destroyed.
class KXDEVUI_API CKxDevUI_EditBox : public CKxDevUI_Base {
public:
    // Title (the label's text) "Label:", format "%g", interval [0, 100], at most 256 characters, may be empty, with a
    // border and a label, which has no width yet; nominal size 20 by 16.
    CKxDevUI_EditBox();
    // The copy refers to the same windows, whose messages go on to the object that made them.
    CKxDevUI_EditBox(const CKxDevUI_EditBox& other) = default;
    CKxDevUI_EditBox& operator=(const CKxDevUI_EditBox& other) = default;
    // Destroys the window if it is this object's.
    ~CKxDevUI_EditBox() override;

    // ---- Creation ----

    // At (x, y) in the parent's client area, cx by cy pixels for label and edit together; a negative cx or cy keeps the
    // nominal size. Like any window it is made at zoom 1 and then zoomed with what it stands in. The two flags are
    // ignored: SetVisible and SetEnabled decide. An edit box that has a window loses it first.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;

    // In the place of an existing control: same rectangle, same place in the tab order, and same id unless SetId has
    // given one (other than 0). The control is destroyed. Null when there is no such control, and it stays when the
    // edit box could not be made. `parent` is the control's own parent; null stands for it too, any other window is
    // refused.
    HWND Create(HWND parent, HWND placeholder);

    // Destroys the window, silently.
    void Destroy();

    // ---- Looks; each holds before Create and after it ----

    // Whether there is a label, whether the text must not be empty (see CheckRestriction), whether the user cannot
    // change it. Without a label, messages to the user do not name the field.
    void Init(bool showLabel, bool mustNotBeEmpty, bool readOnly);
    // The same by name; what is not named is as at first.
    struct Looks {
        // As above, in the same order.
        bool showLabel = true;
        bool mustNotBeEmpty = false;
        bool readOnly = false;
    };
    // See Looks.
    void Init(const Looks& looks) { Init(looks.showLabel, looks.mustNotBeEmpty, looks.readOnly); }

    // Whether the field has a border.
    void SetStyle(bool border);

    // The widths of label and edit and their height, in unzoomed pixels; the nominal size becomes their sum. A negative
    // one stays as it was.
    void SetSize(long labelWidth, long editWidth, long height);

    // Puts label and edit to their places again, as after a change of size. To be called when the host has moved them.
    void CorrectPosition();

    // Whether the user can only read and copy the text.
    void SetReadOnly(bool readOnly);

    // ---- Content ----

    // The text, of any length; null is the empty text. A text set to what it is changes nothing and tells nobody.
    void SetText(const wchar_t* text);
    CKxStringW GetText() const;

    // Paints a text that SetText or SetNumber has changed since the last call, at once, where a WM_PAINT would only
    // come when nothing else is to be done: for a number that follows the mouse.
    void PaintNow();

    // The number that the text begins with, in C's notation, of its first 100 characters; 0 when there is none.
    double GetNumber() const;

    // Displays a value, cut to 255 characters. With `once` the format holds for this call only; otherwise it first
    // replaces the stored one. A null format is the stored one; so is one that does not convert exactly one double
    // (see CountDoubles in editbox_rules.h), which is logged. A value that is not finite is logged and not displayed.
    void SetNumber(double value, const wchar_t* format = nullptr, bool once = false);
    // Displays a whole number, whatever the format.
    void SetNumberInt(int value);

    // Whether the text has been typed by the user since it was last set or entered.
    bool IsTyped() const;

    // The unit, as the answers of KxFieldHabits name it: "0 to 100 mW". Null is none; it is not displayed otherwise.
    void SetUnit(const wchar_t* unit);
    // Whether the field shows the number of a slider: there always is one, and of one outside the interval the slider
    // takes the nearer end. Then an empty text is not entered (KxFieldHabits::answer), and a number outside is, unless
    // KxFieldHabits::tableOnly forbids it.
    void SetOfSlider(bool ofSlider);

    // Whether the edit has the keyboard focus.
    bool IsFocused() const;

    // Whether the text is allowed. Checked in this order: the number must lie in the interval,
    // "Value must be in interval <%g;%g>"; the text must not be empty if Init said so, "Field can not be empty.". An
    // empty text reads as 0.
    //
    // With `correct`, a number outside becomes the violated bound, an empty text becomes `value`, and nothing is said.
    // Otherwise the message, translated and with the label's text before it, goes to a message box or, without
    // `showMessage`, to the log, and the edit gets the focus. The box comes at once, but in OnKillFocus, where a box
    // could hang the program: there it is posted, and comes after the callback, with the edit having the focus back;
    // the OnKillFocus that comes of it shows no further one. Where the format cannot display a bound without leaving
    // the interval, the bound is displayed with as many digits as it takes.
    bool CheckRestriction(bool showMessage, bool correct, double value);
    // The same by name: whether the text is allowed, and the text made allowed, an empty one by `whenEmpty`.
    bool IsAllowed(EKxComplaint complaint) { return CheckRestriction(complaint == EKxComplaint::Shown, false, 0); }
    void CorrectToRestriction(double whenEmpty) { CheckRestriction(false, true, whenEmpty); }

    // The inner windows, null before Create; the label's also when there is none.
    HWND GetEditWindow() const noexcept { return m_edit; }
    HWND GetLabelWindow() const noexcept { return m_label; }

    // ---- Operations of the base ----

    // Enables or disables the window and what is in it.
    void SetEnabled(bool enable) override;
    // The label's text, shown as it is: "&" marks nothing.
    void SetTitle(const wchar_t* title) override;
    // The focus goes to the edit.
    void SetFocus() override;

    // The allowed interval. Bounds in reverse order are put in order; either may be infinite; one that is not a number
    // is logged and leaves the interval as it is. The text is not looked at.
    virtual void SetRestriction(double minimum, double maximum);

    // How many characters the user can type; a text that is longer stays. Less than 1 is logged and changes nothing.
    virtual void SetMaxChars(int count);

protected:
    // ---- Callbacks; see the table above ----

    // The Enter key, which the edit itself never sees. OnChar has come before it. With KxFieldHabits::answer it comes
    // only for what may be entered.
    virtual void OnEnter();
    // The edit has got, or has lost, the focus. A host that sends the focus back from here finds a working caret.
    virtual void OnSetFocus();
    virtual void OnKillFocus();
    // The text has changed.
    virtual void OnChange();
    // A character has been typed: before the edit acts on it, Enter (13), Escape (27) and Backspace (8) included.
    virtual void OnChar(int ch);

    // ---- For derived controls ----

    // Sends WM_COMMAND with the control id and this code to the window's parent; nothing when that is the desktop,
    // where a floating editor has nobody to tell.
    void NotifyParent(int code, LPARAM lParam);

    // The translation of a message that displays so many doubles; the English text where a translation displays
    // anything else.
    static CKxStringW TranslatedFormat(const wchar_t* text, int doubles);

    // Displays a value of the interval so that it reads back within it, with more digits than the format has if need
    // be.
    void ShowWithin(double value);

    // Destroys the window, silently, if it is this object's. For the destructor of a derived control whose members have
    // windows in it: the first of them to go would pass the focus on to the edit.
    void DestroyOwn();

    // Asked first for every message of the window and of the edit: how a derived control adds behaviour, because the
    // order of the virtual functions leaves no room for a handler. After a call to the host it answers, with nothing
    // left to the edit box, which may be gone. Null asks nobody.
    using Hook = std::optional<LRESULT> (*)(CKxDevUI_EditBox& box, const kx::ui::Message& message);
    Hook m_hook = nullptr;

    // What the text is to the habits of number fields (devgui_habits.h): one number of the interval, a list of them
    // with m_separator between, any text.
    enum class Content { Number, List, Text };
    Content m_content = Content::Number;
    wchar_t m_separator = 0;
    // What is wrong with the text, as the user is told; empty for nothing. Null: for a number, the interval decides.
    using FindFault = std::wstring (*)(const CKxDevUI_EditBox& box);
    FindFault m_findFault = nullptr;
    // What is allowed, as an answer says it.
    std::wstring AllowedInWords() const;
    // Whether the habits let the text be entered; otherwise the user has been answered.
    bool AnswerFault();

    // Rows of the window in whose middle the text stands; without them, in the middle of the field.
    struct Rows {
        long top;     // pixels in the window
        long height;  // pixels
    };
    // See Rows.
    std::optional<Rows> m_textRows;
    // Set by OnChar, for a character that the platform's edit is not to see.
    bool m_charUsed = false;

    // From now on the window paints around its children: after the last of them has been made.
    void ClipChildren();

    // A window that stands at the right end of the field, and its width in unzoomed pixels, 0 for none. The width is
    // set before Create; the window is made after it in the place of AttachedRect, a child of the window, and enabled
    // and disabled by the derived control, which then calls ClipChildren.
    HWND m_attached = nullptr;
    long m_attachedWidth = 0;
    RECT AttachedRect() const { return Arrange(nullptr).attached; }

    // What the edit of the next window begins with: a text that comes later takes a fifth of the time of making it.
    void SetNumberAtFirst(double value);

    // The window procedures of the window, also in derived controls, and of the edit.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK WndProc_EditBox(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

    // The display format; the sizes of label and edit in unzoomed pixels; their windows; the interval; how many
    // characters can be typed, in a field for one value and in one for a list; whether the text must not be empty,
    // cannot be changed, has a label, has a border.
    CKxStringW m_format = L"%g";
    SIZE m_labelSize{0, 16};
    SIZE m_editSize{20, 16};
    HWND m_label = nullptr;
    HWND m_edit = nullptr;
    double m_minimum = 0.0;
    double m_maximum = 100.0;
    int m_maxChars = 256;
    int m_maxListChars = 512;
    CKxStringW m_unit;
    bool m_ofSlider = false;
    bool m_mustNotBeEmpty = false;
    bool m_readOnly = false;
    bool m_showLabel = true;
    bool m_border = true;

private:
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleEdit(const kx::ui::Message& message);
    // Of label, edit and attached window in the client area.
    struct Places {
        RECT label;
        RECT edit;
        RECT attached;
    };
    void MakeLabel(const RECT& place, HFONT font);
    void MakeEdit(const RECT& place, HFONT font);
    double Scale() const;
    RECT FieldRect() const;
    Places Arrange(HFONT font) const;
    void Layout();
    std::wstring Fault() const;
    std::optional<LRESULT> HandleChar(const kx::ui::Message& message);
    std::optional<LRESULT> HandleFocus(const kx::ui::Message& message);
    LRESULT PaintField(const kx::ui::Message& message);
    LRESULT PaintEdit(const kx::ui::Message& message);
    void DrawFrame(HDC dc, const RECT& field) const;
    LRESULT AnswerColor(HDC dc, bool field) const;
    void LoseChildren();

    bool m_textChanged = false;  // since PaintNow
    CKxStringW m_textAtFirst;
};
