// The page of what stands in the light.
#include "../tour.h"

#include <kxdevui/framework/devgui_activity.h>

#include "../main_window.h"
#include "../pages/lamp_page.h"
#include "../panels/iris_panel.h"
#include "../panels/nd_panel.h"
#include "../resources/resource.h"

void Tour::PlanLamps() {
    const auto page = [this]() -> LampPage& { return m_window.PageOf<LampPage>(); };
    TurnTo([this] { return m_window.CommandOf<LampPage>(); });
    Await([page] { return HWND{page()}; });
    const auto part = [page](const wchar_t* windowClass) -> Find {
        return [=] { return FindWindowExW(page().First<IrisPanel>()->Panel(), nullptr, windowClass, nullptr); };
    };
    const Find refuses = [page] { return GetDlgItem(*page().First<IrisPanel>(), IDC_DEVICE_REFUSE); };
    Click(part(L"KxDevUI_Shutter"));
    Drag(part(L"KxDevUI_HPot"), 88, 35);
    Picture(L"57-iris-moving");
    m_steps.push_back([page] { return page().First<IrisPanel>()->Panel().GetAperture() < 60; });
    Click(refuses);
    Wheel(part(L"KxDevUI_HPot"), 1);
    Picture(L"57-iris-refused");
    Click(refuses);
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
    Looks(L"58-lamps", LANG_GERMAN);
}
