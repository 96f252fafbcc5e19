#include "gallery_devices.h"

namespace {

std::vector<SKxSimObjective> Objectives() {
    return {
        {L"Plan Apo 4x/0.20", L"4x", L"PlanApo4x020"},
        {L"Plan Fluor 10x/0.30", L"10x", L"PlanFluor10x030"},
        {L"Plan Apo 20x/0.75", L"20x", L"PlanApo20x075"},
        {L"Plan Apo 40x/0.95", L"40x", L"PlanApo40x095"},
        {L"Plan Apo 60x/1.40 Oil", L"60x", L"PlanApo60x140Oil"},
        {L"Plan Apo 100x/1.45 Oil", L"100x", L"PlanApo100x145Oil"},
    };
}

}  // namespace

GalleryDevices::GalleryDevices()
    : m_nosepiece(m_devices.Add<CKxSimNosepiece>(L"Nosepiece", Objectives())),
      m_emission(m_devices.Add<CKxSimFilterChanger>(
          L"Emission wheel",
          std::vector<std::wstring>{L"447/60", L"525/50", L"586/20", L"600/52", L"641/75", L"685/40",
                                    L"445/15 525/30 605/50 705/60", L"LP 665", L"", L"525/50 617/73"},
          SKxSimFilterChangerKind{})),
      m_cubes(m_devices.Add<CKxSimFilterChanger>(
          L"Cube turret", std::vector<std::wstring>{L"DAPI", L"GFP", L"TRITC", L"Cy5", L"390/40 482/25 587/45", L""},
          SKxSimFilterChangerKind{eKxFilterType_Cube, true, false})),
      m_path(m_devices.Add<CKxSimLightPath>(L"Light path",
                                            std::vector<std::wstring>{L"Eye", L"Left", L"Right", L"Split"})),
      m_mirror(m_devices.Add<CKxSimTIRFMirror>(L"TIRF mirror")),
      m_lasers(m_devices.Add<CKxSimLaserOutput>(L"Laser ports",
                                                std::vector<std::wstring>{L"Confocal", L"TIRF", L"Bleach"}, true)) {}
