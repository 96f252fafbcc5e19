// What the colour slider shows: true colours, even gradients, clean lines, in every size and scheme.
#include <bench/bench.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/light/devgui_colorslider.h>
#include <kxsystem/kx_color.h>

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


// A gallery to be looked at, and each look another.
TEST(ColorSliderLooks, ShowAllTypesAndLayouts) {
    RecordingParent parent(SIZE{1240, 900});
    SendMessageW(parent.Window(), WM_SETREDRAW, TRUE, 0);
    std::vector<Picture> looks;
    for (const int percent : {100, 150, 200}) {
        CKxGUILayoutManager::SetGuiZoom(percent / 100.0);
        for (const auto scheme : {eKxColorScheme_Light, eKxColorScheme_Dark}) {
            KX_SetColorScheme(scheme);
            for (const bool enabled : {true, false}) {
                CKxDevUI_Container panel;
                panel.Create(parent.Window(), 0, 0, 1240, 900, true, true);
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
                        const long step = CKxGUILayoutManager::Zoomed(220);
                        const long across = 1240 / (step + step / 2) > 2 ? 3 : 2;
                        const int index = type * 4 + layout;
                        if (percent > 100 && index % 4 != type % 4) continue;
                        const int cell = percent > 100 ? type : index;
                        slider.Create(panel, 4 + (cell % across) * CKxGUILayoutManager::Zoomed(380),
                                      4 + (cell / across) * CKxGUILayoutManager::Zoomed(76), -1, -1, true, true);
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
