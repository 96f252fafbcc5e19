// The page of the whole microscope.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/bench_page.h"
#include "../resources/resource.h"

void Tour::PlanBench() {
    const auto page = [this]() -> BenchPage& { return m_window.PageOf<BenchPage>(); };
    const auto objective = [page](int i) -> Find {
        return [=] { return GetDlgItem(page().First<NosepiecePanel>()->Panel(), 10200 + i); };
    };
    const auto filter = [page](int i) -> Find {
        return [=] { return GetDlgItem(page().First<FilterPanel>()->Panel(), 10201 + i); };
    };
    const auto path = [page](int i) -> Find {
        return [=] { return GetDlgItem(page().First<SwitcherPanel>()->Panel(), 10201 + i); };
    };
    const Find shutter = [page] { return page().First<SingleShutterPanel>()->Panel().GetButtonHandle(); };
    // Nothing of the microscope is on its way any more.
    const auto rest = [this] {
        m_steps.push_back([this] {
            const auto& roles = m_window.Microscope().Roles();
            for (const auto* ids : {&roles.turrets, &roles.wheels, &roles.lightPaths, &roles.shutters}) {
                for (const CDMApi_LogDevId id : *ids) {
                    if (CKxDeviceRegistry::Find(id)->GetDeviceState() == eKxDeviceState_Moving) return false;
                }
            }
            return true;
        });
    };
    const auto simulate = [this](int entry) { Menu(MainWindow::cmdSimulation + entry); };

    TurnTo([this] { return m_window.CommandOf<BenchPage>(); });
    Await([page] { return HWND{page()}; });
    Click(filter(2));
    Click(path(1));
    Click(shutter);
    rest();
    Picture(L"60-bench");
    simulate(MainWindow::simSlow);
    Click(objective(0));
    Click(filter(4));
    Picture(L"61-bench-moving");
    simulate(MainWindow::simStop);
    Picture(L"62-bench-stopped");
    simulate(MainWindow::simSlow);
    simulate(MainWindow::simFail);
    Click(objective(3));
    Click(filter(1));
    rest();
    Picture(L"63-bench-failed");
    simulate(MainWindow::simFail);
    Click(objective(2));
    Click(filter(2));
    rest();
    simulate(MainWindow::simRefuse);
    Click(objective(1));
    Click(filter(3));
    Click(path(2));
    Click(shutter);
    Picture(L"64-bench-refused");
    simulate(MainWindow::simRefuse);
    simulate(MainWindow::simDeviceDecides);
    Click(objective(1));
    rest();
    simulate(MainWindow::simDeviceDecides);
    Wheel([page] { return HWND{page().First<NosepiecePanel>()->Panel()}; }, -4);
    Picture(L"65-bench-scrolled");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Menu(MainWindow::cmdZoom + 6);
    Picture(L"66-bench-dark-150");
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Menu(MainWindow::cmdZoom + 8);
    Picture(L"67-bench-200");
    Menu(MainWindow::cmdZoom + 4);
    Menu(MainWindow::cmdEnabled);
    Picture(L"68-bench-disabled");
    Menu(MainWindow::cmdEnabled);
    Menu(MainWindow::cmdLanguage + LANG_GERMAN);
    Picture(L"69-bench-german");
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
}
