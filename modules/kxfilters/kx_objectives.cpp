#include <kxfilters/kx_objectives.h>

#include <cmath>
#include <map>
#include <string>

#include <kxsystem/kx_log.h>

namespace {

constexpr double kWater = 1.333, kSilicone = 1.406, kOil = 1.518;

std::map<std::wstring, SKxDDBObjectiveItem>& Objectives() {
    static std::map<std::wstring, SKxDDBObjectiveItem> objectives = [] {
        std::map<std::wstring, SKxDDBObjectiveItem> all;
        // clang-format off
        const SKxDDBObjectiveItem items[] = {
            {L"PlanApo2x010",       L"Plan Apo 2x/0.10",           2,   0.10, 8500,  L"Air",      1.0},
            {L"PlanApo4x020",       L"Plan Apo 4x/0.20",           4,   0.20, 15700, L"Air",      1.0},
            {L"PlanFluor10x030",    L"Plan Fluor 10x/0.30",        10,  0.30, 16000, L"Air",      1.0},
            {L"PlanApo10x045",      L"Plan Apo 10x/0.45",          10,  0.45, 4000,  L"Air",      1.0},
            {L"PlanApo20x075",      L"Plan Apo 20x/0.75",          20,  0.75, 1000,  L"Air",      1.0},
            {L"PlanApo25x110W",     L"Plan Apo 25x/1.10 Water",    25,  1.10, 2000,  L"Water",    kWater},
            {L"PlanApo40x095",      L"Plan Apo 40x/0.95",          40,  0.95, 210,   L"Air",      1.0},
            {L"PlanApo60x120W",     L"Plan Apo 60x/1.20 Water",    60,  1.20, 290,   L"Water",    kWater},
            {L"PlanApo60x130Sil",   L"Plan Apo 60x/1.30 Silicone", 60,  1.30, 300,   L"Silicone", kSilicone},
            {L"PlanApo60x140Oil",   L"Plan Apo 60x/1.40 Oil",      60,  1.40, 130,   L"Oil",      kOil},
            {L"PlanApo100x145Oil",  L"Plan Apo 100x/1.45 Oil",     100, 1.45, 130,   L"Oil",      kOil},
            {L"ApoTIRF100x149Oil",  L"Apo TIRF 100x/1.49 Oil",     100, 1.49, 120,   L"Oil",      kOil},
        };
        // clang-format on
        for (const SKxDDBObjectiveItem& item : items)
            all[item.key.str()] = item;
        return all;
    }();
    return objectives;
}

}  // namespace

bool CKxDeviceDatabase::DBGetObjectiveParam(const CKxStringW& key, SKxDDBObjectiveItem* item, bool) {
    const auto found = Objectives().find(key.str());
    if (!item || found == Objectives().end()) return false;
    *item = found->second;
    return true;
}

bool CKxDeviceDatabase::DBSetObjective(const SKxDDBObjectiveItem& item) {
    const bool real = !item.key.IsEmpty() && item.magnification > 0 && std::isfinite(item.magnification) &&
                      item.NA > 0 && item.NA < item.refractiveIndex && std::isfinite(item.refractiveIndex) &&
                      item.WD >= 0 && std::isfinite(item.WD);
    if (!real) {
        KX_LOG(L"kx_objectives", L"\"%ls\" is no objective", item.key.c_str());
        return false;
    }
    Objectives()[item.key.str()] = item;
    return true;
}
