// BeamSwitch: a whole small control, which docs/writing-a-control.md builds step by step.
#pragma once

#include <windows.h>

#include <optional>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_base.h>

namespace kx::ui {
struct Message;
}

// Shows under a title whether a shutter lets light through, as a button that is down then. A click asks the host; the
// control moves no device.
class BeamSwitch : public CKxDevUI_Base {
public:
    // 96 by 44 unzoomed pixels, closed, titled "Beam".
    BeamSwitch();
    // Destroys the window.
    ~BeamSwitch() override;

    // Makes the window at (x, y) in the parent's client area; an older one is destroyed. A negative size keeps the one
    // held. The flags are ignored: SetVisible and SetEnabled decide.
    HWND Create(HWND parent, long x, long y, long cx, long cy, bool, bool) override;
    // Destroys the window; nobody is told.
    void Destroy();

    void SetEnabled(bool enable) override;
    void SetTitle(const wchar_t* title) override;

    // Shows what the shutter with this number tells. False for a number that no shutter has, and where the device
    // throws; what is shown stays then. Sends the host no request.
    bool Update(CDMApi_LogDevId device);
    void SetOpen(bool open);
    bool IsOpen() const noexcept { return m_open; }

protected:
    // The user wants the beam on or off; `veto` leaves it as it is. The control may be deleted from here.
    virtual void OnOpenRequest(bool open, bool& veto);

    // The window procedure; the window class, 0 until the first Create.
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static ATOM m_Atom;

private:
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    void Click();

    HWND m_label = nullptr;
    HWND m_button = nullptr;
    bool m_open = false;
};
