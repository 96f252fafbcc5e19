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

template <class Device>
constexpr EKxDeviceType kTypeOf = eKxDeviceType_Unknown;
template <>
constexpr EKxDeviceType kTypeOf<IKxDeviceFilterChanger> = eKxDeviceType_FilterChanger;
template <>
constexpr EKxDeviceType kTypeOf<IKxDeviceLaserOutput> = eKxDeviceType_LaserOutput;
template <>
constexpr EKxDeviceType kTypeOf<IKxDeviceShutter> = eKxDeviceType_Shutter;

// Asks the device, if there is one of that kind. An exception of a host's device counts as no answer.
template <class Device = IKxDevice, class Ask>
auto Answer(CDMApi_LogDevId id, const char* function, Ask ask) -> decltype(ask(std::declval<Device&>())) {
    IKxDevice* const device = CKxDeviceRegistry::Find(id);
    if (!device || (kTypeOf<Device> != eKxDeviceType_Unknown && device->GetType() != kTypeOf<Device>)) {
        KX_LOG(kSource, L"%hs: there is no such device with the number %u", function, id);
        return {};
    }
    try {
        return ask(static_cast<Device&>(*device));
    } catch (...) {
        KX_LOG(kSource, L"%hs: device %u has thrown an exception", function, id);
        return {};
    }
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

CKxDMApiBool DMApi::Grabber_GetActive() { return CKxDeviceRegistry::IsGrabberActive(); }
