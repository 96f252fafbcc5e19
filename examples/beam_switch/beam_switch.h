// BeamSwitch: a whole small control, which docs/writing-a-control.md builds step by step.
#pragma once

#include <kxdevui/framework/devgui_control.h>

// Shows under a title whether a shutter lets light through, as a button that is down then. A click asks the host; the
// control moves no device.
class BeamSwitch : public kx::ui::Control {
public:
    // 96 by 44 unzoomed pixels, closed, titled "Beam".
    BeamSwitch();

    // Shows what the shutter with this number tells. False for a number that no shutter has, and where the device
    // throws; what is shown stays then. Sends the host no request.
    bool Update(CDMApi_LogDevId device);
    void SetOpen(bool open);
    bool IsOpen() const noexcept { return m_open; }

protected:
    // The user wants the beam on or off; `veto` leaves it as it is. The control may be deleted from here.
    virtual void OnOpenRequest(bool open, bool& veto);

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    void Show() const;

    bool m_open = false;
};
