// CKxDevUI_SpinBox: a pair of arrows. CKxDevUI_EditBoxSpin: an edit box with such arrows.
#pragma once

#include <kxdevui/controls/devgui_editbox.h>

// The platform's up-down control ("msctls_updown32") in the colours of the scheme. Held down, it steps faster: by 5
// after 2 seconds, by 20 after 5.
//
// Its parent hears of each step as of any up-down: WM_NOTIFY with UDN_DELTAPOS, whose answer other than 0 forbids it,
// then WM_VSCROLL with SB_THUMBPOSITION and the position. The positions can stand for values.
class KXDEVUI_API CKxDevUI_SpinBox : public CKxDevUI_Base {
public:
    // Positions from -1,000,000 to 1,000,000, which stand for themselves; nominal size 17 by 20.
    CKxDevUI_SpinBox();
    // The copy refers to the same window.
    CKxDevUI_SpinBox(const CKxDevUI_SpinBox& other) = default;
    CKxDevUI_SpinBox& operator=(const CKxDevUI_SpinBox& other) = default;
    // Destroys the window if it is this object's.
    ~CKxDevUI_SpinBox() override;

    // At (x, y) in the parent's client area; a negative cx or cy keeps the nominal size. The two flags are ignored:
    // SetVisible and SetEnabled decide.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
    // Destroys the window if it is this object's.
    void Destroy();

    // Enables or disables the arrows.
    void SetEnabled(bool enable) override;

    // `count` positions, 0 to count - 1, that stand for values evenly spread from first to last, which may be the
    // smaller one. A value that is not finite or a count outside 1 to 1,000,000 is logged and changes nothing.
    void SetRange(double first, double last, int count);
    // The value that a position stands for; a position outside counts as the nearer end.
    double ValueOf(int position) const;
    // The position nearest to a value; what is not a number has position 0.
    int PositionOf(double value) const;

    // The present position; one outside is set to the nearer end. Setting it tells nobody.
    void SetPosition(int position);
    int GetPosition() const;

private:
    static LRESULT CALLBACK WndProc_UpDown(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    LRESULT PaintArrows(const kx::ui::Message& message);
    bool IsOwn() const;

    double m_first;
    double m_last;
    int m_lowest;
    int m_highest;
};

// An edit box with arrows at the right end of the field. The arrows, the up and down keys and the wheel step the number
// by SpinStep (editbox_rules.h) from bound to bound; Page Up and Page Down go ten steps. Held down, keys grow faster as
// the arrows do. Every step displays a number and so is an OnChange; before the first one the edit gets the focus.
class KXDEVUI_API CKxDevUI_EditBoxSpin : public CKxDevUI_EditBox {
public:
    // As an edit box.
    CKxDevUI_EditBoxSpin();
    // The copy refers to the same windows.
    CKxDevUI_EditBoxSpin(const CKxDevUI_EditBoxSpin& other) = default;
    CKxDevUI_EditBoxSpin& operator=(const CKxDevUI_EditBoxSpin& other) = default;
    // Destroys the window if it is this object's.
    ~CKxDevUI_EditBoxSpin() override;

    // As for an edit box: cx is the width of label, field and arrows.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
    // In the place of an existing control; the arrows stand in its rectangle.
    using CKxDevUI_EditBox::Create;
    // The same; the arrows stand in the control's rectangle, or, when `inside` is false, to the right of it.
    HWND Create(HWND parent, HWND placeholder, bool inside);

    // Enables or disables edit and arrows.
    void SetEnabled(bool enable) override;

    // The interval, which is also where stepping ends. With equal bounds the arrows are disabled.
    void SetRestriction(double minimum, double maximum) override;

protected:
    // The user asks for `steps` steps up, negative for down. Here the number that they lead to is displayed, unless the
    // field is read-only. An override may step by its own rule.
    virtual void OnSpin(int steps);

private:
    std::optional<LRESULT> HandleSpin(const kx::ui::Message& message);
    std::optional<LRESULT> HandleKey(const kx::ui::Message& message);
    void Spin(int steps);
    bool HasRoom() const noexcept { return m_minimum < m_maximum; }

    CKxDevUI_SpinBox m_spin;
    DWORD m_keyDownTime = 0;
};
