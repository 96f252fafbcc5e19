// What the colour slider shows: colours, gradients and lines where they belong, names as they are.
#include "lamps.h"

#include <kxsystem/kx_color.h>

using namespace kx::test;

namespace {

// How far the parts of two colours are from each other.
int Farthest(COLORREF a, COLORREF b) {
    return std::max({std::abs(GetRValue(a) - GetRValue(b)), std::abs(GetGValue(a) - GetGValue(b)),
                     std::abs(GetBValue(a) - GetBValue(b))});
}

// A slider in a window. Its track has 202 pixels from 4 on, the strip's rows begin at 2.
constexpr int kTrackLeft = 4, kTrack = 202, kTop = 2, kRow = 5;

struct ColorSliderLooks : ControlTest {
    void Show(EColorSliderType type, EColorSliderLayoutType layout = eColorSliderLayout_TwoRows,
              const wchar_t* name = L"Channel") {
        std::vector<double> values = Entries(61, 5);
        for (double& value : values)
            value += 400;
        Fill(slider, values, name, 50, type, layout);
        if (!slider) slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
    }
    HWND Part(int id) const { return GetDlgItem(slider, id); }
    // What the thumb hides is elsewhere.
    Picture Scale(double power = 700) {
        slider.SetPower(power, true);
        return Picture::Printed(Part(10000));
    }
    COLORREF Name(int x) const { return Picture::OnScreen(Part(10003)).Pixel(x, 7); }

    CKxDevUI_ColorSlider slider;
};

// The colour matching functions as the CIE has tabulated them, turned into sRGB, the brightest part full.
TEST(WavelengthColors, AreTrue) {
    const std::tuple<double, int, int, int> rows[] = {
        {430, 106, 0, 255}, {490, 0, 236, 255}, {540, 0, 255, 0}, {580, 255, 180, 0}, {690, 255, 0, 0}};
    for (const auto& [nanometres, red, green, blue] : rows)
        EXPECT_LE(Farthest(KX_RGBFromWavelength2(nanometres), RGB(red, green, blue)), 28) << nanometres;
}

TEST_F(ColorSliderLooks, PaintTheScale) {
    Show(eColorSliderType_HorizontalRainbow);
    slider.SetHorizontalRainbow(400, 700);
    const Picture across = Scale();
    // Lines of 3 pixels: the last one that covers a column, or a row, is that of the next.
    for (int column = 0; column < kTrack - 6; ++column)
        ASSERT_EQ(across.Pixel(kTrackLeft + column, kRow), KX_RGBFromWavelength2(400 + (column + 1) * 300.0 / kTrack));

    slider.SetVerticalRainbow(650, 450, 450, 550);
    const Picture down = Scale();
    for (int row = 0; row < 9; ++row)
        EXPECT_EQ(down.Pixel(kTrackLeft + 60, kTop + row), KX_RGBFromWavelength(650 - (row + 1) * 20)) << row;
    EXPECT_EQ(down.Pixel(kTrackLeft + 150, 7), KX_GetVorGuiColor(eKxVorGuiColor_ScaleRest)) << "a line beside it";

    slider.SetGradient(RGB(10, 200, 0), RGB(210, 0, 100));
    const Picture gradient = Scale();
    for (const int column : {0, 100, 190}) {
        const int share = 200 * column / kTrack;
        EXPECT_LE(Farthest(gradient.Pixel(kTrackLeft + column, kRow), RGB(10 + share, 200 - share, share / 2)), 2);
    }

    slider.SetLineDrawSlider(RGB(1, 2, 3), RGB(250, 251, 252));
    const Picture line = Scale(500);
    const COLORREF face = KX_GetSysColor(COLOR_3DFACE), before = RGB(1, 2, 3), after = RGB(250, 251, 252);
    const std::tuple<int, int, COLORREF> rows[] = {{0, 5, before},  {60, 7, before}, {75, 5, after},
                                                   {201, 7, after}, {30, 4, face},   {100, 8, face}};
    for (const auto& [column, row, color] : rows)
        EXPECT_EQ(line.Pixel(kTrackLeft + column, row), color) << column << ", " << row;
    Show(eColorSliderType_LineDraw);
    EXPECT_EQ(Scale(500), line) << "another Init keeps the scale";
}

TEST_F(ColorSliderLooks, RebuildADisabledLineWhenItIsEnabled) {
    Show(eColorSliderType_LineDraw);
    slider.SetLineDrawSlider(RGB(255, 0, 0), RGB(0, 0, 255));
    Scale(650);
    slider.SetEnabled(false);
    const auto middle = [&] { return Picture::Printed(Part(10000)).Pixel(kTrackLeft + kTrack / 2, 6); };
    const COLORREF pale = middle();
    EXPECT_GT(GetRValue(pale), GetBValue(pale));
    slider.SetPower(450, true);
    EXPECT_EQ(middle(), pale) << "the thumb has moved, the line has not";
    slider.SetEnabled(true);
    EXPECT_EQ(middle(), RGB(0, 0, 255));
}

// What looks like a mark is a character.
TEST_F(ColorSliderLooks, ShowNamesAsTheyAre) {
    for (const auto layout : {eColorSliderLayout_TwoRows, eColorSliderLayout_ColorPoint}) {
        const auto named = [&](const wchar_t* name) {
            Show(eColorSliderType_Gradient, layout, name);
            return Picture::Printed(Part(10003));
        };
        const RECT with = named(L"R&D").Difference(named(L" ")), without = named(L"RD").Difference(named(L" "));
        EXPECT_GT(with.right - with.left, without.right - without.left + 3);
    }
}

// The label is 15 high: the point takes 11 pixels from 5 on, and black is around it.
TEST_F(ColorSliderLooks, ShowThePoint) {
    Show(eColorSliderType_LineDraw, eColorSliderLayout_ColorPoint);
    slider.SetPointColor(RGB(250, 20, 30));
    slider.SetName(L"Another");
    EXPECT_EQ(Name(10), RGB(250, 20, 30));
    EXPECT_LT(GetRValue(Name(6)), 120);
    EXPECT_EQ(Name(3), KX_GetSysColor(COLOR_3DFACE));
    slider.SetEnabled(false);
    EXPECT_TRUE(Name(10) != RGB(250, 20, 30) && Name(10) != KX_GetSysColor(COLOR_3DFACE)) << "pale";
}

}  // namespace
