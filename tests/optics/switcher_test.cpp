// The switcher panel: rows of buttons, ports of laser units, positions of mirrors.
#include "panel_test.h"

#include <kxdevui/light/devgui_shutter.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/framework/ui_position_panel.h>
#include <kxdevui/optics/devgui_switcher.h>
#include <kxsystem/kx_locale.h>

namespace {

using namespace kx::test;

constexpr int kButton = 10201;

class Switch : public Asking<CKxDevUI_Switcher> {
public:
    using Asking::Asking;
    using CKxDevUI_Switcher::CreateControls, CKxDevUI_Switcher::DestroyControls, CKxDevUI_Switcher::OnCommand;
    using CKxDevUI_Switcher::RedrawButtons, CKxDevUI_Switcher::WndProc;

protected:
    void OnSetPortSingleRequest(long port) override { Asked("port", port); }
};

using Switcher = PanelTest<Switch>;
using Laser = Registered<CKxSimLaserOutput>;
using Path = Registered<CKxSimLightPath>;

std::wstring TextOf(HWND window) {
    wchar_t text[100] = L"";
    GetWindowTextW(window, text, 100);
    return text;
}

// The buttons as "+-" for down and up, by position.
std::string Down(HWND panel) {
    std::string down;
    for (int i = 0; const HWND button = GetDlgItem(panel, kButton + i); ++i)
        down += SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED ? '+' : '-';
    return down;
}

TEST_F(Switcher, PlacesItsButtons) {
    const struct {
        int count;
        long width;
        bool invert;
        POINT first, last;
        long height;
    } table[] = {
        {2, 256, false, {110, 7}, {180, 7}, 32},  // exactly up to the edge would be 250
        {2, 250, false, {110, 7}, {180, 7}, 32}, {2, 249, false, {110, 7}, {110, 31}, 56},
        {3, 400, true, {250, 7}, {110, 7}, 32},  {3, 50, false, {110, 7}, {110, 55}, 80},
    };
    for (const auto& row : table) {
        Path path(L"Path", Names(row.count, L"L"));
        panel.SetInvertOrder(row.invert);
        panel.Create(parent.Window(), 0, 0, row.width, 32, true, true);
        for (int time = 0; time < 2; ++time) {
            ASSERT_TRUE(panel.Update(&path, true, true, true));
            const RECT first = PlaceOf(panel, kButton), last = PlaceOf(panel, kButton + row.count - 1);
            EXPECT_EQ(std::pair(first.left, first.top), std::pair(row.first.x, row.first.y));
            EXPECT_EQ(std::pair(last.left, last.top), std::pair(row.last.x, row.last.y));
            EXPECT_EQ(HeightOf(panel), row.height) << "the same the second time";
        }
        EXPECT_EQ(HeightOf(ChildOf(panel, 10000)), row.height > 32 ? row.height + 4 : 32);
        EXPECT_EQ(GetWindow(ChildOf(panel, kButton + 1), GW_HWNDNEXT), ChildOf(panel, kButton + (row.invert ? 0 : 2)))
            << "made from left to right";
    }
    panel.Create(parent.Window(), 0, 0, 250, 44, true, true);
    EXPECT_GT(PlaceOf(panel, kButton).top, kx::ui::PositionPanel::TitleHeight(false)) << "below the caption";
}

TEST_F(Switcher, ReadsLaserUnits) {
    const struct {
        const wchar_t* driver;
        int ports, used;
        const wchar_t* firstName;
        const char* down;
    } table[] = {
        {L"", 2, 0, L"A", "+-"},
        {L"", 2, 1, L"A", "-+"},
        {L"CKxLU4ADevice", 2, 0, L"B", "-+"},
        {L"CKxLU4ADeviceSim", 2, 1, L"B", "+-"},
        {L"CKxLU4ADevices", 2, 0, L"A", "+-"},
        {L"", 4, 2, L"A", "--+-"},
    };
    for (const auto& row : table) {
        std::vector<std::wstring> names{L"A", L"B", L"C & D", L"E"};
        names.resize(static_cast<std::size_t>(row.ports));
        Laser laser(L"Laser", names, false, row.driver);
        laser.SetPortUsed(row.used, true);
        Open(500);
        ASSERT_TRUE(panel.Update(&laser, true, true, false));
        EXPECT_STREQ(panel.GetTitle(), L"Laser");
        EXPECT_EQ(TextOf(ChildOf(panel, kButton)), row.firstName);
        EXPECT_EQ(Down(panel), row.down) << "the structure brings the state";
        laser.SetPortEnabled(0, false);
        panel.Update(&laser, false, true, false);
        const bool reversed = std::wstring(row.firstName) == L"B";
        EXPECT_EQ(IsUsable(panel, kButton), reversed);
        panel.SetEnable(false);
        panel.SetEnable(true);
        EXPECT_EQ(IsUsable(panel, kButton), reversed) << "usable or not";
    }
}

TEST_F(Switcher, AsksForPositionsAndPorts) {
    Laser laser(L"Laser", std::vector<std::wstring>{L"A", L"B", L"C"}, true);
    Open(400);
    panel.Update(laser.GetLogDevId(), true, true, true);
    panel.answer = true;
    ClickChild(panel, kButton + 2);
    EXPECT_EQ(Down(panel), "--+") << "whatever the host says";
    panel.meanwhile = [&] { panel.Update(&laser, true, true, true); };
    ClickChild(panel, kButton + 2);
    EXPECT_EQ(Down(panel), "--+") << "and does";
    EXPECT_TRUE(Told({Call("position", 2), Call("position", 2)}));
    panel.meanwhile = nullptr;

    // Ports: each press asks, and nothing shows before the device has answered, by mouse or keys.
    panel.SetBoolMoreThanOnePortCanBeActive(true);
    panel.Update(&laser, true, true, true);
    EXPECT_EQ(Down(panel), "+--");
    DoubleClick(ChildOf(panel, kButton + 1), 5, 5);
    const DialogKeys keys(parent.Window());
    Key(VK_RIGHT);
    Key(VK_SPACE);
    EXPECT_EQ(Down(panel), "+--");
    EXPECT_TRUE(Told({Call("port", 1), Call("port", 1), Call("port", 2)}));
    panel.SetPortSingle(1, true);
    panel.SetPortSingle(9, true);
    EXPECT_EQ(Down(panel), "++-");
}

TEST_F(Switcher, ReadsMirrorsAndRefusesTheUnknown) {
    Open();
    Laser laser(L"Laser", std::vector<std::wstring>{L"A", L"B"}, false);
    laser.SetPortEnabled(1, false);
    panel.Update(&laser, true, true, true);
    Registered<CKxSimTIRFMirror> mirror(L"Mirror");
    panel.Update(&mirror, false, true, false);
    EXPECT_TRUE(IsUsable(panel, kButton + 1)) << "whatever the laser's port was";
    panel.Update(&mirror, true, true, false);
    EXPECT_EQ(Down(panel), "--") << "the structure is not the state";
    ASSERT_TRUE(panel.Update(mirror.GetLogDevId(), true, true, true));
    EXPECT_EQ(TextOf(ChildOf(panel, kButton + 1)), L"TIRF");
    EXPECT_EQ(Down(panel), "+-");
    EXPECT_FALSE(panel.Update(0u, true, true, true));
    EXPECT_FALSE(panel.Update(4711u, true, true, true));
    EXPECT_FALSE(panel.Update(static_cast<IKxDeviceLightPath*>(nullptr), true, true, true));
    EXPECT_EQ(Down(panel), "+-");
    CKxLocale::SetModuleLangId(LANG_JAPANESE);
    EXPECT_STREQ(CKxDevUI_Switcher().GetTitle(), L"切り替え");
    EXPECT_STREQ(CKxDevUI_FilterWheel().GetTitle(), L"フィルター");
    EXPECT_STREQ(CKxDevUI_Shutter().GetTitle(), L"落射");
    panel.Update(&mirror, false, true, false);
    EXPECT_EQ(TextOf(ChildOf(panel, kButton)), L"落射");
    CKxLocale::SetModuleLangId(0);
    Path many(L"Many", Names(40, L"x"));
    panel.Update(&many, true, true, true);
    EXPECT_EQ(Down(panel).size(), 16u);
    EXPECT_TRUE(Told({}));
}

}  // namespace
