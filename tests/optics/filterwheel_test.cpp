// The filter wheel panel: images of filters, the grid, clicks and their refusal.
#include <controls/panel_test.h>

#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/filter_image.h>
#include <kxsystem/kx_color.h>
#include <kxsystem/kx_usermanager.h>

namespace {

using namespace kx::test;

constexpr int kButton = 10201, kSetup = 10500;

struct Wheel : AskingPanel<CKxDevUI_FilterWheel> {
    using AskingPanel::AskingPanel;
    using CKxDevUI_FilterWheel::m_hasTitle, CKxDevUI_FilterWheel::m_heightFromTitle;
};

struct Device : Registered<CKxSimFilterChanger> {
    explicit Device(int count, SKxSimFilterChangerKind kind = {})
        : Registered(L"Emission", Names(count, L"525/50"), kind) {}
};

using FilterWheel = PanelTest<Wheel>;

TEST_F(FilterWheel, ColoursTheBandsInTheirOrder) {
    const std::tuple<const wchar_t*, std::wstring, std::vector<unsigned long>> table[] = {
        {L"Empty", L"FILTER_EMPTY", {}},
        {L"no filter <&\"'>", L"FILTER_EMPTY", {}},
        {L"390/40 482/25", L"FILTER_2BAND", {KX_RGBFromWavelength(390), KX_RGBFromWavelength(482)}}};
    for (const auto& [filter, image, colors] : table) {
        for (const bool square : {false, true}) {
            CKxStringA svg;
            CKxBitmapPool::LoadSVGBaseUI((image + (square ? L"_SQUARE" : L"")).c_str(), svg);
            CKxStringW name(filter);
            EXPECT_STREQ(square ? panel.CreateFilterSVGStringSquare(name) : panel.CreateFilterSVGString(name),
                         kx::ui::ColorBands(svg, colors));
        }
    }
}

TEST(FilterImage, TakesNoColourForAPlaceholder) {
    const unsigned long colors[] = {0x010203, 0x01FF00}, backwards[] = {0x02FF00, 0x010203};
    EXPECT_STREQ(kx::ui::ColorBands("#00FF01 #00FF02", colors), "#030201 #00FF01");
    EXPECT_STREQ(kx::ui::ColorBands("#00FF01 #00FF02", backwards), "#00FF02 #030201");
}

TEST_F(FilterWheel, LaysOutItsGrid) {
    Open();
    EXPECT_EQ(Height(), 48) << "no filter";
    const std::tuple<int, long, const char*, int> table[] = {
        {1, 48, "16 16", 1}, {8, 48, "184 16", 8}, {40, 144, "184 40", 16}, {9, 72, "16 40", 9}};
    for (const auto& [count, height, last, shown] : table) {
        Device device(count);
        ASSERT_TRUE(panel.Update(device.GetLogDevId(), true, true, true));
        EXPECT_EQ(PlaceOf(Part(kButton + shown - 1)), std::string(last) + " 24 24");
        EXPECT_EQ(Height(), height);
        EXPECT_FALSE(Part(kButton + shown));
        EXPECT_EQ(TextOf(Part(kButton)), panel.GetFilterName(0).str()) << "for screen readers";
        EXPECT_EQ(PlaceOf(Part(kSetup)), "216 16 24 24");
    }
    const DialogKeys keys(parent.Window());
    SetFocus(Part(kButton));
    Key(VK_DOWN);
    EXPECT_EQ(GetFocus(), Part(kButton + 8));
    Device one(1);
    panel.Update(&one, true, true, true);
    panel.m_hasTitle = panel.m_heightFromTitle = true;
    panel.SetTitle(L"a title of so many words that it needs more lines than there are rows");
    Open();
    EXPECT_EQ(Height(), 53) << "1.4 rows a line, rounded; two rows at most";
}

TEST_F(FilterWheel, SpringsBackWhenRefused) {
    const std::tuple<bool, bool, bool, long, long> table[] = {
        {true, true, false, 0, 2},  {true, true, true, 0, 0},  {false, false, false, 0, 2}, {false, false, true, 0, 0},
        {true, false, false, 0, 0}, {true, false, true, 0, 0}, {true, true, true, -1, -1},
    };
    for (const auto& [intelligent, motorized, refuse, before, after] : table) {
        Device device(4, {eKxFilterType_Emission, intelligent, motorized});
        panel.answer = refuse;
        Open();
        panel.Update(&device, true, true, true);
        panel.SetPosition(before);
        DoubleClick(Part(kButton + 2), 5, 5);  // is one
        DoubleClick(Part(kSetup), 5, 5);
        EXPECT_EQ(panel.GetPosition(), after) << intelligent << motorized << refuse << before;
        EXPECT_EQ(Told(), "position(2) setup()");
    }
}

TEST_F(FilterWheel, ShowsSquaresAndRights) {
    Device round(3), cube(3, {eKxFilterType_Cube, true, true});
    Open();
    const auto look = [&] { return Picture::OnScreen(Part(kButton)); };
    panel.Update(&cube, true, true, false);
    const Picture square = look();
    panel.SetPosition(0);
    EXPECT_NE(look(), square) << "the current one";
    panel.SetPosition(-1);
    EXPECT_EQ(look(), square);
    panel.Update(&round, true, true, false);
    EXPECT_NE(look(), square);
    for (const unsigned rights : {0u, ~0u}) {
        CKxUserManager::SetCurrentUserRights(rights);
        panel.SetEnable(true, true);
        EXPECT_EQ(IsUsable(kSetup), rights != 0);
    }
}

}  // namespace
