// The simulated shutters behind the host's panels.
#pragma once

#include <array>
#include <functional>

#include <kxdevices/kx_simdevices.h>

// They live as long as the process; panels come and go.
class LightDevices {
public:
    static constexpr int Shutters = 5;

    LightDevices();
    // To be ticked from a timer.
    CKxSimMicroscope& Devices() { return m_devices; }

    CKxSimShutter& Shutter(int index) { return *m_shutters[static_cast<std::size_t>(index)]; }
    // The smart one, with modes and an aperture.
    CKxSimShutter& SmartShutter() { return *m_smart; }

private:
    CKxSimMicroscope m_devices;
    std::array<CKxSimShutter*, Shutters> m_shutters{};
    CKxSimShutter* m_smart = nullptr;
};

LightDevices& TheLight();

// Hears of the devices' changes as long as it lives.
class DeviceListener {
public:
    explicit DeviceListener(std::function<void(CDMApi_LogDevId)> hear);
    ~DeviceListener();
    DeviceListener(const DeviceListener&) = delete;
    DeviceListener& operator=(const DeviceListener&) = delete;

private:
    int m_number;
};
