// Simulated devices that stand in the light; see kx_simdevices.h.
#pragma once

#include <vector>

#include <kxdevices/kx_simdevices.h>

// What kind of iris a simulated one is.
struct SKxSimIrisKind {
    // As the interface tells them.
    EKxDiaphragm diaphragm = eKxDiaphragm_Field;
    EKxIrisUnit unit = eKxIrisUnit_Percent;
    double widestNA = 0;
    bool shutter = false;
};

// An iris that opens and closes evenly, and tells of it on the way; stopped there, it does not know where it is.
class KXDEVICES_API CKxSimIris : public CKxSim<IKxDeviceIris> {
public:
    // At its widest step, the shutter closed. `steps` are told as they are given.
    CKxSimIris(const wchar_t* key, std::vector<double> steps, SKxSimIrisKind kind = {});
    // Goes to the nearest step, over all of them in the time of eight positions; false without steps, and for what is
    // no finite number.
    bool SetAperture(double aperture);
    // At once; false without a shutter, and while it fails.
    bool SetShutter(bool open);
    // While locked it can only be looked at.
    void SetLocked(bool locked);

    // As the interface says.
    void TurnLightOff() override;
    void TryPlace(int where) override { SetShutter(where % 2 != 0), SetAperture(where * 10); }
    EKxDiaphragm GetDiaphragm() const override { return m_kind.diaphragm; }
    EKxIrisUnit GetUnit() const override { return m_kind.unit; }
    long GetStepCount() const override { return static_cast<long>(m_steps.size()); }
    double GetStepAperture(long step) const override;
    bool GetAperture(double& aperture) const override;
    bool GetTarget(double& aperture) const override;
    double GetWidestNA() const override { return m_kind.widestNA; }
    bool HasShutter() const override { return m_kind.shutter; }
    bool IsShutterOpen() const override { return m_open; }
    bool GetCapability(int capability) const override;

protected:
    bool TellsOnTheWay() const noexcept override { return true; }
    bool TellsTarget() const noexcept override { return false; }

private:
    std::vector<double> m_steps;
    SKxSimIrisKind m_kind;
    SKxSimWay m_way;
    bool m_open = false;
    bool m_locked = false;
};

// Wheels with neutral density filters, one behind the other, which turn at the same time; stopped on its way, one does
// not know where it is.
class KXDEVICES_API CKxSimNDFilter : public CKxSim<IKxDeviceNDFilter> {
public:
    // For each wheel what its positions let through, as told; the first position in, the shutter closed.
    CKxSimNDFilter(const wchar_t* key, std::vector<std::vector<double>> wheels, bool shutter);
    // Turns a wheel to a position; false for one that is not there.
    bool MoveTo(long wheel, long position);
    // At once; false without a shutter, and while it fails.
    bool SetShutter(bool open);
    // While locked it can only be looked at.
    void SetLocked(bool locked);

    // As the interface says.
    void TurnLightOff() override;
    void TryPlace(int where) override { MoveTo(where % 2, where / 2), SetShutter(where % 2 != 0); }
    long GetWheelCount() const override { return static_cast<long>(m_wheels.size()); }
    long GetPositionCount(long wheel) const override;
    double GetTransmission(long wheel, long position) const override;
    bool GetPosition(long wheel, long& position) const override;
    bool GetTarget(long wheel, long& position) const override;
    bool HasShutter() const override { return m_shutter; }
    bool IsShutterOpen() const override { return m_open; }
    bool GetCapability(int capability) const override;

protected:
    bool TellsTarget() const noexcept override { return false; }

private:
    struct Wheel {
        std::vector<double> transmissions;
        long target = 0;
    };
    const Wheel* WheelAt(long wheel) const;

    std::vector<Wheel> m_wheels;
    bool m_shutter;
    bool m_open = false;
    bool m_locked = false;
};
