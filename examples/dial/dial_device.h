// A kind of devices of a host's own: a dial that is turned by a motor and has names for some angles.
#pragma once

#include <utility>

#include <kxdevices/kx_simdevices.h>

class IKxDeviceDial : public IKxDevice {
public:
    static constexpr EKxDeviceType kKind = static_cast<EKxDeviceType>(eKxDeviceType_FirstOwn + 1);
    EKxDeviceType GetType() const final { return kKind; }
    virtual long GetPositionCount() const = 0;
    virtual void GetPositionName(long position, CKxStringW& name) const = 0;
    // Leaves `position` or `angle` as it is, and returns false, while it is not known.
    virtual bool GetPosition(long& position) const = 0;
    virtual bool GetAngle(double& angle) const = 0;
};

// Its named positions are a quarter turn apart.
class CKxSimDial : public CKxSim<IKxDeviceDial> {
public:
    using CKxSim::CKxSim;
    bool MoveTo(long position) { return position >= 0 && position < kPositions && TurnTo(position * kQuarter); }
    bool TurnTo(double angle) {
        if (!(angle >= 0 && angle <= 360)) return false;
        MoveOver(angle - std::exchange(m_angle, angle));
        return true;
    }
    void TryPlace(int where) override { MoveTo(where) || TurnTo(where * 40); }

    long GetPositionCount() const override { return kPositions; }
    void GetPositionName(long position, CKxStringW& name) const override {
        name.Format(20, L"Place %ld", position + 1);
    }
    bool GetPosition(long& position) const override {
        const long nearest = static_cast<long>(m_angle / kQuarter);
        if (m_motion.state != eKxDeviceState_Ready || nearest >= kPositions || nearest * kQuarter != m_angle)
            return false;
        position = nearest;
        return true;
    }
    bool GetAngle(double& angle) const override {
        if (m_motion.state != eKxDeviceState_Ready) return false;
        angle = m_angle;
        return true;
    }

private:
    static constexpr long kPositions = 3;
    static constexpr double kQuarter = 90;
    double m_angle = 0;
};
