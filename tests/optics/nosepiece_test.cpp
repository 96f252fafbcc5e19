// The nosepiece panel: who moves the selection, which image is shown, what the device tells.
#include <controls/panel_test.h>

#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/optics/devgui_nosepiece.h>

#include <array>
#include <stdexcept>

namespace {

using namespace kx::test;

constexpr int kLabel = 10100, kButton = 10200, kSetup = 10500, kObservation = 10600;

struct Turret : AskingPanel<CKxDevUI_Nosepiece> {
    using AskingPanel::AskingPanel;
    using CKxDevUI_Nosepiece::GetObjectiveBitmap;
};

struct Nosepiece : PanelTest<Turret> {
    std::string See() override {
        return std::to_string(panel.GetPosition()) + " " + Narrow(panel.GetTitle().str()) + " " + Told();
    }
    bool IsBold(long position) {
        LOGFONTW font{};
        const LRESULT handle = SendMessageW(Part(kLabel + static_cast<int>(position)), WM_GETFONT, 0, 0);
        GetObjectW(reinterpret_cast<HFONT>(handle), sizeof font, &font);
        return font.lfWeight >= FW_BOLD;
    }
};

std::vector<SKxSimObjective> Objectives(std::size_t count) {
    std::vector<SKxSimObjective> objectives(count, {L"Plan Apo 60x/1.40 Oil", L"60x", L""});
    objectives[1] = {L"Plan 10x/0.25", L"10x", L""};
    return objectives;
}

TEST(NextButtonRule, SkipsWhatCannotBeUsed) {
    const std::tuple<int, int, std::array<bool, 5>, std::size_t, int> table[] = {
        {0, 1, {1, 0, 1}, 3, 2}, {2, 1, {1, 0, 1}, 3, 0},    {0, -1, {1, 1, 1}, 3, 2},      {0, 1, {}, 3, 0},
        {0, 1, {1}, 1, 0},       {0, 2, {1, 0, 0, 1}, 4, 0}, {0, 2, {1, 0, 0, 0, 1}, 5, 4}, {1, -2, {1, 1, 1}, 3, 1}};
    for (const auto& [from, step, usable, count, next] : table)
        EXPECT_EQ(kx::ui::NextButton(from, step, {usable.data(), count}), next) << from << " by " << step;
}

TEST_F(Nosepiece, ChoosesTheImageByMagnification) {
    Open();
    const auto expect = [&](double magnification, const char* ring) {
        for (const bool selected : {false, true}) {
            CKxStringA wanted;
            const std::wstring name = selected ? L"IDS_NOSEPIECE_1" : L"IDS_NOSEPIECE_0";
            CKxBitmapPool::LoadSVGBaseUI((name + (ring ? L"" : L"_EMPTY")).c_str(), wanted);
            if (ring) CKxSvgStringAPI::ReplaceString(wanted, "#FFE600", ring);
            EXPECT_STREQ(panel.GetObjectiveBitmap(magnification, selected), wanted) << magnification;
        }
    };
    const std::tuple<double, double, const char*> table[] = {
        {100, 250, "#EEEEEE"}, {60, 63, "#3F77EB"}, {40, 50, "#77E0FF"}, {25, 32, "#5EFFB7"},     {16, 20, "#8CEA6B"},
        {10, 10, "#FFE600"},   {4, 5, "#FF2020"},   {2, 2.5, "#9A3301"}, {0.01, 1.99, "#545454"}, {-1, -1, nullptr}};
    for (const auto& [from, to, ring] : table) {
        expect(from, ring), expect(to, ring);
        // At 2 one meets the other.
        if (from != 2) expect(from - 0.01, nullptr);
        if (to != 1.99) expect(to + 0.01, nullptr);
    }
}

TEST_F(Nosepiece, MovesTheSelectionOnlyWhereItMay) {
    const std::tuple<bool, bool, bool, bool, long> table[] = {
        {false, false, false, true, 2}, {false, true, false, true, 2}, {true, false, false, true, 0},
        {true, true, false, true, 2},   {false, false, true, true, 0}, {true, true, true, true, 0},
        {false, false, false, false, 0}};
    for (const auto& [deviceDriven, localSelect, handled, enabled, position] : table) {
        panel.Init(3, 0, deviceDriven, localSelect);
        panel.answer = handled;
        Open();
        panel.SetEnable(enabled, true);
        ClickPart(kButton + 2);
        EXPECT_EQ(panel.GetPosition(), position);
        EXPECT_TRUE(IsBold(position) && !IsBold(2 - position));
        // The current one is asked for like any other.
        ClickPart(kButton + static_cast<int>(position));
        EXPECT_EQ(Told(), !enabled ? "" : position ? "position(2) position(2)" : "position(2) position(0)");
    }
}

TEST_F(Nosepiece, AsksForSetupAndModesApart) {
    panel.Init(2, 1, true, false);
    panel.ShowObservationMode(true);
    panel.SetObservationRequest([&](int mode) { parent.Record().Call("mode", mode); });
    panel.SetSetupXOffset(120);
    Open();
    SendMessageW(Part(kLabel + 1), WM_SETFONT, 0, 0);
    ClickPart(kSetup);
    EXPECT_TRUE(IsBold(1)) << "after the setup";
    Click(Part(kObservation + 1), 5, 5);
    EXPECT_EQ(panel.GetObservationMode(), 0) << "the host decides";
    EXPECT_EQ(Told(), "setup() mode(1)");
    for (const int mode : {1, 2})
        panel.SetObservationMode(mode);
    EXPECT_EQ(panel.GetObservationMode(), 1);
}

TEST_F(Nosepiece, IsWorkedByKeys) {
    CKxSimNosepiece device(L"Nosepiece", Objectives(4));
    device.SetAvailable(1, false);
    panel.Init(&device);
    Open();
    panel.Update(&device, false, false, true, true, false);
    panel.SetTabStop(true);
    const DialogKeys keys(parent.Window());
    SetFocus(parent.Window());
    // To the current position; the second is not available; around the end.
    kx::test::Play({{[] { Key(VK_TAB); }, "0 "},
                    {[] { Key(VK_RIGHT); }, "2 "},
                    {[] { Key(VK_SPACE); }, "2 position(2)"},
                    {[] { Key(VK_LEFT), Key(VK_LEFT), Key(VK_RETURN); }, "300 setup()"}},
                   [this] { return std::to_string(GetDlgCtrlID(GetFocus()) - kButton) + " " + Told(); });
}

TEST_F(Nosepiece, TakesDevicesAtTheirWord) {
    struct Failing : Registered<CKxSimNosepiece> {
        using Registered::Registered;
        bool GetPosition(long& position) const override {
            if (fails) throw std::runtime_error("gone");
            return CKxSimNosepiece::GetPosition(position);
        }
        bool fails = false;
    } device(L"Nosepiece", Objectives(2));
    Open();
    device.SetSpeed(0);
    const auto update = [&](bool fails) {
        device.fails = fails;
        EXPECT_EQ(panel.Update(&device, true, true, true, true, false), !fails);
    };
    // The message 0x0500 brings the position alone; a device that throws, or is none, changes nothing.
    const bool position[5] = {false, false, true};
    const auto send = [&](unsigned id) { SendMessageW(panel, 0x0500, id, reinterpret_cast<LPARAM>(position)); };
    Play({{[&] { update(false), panel.SetTitle(L"held"); }, "0 held "},
          {[&] { device.MoveTo(1), device.Tick(), update(true); }, "0 held "},
          {[&] { send(device.GetLogDevId()), send(0), send(4711); }, "0 held "},
          {[&] { device.fails = false, send(device.GetLogDevId()); }, "1 held "}});
}

TEST_F(Nosepiece, FollowsItsDevice) {
    CKxSimNosepiece two(L"Two", Objectives(2)), six(L"Six", Objectives(6)), many(L"Many", Objectives(40));
    Open(570);
    const std::tuple<CKxSimNosepiece&, int, const char*> table[] = {
        {many, 16, "8 40 24 30"}, {two, 2, "16 40 24 30"}, {six, 6, "16 40 24 30"}};
    for (const auto& [device, count, first] : table) {
        ASSERT_TRUE(panel.Update(&device, true, true, true, true, false));
        EXPECT_EQ(PlaceOf(Part(kButton)), first);
        EXPECT_TRUE(Part(kButton + count - 1) && !Part(kButton + count));
    }
    EXPECT_STREQ(panel.GetMagnification(1), L"10x");
    EXPECT_STREQ(panel.GetName(0), L"Plan Apo 60x/1.40 Oil");
    EXPECT_EQ(TextOf(Part(kButton)), L"Plan Apo 60x/1.40 Oil") << "for screen readers";
    panel.SetName(0, L"R&D"), panel.SetName(1, L"");
    EXPECT_EQ(TextOf(Part(kButton)) + TextOf(Part(kButton + 1)), L"R&&D2");
    six.SetAvailable(0, false);
    panel.Update(&six, true, false, false, true, false);
    EXPECT_FALSE(IsUsable(kButton));
    const auto second = [&](bool useNumber, int number) {
        panel.SetSpecificXOffsetAndNumber(1, true, 300, useNumber, number);
        return Picture::OnScreen(Part(kButton + 1));
    };
    const Picture usual = second(false, 0);
    EXPECT_NE(second(true, 0), usual) << "the number in the image";
    EXPECT_EQ(second(true, 2), usual) << "positions count from 1";
    Open();
    EXPECT_EQ(RectInParent(Part(kButton + 1)).left, 300);
}

}  // namespace
