// A simulated microscope: devices that take time to move, can be stopped, and fail when told to.
//
// Each is a device as panels see it (kx_device.h) with the commands that a host needs to move it. Time is the time
// counter's (kx_time.h). A movement ends when Tick finds its time over, so a host calls CKxSimMicroscope::Tick from a
// timer; every change is told to the listeners of the registry.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <kxdevices/kx_dmapi.h>

// A position on its way to another, as a value: knows nothing of devices or of the clock.
struct KXDEVICES_API SKxSimMotion {
    // Where it stands or came from; where it goes; how it is; the time of the end, in milliseconds of the time counter.
    long position = 0;
    long target = 0;
    EKxDeviceState state = eKxDeviceState_Ready;
    unsigned arrival = 0;

    // Sets out; a movement under way is redirected. A duration of 0 arrives with the next tick.
    void Start(long to, unsigned now, unsigned duration) noexcept;
    // Stands still where nobody knows.
    void Stop() noexcept;
    // Ends the movement when its time is over, in a failure if `fails`. True when it has ended now.
    bool Tick(unsigned now, bool fails) noexcept;
    // Empty while the position is not known.
    bool Read(long& out) const noexcept;
    // Whether it stands or is on its way, as it should.
    bool IsKnown() const noexcept { return state == eKxDeviceState_Ready || state == eKxDeviceState_Moving; }
};

// A value that goes evenly to another one while a movement lasts: a value as well.
struct KXDEVICES_API SKxSimWay {
    // Where it came from and where it goes; when it set out, in milliseconds of the time counter.
    double from = 0;
    double to = 0;
    unsigned start = 0;

    // Where it stands.
    double At(const SKxSimMotion& motion, unsigned now) const noexcept;
};

// A Z drive, which travels evenly and is somewhere on its way at any time; a value as well.
struct KXDEVICES_API SKxSimZDrive {
    // Where it can go, in micrometres, and how fast, in micrometres a second.
    double rangeMin = 0;
    double rangeMax = 1000;
    double speed = 100;
    // Where it came from and where it goes; when it set out, in milliseconds of the time counter.
    double from = 0;
    double to = 0;
    unsigned start = 0;

    // Sets out from where it stands. Beyond the range it ends at the range's end; what is not a number is ignored.
    void Start(double position, unsigned now) noexcept;
    // Where it stands, and whether it is on its way.
    double Position(unsigned now) const noexcept;
    bool IsMoving(unsigned now) const noexcept { return Position(now) != to; }
};

// An XY stage: two such axes, each at its own speed; a value as well.
struct KXDEVICES_API SKxSimXYStage {
    // From side to side, and from the front to the back.
    SKxSimZDrive x{.rangeMin = -50000, .rangeMax = 50000, .speed = 2000};
    SKxSimZDrive y{.rangeMin = -35000, .rangeMax = 35000, .speed = 2000};

    // Sets out with both, as each of them does.
    void Start(double toX, double toY, unsigned now) noexcept { x.Start(toX, now), y.Start(toY, now); }
    // Whether one of them is on its way.
    bool IsMoving(unsigned now) const noexcept { return x.IsMoving(now) || y.IsMoving(now); }
};

// What all simulated devices have: names, speed and faults.
class KXDEVICES_API CKxSimDevice {
public:
    virtual ~CKxSimDevice() = default;

    // The device as the registry knows it.
    virtual IKxDevice& Device() noexcept = 0;
    // Called by the microscope: lets a movement arrive, and tells the listeners.
    void Tick();
    // Breaks a movement off; the position is unknown then, until the next movement has ended. A laser keeps the power
    // that it has.
    void Stop();

    // How long a movement takes, in milliseconds for each position on the way, or each 100 um of a drive or a stage;
    // 150 at first.
    void SetSpeed(unsigned millisecondsPerPosition) noexcept { m_speed = millisecondsPerPosition; }
    // So many times as long, from the next movement on; 1 at first, and for 0.
    void SetSlowness(unsigned times) noexcept { m_slowness = (std::max)(times, 1u); }
    // While set, movements end as failures. Clearing it leaves a faulty device faulty until it moves again.
    // `why` is what a faulty device gives as the reason.
    void SetFails(bool fails, const CKxStringW& why = {}) {
        m_fails = fails;
        if (fails) m_why = why;
    }
    bool Fails() const noexcept { return m_fails; }

    // Turns off the light that the device makes or lets through: a laser's power is its least and its only port off, a
    // shutter is closed. At once, also while it moves, and when everything else fails.
    virtual void TurnLightOff() {}

    // Asks for a place, -1 to 9, that the device may not have: for what keeps all devices busy, whatever they are.
    virtual void TryPlace(int where) = 0;

    // In milliseconds, as it was set.
    unsigned GetMillisecondsPerPosition() const noexcept { return m_speed; }

protected:
    // Whether the listeners are told at every tick of a movement, and not of its beginning and its end alone.
    virtual bool TellsOnTheWay() const noexcept { return false; }
    // Starts to move, and tells. False, and nothing happens, when the target is not among `count` positions.
    bool Move(long target, long count);
    // The same over a distance in micrometres, to a target that the device knows; along a way, from where it stands.
    void MoveOver(double distance);
    void MoveAlong(SKxSimWay& way, double to, double distance);

    // Whether a movement has a target that can be told, and not a place on a scale.
    virtual bool TellsTarget() const noexcept { return true; }
    // A movement is broken off: true when the device knows where it stands all the same.
    virtual bool StandsStill() { return false; }
    // Called by every tick: true when something else that the device tells has changed with the time.
    virtual bool Ages() { return false; }

    // For the interface's answers.
    SKxSimMotion m_motion;
    CKxStringW m_why;

private:
    void Start(long target, long steps);

    unsigned m_speed = 150;
    unsigned m_slowness = 1;
    bool m_fails = false;
};

// One device: the interface, the simulation, and its name.
template <class Interface>
class CKxSim : public Interface, public CKxSimDevice {
public:
    // `key` is its name for everything.
    explicit CKxSim(const wchar_t* key) : m_key(key) {}

    // What the interface tells of every device.
    IKxDevice& Device() noexcept override { return *this; }
    CKxStringW GetKey() const override { return m_key; }
    EKxDeviceState GetDeviceState() const override { return m_motion.state; }
    bool GetTargetPosition(long& target) const override {
        if (m_motion.state != eKxDeviceState_Moving || !TellsTarget()) return false;
        target = m_motion.target;
        return true;
    }
    CKxStringW GetStateReason() const override {
        return m_motion.state == eKxDeviceState_Faulty ? m_why : CKxStringW();
    }

private:
    CKxStringW m_key;
};

// An objective on a simulated nosepiece.
struct SKxSimObjective {
    std::wstring name;           // empty: nothing is screwed in
    std::wstring magnification;  // such as "60x"
    std::wstring key;            // in the objective database
};

// A motorised nosepiece.
class KXDEVICES_API CKxSimNosepiece : public CKxSim<IKxDeviceNosepiece> {
public:
    // As many positions as objectives, the first one in.
    CKxSimNosepiece(const wchar_t* key, std::vector<SKxSimObjective> objectives);
    // Turns to a position, over the shorter way; false for one that is not there or not available.
    bool MoveTo(long position);
    // Screws another objective in; false for a position that is not there.
    bool SetObjective(long position, SKxSimObjective objective);
    // Locks or unlocks a position, as a collision guard does.
    void SetAvailable(long position, bool available);
    // What panels do on a click.
    void SetDeviceDriven(bool deviceDriven, bool localSelect) noexcept;

    // As the interface says.
    void TryPlace(int where) override { MoveTo(where); }
    long GetPositionCount() const override { return static_cast<long>(m_objectives.size()); }
    bool GetPosition(long& position) const override { return m_motion.Read(position); }
    bool IsDeviceDriven() const override { return m_deviceDriven; }
    bool IsLocalSelect() const override { return m_localSelect; }
    bool GetPositionAvailable(long position, CKxStringW& reason) const override;
    void GetObjectiveName(long position, CKxStringW& name) const override;
    void GetMagnification(const CKxStringW& name, CKxStringW& magnification) const override;
    void GetObjectiveKey(long position, CKxStringW& key) const override;

private:
    std::vector<SKxSimObjective> m_objectives;
    std::vector<bool> m_locked;
    bool m_deviceDriven = true;
    bool m_localSelect = false;
};

// What kind of changer a simulated filter changer is.
struct SKxSimFilterChangerKind {
    // What it holds; whether it knows its position; whether it turns by itself.
    EKxFilterType type = eKxFilterType_Emission;
    bool intelligent = true;
    bool motorized = true;
};

// A filter wheel or turret, turned by motor or by hand.
class KXDEVICES_API CKxSimFilterChanger : public CKxSim<IKxDeviceFilterChanger> {
public:
    // As many positions as filters; an empty name is an empty position.
    CKxSimFilterChanger(const wchar_t* key, std::vector<std::wstring> filters, SKxSimFilterChangerKind kind);
    // Turns to a position. False without a motor.
    bool MoveTo(long position);
    // A hand turns it: there at once.
    bool TurnByHand(long position);
    // Puts another filter in; false for a position that is not there.
    bool SetFilter(long position, const wchar_t* name);

    // As the interface says.
    void TryPlace(int where) override {
        if (!MoveTo(where)) TurnByHand(where);
    }
    long GetFilterCount() const override { return static_cast<long>(m_filters.size()); }
    bool IsIntelligent() const override { return m_kind.intelligent; }
    bool IsMotorized() const override { return m_kind.motorized; }
    EKxFilterType GetFilterType() const override { return m_kind.type; }
    void GetFilterName(long position, CKxStringW& name) const override;
    bool GetPosition(long& position) const override { return m_motion.Read(position); }

private:
    std::vector<std::wstring> m_filters;
    SKxSimFilterChangerKind m_kind;
};

// A light path switch.
class KXDEVICES_API CKxSimLightPath : public CKxSim<IKxDeviceLightPath> {
public:
    // As many positions as names.
    CKxSimLightPath(const wchar_t* key, std::vector<std::wstring> names) : CKxSim(key), m_names(std::move(names)) {}
    // Switches over; false for a position that is not there.
    bool MoveTo(long position) { return Move(position, GetPositionCount()); }

    // As the interface says.
    void TryPlace(int where) override { MoveTo(where); }
    long GetPositionCount() const override { return static_cast<long>(m_names.size()); }
    void GetPositionName(long position, CKxStringW& name) const override;
    bool GetPosition(long& position) const override { return m_motion.Read(position); }

private:
    std::vector<std::wstring> m_names;
};

// A TIRF mirror.
class KXDEVICES_API CKxSimTIRFMirror : public CKxSim<IKxDeviceTIRFMirror> {
public:
    using CKxSim::CKxSim;
    // Moves to the edge of the objective, or back to the axis.
    bool MoveTo(bool tirf) { return Move(tirf ? 1 : 0, 2); }

    // As the interface says.
    void TryPlace(int where) override { MoveTo(where % 2 != 0); }
    bool GetState(bool& tirf) const override;
};

// What a simulated device may be set to: a drive or an axis of a stage in micrometres, a power. In what is no range
// (numbers that are none, a minimum above the maximum) nothing moves.
struct KXDEVICES_API SKxSimRange {
    // Both ends belong to it.
    double minimum = 0;
    double maximum = 0;

    // Whether the position lies in it.
    bool Has(double position) const noexcept { return position >= minimum && position <= maximum; }
    // Its position that is nearest to 0.
    double NearestToZero() const noexcept;
};

// A laser unit; one port at a time, or several.
class KXDEVICES_API CKxSimLaserOutput : public CKxSim<IKxDeviceLaserOutput> {
public:
    // As many ports as names, the first one in use. `driver` is what GetPhysDevRTTIName answers.
    CKxSimLaserOutput(const wchar_t* key, std::vector<std::wstring> ports, bool several, const wchar_t* driver = L"");
    // Switches a port on or off; where one at a time is used, switching one on switches the others off, and none can be
    // switched off. False for a port that is not there or not enabled, and while it fails.
    bool SetPortUsed(long port, bool use);
    // Locks or unlocks a port, as an interlock does.
    void SetPortEnabled(long port, bool enable);
    // Powers that it can give, 0 to 100 at first; it gives the least then. What is no range is ignored.
    void SetPowerRange(SKxSimRange range);
    SKxSimRange GetPowerRange() const noexcept { return m_powers; }
    // False outside of the range, and while it fails. What leaves the laser settles, and it moves until then.
    bool SetPower(double power);
    // As it was set; GetMeasuredPower is what there is of it.
    double GetPower() const noexcept { return m_power.to; }

    // As the interface says.
    void TurnLightOff() override;
    void TryPlace(int where) override { SetPortUsed(where, !IsPortUsed(where)), SetPower(where * 10); }
    long GetPortCount() const override { return static_cast<long>(m_ports.size()); }
    CKxStringW GetPortName(long port) const override;
    bool IsPortEnabled(long port) const override;
    bool IsPortUsed(long port) const override;
    CKxStringW GetPhysDevRTTIName() const override { return m_driver; }
    bool GetCapability(int capability) const override;
    bool GetMeasuredPower(double& power) const override;

protected:
    bool TellsOnTheWay() const noexcept override { return true; }
    bool TellsTarget() const noexcept override { return false; }
    bool StandsStill() override;

private:
    struct Port {
        std::wstring name;
        bool enabled = true;
        bool used = false;
    };
    const Port* PortAt(long port) const;

    std::vector<Port> m_ports;
    bool m_several;
    CKxStringW m_driver;
    SKxSimRange m_powers{0, 100};
    SKxSimWay m_power;
};

// A shutter, or a smart one with modes and an aperture.
class KXDEVICES_API CKxSimShutter : public CKxSim<IKxDeviceShutter> {
public:
    // Closed. `apertures` (percent, rising) are a smart shutter's; without them there is only the fast mode.
    CKxSimShutter(const wchar_t* key, EKxShutterType type, std::vector<double> apertures = {});
    // Opens or closes; it takes the time of one position.
    bool SetOpen(bool open) { return Move(open ? 1 : 0, 2); }
    // Takes the nearest step; false without steps.
    bool SetAperture(double percent);
    // False for a mode that it has not.
    bool SetMode(EKxShutterMode mode);
    // While locked it can only be looked at.
    void SetLocked(bool locked);
    // The title for panels; empty or null, at first, leaves it to them.
    void SetTitle(const wchar_t* title);

    // As the interface says.
    void TurnLightOff() override;
    void TryPlace(int where) override {
        SetAperture(where * 10), SetMode(static_cast<EKxShutterMode>(where)), SetOpen(where % 2 != 0);
    }
    EKxShutterType GetShutterType() const override { return m_type; }
    bool GetState() const override { return m_motion.position == 1; }
    CKxStringW GetGUIText(int context) const override;
    bool GetCapability(int capability) const override;
    long GetApertureSteps() const override { return static_cast<long>(m_apertures.size()); }
    double GetStepAperture(long step) const override;
    double GetAperture() const override { return m_aperture; }
    EKxShutterMode GetMode() const override { return m_mode; }
    bool GetModeAvailable(EKxShutterMode mode) const override;

private:
    EKxShutterType m_type;
    std::vector<double> m_apertures;
    double m_aperture = 0;
    EKxShutterMode m_mode = eKxShutterMode_Fast;
    CKxStringW m_title;
    bool m_locked = false;
};

// A Z drive.
class KXDEVICES_API CKxSimZDrive : public CKxSim<IKxDeviceZDrive> {
public:
    // Stands as near to 0 as its range lets it.
    CKxSimZDrive(const wchar_t* key, SKxSimRange range)
        : CKxSim(key), m_range(range), m_way{range.NearestToZero(), range.NearestToZero(), 0} {}
    // Goes to a position in micrometres; false outside of the range and beyond a limit.
    bool MoveTo(double position);
    // A hand turns it, or the joystick: there at once. False while that is locked, and where it may not go.
    bool TurnByHand(double position);

    // Limits within the range; empty for none. False, and nothing is changed, for what lies outside of it and for
    // limits that would cross.
    bool SetLowerLimit(std::optional<double> limit) { return SetLimits(limit, m_upper); }
    bool SetUpperLimit(std::optional<double> limit) { return SetLimits(m_lower, limit); }
    // False outside of the range.
    bool SetHome(double home);
    // In micrometres a second, 10 to 10,000; false for all else.
    bool SetTravelSpeed(double speed);
    void SetJoystickLock(bool locked);
    // Whether a rising Z takes the objective away from the sample.
    void SetInverted(bool inverted);
    // While it stands it creeps by so many micrometres a minute, and tells that at each tick; 0, at first, is none.
    void SetDrift(double perMinute);

    // As the interface says; on its way it is somewhere between.
    void TryPlace(int where) override { MoveTo(where * 100); }
    void GetRange(double& minimum, double& maximum) const override;
    bool GetPosition(double& position) const override;
    bool GetTarget(double& position) const override;
    bool GetLowerLimit(double& limit) const override { return Give(m_lower, limit); }
    bool GetUpperLimit(double& limit) const override { return Give(m_upper, limit); }
    bool GetHome(double& home) const override { return Give(m_home, home); }
    bool GetSpeed(double& speed, double& slowest, double& fastest) const override;
    bool GetJoystickLock(bool& locked) const override { return locked = m_joystickLock, true; }
    bool IsInverted() const override { return m_inverted; }

protected:
    // Where it is changes all the way.
    bool TellsOnTheWay() const noexcept override { return true; }
    bool TellsTarget() const noexcept override { return false; }
    bool Ages() override { return m_drift != 0 && m_motion.state != eKxDeviceState_Moving; }

private:
    static bool Give(const std::optional<double>& from, double& out) {
        if (from) out = *from;
        return from.has_value();
    }
    bool SetLimits(std::optional<double> lower, std::optional<double> upper);
    bool MayGo(double position) const noexcept;
    double Stands() const;
    void Changed() const;

    SKxSimRange m_range;
    SKxSimWay m_way;
    std::optional<double> m_lower, m_upper, m_home;
    double m_speed = 0;  // as it was set; 0 before
    bool m_joystickLock = false;
    bool m_inverted = false;
    double m_drift = 0;        // a minute
    unsigned m_restSince = 0;  // since when it drifts
};

// A stage in X and Y. The library has no panel for one, so no kind either.
class KXDEVICES_API CKxSimStage : public CKxSim<IKxDevice> {
public:
    // Stands as near to 0 as its ranges let it.
    CKxSimStage(const wchar_t* key, SKxSimRange x, SKxSimRange y)
        : CKxSim(key), m_rangeX(x), m_rangeY(y), m_x(x.NearestToZero()), m_y(y.NearestToZero()) {}
    // Goes to a position in micrometres; false outside of the ranges.
    bool MoveTo(double x, double y);
    // In micrometres. Leaves both as they are, and returns false, while the position is not known.
    bool GetPosition(double& x, double& y) const;

    // As the interface says.
    void TryPlace(int where) override { MoveTo(where * 100, where * -100); }
    EKxDeviceType GetType() const override { return eKxDeviceType_Unknown; }

protected:
    bool TellsTarget() const noexcept override { return false; }

private:
    SKxSimRange m_rangeX, m_rangeY;
    double m_x, m_y;
};

// A device of which nothing is known but its name and its driver's.
class KXDEVICES_API CKxSimOther : public CKxSim<IKxDevice> {
public:
    // `driver` is what GetPhysDevRTTIName answers.
    CKxSimOther(const wchar_t* key, const wchar_t* driver) : CKxSim(key), m_driver(driver) {}

    // As the interface says.
    void TryPlace(int) override {}
    EKxDeviceType GetType() const override { return eKxDeviceType_Unknown; }
    CKxStringW GetPhysDevRTTIName() const override { return m_driver; }

private:
    CKxStringW m_driver;
};

// Owns simulated devices, registers them and lets time pass for them.
class KXDEVICES_API CKxSimMicroscope {
public:
    CKxSimMicroscope() = default;
    CKxSimMicroscope(const CKxSimMicroscope&) = delete;
    CKxSimMicroscope& operator=(const CKxSimMicroscope&) = delete;

    // Makes a device of the class Device and registers it; it lives as long as the microscope.
    template <class Device, class... Arguments>
    Device& Add(Arguments&&... arguments) {
        auto device = std::make_unique<Device>(std::forward<Arguments>(arguments)...);
        Device& result = *device;
        m_devices.push_back(std::move(device));
        CKxDeviceRegistry::Add(result);
        return result;
    }

    // To be called every few hundredths of a second; in between nothing moves.
    void Tick();
    // Stops, slows down or breaks all devices at once.
    void Stop();
    void SetSpeed(unsigned millisecondsPerPosition);
    void SetSlowness(unsigned times);
    void SetFails(bool fails, const CKxStringW& why = {});
    void TurnLightOff();

    // In the order in which they were made; owned by the microscope.
    std::vector<CKxSimDevice*> Devices() const;

private:
    std::vector<std::unique_ptr<CKxSimDevice>> m_devices;
};
