// The nosepiece panel: who moves the selection, which image is shown, what the device tells.
#include "panel_test.h"

#include <kxdevui/framework/ui_parts.h>
#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/optics/devgui_nosepiece.h>

#include <array>

namespace {

using namespace kx::test;

constexpr int kLabel = 10100, kButton = 10200, kSetup = 10500, kObservation = 10600;

class Turret : public Asking<CKxDevUI_Nosepiece> {
public:
    using Asking::Asking;
    using CKxDevUI_Nosepiece::GetObjectiveBitmap;
    // What hosts' panels call by name.
    using CKxDevUI_Nosepiece::Btn_OnMouseLeave, CKxDevUI_Nosepiece::Btn_OnMouseMove;
    using CKxDevUI_Nosepiece::BtnWndProc, CKxDevUI_Nosepiece::GroupWndProc, CKxDevUI_Nosepiece::WndProc;
    using CKxDevUI_Nosepiece::CreateControls, CKxDevUI_Nosepiece::DestroyControls;
    using CKxDevUI_Nosepiece::Group_OnEraseBkGnd, CKxDevUI_Nosepiece::Group_OnPaint;
    using CKxDevUI_Nosepiece::OnCommand, CKxDevUI_Nosepiece::OnEraseBkGnd;
    using CKxDevUI_Nosepiece::OnDrawItem, CKxDevUI_Nosepiece::OnDrawItem_Observation;
    using CKxDevUI_Nosepiece::OnMouseLeave, CKxDevUI_Nosepiece::OnMouseMove;
    using CKxDevUI_Nosepiece::RedrawButtons, CKxDevUI_Nosepiece::RedrawObservation;
};

std::vector<SKxSimObjective> Objectives(int count) {
    std::vector<SKxSimObjective> objectives(static_cast<std::size_t>(count), {L"Plan Apo 60x/1.40 Oil", L"60x", L""});
    if (count > 1) objectives[1] = {L"Plan 10x/0.25", L"10x", L""};
    return objectives;
}

bool IsBold(HWND label) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfWeight >= FW_BOLD;
}

using Nosepiece = PanelTest<Turret>;

TEST(NextButtonRule, SkipsWhatCannotBeUsed) {
    const struct {
        int from, step;
        std::vector<int> usable;
        int next;
    } table[] = {
        {0, 1, {1, 0, 1}, 2},  {2, 1, {1, 0, 1}, 0},       {0, -1, {1, 1, 1}, 2},   {1, 1, {0, 1, 0}, 1},
        {0, 1, {0, 0, 0}, 0},  {0, 2, {1, 0, 0, 1}, 0},    {1, 2, {1, 0, 0, 1}, 3}, {3, -2, {1, 1, 1, 1}, 1},
        {1, -2, {1, 1, 1}, 1}, {0, 2, {1, 0, 0, 0, 1}, 4}, {0, 1, {1}, 0},
    };
    for (const auto& row : table) {
        std::array<bool, 8> usable{};
        std::copy(row.usable.begin(), row.usable.end(), usable.begin());
        EXPECT_EQ(kx::ui::NextButton(row.from, row.step, {usable.data(), row.usable.size()}), row.next)
            << row.from << " by " << row.step;
    }
}

TEST_F(Nosepiece, ChoosesTheImageByMagnification) {
    panel.Init(1, 0, false, false);
    Open();
    const struct {
        double magnification;
        const char* ring;  // null: no ring
    } table[] = {
        {250.01, nullptr}, {250, "#EEEEEE"}, {100, "#EEEEEE"}, {99.99, nullptr}, {63.01, nullptr}, {63, "#3F77EB"},
        {60, "#3F77EB"},   {59.99, nullptr}, {50.01, nullptr}, {50, "#77E0FF"},  {40, "#77E0FF"},  {39.99, nullptr},
        {32, "#5EFFB7"},   {25, "#5EFFB7"},  {24.99, nullptr}, {20.01, nullptr}, {20, "#8CEA6B"},  {16, "#8CEA6B"},
        {15.99, nullptr},  {10.01, nullptr}, {10, "#FFE600"},  {9.99, nullptr},  {5.01, nullptr},  {5, "#FF2020"},
        {4, "#FF2020"},    {3, nullptr},     {2.51, nullptr},  {2.5, "#9A3301"}, {2, "#9A3301"},   {1.99, "#545454"},
        {0.01, "#545454"}, {0, nullptr},     {-1, nullptr},    {12.5, nullptr},  {70, nullptr},    {300, nullptr},
    };
    for (const bool selected : {false, true}) {
        const std::wstring name = selected ? L"IDS_NOSEPIECE_1" : L"IDS_NOSEPIECE_0";
        CKxStringA image, empty;
        CKxBitmapPool::LoadSVGBaseUI(name.c_str(), image);
        CKxBitmapPool::LoadSVGBaseUI((name + L"_EMPTY").c_str(), empty);
        for (const auto& row : table) {
            CKxStringA wanted = row.ring ? image : empty;
            if (row.ring) CKxSvgStringAPI::ReplaceString(wanted, "#FFE600", row.ring);
            EXPECT_STREQ(panel.GetObjectiveBitmap(row.magnification, selected), wanted) << row.magnification;
        }
    }
}

TEST_F(Nosepiece, MovesTheSelectionOnlyWhereItMay) {
    const struct {
        bool deviceDriven, localSelect, handled, enabled;
        long position;
    } table[] = {
        {false, false, false, true, 2},  {false, true, false, true, 2}, {true, false, false, true, 0},
        {true, true, false, true, 2},    {false, false, true, true, 0}, {true, true, true, true, 0},
        {false, false, false, false, 0},
    };
    for (const auto& row : table) {
        panel.Init(3, 0, row.deviceDriven, row.localSelect);
        panel.answer = row.handled;
        Open();
        panel.SetEnable(row.enabled, true);
        ClickChild(panel, kButton + 2);
        EXPECT_EQ(panel.GetPosition(), row.position);
        EXPECT_EQ(IsBold(ChildOf(panel, kLabel + 2)), row.position == 2);
        // The current one is asked for like any other.
        ClickChild(panel, kButton + static_cast<int>(row.position));
        EXPECT_TRUE(Told(row.enabled ? std::vector{Call("position", 2), Call("position", row.position)}
                                     : std::vector<Expected>{}));
    }
}

TEST_F(Nosepiece, AsksForSetupAndModesApart) {
    panel.Init(2, 1, true, false);
    panel.ShowObservationMode(true);
    panel.SetObservationRequest([&](int mode) { parent.Record().Call("mode", mode); });
    panel.SetSetupXOffset(120);
    Open();
    const HWND setup = ChildOf(panel, kSetup), first = ChildOf(panel, kButton);
    MoveTo(first, 3, 3);
    const Picture away = Picture::OnScreen(setup), calm = Picture::OnScreen(first);
    SendMessageW(ChildOf(panel, kLabel + 1), WM_SETFONT, 0, 0);
    ClickChild(panel, kSetup);
    EXPECT_TRUE(IsBold(ChildOf(panel, kLabel + 1))) << "after the setup";
    ClickChild(panel, kObservation + 1);
    EXPECT_EQ(panel.GetObservationMode(), 0) << "the host decides";
    EXPECT_TRUE(Told({Call("setup", 0), Call("mode", 1)}));
    panel.SetObservationMode(1);
    panel.SetObservationMode(7);
    EXPECT_EQ(panel.GetObservationMode(), 1);

    // The setup button alone is hovered, and lets go. A busy display may bring the pointer's earlier place once more.
    for (const HWND under : {first, setup}) {
        EXPECT_TRUE(PumpUntil([&] {
            MoveTo(under, 3, 3);
            return (Picture::OnScreen(setup) == away) == (under == first);
        }));
    }
    EXPECT_EQ(Picture::OnScreen(first), calm);
}

TEST_F(Nosepiece, KeepsWhatItIsGivenAndRebuilds) {
    panel.CreateControls();
    panel.Init(3, 7, false, false);
    EXPECT_EQ(panel.GetPosition(), 7) << "known or not";
    panel.ShowObservationMode(true);
    Open();
    ClickChild(panel, kButton + 2);
    EXPECT_EQ(panel.GetPosition(), 2);
    // A container's way, and then the panel's own.
    EnableWindow(panel, FALSE);
    for (const bool enable : {false, true}) {
        panel.SetEnable(enable, false);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(IsUsable(panel, kLabel + i), enable);
    }
    EnableWindow(panel, TRUE);
    panel.DestroyControls();
    EXPECT_FALSE(GetWindow(panel, GW_CHILD));
    panel.CreateControls();
    EXPECT_TRUE(IsBold(ChildOf(panel, kLabel + 2)));
    UpdateWindow(panel);
    for (const int id : {kButton, kObservation}) {
        id == kButton ? panel.RedrawButtons() : panel.RedrawObservation();
        EXPECT_TRUE(GetUpdateRect(ChildOf(panel, id), nullptr, FALSE));
        Pump();
    }
    parent.Record().Clear();
    EXPECT_EQ(panel.OnCommand(MAKEWPARAM(kButton + 1, BN_CLICKED), 0), 1);
    EXPECT_EQ(panel.OnCommand(MAKEWPARAM(kButton + 1, BN_DBLCLK), 0), 0);
    EXPECT_TRUE(Told({Call("position", 1)}));
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
    Key(VK_TAB);
    EXPECT_EQ(GetFocus(), ChildOf(panel, kButton)) << "the current position";
    Key(VK_RIGHT);
    EXPECT_EQ(GetFocus(), ChildOf(panel, kButton + 2)) << "the second is not available";
    Key(VK_SPACE);
    Key(VK_LEFT);
    Key(VK_LEFT);
    EXPECT_EQ(GetFocus(), ChildOf(panel, kSetup)) << "around the end";
    Key(VK_RETURN);
    EXPECT_TRUE(Told({Call("position", 2), Call("setup", 0)}));
    // A change of structure keeps the focus.
    device.SetAvailable(3, false);
    panel.Update(&device, true, false, false, true, false);
    EXPECT_EQ(GetFocus(), ChildOf(panel, kSetup));
}

TEST_F(Nosepiece, FollowsItsDevice) {
    panel.Init(3, -1, false, false);
    Open();
    panel.Init(2, -1, false, false);
    panel.SetNA(2, 1.4), panel.SetWD(2, 100), panel.SetName(2, L"none");
    EXPECT_EQ(panel.GetNA(2), 0) << "it still has a button, and no position";
    EXPECT_TRUE(SendMessageW(ChildOf(panel, kButton), WM_GETFONT, 0, 0));
    EXPECT_FALSE(panel.Init(nullptr));
    EXPECT_FALSE(panel.Update(nullptr, true, true, true, true, true));
    CKxSimNosepiece two(L"Two", Objectives(2)), six(L"Six", Objectives(6)), seven(L"Seven", Objectives(7));
    CKxSimNosepiece many(L"Many", Objectives(40));
    Open(570);
    const struct {
        CKxSimNosepiece& device;
        int count, firstX;
    } table[] = {{two, 2, 16}, {six, 6, 16}, {seven, 7, 8}, {many, 16, 8}};
    for (const auto& row : table) {
        ASSERT_TRUE(panel.Update(&row.device, true, true, true, true, false));
        EXPECT_EQ(PlaceOf(panel, kButton).left, row.firstX);
        EXPECT_TRUE(ChildOf(panel, kButton + row.count - 1));
        EXPECT_FALSE(ChildOf(panel, kButton + row.count));
        Picture::OnScreen(panel).Save("nosepiece-" + std::to_string(row.count));
    }
    panel.Update(&six, true, true, true, true, false);
    EXPECT_STREQ(panel.GetMagnification(1), L"10x");
    EXPECT_STREQ(panel.GetName(0), L"Plan Apo 60x/1.40 Oil");
    EXPECT_EQ(panel.GetPosition(), 0);
    EXPECT_TRUE(panel.GetName(6).IsEmpty());
    // Nothing has changed: nothing is made anew, nothing painted.
    const HWND button = ChildOf(panel, kButton);
    Pump();
    UpdateWindow(panel);
    panel.Update(&six, true, true, true, true, false);
    EXPECT_EQ(ChildOf(panel, kButton), button);
    EXPECT_FALSE(GetUpdateRect(button, nullptr, FALSE));

    const Picture objective = Picture::OnScreen(button);
    six.SetAvailable(0, false);
    panel.Update(&six, true, false, false, true, false);
    EXPECT_FALSE(IsUsable(panel, kButton));
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton)), objective) << "a motor";
    panel.SetSpecificXOffsetAndNumber(1, true, 300, true, 0);
    const Picture second = Picture::OnScreen(ChildOf(panel, kButton + 1));
    panel.SetSpecificXOffsetAndNumber(1, true, 300, false, 0);
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton + 1)), second) << "the number in the image";
    Open();
    EXPECT_EQ(PlaceOf(panel, kButton + 1).left, 300);
}

TEST_F(Nosepiece, ComesBackFromAZoom) {
    panel.Init(3, 1, false, false);
    Open();
    const Picture before = Picture::OnScreen(panel);
    CKxGUILayoutManager::SetGuiZoom(2);
    EXPECT_EQ(HeightOf(panel), 144);
    EXPECT_EQ(PlaceOf(panel, kButton + 1).left, 96);
    panel.SetPosition(2);
    panel.SetPosition(1);
    CKxGUILayoutManager::SetGuiZoom(1);
    EXPECT_EQ(Picture::OnScreen(panel), before);
}

}  // namespace
