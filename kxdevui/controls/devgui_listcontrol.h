// kx::ui::ListControl: what the controls with a list of values of the platform's, combo box and list box, have in
// common.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include <kxdevui/controls/valuelist_rules.h>
#include <kxdevui/framework/devgui_control.h>

struct KxAccess;

namespace kx::ui {

// A list of values of which the user chooses. Each has a text, a number (the one that its text begins with), a number
// of the host's, and may be disabled: then it is grey, and keys, wheel and typed letters pass it over. A patch of
// colour or an image may stand before each text.
//
// Values count from 0. An index that is not there is ignored by setters and answered with 0 or an empty text; a null
// text is the empty text; texts may be alike. The values are there without a window as well, and stay when it goes.
//
// What the user chooses is shown, and then the host is asked (OnSelectionChangeRequest); refused, what was chosen
// before comes back. The host hears nothing of what it sets itself, and may change the list while it is asked.
//
// The platform's control inside has the texts too, so that screen readers find them, and the name of the title, or of
// the label before the control. It fills the window, which Tab stops at.
class KXDEVUI_API ListControl : public Control {
public:
    using Control::Create;
    // In the place of a control of somebody's dialog, which is destroyed: at its place in the tab order, in its size,
    // font and state, and with its id unless SetId has given one (other than 0). The values of a combo box or a list
    // box are taken, with what is chosen of them and their item data as user data; any other control gives its place.
    //
    // Null, and logged, when there is no such control of `parent` (null: of any), and for one of the library's; null
    // too when somebody ends the control meanwhile.
    HWND Create(HWND parent, HWND placeholder) { return CreateInPlaceOf(parent, placeholder); }

    // ---- Values ----

    // Selects the first value with this text, upper and lower case and blanks told apart; false when there is none.
    // By index: the value alone; -1 selects none. The host is not asked, and disabled values can be selected.
    KXDEVUI_OVERLOADS(virtual bool SetSelection(const wchar_t* text), virtual void SetSelection(int index));

    // The first selected value; -1 when none is.
    virtual int GetSelectionIndex();

    // The selected text, cut to `size` - 1 characters; returns the length copied. -1, and nothing is copied, when
    // `size` is smaller than the length of the text, for null, or when nothing is selected.
    // Without a buffer, the number that the selected text (its first 99 characters) begins with, in C's notation; 0
    // when there is none.
    KXDEVUI_OVERLOADS(virtual int GetSelection(wchar_t* buffer, int size), virtual double GetSelection());

    // The value with exactly this text, of the first 254 characters; -1 when there is none.
    virtual int GetIndex(const wchar_t* text);

    // How many values there are.
    virtual int GetValuesCount();

    // A number of the host's for each value, 0 at first. It goes with the value.
    virtual std::int64_t GetUserData(int index);
    virtual void SetUserData(int index, std::int64_t value);

    // The text of a value; whether the user can choose it. One that is selected stays so.
    virtual void SetValueName(int index, const wchar_t* name);
    virtual void SetValueEnabled(int index, bool enable);

    // Inserts a value before that index, at the end for -1 and the count; where it is then. -1 for every other index,
    // and for what is no number or an infinite one. The text of a number is the shortest that reads as the same.
    KXDEVUI_OVERLOADS(virtual int InsertValue(double value, int index),
                      virtual int InsertValue(const wchar_t* value, int index));
    // Calls InsertValue for each value, with start, start + 1, ... or always -1; null and a count below 1 insert
    // nothing. One that is refused leaves those after it their indexes.
    KXDEVUI_OVERLOADS(virtual void InsertValues(const double* values, int count, int start),
                      virtual void InsertValues(const wchar_t** values, int count, int start));

    // Whether something is selected. If not, "You have to choose value." is told, translated and after the text of the
    // label before the control, in a message box or, without `show`, in the log, and the control gets the focus.
    virtual bool CheckRestriction(bool show);
    // The same by name.
    bool IsAllowed(EKxComplaint complaint) { return CheckRestriction(complaint == EKxComplaint::Shown); }

    // Takes a value away; one that was selected leaves nothing in its place. False when it is not there.
    bool RemoveValue(int index);
    // Takes all away.
    void RemoveAllValues();

    // What the setters have set.
    CKxStringW GetValueName(int index) const;
    bool IsValueEnabled(int index) const;

    // A patch of that colour before the text, or an image of the pool by its name (kx_bitmappool.h); CLR_INVALID and
    // null take it away. Once one value has a picture, the texts of all stand beside one.
    void SetValueColor(int index, COLORREF color);
    void SetValueImage(int index, const wchar_t* name);

    // Turns of the wheel are used only where the control has the focus.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // The user has chosen a value, which is selected already; `veto` brings back what was selected before. Unless
    // overridden, the window's parent gets WM_COMMAND with the control's id in the low and 0x0401 in the high word of
    // wParam and the window in lParam, whose answer refuses nothing. The control may be deleted from here.
    virtual void OnSelectionChangeRequest(int index, bool& veto);

    // The platform's control of one kind: its messages, and what a control does with it.
    struct Kind {
        UINT remove;     // the message by which a value goes
        UINT clear;      // all go
        UINT rowHeight;  // rows get their height
        // The platform shows what is chosen; the host is asked about it; a message of a window inside comes, before
        // that acts on it; the user has done something inside, and it is over.
        void (*show)(ListControl&);
        void (*request)(ListControl&, bool& veto);
        std::optional<LRESULT> (*before)(ListControl&, const Message&);
        void (*settle)(ListControl&);
        // What values look like has changed; may end the control.
        void (*restyle)(ListControl&);
    };
    // That of the control T, which befriends this class, with its messages.
    template <class T>
    static constexpr Kind KindOf(UINT remove, UINT clear, UINT rowHeight) {
        return {remove,
                clear,
                rowHeight,
                [](ListControl& control) { static_cast<T&>(control).Show(); },
                [](ListControl& control, bool& veto) { static_cast<T&>(control).Request(veto); },
                [](ListControl& control, const Message& message) { return static_cast<T&>(control).Before(message); },
                [](ListControl& control) { static_cast<T&>(control).Settle(); },
                [](ListControl& control) { static_cast<T&>(control).Restyle(); }};
    }
    template <class T>
    ListControl(T* control, const Design& design, const Kind& kind) : Control(control, design), m_kind(kind) {}

    // Takes the values of a control whose place is taken.
    void Adopt(HWND placeholder);
    // Sends what OnSelectionChangeRequest sends.
    void TellParent();
    // What the user wants: asks the host, unless it is so already.
    void Choose(ListChoice wanted);
    // The platform's control shows what is chosen.
    void ShowChoice();
    // The user has done something in the platform's control; it is looked at when that is done with it.
    void HasActed();

    // There is no control of the platform's, before one is made: it is as good as gone, and rows have their heights.
    void Begin();
    // Makes the platform's control, in unzoomed pixels, after Begin; gives it all values, when m_rows is known.
    bool MakeInner(const Parts& parts, const wchar_t* windowClass, const RECT& place, DWORD style);
    void Fill();
    // Has the messages of a window inside come to Kind::before.
    void Watch(HWND window);
    // Of the control's own window, what both kinds do; asked after a kind's own.
    std::optional<LRESULT> HandleList(const Message& message);
    // Draws what the platform has asked for before, without waiting for it to ask again.
    void DrawAtOnce(DRAWITEMSTRUCT item) const;
    // Whether rows look as only this library draws them.
    bool NeedsDrawing() const;
    // The rows of the control in its font.
    long RowHeight() const noexcept { return m_rowHeight; }
    // Whether the focus is inside.
    bool HasFocus() const;
    // A turn of the wheel somewhere in the control: what it comes to in whole notches, empty without the focus, where
    // it is the parent's.
    std::optional<int> Notches(WPARAM wParam);
    // The value that a typed character leads to; -1 for none, empty for what is no letter.
    std::optional<int> TypedTo(wchar_t character, int from);

    // The platform's control, and the window with its rows, which may be the same; null while there is none.
    HWND m_inner = nullptr;
    HWND m_rows = nullptr;
    ValueList m_values;

private:
    friend class Control;
    static LRESULT CALLBACK InnerProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> HandleInner(const Message& message);
    void InsertRow(int index) const;
    void FollowInsertion(int at);
    void MeasureRows();
    void Redraw() const;
    void Restyle();
    void Draw(const DRAWITEMSTRUCT& item) const;
    void DrawPicture(HDC dc, const RECT& place, const ListValue& value, bool usable, int color) const;
    HWND LabelBefore() const;
    void Tell(KxAccess& access);
    bool ChooseOne(int index);

    Kind m_kind;
    TypeAhead m_typed;
    long m_rowHeight = 1, m_textHeight = 1;
    int m_depth = 0;    // procedures of the platform that have not returned
    int m_notches = 0;  // of the wheel, in its units
    bool m_acted = false;
    enum class Asking { No, Yes, Settled } m_asking = Asking::No;
};

}  // namespace kx::ui
