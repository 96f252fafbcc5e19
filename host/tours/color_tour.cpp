// The page of the light sources.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/color_page.h"
#include "../resources/resource.h"

void Tour::PlanColors() {
    const auto part = [this](int slider, int id) -> Find {
        return [this, slider, id] { return GetDlgItem(m_window.PageOf<ColorPage>().Colors().Slider(slider), id); };
    };
    const auto edit = [part](int slider, int id) -> Find {
        return [box = part(slider, id)] { return GetWindow(box(), GW_CHILD); };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.PageOf<ColorPage>().Colors(), IDC_LIGHT_REFUSE); };
    constexpr int thumb = 10000, box = 10001, minimum = 10005;
    TurnTo([this] { return m_window.CommandOf<ColorPage>(); });
    Await([this] { return HWND{m_window.PageOf<ColorPage>()}; });
    Drag(part(1, thumb), 30, 70);
    Wheel(part(3, thumb), 2);
    Click(edit(4, box));
    Key(VK_END);
    Key(VK_BACK);
    Type(L"5");
    Key(VK_RETURN);
    Click(part(5, thumb));
    Key(VK_RIGHT);
    Drag(part(7, thumb), 33, 20);
    Click(part(7, thumb));
    Key(VK_LEFT);
    Click(edit(7, minimum));
    Picture(L"56-sources");
    Click(refuses);
    Drag(part(1, thumb), 68, 20);
    Wheel(part(6, thumb), 1);
    Picture(L"56-sources-refused");
    Click(refuses);
    Looks(L"57-sources", LANG_GERMAN);
}
