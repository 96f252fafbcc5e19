// CKxDevUI_LightND: neutral density in the light, with its shutter.
#pragma once

#include <array>

#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/light/devgui_lightcontrol.h>

// A title, beside it what comes through, in percent and as optical density (OD = -lg T); below it a shutter, if the
// device has one, and for each wheel a row of buttons, one for each of its attenuations with both numbers on it. Of two
// wheels in series the product is shown.
//
// The button that is down is where the wheel is, or where it was sent while it moves; none while nobody knows. What the
// user wants goes to the host by the protected callbacks. The control never turns a wheel: what the device does arrives
// through Update, from the host or by the message 0x0500.
class KXDEVUI_API CKxDevUI_LightND : public kx::ui::LightControl {
public:
    // No control shows more wheels, no wheel more positions: what is beyond is left out.
    static constexpr int kMostWheels = 2;
    static constexpr int kMostPositions = kx::ui::RadioRow::kMost;

    // 268 by 62 unzoomed pixels, titled "Neutral density", without wheels and shutter. A second wheel has its row below
    // the first, for which the control has to be 38 higher.
    CKxDevUI_LightND();
    ~CKxDevUI_LightND() override;

    // Shows what the device with this number tells: `structure` reads wheels, transmissions and shutter anew, `state`
    // positions, whether it moves or has failed, and whether the shutter is open. False, and nothing is shown, for a
    // number that no such device has, and where it throws. Without flags both; the message 0x0500 brings them
    // (LightBand in devgui_messages.h).
    bool Update(CDMApi_LogDevId device) { return Update(device, {true, true}); }
    bool Update(CDMApi_LogDevId device, const kx::ui::LightBand& what);

    // What the positions of a wheel let through, from 0 to 1, in the order of the buttons; a wheel without positions is
    // none. What is no such number is shown as unknown. None is down then if there are more or fewer than before.
    void SetTransmissions(int wheel, const std::vector<double>& transmissions);
    // Which position is in; -1, and all that the wheel has not, for none. The host is not asked.
    void SetPosition(int wheel, long position);
    long GetPosition(int wheel) const noexcept;
    // What comes through all wheels, from 0 to 1; empty while that of one of them is not known.
    std::optional<double> GetTransmission() const;

protected:
    // The user wants another attenuation of a wheel. `veto` keeps the one that is. The control may be deleted from
    // here.
    virtual void OnAttenuationChangeRequest(int wheel, long position, bool& veto);

private:
    friend class kx::ui::Control;
    struct Told;
    struct Wheel {
        explicit Wheel(int firstId) : first(firstId), row(firstId) {}
        int first;
        kx::ui::RadioRow row;
        std::vector<double> transmissions;
    };

    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    bool SetWheel(Wheel& wheel, const std::vector<double>& transmissions);
    CKxStringW ProductText() const;
    void ShowProduct() const;

    std::array<Wheel, kMostWheels> m_wheels{Wheel(10300), Wheel(10320)};
};
