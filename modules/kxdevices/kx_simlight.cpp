#include <kxdevices/kx_simlight.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include <kxsystem/kx_time.h>

// ---- Iris ----------------------------------------------------------------------------------------------------------

CKxSimIris::CKxSimIris(const wchar_t* key, std::vector<double> steps, SKxSimIrisKind kind)
    : CKxSim(key), m_steps(std::move(steps)), m_kind(kind) {
    for (const double each : m_steps)
        if (each > m_way.to) m_way = {each, each, 0};
}

bool CKxSimIris::SetAperture(double aperture) {
    if (!std::isfinite(aperture)) return false;
    const double* nearest = nullptr;
    double widest = 0;
    for (const double& each : m_steps) {
        if (!std::isfinite(each)) continue;
        widest = std::max(widest, std::fabs(each));
        if (!nearest || std::fabs(each - aperture) < std::fabs(*nearest - aperture)) nearest = &each;
    }
    if (!nearest) return false;
    // All of the way takes as long as so many micrometres.
    constexpr double kTravel = 800;
    const double way = *nearest - m_way.At(m_motion, KX_GetTimeCounter());
    if (way != 0 || !m_motion.IsKnown()) MoveAlong(m_way, *nearest, widest > 0 ? kTravel * way / widest : 0);
    return true;
}

bool CKxSimIris::SetShutter(bool open) {
    if (!m_kind.shutter || Fails()) return false;
    m_open = open;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

void CKxSimIris::SetLocked(bool locked) {
    m_locked = locked;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Structure);
}

void CKxSimIris::TurnLightOff() {
    m_open = false;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
}

double CKxSimIris::GetStepAperture(long step) const {
    return step >= 0 && step < static_cast<long>(m_steps.size()) ? m_steps[static_cast<std::size_t>(step)] : 0;
}

bool CKxSimIris::GetAperture(double& aperture) const {
    if (m_steps.empty() || !m_motion.IsKnown()) return false;
    aperture = m_way.At(m_motion, KX_GetTimeCounter());
    return true;
}

bool CKxSimIris::GetTarget(double& aperture) const {
    if (m_steps.empty() || !m_motion.IsKnown()) return false;
    aperture = m_way.to;
    return true;
}

bool CKxSimIris::GetCapability(int capability) const { return capability == eKxCapability_NotOperable && m_locked; }

// ---- Neutral density -----------------------------------------------------------------------------------------------

CKxSimNDFilter::CKxSimNDFilter(const wchar_t* key, std::vector<std::vector<double>> wheels, bool shutter)
    : CKxSim(key), m_shutter(shutter) {
    for (std::vector<double>& each : wheels)
        m_wheels.push_back({std::move(each), 0});
}

const CKxSimNDFilter::Wheel* CKxSimNDFilter::WheelAt(long wheel) const {
    return wheel >= 0 && wheel < static_cast<long>(m_wheels.size()) ? &m_wheels[static_cast<std::size_t>(wheel)]
                                                                    : nullptr;
}

bool CKxSimNDFilter::MoveTo(long wheel, long position) {
    const Wheel* const turned = WheelAt(wheel);
    const long count = turned ? static_cast<long>(turned->transmissions.size()) : 0;
    if (position < 0 || position >= count) return false;
    // All go on until the last has arrived.
    constexpr double kPosition = 100;
    const long way = std::abs(position - std::exchange(m_wheels[static_cast<std::size_t>(wheel)].target, position));
    if (way != 0 || m_motion.state != eKxDeviceState_Ready)
        MoveOver(kPosition * static_cast<double>(std::max(way, 1L)));
    return true;
}

bool CKxSimNDFilter::SetShutter(bool open) {
    if (!m_shutter || Fails()) return false;
    m_open = open;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

void CKxSimNDFilter::SetLocked(bool locked) {
    m_locked = locked;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Structure);
}

void CKxSimNDFilter::TurnLightOff() {
    m_open = false;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
}

long CKxSimNDFilter::GetPositionCount(long wheel) const {
    const Wheel* const found = WheelAt(wheel);
    return found ? static_cast<long>(found->transmissions.size()) : 0;
}

double CKxSimNDFilter::GetTransmission(long wheel, long position) const {
    const Wheel* const found = WheelAt(wheel);
    const bool isThere = found && position >= 0 && position < static_cast<long>(found->transmissions.size());
    return isThere ? found->transmissions[static_cast<std::size_t>(position)] : 0;
}

bool CKxSimNDFilter::GetPosition(long wheel, long& position) const {
    const Wheel* const found = WheelAt(wheel);
    if (!found || found->transmissions.empty() || m_motion.state != eKxDeviceState_Ready) return false;
    position = found->target;
    return true;
}

bool CKxSimNDFilter::GetTarget(long wheel, long& position) const {
    const Wheel* const found = WheelAt(wheel);
    if (!found || found->transmissions.empty() || !m_motion.IsKnown()) return false;
    position = found->target;
    return true;
}

bool CKxSimNDFilter::GetCapability(int capability) const { return capability == eKxCapability_NotOperable && m_locked; }
