// The page of the lasers: a subset is chosen, three lines are set, one is left alone, the interlock opens, all go off.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/lasers_page.h"
#include "../resources/resource.h"

void Tour::PlanLasers() {
    const auto panel = [this]() -> LaserEnginePanel& {
        return *m_window.PageOf<LasersPage>().First<LaserEnginePanel>();
    };
    const auto part = [panel](int id) -> Find { return [=] { return GetDlgItem(panel().Panel(), id); }; };
    const auto plate = [part](int id) -> Find {
        return [=] { return GetDlgItem(GetDlgItem(part(10203)(), 10204), id); };
    };
    const auto of = [plate](int row, int id) -> Find { return [=] { return GetDlgItem(plate(10300 + row)(), id); }; };
    const auto line = [this](int id) -> Find {
        return [=, this] { return GetDlgItem(m_window.PageOf<LasersPage>().First<LaserLinePanel>()->Panel(), id); };
    };
    const auto box = [panel](int id) -> Find { return [=] { return GetDlgItem(panel(), id); }; };
    const auto settled = [this] {
        m_steps.push_back([] { return LaserEnginePanel::Engine().GetDeviceState() == eKxDeviceState_Ready; });
    };

    TurnTo([this] { return m_window.CommandOf<LasersPage>(); });
    Await([this] { return HWND{m_window.PageOf<LasersPage>()}; });
    Click(part(10301));
    Picture(L"70-lasers");
    for (const int row : {2, 3, 4}) {
        Drag(of(row, 10201), 10, 40 + 15 * row);
        Click(of(row, 10202));
    }
    Click(line(10202));
    Drag(line(10201), 5, 60);
    settled();
    Picture(L"71-lasers-on");
    Click(plate(10403));
    Click(part(10202));
    Picture(L"72-lasers-solo");
    RightClick(of(2, 10100));
    Picture(L"73-lasers-menu");
    Key(VK_ESCAPE);
    Click(box(IDC_DEVICE_REFUSE));
    Click(of(3, 10202));
    Picture(L"74-lasers-refused");
    Click(box(IDC_DEVICE_REFUSE));
    Click(box(IDC_LASER_INTERLOCK));
    Picture(L"75-lasers-interlock");
    Click(box(IDC_LASER_INTERLOCK));
    Click(of(3, 10202));
    settled();
    Click(part(10201));
    Picture(L"76-lasers-off");
    Click(part(10202));
    Click(of(3, 10202));
    settled();
    Looks(L"77-lasers", LANG_JAPANESE);
    Click(part(10201));
}
