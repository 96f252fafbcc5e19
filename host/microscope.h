// The simulated microscope behind the host's panels.
#pragma once

#include <array>
#include <functional>

#include <kxdevices/kx_simdevices.h>

// Its devices live as long as the process; panels come and go.
class Microscope {
public:
    static constexpr int Shutters = 5;

    Microscope();
    // Lets time pass; called by the main window's timer.
    void Tick() { m_microscope.Tick(); }

    CKxSimShutter& Shutter(int index) { return *m_shutters[static_cast<std::size_t>(index)]; }
    // The smart one, with modes and an aperture.
    CKxSimShutter& SmartShutter() { return *m_smart; }

private:
    CKxSimMicroscope m_microscope;
    std::array<CKxSimShutter*, Shutters> m_shutters{};
    CKxSimShutter* m_smart = nullptr;
};

Microscope& TheMicroscope();

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
