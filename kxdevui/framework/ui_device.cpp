#include <kxdevui/framework/ui_device.h>

#include <exception>

#include <kxsystem/kx_log.h>

namespace kx::ui {

void LogDeviceFailure(const wchar_t* source, CDMApi_LogDevId device) noexcept {
    try {
        throw;
    } catch (const std::exception& exception) {
        KX_LOG(source, L"device %u has thrown an exception: %hs", device, exception.what());
    } catch (...) {
        KX_LOG(source, L"device %u has thrown an exception", device);
    }
}

}  // namespace kx::ui
