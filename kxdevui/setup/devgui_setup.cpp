// The setup dialogs of the single kinds: what they are made of, and their records.
#include <kxdevui/setup/devgui_setup.h>

#include <algorithm>
#include <utility>

#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/ui_window.h>
#include <kxdevui/optics/objectivecard_rules.h>
#include <kxdevui/setup/setup_dialog.h>
#include <kxfilters/kx_opticalfilter.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

using namespace kx::setup;

namespace {

constexpr long kMostPositions = 1000;

Entry EntryOf(const SKxDDBObjectiveItem& item) {
    return {.key = item.key.str(),
            .name = item.name.str(),
            .group = item.immersion.str(),
            .magnification = item.magnification,
            .NA = item.NA,
            .WD = item.WD,
            .correction = item.correction.str(),
            .parfocal = item.parfocal};
}

Entry EntryOf(const SKxDDBCondenserItem& item) {
    return {.key = item.key.str(), .name = item.name.str(), .group = item.method.str(), .NA = item.NA};
}

// What the database has under the key; what it does not have keeps key and name.
void Look(const Entry& entry, SKxDDBObjectiveItem& item) {
    CKxDeviceDatabase::DBGetObjectiveParam(CKxStringW(entry.key), &item, false);
}
void Look(const Entry& entry, SKxDDBCondenserItem& item) {
    CKxDeviceDatabase::DBGetCondenserParam(CKxStringW(entry.key), &item);
}
template <class Item>
Item ItemOf(const Entry& entry) {
    Item item;
    item.key = CKxStringW(entry.key);
    item.name = CKxStringW(entry.name);
    Look(entry, item);
    return item;
}
template <>
CKxStringW ItemOf(const Entry& entry) {
    return CKxStringW(entry.name);
}

// What stands in a position, by what its device tells.
template <class Item>
Entry Known(const CKxStringW& key, const CKxStringW& name) {
    Entry entry{.key = key.str(), .name = name.str()};
    if (entry.IsEmpty()) return entry;
    const Item item = ItemOf<Item>(entry);
    // An aperture is what every item of the database has.
    if (item.NA > 0) return EntryOf(item);
    entry.known = false;
    return entry;
}

template <class Item>
std::vector<Entry> EntriesOf(const std::vector<Item>& items) {
    std::vector<Entry> entries;
    std::transform(items.begin(), items.end(), std::back_inserter(entries),
                   [](const Item& item) { return EntryOf(item); });
    return entries;
}

std::wstring NameOf(const Entry& entry) { return entry.name.empty() ? entry.key : entry.name; }
std::wstring GroupOf(const Entry& entry) { return KX_GetTranslation(entry.group.c_str(), L"devgui_setup").str(); }
std::wstring BandsOf(const Entry& entry) { return entry.group; }
std::wstring ApertureOf(const Entry& entry) {
    return entry.NA > 0 ? KX_FormatNumber(L"%.2f", entry.NA).str() : std::wstring();
}
std::wstring DistanceOf(const Entry& entry) { return kx::ui::LengthText(entry.WD).str(); }

bool IsKind(CDMApi_LogDevId device, EKxDeviceType type) {
    if (DMApi::LogDev_GetType(device) == type) return true;
    KX_LOG(L"devgui_setup", L"device %u has no such setup", device);
    return false;
}

// Shows the dialog; what the user has changed goes to `accept` in a record that begins as `setup`.
template <class Item, class Setup, class Callback>
bool Show(HWND owner, Design design, std::vector<Entry> positions, Setup setup, const Callback& accept) {
    if (!accept) {
        KX_LOG(L"devgui_setup", L"nobody accepts a setup");
        return false;
    }
    // What stands there can be put back, whoever knows it.
    for (const Entry& each : positions) {
        const bool listed = std::any_of(design.choices.begin(), design.choices.end(),
                                        [&each](const Entry& choice) { return choice.Is(each); });
        if (!listed && !each.IsEmpty()) design.choices.push_back(each);
    }
    const auto before = positions;
    SetupDialog dialog(
        std::move(design), std::move(positions),
        [&](const std::vector<std::size_t>& changed, const std::vector<Entry>& now, SKxSetupRefusal& refusal) {
            setup.changes.clear();
            for (const std::size_t i : changed)
                setup.changes.push_back({static_cast<long>(i), ItemOf<Item>(before[i]), ItemOf<Item>(now[i])});
            accept(setup, refusal);
        });
    return dialog.Run(owner);
}

template <class Call>
bool WithoutExceptions(Call&& call) {
    return kx::ui::Guarded([&]() -> kx::ui::Handled { return call() ? 1 : 0; }).value_or(0) != 0;
}

}  // namespace

bool ShowSetupDialog(HWND owner, CDMApi_LogDevId nosepiece, const KxObjectiveSetupCallback& accept) {
    return WithoutExceptions([&] {
        if (!IsKind(nosepiece, eKxDeviceType_Nosepiece)) return false;
        const auto* const device = static_cast<const IKxDeviceNosepiece*>(DMApi::LogDev_GetInstance(nosepiece));
        std::vector<Entry> positions;
        const long count = std::min(DMApi::Nosepiece_GetPositionCount(nosepiece), kMostPositions);
        for (long i = 0; i < count; ++i) {
            CKxStringW key, name;
            device->GetObjectiveKey(i, key);
            device->GetObjectiveName(i, name);
            // Also where a device gives keys to empty positions.
            positions.push_back(name.IsEmpty() ? Entry() : Known<SKxDDBObjectiveItem>(key, name));
        }
        return Show<SKxDDBObjectiveItem>(owner,
                                         {.templateName = L"IDD_OBJECTIVE_SETUP",
                                          .columns = {{L"Objective", 152, NameOf},
                                                      {L"NA", 40, ApertureOf},
                                                      {L"Immersion", 72, GroupOf},
                                                      {L"Working distance", 104, DistanceOf}},
                                          .choices = EntriesOf(CKxDeviceDatabase::DBGetObjectives())},
                                         std::move(positions), SKxObjectiveSetup{.device = nosepiece}, accept);
    });
}

bool ShowSetupDialog_Filter(HWND owner, CDMApi_LogDevId filterChanger, const KxFilterSetupCallback& accept) {
    return WithoutExceptions([&] {
        if (!IsKind(filterChanger, eKxDeviceType_FilterChanger)) return false;
        const auto* const device = static_cast<const IKxDeviceFilterChanger*>(DMApi::LogDev_GetInstance(filterChanger));
        std::vector<Entry> positions, choices;
        for (const CKxStringW& each : CKxFilterDialog::GetFilterNames())
            choices.push_back(FilterNamed(each.str()));
        const long count = std::min(DMApi::FilterChanger_GetFilterCount(filterChanger), kMostPositions);
        for (long i = 0; i < count; ++i) {
            CKxStringW name;
            device->GetFilterName(i, name);
            positions.push_back(name.IsEmpty() ? Entry() : FilterNamed(name.str()));
        }
        return Show<CKxStringW>(owner,
                                {.templateName = L"IDD_FILTER_SETUP",
                                 .columns = {{L"Filter", 200, NameOf}, {L"Bands (nm)", 190, BandsOf}},
                                 .choices = std::move(choices),
                                 .typed = true},
                                std::move(positions), SKxFilterSetup{.device = filterChanger}, accept);
    });
}

bool ShowSetupDialog_Condenser(HWND owner, const std::vector<CKxStringW>& positions,
                               const KxCondenserSetupCallback& accept) {
    return WithoutExceptions([&] {
        std::vector<Entry> entries;
        for (const CKxStringW& each : positions)
            if (std::ssize(entries) < kMostPositions) entries.push_back(Known<SKxDDBCondenserItem>(each, each));
        return Show<SKxDDBCondenserItem>(
            owner,
            {.templateName = L"IDD_CONDENSER_SETUP",
             .columns = {{L"Condenser", 200, NameOf}, {L"Method", 110, GroupOf}, {L"NA", 66, ApertureOf}},
             .choices = EntriesOf(CKxDeviceDatabase::DBGetCondensers())},
            std::move(entries), SKxCondenserSetup{}, accept);
    });
}
