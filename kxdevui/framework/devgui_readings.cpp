#include <kxdevui/framework/devgui_readings.h>

#include <cmath>
#include <type_traits>
#include <utility>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxsystem/kx_log.h>

namespace {

constexpr wchar_t kSource[] = L"devgui_readings";

// The window that shows it: the slider inside, of a control that has one.
HWND ShownIn(HWND control) {
    while (const HWND slider = kx::ui::Activity::SliderIn(control))
        control = slider;
    return control;
}

// What the window was told; a control that shows it answers the message that it is another.
template <class T>
bool Tell(HWND control, T kx::ui::WindowState::*reading, const T& now) {
    const HWND window = ShownIn(control);
    if (const auto state = kx::ui::FindState(window)) {
        const T before = std::exchange((*state).*reading, now);
        constexpr WPARAM what = std::is_same_v<T, KxMeasured> ? 1 : 0;
        if (SendMessageW(window, kx::ui::WM_KX_READINGS, what, 0) == kx::ui::kShowsReadings) return true;
        (*state).*reading = before;
    }
    KX_LOG(kSource, L"window %p shows nothing of the kind", static_cast<void*>(control));
    return false;
}

template <class T>
T Told(HWND control, T kx::ui::WindowState::*reading) {
    const auto state = kx::ui::FindState(ShownIn(control));
    return state ? (*state).*reading : T{};
}

template <class Device>
const Device* As(const IKxDevice& device) {
    return device.GetType() == Device::kKind ? static_cast<const Device*>(&device) : nullptr;
}

EKxLight LightOf(const IKxDevice& device) {
    const auto lit = [](bool on) { return on ? EKxLight::On : EKxLight::Off; };
    if (const auto* const shutter = As<IKxDeviceShutter>(device)) return lit(shutter->GetState());
    const auto* const laser = As<IKxDeviceLaserOutput>(device);
    if (!laser) return EKxLight::None;
    long port = 0;
    const long ports = laser->GetPortCount();
    while (port < ports && !laser->IsPortUsed(port))
        ++port;
    return lit(port < ports);
}

// Empty for a device that has neither.
std::optional<KxMeasured> ValuesOf(const IKxDevice& device) {
    double asked = 0, measured = 0;
    const auto known = [](bool is, const double& value) { return is ? std::optional(value) : std::nullopt; };
    if (const auto* const drive = As<IKxDeviceZDrive>(device))
        return KxMeasured{known(drive->GetTarget(asked), asked), known(drive->GetPosition(measured), measured)};
    if (const auto* const laser = As<IKxDeviceLaserOutput>(device))
        return KxMeasured{{}, known(laser->GetMeasuredPower(measured), measured)};
    return std::nullopt;
}

void DropUnlessFinite(std::optional<double>& value) {
    if (value && !std::isfinite(*value)) value.reset();
}

}  // namespace

bool KX_TellLight(HWND control, EKxLight light) { return Tell(control, &kx::ui::WindowState::light, light); }

bool KX_TellLight(HWND control, const IKxDevice& device) {
    auto told = EKxLight::None;
    const bool answered = kx::ui::AskDevice(kSource, device.GetLogDevId(), [&] { told = LightOf(device); });
    return answered && told != EKxLight::None && KX_TellLight(control, told);
}

EKxLight KX_GetLight(HWND control) { return Told(control, &kx::ui::WindowState::light); }

bool KX_TellMeasured(HWND control, const KxMeasured& values) {
    KxMeasured known = values;
    DropUnlessFinite(known.asked);
    DropUnlessFinite(known.measured);
    return Tell(control, &kx::ui::WindowState::measured, known);
}

bool KX_TellMeasured(HWND control, const IKxDevice& device) {
    std::optional<KxMeasured> told;
    const bool answered = kx::ui::AskDevice(kSource, device.GetLogDevId(), [&] { told = ValuesOf(device); });
    return answered && told && KX_TellMeasured(control, *told);
}

KxMeasured KX_GetMeasured(HWND control) { return Told(control, &kx::ui::WindowState::measured); }
