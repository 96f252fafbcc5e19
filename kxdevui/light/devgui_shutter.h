// CKxDevUI_Shutter: a toggle button for one shutter; CKxDevUI_MechanicalShutter: the same, smaller.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_base.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/shutter_rules.h>

namespace kx::ui {
class Activity;
class Creation;
struct Message;
}  // namespace kx::ui

// A square button whose picture shows the shutter open or closed, with a title beside, above or inside it, a tooltip,
// and a menu under the right mouse button with one command, "Shutter Parameters...".
//
// A click asks the host by OnStateChangeRequest; unless that refuses, the control shows the new state. It never moves
// the shutter. What the device does arrives through Update, from the host or by the message 0x0500.
//
// Set-up, in this order: construct; Init, SetSize, SetTitlePosition and the other settings; Create; Update. Settings
// that come later hold from the next CreateControls on. Sizes are unzoomed pixels.
class KXDEVUI_API CKxDevUI_Shutter : public CKxDevUI_Base {
public:
    // 40 by 40, closed, enabled, with the translation of the title "EPI" above the button.
    CKxDevUI_Shutter();
    // The copy refers to the same windows; their messages go on to the object that made them.
    CKxDevUI_Shutter(const CKxDevUI_Shutter& other) = default;
    CKxDevUI_Shutter& operator=(const CKxDevUI_Shutter& other) = default;
    // Destroys the window, unless that belongs to another object, of which this is a copy.
    ~CKxDevUI_Shutter() override;

    // ---- Settings ----

    // Whether a title is shown, and whether in bold type. The other three values are kept for derived shutters.
    void Init(bool showTitle, bool second, bool boldTitle, bool fourth, unsigned value);
    // The same by name; what is not named is as at first.
    struct Settings {
        // As above, in the same order.
        bool showTitle = true;
        bool second = false;
        bool boldTitle = false;
        bool fourth = false;
        unsigned value = 0;
    };
    // See Settings.
    void Init(const Settings& wanted) {
        Init(wanted.showTitle, wanted.second, wanted.boldTitle, wanted.fourth, wanted.value);
    }
    // The size of the window; below 0 keeps the one held.
    void SetSize(long width, long height);
    // Puts the title to the left of the button, `size` wide (below 0: what the button leaves), or above it, `size` high
    // (below 0: 16). The button becomes 24 by 24.
    void SetTitlePosition(bool titleLeft, long size);
    // Draws the title inside the button, to the right of the picture; the button then fills the window.
    void SetTitleInButton(bool inside);
    // Makes the control as wide as its title needs, with 30 for the button, from the next SetTitle on. Of a minimum
    // above the maximum, the minimum counts.
    void SetAutomaticallyResizable(bool resizable, int minimum, int maximum);
    // Whether the right mouse button opens the menu; at first it does.
    void RenameEnabled(bool enable);

    // ---- The window ----

    // A shutter at (x, y) in the parent's client area, sized by the zoom. A negative width or height keeps the one
    // held. Starts with the common images. Null when there is no window, or a host has ended it meanwhile.
    HWND Create(HWND parent, long x, long y, long width, long height, bool visible, bool enabled) override;

    // Takes over two controls of a dialog, which keep their places: `button`, which becomes owner-drawn and gives the
    // control its id, and `title`, whose text becomes the title. The control covers both and takes the button's place
    // in the tab order. A title that is null or cannot move in (no window, one around the button) is left out. Null,
    // and nothing is touched, when `button` is no button in another window, or belongs to a control already.
    HWND Create(HWND button, HWND title);

    // Destroys the windows; nobody is told.
    void Destroy();
    // Destroys title, button and tooltip; makes them anew. Controls taken over from a dialog are made anew where they
    // stood. Without a window nothing is made.
    void DestroyControls();
    void CreateControls();

    // The enabled state of window, title and button. A locked shutter (Update) stays disabled.
    bool GetEnabled() override;
    void SetEnabled(bool enable) override;

    // The title. When it differs from the one held it is shown, and the control sizes itself for it where that is set.
    void SetTitle(const wchar_t* title) override;

    // ---- The device ----

    // Shows what the device manager tells of a shutter. `a`: the tooltip's text, shown when the
    // button is made next, and whether it can be operated from here (capability 154), by which the control is locked
    // and disabled, or unlocked and enabled, whatever the host has set before. `b`: the same with the tooltip shown,
    // its type and its title; without a title the type's ("EPI", "DIA", "Aux1", "Aux2"). `c`: its images and its state.
    // False, and nothing changed, for the id 0, and when the device throws an exception, which is logged. A number that
    // no shutter has counts as one that is closed, of type 0, without texts.
    bool Update(unsigned shutterId, bool a, bool b, bool c);
    // The same from the device itself; `a` also makes title, button and tooltip anew. False for null, and when the
    // device throws. The message 0x0500 with these flags (ShutterBand in devgui_messages.h) does this by its number.
    bool Update(IKxDeviceShutter* device, bool a, bool b, bool c);
    // Either by name: `lock` is `a`, `kind` is `b`, `state` is `c`.
    template <class Device>
    bool Update(Device device, const kx::ui::ShutterBand& what) {
        return Update(device, what.lock, what.kind, what.state);
    }

    // The state shown, true for open. Nobody is told, and a state that is held already is not drawn again.
    void SetState(bool open);
    bool GetState() const;

    // The type, and, if wanted, its title; a type other than 0 to 3 has none, and the old title stays.
    void SetType(EKxShutterType type, bool setDefaultTitle);
    EKxShutterType GetType() const;

    // The unzoomed width of the button; its window, or null.
    long GetButtonWidth() const;
    HWND GetButtonHandle() const;

    // Opens the menu at (x, y) on the screen and waits for its end; calls OnRenameDlgRequest if its command was chosen.
    // Returns the command, 0 for none.
    int PopupMenu(HWND owner, int x, int y);
    // Draws the button at once.
    void RedrawButton();

    // Takes the images for a shutter while a camera acquires (`grabberActive` is not 0) or not; for the id 0 the common
    // ones. Draws the button in every case. True when an image differs from before.
    virtual bool UpdateShutterIcon(unsigned shutterId, int grabberActive);

protected:
    // ---- Callbacks: each may destroy the window and the object ----

    // The user has clicked the button. Setting `veto` keeps the state. Here: WM_COMMAND with the control's id (code 0)
    // and its window goes to the parent, whose answer 0 vetoes, also the default procedure's.
    virtual void OnStateChangeRequest(bool newState, bool& veto);
    // "Shutter Parameters..." was chosen. Here nothing.
    virtual void OnRenameDlgRequest();

    // WM_COMMAND of the window while it is enabled: 1 for a release of the left button on the button (0x0202), which
    // asks for the other state; 0 for everything else, the button's own BN_CLICKED among it.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);

    // The window procedures of the control and of its button.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK WndProc_Button(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The window class, 0 until the first Create; the shutters by window.
    static ATOM m_Atom;
    static std::map<HWND, CKxDevUI_Shutter*> m_Instances;

    // A locked shutter is disabled whatever SetEnabled asks; the state shown.
    bool m_locked = false;
    bool m_state = false;
    // Where title and button stand: unzoomed pixels, for controls taken over from a dialog pixels on the screen.
    kx::shutter::Place m_titlePlace{0, 0, 40, 16};
    kx::shutter::Place m_buttonPlace{8, 16, 24, 24};
    // As given to Init.
    bool m_showTitle = true;
    bool m_second = false;
    bool m_boldTitle = false;
    bool m_fourth = false;
    unsigned m_value = 0;
    // Where the title is; whether the button has seen a release of the left mouse button; whether there is no menu.
    bool m_titleLeft = false;
    bool m_titleInButton = false;
    bool m_clicked = false;
    bool m_renameDisabled = false;
    // Whether the control sizes itself for its title, and the limits of its width.
    bool m_resizable = false;
    int m_minimumWidth = 64;
    int m_maximumWidth = 128;
    // What the device has told: type, tooltip, and the pool's indexes of the images.
    EKxShutterType m_type = eKxShutterType_Epi;
    CKxStringW m_toolTip;
    int m_imageOn = 0;
    int m_imageOff = 0;
    // The title's window and the button's; whether they came from a dialog.
    HWND m_titleWindow = nullptr;
    HWND m_button = nullptr;
    bool m_adopted = false;

private:
    struct Reading;

    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleButton(const kx::ui::Message& message);
    HWND MakeWindow(const kx::ui::Creation& creation, HWND parent, POINT at, bool visible, bool enabled);
    HWND Finish(HWND window) const;
    void TakeOver(HWND child, const RECT& place, const RECT& control, int id);
    void DressChildren();
    void SetFonts(bool redraw);
    void FitToTitle();
    void Click();
    void OpenMenu(HWND button);
    void Show(unsigned shutterId, const Reading& reading, bool a, bool b, bool c);
    void DrawButton(const DRAWITEMSTRUCT& item) const;
    void DrawTitle(HDC dc, RECT area, bool enabled) const;
    void ShowTip() const;

    // The life of its requests, shared with copies as the window is.
    std::shared_ptr<kx::ui::Activity> m_requests;
};

// A shutter of 30 by 30 with a button of 15 by 15.
class KXDEVUI_API CKxDevUI_MechanicalShutter : public CKxDevUI_Shutter {
public:
    // With the title "EPI" above the button, as every shutter at first.
    CKxDevUI_MechanicalShutter();

    // Visible and enabled.
    HWND Create(HWND parent, long x, long y, long width, long height);
    using CKxDevUI_Shutter::Create;
};
