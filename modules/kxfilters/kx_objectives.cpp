#include <kxfilters/kx_objectives.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <tuple>

#include <kxsystem/kx_log.h>

namespace {

constexpr double kWater = 1.333, kSilicone = 1.406, kOil = 1.518;

std::map<std::wstring, SKxDDBObjectiveItem>& Objectives() {
    static std::map<std::wstring, SKxDDBObjectiveItem> objectives = [] {
        std::map<std::wstring, SKxDDBObjectiveItem> all;
        // clang-format off
        const SKxDDBObjectiveItem items[] = {
            {L"PlanApo2x010",       L"Plan Apo 2x/0.10",           2,   0.10, 8500,  L"Air",      1.0,       L"-",              60},
            {L"PlanApo4x020",       L"Plan Apo 4x/0.20",           4,   0.20, 15700, L"Air",      1.0,       L"-",              60},
            {L"PlanFluor10x030",    L"Plan Fluor 10x/0.30",        10,  0.30, 16000, L"Air",      1.0,       L"0.17 mm",              60},
            {L"PlanApo10x045",      L"Plan Apo 10x/0.45",          10,  0.45, 4000,  L"Air",      1.0,       L"0.17 mm",              60},
            {L"PlanApo20x075",      L"Plan Apo 20x/0.75",          20,  0.75, 1000,  L"Air",      1.0,       L"0.17 mm",              60},
            {L"PlanApo25x110W",     L"Plan Apo 25x/1.10 Water",    25,  1.10, 2000,  L"Water",    kWater,    L"0-0.17 mm, collar",    75},
            {L"PlanApo40x095",      L"Plan Apo 40x/0.95",          40,  0.95, 210,   L"Air",      1.0,       L"0.11-0.23 mm, collar", 60},
            {L"PlanApo60x120W",     L"Plan Apo 60x/1.20 Water",    60,  1.20, 290,   L"Water",    kWater,    L"0.13-0.21 mm, collar", 60},
            {L"PlanApo60x130Sil",   L"Plan Apo 60x/1.30 Silicone", 60,  1.30, 300,   L"Silicone", kSilicone, L"0.15-0.19 mm, collar", 60},
            {L"PlanApo60x140Oil",   L"Plan Apo 60x/1.40 Oil",      60,  1.40, 130,   L"Oil",      kOil,      L"0.17 mm",              60},
            {L"PlanApo100x145Oil",  L"Plan Apo 100x/1.45 Oil",     100, 1.45, 130,   L"Oil",      kOil,      L"0.17 mm",              60},
            {L"ApoTIRF100x149Oil",  L"Apo TIRF 100x/1.49 Oil",     100, 1.49, 120,   L"Oil",      kOil,      L"0.13-0.20 mm, collar", 60},
        };
        // clang-format on
        for (const SKxDDBObjectiveItem& item : items)
            all[item.key.str()] = item;
        return all;
    }();
    return objectives;
}

std::map<std::wstring, SKxDDBCondenserItem>& Condensers() {
    static std::map<std::wstring, SKxDDBCondenserItem> condensers = [] {
        std::map<std::wstring, SKxDDBCondenserItem> all;
        // clang-format off
        const SKxDDBCondenserItem items[] = {
            {L"BrightField090", L"Bright field 0.90",      L"Bright field",   0.90},
            {L"BrightField140", L"Bright field 1.40 Oil",  L"Bright field",   1.40},
            {L"PhaseL",         L"Phase ring PhL",         L"Phase contrast", 0.52},
            {L"Phase1",         L"Phase ring Ph1",         L"Phase contrast", 0.72},
            {L"Phase2",         L"Phase ring Ph2",         L"Phase contrast", 0.72},
            {L"Phase3",         L"Phase ring Ph3",         L"Phase contrast", 0.85},
            {L"DICLow",         L"DIC prism, low",         L"DIC",            0.52},
            {L"DICHigh",        L"DIC prism, high",        L"DIC",            0.90},
            {L"DarkFieldDry",   L"Dark field, dry",        L"Dark field",     0.95},
            {L"DarkFieldOil",   L"Dark field, oil",        L"Dark field",     1.43},
        };
        // clang-format on
        for (const SKxDDBCondenserItem& item : items)
            all[item.key.str()] = item;
        return all;
    }();
    return condensers;
}

// The items of a map in the order that `rank` gives them.
template <class Item, class Rank>
std::vector<Item> Sorted(const std::map<std::wstring, Item>& items, Rank rank) {
    std::vector<Item> all;
    all.reserve(items.size());
    for (const auto& [key, item] : items)
        all.push_back(item);
    std::stable_sort(all.begin(), all.end(), [rank](const Item& a, const Item& b) { return rank(a) < rank(b); });
    return all;
}

template <class Item>
bool Find(const std::map<std::wstring, Item>& items, const CKxStringW& key, Item* item) {
    const auto found = items.find(key.str());
    if (!item || found == items.end()) return false;
    *item = found->second;
    return true;
}

}  // namespace

bool CKxDeviceDatabase::DBGetObjectiveParam(const CKxStringW& key, SKxDDBObjectiveItem* item, bool) {
    return Find(Objectives(), key, item);
}

bool CKxDeviceDatabase::DBSetObjective(const SKxDDBObjectiveItem& item) {
    const bool real = !item.key.IsEmpty() && item.magnification > 0 && std::isfinite(item.magnification) &&
                      item.NA > 0 && item.NA < item.refractiveIndex && std::isfinite(item.refractiveIndex) &&
                      item.WD >= 0 && std::isfinite(item.WD) && std::isfinite(item.parfocal);
    if (!real) {
        KX_LOG(L"kx_objectives", L"\"%ls\" is no objective", item.key.c_str());
        return false;
    }
    Objectives()[item.key.str()] = item;
    return true;
}

std::vector<SKxDDBObjectiveItem> CKxDeviceDatabase::DBGetObjectives() {
    return Sorted(Objectives(),
                  [](const SKxDDBObjectiveItem& item) { return std::tuple(item.magnification, item.NA); });
}

bool CKxDeviceDatabase::DBGetCondenserParam(const CKxStringW& key, SKxDDBCondenserItem* item) {
    return Find(Condensers(), key, item);
}

bool CKxDeviceDatabase::DBSetCondenser(const SKxDDBCondenserItem& item) {
    const bool real = !item.key.IsEmpty() && item.NA > 0 && std::isfinite(item.NA);
    if (!real) {
        KX_LOG(L"kx_objectives", L"\"%ls\" is no condenser", item.key.c_str());
        return false;
    }
    Condensers()[item.key.str()] = item;
    return true;
}

std::vector<SKxDDBCondenserItem> CKxDeviceDatabase::DBGetCondensers() {
    return Sorted(Condensers(), [](const SKxDDBCondenserItem& item) { return std::tuple(item.method.str(), item.NA); });
}
