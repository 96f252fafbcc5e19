// The page of the optical path.
#include "../tour.h"

#include <kxbaseui/kx_colors.h>
#include <kxdevui/setup/setup_ids.h>

#include "../main_window.h"
#include "../pages/optics_page.h"
#include "../resources/resource.h"

void Tour::PlanOptics() {
    const auto page = [this]() -> OpticsPage& { return m_window.PageOf<OpticsPage>(); };
    const auto objective = [page](int i) -> Find {
        return [=] { return GetDlgItem(page().Nosepiece().Panel(), 10200 + i); };
    };
    const auto filter = [page](int i) -> Find {
        return [=] { return GetDlgItem(page().Emission().Panel(), 10201 + i); };
    };
    const auto path = [page](int i) -> Find { return [=] { return GetDlgItem(page().Path().Panel(), 10201 + i); }; };
    const auto port = [page](int i) -> Find { return [=] { return GetDlgItem(page().Lasers().Panel(), 10201 + i); }; };
    // The turret and the wheel take their time.
    const auto arrived = [this](auto device) {
        m_steps.push_back(
            [this, device] { return device(m_window.Gallery()).GetDeviceState() == eKxDeviceState_Ready; });
    };

    TurnTo([this] { return m_window.CommandOf<OpticsPage>(); });
    Await([page] { return HWND{page()}; });
    Click(objective(4));
    Picture(L"30-optics-turning");
    arrived([](GalleryDevices& devices) -> CKxSimNosepiece& { return devices.Nosepiece(); });
    // From oil to a dry one, while the stage is high.
    MoveTo(objective(3));
    Await([] { return FindWindowW(L"KxDevUI_ObjectiveCard", nullptr); });
    Picture(L"34-optics-card");
    Key(VK_ESCAPE);
    Click(filter(6));
    arrived([](GalleryDevices& devices) -> CKxSimFilterChanger& { return devices.Emission(); });
    Key(VK_RIGHT);
    Key(VK_SPACE);
    Click([page] { return GetDlgItem(page().Cubes(), IDC_CUBES_TURN); });
    Click(path(3));
    Click(port(2));
    Picture(L"31-optics");
    Click([page] { return GetDlgItem(page().Emission(), IDC_DEVICE_REFUSE); });
    Click(filter(0));
    MoveTo([page] { return GetDlgItem(page().Nosepiece().Panel(), 10500); });
    Picture(L"32-optics-refused");
    Click([page] { return GetDlgItem(page().Emission(), IDC_DEVICE_REFUSE); });
    Looks(L"33-optics", LANG_FRENCH);

    const auto inDialog = [this](int id) -> Find { return [=, this] { return DialogItem(id); }; };
    const auto find = [this, inDialog](const wchar_t* text) {
        Click(inDialog(IDC_SETUP_FIND));
        Type(text);
        Key(VK_DOWN);
    };
    Click([page] { return GetDlgItem(page().Nosepiece().Panel(), 10500); });
    Await(inDialog(IDOK));
    for (int i = 0; i < 3; ++i)
        Key(VK_DOWN);
    find(L"water 25");
    Key(VK_END);
    Picture(L"34-setup-objectives");
    Click(inDialog(IDOK));
    Click([page] { return GetDlgItem(page().Cubes().Panel(), 10500); });
    find(L"470/24");
    Key(VK_DOWN);
    Key(VK_DOWN);
    Picture(L"34-setup-filters");
    Click(inDialog(IDOK));
    Picture(L"34-setup-done");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Menu(MainWindow::cmdCondenser);
    Await(inDialog(IDOK));
    Key(VK_DOWN);
    find(L"phase");
    Picture(L"34-setup-condenser-dark");
    Key(VK_ESCAPE);
    Menu(MainWindow::cmdAutoScheme);
}
