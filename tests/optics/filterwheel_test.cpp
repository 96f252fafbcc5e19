// The filter wheel panel: images of filters, the grid, clicks and their refusal.
#include "panel_test.h"

#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_svgstring.h>
#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/filter_image.h>
#include <kxsystem/kx_color.h>
#include <kxsystem/kx_usermanager.h>

namespace {

using namespace kx::test;

constexpr int kButton = 10201, kSetup = 10500;

class Wheel : public AskingPanel<CKxDevUI_FilterWheel> {
public:
    using AskingPanel::AskingPanel;
    using CKxDevUI_FilterWheel::CreateControls;
    using CKxDevUI_FilterWheel::m_hasTitle, CKxDevUI_FilterWheel::m_heightFromTitle;
};

struct Device : Registered<CKxSimFilterChanger> {
    explicit Device(int count, SKxSimFilterChangerKind kind = {})
        : Registered(L"Emission", Names(count, L"525/50"), kind) {}
};

using FilterWheel = PanelTest<Wheel>;

TEST_F(FilterWheel, ColoursTheBandsInTheirOrder) {
    const struct {
        const wchar_t* name;
        const wchar_t* image;
        std::vector<double> bands;
    } table[] = {{L"", L"FILTER_EMPTY", {}},
                 {L"Empty", L"FILTER_EMPTY", {}},
                 {L"no filter <&\"'>", L"FILTER_EMPTY", {}},
                 {L"525/50", L"FILTER_1BAND", {525}},
                 {L"390/40 482/25 587/45", L"FILTER_3BAND", {390, 482, 587}},
                 {L"390/40 435/20 482/25 550/20 587/45 650/30", L"FILTER_5BAND", {390, 435, 482, 550, 587}}};
    for (const auto& row : table) {
        std::vector<unsigned long> colors;
        for (const double band : row.bands)
            colors.push_back(KX_RGBFromWavelength(band));
        for (const bool square : {false, true}) {
            CKxStringA image;
            CKxBitmapPool::LoadSVGBaseUI((row.image + std::wstring(square ? L"_SQUARE" : L"")).c_str(), image);
            CKxStringW name(row.name);
            EXPECT_STREQ(square ? panel.CreateFilterSVGStringSquare(name) : panel.CreateFilterSVGString(name),
                         kx::ui::ColorBands(image, colors))
                << Narrow(row.name);
        }
    }
}

TEST(FilterImage, TakesNoColourForAPlaceholder) {
    const unsigned long colors[] = {0x010203, 0x01FF00}, backwards[] = {0x02FF00, 0x010203};
    EXPECT_STREQ(kx::ui::ColorBands("#00FF01 #00FF02", colors), "#030201 #00FF01");
    EXPECT_STREQ(kx::ui::ColorBands("#00FF01 #00FF02", backwards), "#00FF02 #030201");
}

TEST_F(FilterWheel, LaysOutItsGrid) {
    panel.CreateControls();
    Open();
    EXPECT_EQ(Height(), 48) << "no filter";
    const struct {
        int count;
        long height;
        const char* last;  // button
        int shown;
    } table[] = {{1, 48, "16 16", 1}, {8, 48, "184 16", 8}, {9, 72, "16 40", 9}, {40, 144, "184 40", 16}};
    for (const auto& row : table) {
        Device device(row.count);
        ASSERT_TRUE(panel.Update(device.GetLogDevId(), true, true, true));
        EXPECT_EQ(PlaceOf(Part(kButton + row.shown - 1)), std::string(row.last) + " 24 24");
        EXPECT_EQ(Height(), row.height);
        EXPECT_FALSE(Part(kButton + row.shown));
        EXPECT_EQ(PlaceOf(Part(kSetup)), "216 16 24 24");
    }
    Device one(1);
    panel.Update(&one, true, true, true);
    panel.m_hasTitle = panel.m_heightFromTitle = true;
    for (const auto& [title, height] :
         {std::pair{L"of", 34},  // 1.4 rows, rounded; two rows at most
          {L"a title of so many words that it needs more lines than there are rows", 53}}) {
        panel.SetTitle(title);
        Open();
        EXPECT_EQ(Height(), height);
    }
}

TEST_F(FilterWheel, SpringsBackWhenRefused) {
    const struct {
        bool intelligent, motorized, refuse;
        long before, after;
    } table[] = {
        {true, true, false, 0, 2},  {true, true, true, 0, 0},  {false, false, false, 0, 2}, {false, false, true, 0, 0},
        {true, false, false, 0, 0}, {true, false, true, 0, 0}, {true, true, true, -1, -1},
    };
    for (const auto& row : table) {
        Device device(4, {eKxFilterType_Emission, row.intelligent, row.motorized});
        panel.answer = row.refuse;
        Open();
        panel.Update(&device, true, true, true);
        panel.SetPosition(row.before);
        ClickPart(kButton + 2);
        ClickPart(kSetup);
        EXPECT_EQ(panel.GetPosition(), row.after) << row.intelligent << row.motorized << row.refuse << row.before;
        EXPECT_EQ(Heard(), "position(2) setup()");
    }
}

TEST_F(FilterWheel, GoesThroughItsRowsByKeys) {
    Device device(12);
    Open();
    panel.Update(&device, true, true, true);
    const DialogKeys keys(parent.Window());
    SetFocus(panel);
    const struct {
        WORD key;
        int position;
    } steps[] = {{VK_RIGHT, 1}, {VK_DOWN, 9}, {VK_DOWN, 9}, {VK_UP, 1}, {VK_LEFT, 0}};
    for (const auto& step : steps) {
        Key(step.key);
        ExpectFocus(kButton + step.position);
    }
    Key(VK_RETURN);
    EXPECT_EQ(Heard(), "position(0)");
}

TEST_F(FilterWheel, ShowsSquaresAndRights) {
    Device round(3), cube(3, {eKxFilterType_Cube, true, true}), mirror(3, {eKxFilterType_DichroicMirror, true, true});
    Open();
    const auto look = [&](Device& device) {
        panel.Update(&device, true, true, false);
        return Picture::OnScreen(Part(kButton));
    };
    const Picture square = look(cube);
    EXPECT_NE(look(round), square);
    EXPECT_EQ(look(mirror), square);
    panel.SetPosition(0);
    EXPECT_NE(Picture::OnScreen(Part(kButton)), square) << "the current one";
    panel.SetPosition(-1);
    EXPECT_EQ(Picture::OnScreen(Part(kButton)), square);
    for (const unsigned rights : {0u, ~0u}) {
        CKxUserManager::SetCurrentUserRights(rights);
        panel.SetEnable(true, true);
        EXPECT_EQ(IsUsable(kSetup), rights != 0);
    }
}

}  // namespace
