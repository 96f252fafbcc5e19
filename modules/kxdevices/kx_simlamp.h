// A simulated lamp; see kx_simdevices.h.
#pragma once

#include <kxdevices/kx_simdevices.h>

// What kind of lamp a simulated one is.
struct SKxSimLampKind {
    // As the interface tells them.
    EKxLampKind kind = eKxLampKind_LED;
    EKxLampUnit unit = eKxLampUnit_Percent;
    double minimum = 0;
    double maximum = 100;
    double step = 0;
    double fullTemperature = 0;
    // How long an arc takes to warm up, and to cool before it may be lit again, in milliseconds; 0 is no time.
    unsigned warmUp = 0;
    unsigned coolDown = 0;
    // Hours burnt before, below 0 when nobody counts them, and good for; how long one is, in milliseconds.
    double burnt = -1;
    double rated = 0;
    unsigned hour = 3600000;
    bool shutter = false;
};

// A lamp whose light follows what it is set to as that of a filament does, ever more slowly, and of an LED nearly at
// once; an arc has a third of its light until it is warm. One that fails does not light, or goes out.
class KXDEVICES_API CKxSimLamp : public CKxSim<IKxDeviceLamp> {
public:
    // Off, at its least intensity, the shutter closed. The kind is told as it is given.
    CKxSimLamp(const wchar_t* key, SKxSimLampKind kind);
    // False, switching on, while it is hot.
    bool SetOn(bool on);
    // Takes the nearest step; false outside of the range, and for what is no number.
    bool SetIntensity(double intensity);
    // At once; false without a shutter, and while it fails.
    bool SetShutter(bool open);
    // While locked it can only be looked at.
    void SetLocked(bool locked);

    // As the interface says.
    void TurnLightOff() override;
    void TryPlace(int where) override { SetShutter(where % 2 != 0), SetIntensity(where * 10), SetOn(where % 3 != 0); }
    EKxLampKind GetLampKind() const override { return m_kind.kind; }
    bool IsOn() const override { return m_on && m_motion.state != eKxDeviceState_Faulty; }
    EKxLampUnit GetUnit() const override { return m_kind.unit; }
    void GetRange(double& minimum, double& maximum) const override;
    double GetStep() const override { return m_kind.step; }
    bool GetIntensity(double& intensity) const override;
    bool GetMeasured(double& intensity) const override;
    double GetFullTemperature() const override { return m_kind.fullTemperature; }
    bool GetWarmUp(double& done, double& seconds) const override;
    double GetCoolDown() const override;
    bool GetHours(double& burnt, double& rated) const override;
    bool HasShutter() const override { return m_kind.shutter; }
    bool IsShutterOpen() const override { return m_open; }
    bool GetCapability(int capability) const override;

protected:
    bool TellsOnTheWay() const noexcept override { return true; }
    bool TellsTarget() const noexcept override { return false; }
    bool StandsStill() override;
    bool Ages() override;

private:
    // What the passing time changes, as it is shown.
    struct Age {
        double warmUp;
        double coolDown;
        double burnt;
        bool operator==(const Age&) const = default;
    };
    Age AgeNow() const;
    double Filament() const;
    double Burnt() const;
    void Follow();
    void GoOut();
    void Tell(EKxDeviceChange what) const { CKxDeviceRegistry::Notify(GetLogDevId(), what); }

    SKxSimLampKind m_kind;
    double m_intensity;
    SKxSimWay m_light;
    bool m_on = false;
    bool m_open = false;
    bool m_locked = false;
    bool m_cold = false;   // has been lit and is not warm
    bool m_hot = false;    // has gone out and may not be lit
    unsigned m_since = 0;  // when either began, and since when hours are counted, in milliseconds of the time counter
    unsigned m_counted = 0;
    Age m_age;
};
