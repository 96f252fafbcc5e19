// What the colour slider shows: true colours, even gradients, clean lines, in every size and scheme.
#include "lamps.h"

#include <kxbaseui/kx_colors.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxsystem/kx_color.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

using namespace kx::test;

namespace {

class Slider : public CKxDevUI_ColorSlider {
public:
    void Fill(EColorSliderType type, EColorSliderLayoutType layout, const wchar_t* name = L"Channel") {
        std::vector<SColorSliderValue> table;
        for (int i = 400; i <= 700; i += 5)
            table.push_back({double(i), i % 50 == 0, i % 100 == 0});
        Init(200, 10, table.data(), static_cast<int>(table.size()), name, false, L"nm", L"%.0f", true, type, layout,
             40);
    }
    HWND Part(int id) const { return GetDlgItem(m_hWnd, id); }
    HWND Thumb() const { return Part(eColorSliderId_HPot); }
    // What a thumb hides is at 700.
    Picture Scale(double power = 700) {
        SetPower(power, true);
        return Picture::Printed(Thumb());
    }
};

// A slider in a window.
class ColorSliderLooks : public testing::Test {
protected:
    void Show(EColorSliderType type, EColorSliderLayoutType layout = eColorSliderLayout_TwoRows,
              const wchar_t* name = L"Channel") {
        slider.Fill(type, layout, name);
        slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
    }
    RecordingParent parent{SIZE{1240, 800}};
    Slider slider;
};

// The thumb control of Fill at zoom 1: the track has 202 pixels from 4 on, the strip's rows begin at 2.
constexpr int kTrackLeft = 4, kTrack = 202, kTop = 2, kRow = 5;

int Distance(COLORREF a, COLORREF b) {
    return std::max({std::abs(GetRValue(a) - GetRValue(b)), std::abs(GetGValue(a) - GetGValue(b)),
                     std::abs(GetBValue(a) - GetBValue(b))});
}

TEST_F(ColorSliderLooks, ShowTrueColors) {
    Show(eColorSliderType_HorizontalRainbow);
    slider.SetHorizontalRainbow(400, 700);
    const Picture picture = slider.Scale();
    // Lines of 3 pixels from left to right: the last one that covers a column is that of the next.
    for (int column = 0; column < kTrack - 6; ++column) {
        ASSERT_EQ(picture.Pixel(kTrackLeft + column, kRow), KX_RGBFromWavelength2(400 + (column + 1) * 300.0 / kTrack))
            << column;
    }
    // The colour matching functions as the CIE has tabulated them, turned into sRGB, the brightest part full.
    const struct {
        double nanometres;
        COLORREF color;
    } table[] = {{430, RGB(106, 0, 255)}, {450, RGB(79, 0, 255)},  {470, RGB(0, 45, 255)},  {480, RGB(0, 135, 255)},
                 {490, RGB(0, 236, 255)}, {500, RGB(0, 255, 162)}, {520, RGB(0, 255, 0)},   {540, RGB(0, 255, 0)},
                 {560, RGB(150, 255, 0)}, {570, RGB(250, 255, 0)}, {580, RGB(255, 180, 0)}, {590, RGB(255, 123, 0)},
                 {600, RGB(255, 71, 0)},  {620, RGB(255, 0, 0)},   {650, RGB(255, 0, 0)},   {670, RGB(255, 0, 0)},
                 {690, RGB(255, 0, 0)}};
    for (const auto& row : table) {
        const int column = static_cast<int>(std::lround((row.nanometres - 400) * kTrack / 300)) - 1;
        EXPECT_LE(Distance(picture.Pixel(kTrackLeft + column, kRow), row.color), 28) << row.nanometres;
    }
    // Rows of wavelengths, beside them a line; what cannot be seen is black.
    slider.Fill(eColorSliderType_VerticalRainbow, eColorSliderLayout_TwoRows);
    slider.SetVerticalRainbow(650, 450, 450, 550);
    const Picture rowsOf = slider.Scale();
    for (int row = 0; row < 9; ++row)
        EXPECT_EQ(rowsOf.Pixel(kTrackLeft + 60, kTop + row), KX_RGBFromWavelength(650 - (row + 1) * 20)) << row;
    EXPECT_EQ(rowsOf.Pixel(kTrackLeft + 150, 7), KX_GetVorGuiColor(eKxVorGuiColor_ScaleRest));
    slider.SetHorizontalRainbow(900, std::nan(""));
    EXPECT_EQ(slider.Scale().Pixel(kTrackLeft + 100, kRow), 0u);
}

TEST_F(ColorSliderLooks, DrawEvenGradientsAndCleanLines) {
    Show(eColorSliderType_Gradient);
    slider.SetGradient(RGB(10, 200, 0), RGB(210, 0, 100));
    const Picture gradient = slider.Scale();
    for (int column = 0; column < kTrack - 6; ++column) {
        const double share = double(column) / kTrack;
        const COLORREF exact =
            RGB(std::lround(10 + 200 * share), std::lround(200 - 200 * share), std::lround(100 * share));
        ASSERT_LE(Distance(gradient.Pixel(kTrackLeft + column, kRow), exact), 1) << column;
        ASSERT_EQ(gradient.Pixel(kTrackLeft + column, kRow), gradient.Pixel(kTrackLeft + column, kTop + 9)) << column;
    }
    slider.Fill(eColorSliderType_LineDraw, eColorSliderLayout_TwoRows);
    slider.SetLineDrawSlider(RGB(1, 2, 3), RGB(250, 251, 252));
    const Picture line = slider.Scale(500);
    const int at = kTrackLeft + kTrack / 3;
    for (int column = kTrackLeft; column < kTrackLeft + kTrack; ++column) {
        if (std::abs(column - at) < 6) continue;  // the thumb
        for (int row = 0; row < 14; ++row) {
            const COLORREF expected = row < 5 || row > 7 ? KX_GetSysColor(COLOR_3DFACE)
                                      : column < at      ? RGB(1, 2, 3)
                                                         : RGB(250, 251, 252);
            ASSERT_EQ(line.Pixel(column, row), expected) << column << ", " << row;
        }
    }
    EXPECT_EQ(line.Pixel(kTrackLeft - 1, 6), KX_GetSysColor(COLOR_3DFACE));
    slider.Fill(eColorSliderType_LineDraw, eColorSliderLayout_TwoRows);
    EXPECT_EQ(slider.Scale(500), line) << "another Init keeps the scale";
}

TEST_F(ColorSliderLooks, RebuildADisabledLineWhenItIsEnabled) {
    Show(eColorSliderType_LineDraw);
    slider.SetLineDrawSlider(RGB(255, 0, 0), RGB(0, 0, 255));
    slider.Scale(650);
    slider.SetEnabled(false);
    const auto middle = [&] { return Picture::Printed(slider.Thumb()).Pixel(kTrackLeft + kTrack / 2, 6); };
    const COLORREF pale = middle();
    EXPECT_GT(GetRValue(pale), GetBValue(pale));
    slider.SetPower(450, true);
    EXPECT_EQ(middle(), pale) << "the thumb has moved, the line has not";
    slider.SetEnabled(true);
    EXPECT_EQ(middle(), RGB(0, 0, 255));
}

// Of a name, or of a label, that has no room nothing leaves the control, and what looks like a mark is a character.
TEST_F(ColorSliderLooks, ShowNamesAsTheyAre) {
    for (const auto layout : {eColorSliderLayout_TwoRows, eColorSliderLayout_OneRow, eColorSliderLayout_ColorPoint}) {
        std::vector<Picture> pictures;
        for (const wchar_t* name : {L"R&D", L"RD", L"R&&D", L"<svg>&amp;%s"}) {
            Show(eColorSliderType_Gradient, layout, name);
            pictures.push_back(Picture::Printed(slider.Part(10003)));
            for (std::size_t i = 0; i + 1 < pictures.size(); ++i)
                EXPECT_FALSE(pictures.back() == pictures[i]) << i;
        }
    }
}

// The number is painted at once, and no other than it would be with WM_PAINT.
TEST_F(ColorSliderLooks, LetTheNumberFollowTheThumb) {
    for (const auto type : {eColorSliderType_Gradient, eColorSliderType_Range}) {
        for (const bool dark : {false, true}) {
            KX_SetColorScheme(dark ? eKxColorScheme_Dark : eKxColorScheme_System);
            Show(type);
            slider.SetPower(700, true);
            slider.SetRange(400, 700);
            const HWND box = slider.Part(10001), edit = ::GetWindow(box, GW_CHILD);
            Pump();
            const Picture before = Picture::OnScreen(box);
            Press(slider.Thumb(), kTrackLeft + kTrack, kRow);
            SendMessageW(slider.Thumb(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(kTrackLeft + kTrack / 3, kRow));
            EXPECT_FALSE(GetUpdateRect(edit, nullptr, FALSE));
            const Picture atOnce = Picture::OnScreen(box);
            EXPECT_GT(atOnce.Differences(before), 5);
            RedrawWindow(box, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
            EXPECT_EQ(Picture::OnScreen(box), atOnce);
            Release();
        }
    }
    KX_SetColorScheme(eKxColorScheme_System);
}

TEST_F(ColorSliderLooks, ShowThePointInEachState) {
    Show(eColorSliderType_LineDraw, eColorSliderLayout_ColorPoint);
    slider.SetPointColor(RGB(250, 20, 30));
    const auto point = [&](int x) {
        Pump();
        return Picture::OnScreen(slider.Part(10003)).Pixel(x, 7);
    };
    // The label is 15 high: the point takes 11 pixels from 5 on, and black is around it.
    EXPECT_EQ(point(10), RGB(250, 20, 30));
    EXPECT_LT(GetRValue(point(6)), 120);
    EXPECT_EQ(point(3), KX_GetSysColor(COLOR_3DFACE));
    slider.SetName(L"Another");
    EXPECT_EQ(point(10), RGB(250, 20, 30));
    slider.SetEnabled(false);
    const COLORREF pale = point(10);
    EXPECT_NE(pale, RGB(250, 20, 30));
    EXPECT_NE(pale, KX_GetSysColor(COLOR_3DFACE));
    slider.SetEnabled(true);
    slider.SetPointColor(RGB(1, 2, 200));
    EXPECT_EQ(point(10), RGB(1, 2, 200));
}

// A gallery to be looked at, six in a column, and each look another.
TEST_F(ColorSliderLooks, ShowAllTypes) {
    std::vector<Picture> looks;
    for (const int percent : {100, 150, 200}) {
        const Zoom zoom(percent / 100.0);
        for (const int look : {0, 1, 2, 3}) {
            const bool dark = look & 1, enabled = look < 2;
            KX_SetColorScheme(dark ? eKxColorScheme_Dark : eKxColorScheme_Light);
            CKxDevUI_Container panel;
            panel.Create(parent.Window(), 0, 0, 1240, 800, true, true);
            std::array<Slider, 6> sliders;
            for (int i = 0; i < 6; ++i) {
                Slider& each = sliders[std::size_t(i)];
                each.Fill(static_cast<EColorSliderType>(i % 5), static_cast<EColorSliderLayoutType>(i % 4));
                if (i % 5 == 0) each.SetHorizontalRainbow(400, 700);
                if (i == 1) each.SetVerticalRainbow(650, 450, 450, 600);
                if (i == 2) each.SetGradient(RGB(0, 0, 0), RGB(255, 160, 0));
                if (i == 3 || i == 4) each.SetLineDrawSliderVorColors(31, 37, i % 2 == 0);
                each.SetPointColor(static_cast<int>(KX_RGBFromWavelength(450 + 50 * i)));
                each.Create(panel, 4, 4 + CKxGUILayoutManager::Zoomed(i * 64), -1, -1, true, true);
                each.SetPower(560, true);
                each.SetRange(480, 610);
                each.SetEnabled(enabled);
            }
            Pump();
            looks.push_back(Picture::OnScreen(panel));
            looks.back().Save("colorslider-" + std::to_string(percent) + (dark ? "-dark" : "-light") +
                              (enabled ? "" : "-disabled"));
            for (std::size_t i = 0; i + 1 < looks.size(); ++i)
                EXPECT_GT(looks.back().Differences(looks[i]), 500);
        }
    }
    KX_SetColorScheme(eKxColorScheme_System);
}

}  // namespace
