// The page of what stands in the light.
#include "../tour.h"

#include <kxdevui/framework/devgui_activity.h>

#include "../main_window.h"
#include "../pages/lamp_page.h"
#include "../panels/iris_panel.h"
#include "../panels/lamp_panel.h"
#include "../panels/nd_panel.h"

void Tour::PlanLamps() {
    const auto page = [this]() -> LampPage& { return m_window.PageOf<LampPage>(); };
    TurnTo([this] { return m_window.CommandOf<LampPage>(); });
    Await([page] { return HWND{page()}; });
    const auto part = [page](const wchar_t* windowClass) -> Find {
        return [=] { return FindWindowExW(page().First<IrisPanel>()->Panel(), nullptr, windowClass, nullptr); };
    };
    // The answer stands over the panel's own switch.
    const auto refuse = [this] { Menu(MainWindow::cmdSimulation + MainWindow::simRefuse); };
    Click(part(L"KxDevUI_Shutter"));
    Drag(part(L"KxDevUI_HPot"), 88, 35);
    Picture(L"57-iris-moving");
    m_steps.push_back([page] { return page().First<IrisPanel>()->Panel().GetAperture() < 60; });
    refuse();
    Wheel(part(L"KxDevUI_HPot"), 1);
    Picture(L"57-iris-refused");
    refuse();
    const Find slider = [page] {
        return FindWindowExW(page().Irises().Panel(),
                             FindWindowExW(page().Irises().Panel(), nullptr, L"KxDevUI_HPot", nullptr), L"KxDevUI_HPot",
                             nullptr);
    };
    Click([page] { return FindWindowExW(page().Irises().Panel(), nullptr, L"KxDevUI_Shutter", nullptr); });
    Click([page] { return GetDlgItem(GetDlgItem(page().Irises().Panel(), 10220), 10200); });
    m_steps.push_back([page] { return page().Irises().Panel().IsCoupled(); });
    Picture(L"57-irises-coupled");
    Drag(slider, 60, 30);
    Picture(L"57-irises-by-hand");
    const auto filter = [page](int wheel, int position) -> Find {
        return [=] { return GetDlgItem(page().First<NDPanel>()->Panel(), 10300 + 20 * wheel + position); };
    };
    Click([page] { return FindWindowExW(page().First<NDPanel>()->Panel(), nullptr, L"KxDevUI_Shutter", nullptr); });
    Click(filter(0, 3));
    Picture(L"57-nd-moving");
    Click(filter(1, 1));
    m_steps.push_back(
        [page] { return KX_GetActivity(page().First<NDPanel>()->Panel()).activity == EKxActivity::AtRest; });
    PlanHalogen();
    PlanArc();
    Looks(L"58-lamps", LANG_GERMAN);
}

// On, brighter, a preset stored and another recalled, and one that does not light.
void Tour::PlanHalogen() {
    const auto lamp = [this]() -> AskingLamp& { return m_window.PageOf<LampPage>().First<HalogenPanel>()->Panel(); };
    const auto part = [lamp](int id) -> Find { return [=] { return GetDlgItem(lamp(), id); }; };
    const Find slider = [lamp] { return FindWindowExW(lamp(), nullptr, L"KxDevUI_HPot", nullptr); };
    const auto is = [this, lamp](EKxDeviceState state) {
        m_steps.push_back([=] { return lamp().Lamp().GetDeviceState() == state; });
    };
    Click(part(10200));
    Drag(slider, 5, 60);
    Picture(L"57-lamp-follows");
    is(eKxDeviceState_Ready);
    Hold(part(10301), [lamp] { return lamp().GetPreset(1) == lamp().GetIntensity(); });
    Click(part(10300));
    is(eKxDeviceState_Ready);
    Picture(L"57-lamp-recalled");
    Menu(MainWindow::cmdSimulation + MainWindow::simFail);
    Click(part(10302));
    is(eKxDeviceState_Faulty);
    Picture(L"57-lamp-failed");
    Menu(MainWindow::cmdSimulation + MainWindow::simFail);
    Click(part(10200));
    is(eKxDeviceState_Ready);
}

// It is hot when it goes out, and has to cool before it is lit again.
void Tour::PlanArc() {
    const auto lamp = [this]() -> AskingLamp& { return m_window.PageOf<LampPage>().First<ArcPanel>()->Panel(); };
    const auto part = [lamp](int id) -> Find { return [=] { return GetDlgItem(lamp(), id); }; };
    Click([lamp] { return FindWindowExW(lamp(), nullptr, L"KxDevUI_Shutter", nullptr); });
    Click(part(10302));
    Click(part(10200));
    m_steps.push_back([lamp] { return lamp().IsOn(); });
    Click(part(10200));
    Click(part(10200));
    Picture(L"57-lamp-hot");
    m_steps.push_back([lamp] { return lamp().Lamp().GetCoolDown() == 0; });
    Click(part(10200));
    m_steps.push_back([lamp] { return lamp().IsOn(); });
    Picture(L"57-lamp-warming");
}
