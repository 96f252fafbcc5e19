// The registry of devices, and DMApi, which answers questions about them by number.
#pragma once

#include <functional>

#include <kxdevices/kx_device.h>
#include <kxdevices/kxdevices_api.h>

// What has changed about a device.
enum class EKxDeviceChange : int {
    Position,   // position, state of a shutter, port in use, or the device's own state
    Names,      // names of positions, ports, filters, objectives
    Structure,  // number or kind of positions
    Added,      // registered
    Removed,    // has left the registry: the number belongs to no device any more
};

// The devices that a process knows. Belongs to the GUI thread, as panels do.
//
// A host registers its device objects and tells of their changes; whoever shows devices listens, and sends its panels
// the message 0x0500.
class KXDEVICES_API CKxDeviceRegistry {
public:
    // Called with the device's number and what has changed about it.
    using Listener = std::function<void(CDMApi_LogDevId device, EKxDeviceChange what)>;

    // Gives the device a number that no device has had before, and tells the listeners. A device that has one keeps it.
    // The registry does not own it; it leaves by Remove or by its end.
    static CDMApi_LogDevId Add(IKxDevice& device);
    static void Remove(IKxDevice& device);

    // Null for a number that no device has.
    static IKxDevice* Find(CDMApi_LogDevId id) noexcept;

    // Tells all listeners. A number that no device has is ignored. A listener may add and remove listeners and devices.
    static void Notify(CDMApi_LogDevId id, EKxDeviceChange what);

    // Returns a number for RemoveListener. An exception of a listener is logged and goes no further.
    static int AddListener(Listener listener);
    static void RemoveListener(int listener);

    // Whether a camera acquires images: shutters look different then. False at first.
    static void SetGrabberActive(bool active);
    static bool IsGrabberActive() noexcept;

    // How many of DMApi's questions have been answered with nothing because the device threw an exception: who shows
    // answers compares the count before and after, and lets what it shows stand when it has grown.
    static unsigned GetFailureCount() noexcept;
};

// The boolean answer of the device manager.
class CKxDMApiBool {
public:
    // Any bool is one.
    CKxDMApiBool(bool value = false) noexcept : m_value(value) {}
    // And the other way round.
    operator bool() const noexcept { return m_value; }

private:
    bool m_value;
};

// Answers from the registered device with the number given. A number that no device has, or one whose device is of
// another kind, is answered with 0, false, null or an empty text, and logged. An index out of range is answered by the
// device.
struct KXDEVICES_API DMApi {
    // Of any device; the instance is the registered object.
    static EKxDeviceType LogDev_GetType(CDMApi_LogDevId id);
    static IKxDevice* LogDev_GetInstance(CDMApi_LogDevId id);
    static CKxStringW LogDev_GetKey(CDMApi_LogDevId id);
    static CKxStringW LogDev_GetShortName(CDMApi_LogDevId id);
    static CKxStringW LogDev_GetPhysDevRTTIName(CDMApi_LogDevId id);
    static CKxDMApiBool LogDev_GetCapability(CDMApi_LogDevId id, int capability);

    // Of nosepieces. Outputs, which may be null, are left as they are where false is returned: no such device, or a
    // position that is not known; the reason why a position is not available is told with false.
    static long Nosepiece_GetPositionCount(CDMApi_LogDevId id);
    static CKxDMApiBool Nosepiece_GetPosition(CDMApi_LogDevId id, long* position);
    static CKxDMApiBool Nosepiece_GetDeviceDriven(CDMApi_LogDevId id);
    static CKxDMApiBool Nosepiece_GetLocalSelect(CDMApi_LogDevId id);
    static CKxDMApiBool Nosepiece_GetPositionAvailable(CDMApi_LogDevId id, long position, CKxStringW* reason);
    static CKxStringW Nosepiece_GetObjectiveName(CDMApi_LogDevId id, long position);
    static CKxStringW Nosepiece_GetMagnification(CDMApi_LogDevId id, const CKxStringW& name);
    static CKxStringW Nosepiece_GetObjectiveKey(CDMApi_LogDevId id, long position);

    // Of Z drives, in micrometres; outputs as above.
    static CKxDMApiBool ZDrive_GetRange(CDMApi_LogDevId id, double* minimum, double* maximum);
    static CKxDMApiBool ZDrive_GetPosition(CDMApi_LogDevId id, double* position);
    static CKxDMApiBool ZDrive_GetTarget(CDMApi_LogDevId id, double* target);
    static CKxDMApiBool ZDrive_GetLowerLimit(CDMApi_LogDevId id, double* limit);
    static CKxDMApiBool ZDrive_GetUpperLimit(CDMApi_LogDevId id, double* limit);
    static CKxDMApiBool ZDrive_GetHome(CDMApi_LogDevId id, double* home);
    static CKxDMApiBool ZDrive_GetSpeed(CDMApi_LogDevId id, double* speed, double* slowest, double* fastest);
    static CKxDMApiBool ZDrive_GetJoystickLock(CDMApi_LogDevId id, bool* locked);
    static CKxDMApiBool ZDrive_GetInverted(CDMApi_LogDevId id);

    // Of light paths; the output as above.
    static long LightPath_GetPositionCount(CDMApi_LogDevId id);
    static CKxStringW LightPath_GetPositionName(CDMApi_LogDevId id, long position);
    static CKxDMApiBool LightPath_GetPosition(CDMApi_LogDevId id, long* position);

    // Of filter changers.
    static long FilterChanger_GetFilterCount(CDMApi_LogDevId id);
    static CKxDMApiBool FilterChanger_GetInteligent(CDMApi_LogDevId id);
    static CKxDMApiBool FilterChanger_GetMotorized(CDMApi_LogDevId id);
    static EKxFilterType FilterChanger_GetFilterType(CDMApi_LogDevId id);

    // Of laser outputs. GetPortEnable leaves `enabled` as it is, and returns false, when there is no such device.
    static long LaserOutput_GetPortCount(CDMApi_LogDevId id);
    static CKxStringW LaserOutput_GetPortName(CDMApi_LogDevId id, long port);
    static CKxDMApiBool LaserOutput_GetPortEnable(CDMApi_LogDevId id, long port, bool* enabled);
    static CKxDMApiBool LaserOutput_GetPortUsed(CDMApi_LogDevId id, long port);

    // Of laser engines; outputs as those of nosepieces.
    static long LaserEngine_GetLineCount(CDMApi_LogDevId id);
    static CKxDMApiBool LaserEngine_GetLine(CDMApi_LogDevId id, long line, SKxLaserLine* told);
    static long LaserEngine_GetSubsetCount(CDMApi_LogDevId id);
    static CKxDMApiBool LaserEngine_GetSubset(CDMApi_LogDevId id, long subset, SKxLaserSubset* told);

    // Of shutters. The context of a text is an EKxShutterText; apertures are percent of the full one.
    static CKxStringW Shutter_GetGUIText(CDMApi_LogDevId id, int context);
    static EKxShutterType Shutter_GetShutterType(CDMApi_LogDevId id);
    static CKxDMApiBool Shutter_GetState(CDMApi_LogDevId id);
    static long Shutter_GetApertureSteps(CDMApi_LogDevId id);
    static double Shutter_GetStepAperture(CDMApi_LogDevId id, long step);
    static double Shutter_GetAperture(CDMApi_LogDevId id);
    static EKxShutterMode Shutter_GetMode(CDMApi_LogDevId id);
    static CKxDMApiBool Shutter_GetModeAvailable(CDMApi_LogDevId id, EKxShutterMode mode);

    // Of irises; outputs as above.
    static EKxDiaphragm Iris_GetDiaphragm(CDMApi_LogDevId id);
    static EKxIrisUnit Iris_GetUnit(CDMApi_LogDevId id);
    static long Iris_GetStepCount(CDMApi_LogDevId id);
    static double Iris_GetStepAperture(CDMApi_LogDevId id, long step);
    static CKxDMApiBool Iris_GetAperture(CDMApi_LogDevId id, double* aperture);
    static CKxDMApiBool Iris_GetTarget(CDMApi_LogDevId id, double* aperture);
    static double Iris_GetWidestNA(CDMApi_LogDevId id);
    static CKxDMApiBool Iris_HasShutter(CDMApi_LogDevId id);
    static CKxDMApiBool Iris_IsShutterOpen(CDMApi_LogDevId id);

    // Of neutral density; outputs as above.
    static long NDFilter_GetWheelCount(CDMApi_LogDevId id);
    static long NDFilter_GetPositionCount(CDMApi_LogDevId id, long wheel);
    static double NDFilter_GetTransmission(CDMApi_LogDevId id, long wheel, long position);
    static CKxDMApiBool NDFilter_GetPosition(CDMApi_LogDevId id, long wheel, long* position);
    static CKxDMApiBool NDFilter_GetTarget(CDMApi_LogDevId id, long wheel, long* position);
    static CKxDMApiBool NDFilter_HasShutter(CDMApi_LogDevId id);
    static CKxDMApiBool NDFilter_IsShutterOpen(CDMApi_LogDevId id);

    // Of lamps; outputs as above.
    static EKxLampKind Lamp_GetKind(CDMApi_LogDevId id);
    static CKxDMApiBool Lamp_IsOn(CDMApi_LogDevId id);
    static EKxLampUnit Lamp_GetUnit(CDMApi_LogDevId id);
    static CKxDMApiBool Lamp_GetRange(CDMApi_LogDevId id, double* minimum, double* maximum);
    static double Lamp_GetStep(CDMApi_LogDevId id);
    static CKxDMApiBool Lamp_GetIntensity(CDMApi_LogDevId id, double* intensity);
    static CKxDMApiBool Lamp_GetMeasured(CDMApi_LogDevId id, double* intensity);
    static double Lamp_GetFullTemperature(CDMApi_LogDevId id);
    static CKxDMApiBool Lamp_GetWarmUp(CDMApi_LogDevId id, double* done, double* seconds);
    static double Lamp_GetCoolDown(CDMApi_LogDevId id);
    static CKxDMApiBool Lamp_GetHours(CDMApi_LogDevId id, double* burnt, double* rated);
    static CKxDMApiBool Lamp_HasShutter(CDMApi_LogDevId id);
    static CKxDMApiBool Lamp_IsShutterOpen(CDMApi_LogDevId id);

    // Whether a camera acquires images.
    static CKxDMApiBool Grabber_GetActive();
};
