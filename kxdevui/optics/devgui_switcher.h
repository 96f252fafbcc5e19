// CKxDevUI_Switcher: the panel of a switch with a few positions.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxsystem/kx_string.h>

namespace kx::ui {
struct Message;
}

// Shows the positions of a light path or a TIRF mirror, or the output ports of a laser unit, as buttons of which the
// current one is down. A click asks the host; the panel moves no device.
//
//     class Path : public CKxDevUI_Switcher {
//         void OnPositionChangeRequest(long position, bool&) override { m_path.MoveTo(position); }
//     };
//     path.Create(parent, 10, 10, 256, 32);
//     path.Update(m_path.GetLogDevId(), {.structure = true, .names = true});   // and again with what has changed
//
// Positions count from 0; there are at most 16. All measures are unzoomed pixels. With the keyboard, the arrow keys
// move between the positions that can be used, Space or Enter clicks.
//
// The panel is no CKxDevUI_Base: a container takes it for a plain window. Its parent is told nothing.
class KXDEVUI_API CKxDevUI_Switcher {
public:
    // 256 by 32, two positions, titled with the translation of "Switcher".
    CKxDevUI_Switcher();
    CKxDevUI_Switcher(const CKxDevUI_Switcher&) = delete;
    CKxDevUI_Switcher& operator=(const CKxDevUI_Switcher&) = delete;
    // Destroys the window.
    virtual ~CKxDevUI_Switcher();

    // Makes the window at (x, y) in the parent's client area, in pixels of the screen (CKxGUILayoutManager::Zoomed of
    // what was laid out), visible, and its parts, all sizes unzoomed; an earlier window is destroyed first. A negative
    // size keeps the one held. The height is that of one row; further rows are added to it. The flags are ignored.
    HWND Create(HWND parent, long x, long y, long width, long height, bool, bool);
    // Without them.
    HWND Create(HWND parent, long x, long y, long width, long height) {
        return Create(parent, x, y, width, height, true, true);
    }
    // Destroys the window; what was set stays, for another Create.
    void Destroy();
    operator HWND() const noexcept;

    // Reads the device anew: its structure (which rebuilds the buttons, gives the title and reads the state too), the
    // names, the state. By number, a light path or a TIRF mirror goes to the form for it, and any other device is taken
    // for a laser output. False, and nothing is changed, for the number 0, null, a number that no such device has, and
    // a device that throws an exception, which is logged. Sends the host no request. The message 0x0500 with these
    // flags (SwitcherBand in devgui_messages.h) does the same.
    //
    // A laser unit of the class "CKxLU4ADevice" or "CKxLU4ADeviceSim" has its first two ports in reverse order: the
    // first button is port 1. With two positions, the port of the second button decides which of them is down.
    bool Update(unsigned int device, bool structure, bool names, bool state);
    bool Update(IKxDeviceLaserOutput* device, bool structure, bool names, bool state);
    bool Update(IKxDeviceLightPath* device, bool structure, bool names, bool state);
    bool Update(IKxDeviceTIRFMirror* device, bool structure, bool names, bool state);
    // Each of them by name.
    template <class Device>
    bool Update(Device device, const kx::ui::SwitcherBand& what) {
        return Update(device, what.structure, what.names, what.state);
    }

    // Presses the button of a position and releases all others, silently. The current one and those that are not there,
    // -1 among them, are ignored.
    void SetPosition(long position);
    long GetPosition() const noexcept;
    // Presses or releases the button of one port, whatever the others show; one that is not there is ignored.
    void SetPortSingle(long port, bool on);

    // Enables or disables the buttons; those of ports that cannot be used stay disabled.
    void SetEnable(bool enable);

    // The text of frame and title. A null text is the empty text.
    void SetTitle(const wchar_t* title);
    CKxStringW GetTitle() const;

    // Several ports can be active at once: a click asks for one port with OnSetPortSingleRequest, and the buttons show
    // what the device has answered. Off at first.
    void SetBoolMoreThanOnePortCanBeActive(bool several);
    // Position 0 at the right end; for the next Create or structure.
    void SetInvertOrder(bool invert) noexcept;

    // Whether the Tab key stops at the panel; off at first.
    void SetTabStop(bool stop);

    // The panel of each window.
    static std::map<HWND, CKxDevUI_Switcher*> m_Instances;

protected:
    // The user clicks a position, the current one included. The selection moves whatever is done with `flag`: a host
    // that refuses updates the panel from the device later. The panel may be destroyed or deleted from here.
    virtual void OnPositionChangeRequest(long position, bool& flag);
    // Where several ports can be active: the user clicks a port. Nothing is shown before SetPortSingle or Update.
    virtual void OnSetPortSingleRequest(long port);

    // ---- For panels derived from this one ----

    // Makes all children anew, from what is held, or only takes them away. Nothing is made without a window.
    void CreateControls();
    void DestroyControls();
    // Repaints the buttons.
    void RedrawButtons() const;

    // What WM_COMMAND of the panel leads to: 1 for a click on a button, 0 for everything else.
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    // The window procedures of panel, buttons and frame.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK BtnWndProc(HWND button, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK GroupWndProc(HWND frame, UINT message, WPARAM wParam, LPARAM lParam);

    // ---- Layout, for the next Create or structure ----

    // The size of the window, the height with one row; the place of the title; the first button's left end; the size of
    // a button.
    long m_width = 256;
    long m_height = 32;
    int m_titleX = 5;
    int m_titleY = 0;
    int m_titleWidth = 100;
    int m_titleHeight = 32;
    int m_firstX = 110;
    int m_buttonWidth = 70;
    int m_buttonHeight = 24;
    // A frame; one that is larger than the window; a title beside the buttons, at the left of its place instead of
    // centred; titles in bold type.
    bool m_hasFrame = true;
    bool m_oversizeFrame = false;
    bool m_hasTitle = false;
    bool m_titleLeft = false;
    bool m_boldTitle = false;

    // The window class, 0 until the first Create.
    static ATOM m_Atom;

private:
    // The windows, and what is held.
    struct Inside;

    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    std::optional<LRESULT> HandleButton(const kx::ui::Message& message);
    std::optional<LRESULT> HandleFrame(const kx::ui::Message& message);
    struct Reading;
    template <class Ask>
    bool AskAndShow(CDMApi_LogDevId device, const Ask& ask);
    void Show(const Reading& told, unsigned int device);

    const std::unique_ptr<Inside> m_inside;
};
