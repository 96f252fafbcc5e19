#include "slider_panel.h"

#include <iterator>

#include <kxsystem/kx_translation.h>

#include "../event_log.h"
#include "../held_values.h"
#include "../resources/resource.h"

namespace {

constexpr int kTop = 26, kRow = 36, kLabelWidth = 84;  // unzoomed pixels

}  // namespace

// ---- A slider ------------------------------------------------------------------------------------------------------

void PanelSlider::Init(SliderPanel& panel, const wchar_t* name, const wchar_t* format) {
    m_panel = &panel;
    m_name = name;
    m_format = format;
}

CKxStringW PanelSlider::Text(double value) const {
    CKxStringW number, text;
    number.Format(30, m_format, value);
    text.Format(60, L"%ls\n%ls", KX_GetTranslation(m_name, L"host").c_str(), number.c_str());
    return text;
}

void PanelSlider::OnHPotChange(double& value, bool& skip) {
    Log().Add(m_name, L"OnHPotChange(%g)", value);
    skip = !m_panel->Agrees(*this, value);
}

void PanelSlider::OnHPotDragDrop() {
    Log().Add(m_name, L"OnHPotDragDrop");
    m_panel->Dropped(*this);
}

// ---- The panel -----------------------------------------------------------------------------------------------------

void SliderPanel::Fill() {
    AddCaption(KX_GetTranslation(L"Sliders", L"host"));
    double gains[] = {1, 1.5, 2, 4, 8, 16};
    double regions[] = {0, 10, 100, 1000}, regionSteps[] = {2, 20, 200};
    m_sliders[0].Init(*this, L"Exposure", L"%g ms");
    m_sliders[0].InitValues(0, 200, 0.5, 5, 0);
    m_sliders[1].Init(*this, L"Gain", L"%g x");
    m_sliders[1].InitValues(gains, static_cast<int>(std::size(gains)), 0);
    m_sliders[2].Init(*this, L"Interval", L"%g s");
    m_sliders[2].InitValues(regions, regionSteps, static_cast<int>(std::size(regions)), 1);
    // Cooling rises to the right, so the temperature falls, and with it the grid: of a rising one values would be
    // rounded up.
    m_sliders[3].Init(*this, L"Sensor", L"%g °C");
    m_sliders[3].InitValues(20, -40, -1, 1, 0);
    m_sliders[3].SetMarker(-25, COLOR_HIGHLIGHT, true);

    for (int i = 0; i < static_cast<int>(m_sliders.size()); ++i) {
        PanelSlider& slider = Slider(i);
        slider.SetId(IDC_SLIDER + i);
        AddChild(L"STATIC", L"", 0, IDC_SLIDER_TEXT + i, 6, kTop + kRow * i + 2, kLabelWidth, kRow - 4);
        slider.Create(m_hWnd, 6 + kLabelWidth, kTop + kRow * i, m_width - 12 - kLabelWidth, kRow, true, true);
        slider.SetTabStop(true);
        InsertElement(&slider);
    }
    AddRefusal(IDC_SLIDER_REFUSE);
    ShowValues();
}

void SliderPanel::ShowValues() {
    for (PanelSlider& slider : m_sliders) {
        slider.SetValue(Value(slider), false);
        Show(slider, slider.GetValue());
    }
}

double& SliderPanel::Value(const PanelSlider& slider) const {
    return Held().sliders[static_cast<std::size_t>(&slider - m_sliders.data())];
}

void SliderPanel::Show(const PanelSlider& slider, double value) {
    SetDlgItemTextW(m_hWnd, IDC_SLIDER_TEXT + slider.GetId() - IDC_SLIDER, slider.Text(value));
}

bool SliderPanel::Agrees(const PanelSlider& slider, double value) {
    if (!Asks(slider.WishFor(Value(slider)), value)) {
        Tell(KX_GetTranslation(L"The slider stays where it is", L"host").str());
        return false;
    }
    Show(slider, value);
    return true;
}

// Keys and the wheel only tell of this.
void SliderPanel::Dropped(PanelSlider& slider) {
    if (!Agrees(slider, slider.GetValue())) slider.SetValue(Value(slider), false);
    Show(slider, slider.GetValue());
}

LRESULT SliderPanel::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    HostPanel::OnMouseWheel(wParam, lParam);
    // The wheel belongs to the slider under the pointer, focus or not.
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    for (PanelSlider& slider : m_sliders) {
        RECT rect{};
        if (GetWindowRect(slider, &rect) && PtInRect(&rect, point)) return slider.HandleMouseWheel(wParam, lParam);
    }
    return 0;
}
