// The page of the illumination.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/light_page.h"
#include "../resources/resource.h"

void Tour::PlanLight() {
    TurnTo([this] { return m_window.CommandOf<LightPage>(); });
    Await([this] { return HWND{m_window.PageOf<LightPage>()}; });
    PlanShutters();
    PlanModeShutter();
    Menu(MainWindow::cmdEnabled);
    Picture(L"53-light-disabled");
    Menu(MainWindow::cmdEnabled);
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Picture(L"54-light-dark");
    Menu(MainWindow::cmdZoom + 6);
    Picture(L"55-light-dark-150");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Light);
    Menu(MainWindow::cmdZoom + 8);
    Picture(L"56-light-200");
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Menu(MainWindow::cmdZoom + 4);
    Menu(MainWindow::cmdLanguage + LANG_GERMAN);
    Picture(L"57-light-german");
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
}

void Tour::PlanShutters() {
    const auto button = [this](int index) -> Find {
        return [this, index] { return m_window.PageOf<LightPage>().Shutters().Shutter(index).GetButtonHandle(); };
    };
    const auto box = [this](int id) -> Find {
        return [this, id] { return GetDlgItem(m_window.PageOf<LightPage>().Shutters(), id); };
    };
    Click(button(0));
    Click(button(2));
    Click(button(4));
    Key(VK_SPACE);
    Picture(L"50-shutters");
    RightClick(button(3));
    Key(VK_DOWN);
    Picture(L"51-shutter-menu");
    Key(VK_RETURN);
    Click(box(IDC_SHUTTER_LOCK));
    Click(box(IDC_SHUTTER_GRABBER));
    Click(box(IDC_SHUTTER_REFUSE));
    Click(button(0));
    Picture(L"52-shutters-refused");
    Click(box(IDC_SHUTTER_REFUSE));
    Click(box(IDC_SHUTTER_GRABBER));
    Click(box(IDC_SHUTTER_LOCK));
}

void Tour::PlanModeShutter() {
    const Find list = [this] { return GetDlgItem(m_window.PageOf<LightPage>().Smart().Row(), 10201); };
    const Find slider = [this] {
        const HWND row = m_window.PageOf<LightPage>().Smart().Row();
        return GetDlgItem(FindWindowExW(row, nullptr, L"KxDevUI_Container", nullptr), 10000);
    };
    const Find refuses = [this] { return GetDlgItem(m_window.PageOf<LightPage>().Smart(), IDC_SMART_REFUSE); };
    Click(list);
    Key(VK_END);
    Key(VK_RETURN);
    Drag(slider, 90, 45);
    Picture(L"32-smart-shutter");
    Click(refuses);
    Drag(slider, 45, 10);
    Click(list);
    Key(VK_HOME);
    Key(VK_RETURN);
    Picture(L"32-smart-shutter-refused");
    Click(refuses);
}
