// The page of the focus: limits, a run to the top, an escape and the way back.
#include "../tour.h"

#include <kxdevui/framework/devgui_activity.h>

#include "../main_window.h"
#include "../pages/focus_page.h"
#include "../panels/zdrive_panel.h"
#include "../resources/resource.h"

void Tour::PlanFocus() {
    constexpr int kGoTo = 10200, kUpper = 10203, kLower = 10204, kCoarseUp = 10223, kEscape = 10225, kReturn = 10226;
    const auto panel = [this]() -> ZDrivePanel& { return *m_window.PageOf<FocusPage>().First<ZDrivePanel>(); };
    const auto part = [panel](int id) -> Find { return [=] { return GetDlgItem(panel().Panel(), id); }; };
    const auto enter = [&](int id, const wchar_t* text) {
        Click(part(id));
        Type(text);
        Key(VK_RETURN);
    };
    const auto rests = [this, panel] {
        m_steps.push_back([panel] { return KX_GetActivity(panel().Panel()).activity == EKxActivity::AtRest; });
    };
    const auto slow = [this](unsigned times) { Do([=] { ZDrivePanel::Device().SetSlowness(times); }); };
    TurnTo([this] { return m_window.CommandOf<FocusPage>(); });
    Await(part(kGoTo));
    Do([] { ZDrivePanel::Device().SetDrift(0.4); });
    enter(kUpper, L"4100");
    enter(kLower, L"3000");
    slow(12);
    enter(kGoTo, L"4095");
    Picture(L"80-focus-moving");
    slow(1);
    rests();
    Click(part(kCoarseUp));
    rests();
    Do([] { ZDrivePanel::Device().SetDrift(0); });
    Picture(L"81-focus-at-limit");
    Click(part(kCoarseUp));
    Picture(L"82-focus-beyond-limit");
    Click(part(kEscape));
    rests();
    Picture(L"83-focus-escaped");
    Do([] { ZDrivePanel::Device().SetFails(true, L"No answer from the motor"); });
    Click(part(kReturn));
    m_steps.push_back([panel] { return KX_GetActivity(panel().Panel()).activity == EKxActivity::Failed; });
    Picture(L"84-focus-failed");
    Do([] { ZDrivePanel::Device().SetFails(false); });
    Click(part(kReturn));
    rests();
    Looks(L"85-focus", LANG_GERMAN);
}
