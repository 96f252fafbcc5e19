// The stand's page: containers, and the modal dialog.
#include "../tour.h"

#include <kxdevui/framework/ui_answer.h>

#include "../main_window.h"
#include "../pages/stand_page.h"
#include "../resources/resource.h"

void Tour::PlanPanels() {
    const auto in = [this](auto panel, int id) -> Find {
        return [this, panel, id] { return GetDlgItem((m_window.PageOf<StandPage>().*panel)(), id); };
    };
    const auto stage = [in](int id) { return in(&StandPage::Stage, id); };
    const auto camera = [in](int id) { return in(&StandPage::Camera, id); };

    Click(stage(IDC_STAGE_RIGHT));
    Click(stage(IDC_STAGE_UP));
    Wheel(stage(IDC_STAGE_POSITION), 2);
    Click(stage(IDC_STAGE_RIGHT));
    // By a field, and back to a place that has a name.
    const Find marks = [this] { return GetWindow(m_window.PageOf<StandPage>().Stage().Marks(), GW_CHILD); };
    Click(marks);
    Type(L"Corner");
    Key(VK_RETURN);
    Click(stage(IDC_STAGE_X));
    Key(VK_END);
    Type(L"5");
    Key(VK_RETURN);
    Picture(L"02-stage");

    Click(camera(IDC_EXPOSURE));
    Key(VK_END);
    Type(L"5.5");
    Key(VK_TAB);
    Key(VK_DOWN);
    Click(camera(IDC_LIVE));
    Click(camera(IDC_SNAP));
    Picture(L"03-camera");

    Click(in(&StandPage::Transmitted, IDC_TRANSMITTED));
    Drag(in(&StandPage::Transmitted, IDC_TRANSMITTED_LEVEL), 42, 75);
    Click(in(&StandPage::Reflected, IDC_REFLECTED));
    Click(in(&StandPage::Stand, IDC_TUBE));
    Click([this] {
        // The condenser's own container lies in the stand's.
        const HWND stand = m_window.PageOf<StandPage>().Stand();
        for (HWND child = GetWindow(stand, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (const HWND button = GetDlgItem(child, IDC_CONDENSER_TOP)) return button;
        }
        return HWND{};
    });
    Picture(L"04-lamps-and-stand");
}

void Tour::PlanDialog() {
    const auto inDialog = [](int id) -> Find { return [id] { return GetDlgItem(GetActiveWindow(), id); }; };
    Menu(MainWindow::cmdSeries);
    Click(inDialog(IDC_SERIES_COUNT));
    Key(VK_END);
    Type(L"0");
    Picture(L"05-series");
    Click(inDialog(IDOK));
    Menu(MainWindow::cmdSeries);
    Click(inDialog(IDC_SERIES_INTERVAL));
    Type(L"x");
    Key(VK_RETURN);
    Await([] { return kx::ui::AnswerWindow(); });
    Picture(L"06-series-refused");
    Key(VK_ESCAPE);
}
