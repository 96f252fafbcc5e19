// CKxDevUI_ListBox: a list of values that stands open, of which one or several are chosen.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include <kxdevui/controls/devgui_listcontrol.h>

// One or several of a list of values (devgui_listcontrol.h says what such a list is), which scrolls where it has no
// room.
//
// Where one is chosen, a click, the arrow keys, Page Up and Down, Home, End and letters choose at once. With
// SetMultiple, a click or a key chooses one, Ctrl adds and takes away, Shift chooses all up to there, the mouse can be
// drawn over several; a change of any kind is asked for as a whole. The wheel scrolls.
class KXDEVUI_API CKxDevUI_ListBox : public kx::ui::ListControl {
public:
    // Nominal size 120 by 80, no values, one of which is chosen.
    CKxDevUI_ListBox();
    // Destroys the window.
    ~CKxDevUI_ListBox() override;

    // Whether several values can be chosen. Only the first of those that are stays when that ends. The platform's
    // control is made anew for it.
    void SetMultiple(bool multiple);
    bool IsMultiple() const noexcept { return m_multiple; }

    // All that are chosen, in order. What is not there is left out, and where one can be chosen all but the first; the
    // host is not asked.
    std::vector<int> GetSelections() const { return m_values.Chosen().indexes; }
    void SetSelections(const std::vector<int>& indexes);
    bool IsSelected(int index) const;

    // Scrolls so that this value is seen.
    void ShowValue(int index);

protected:
    // Where several can be chosen, in the place of OnSelectionChangeRequest: these are chosen now, in order.
    virtual void OnSelectionsChangeRequest(const std::vector<int>& indexes, bool& veto);

private:
    friend class kx::ui::Control;
    friend class kx::ui::ListControl;
    static const Kind kKind;
    bool Make(const kx::ui::Parts& parts);
    void Adopt(HWND placeholder);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);

    void Show();
    void Request(bool& veto);
    std::optional<LRESULT> Before(const kx::ui::Message& message);
    std::optional<LRESULT> OnKey(WPARAM key);
    std::optional<LRESULT> OnMouse(const kx::ui::Message& message);
    void Go(int index);
    int Here() const;
    std::vector<int> Marked() const;
    void Settle();
    void Restyle();

    bool m_multiple = false;
    bool m_isDrawn = false;   // row by row by the library
    bool m_hasFocus = false;  // which to ask the platform takes longer than to choose a value
};
