// One slider of each type.
#pragma once

#include <array>

#include <kxdevui/controls/devgui_hpot.h>

#include "../host_panel.h"

class SliderPanel;

// A slider that tells its panel what the user wants, and lets it refuse.
class PanelSlider : public CKxDevUI_HPot {
public:
    void Init(SliderPanel& panel, const wchar_t* name, const wchar_t* format);
    // Name and value, translated.
    CKxStringW Text(double value) const;
    // What its value is asked by.
    Wish WishFor(double& held) const { return ValueOf(m_name, m_name, held, m_format); }

protected:
    void OnHPotChange(double& value, bool& skip) override;
    void OnHPotDragDrop() override;

private:
    SliderPanel* m_panel = nullptr;
    const wchar_t* m_name = L"";
    const wchar_t* m_format = L"%g";  // of the value with its unit
};

class SliderPanel : public HostPanel {
public:
    SliderPanel() : HostPanel(L"Sliders") {}
    void Fill();
    void ShowValues() override;
    PanelSlider& Slider(int index) { return m_sliders[static_cast<std::size_t>(index)]; }

    // The user moves a slider to `value`: whether the host agrees. A drop says that it is done.
    bool Agrees(const PanelSlider& slider, double value);
    void Dropped(PanelSlider& slider);

protected:
    bool OnUser(int, int, HWND) override { return false; }
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    double& Value(const PanelSlider& slider) const;
    void Show(const PanelSlider& slider, double value);

    std::array<PanelSlider, 4> m_sliders;
};
