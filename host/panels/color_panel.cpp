#include "color_panel.h"

#include <algorithm>
#include <vector>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxsystem/kx_color.h>

#include "../event_log.h"
#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr int kWavelength = 5;       // the slider that is no light
constexpr int kTop = 30, kRow = 40;  // unzoomed pixels
constexpr int kSlider = 230, kStrip = 9;

using Table = std::vector<SColorSliderValue>;

// Whole numbers with ticks and labels at multiples of these.
Table Whole(int first, int last, int step, int tick, int label) {
    Table table;
    for (int i = first; i <= last; i += step)
        table.push_back({static_cast<double>(i), i % tick == 0, i % label == 0});
    return table;
}

}  // namespace

// ---- A slider ------------------------------------------------------------------------------------------------------

void PanelColorSlider::Belong(ColorPanel& panel, const wchar_t* name, const wchar_t* told) {
    m_panel = &panel;
    m_name = name;
    m_told = told;
}

// Without a switch of its own a light is on as soon as it has power.
void PanelColorSlider::Shine(double power) { KX_TellLight(*this, power > 0 ? EKxLight::On : EKxLight::Off); }

void PanelColorSlider::OnPowerChanged(double& value, bool& veto) {
    Log().Add(m_name, L"OnPowerChanged(%g)", value);
    CKxStringW told;
    told.Format(80, Text(m_told), value);
    veto = !m_panel->Agrees(*this, value, told);
    // A typed value holds already; a host that minds sets the old one again.
    if (KX_GetLight(*this) != EKxLight::None) Shine(veto ? GetPower() : value);
}

void PanelColorSlider::OnRangeChanged(double& minimum, double& maximum) {
    Log().Add(m_name, L"OnRangeChanged(%g, %g)", minimum, maximum);
    CKxStringW told;
    told.Format(80, Text(m_told), minimum, maximum);
    m_panel->AgreesToBand(minimum, maximum, told);
}

void PanelColorSlider::OnLeftButtonUp() { Log().Add(m_name, L"OnLeftButtonUp"); }

// ---- The panel -----------------------------------------------------------------------------------------------------

void ColorPanel::Fill() {
    AddCaption(Text(L"Light sources"));
    KX_SetFieldHabits(m_hWnd, KxFieldHabits::AllOfLight());
    FillColumn();
    FillLine();
    FillBand();
    AddRefusal(IDC_LIGHT_REFUSE);
    ShowValues();
}

// The place is on the screen, the slider's own size it finds by itself.
void ColorPanel::Add(PanelColorSlider& slider, int x, int y) {
    slider.SetId(IDC_LIGHT + static_cast<int>(&slider - m_sliders.data()));
    slider.Create(m_hWnd, CKxGUILayoutManager::Zoomed(x), CKxGUILayoutManager::Zoomed(y), -1, -1, true, true);
    slider.SetTabStop(true);
    InsertElement(&slider);
}

void ColorPanel::FillColumn() {
    const int lines[] = {405, 488, 561, 640};
    Table percent = Whole(0, 100, 1, 10, 50);
    const auto count = static_cast<int>(percent.size());
    int row = 0;
    for (const int line : lines) {
        PanelColorSlider& slider = Slider(row);
        CKxStringW name;
        name.Format(40, Text(L"Laser %d nm"), line);
        slider.Belong(*this, L"Laser line", L"Laser line at %g %%");
        slider.Init(kSlider, kStrip, percent.data(), count, name, false, L"%", L"%.0f", true, eColorSliderType_Gradient,
                    eColorSliderLayout_OneRow, 40);
        slider.SetGradient(RGB(0, 0, 0), KX_RGBFromWavelength(line));
        Add(slider, 6, kTop + kRow * row);
        ++row;
    }
    PanelColorSlider &lamp = Slider(row), &wavelength = Slider(row + 1);
    lamp.Belong(*this, L"Lamp", L"Lamp at %g %%");
    lamp.Init(kSlider, kStrip, percent.data(), count, Text(L"Lamp"), false, L"%", L"%.0f", true,
              eColorSliderType_LineDraw, eColorSliderLayout_OneRowSpin, 57);
    lamp.SetLineDrawSliderVorColors({.low = eKxVorGuiColor_ScaleValue, .high = eKxVorGuiColor_ScaleRest});
    Add(lamp, 6, kTop + kRow * row);

    Table visible = Whole(400, 720, 5, 20, 80);
    wavelength.Belong(*this, L"Wavelength", L"Wavelength %g nm");
    wavelength.Init(kSlider, kStrip, visible.data(), static_cast<int>(visible.size()), Text(L"Wavelength"), false,
                    L"nm", L"%.0f", true, eColorSliderType_HorizontalRainbow, eColorSliderLayout_OneRowSpin, 57);
    wavelength.SetHorizontalRainbow(400, 720);
    Add(wavelength, 6, kTop + kRow * (row + 1));
}

void ColorPanel::FillLine() {
    Table percent = Whole(0, 100, 5, 10, 20);
    PanelColorSlider& line = Slider(6);
    CKxStringW name;
    name.Format(40, Text(L"Laser %d nm"), 532);
    line.Belong(*this, L"Laser line", L"Laser line at %g %%");
    line.Init(230, kStrip, percent.data(), static_cast<int>(percent.size()), name, true, L"%", L"%.0f", true,
              eColorSliderType_LineDraw, eColorSliderLayout_ColorPoint, 40);
    line.SetLineDrawSlider(KX_RGBFromWavelength(532), RGB(128, 128, 128));
    line.SetPointColor(static_cast<int>(KX_RGBFromWavelength(532)));
    Add(line, 6, kTop + kRow * 6 + 6);
}

void ColorPanel::FillBand() {
    Table visible = Whole(400, 720, 5, 20, 80);
    PanelColorSlider& band = Slider(7);
    band.Belong(*this, L"Band", L"Band %g to %g nm");
    band.Init(270, kStrip, visible.data(), static_cast<int>(visible.size()), Text(L"Detector band"), false, L"nm",
              L"%.0f", true, eColorSliderType_Range, eColorSliderLayout_TwoRows, 40);
    Add(band, 258, kTop + kRow * 6 + 6);
}

// The sliders of the column begin where the longest name lets them, and each grows by what it was moved.
void ColorPanel::Align() {
    RECT thumb{};
    int left = 0;
    for (std::size_t i = 0; i < Column; ++i) {
        m_sliders[i].GetHPotRect(&thumb);
        left = std::max(left, static_cast<int>(thumb.left));
    }
    for (std::size_t i = 0; i < Column; ++i) {
        const int moved = m_sliders[i].SetHPotLeft(left);
        const RECT at = RectInParent(m_sliders[i]);
        SetWindowPos(m_sliders[i], nullptr, 0, 0, at.right - at.left + moved, at.bottom - at.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void ColorPanel::ShowValues() {
    for (std::size_t i = 0; i < Held().powers.size(); ++i) {
        if (m_sliders[i].GetPower() != Held().powers[i]) m_sliders[i].SetPower(Held().powers[i], false);
        if (i != kWavelength) m_sliders[i].Shine(Held().powers[i]);
    }
    double from = 0, to = 0;
    m_sliders.back().GetRange(&from, &to);
    if (from != Held().bandFrom || to != Held().bandTo) m_sliders.back().SetRange(Held().bandFrom, Held().bandTo);
}

void ColorPanel::TurnLightOff() {
    for (const int lit : {0, 1, 2, 3, 4, 6})
        Slider(lit).SetPower(Power(Slider(lit)) = 0, true), Slider(lit).Shine(0);
}

double& ColorPanel::Power(const PanelColorSlider& slider) const {
    return Held().powers[static_cast<std::size_t>(&slider - m_sliders.data())];
}

bool ColorPanel::Agrees(PanelColorSlider& slider, double power, const CKxStringW& told) {
    const auto index = &slider - m_sliders.data();
    const bool lights = index != kWavelength;
    const std::wstring what = L"light " + std::to_wstring(index);
    return Grants({ValueOf(what.c_str(), slider.GetTitle().str(), Power(slider), lights ? L"%g %%" : L"%g nm",
                           lights ? kx::host::Light::More : kx::host::Light::None),
                   power},
                  told);
}

bool ColorPanel::AgreesToBand(double from, double to, const CKxStringW& told) {
    const std::wstring name = m_sliders.back().GetTitle().str();
    return Grants({ValueOf(L"band from", name, Held().bandFrom, L"%g nm"), from}, told) &&
           Grants({ValueOf(L"band to", name, Held().bandTo, L"%g nm"), to}, told);
}

bool ColorPanel::Grants(const Asked& asked, const CKxStringW& told) {
    const bool granted = Asks(asked.wish, asked.value);
    Tell(granted ? told.str() : Text(L"The slider stays where it is").str());
    return granted;
}

LRESULT ColorPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    HostPanel::OnMouseWheel(wParam, lParam);
    // Each slider uses the turns that come while the pointer is on its thumb control.
    for (PanelColorSlider& slider : m_sliders) {
        if (slider.HandleMouseWheel(wParam, lParam)) return 1;
    }
    return 0;
}
