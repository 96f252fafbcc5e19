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

class Wheel : public Asking<CKxDevUI_FilterWheel> {
public:
    using Asking::Asking;
    using CKxDevUI_FilterWheel::m_hasTitle;
    using CKxDevUI_FilterWheel::m_heightFromTitle;
    // What hosts' panels call by name.
    using CKxDevUI_FilterWheel::Btn_OnLButtonDown, CKxDevUI_FilterWheel::BtnWndProc, CKxDevUI_FilterWheel::WndProc;
    using CKxDevUI_FilterWheel::CreateControls, CKxDevUI_FilterWheel::DestroyControls;
    using CKxDevUI_FilterWheel::OnCommand, CKxDevUI_FilterWheel::OnDrawItem, CKxDevUI_FilterWheel::RedrawButtons;
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
        for (const bool square : {false, true}) {
            CKxStringA wanted, placeholder, color;
            CKxBitmapPool::LoadSVGBaseUI((row.image + std::wstring(square ? L"_SQUARE" : L"")).c_str(), wanted);
            for (std::size_t k = row.bands.size(); k >= 1; --k) {
                const unsigned long rgb = KX_RGBFromWavelength(row.bands[k - 1]);
                placeholder.Format(16, "#00FF0%d", static_cast<int>(k));
                color.Format(16, "#%02X%02X%02X", unsigned{GetRValue(rgb)}, unsigned{GetGValue(rgb)},
                             unsigned{GetBValue(rgb)});
                EXPECT_GT(CKxSvgStringAPI::ReplaceString(wanted, placeholder, color), 0);
            }
            CKxStringW name(row.name);
            const CKxStringA svg = square ? panel.CreateFilterSVGStringSquare(name) : panel.CreateFilterSVGString(name);
            EXPECT_STREQ(svg, wanted) << Narrow(row.name);
        }
    }
}

TEST(FilterImage, TakesNoColourForAPlaceholder) {
    const unsigned long colors[] = {0x010203, 0x01FF00};
    EXPECT_STREQ(kx::ui::ColorBands("#00FF01 #00FF02", colors), "#030201 #00FF01");
    const unsigned long backwards[] = {0x02FF00, 0x010203};
    EXPECT_STREQ(kx::ui::ColorBands("#00FF01 #00FF02", backwards), "#00FF02 #030201");
}

TEST_F(FilterWheel, LaysOutItsGrid) {
    EXPECT_FALSE(panel.Update(nullptr, true, true, true));
    EXPECT_FALSE(panel.Update(4711u, true, true, true));
    panel.CreateControls();
    EXPECT_EQ(HeightOf(Open()), 48) << "no filter";
    const struct {
        int count;
        long height;
        POINT last;  // the place of the last button
        int shown;
    } table[] = {{1, 48, {16, 16}, 1}, {8, 48, {16 + 7 * 24, 16}, 8}, {9, 72, {16, 40}, 9}, {40, 144, {184, 40}, 16}};
    for (const auto& row : table) {
        Device device(row.count);
        ASSERT_TRUE(panel.Update(device.GetLogDevId(), true, true, true));
        const RECT last = PlaceOf(panel, kButton + row.shown - 1);
        EXPECT_EQ(std::pair(last.left, last.top), std::pair(row.last.x, row.last.y));
        EXPECT_EQ(HeightOf(panel), row.height);
        EXPECT_FALSE(ChildOf(panel, kButton + row.shown));
        panel.DestroyControls();
        EXPECT_FALSE(GetWindow(panel, GW_CHILD));
        panel.CreateControls();
        EXPECT_EQ(PlaceOf(panel, kSetup).left, 256 - 24 - 16);
    }
    Device one(1);
    panel.Update(&one, true, true, true);
    panel.m_hasTitle = panel.m_heightFromTitle = true;
    panel.SetTitle(L"of");
    EXPECT_EQ(HeightOf(Open()), 34) << "1.4 rows, rounded";
    panel.SetTitle(L"a title of so many words that it needs more lines than there are rows");
    EXPECT_EQ(HeightOf(Open()), 53) << "two rows at most";
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
        ClickChild(panel, kButton + 2);
        ClickChild(panel, kSetup);
        EXPECT_EQ(panel.GetPosition(), row.after) << row.intelligent << row.motorized << row.refuse << row.before;
        EXPECT_TRUE(Told({Call("position", 2), Call("setup", 0)}));
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
        EXPECT_EQ(GetFocus(), ChildOf(panel, kButton + step.position));
    }
    Key(VK_RETURN);
    EXPECT_TRUE(Told({Call("position", 0)}));
}

TEST_F(FilterWheel, ShowsSquaresRightsAndDisabled) {
    Device round(3), cube(3, {eKxFilterType_Cube, true, true});
    Open();
    const auto look = [&] { return Picture::OnScreen(ChildOf(panel, kButton)); };
    panel.Update(&round, true, true, false);
    const Picture wheel = look();
    panel.Update(&cube, true, true, false);
    const Picture square = look();
    EXPECT_NE(square, wheel);
    panel.SetPosition(0);
    EXPECT_NE(look(), square) << "the current one";
    panel.SetPosition(-1);
    EXPECT_EQ(look(), square);
    panel.SetEnable(false, true);
    EXPECT_NE(look(), square);
    panel.SetEnable(true, true);
    EnableWindow(panel, FALSE);
    EXPECT_NE(look(), square) << "a container's way";
    EnableWindow(panel, TRUE);
    EXPECT_EQ(look(), square);
    CKxUserManager::SetCurrentUserRights(0);
    panel.SetEnable(true, true);
    EXPECT_FALSE(IsUsable(panel, kSetup));
    CKxUserManager::SetCurrentUserRights(~0u);
    panel.Update(&round, true, false, false);
    EXPECT_TRUE(IsUsable(panel, kSetup));
}

}  // namespace
