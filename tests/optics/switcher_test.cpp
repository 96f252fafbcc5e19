// The switcher panel: rows of buttons, ports of laser units, positions of mirrors.
#include <controls/panel_test.h>

#include <kxdevui/optics/devgui_switcher.h>

namespace {

using namespace kx::test;

constexpr int kButton = 10201;

struct Switch : AskingPanel<CKxDevUI_Switcher> {
    using AskingPanel::AskingPanel;

    void OnSetPortSingleRequest(long port) override { Told("port", port); }
};

struct Switcher : PanelTest<Switch> {
    std::string See() override { return Shown() + Told(); }
    // The buttons by position: their names in a row, "+" where they are down, "x" where they cannot be used.
    std::string Shown() {
        std::string shown;
        for (int i = kButton; const HWND button = Part(i); ++i) {
            shown += Narrow(TextOf(button)) + (SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED ? "+" : "");
            shown += std::string(IsUsable(i) ? "" : "x") + " ";
        }
        return shown;
    }
};

struct Laser : Registered<CKxSimLaserOutput> {
    using Registered::Registered;
    bool GetCapability(int capability) const override {
        return (locked && capability == eKxCapability_NotOperable) || CKxSimLaserOutput::GetCapability(capability);
    }
    bool locked = false;
};
using Path = Registered<CKxSimLightPath>;

TEST_F(Switcher, PlacesItsButtons) {
    const std::tuple<int, long, bool, const char*, const char*, long> table[] = {{2, 250, false, "110 7", "180 7", 32},
                                                                                 {2, 249, false, "110 7", "110 31", 56},
                                                                                 {3, 400, true, "250 7", "110 7", 32},
                                                                                 {3, 50, false, "110 7", "110 55", 80}};
    for (const auto& [count, width, invert, first, last, height] : table) {
        Path path(L"Path", Names(count, L"L"));
        panel.SetInvertOrder(invert);
        panel.Create(parent.Window(), 0, 0, width, 32, true, true);
        for (int time = 0; time < 2; ++time) {
            ASSERT_TRUE(panel.Update(&path, true, true, true));
            EXPECT_EQ(PlaceOf(Part(kButton)), std::string(first) + " 70 24");
            EXPECT_EQ(PlaceOf(Part(kButton + count - 1)), std::string(last) + " 70 24");
            EXPECT_EQ(Height(), height) << "the same the second time";
        }
        // Made from left to right.
        EXPECT_EQ(GetWindow(Part(kButton + 1), GW_HWNDNEXT), Part(kButton + (invert ? 0 : 2)));
    }
}

TEST_F(Switcher, ReadsLaserUnits) {
    const std::tuple<const wchar_t*, std::size_t, int, const char*, const char*> table[] = {
        {L"", 2, 1, "A B+ ", "Ax B+ "},
        {L"CKxLU4ADevice", 2, 0, "B A+ ", "B A+x "},
        {L"CKxLU4ADeviceSim", 2, 1, "B+ A ", "B+ Ax "},
        {L"CKxLU4ADevices", 2, 0, "A+ B ", "A+x B "},
        {L"", 4, 2, "A B C && D+ E ", "Ax B C && D+ E "}};
    for (const auto& [driver, ports, used, shown, withoutFirst] : table) {
        std::vector<std::wstring> names{L"A", L"B", L"C & D", L"E"};
        names.resize(ports);
        Laser laser(L"Laser", names, false, driver);
        laser.SetPortUsed(used, true);
        Open(500);
        ASSERT_TRUE(panel.Update(&laser, true, true, false));
        EXPECT_EQ(Shown(), shown) << "the structure brings the state";
        laser.SetPortEnabled(0, false);
        panel.Update(&laser, false, true, false);
        EXPECT_EQ(Shown(), withoutFirst);
        laser.locked = true;
        SetFocus(panel);
        panel.Update(&laser, false, true, false);
        EXPECT_EQ(GetFocus(), panel) << "no port can have it";
        EXPECT_FALSE(IsUsable(kButton) || IsUsable(kButton + 1));
    }
}

TEST_F(Switcher, AsksForPositionsAndPorts) {
    Laser laser(L"Laser", std::vector<std::wstring>{L"A", L"B", L"C"}, true);
    Open(400);
    panel.Update(laser.GetLogDevId(), true, true, true);
    panel.answer = true;
    panel.meanwhile = [&] { panel.Update(&laser, true, true, true); };
    ClickPart(kButton + 2);
    EXPECT_EQ(See(), "A B C+ position(2)") << "whatever the host says and does";
    panel.meanwhile = nullptr;
    // Ports: each press asks, and nothing shows before the device has answered, by mouse or keys.
    panel.SetBoolMoreThanOnePortCanBeActive(true);
    panel.Update(&laser, true, true, true);
    const DialogKeys keys(parent.Window());
    Play({{[&] { DoubleClick(Part(kButton + 1), 5, 5); }, "A+ B C port(1) port(1)"},
          {[] { Key(VK_RIGHT), Key(VK_SPACE); }, "A+ B C port(2)"},
          {[&] { panel.SetPortSingle(1, true), panel.SetPortSingle(9, true); }, "A+ B+ C "},
          // The first port stands last then.
          {[&] { panel.SetInvertOrder(true), panel.Update(&laser, true, true, false); }, "A+ B C "},
          {[&] { SetFocus(Part(kButton + 1)), Key(VK_RIGHT), Key(VK_SPACE); }, "A+ B C port(0)"}});
}

TEST_F(Switcher, ReadsMirrorsAndRefusesTheUnknown) {
    Open();
    Laser laser(L"Laser", std::vector<std::wstring>{L"A", L"B"}, false);
    laser.SetPortEnabled(1, false);
    panel.Update(&laser, true, true, true);
    Registered<CKxSimTIRFMirror> mirror(L"Mirror");
    const auto update = [&](bool structure, bool names, bool state) { panel.Update(&mirror, structure, names, state); };
    // Usable whatever the laser's port was; the structure is not the state.
    Play({{[&] { update(false, true, false); }, "EPI+ TIRF "},
          {[&] { update(true, true, false); }, "EPI TIRF "},
          {[&] { EXPECT_TRUE(panel.Update(mirror.GetLogDevId(), true, true, true)); }, "EPI+ TIRF "},
          {[&] { EXPECT_FALSE(panel.Update(0u, true, true, true)); }, "EPI+ TIRF "}});
    Path many(L"Many", Names(40, L"x"));
    panel.Update(&many, true, true, true);
    EXPECT_TRUE(Part(kButton + 15) && !Part(kButton + 16));
}

}  // namespace
