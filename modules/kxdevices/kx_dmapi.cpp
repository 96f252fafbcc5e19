#include <kxdevices/kx_dmapi.h>

#include <map>
#include <utility>
#include <vector>

#include <kxsystem/kx_log.h>

namespace {

constexpr wchar_t kSource[] = L"kx_dmapi";

struct Registry {
    std::map<CDMApi_LogDevId, IKxDevice*> devices;
    std::map<int, CKxDeviceRegistry::Listener> listeners;
    CDMApi_LogDevId lastDevice = 0;
    int lastListener = 0;
    bool grabberActive = false;
    unsigned failures = 0;
};

// Never destroyed: devices that are static objects of the host may go after this module's own.
Registry& TheRegistry() {
    static Registry& registry = *new Registry;
    return registry;
}

void Tell(CDMApi_LogDevId id, EKxDeviceChange what) {
    Registry& registry = TheRegistry();
    std::vector<int> numbers;
    for (const auto& each : registry.listeners)
        numbers.push_back(each.first);
    for (const int number : numbers) {
        const auto found = registry.listeners.find(number);
        if (found == registry.listeners.end()) continue;
        const CKxDeviceRegistry::Listener listener = found->second;  // it may remove itself
        try {
            listener(id, what);
        } catch (...) {
            KX_LOG(kSource, L"a listener to device %u has thrown an exception", id);
        }
    }
}

// Asks the device, if there is one of that kind. An exception of a host's device counts as no answer.
template <class Device = IKxDevice, class Ask>
auto Answer(CDMApi_LogDevId id, const char* function, Ask ask) -> decltype(ask(std::declval<Device&>())) {
    IKxDevice* const device = CKxDeviceRegistry::Find(id);
    try {
        if (device && (Device::kKind == eKxDeviceType_Unknown || device->GetType() == Device::kKind)) {
            return ask(static_cast<Device&>(*device));
        }
        KX_LOG(kSource, L"%hs: there is no such device with the number %u", function, id);
    } catch (...) {
        KX_LOG(kSource, L"%hs: device %u has thrown an exception", function, id);
        ++TheRegistry().failures;
    }
    return {};
}

// An output that is wanted gets the value; the answer is whether there was one.
template <class Value>
bool Give(Value* output, bool known, const Value& value) {
    if (known && output) *output = value;
    return known;
}

// What a Z drive tells of itself by one of its functions.
template <class Value>
bool GiveZ(CDMApi_LogDevId id, const char* function, bool (IKxDeviceZDrive::*get)(Value&) const, Value* output) {
    return Answer<IKxDeviceZDrive>(id, function, [=](auto& device) {
        Value value{};
        const bool known = (device.*get)(value);
        return Give(output, known, value);
    });
}

}  // namespace

IKxDevice::~IKxDevice() { CKxDeviceRegistry::Remove(*this); }

// ---- The registry --------------------------------------------------------------------------------------------------

CDMApi_LogDevId CKxDeviceRegistry::Add(IKxDevice& device) {
    if (device.m_id != 0) return device.m_id;
    Registry& registry = TheRegistry();
    device.m_id = ++registry.lastDevice;
    registry.devices[device.m_id] = &device;
    Notify(device.m_id, EKxDeviceChange::Added);
    return device.m_id;
}

void CKxDeviceRegistry::Remove(IKxDevice& device) {
    if (device.m_id == 0) return;
    // Gone first: it may be on its way out, with nothing left that a listener could ask.
    const CDMApi_LogDevId id = std::exchange(device.m_id, 0);
    TheRegistry().devices.erase(id);
    Tell(id, EKxDeviceChange::Removed);
}

IKxDevice* CKxDeviceRegistry::Find(CDMApi_LogDevId id) noexcept {
    const auto& devices = TheRegistry().devices;
    const auto found = devices.find(id);
    return found == devices.end() ? nullptr : found->second;
}

void CKxDeviceRegistry::Notify(CDMApi_LogDevId id, EKxDeviceChange what) {
    if (Find(id)) Tell(id, what);
}

int CKxDeviceRegistry::AddListener(Listener listener) {
    Registry& registry = TheRegistry();
    if (listener) registry.listeners[++registry.lastListener] = std::move(listener);
    return registry.lastListener;
}

void CKxDeviceRegistry::RemoveListener(int listener) { TheRegistry().listeners.erase(listener); }

void CKxDeviceRegistry::SetGrabberActive(bool active) { TheRegistry().grabberActive = active; }
bool CKxDeviceRegistry::IsGrabberActive() noexcept { return TheRegistry().grabberActive; }
unsigned CKxDeviceRegistry::GetFailureCount() noexcept { return TheRegistry().failures; }

// ---- Any device ----------------------------------------------------------------------------------------------------

EKxDeviceType DMApi::LogDev_GetType(CDMApi_LogDevId id) {
    return Answer(id, __func__, [](IKxDevice& device) { return device.GetType(); });
}
IKxDevice* DMApi::LogDev_GetInstance(CDMApi_LogDevId id) {
    return Answer(id, __func__, [](IKxDevice& device) { return &device; });
}
CKxStringW DMApi::LogDev_GetKey(CDMApi_LogDevId id) {
    return Answer(id, __func__, [](IKxDevice& device) { return device.GetKey(); });
}
CKxStringW DMApi::LogDev_GetShortName(CDMApi_LogDevId id) {
    return Answer(id, __func__, [](IKxDevice& device) { return device.GetShortName(); });
}
CKxStringW DMApi::LogDev_GetPhysDevRTTIName(CDMApi_LogDevId id) {
    return Answer(id, __func__, [](IKxDevice& device) { return device.GetPhysDevRTTIName(); });
}
CKxDMApiBool DMApi::LogDev_GetCapability(CDMApi_LogDevId id, int capability) {
    return Answer(id, __func__, [=](IKxDevice& device) { return device.GetCapability(capability); });
}

// ---- Nosepieces, Z drives, light paths -----------------------------------------------------------------------------

long DMApi::Nosepiece_GetPositionCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [](auto& device) { return device.GetPositionCount(); });
}
CKxDMApiBool DMApi::Nosepiece_GetPosition(CDMApi_LogDevId id, long* position) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [=](auto& device) {
        long value = -1;
        const bool known = device.GetPosition(value);
        return Give(position, known, value);
    });
}
CKxDMApiBool DMApi::Nosepiece_GetDeviceDriven(CDMApi_LogDevId id) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [](auto& device) { return device.IsDeviceDriven(); });
}
CKxDMApiBool DMApi::Nosepiece_GetLocalSelect(CDMApi_LogDevId id) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [](auto& device) { return device.IsLocalSelect(); });
}
CKxDMApiBool DMApi::Nosepiece_GetPositionAvailable(CDMApi_LogDevId id, long position, CKxStringW* reason) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [=](auto& device) {
        CKxStringW text;
        const bool available = device.GetPositionAvailable(position, text);
        if (reason) *reason = text;
        return available;
    });
}
CKxStringW DMApi::Nosepiece_GetObjectiveName(CDMApi_LogDevId id, long position) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [=](auto& device) {
        CKxStringW name;
        return device.GetObjectiveName(position, name), name;
    });
}
CKxStringW DMApi::Nosepiece_GetMagnification(CDMApi_LogDevId id, const CKxStringW& name) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [&](auto& device) {
        CKxStringW magnification;
        return device.GetMagnification(name, magnification), magnification;
    });
}
CKxStringW DMApi::Nosepiece_GetObjectiveKey(CDMApi_LogDevId id, long position) {
    return Answer<IKxDeviceNosepiece>(id, __func__, [=](auto& device) {
        CKxStringW key;
        return device.GetObjectiveKey(position, key), key;
    });
}
CKxDMApiBool DMApi::ZDrive_GetRange(CDMApi_LogDevId id, double* minimum, double* maximum) {
    return Answer<IKxDeviceZDrive>(id, __func__, [=](auto& device) {
        double low = 0, high = 0;
        device.GetRange(low, high);
        return Give(minimum, true, low) && Give(maximum, true, high);
    });
}
CKxDMApiBool DMApi::ZDrive_GetPosition(CDMApi_LogDevId id, double* position) {
    return GiveZ(id, __func__, &IKxDeviceZDrive::GetPosition, position);
}
CKxDMApiBool DMApi::ZDrive_GetTarget(CDMApi_LogDevId id, double* target) {
    return GiveZ(id, __func__, &IKxDeviceZDrive::GetTarget, target);
}
CKxDMApiBool DMApi::ZDrive_GetLowerLimit(CDMApi_LogDevId id, double* limit) {
    return GiveZ(id, __func__, &IKxDeviceZDrive::GetLowerLimit, limit);
}
CKxDMApiBool DMApi::ZDrive_GetUpperLimit(CDMApi_LogDevId id, double* limit) {
    return GiveZ(id, __func__, &IKxDeviceZDrive::GetUpperLimit, limit);
}
CKxDMApiBool DMApi::ZDrive_GetHome(CDMApi_LogDevId id, double* home) {
    return GiveZ(id, __func__, &IKxDeviceZDrive::GetHome, home);
}
CKxDMApiBool DMApi::ZDrive_GetSpeed(CDMApi_LogDevId id, double* speed, double* slowest, double* fastest) {
    return Answer<IKxDeviceZDrive>(id, __func__, [=](auto& device) {
        double is = 0, least = 0, most = 0;
        const bool known = device.GetSpeed(is, least, most);
        return Give(speed, known, is) && Give(slowest, known, least) && Give(fastest, known, most);
    });
}
CKxDMApiBool DMApi::ZDrive_GetJoystickLock(CDMApi_LogDevId id, bool* locked) {
    return GiveZ(id, __func__, &IKxDeviceZDrive::GetJoystickLock, locked);
}
CKxDMApiBool DMApi::ZDrive_GetInverted(CDMApi_LogDevId id) {
    return Answer<IKxDeviceZDrive>(id, __func__, [](auto& device) { return device.IsInverted(); });
}
long DMApi::LightPath_GetPositionCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLightPath>(id, __func__, [](auto& device) { return device.GetPositionCount(); });
}
CKxStringW DMApi::LightPath_GetPositionName(CDMApi_LogDevId id, long position) {
    return Answer<IKxDeviceLightPath>(id, __func__, [=](auto& device) {
        CKxStringW name;
        return device.GetPositionName(position, name), name;
    });
}
CKxDMApiBool DMApi::LightPath_GetPosition(CDMApi_LogDevId id, long* position) {
    return Answer<IKxDeviceLightPath>(id, __func__, [=](auto& device) {
        long value = -1;
        const bool known = device.GetPosition(value);
        return Give(position, known, value);
    });
}

// ---- Filter changers -----------------------------------------------------------------------------------------------

long DMApi::FilterChanger_GetFilterCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceFilterChanger>(id, __func__, [](auto& device) { return device.GetFilterCount(); });
}
CKxDMApiBool DMApi::FilterChanger_GetInteligent(CDMApi_LogDevId id) {
    return Answer<IKxDeviceFilterChanger>(id, __func__, [](auto& device) { return device.IsIntelligent(); });
}
CKxDMApiBool DMApi::FilterChanger_GetMotorized(CDMApi_LogDevId id) {
    return Answer<IKxDeviceFilterChanger>(id, __func__, [](auto& device) { return device.IsMotorized(); });
}
EKxFilterType DMApi::FilterChanger_GetFilterType(CDMApi_LogDevId id) {
    return Answer<IKxDeviceFilterChanger>(id, __func__, [](auto& device) { return device.GetFilterType(); });
}

// ---- Laser outputs -------------------------------------------------------------------------------------------------

long DMApi::LaserOutput_GetPortCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLaserOutput>(id, __func__, [](auto& device) { return device.GetPortCount(); });
}
CKxStringW DMApi::LaserOutput_GetPortName(CDMApi_LogDevId id, long port) {
    return Answer<IKxDeviceLaserOutput>(id, __func__, [=](auto& device) { return device.GetPortName(port); });
}
CKxDMApiBool DMApi::LaserOutput_GetPortEnable(CDMApi_LogDevId id, long port, bool* enabled) {
    return Answer<IKxDeviceLaserOutput>(id, __func__, [=](auto& device) {
        if (enabled) *enabled = device.IsPortEnabled(port);
        return true;
    });
}
CKxDMApiBool DMApi::LaserOutput_GetPortUsed(CDMApi_LogDevId id, long port) {
    return Answer<IKxDeviceLaserOutput>(id, __func__, [=](auto& device) { return device.IsPortUsed(port); });
}

// ---- Laser engines -------------------------------------------------------------------------------------------------

long DMApi::LaserEngine_GetLineCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLaserEngine>(id, __func__, [](auto& device) { return device.GetLineCount(); });
}
CKxDMApiBool DMApi::LaserEngine_GetLine(CDMApi_LogDevId id, long line, SKxLaserLine* told) {
    return Answer<IKxDeviceLaserEngine>(id, __func__, [=](auto& device) {
        SKxLaserLine value;
        const bool known = device.GetLine(line, value);
        return Give(told, known, value);
    });
}
long DMApi::LaserEngine_GetSubsetCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLaserEngine>(id, __func__, [](auto& device) { return device.GetSubsetCount(); });
}
CKxDMApiBool DMApi::LaserEngine_GetSubset(CDMApi_LogDevId id, long subset, SKxLaserSubset* told) {
    return Answer<IKxDeviceLaserEngine>(id, __func__, [=](auto& device) {
        SKxLaserSubset value;
        const bool known = device.GetSubset(subset, value);
        return Give(told, known, value);
    });
}

// ---- Shutters ------------------------------------------------------------------------------------------------------

CKxStringW DMApi::Shutter_GetGUIText(CDMApi_LogDevId id, int context) {
    return Answer<IKxDeviceShutter>(id, __func__, [=](auto& device) { return device.GetGUIText(context); });
}
EKxShutterType DMApi::Shutter_GetShutterType(CDMApi_LogDevId id) {
    return Answer<IKxDeviceShutter>(id, __func__, [](auto& device) { return device.GetShutterType(); });
}
CKxDMApiBool DMApi::Shutter_GetState(CDMApi_LogDevId id) {
    return Answer<IKxDeviceShutter>(id, __func__, [](auto& device) { return device.GetState(); });
}
long DMApi::Shutter_GetApertureSteps(CDMApi_LogDevId id) {
    return Answer<IKxDeviceShutter>(id, __func__, [](auto& device) { return device.GetApertureSteps(); });
}
double DMApi::Shutter_GetStepAperture(CDMApi_LogDevId id, long step) {
    return Answer<IKxDeviceShutter>(id, __func__, [=](auto& device) { return device.GetStepAperture(step); });
}
double DMApi::Shutter_GetAperture(CDMApi_LogDevId id) {
    return Answer<IKxDeviceShutter>(id, __func__, [](auto& device) { return device.GetAperture(); });
}
EKxShutterMode DMApi::Shutter_GetMode(CDMApi_LogDevId id) {
    return Answer<IKxDeviceShutter>(id, __func__, [](auto& device) { return device.GetMode(); });
}
CKxDMApiBool DMApi::Shutter_GetModeAvailable(CDMApi_LogDevId id, EKxShutterMode mode) {
    return Answer<IKxDeviceShutter>(id, __func__, [=](auto& device) { return device.GetModeAvailable(mode); });
}

// ---- Irises --------------------------------------------------------------------------------------------------------

EKxDiaphragm DMApi::Iris_GetDiaphragm(CDMApi_LogDevId id) {
    return Answer<IKxDeviceIris>(id, __func__, [](auto& device) { return device.GetDiaphragm(); });
}
EKxIrisUnit DMApi::Iris_GetUnit(CDMApi_LogDevId id) {
    return Answer<IKxDeviceIris>(id, __func__, [](auto& device) { return device.GetUnit(); });
}
long DMApi::Iris_GetStepCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceIris>(id, __func__, [](auto& device) { return device.GetStepCount(); });
}
double DMApi::Iris_GetStepAperture(CDMApi_LogDevId id, long step) {
    return Answer<IKxDeviceIris>(id, __func__, [=](auto& device) { return device.GetStepAperture(step); });
}
CKxDMApiBool DMApi::Iris_GetAperture(CDMApi_LogDevId id, double* aperture) {
    return Answer<IKxDeviceIris>(id, __func__, [=](auto& device) {
        double value = 0;
        const bool known = device.GetAperture(value);
        return Give(aperture, known, value);
    });
}
CKxDMApiBool DMApi::Iris_GetTarget(CDMApi_LogDevId id, double* aperture) {
    return Answer<IKxDeviceIris>(id, __func__, [=](auto& device) {
        double value = 0;
        const bool known = device.GetTarget(value);
        return Give(aperture, known, value);
    });
}
double DMApi::Iris_GetWidestNA(CDMApi_LogDevId id) {
    return Answer<IKxDeviceIris>(id, __func__, [](auto& device) { return device.GetWidestNA(); });
}
CKxDMApiBool DMApi::Iris_HasShutter(CDMApi_LogDevId id) {
    return Answer<IKxDeviceIris>(id, __func__, [](auto& device) { return device.HasShutter(); });
}
CKxDMApiBool DMApi::Iris_IsShutterOpen(CDMApi_LogDevId id) {
    return Answer<IKxDeviceIris>(id, __func__, [](auto& device) { return device.IsShutterOpen(); });
}

// ---- Neutral density -----------------------------------------------------------------------------------------------

long DMApi::NDFilter_GetWheelCount(CDMApi_LogDevId id) {
    return Answer<IKxDeviceNDFilter>(id, __func__, [](auto& device) { return device.GetWheelCount(); });
}
long DMApi::NDFilter_GetPositionCount(CDMApi_LogDevId id, long wheel) {
    return Answer<IKxDeviceNDFilter>(id, __func__, [=](auto& device) { return device.GetPositionCount(wheel); });
}
double DMApi::NDFilter_GetTransmission(CDMApi_LogDevId id, long wheel, long position) {
    return Answer<IKxDeviceNDFilter>(id, __func__,
                                     [=](auto& device) { return device.GetTransmission(wheel, position); });
}
CKxDMApiBool DMApi::NDFilter_GetPosition(CDMApi_LogDevId id, long wheel, long* position) {
    return Answer<IKxDeviceNDFilter>(id, __func__, [=](auto& device) {
        long value = -1;
        const bool known = device.GetPosition(wheel, value);
        return Give(position, known, value);
    });
}
CKxDMApiBool DMApi::NDFilter_GetTarget(CDMApi_LogDevId id, long wheel, long* position) {
    return Answer<IKxDeviceNDFilter>(id, __func__, [=](auto& device) {
        long value = -1;
        const bool known = device.GetTarget(wheel, value);
        return Give(position, known, value);
    });
}
CKxDMApiBool DMApi::NDFilter_HasShutter(CDMApi_LogDevId id) {
    return Answer<IKxDeviceNDFilter>(id, __func__, [](auto& device) { return device.HasShutter(); });
}
CKxDMApiBool DMApi::NDFilter_IsShutterOpen(CDMApi_LogDevId id) {
    return Answer<IKxDeviceNDFilter>(id, __func__, [](auto& device) { return device.IsShutterOpen(); });
}

// ---- Lamps ----------------------------------------------------------------------------------------------------------

EKxLampKind DMApi::Lamp_GetKind(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.GetLampKind(); });
}
CKxDMApiBool DMApi::Lamp_IsOn(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.IsOn(); });
}
EKxLampUnit DMApi::Lamp_GetUnit(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.GetUnit(); });
}
CKxDMApiBool DMApi::Lamp_GetRange(CDMApi_LogDevId id, double* minimum, double* maximum) {
    return Answer<IKxDeviceLamp>(id, __func__, [=](auto& device) {
        double first = 0, second = 0;
        device.GetRange(first, second);
        return Give(minimum, true, first) && Give(maximum, true, second);
    });
}
double DMApi::Lamp_GetStep(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.GetStep(); });
}
CKxDMApiBool DMApi::Lamp_GetIntensity(CDMApi_LogDevId id, double* intensity) {
    return Answer<IKxDeviceLamp>(id, __func__, [=](auto& device) {
        double value = 0;
        const bool known = device.GetIntensity(value);
        return Give(intensity, known, value);
    });
}
CKxDMApiBool DMApi::Lamp_GetMeasured(CDMApi_LogDevId id, double* intensity) {
    return Answer<IKxDeviceLamp>(id, __func__, [=](auto& device) {
        double value = 0;
        const bool known = device.GetMeasured(value);
        return Give(intensity, known, value);
    });
}
double DMApi::Lamp_GetFullTemperature(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.GetFullTemperature(); });
}
CKxDMApiBool DMApi::Lamp_GetWarmUp(CDMApi_LogDevId id, double* done, double* seconds) {
    return Answer<IKxDeviceLamp>(id, __func__, [=](auto& device) {
        double first = 0, second = 0;
        const bool known = device.GetWarmUp(first, second);
        return Give(done, known, first) && Give(seconds, known, second);
    });
}
double DMApi::Lamp_GetCoolDown(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.GetCoolDown(); });
}
CKxDMApiBool DMApi::Lamp_GetHours(CDMApi_LogDevId id, double* burnt, double* rated) {
    return Answer<IKxDeviceLamp>(id, __func__, [=](auto& device) {
        double first = 0, second = 0;
        const bool known = device.GetHours(first, second);
        return Give(burnt, known, first) && Give(rated, known, second);
    });
}
CKxDMApiBool DMApi::Lamp_HasShutter(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.HasShutter(); });
}
CKxDMApiBool DMApi::Lamp_IsShutterOpen(CDMApi_LogDevId id) {
    return Answer<IKxDeviceLamp>(id, __func__, [](auto& device) { return device.IsShutterOpen(); });
}

CKxDMApiBool DMApi::Grabber_GetActive() { return CKxDeviceRegistry::IsGrabberActive(); }
