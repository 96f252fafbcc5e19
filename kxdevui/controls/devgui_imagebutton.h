// CKxDevUI_ImageButton: a button with an image, for a click, a toggle, a held movement or a menu.
#pragma once

#include <windows.h>

#include <optional>

#include <kxbaseui/kx_menu.h>
#include <kxdevui/controls/devgui_buttoncontrol.h>

// Where the title of an image button stands; without an image in all of it.
enum class EKxButtonText {
    None,    // nowhere: it is there for screen readers
    Beside,  // right of the image
    Below,   // under the image
};

// The images of a button by its state; one that is left out is the normal one.
template <class Image>
struct KxButtonImages {
    // At rest; under the mouse; held down; of a toggle that is on; while it cannot be used, where the normal one is
    // drawn pale.
    Image normal{};
    Image hovered{};
    Image pressed{};
    Image checked{};
    Image disabled{};
};

// A button that shows an image of the pool (kx_bitmappool.h), its title, or both. It asks the host by OnClickRequest; a
// toggle asks by OnStateChangeRequest, and unless that refuses shows the new state. A state that is set tells nobody.
// Space and Enter click it as the mouse does.
//
//     m_left.SetImages({.normal = L"STAGE_LEFT"});
//     m_left.SetToolTip(L"Stage to the left");
//     m_left.SetAutoRepeat(400, 100);
//     m_left.Create(panel, 8, 8, 28, 28, true, true);
//
// Settings hold from any time on. Sizes are unzoomed pixels.
class KXDEVUI_API CKxDevUI_ImageButton : public kx::ui::ButtonControl {
public:
    // 28 by 28, a push button without image, title, menu and repetition.
    CKxDevUI_ImageButton();
    ~CKxDevUI_ImageButton() override;

    // The images by their names in the pool; null is none.
    void SetImages(const KxButtonImages<const wchar_t*>& names);
    // Where the title stands; at first nowhere.
    void SetTextPlace(EKxButtonText place);

    // Whether a click turns it on and off; the state of one that is no toggle is not shown.
    void SetToggle(bool toggle);
    bool IsToggle() const noexcept { return m_toggle; }
    void SetState(bool on);
    bool GetState() const noexcept { return m_state != 0; }

    // While it is held, by the mouse or the space bar, it asks at once, again after `delay` and then every `interval`
    // milliseconds (10 at least), and not when it is let go. That ends for good when the mouse leaves it or is taken
    // away, the button is disabled or hidden, or the host refuses. 0 as the delay is no repetition; a toggle has none.
    void SetAutoRepeat(int delay, int interval);
    // Whether it is being held so.
    bool IsRepeating() const noexcept { return m_heldBy != 0; }

    // An arrow at the right, which opens this menu, as the keys Down and F4 do; an empty menu takes it away. The menu
    // is copied.
    void SetMenu(const CKxMenu& menu);

protected:
    // The user has clicked, or holds the button. Setting `veto` ends a repetition. The control may be deleted from any
    // of these. Here: WM_COMMAND with the control's id, code 0 and its window goes to the parent, whose answer refuses
    // nothing.
    virtual void OnClickRequest(bool& veto);
    // The user wants a toggle on or off. Setting `veto` keeps the state. Here as above.
    virtual void OnStateChangeRequest(bool state, bool& veto);
    // A command of the menu was chosen. Here as above, with the command as the id.
    virtual void OnMenuRequest(int command);

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Adopt(HWND placeholder) { ButtonControl::Adopt(placeholder); }
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleButton(const kx::ui::Message& message);
    std::optional<LRESULT> HandleKey(const kx::ui::Message& message);
    static LRESULT CALLBACK ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);

    bool Click();
    void OpenMenu();
    std::optional<LRESULT> Press(const kx::ui::Message& message, int key);
    void Repeat();
    void StopRepeating();
    bool IsOnArrow(POINT at) const;
    void Draw(const DRAWITEMSTRUCT& item) const;
    void Redraw() const;

    KxButtonImages<int> m_images;
    EKxButtonText m_textPlace = EKxButtonText::None;
    CKxMenu m_menu;
    bool m_toggle = false;
    bool m_menuOpen = false;
    int m_delay = 0;     // milliseconds, 0 for no repetition
    int m_interval = 0;  // milliseconds
    int m_heldBy = 0;    // the key, or mouse button, by which it is repeating
};
