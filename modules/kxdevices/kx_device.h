// What the devices of a microscope look like to panels: one interface for each kind.
//
// A host brings its own devices by deriving from these and registering the objects (CKxDeviceRegistry in
// kx_dmapi.h). What they tell is const: mark each function `override`, since one that is not const would silently be
// another function. The objects stay the host's. Positions, ports, steps and modes count from 0. Interfaces only tell;
// what moves a device is the host's affair.
#pragma once

#include <optional>
#include <vector>

#include <kxdevices/kxdevices_api.h>
#include <kxsystem/kx_string.h>

// The number of a registered device; 0 is none.
using CDMApi_LogDevId = unsigned;

// Kinds of devices.
enum EKxDeviceType : int {
    eKxDeviceType_Unknown = 0,
    eKxDeviceType_Nosepiece = 2,
    eKxDeviceType_FilterChanger = 3,
    eKxDeviceType_Shutter = 4,
    eKxDeviceType_ZDrive = 5,
    eKxDeviceType_LaserOutput = 12,
    eKxDeviceType_LightPath = 13,
    eKxDeviceType_TIRFMirror = 23,
    eKxDeviceType_LaserEngine = 30,
    eKxDeviceType_Iris = 31,
    eKxDeviceType_NDFilter = 32,
    eKxDeviceType_Lamp = 33,
    eKxDeviceType_FirstOwn = 1000,  // from here on: kinds of a host's own
};

// Where a device is in its life. While it is not ready, its position is not to be relied on.
enum EKxDeviceState : int {
    eKxDeviceState_Ready = 0,
    eKxDeviceState_Moving = 1,   // on its way; a notice follows when it has arrived
    eKxDeviceState_Unknown = 2,  // stands somewhere: stopped on its way, or moved by hand
    eKxDeviceState_Faulty = 3,   // a movement has failed
};

// Capabilities that panels ask for.
enum EKxDeviceCapability : int {
    eKxCapability_LaserPortsExclusive = 152,  // one port, or one subset of lines, at a time
    eKxCapability_NotOperable = 154,          // cannot be operated from here: shown, but locked
};

// What every device tells.
class KXDEVICES_API IKxDevice {
public:
    IKxDevice() = default;
    IKxDevice(const IKxDevice&) = delete;
    IKxDevice& operator=(const IKxDevice&) = delete;
    // Takes the device out of the registry.
    virtual ~IKxDevice();

    // The number given by the registry; 0 while not registered.
    CDMApi_LogDevId GetLogDevId() const noexcept { return m_id; }

    // The kind; decides which interface the object must have. An interface names its kind as kKind; the one of all
    // devices has none.
    static constexpr EKxDeviceType kKind = eKxDeviceType_Unknown;
    virtual EKxDeviceType GetType() const = 0;
    // The name that tells it from all others of the microscope, and a short one for titles (here the same).
    virtual CKxStringW GetKey() const = 0;
    virtual CKxStringW GetShortName() const { return GetKey(); }
    // The class name of the driver behind it; empty when of no interest.
    virtual CKxStringW GetPhysDevRTTIName() const { return {}; }
    // One of EKxDeviceCapability, or a number of the host's own.
    virtual bool GetCapability(int) const { return false; }
    virtual EKxDeviceState GetDeviceState() const { return eKxDeviceState_Ready; }
    // Where it goes while it moves, counted as its positions are, a shutter's open as 1. False when it cannot tell.
    virtual bool GetTargetPosition(long&) const { return false; }
    // Why it is in its state (faulty), or cannot be operated, to be shown to the user; empty when nothing is known.
    virtual CKxStringW GetStateReason() const { return {}; }

private:
    friend class CKxDeviceRegistry;
    CDMApi_LogDevId m_id = 0;
};

// A revolving nosepiece with objectives.
class KXDEVICES_API IKxDeviceNosepiece : public IKxDevice {
public:
    // Always a nosepiece.
    static constexpr EKxDeviceType kKind = eKxDeviceType_Nosepiece;
    EKxDeviceType GetType() const final { return kKind; }

    // How many positions there are.
    virtual long GetPositionCount() const = 0;
    // Leaves `position` as it is, and returns false, while it is not known.
    virtual bool GetPosition(long& position) const = 0;
    // Whether the device decides what a panel shows as selected, and whether a panel selects all the same.
    virtual bool IsDeviceDriven() const { return false; }
    virtual bool IsLocalSelect() const { return false; }
    // Whether the position can be reached; the text says why not.
    virtual bool GetPositionAvailable(long position, CKxStringW& reason) const = 0;
    // The objective's name at a position, empty for none; the magnification of an objective by its name, such as "60x";
    // its key in the objective database.
    virtual void GetObjectiveName(long position, CKxStringW& name) const = 0;
    virtual void GetMagnification(const CKxStringW& name, CKxStringW& magnification) const = 0;
    virtual void GetObjectiveKey(long position, CKxStringW& key) const = 0;
};

// What a filter changer holds. Cubes and dichroic mirrors are drawn square.
enum EKxFilterType : int {
    eKxFilterType_Emission = 0,
    eKxFilterType_Excitation = 1,
    eKxFilterType_Cube = 2,
    eKxFilterType_NeutralDensity = 3,
    eKxFilterType_Polariser = 4,
    eKxFilterType_DichroicMirror = 5,
};

// A wheel, turret or slider with filters.
class KXDEVICES_API IKxDeviceFilterChanger : public IKxDevice {
public:
    // Always a filter changer.
    static constexpr EKxDeviceType kKind = eKxDeviceType_FilterChanger;
    EKxDeviceType GetType() const final { return kKind; }

    // How many positions for filters there are.
    virtual long GetFilterCount() const = 0;
    // Knows its own position; has a motor. An intelligent one without motor is turned by hand.
    virtual bool IsIntelligent() const = 0;
    virtual bool IsMotorized() const = 0;
    virtual EKxFilterType GetFilterType() const = 0;
    // Whether panels are titled with the key; with the short name otherwise.
    virtual bool IsKeyTitle() const { return false; }
    // Empty for an empty position.
    virtual void GetFilterName(long position, CKxStringW& name) const = 0;
    // Leaves `position` as it is, and returns false, while it is not known.
    virtual bool GetPosition(long& position) const = 0;
};

// A prism or mirror that sends the light to one of several ports.
class KXDEVICES_API IKxDeviceLightPath : public IKxDevice {
public:
    // Always a light path.
    static constexpr EKxDeviceType kKind = eKxDeviceType_LightPath;
    EKxDeviceType GetType() const final { return kKind; }

    // How many positions there are, and their names.
    virtual long GetPositionCount() const = 0;
    virtual void GetPositionName(long position, CKxStringW& name) const = 0;
    // Leaves `position` as it is, and returns false, while it is not known.
    virtual bool GetPosition(long& position) const = 0;
};

// The mirror that sends the laser along the axis (EPI) or to the edge of the objective (TIRF).
class KXDEVICES_API IKxDeviceTIRFMirror : public IKxDevice {
public:
    // Always a TIRF mirror.
    static constexpr EKxDeviceType kKind = eKxDeviceType_TIRFMirror;
    EKxDeviceType GetType() const final { return kKind; }

    // True for TIRF. Leaves `tirf` as it is, and returns false, while it is not known.
    virtual bool GetState(bool& tirf) const = 0;
};

// A laser unit with output ports.
class KXDEVICES_API IKxDeviceLaserOutput : public IKxDevice {
public:
    // Always a laser output.
    static constexpr EKxDeviceType kKind = eKxDeviceType_LaserOutput;
    EKxDeviceType GetType() const final { return kKind; }

    // How many ports there are, and their names.
    virtual long GetPortCount() const = 0;
    virtual CKxStringW GetPortName(long port) const = 0;
    // Whether the port may be used, and whether it is in use now.
    virtual bool IsPortEnabled(long port) const = 0;
    virtual bool IsPortUsed(long port) const = 0;

    // The power that leaves it, on the scale that panels ask on. False when it does not measure.
    virtual bool GetMeasuredPower(double&) const { return false; }
};

// What one line of a laser engine tells. Powers are percent of the line's full power.
struct SKxLaserLine {
    // What it is called; in nanometres, 0 while it is not known.
    CKxStringW name = {};
    double wavelength = 0;
    // Whether it is on; its power, as it was asked for; the most that may be asked for; milliwatts at 100 %, 0 while
    // they are not known.
    bool on = false;
    double power = 0;
    double limit = 100;
    double fullPower = 0;
    // What leaves the line; the gain of its acousto-optic filter, in percent.
    std::optional<double> measured = {};
    std::optional<double> gain = {};
    // Whether it settles or has failed, an open interlock keeps it dark, it can be operated; why, for each of these.
    EKxDeviceState state = eKxDeviceState_Ready;
    bool interlock = false;
    bool usable = true;
    CKxStringW reason = {};

    // All of it the same.
    bool operator==(const SKxLaserLine&) const = default;
};

// Lines that share a fibre, a port or a combiner, and so are used together.
struct SKxLaserSubset {
    // What it is called; the numbers of its lines; whether it is in use, can be used; why not.
    CKxStringW name = {};
    std::vector<long> lines = {};
    bool active = false;
    bool usable = true;
    CKxStringW reason = {};

    // All of it the same.
    bool operator==(const SKxLaserSubset&) const = default;
};

// A laser engine: lines that are switched and set each by itself, through an acousto-optic filter as a rule.
class KXDEVICES_API IKxDeviceLaserEngine : public IKxDevice {
public:
    // Always a laser engine.
    static constexpr EKxDeviceType kKind = eKxDeviceType_LaserEngine;
    EKxDeviceType GetType() const final { return kKind; }

    // How many lines there are, in any order; what one of them tells. Leaves `told` as it is, and returns false, for
    // one that is not there.
    virtual long GetLineCount() const = 0;
    virtual bool GetLine(long line, SKxLaserLine& told) const = 0;

    // The same of subsets. A line in none of them can always be used. With eKxCapability_LaserPortsExclusive one subset
    // is active at a time.
    virtual long GetSubsetCount() const { return 0; }
    virtual bool GetSubset(long, SKxLaserSubset&) const { return false; }
};

// What a shutter shuts; panels have a title for each.
enum EKxShutterType : int {
    eKxShutterType_Epi = 0,
    eKxShutterType_Dia = 1,
    eKxShutterType_Aux1 = 2,
    eKxShutterType_Aux2 = 3,
};

// How a smart shutter works.
enum EKxShutterMode : int {
    eKxShutterMode_Fast = 0,
    eKxShutterMode_Soft = 1,
    eKxShutterMode_Aperture = 2,  // opens as far as its aperture says
};

// Which of a shutter's texts is wanted.
enum EKxShutterText : int {
    eKxShutterText_ToolTip = 5,
    eKxShutterText_Title = 6,
};

// A shutter; a smart one also has modes and an aperture in steps.
class KXDEVICES_API IKxDeviceShutter : public IKxDevice {
public:
    // Always a shutter.
    static constexpr EKxDeviceType kKind = eKxDeviceType_Shutter;
    EKxDeviceType GetType() const final { return kKind; }

    // What it shuts.
    virtual EKxShutterType GetShutterType() const = 0;
    // True when open.
    virtual bool GetState() const = 0;
    // Empty: the panel's own text serves.
    virtual CKxStringW GetGUIText(int context) const = 0;

    // Steps are percent of the full aperture, rising.
    virtual long GetApertureSteps() const { return 0; }
    virtual double GetStepAperture(long) const { return 0; }
    virtual double GetAperture() const { return 0; }
    virtual EKxShutterMode GetMode() const { return eKxShutterMode_Fast; }
    virtual bool GetModeAvailable(EKxShutterMode mode) const { return mode == eKxShutterMode_Fast; }
};

// What an iris limits: the part of the specimen that gets light, or the angles from which that comes.
enum EKxDiaphragm : int {
    eKxDiaphragm_Field = 0,
    eKxDiaphragm_Aperture = 1,
};

// What the apertures of an iris are.
enum EKxIrisUnit : int {
    eKxIrisUnit_Percent = 0,      // of its widest diameter
    eKxIrisUnit_Millimetres = 1,  // its diameter
    eKxIrisUnit_Steps = 2,        // of its drive, of which nothing else is known
};

// An iris diaphragm with a drive, with or without a shutter before it.
class KXDEVICES_API IKxDeviceIris : public IKxDevice {
public:
    // Always an iris.
    static constexpr EKxDeviceType kKind = eKxDeviceType_Iris;
    EKxDeviceType GetType() const final { return kKind; }

    // What it limits, and in what its apertures count.
    virtual EKxDiaphragm GetDiaphragm() const { return eKxDiaphragm_Field; }
    virtual EKxIrisUnit GetUnit() const = 0;
    // The apertures that it can be set to.
    virtual long GetStepCount() const = 0;
    virtual double GetStepAperture(long step) const = 0;
    // Where it stands, also between two steps while it moves. Leaves `aperture` as it is, and returns false, while it
    // is not known.
    virtual bool GetAperture(double& aperture) const = 0;
    // Where it was sent, which is where it stands once it is there. False when it cannot tell.
    virtual bool GetTarget(double&) const { return false; }
    // Of an aperture diaphragm: the numerical aperture of the light at its widest; 0 when that is not known.
    virtual double GetWidestNA() const { return 0; }

    // Whether there is a shutter, and whether that is open.
    virtual bool HasShutter() const { return false; }
    virtual bool IsShutterOpen() const { return false; }
};

// Neutral density in the light: a wheel or slider with attenuations, or several in series; with or without a shutter.
class KXDEVICES_API IKxDeviceNDFilter : public IKxDevice {
public:
    // Always neutral density.
    static constexpr EKxDeviceType kKind = eKxDeviceType_NDFilter;
    EKxDeviceType GetType() const final { return kKind; }

    // How many wheels the light goes through, how many positions one has, and what part of the light each lets through,
    // from 0 to 1.
    virtual long GetWheelCount() const { return 1; }
    virtual long GetPositionCount(long wheel) const = 0;
    virtual double GetTransmission(long wheel, long position) const = 0;
    // Leaves `position` as it is, and returns false, while it is not known.
    virtual bool GetPosition(long wheel, long& position) const = 0;
    // Where a wheel was sent, which is where it stands once it is there. False when it cannot tell.
    virtual bool GetTarget(long, long&) const { return false; }

    // Whether there is a shutter, and whether that is open.
    virtual bool HasShutter() const { return false; }
    virtual bool IsShutterOpen() const { return false; }
};

// What makes the light of a lamp.
enum EKxLampKind : int {
    eKxLampKind_LED = 0,
    eKxLampKind_Halogen = 1,  // a filament, whose colour changes with its voltage
    eKxLampKind_Arc = 2,      // is bright after minutes, and cannot be lit while it is hot
};

// What the intensities of a lamp are.
enum EKxLampUnit : int {
    eKxLampUnit_Percent = 0,  // of its full light
    eKxLampUnit_Volts = 1,    // at its filament
};

// A lamp, with or without a shutter before it.
class KXDEVICES_API IKxDeviceLamp : public IKxDevice {
public:
    // Always a lamp.
    static constexpr EKxDeviceType kKind = eKxDeviceType_Lamp;
    EKxDeviceType GetType() const final { return kKind; }

    // What makes its light, and whether it is on.
    virtual EKxLampKind GetLampKind() const = 0;
    virtual bool IsOn() const = 0;
    // The intensities that it can be set to, what they are, and how far apart; a step of 0 leaves none out. A lamp
    // whose largest is not above its least can only be switched.
    virtual EKxLampUnit GetUnit() const { return eKxLampUnit_Percent; }
    virtual void GetRange(double& minimum, double& maximum) const = 0;
    virtual double GetStep() const { return 0; }
    // What it was set to, also while it is off. Leaves `intensity` as it is, and returns false, while it is not known.
    virtual bool GetIntensity(double& intensity) const = 0;
    // What there is of it now, on the same scale: less while it follows, or is not warm. False when it does not
    // measure.
    virtual bool GetMeasured(double&) const { return false; }

    // Of a halogen lamp: the colour temperature of its largest intensity, in kelvin; 0 when that is not known.
    virtual double GetFullTemperature() const { return 0; }
    // What part of its warming up is done, from 0 to 1, and how many seconds it still takes, below 0 when that is not
    // known. False when it is not warming up, or does not tell.
    virtual bool GetWarmUp(double&, double&) const { return false; }
    // The seconds until it may be lit again; 0 when it may be now.
    virtual double GetCoolDown() const { return 0; }
    // The hours that it has burnt, and those that it is good for, 0 when they are not known. False when nobody counts.
    virtual bool GetHours(double&, double&) const { return false; }

    // Whether there is a shutter, and whether that is open.
    virtual bool HasShutter() const { return false; }
    virtual bool IsShutterOpen() const { return false; }
};

// A drive that focuses, or a piezo: anything that stands somewhere along Z.
class KXDEVICES_API IKxDeviceZDrive : public IKxDevice {
public:
    // Always a Z drive.
    static constexpr EKxDeviceType kKind = eKxDeviceType_ZDrive;
    EKxDeviceType GetType() const final { return kKind; }

    // Where it may go, in micrometres.
    virtual void GetRange(double& minimum, double& maximum) const = 0;
    // In micrometres. Leaves `position` as it is, and returns false, while it is not known.
    virtual bool GetPosition(double& position) const = 0;
    // Where it was sent, which is where it stands once it is there. False when it cannot tell.
    virtual bool GetTarget(double&) const { return false; }

    // What follows leaves its outputs as they are, and returns false, where there is no such thing. The limits that the
    // user has set within the range, beyond which the drive is not to go; where its home is.
    virtual bool GetLowerLimit(double&) const { return false; }
    virtual bool GetUpperLimit(double&) const { return false; }
    virtual bool GetHome(double&) const { return false; }
    // How fast it goes, and the slowest and the fastest that it can be set to, in micrometres a second.
    virtual bool GetSpeed(double&, double&, double&) const { return false; }
    // Whether the joystick, or the knob, by which it is moved by hand is locked.
    virtual bool GetJoystickLock(bool&) const { return false; }
    // Whether a rising Z takes the objective away from the sample: then the upper end is the safe one.
    virtual bool IsInverted() const { return false; }
};
