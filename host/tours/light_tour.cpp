// The page of the illumination.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/light_page.h"
#include "../panels/field_panel.h"
#include "../panels/modeshutter_panel.h"
#include "../panels/shutter_panel.h"
#include "../resources/resource.h"

void Tour::PlanLight() {
    TurnTo([this] { return m_window.CommandOf<LightPage>(); });
    Await([this] { return HWND{m_window.PageOf<LightPage>()}; });
    PlanShutters();
    PlanModeShutter();
    PlanField();
    Looks(L"53-light", LANG_GERMAN);
}

void Tour::PlanShutters() {
    const auto button = [this](int index) -> Find {
        return [this, index] {
            return m_window.PageOf<LightPage>().First<ShutterPanel>()->Shutter(index).GetButtonHandle();
        };
    };
    const auto box = [this](int id) -> Find {
        return [this, id] { return GetDlgItem(*m_window.PageOf<LightPage>().First<ShutterPanel>(), id); };
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
    const Find list = [this] {
        return GetDlgItem(m_window.PageOf<LightPage>().First<ModeShutterPanel>()->Panel(), 10201);
    };
    const Find slider = [this] {
        const HWND row = m_window.PageOf<LightPage>().First<ModeShutterPanel>()->Panel();
        return GetDlgItem(FindWindowExW(row, nullptr, L"KxDevUI_Container", nullptr), 10000);
    };
    const Find refuses = [this] {
        return GetDlgItem(*m_window.PageOf<LightPage>().First<ModeShutterPanel>(), IDC_DEVICE_REFUSE);
    };
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

void Tour::PlanField() {
    const auto panel = [this]() -> FieldPanel& { return *m_window.PageOf<LightPage>().First<FieldPanel>(); };
    const auto button = [panel](int index) -> Find {
        return [panel, index] { return panel().Button(index).GetButtonHandle(); };
    };
    const auto box = [panel](int index) -> Find {
        return [panel, index] { return panel().Box(index).GetButtonHandle(); };
    };
    Click(button(0));
    Click(button(1));
    Click(button(2));
    Key(VK_DOWN);
    Key(VK_DOWN);
    Picture(L"54-field-menu");
    Key(VK_RETURN);
    Click(button(3));
    Click(box(0));
    Picture(L"54-field");
    Click(box(1));
    Click(button(1));
    Picture(L"54-field-refused");
    Click(box(1));
}
