#include "light_devices.h"

LightDevices::LightDevices() {
    const struct {
        const wchar_t* key;
        EKxShutterType type;
        const wchar_t* title;
    } shutters[Shutters] = {{L"Reflected light shutter", eKxShutterType_Epi, L""},
                            {L"Transmitted light shutter", eKxShutterType_Dia, L""},
                            {L"Auxiliary shutter", eKxShutterType_Aux1, L""},
                            {L"Camera shutter", eKxShutterType_Aux2, L"Camera"},
                            {L"Fluorescence lamp shutter", eKxShutterType_Epi, L"Fluorescence"}};
    for (std::size_t i = 0; i < m_shutters.size(); ++i) {
        m_shutters[i] = &m_devices.Add<CKxSimShutter>(shutters[i].key, shutters[i].type);
        m_shutters[i]->SetTitle(shutters[i].title);
    }
    m_smart = &m_devices.Add<CKxSimShutter>(L"Smart shutter", eKxShutterType_Epi,
                                            std::vector<double>{5, 10, 20, 30, 40, 60, 80, 100});
}

LightDevices& TheLight() {
    static LightDevices devices;
    return devices;
}

DeviceListener::DeviceListener(std::function<void(CDMApi_LogDevId)> hear)
    : m_number(CKxDeviceRegistry::AddListener(
          [hear = std::move(hear)](CDMApi_LogDevId device, EKxDeviceChange) { hear(device); })) {}

DeviceListener::~DeviceListener() { CKxDeviceRegistry::RemoveListener(m_number); }
