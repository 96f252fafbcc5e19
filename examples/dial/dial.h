// Dial: a control with several parts, some of which come and go; docs/writing-a-control.md quotes it.
#pragma once

#include <optional>
#include <vector>

#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/devgui_members.h>

// Shows under a title the named positions of a dial (dial_device.h) as buttons, of which the current one is down, and
// its angle in a field. A click and a number that is typed ask the host; the control moves no device.
class Dial : public kx::ui::Control {
public:
    // 220 by 62 unzoomed pixels, without positions and angle, titled "Dial".
    Dial();

    // Shows what the dial with this number tells. False for a number that no dial has, and where the device throws.
    bool Update(CDMApi_LogDevId device);
    // The position is -1 for none. Where there are more or fewer names than before, the buttons are made anew.
    void SetPositions(const std::vector<CKxStringW>& names, long position);
    void SetPosition(long position);
    // Empty while it is not known.
    void SetAngle(std::optional<double> angle);

protected:
    // The user wants the dial elsewhere; `veto` leaves it as it is. The control may be deleted from here.
    virtual void OnPositionRequest(long position, bool& veto);
    virtual void OnAngleRequest(double angle, bool& veto);

private:
    friend class kx::ui::Control;
    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);

    kx::ui::RadioRow m_row{10300};
    kx::ui::NumberField m_field{10200, 0, 360};
};
