#include "nosepiece_panel.h"

#include <utility>

#include <kxfilters/kx_opticalfilter.h>

#include "../setups.h"

namespace {

// The middle of the first band; 0 when none is known.
double WavelengthOf(const IKxDeviceFilterChanger& filters) {
    long position = 0;
    CKxStringW name;
    if (filters.GetPosition(position)) filters.GetFilterName(position, name);
    CKxOpticalFilter filter;
    CKxFilterDialog::GetFilterInfo(name, &filter);
    return filter.bands.empty() ? 0 : filter.bands.front().centre;
}

}  // namespace

bool IsHigh(double position, double minimum, double maximum, bool greaterIsFarther) {
    const double low = (maximum - minimum) / 3;
    return greaterIsFarther ? position < maximum - low : position > minimum + low;
}

NosepiecePanel::NosepiecePanel(CKxSimNosepiece& device, const IKxDeviceFilterChanger* filters,
                               std::function<bool()> isStageHigh)
    : ControlPanel(L"Nosepiece", device), m_device(device) {
    m_control.SetCards(
        SKxObjectiveCards{.complete =
                              [filters](long, SKxObjectiveCard& card) {
                                  if (filters) card.wavelength = WavelengthOf(*filters);
                              },
                          .warns = [isHigh = std::move(isStageHigh)](long, EKxObjectiveRisk) { return isHigh(); }});
}

void AskingNosepiece::Prepare() {
    Init(&m_device);
    ShowObservationMode(false);
}

void AskingNosepiece::Show(const DevicePanel::Change& change) {
    Update(&m_device, {.structure = change.structure,
                       .names = change.names,
                       .position = change.position,
                       .parameters = change.names});
}

void NosepiecePanel::OnDevice(const Change& change) {
    // Who decides is read here, not by Update.
    if (change.structure) m_control.Init(&m_device);
    m_control.Show(change);
    if (change.structure || change.names) return;
    if (m_device.GetDeviceState() == eKxDeviceState_Faulty) Tell(Text(L"The nosepiece has failed").str());
    if (m_device.GetDeviceState() == eKxDeviceState_Ready) {
        CKxStringW name;
        m_device.GetObjectiveName(m_control.GetPosition(), name);
        Tell(name.str());
    }
}

void AskingNosepiece::OnPositionChangeRequest(long position, bool& handled) {
    Log().Add(m_panel.Name(), L"OnPositionChangeRequest(%d)", static_cast<int>(position));
    const bool turns =
        m_panel.Grants(PlaceOf(m_device), position, L"The nosepiece turns", L"The nosepiece stays where it is");
    // The selection follows the turret, not the click; unless the turret leaves it to the panel.
    handled = !turns || m_device.IsDeviceDriven();
}

void AskingNosepiece::OnSetupRequest() {
    Log().Add(m_panel.Name(), L"OnSetupRequest()");
    ShowSetupDialog(GetAncestor(*this, GA_ROOT), m_device.GetLogDevId(),
                    [this](const SKxObjectiveSetup& setup, SKxSetupRefusal& refusal) { Accept(setup, refusal); });
}

void AskingNosepiece::Accept(const SKxObjectiveSetup& setup, SKxSetupRefusal& refusal) {
    long inLight = -1;
    m_device.GetPosition(inLight);
    for (const auto& each : setup.changes) {
        Log().Add(m_panel.Name(), L"setup of position %d: %ls -> %ls", static_cast<int>(each.position),
                  each.before.name.c_str(), each.after.name.c_str());
        // Nothing would be left to look through.
        if (each.position == inLight && each.after.key.IsEmpty())
            refusal = {true, Text(L"The objective in the light cannot be taken out."), each.position};
    }
    if (m_panel.Refuses()) refusal = {true, Text(L"The host refuses."), refusal.position};
    if (refusal.refused) return;
    const auto& [wish, value] = SetupOf(m_device, setup);
    TheRequests().BeginStep();
    refusal.refused = !m_panel.Grants(wish, value, L"The objectives have been changed", L"Nosepiece");
}
