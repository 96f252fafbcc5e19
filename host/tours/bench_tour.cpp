// The page of the whole microscope.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/bench_page.h"
#include "../resources/resource.h"

using kx::config::Simulated;

void Tour::PlanBench() {
    const auto page = [this]() -> BenchPage& { return m_window.PageOf<BenchPage>(); };
    // What a microscope does not have is passed by; of fewer positions another one is asked for.
    const auto& roles = m_window.Microscope().Roles();
    const auto clickOne = [this](long count, int i, int firstId, const Find& panel) {
        if (count > 0) Click([=] { return GetDlgItem(panel(), firstId + static_cast<int>(i % count)); });
    };
    const auto* const turret = roles.turrets.empty() ? nullptr : Simulated<CKxSimNosepiece>(roles.turrets.front());
    const auto* const wheel = roles.wheels.empty() ? nullptr : Simulated<CKxSimFilterChanger>(roles.wheels.front());
    const auto* const path = roles.lightPaths.empty() ? nullptr : Simulated<CKxSimLightPath>(roles.lightPaths.front());
    const bool hasShutter = !roles.shutters.empty();
    const auto clickObjective = [=](int i) {
        clickOne(turret ? turret->GetPositionCount() : 0, i, 10200,
                 [=] { return HWND{page().First<NosepiecePanel>()->Panel()}; });
    };
    const auto clickFilter = [=](int i) {
        clickOne(wheel ? wheel->GetFilterCount() : 0, i, 10201,
                 [=] { return HWND{page().First<FilterPanel>()->Panel()}; });
    };
    const auto clickPath = [=](int i) {
        clickOne(path ? path->GetPositionCount() : 0, i, 10201,
                 [=] { return HWND{page().First<SwitcherPanel>()->Panel()}; });
    };
    const auto clickShutter = [=, this] {
        if (hasShutter) Click([=] { return page().First<SingleShutterPanel>()->Panel().GetButtonHandle(); });
    };
    const auto dragPower = [=, this](int from, int to) {
        if (page().First<LaserPanel>())
            Drag([=] { return GetDlgItem(page().First<LaserPanel>()->Power(), 10000); }, from, to);
    };
    const auto sendZToTop = [=, this] {
        // A double click.
        for (int i = 0; page().First<FocusPanel>() && i < 2; ++i)
            Click(
                [=] { return GetDlgItem(page().First<FocusPanel>()->Panel().GetHandle(), CKxDevUI_ZStack::EditTop); });
    };
    // Nothing of the microscope is on its way any more.
    const auto rest = [this] {
        m_steps.push_back([this] {
            const auto& all = m_window.Microscope().Roles();
            for (const auto* ids : {&all.turrets, &all.wheels, &all.lightPaths, &all.shutters}) {
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
    clickFilter(2);
    clickPath(1);
    clickShutter();
    dragPower(10, 60);
    if (page().First<LaserPanel>()) Click([=] { return GetDlgItem(*page().First<LaserPanel>(), IDC_LASER_ON); });
    const auto lookAtSetup = [this](const Find& button) {
        Click(button);
        Await([this] { return DialogItem(IDCANCEL); });
        Key(VK_ESCAPE);
    };
    if (turret) lookAtSetup([=] { return GetDlgItem(page().First<NosepiecePanel>()->Panel(), 10500); });
    if (wheel) lookAtSetup([=] { return GetDlgItem(page().First<FilterPanel>()->Panel(), 10500); });
    rest();
    Picture(L"60-bench");
    // The menu is opened by its letter, and closed again.
    Do([this] { PostMessageW(m_window.Handle(), WM_SYSCOMMAND, SC_KEYMENU, L'e'); });
    Await([] { return FindWindowW(L"#32768", nullptr); });
    Key(VK_UP);
    Key(VK_RIGHT);
    Do([] {});
    Picture(L"60-bench-undo");
    Key(VK_ESCAPE);
    Key(VK_ESCAPE);
    Key(VK_ESCAPE);
    Menu(MainWindow::cmdUndo);
    Menu(MainWindow::cmdUndo);
    Menu(MainWindow::cmdRedo);
    rest();
    simulate(MainWindow::simSlow);
    dragPower(60, 90);
    clickObjective(0);
    clickFilter(4);
    sendZToTop();
    Picture(L"61-bench-moving");
    simulate(MainWindow::simStop);
    Picture(L"62-bench-stopped");
    simulate(MainWindow::simSlow);
    simulate(MainWindow::simFail);
    clickObjective(3);
    clickFilter(1);
    rest();
    Picture(L"63-bench-failed");
    simulate(MainWindow::simFail);
    clickObjective(2);
    clickFilter(2);
    sendZToTop();
    rest();
    simulate(MainWindow::simRefuse);
    clickObjective(1);
    clickFilter(3);
    clickPath(2);
    clickShutter();
    Picture(L"64-bench-refused");
    simulate(MainWindow::simRefuse);
    simulate(MainWindow::simDeviceDecides);
    clickObjective(1);
    rest();
    simulate(MainWindow::simDeviceDecides);
    Wheel([page] { return HWND{page().First<NosepiecePanel>()->Panel()}; }, -4);
    Picture(L"65-bench-scrolled");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Menu(MainWindow::cmdZoom + 6);
    Picture(L"66-bench-dark-150");
    Menu(MainWindow::cmdAutoScheme);
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
