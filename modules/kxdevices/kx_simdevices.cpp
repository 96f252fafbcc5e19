#include <kxdevices/kx_simdevices.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include <kxsystem/kx_time.h>

namespace {

template <class T>
const T* At(const std::vector<T>& values, long index) {
    return index >= 0 && index < static_cast<long>(values.size()) ? &values[static_cast<std::size_t>(index)] : nullptr;
}

CKxStringW TextAt(const std::vector<std::wstring>& texts, long index) {
    const std::wstring* text = At(texts, index);
    return text ? CKxStringW(*text) : CKxStringW();
}

}  // namespace

// ---- Motion --------------------------------------------------------------------------------------------------------

void SKxSimMotion::Start(long to, unsigned now, unsigned duration) noexcept {
    target = to;
    arrival = now + duration;
    state = eKxDeviceState_Moving;
}

void SKxSimMotion::Stop() noexcept {
    if (state == eKxDeviceState_Moving) state = eKxDeviceState_Unknown;
}

bool SKxSimMotion::Tick(unsigned now, bool fails) noexcept {
    // The counter wraps around: only the difference tells which is later.
    if (state != eKxDeviceState_Moving || static_cast<int>(now - arrival) < 0) return false;
    state = fails ? eKxDeviceState_Faulty : eKxDeviceState_Ready;
    if (!fails) position = target;
    return true;
}

bool SKxSimMotion::Read(long& out) const noexcept {
    if (state != eKxDeviceState_Ready) return false;
    out = position;
    return true;
}

double SKxSimWay::At(const SKxSimMotion& motion, unsigned now) const noexcept {
    const unsigned duration = motion.arrival - start;
    if (motion.state != eKxDeviceState_Moving || now - start >= duration) return to;
    return from + (to - from) * (now - start) / duration;
}

void SKxSimZDrive::Start(double position, unsigned now) noexcept {
    if (std::isnan(position)) return;
    from = Position(now);
    to = std::clamp(position, rangeMin, rangeMax);
    start = now;
}

double SKxSimZDrive::Position(unsigned now) const noexcept {
    const double travelled = speed * (now - start) / 1000.0, way = to - from;
    return travelled >= std::abs(way) ? to : from + std::copysign(travelled, way);
}

bool CKxSimDevice::Move(long target, long count) {
    if (target < 0 || target >= count) return false;
    const long way = std::labs(target - m_motion.position);
    // Around a wheel the other way may be shorter; a switch of two has only one.
    Start(target, std::max(1L, std::min(way, count - way)));
    return true;
}

void CKxSimDevice::MoveOver(double distance) {
    constexpr double kStep = 100, kMostSteps = 1000;
    Start(0, static_cast<long>(std::min(std::ceil(std::fabs(distance) / kStep), kMostSteps)));
}

void CKxSimDevice::MoveAlong(SKxSimWay& way, double to, double distance) {
    const unsigned now = KX_GetTimeCounter();
    way = {way.At(m_motion, now), to, now};
    MoveOver(distance);
}

void CKxSimDevice::Start(long target, long steps) {
    m_motion.Start(target, KX_GetTimeCounter(), static_cast<unsigned>(steps) * m_speed * m_slowness);
    CKxDeviceRegistry::Notify(Device().GetLogDevId(), EKxDeviceChange::Position);
}

void CKxSimDevice::Tick() {
    const bool onTheWay = m_motion.state == eKxDeviceState_Moving && TellsOnTheWay();
    const bool ended = m_motion.Tick(KX_GetTimeCounter(), m_fails), aged = Ages();
    if (ended || onTheWay || aged) {
        CKxDeviceRegistry::Notify(Device().GetLogDevId(), EKxDeviceChange::Position);
    }
}

void CKxSimDevice::Stop() {
    if (m_motion.state != eKxDeviceState_Moving) return;
    if (!StandsStill()) m_motion.Stop();
    CKxDeviceRegistry::Notify(Device().GetLogDevId(), EKxDeviceChange::Position);
}

// ---- Nosepiece -----------------------------------------------------------------------------------------------------

CKxSimNosepiece::CKxSimNosepiece(const wchar_t* key, std::vector<SKxSimObjective> objectives)
    : CKxSim(key), m_objectives(std::move(objectives)), m_locked(m_objectives.size()) {}

bool CKxSimNosepiece::MoveTo(long position) {
    CKxStringW reason;
    return GetPositionAvailable(position, reason) && Move(position, GetPositionCount());
}

bool CKxSimNosepiece::SetObjective(long position, SKxSimObjective objective) {
    if (!At(m_objectives, position)) return false;
    m_objectives[static_cast<std::size_t>(position)] = std::move(objective);
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Names);
    return true;
}

void CKxSimNosepiece::SetAvailable(long position, bool available) {
    if (!At(m_objectives, position)) return;
    m_locked[static_cast<std::size_t>(position)] = !available;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Structure);
}

void CKxSimNosepiece::SetDeviceDriven(bool deviceDriven, bool localSelect) noexcept {
    m_deviceDriven = deviceDriven;
    m_localSelect = localSelect;
}

bool CKxSimNosepiece::GetPositionAvailable(long position, CKxStringW& reason) const {
    const bool there = At(m_objectives, position) != nullptr;
    const bool locked = there && m_locked[static_cast<std::size_t>(position)];
    reason = !there ? L"There is no such position." : locked ? L"The position is locked." : L"";
    return there && !locked;
}

void CKxSimNosepiece::GetObjectiveName(long position, CKxStringW& name) const {
    const SKxSimObjective* objective = At(m_objectives, position);
    name = objective ? CKxStringW(objective->name) : CKxStringW();
}

void CKxSimNosepiece::GetMagnification(const CKxStringW& name, CKxStringW& magnification) const {
    const auto found = std::find_if(m_objectives.begin(), m_objectives.end(),
                                    [&](const SKxSimObjective& each) { return name == each.name.c_str(); });
    magnification = found == m_objectives.end() ? CKxStringW() : CKxStringW(found->magnification);
}

void CKxSimNosepiece::GetObjectiveKey(long position, CKxStringW& key) const {
    const SKxSimObjective* objective = At(m_objectives, position);
    key = objective ? CKxStringW(objective->key) : CKxStringW();
}

// ---- Filter changer ------------------------------------------------------------------------------------------------

CKxSimFilterChanger::CKxSimFilterChanger(const wchar_t* key, std::vector<std::wstring> filters,
                                         SKxSimFilterChangerKind kind)
    : CKxSim(key), m_filters(std::move(filters)), m_kind(kind) {}

bool CKxSimFilterChanger::MoveTo(long position) { return m_kind.motorized && Move(position, GetFilterCount()); }

bool CKxSimFilterChanger::TurnByHand(long position) {
    if (!At(m_filters, position)) return false;
    m_motion = {position, position, eKxDeviceState_Ready, 0};
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

bool CKxSimFilterChanger::SetFilter(long position, const wchar_t* name) {
    if (!At(m_filters, position)) return false;
    m_filters[static_cast<std::size_t>(position)] = name ? name : L"";
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Names);
    return true;
}

void CKxSimFilterChanger::GetFilterName(long position, CKxStringW& name) const { name = TextAt(m_filters, position); }

// ---- Light path and TIRF mirror ------------------------------------------------------------------------------------

void CKxSimLightPath::GetPositionName(long position, CKxStringW& name) const { name = TextAt(m_names, position); }

bool CKxSimTIRFMirror::GetState(bool& tirf) const {
    long position = 0;
    if (!m_motion.Read(position)) return false;
    tirf = position == 1;
    return true;
}

// ---- Laser output --------------------------------------------------------------------------------------------------

CKxSimLaserOutput::CKxSimLaserOutput(const wchar_t* key, std::vector<std::wstring> ports, bool several,
                                     const wchar_t* driver)
    : CKxSim(key), m_several(several), m_driver(driver) {
    for (std::wstring& name : ports)
        m_ports.push_back({std::move(name)});
    if (!m_ports.empty()) m_ports.front().used = true;
}

bool CKxSimLaserOutput::SetPortUsed(long port, bool use) {
    const Port* const wanted = PortAt(port);
    if (!wanted || !wanted->enabled || (!use && !m_several) || Fails()) return false;
    for (Port& each : m_ports) {
        if (&each == wanted) {
            each.used = use;
        } else if (!m_several) {
            each.used = false;
        }
    }
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

void CKxSimLaserOutput::SetPortEnabled(long port, bool enable) {
    if (!PortAt(port)) return;
    m_ports[static_cast<std::size_t>(port)].enabled = enable;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Names);
}

void CKxSimLaserOutput::SetPowerRange(SKxSimRange range) {
    if (!(range.minimum < range.maximum)) return;
    m_powers = range;
    m_power = {range.minimum, range.minimum, 0};
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Structure);
}

bool CKxSimLaserOutput::SetPower(double power) {
    if (!m_powers.Has(power) || Fails()) return false;
    // All of the range takes as long as so many micrometres.
    constexpr double kSettling = 400;
    const double way = (power - GetPower()) / (m_powers.maximum - m_powers.minimum);
    if (way != 0 || !m_motion.IsKnown()) MoveAlong(m_power, power, kSettling * way);
    return true;
}

bool CKxSimLaserOutput::GetMeasuredPower(double& power) const {
    if (!m_motion.IsKnown()) return false;
    power = m_power.At(m_motion, KX_GetTimeCounter());
    return true;
}

bool CKxSimLaserOutput::StandsStill() {
    const double power = m_power.At(m_motion, KX_GetTimeCounter());
    m_power = {power, power, 0};
    m_motion = {};
    return true;
}

void CKxSimLaserOutput::TurnLightOff() {
    m_power = {m_powers.minimum, m_powers.minimum, 0};
    m_motion = {};
    // Of several ports one is in use, light or not.
    for (Port& each : m_ports)
        each.used = each.used && !m_several;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
}

const CKxSimLaserOutput::Port* CKxSimLaserOutput::PortAt(long port) const { return At(m_ports, port); }

CKxStringW CKxSimLaserOutput::GetPortName(long port) const {
    const Port* found = PortAt(port);
    return found ? CKxStringW(found->name) : CKxStringW();
}

bool CKxSimLaserOutput::IsPortEnabled(long port) const {
    const Port* found = PortAt(port);
    return found && found->enabled;
}

bool CKxSimLaserOutput::IsPortUsed(long port) const {
    const Port* found = PortAt(port);
    return found && found->used;
}

bool CKxSimLaserOutput::GetCapability(int capability) const {
    return capability == eKxCapability_LaserPortsExclusive && !m_several;
}

// ---- Shutter -------------------------------------------------------------------------------------------------------

CKxSimShutter::CKxSimShutter(const wchar_t* key, EKxShutterType type, std::vector<double> apertures)
    : CKxSim(key), m_type(type), m_apertures(std::move(apertures)) {
    if (!m_apertures.empty()) m_aperture = m_apertures.back();
}

void CKxSimShutter::TurnLightOff() {
    m_motion = {};
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
}

bool CKxSimShutter::SetAperture(double percent) {
    if (m_apertures.empty() || !std::isfinite(percent)) return false;
    m_aperture = *std::min_element(m_apertures.begin(), m_apertures.end(), [percent](double a, double b) {
        return std::fabs(a - percent) < std::fabs(b - percent);
    });
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

bool CKxSimShutter::SetMode(EKxShutterMode mode) {
    if (!GetModeAvailable(mode)) return false;
    m_mode = mode;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

void CKxSimShutter::SetLocked(bool locked) {
    m_locked = locked;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Structure);
}

void CKxSimShutter::SetTitle(const wchar_t* title) {
    m_title = title;
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Names);
}

CKxStringW CKxSimShutter::GetGUIText(int context) const {
    return context == eKxShutterText_ToolTip ? GetKey() : context == eKxShutterText_Title ? m_title : CKxStringW();
}

bool CKxSimShutter::GetCapability(int capability) const { return capability == eKxCapability_NotOperable && m_locked; }

double CKxSimShutter::GetStepAperture(long step) const {
    const double* aperture = At(m_apertures, step);
    return aperture ? *aperture : 0;
}

bool CKxSimShutter::GetModeAvailable(EKxShutterMode mode) const {
    return mode == eKxShutterMode_Fast ||
           (!m_apertures.empty() && (mode == eKxShutterMode_Soft || mode == eKxShutterMode_Aperture));
}

// ---- Drives and stages ---------------------------------------------------------------------------------------------

double SKxSimRange::NearestToZero() const noexcept { return std::max(minimum, std::min(0.0, maximum)); }

bool CKxSimZDrive::MayGo(double position) const noexcept {
    return m_range.Has(position) && (!m_lower || position >= *m_lower) && (!m_upper || position <= *m_upper);
}

// Where it was sent, and what it has crept since.
double CKxSimZDrive::Stands() const {
    const unsigned now = KX_GetTimeCounter();
    const double at = m_way.At(m_motion, now);
    if (m_drift == 0 || m_motion.state == eKxDeviceState_Moving) return at;
    constexpr double kMinute = 60000;
    return std::clamp(at + m_drift * (now - m_restSince) / kMinute, m_range.minimum, m_range.maximum);
}

bool CKxSimZDrive::MoveTo(double position) {
    if (!MayGo(position)) return false;
    const double at = Stands();
    MoveAlong(m_way, position, position - at);
    m_way.from = at;
    m_restSince = m_motion.arrival;
    return true;
}

bool CKxSimZDrive::TurnByHand(double position) {
    if (m_joystickLock || !MayGo(position)) return false;
    m_motion = {};
    m_restSince = KX_GetTimeCounter();
    m_way = {position, position, m_restSince};
    CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    return true;
}

bool CKxSimZDrive::SetLimits(std::optional<double> lower, std::optional<double> upper) {
    if ((lower && !m_range.Has(*lower)) || (upper && !m_range.Has(*upper)) || (lower && upper && *lower > *upper))
        return false;
    m_lower = lower;
    m_upper = upper;
    Changed();
    return true;
}

bool CKxSimZDrive::SetHome(double home) {
    if (!m_range.Has(home)) return false;
    m_home = home;
    Changed();
    return true;
}

namespace {

constexpr double kSlowest = 10, kFastest = 10000;  // micrometres a second

// For 100 micrometres.
unsigned MillisecondsAt(double speed) { return static_cast<unsigned>(std::lround(100 * 1000 / speed)); }

}  // namespace

bool CKxSimZDrive::SetTravelSpeed(double speed) {
    if (!(speed >= kSlowest && speed <= kFastest)) return false;
    m_speed = speed;
    SetSpeed(MillisecondsAt(speed));
    Changed();
    return true;
}

// What was set, whatever milliseconds it has been given since; before, what those come to.
bool CKxSimZDrive::GetSpeed(double& speed, double& slowest, double& fastest) const {
    const double milliseconds = std::max(GetMillisecondsPerPosition(), 1u);
    speed = m_speed > 0 ? m_speed : std::clamp(100 * 1000 / milliseconds, kSlowest, kFastest);
    slowest = kSlowest;
    fastest = kFastest;
    return true;
}

void CKxSimZDrive::SetJoystickLock(bool locked) {
    m_joystickLock = locked;
    Changed();
}

void CKxSimZDrive::SetInverted(bool inverted) {
    m_inverted = inverted;
    Changed();
}

void CKxSimZDrive::SetDrift(double perMinute) {
    if (!std::isfinite(perMinute)) return;
    if (m_motion.state != eKxDeviceState_Moving) {
        m_way.to = Stands();
        m_restSince = KX_GetTimeCounter();
    }
    m_drift = perMinute;
}

void CKxSimZDrive::Changed() const { CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Structure); }

void CKxSimZDrive::GetRange(double& minimum, double& maximum) const {
    minimum = m_range.minimum;
    maximum = m_range.maximum;
}

bool CKxSimZDrive::GetPosition(double& position) const {
    if (m_motion.IsKnown()) position = Stands();
    return m_motion.IsKnown();
}

bool CKxSimZDrive::GetTarget(double& position) const {
    if (m_motion.IsKnown()) position = m_way.to;
    return m_motion.IsKnown();
}

bool CKxSimStage::MoveTo(double x, double y) {
    if (!m_rangeX.Has(x) || !m_rangeY.Has(y)) return false;
    const double wayX = x - std::exchange(m_x, x), wayY = y - std::exchange(m_y, y);
    MoveOver(std::max(std::fabs(wayX), std::fabs(wayY)));
    return true;
}

bool CKxSimStage::GetPosition(double& x, double& y) const {
    if (m_motion.state != eKxDeviceState_Ready) return false;
    x = m_x;
    y = m_y;
    return true;
}

// ---- The microscope ------------------------------------------------------------------------------------------------

std::vector<CKxSimDevice*> CKxSimMicroscope::Devices() const {
    std::vector<CKxSimDevice*> devices;
    devices.reserve(m_devices.size());
    for (const auto& device : m_devices)
        devices.push_back(device.get());
    return devices;
}

void CKxSimMicroscope::Tick() {
    // A listener may add a device: only those that are there now.
    for (CKxSimDevice* device : Devices())
        device->Tick();
}

void CKxSimMicroscope::Stop() {
    for (CKxSimDevice* device : Devices())
        device->Stop();
}

void CKxSimMicroscope::SetSpeed(unsigned millisecondsPerPosition) {
    for (const auto& device : m_devices)
        device->SetSpeed(millisecondsPerPosition);
}

void CKxSimMicroscope::SetSlowness(unsigned times) {
    for (const auto& device : m_devices)
        device->SetSlowness(times);
}

void CKxSimMicroscope::SetFails(bool fails, const CKxStringW& why) {
    for (const auto& device : m_devices)
        device->SetFails(fails, why);
}

void CKxSimMicroscope::TurnLightOff() {
    for (const auto& device : m_devices)
        device->TurnLightOff();
}
