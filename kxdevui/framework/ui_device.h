// For authors of controls: asking devices, which are the host's own objects: what they throw is logged, and the control
// stays as it was.
#pragma once

#include <optional>
#include <type_traits>
#include <utility>

#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxdevui/framework/ui_life.h>
#include <kxdevui/framework/ui_parts.h>

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

// The registered device with this number; null when there is none, or it is of another kind.
template <class Device>
Device* FindDevice(CDMApi_LogDevId id) {
    static_assert(Device::kKind != eKxDeviceType_Unknown, "the interface has no kind yet");
    return DMApi::LogDev_GetType(id) == Device::kKind ? static_cast<Device*>(DMApi::LogDev_GetInstance(id)) : nullptr;
}

// What `ask` has been told, to be shown by the control that asks; empty when an answer has failed, or the device has
// ended the control.
template <class T, class Ask>
auto AskAll(T* control, const wchar_t* source, CDMApi_LogDevId device, Ask&& ask) noexcept {
    const Alive alive(static_cast<RootOf<T>*>(control));
    using Told = std::invoke_result_t<Ask>;
    Told told{};
    const bool answered = AskDevice(source, device, [&] { told = ask(); });
    return answered && alive ? std::optional<Told>(std::move(told)) : std::optional<Told>();
}

// What an Update does: finds the device, has `ask` ask it for all that is wanted, and `show` show that. False, and
// nothing is shown, when there is no such device or an answer has failed.
template <class Device, class T, class Ask, class Show>
bool UpdateFrom(T* control, const wchar_t* source, CDMApi_LogDevId id, Ask&& ask, Show&& show) {
    const Device* const device = FindDevice<Device>(id);
    if (!device) return false;
    const auto told = AskAll(control, source, id, [&] { return ask(*device); });
    if (told) show(*told);
    return told.has_value();
}

}  // namespace kx::ui
