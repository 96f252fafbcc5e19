// The nosepiece panel: who moves the selection, which image is shown, what the device tells.
#include "panel_test.h"

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/optics/devgui_nosepiece.h>

#include <array>

namespace {

using namespace kx::test;

constexpr int kLabel = 10100, kButton = 10200, kSetup = 10500, kObservation = 10600;

class Turret : public Asking<CKxDevUI_Nosepiece> {
public:
    using Asking::Asking;
    using CKxDevUI_Nosepiece::GetObjectiveBitmap;
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

TEST(NextButtonRule, SkipsWhatCannotBeUsed) {
    const struct {
        int from, step;
        std::vector<int> usable;
        int next;
    } table[] = {
        {0, 1, {1, 0, 1}, 2}, {2, 1, {1, 0, 1}, 0},    {0, -1, {1, 1, 1}, 2},       {1, 1, {0, 1, 0}, 1},
        {0, 1, {0, 0, 0}, 0}, {0, 2, {1, 0, 0, 1}, 0}, {1, 2, {1, 0, 0, 1}, 3},     {3, -2, {1, 1, 1, 1}, 1},
        {1, -2, {1, 1, 1}, 1}, {0, 2, {1, 0, 0, 0, 1}, 4}, {0, 1, {1}, 0},
    };
    for (const auto& row : table) {
        std::array<bool, 8> usable{};
        std::copy(row.usable.begin(), row.usable.end(), usable.begin());
        EXPECT_EQ(kx::ui::NextButton(row.from, row.step, {usable.data(), row.usable.size()}), row.next)
            << row.from << " by " << row.step;
    }
}

TEST(Nosepiece, ChoosesTheImageByMagnification) {
    RecordingParent parent;
    Turret panel(parent.Record());
    panel.Init(1, 0, false, false);
    panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
    const struct {
        double magnification;
        const char* ring;  // null: no ring
    } table[] = {
        {250.01, nullptr}, {250, "#EEEEEE"}, {100, "#EEEEEE"}, {99.99, nullptr},  {63.01, nullptr}, {63, "#3F77EB"},
        {60, "#3F77EB"},   {59.99, nullptr}, {50.01, nullptr}, {50, "#77E0FF"},   {40, "#77E0FF"},  {39.99, nullptr},
        {32, "#5EFFB7"},   {25, "#5EFFB7"},  {24.99, nullptr}, {20.01, nullptr},  {20, "#8CEA6B"},  {16, "#8CEA6B"},
        {15.99, nullptr},  {10.01, nullptr}, {10, "#FFE600"},  {9.99, nullptr},   {5.01, nullptr},  {5, "#FF2020"},
        {4, "#FF2020"},    {3, nullptr},     {2.51, nullptr},  {2.5, "#9A3301"},  {2, "#9A3301"},   {1.99, "#545454"},
        {0.01, "#545454"}, {0, nullptr},     {-1, nullptr},    {12.5, nullptr},   {70, nullptr},    {300, nullptr},
    };
    CKxStringA templates[2], empty[2];
    CKxBitmapPool::LoadSVGBaseUI(L"IDS_NOSEPIECE_0", templates[0]);
    CKxBitmapPool::LoadSVGBaseUI(L"IDS_NOSEPIECE_1", templates[1]);
    CKxBitmapPool::LoadSVGBaseUI(L"IDS_NOSEPIECE_0_EMPTY", empty[0]);
    CKxBitmapPool::LoadSVGBaseUI(L"IDS_NOSEPIECE_1_EMPTY", empty[1]);
    for (const auto& row : table) {
        for (const bool selected : {false, true}) {
            std::string wanted = (row.ring ? templates : empty)[selected ? 1 : 0].str();
            const std::string ring = row.ring ? row.ring : "";
            for (std::size_t at = 0; row.ring && (at = wanted.find("#FFE600", at)) != std::string::npos; ++at)
                wanted.replace(at, 7, ring);
            EXPECT_EQ(panel.GetObjectiveBitmap(row.magnification, selected).str(), wanted) << row.magnification;
        }
    }
}

TEST(NosepieceInput, MovesTheSelectionOnlyWhereItMay) {
    const struct {
        bool deviceDriven, localSelect, handled, enabled;
        long position;
    } table[] = {
        {false, false, false, true, 2}, {false, true, false, true, 2}, {true, false, false, true, 0},
        {true, true, false, true, 2},   {false, false, true, true, 0}, {true, true, true, true, 0},
        {false, false, false, false, 0},
    };
    for (const auto& row : table) {
        RecordingParent parent;
        Turret panel(parent.Record());
        panel.Init(3, 0, row.deviceDriven, row.localSelect);
        panel.answer = row.handled;
        panel.Create(parent.Window(), 10, 10, -1, -1, true, true);
        panel.SetEnable(row.enabled, true);
        ClickChild(panel, kButton + 2);
        EXPECT_EQ(panel.GetPosition(), row.position);
        EXPECT_EQ(IsBold(ChildOf(panel, kLabel + 2)), row.position == 2);
        if (!row.enabled) {
            EXPECT_TRUE(parent.Record().Matches({}));
            continue;
        }
        // The current one is asked for like any other.
        ClickChild(panel, kButton + static_cast<int>(row.position));
        EXPECT_TRUE(parent.Record().Matches({Call("position", 2), Call("position", row.position)}));
    }
}

TEST(NosepieceInput, AsksForSetupAndModesApart) {
    RecordingParent parent;
    Turret panel(parent.Record());
    panel.Init(2, 1, true, false);
    panel.ShowObservationMode(true);
    panel.SetObservationRequest([&](int mode) { parent.Record().Call("mode", mode); });
    panel.SetSetupXOffset(120);
    panel.Create(parent.Window(), 10, 10, -1, -1, true, true);
    const HWND setup = ChildOf(panel, kSetup), first = ChildOf(panel, kButton);
    MoveTo(first, 3, 3);
    const Picture away = Picture::OnScreen(setup), calm = Picture::OnScreen(first);
    SendMessageW(ChildOf(panel, kLabel + 1), WM_SETFONT, 0, 0);
    ClickChild(panel, kSetup);
    EXPECT_TRUE(IsBold(ChildOf(panel, kLabel + 1))) << "after the setup";
    ClickChild(panel, kObservation + 1);
    EXPECT_EQ(panel.GetObservationMode(), 0) << "the host decides";
    EXPECT_TRUE(parent.Record().Matches({Call("setup", 0), Call("mode", 1)}));
    panel.SetObservationMode(1);
    panel.SetObservationMode(7);
    EXPECT_EQ(panel.GetObservationMode(), 1);

    // The setup button alone is hovered, and lets go. A busy display may bring the pointer's earlier place once more.
    EXPECT_TRUE(PumpUntil([&] {
        MoveTo(first, 3, 3);
        return Picture::OnScreen(setup) == away;
    }));
    EXPECT_TRUE(PumpUntil([&] {
        MoveTo(setup, 5, 5);
        return Picture::OnScreen(setup) != away;
    }));
    EXPECT_EQ(Picture::OnScreen(first), calm);
}

TEST(NosepieceInput, IsWorkedByKeys) {
    RecordingParent parent;
    Turret panel(parent.Record());
    CKxSimNosepiece device(L"Nosepiece", Objectives(4));
    device.SetAvailable(1, false);
    panel.Init(&device);
    panel.Create(parent.Window(), 10, 10, -1, -1, true, true);
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
    EXPECT_TRUE(parent.Record().Matches({Call("position", 2), Call("setup", 0)}));
    // A change of structure keeps the focus.
    device.SetAvailable(3, false);
    panel.Update(&device, true, false, false, true, false);
    EXPECT_EQ(GetFocus(), ChildOf(panel, kSetup));
}

TEST(Nosepiece, FollowsItsDevice) {
    RecordingParent parent;
    Turret panel(parent.Record());
    panel.Init(3, -1, false, false);
    panel.Create(parent.Window(), 10, 10, -1, -1, true, true);
    panel.Init(2, -1, false, false);
    panel.SetNA(2, 1.4), panel.SetWD(2, 100), panel.SetName(2, L"none");
    EXPECT_EQ(panel.GetNA(2), 0) << "it still has a button, and no position";
    EXPECT_TRUE(SendMessageW(ChildOf(panel, kButton), WM_GETFONT, 0, 0));
    EXPECT_FALSE(panel.Init(nullptr));
    EXPECT_FALSE(panel.Update(nullptr, true, true, true, true, true));
    CKxSimNosepiece two(L"Two", Objectives(2)), six(L"Six", Objectives(6)), seven(L"Seven", Objectives(7));
    CKxSimNosepiece many(L"Many", Objectives(40));
    panel.Create(parent.Window(), 0, 0, 570, -1, true, true);
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
    EXPECT_FALSE(IsWindowEnabled(ChildOf(panel, kButton)));
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton)), objective) << "a motor";
    panel.SetSpecificXOffsetAndNumber(1, true, 300, true, 0);
    const Picture second = Picture::OnScreen(ChildOf(panel, kButton + 1));
    panel.SetSpecificXOffsetAndNumber(1, true, 300, false, 0);
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton + 1)), second) << "the number in the image";
    panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
    EXPECT_EQ(PlaceOf(panel, kButton + 1).left, 300);
}

TEST(Nosepiece, ComesBackFromAZoom) {
    RecordingParent parent;
    Turret panel(parent.Record());
    panel.Init(3, 1, false, false);
    panel.Create(parent.Window(), 5, 5, -1, -1, true, true);
    const Picture before = Picture::OnScreen(panel);
    CKxGUILayoutManager::SetGuiZoom(2);
    EXPECT_EQ(HeightOf(panel), 144);
    EXPECT_EQ(PlaceOf(panel, kButton + 1).left, 96);
    panel.SetPosition(2);
    panel.SetPosition(1);
    CKxGUILayoutManager::SetGuiZoom(1);
    EXPECT_EQ(Picture::OnScreen(panel), before);
}

TEST(NosepieceLife, EndsAndChangesInItsCallbacks) {
    for (const int what : {0, 1, 2, 3}) {
        RecordingParent parent;
        auto panel = std::make_unique<Turret>(parent.Record());
        CKxSimNosepiece device(L"Nosepiece", Objectives(3)), other(L"Other", Objectives(5));
        panel->Init(&device);
        panel->Create(parent.Window(), 0, 0, -1, -1, true, true);
        panel->meanwhile = [&, what] {
            if (what == 0) panel.reset();
            if (what == 1) panel->Destroy();
            if (what == 2) panel->Update(&other, true, true, true, true, false);
            if (what == 3) DestroyWindow(*panel);
        };
        const HWND window = *panel;
        ClickChild(window, what == 3 ? kSetup : kButton + 1);
        EXPECT_EQ(IsWindow(window) != FALSE, what == 2);
        EXPECT_EQ(panel == nullptr, what == 0);
        EXPECT_EQ(parent.Record().Entries().size(), 1u);
    }
}

TEST(NosepieceLife, LeavesNothing) {
    RecordingParent parent;
    EXPECT_TRUE(NoGrowth(1000, [&] {
        Turret panel(parent.Record());
        CKxSimNosepiece device(L"Nosepiece", Objectives(2));
        panel.Init(&device);
        panel.Create(parent.Window(), 0, 0, 100, -1, true, true);
        panel.Update(&device, true, true, true, true, false);
        UpdateWindow(panel);
    }));
}

}  // namespace
