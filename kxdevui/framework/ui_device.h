// For authors of controls: asking devices, which are the host's own objects: what they throw is logged, and the control
// stays as it was.
#pragma once

#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// Logs the exception that is being handled, which a device has thrown, under the name of the control's source.
KXDEVUI_API void LogDeviceFailure(const wchar_t* source, CDMApi_LogDevId device) noexcept;

// Runs `ask`, which asks a device by its interface or through DMApi, and stores the answers without showing any of
// them. False when an answer has failed: then nothing of them may be shown.
template <class Ask>
bool AskDevice(const wchar_t* source, CDMApi_LogDevId device, Ask&& ask) noexcept {
    const unsigned failures = CKxDeviceRegistry::GetFailureCount();
    try {
        ask();
    } catch (...) {
        LogDeviceFailure(source, device);
        return false;
    }
    return CKxDeviceRegistry::GetFailureCount() == failures;
}

// The kind of the devices that have an interface.
template <class Device>
inline constexpr EKxDeviceType kKindOf = eKxDeviceType_Unknown;
template <>
inline constexpr EKxDeviceType kKindOf<IKxDeviceShutter> = eKxDeviceType_Shutter;
template <>
inline constexpr EKxDeviceType kKindOf<IKxDeviceFilterChanger> = eKxDeviceType_FilterChanger;
template <>
inline constexpr EKxDeviceType kKindOf<IKxDeviceNosepiece> = eKxDeviceType_Nosepiece;

// The registered device with this number; null when there is none, or it is of another kind.
template <class Device>
Device* FindDevice(CDMApi_LogDevId id) {
    static_assert(kKindOf<Device> != eKxDeviceType_Unknown, "the interface has no kind yet");
    return DMApi::LogDev_GetType(id) == kKindOf<Device> ? static_cast<Device*>(DMApi::LogDev_GetInstance(id)) : nullptr;
}

}  // namespace kx::ui
