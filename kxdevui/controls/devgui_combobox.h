// CKxDevUI_ComboBox: a drop-down list of values, into which a value may be typed as well.
#pragma once

#include <windows.h>

#include <limits>
#include <optional>
#include <string>

#include <kxdevui/controls/devgui_listcontrol.h>

// One of a list of values (devgui_listcontrol.h says what such a list is), shown in a field whose list drops down. Of a
// combo box whose place is taken it also takes whether text can be typed, and how far the list drops down.
//
// While the list is open, keys and the mouse only lead to a value; it is chosen with Enter, a click, or as the list
// closes by F4 or Alt+Up. Escape leaves things as they are. While it is closed, the arrow keys, Page Up and Down, Home,
// End, letters and, with the focus, the wheel choose at once.
//
// With SetEditable, values that are not in the list can be typed: numbers of an interval, or any text. Such a field has
// the habits that the host has given to number fields (devgui_habits.h). What is typed is entered with Enter, and when
// the focus goes: a value's text or number chooses that value; another that is allowed is asked for
// (OnValueChangeRequest); what is not allowed goes, and what was shown comes back.
class KXDEVUI_API CKxDevUI_ComboBox : public kx::ui::ListControl {
public:
    // Nominal size 120 by 21, the platform's own height, no values; the list shows up to 12 rows.
    CKxDevUI_ComboBox();
    // Destroys the window.
    ~CKxDevUI_ComboBox() override;

    // How many rows the list shows at once; less than 1 is 1.
    void SetRows(int rows);

    // What can be typed.
    struct Typing {
        double minimum = -std::numeric_limits<double>::infinity();  // the least value
        double maximum = std::numeric_limits<double>::infinity();   // the greatest
        const wchar_t* unit = L"";                                  // as answers name it: "0 to 100 ms"
        bool anyText = false;                                       // not only numbers
    };
    // Lets values be typed, or no longer. The platform's control is made anew for it.
    void SetEditable(const Typing& typing);
    void SetNotEditable();
    bool IsEditable() const noexcept { return m_typing.has_value(); }

    // Shows a text that need be no value's, in a field that is editable; elsewhere as SetSelection. The host is not
    // asked.
    void SetText(const wchar_t* text);
    // What is chosen, a value's text or a typed one; not what is being typed.
    CKxStringW GetText() const;

protected:
    // The user has typed a value that is not in the list: as OnSelectionChangeRequest, with no value selected and
    // GetText the new text.
    virtual void OnValueChangeRequest(const wchar_t* value, bool& veto);

private:
    friend class kx::ui::Control;
    friend class kx::ui::ListControl;
    static const Kind kKind;
    bool Make(const kx::ui::Parts& parts);
    void Adopt(HWND placeholder);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);

    void Show();
    void Select(int index);
    void Request(bool& veto);
    std::optional<LRESULT> Before(const kx::ui::Message& message);
    std::optional<LRESULT> BeforeRows(const kx::ui::Message& message) const;
    std::optional<LRESULT> BeforeEdit(const kx::ui::Message& message);
    std::optional<LRESULT> OnKey(WPARAM key);
    std::optional<LRESULT> OnEnterKey();
    void Settle();
    void Restyle() {}
    void Go(int index);
    int Here() const;
    bool IsOpen() const;
    bool IsTyped() const;
    bool TakeTyped();
    void LeaveEdit();
    std::optional<int> MeantByTyped(const std::wstring& text) const;
    std::wstring AllowedInWords() const;
    void Layout(bool anew);
    long DropHeight() const;

    DRAWITEMSTRUCT m_field{};  // as it was drawn last; of no window when it stands otherwise now
    HWND m_edit = nullptr;
    std::optional<Typing> m_typing;
    std::wstring m_unit;
    int m_shownRows = 12;
    bool m_picked = false;  // in the list that is open
};
