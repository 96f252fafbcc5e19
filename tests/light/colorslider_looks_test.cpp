// What the colour slider shows: true colours, even gradients, clean lines, in every size and scheme.
#include <bench/bench.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxsystem/kx_color.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>

using namespace kx::test;

namespace {

class Slider : public CKxDevUI_ColorSlider {
public:
    using CKxDevUI_ColorSlider::eColorSliderId_HPot;

    void Fill(EColorSliderType type, EColorSliderLayoutType layout, const wchar_t* name = L"Channel") {
        std::vector<SColorSliderValue> table;
        for (int i = 400; i <= 700; i += 5) table.push_back({double(i), i % 50 == 0, i % 100 == 0});
        Init(200, 10, table.data(), static_cast<int>(table.size()), name, false, L"nm", L"%.0f", true, type, layout, 40);
    }
    HWND Thumb() { return GetDlgItem(m_hWnd, eColorSliderId_HPot); }
    RECT Rect() {
        RECT rect{};
        GetHPotRect(&rect);
        return rect;
    }
};


// The thumb control of Fill at zoom 1: the track has 202 pixels from 4 on, the strip's rows begin at 2.
constexpr int kTrackLeft = 4, kTrack = 202, kTop = 2, kRow = 5;

// What a thumb hides is at 700.
Picture Scale(Slider& slider, double power = 700) {
    slider.SetPower(power, true);
    return Picture::Printed(slider.Thumb());
}

int Distance(COLORREF a, COLORREF b) {
    return std::max({std::abs(GetRValue(a) - GetRValue(b)), std::abs(GetGValue(a) - GetGValue(b)),
                     std::abs(GetBValue(a) - GetBValue(b))});
}

// The colour matching functions as the CIE has tabulated them, turned into sRGB: an own way to the same colour.
struct Tabulated {
    double nanometres, x, y, z;
};
COLORREF ColorOf(const Tabulated& row) {
    const double linear[] = {3.2406 * row.x - 1.5372 * row.y - 0.4986 * row.z,
                             -0.9689 * row.x + 1.8758 * row.y + 0.0415 * row.z,
                             0.0557 * row.x - 0.2040 * row.y + 1.0570 * row.z};
    const double brightest = *std::max_element(linear, linear + 3);
    const auto encoded = [&](double part) {
        const double share = std::max(0.0, part / brightest);
        return static_cast<int>(std::lround(255 * (share <= 0.0031308 ? 12.92 * share : 1.055 * std::pow(share, 1 / 2.4) - 0.055)));
    };
    return RGB(encoded(linear[0]), encoded(linear[1]), encoded(linear[2]));
}

TEST(ColorSliderLooks, ShowTrueColors) {
    RecordingParent parent;
    Slider slider;
    slider.Fill(eColorSliderType_HorizontalRainbow, eColorSliderLayout_TwoRows);
    slider.SetHorizontalRainbow(400, 700);
    slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
    const Picture picture = Scale(slider);
    // Lines of 3 pixels from left to right: the last one that covers a column is that of the next.
    for (int column = 0; column < kTrack - 6; ++column) {
        ASSERT_EQ(picture.Pixel(kTrackLeft + column, kRow), KX_RGBFromWavelength2(400 + (column + 1) * 300.0 / kTrack))
            << column;
    }
    const Tabulated rows[] = {{430, 0.2839, 0.0116, 1.3856},  {450, 0.3362, 0.0380, 1.7721},  {470, 0.1954, 0.0910, 1.2876},
                              {480, 0.0956, 0.1390, 0.8130},  {490, 0.0320, 0.2080, 0.4652},  {500, 0.0049, 0.3230, 0.2720},
                              {520, 0.0633, 0.7100, 0.0782},  {540, 0.2904, 0.9540, 0.0203},  {560, 0.5945, 0.9950, 0.0039},
                              {570, 0.7621, 0.9520, 0.0021},  {580, 0.9163, 0.8700, 0.0017},  {590, 1.0263, 0.7570, 0.0011},
                              {600, 1.0622, 0.6310, 0.0008},  {620, 0.8544, 0.3810, 0.0002},  {650, 0.2835, 0.1070, 0.0},
                              {670, 0.0874, 0.0320, 0.0},     {690, 0.0227, 0.0082, 0.0}};
    for (const Tabulated& row : rows) {
        const int column = static_cast<int>(std::lround((row.nanometres - 400) * kTrack / 300)) - 1;
        EXPECT_LE(Distance(picture.Pixel(kTrackLeft + column, kRow), ColorOf(row)), 28) << row.nanometres;
    }
    // Rows of wavelengths, beside them a line; what cannot be seen is black.
    slider.Fill(eColorSliderType_VerticalRainbow, eColorSliderLayout_TwoRows);
    slider.SetVerticalRainbow(650, 450, 450, 550);
    const Picture rowsOf = Scale(slider);
    for (int row = 0; row < 9; ++row)
        EXPECT_EQ(rowsOf.Pixel(kTrackLeft + 60, kTop + row), KX_RGBFromWavelength(650 - (row + 1) * 20)) << row;
    EXPECT_EQ(rowsOf.Pixel(kTrackLeft + 150, 7), KX_GetVorGuiColor(eKxVorGuiColor_ScaleRest));
    slider.SetHorizontalRainbow(900, std::nan(""));
    EXPECT_EQ(Scale(slider).Pixel(kTrackLeft + 100, kRow), 0u);
}

TEST(ColorSliderLooks, DrawEvenGradientsAndCleanLines) {
    RecordingParent parent;
    Slider slider;
    slider.Fill(eColorSliderType_Gradient, eColorSliderLayout_TwoRows);
    slider.SetGradient(RGB(10, 200, 0), RGB(210, 0, 100));
    slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
    const Picture gradient = Scale(slider);
    for (int column = 0; column < kTrack - 6; ++column) {
        const double share = double(column) / kTrack;
        const COLORREF exact = RGB(std::lround(10 + 200 * share), std::lround(200 - 200 * share), std::lround(100 * share));
        ASSERT_LE(Distance(gradient.Pixel(kTrackLeft + column, kRow), exact), 1) << column;
        ASSERT_EQ(gradient.Pixel(kTrackLeft + column, kRow), gradient.Pixel(kTrackLeft + column, kTop + 9)) << column;
    }
    slider.Fill(eColorSliderType_LineDraw, eColorSliderLayout_TwoRows);
    slider.SetLineDrawSlider(RGB(1, 2, 3), RGB(250, 251, 252));
    const Picture line = Scale(slider, 500);
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
    EXPECT_EQ(Scale(slider, 500), line) << "another Init keeps the scale";
}

TEST(ColorSliderLooks, RebuildADisabledLineWhenItIsEnabled) {
    RecordingParent parent;
    Slider slider;
    slider.Fill(eColorSliderType_LineDraw, eColorSliderLayout_TwoRows);
    slider.SetLineDrawSlider(RGB(255, 0, 0), RGB(0, 0, 255));
    slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
    Scale(slider, 650);
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
TEST(ColorSliderLooks, ShowNamesAsTheyAre) {
    RecordingParent parent;
    for (const auto layout : {eColorSliderLayout_TwoRows, eColorSliderLayout_OneRow, eColorSliderLayout_ColorPoint}) {
        std::vector<Picture> pictures;
        for (const wchar_t* name : {L"R&D", L"RD", L"R&&D", L"<svg>&amp;%s"}) {
            Slider slider;
            slider.Fill(eColorSliderType_Gradient, layout, name);
            slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
            pictures.push_back(Picture::Printed(GetDlgItem(slider, 10003)));
            for (std::size_t i = 0; i + 1 < pictures.size(); ++i) EXPECT_FALSE(pictures.back() == pictures[i]) << i;
        }
    }
}

// The number is painted at once, and no other than it would be with WM_PAINT.
TEST(ColorSliderLooks, LetTheNumberFollowTheThumb) {
    RecordingParent parent;
    for (const auto type : {eColorSliderType_Gradient, eColorSliderType_Range}) {
        for (const bool dark : {false, true}) {
            KX_SetColorScheme(dark ? eKxColorScheme_Dark : eKxColorScheme_System);
            Slider slider;
            slider.Fill(type, eColorSliderLayout_TwoRows);
            slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
            slider.SetPower(700, true);
            slider.SetRange(400, 700);
            const HWND box = GetDlgItem(slider, 10001), edit = ::GetWindow(box, GW_CHILD);
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

TEST(ColorSliderLooks, ShowThePointInEachState) {
    RecordingParent parent;
    Slider slider;
    slider.Fill(eColorSliderType_LineDraw, eColorSliderLayout_ColorPoint);
    slider.SetPointColor(RGB(250, 20, 30));
    slider.Create(parent.Window(), 0, 0, -1, -1, true, true);
    const auto point = [&](int x) {
        Pump();
        return Picture::OnScreen(GetDlgItem(slider, 10003)).Pixel(x, 7);
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

// A gallery to be looked at, and each look another.
TEST(ColorSliderLooks, ShowAllTypesAndLayouts) {
    RecordingParent parent(SIZE{1240, 800});
    std::vector<Picture> looks;
    for (const int percent : {100, 150, 200}) {
        CKxGUILayoutManager::SetGuiZoom(percent / 100.0);
        for (const auto scheme : {eKxColorScheme_Light, eKxColorScheme_Dark}) {
            KX_SetColorScheme(scheme);
            for (const bool enabled : {true, false}) {
                CKxDevUI_Container panel;
                panel.Create(parent.Window(), 0, 0, 1240, 800, true, true);
                std::array<std::array<Slider, 4>, 5> sliders;
                for (int type = 0; type < 5; ++type) {
                    for (int layout = 0; layout < 4; ++layout) {
                        Slider& slider = sliders[std::size_t(type)][std::size_t(layout)];
                        slider.Fill(static_cast<EColorSliderType>(type), static_cast<EColorSliderLayoutType>(layout));
                        if (type == 0) slider.SetHorizontalRainbow(400, 700);
                        if (type == 1) slider.SetVerticalRainbow(650, 450, 450, 600);
                        if (type == 2) slider.SetGradient(RGB(0, 0, 0), RGB(255, 160, 0));
                        if (type >= 3) slider.SetLineDrawSliderVorColors(31, 37, layout % 2 == 0);
                        slider.SetPointColor(static_cast<int>(KX_RGBFromWavelength(450 + 50 * type)));
                        // A range in one row is wide; at larger zooms there is room for one of each type.
                        const int column = percent > 100 ? 0 : layout, row = type;
                        if (percent > 100 ? layout != type % 4 : type == 4 && layout % 3 != 0) continue;
                        slider.Create(panel, 4 + CKxGUILayoutManager::Zoomed(column * 305),
                                      4 + CKxGUILayoutManager::Zoomed(row * 80), -1, -1, true, true);
                        slider.SetPower(560, true);
                        slider.SetRange(480, 610);
                        slider.SetEnabled(enabled);
                    }
                }
                Pump();
                looks.push_back(Picture::OnScreen(panel));
                looks.back().Save("colorslider-" + std::to_string(percent) +
                                  (scheme == eKxColorScheme_Dark ? "-dark" : "-light") + (enabled ? "" : "-disabled"));
                for (std::size_t i = 0; i + 1 < looks.size(); ++i) EXPECT_GT(looks.back().Differences(looks[i]), 500);
            }
        }
    }
    CKxGUILayoutManager::SetGuiZoom(1);
    KX_SetColorScheme(eKxColorScheme_System);
}

}  // namespace
