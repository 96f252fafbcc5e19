// The filter wheel panel: images of filters, the grid, clicks and their refusal.
#include "panel_test.h"

#include <kxbaseui/kx_bitmappool.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxfilters/kx_opticalfilter.h>
#include <kxsystem/kx_usermanager.h>

#include <regex>

namespace {

using namespace kx::test;

constexpr int kButton = 10201, kSetup = 10500;

class Wheel : public Asking<CKxDevUI_FilterWheel> {
public:
    using Asking::Asking;
    using CKxDevUI_FilterWheel::m_hasTitle;
    using CKxDevUI_FilterWheel::m_heightFromTitle;
    using CKxDevUI_FilterWheel::m_titleWidth;
};

struct Device : CKxSimFilterChanger {
    explicit Device(int count, SKxSimFilterChangerKind kind = {})
        : CKxSimFilterChanger(L"Emission", std::vector<std::wstring>(static_cast<std::size_t>(count), L"525/50"),
                              kind) {
        CKxDeviceRegistry::Add(*this);
    }
};

std::string TemplateOf(int bands, bool square) {
    std::wstring name = bands == 0 ? L"FILTER_EMPTY" : L"FILTER_" + std::to_wstring(bands) + L"BAND";
    if (square) name += L"_SQUARE";
    CKxStringA svg;
    CKxBitmapPool::LoadSVGBaseUI(name.c_str(), svg);
    return svg.str();
}

TEST(FilterWheel, ColoursTheBandsInTheirOrder) {
    RecordingParent parent;
    Wheel panel(parent.Record());
    const struct {
        const wchar_t* name;
        int bands;
    } table[] = {{L"", 0},
                 {L"Empty", 0},
                 {L"no filter <&\"'>", 0},
                 {L"525/50", 1},
                 {L"390/40 482/25 587/45", 3},
                 {L"390/40 435/20 482/25 550/20 587/45 650/30", 5}};
    for (const auto& row : table) {
        for (const bool square : {false, true}) {
            CKxStringW name(row.name);
            CKxOpticalFilter filter;
            CKxFilterDialog::GetFilterInfo(name, &filter);
            unsigned long colors[5];
            int count = 5;
            CKxFilterDialog::GetColorsFromFilter(&filter, colors, count);
            ASSERT_EQ(count, row.bands) << Narrow(row.name);
            std::string wanted = TemplateOf(row.bands, square);
            for (int k = row.bands; k >= 1; --k) {
                char color[8];
                std::snprintf(color, sizeof color, "#%02X%02X%02X", static_cast<unsigned>(GetRValue(colors[k - 1])),
                              static_cast<unsigned>(GetGValue(colors[k - 1])),
                              static_cast<unsigned>(GetBValue(colors[k - 1])));
                wanted = std::regex_replace(wanted, std::regex("#00FF0" + std::to_string(k)), color);
            }
            EXPECT_EQ((square ? panel.CreateFilterSVGStringSquare(name) : panel.CreateFilterSVGString(name)).str(),
                      wanted);
        }
    }
}

TEST(FilterWheel, LaysOutItsGrid) {
    RecordingParent parent;
    const struct {
        int count;
        long height;
        POINT last;  // the place of the last button
        int shown;
    } table[] = {{1, 48, {16, 16}, 1}, {8, 48, {16 + 7 * 24, 16}, 8}, {9, 72, {16, 40}, 9}, {40, 144, {184, 40}, 16}};
    for (const auto& row : table) {
        Wheel panel(parent.Record());
        Device device(row.count);
        panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
        ASSERT_TRUE(panel.Update(device.GetLogDevId(), true, true, true));
        const RECT last = PlaceOf(panel, kButton + row.shown - 1);
        EXPECT_EQ(last.left, row.last.x);
        EXPECT_EQ(last.top, row.last.y);
        EXPECT_EQ(HeightOf(panel), row.height);
        EXPECT_FALSE(ChildOf(panel, kButton + row.shown));
        EXPECT_EQ(PlaceOf(panel, kSetup).left, 256 - 24 - 16);
    }
    Wheel panel(parent.Record());
    EXPECT_FALSE(panel.Update(nullptr, true, true, true));
    EXPECT_FALSE(panel.Update(4711u, true, true, true));
    EXPECT_EQ(HeightOf(panel.Create(parent.Window(), 0, 0, -1, -1, true, true)), 48) << "no filter";
    panel.m_hasTitle = panel.m_heightFromTitle = true;
    panel.SetTitle(L"of");
    panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
    EXPECT_EQ(HeightOf(panel), 34) << "1.4 rows, rounded";
    panel.SetTitle(L"a title of so many words that it needs more lines than there are rows");
    panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
    EXPECT_EQ(HeightOf(panel), 53) << "two rows at most";
}

TEST(FilterWheelInput, SpringsBackWhenRefused) {
    const struct {
        bool intelligent, motorized, refuse;
        long before, after;
    } table[] = {
        {true, true, false, 0, 2},  {true, true, true, 0, 0},  {false, false, false, 0, 2}, {false, false, true, 0, 0},
        {true, false, false, 0, 0}, {true, false, true, 0, 0}, {true, true, true, -1, -1},
    };
    for (const auto& row : table) {
        RecordingParent parent;
        Wheel panel(parent.Record());
        Device device(4, {eKxFilterType_Emission, row.intelligent, row.motorized});
        panel.answer = row.refuse;
        panel.Create(parent.Window(), 10, 10, -1, -1, true, true);
        panel.Update(&device, true, true, true);
        panel.SetPosition(row.before);
        ClickChild(panel, kButton + 2);
        ClickChild(panel, kSetup);
        EXPECT_EQ(panel.GetPosition(), row.after) << row.intelligent << row.motorized << row.refuse << row.before;
        EXPECT_TRUE(parent.Record().Matches({Call("position", 2), Call("setup", 0)}));
    }
}

TEST(FilterWheelInput, GoesThroughItsRowsByKeys) {
    RecordingParent parent;
    Wheel panel(parent.Record());
    Device device(12);
    panel.Create(parent.Window(), 10, 10, -1, -1, true, true);
    panel.Update(&device, true, true, true);
    const DialogKeys keys(parent.Window());
    SetFocus(panel);
    const struct {
        WORD key;
        int position;
    } steps[] = {{VK_RIGHT, 1}, {VK_DOWN, 9}, {VK_DOWN, 9}, {VK_UP, 1}, {VK_LEFT, 0}};
    for (const auto& step : steps) {
        Key(step.key);
        EXPECT_EQ(GetFocus(), ChildOf(panel, kButton + step.position));
    }
    Key(VK_RETURN);
    EXPECT_TRUE(parent.Record().Matches({Call("position", 0)}));
}

TEST(FilterWheel, ShowsSquaresRightsAndDisabled) {
    RecordingParent parent;
    Wheel panel(parent.Record());
    Device round(3), cube(3, {eKxFilterType_Cube, true, true});
    panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
    panel.Update(&round, true, true, false);
    const Picture wheel = Picture::OnScreen(ChildOf(panel, kButton));
    panel.Update(&cube, true, true, false);
    const Picture square = Picture::OnScreen(ChildOf(panel, kButton));
    EXPECT_NE(square, wheel);
    panel.SetPosition(0);
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton)), square) << "the current one";
    panel.SetPosition(-1);
    EXPECT_EQ(Picture::OnScreen(ChildOf(panel, kButton)), square);
    panel.SetEnable(false, true);
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton)), square);
    panel.SetEnable(true, true);
    EnableWindow(panel, FALSE);
    EXPECT_NE(Picture::OnScreen(ChildOf(panel, kButton)), square) << "a container's way";
    EnableWindow(panel, TRUE);
    EXPECT_EQ(Picture::OnScreen(ChildOf(panel, kButton)), square);
    CKxUserManager::SetCurrentUserRights(0);
    panel.SetEnable(true, true);
    EXPECT_FALSE(IsWindowEnabled(ChildOf(panel, kSetup)));
    CKxUserManager::SetCurrentUserRights(~0u);
    panel.Update(&round, true, false, false);
    EXPECT_TRUE(IsWindowEnabled(ChildOf(panel, kSetup)));
}

TEST(FilterWheelLife, EndsAndChangesInItsCallbacks) {
    for (const int what : {0, 1, 2}) {
        RecordingParent parent;
        auto panel = std::make_unique<Wheel>(parent.Record());
        Device device(3), other(12);
        panel->answer = true;
        panel->Create(parent.Window(), 0, 0, -1, -1, true, true);
        panel->Update(&device, true, true, true);
        panel->meanwhile = [&, what] {
            if (what == 0) panel.reset();
            if (what == 1) panel->Destroy();
            if (what == 2) panel->Update(&other, true, true, true);
        };
        ClickChild(*panel, kButton + 1);
        EXPECT_EQ(panel == nullptr, what == 0);
    }
}

TEST(FilterWheelLife, LeavesNothing) {
    RecordingParent parent;
    Device device(2);
    EXPECT_TRUE(NoGrowth(1000, [&] {
        Wheel panel(parent.Record());
        panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
        panel.Update(&device, true, true, true);
        UpdateWindow(panel);
    }));
}

}  // namespace
