#include <kxdevices/kx_simlamp.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <kxsystem/kx_time.h>

namespace {

// What is left of so many milliseconds, in seconds; 0 when they are over.
double SecondsLeft(unsigned since, unsigned duration) {
    const unsigned passed = KX_GetTimeCounter() - since;
    return passed < duration ? (duration - passed) / 1000.0 : 0;
}

}  // namespace

CKxSimLamp::CKxSimLamp(const wchar_t* key, SKxSimLampKind kind)
    : CKxSim(key), m_kind(kind), m_intensity(kind.minimum), m_age(AgeNow()) {}

// ---- Light ---------------------------------------------------------------------------------------------------------

// Exponentially, and so within a hundredth when the movement ends.
double CKxSimLamp::Filament() const {
    constexpr double kTimes = 5;
    const unsigned duration = m_motion.arrival - m_light.start, passed = KX_GetTimeCounter() - m_light.start;
    if (m_motion.state != eKxDeviceState_Moving || passed >= duration) return m_light.to;
    return m_light.to + (m_light.from - m_light.to) * std::exp(-kTimes * passed / duration);
}

void CKxSimLamp::Follow() {
    const double to = m_on ? m_intensity : 0;
    m_light = {Filament(), to, KX_GetTimeCounter()};
    // The same time whatever the way, counted as so many micrometres.
    constexpr double kSlow = 800, kQuick = 100;
    MoveOver(m_kind.kind == eKxLampKind_LED ? kQuick : kSlow);
}

bool CKxSimLamp::SetOn(bool on) {
    if (on && GetCoolDown() > 0) return false;
    if (on == IsOn()) return true;
    if (!on) GoOut();
    m_on = on;
    if (on) {
        m_cold = m_kind.warmUp > 0;
        m_hot = false;
        m_since = m_counted = KX_GetTimeCounter();
    }
    Follow();
    return true;
}

// What it has burnt is kept; an arc is hot.
void CKxSimLamp::GoOut() {
    if (!m_on) return;
    m_kind.burnt = Burnt();
    m_on = m_cold = false;
    m_hot = m_kind.coolDown > 0;
    m_since = KX_GetTimeCounter();
}

bool CKxSimLamp::SetIntensity(double intensity) {
    if (!(intensity >= m_kind.minimum && intensity <= m_kind.maximum)) return false;
    if (m_kind.step > 0) {
        const double steps = std::round((intensity - m_kind.minimum) / m_kind.step);
        intensity = std::min(m_kind.minimum + steps * m_kind.step, m_kind.maximum);
    }
    m_intensity = intensity;
    if (m_on)
        Follow();
    else
        Tell(EKxDeviceChange::Position);
    return true;
}

bool CKxSimLamp::SetShutter(bool open) {
    if (!m_kind.shutter || Fails()) return false;
    m_open = open;
    Tell(EKxDeviceChange::Position);
    return true;
}

void CKxSimLamp::SetLocked(bool locked) {
    m_locked = locked;
    Tell(EKxDeviceChange::Structure);
}

void CKxSimLamp::TurnLightOff() {
    GoOut();
    m_open = false;
    m_light = {};
    m_motion = {};
    Tell(EKxDeviceChange::Position);
}

bool CKxSimLamp::StandsStill() {
    const double now = Filament();
    m_light = {now, now, 0};
    if (m_on) m_intensity = std::max(now, m_kind.minimum);
    m_motion = {};
    return true;
}

// ---- Time ----------------------------------------------------------------------------------------------------------

CKxSimLamp::Age CKxSimLamp::AgeNow() const {
    double part = 0, seconds = 0;
    GetWarmUp(part, seconds);
    return {std::ceil(seconds), std::ceil(GetCoolDown()), std::floor(Burnt())};
}

bool CKxSimLamp::Ages() {
    if (m_motion.state == eKxDeviceState_Faulty) {
        GoOut();
        m_light = {};
    }
    const Age now = AgeNow();
    // The counter comes round after weeks.
    m_cold = m_cold && now.warmUp > 0;
    m_hot = m_hot && now.coolDown > 0;
    if (now.burnt != m_age.burnt) {
        m_kind.burnt = Burnt();
        m_counted = KX_GetTimeCounter();
    }
    return std::exchange(m_age, now) != now;
}

double CKxSimLamp::Burnt() const {
    const bool counts = m_on && m_kind.burnt >= 0 && m_kind.hour > 0;
    return counts ? m_kind.burnt + static_cast<double>(KX_GetTimeCounter() - m_counted) / m_kind.hour : m_kind.burnt;
}

// ---- Answers -------------------------------------------------------------------------------------------------------

void CKxSimLamp::GetRange(double& minimum, double& maximum) const {
    minimum = m_kind.minimum;
    maximum = m_kind.maximum;
}

bool CKxSimLamp::GetIntensity(double& intensity) const {
    intensity = m_intensity;
    return true;
}

bool CKxSimLamp::GetMeasured(double& intensity) const {
    if (!m_motion.IsKnown()) return false;
    constexpr double kCold = 1.0 / 3;
    double part = 0, seconds = 0;
    if (!GetWarmUp(part, seconds)) part = 1;
    intensity = Filament() * (kCold + (1 - kCold) * part);
    return true;
}

bool CKxSimLamp::GetWarmUp(double& done, double& seconds) const {
    const double left = m_cold && IsOn() ? SecondsLeft(m_since, m_kind.warmUp) : 0;
    if (!(left > 0)) return false;
    done = 1 - left * 1000 / m_kind.warmUp;
    seconds = left;
    return true;
}

double CKxSimLamp::GetCoolDown() const { return m_hot ? SecondsLeft(m_since, m_kind.coolDown) : 0; }

bool CKxSimLamp::GetHours(double& burnt, double& rated) const {
    if (m_kind.burnt < 0) return false;
    burnt = Burnt();
    rated = m_kind.rated;
    return true;
}

bool CKxSimLamp::GetCapability(int capability) const { return capability == eKxCapability_NotOperable && m_locked; }
