// The page of the generic controls.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/controls_page.h"
#include "../resources/resource.h"

void Tour::PlanControls() {
    TurnTo([this] { return m_window.CommandOf<ControlsPage>(); });
    Await([this] { return HWND{m_window.PageOf<ControlsPage>()}; });
    PlanSliders();
    PlanFields();
    PlanRadio();
    PlanTable();
    Picture(L"20-controls");
    Looks(L"21-controls", LANG_GERMAN);
}

void Tour::PlanSliders() {
    const auto slider = [this](int index) -> Find {
        return [this, index] { return HWND{m_window.PageOf<ControlsPage>().Sliders().Slider(index)}; };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.PageOf<ControlsPage>().Sliders(), IDC_SLIDER_REFUSE); };
    Drag(slider(0), 17, 60);
    Wheel(slider(0), -2);
    Click(slider(1));
    Key(VK_RIGHT);
    Drag(slider(2), 42, 80);
    Click(slider(3));
    Key(VK_PRIOR);
    Picture(L"18-sliders");
    Click(refuses);
    Drag(slider(0), 50, 20);
    Picture(L"18-sliders-refused");
    Click(refuses);
}

void Tour::PlanFields() {
    const Find exposure = [this] { return m_window.PageOf<ControlsPage>().Fields().Exposure().GetEditWindow(); };
    const Find gain = [this] { return m_window.PageOf<ControlsPage>().Fields().Gain().GetEditWindow(); };
    const Find lines = [this] { return m_window.PageOf<ControlsPage>().Fields().Wavelengths().GetEditWindow(); };
    Click(exposure);
    Key(VK_END);
    Type(L"5");
    Key(VK_RETURN);
    Click(gain);
    Key(VK_UP);
    Key(VK_UP);
    Click(lines);
    Key(VK_END);
    Type(L"900");
    Key(VK_RETURN);
    Picture(L"18-fields-refused");
    Key(VK_ESCAPE);
    Picture(L"18-fields");
}

void Tour::PlanRadio() {
    const auto button = [this](int index) -> Find {
        return [this, index] { return GetDlgItem(m_window.PageOf<ControlsPage>().Binning().Group(), 85 + index); };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.PageOf<ControlsPage>().Binning(), IDC_BINNING_REFUSE); };
    Click(button(1));
    Key(VK_DOWN);
    Click(refuses);
    Click(button(0));
    Click(refuses);
}

void Tour::PlanTable() {
    const Find table = [this] { return m_window.PageOf<ControlsPage>().Planes().Table().GetListView(); };
    const Find refuses = [this] { return GetDlgItem(m_window.PageOf<ControlsPage>().Planes(), IDC_PLANES_REFUSE); };
    // The cell under the mouse, then the one next to it.
    Click(table);
    Key(VK_HOME);
    Key(VK_DOWN);
    Key(VK_F2);
    Type(L"65");
    Key(VK_TAB);
    Type(L"deeper");
    Picture(L"19-table-editing");
    Key(VK_RETURN);
    Click(refuses);
    Click(table);
    Key(VK_F2);
    Type(L"9");
    Key(VK_RETURN);
    Picture(L"19-table-refused");
    Click(refuses);
}
