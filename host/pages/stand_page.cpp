#include "stand_page.h"

#include <kxdevui/setup/devgui_setup.h>
#include <kxsystem/kx_translation.h>

#include "../device_panel.h"
#include "../event_log.h"
#include "../resources/resource.h"
#include "../setups.h"

StandPage::StandPage()
    : Page(L"Stand"), m_transmitted(L"Transmitted light", Held().transmitted, IDC_TRANSMITTED, IDC_TRANSMITTED_LEVEL),
      m_reflected(L"Reflected light", Held().reflected, IDC_REFLECTED, IDC_REFLECTED_LEVEL) {}

void StandPage::Fill() {
    const HINSTANCE module = GetModuleHandleW(nullptr);
    // An empty container, filled by hand.
    m_stage.Create(*this, 8, 8, 264, 136, true, true);
    m_stage.Fill();
    // A whole template.
    m_camera.CreateFromDlg(*this, 288, 8, IDD_CAMERA, module, false);
    // Two parts of one template: each half stands where it had in the template.
    m_transmitted.CreateFromDlgPart(*this, 0, 0, 264, 88, IDD_LAMPS, module);
    m_reflected.CreateFromDlgPart(*this, 280, 0, 264, 88, IDD_LAMPS, module);
    m_transmitted.MoveWindowRelative(8, 156);
    m_reflected.MoveWindowRelative(11, 156);
    // A dialog of which one region is adopted by another container.
    m_stand.CreateFromDlg(*this, 8, 248, IDD_STAND, module, false);
    m_stand.AdoptCondenser();

    Add(m_stage), Add(m_camera), Add(m_transmitted), Add(m_reflected), Add(m_stand);
}

void StandPage::Show() {
    m_transmitted.ShowState();
    m_reflected.ShowState();
}

void StandPage::AskForCondenser(HWND owner) {
    const auto accept = [this](const SKxCondenserSetup& setup, SKxSetupRefusal& refusal) {
        if (DevicePanel::HostRefuses()) refusal = {true, Text(L"The host refuses."), setup.changes.front().position};
        for (const auto& each : setup.changes) {
            Log().Add(L"Condenser", L"setup of position %d: %ls -> %ls", static_cast<int>(each.position),
                      each.before.name.c_str(), each.after.name.c_str());
        }
        if (refusal.refused) return;
        const auto& [wish, value] = SetupOf(setup);
        TheRequests().BeginStep();
        if (TheRequests().Ask(wish, value)) Tell(Text(L"The condenser has been changed").str());
    };
    ShowSetupDialog_Condenser(owner, Held().condenser, accept);
}

void StandPage::AskForSeries(HWND owner) {
    const auto result =
        reinterpret_cast<INT_PTR>(m_series.CreateFromDlg(owner, 0, 0, IDD_SERIES, GetModuleHandleW(nullptr), true));
    CKxStringW text;
    if (result == IDOK) {
        text.Format(100, KX_GetTranslation(L"Series of %d images every %g s planned", L"host"), Held().seriesCount,
                    Held().seriesInterval);
    } else {
        text = KX_GetTranslation(L"Series cancelled", L"host");
    }
    Tell(text.str());
}
