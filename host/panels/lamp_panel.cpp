#include "lamp_panel.h"

#include "../held_values.h"
#include "../light_devices.h"
#include "../pages/page.h"

namespace {

const OnPage<HalogenPanel> s_halogen(L"Lamps", {268, 122});
const OnPage<ArcPanel> s_arc(L"Lamps", {268, 122});

// Panels come and go with the language.
CKxSimLamp& Halogen() {
    static auto& device =
        TheLight().Devices().Add<CKxSimLamp>(L"Halogen lamp", SKxSimLampKind{.kind = eKxLampKind_Halogen,
                                                                             .unit = eKxLampUnit_Volts,
                                                                             .maximum = 12,
                                                                             .step = 0.1,
                                                                             .fullTemperature = 3200,
                                                                             .burnt = 640,
                                                                             .rated = 2000});
    return device;
}

// Its minutes pass as seconds here, and its hours as minutes.
CKxSimLamp& Arc() {
    static auto& device = TheLight().Devices().Add<CKxSimLamp>(L"Arc lamp", SKxSimLampKind{.kind = eKxLampKind_Arc,
                                                                                           .minimum = 10,
                                                                                           .step = 1,
                                                                                           .warmUp = 12000,
                                                                                           .coolDown = 2000,
                                                                                           .burnt = 287,
                                                                                           .rated = 300,
                                                                                           .hour = 60000,
                                                                                           .shutter = true});
    return device;
}

std::array<double, kx::ui::PresetRow::kCount>& PresetsOf(const CKxSimLamp& lamp) {
    return lamp.GetLampKind() == eKxLampKind_Arc ? Held().arcPresets : Held().halogenPresets;
}

}  // namespace

HalogenPanel::HalogenPanel() : LampControlPanel(L"Halogen lamp", Halogen()) {}
ArcPanel::ArcPanel() : LampControlPanel(L"Arc lamp", Arc()) {}

void AskingLamp::ShowPresets() {
    int preset = 0;
    for (const double each : PresetsOf(m_device))
        SetPreset(preset++, each);
}

void AskingLamp::OnIntensityChangeRequest(double intensity, bool& veto) {
    Log().Add(m_panel.Name(), L"OnIntensityChangeRequest(%g)", intensity);
    veto = !m_panel.Grants(IntensityOf(m_device), intensity);
}

void AskingLamp::OnStateChangeRequest(bool on, bool& veto) {
    Log().Add(m_panel.Name(), L"OnStateChangeRequest(%ls)", on ? L"on" : L"off");
    veto = !m_panel.Grants(UseOf(m_device), on);
}

void AskingLamp::OnShutterChangeRequest(bool open, bool& veto) {
    Log().Add(m_panel.Name(), L"OnShutterChangeRequest(%ls)", open ? L"open" : L"closed");
    veto = !m_panel.Grants(OpeningOf(m_device), open);
}

void AskingLamp::OnPresetStoreRequest(int preset, double intensity, bool& veto) {
    Log().Add(m_panel.Name(), L"OnPresetStoreRequest(%d, %g)", preset, intensity);
    const std::wstring what = m_device.GetKey().str() + L" preset " + std::to_wstring(preset);
    double& kept = PresetsOf(m_device)[static_cast<std::size_t>(preset)];
    const wchar_t* const format = m_device.GetUnit() == eKxLampUnit_Volts ? L"%g V" : L"%g %%";
    veto = !m_panel.Grants(ValueOf(what.c_str(), L"Preset of the lamp", kept, format), intensity);
}
