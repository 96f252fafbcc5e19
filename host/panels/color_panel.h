// Colour sliders: a column of laser lines in their own colours, a lamp and a wavelength, a line with its colour before
// the name, and the band that the detector takes.
#pragma once

#include <array>

#include <kxdevui/light/devgui_colorslider.h>

#include "../host_panel.h"

class ColorPanel;

// A colour slider that tells its panel what the user wants, and lets it refuse.
class PanelColorSlider : public CKxDevUI_ColorSlider {
public:
    // `told` says with a %g what the status line tells of a value, or with two of a range.
    void Belong(ColorPanel& panel, const wchar_t* name, const wchar_t* told);
    // The light of a lamp or a line, which shows it.
    void Shine(double power);

protected:
    void OnPowerChanged(double& value, bool& veto) override;
    void OnRangeChanged(double& minimum, double& maximum) override;
    void OnLeftButtonUp() override;

private:
    ColorPanel* m_panel = nullptr;
    const wchar_t* m_name = L"";
    const wchar_t* m_told = L"";
};

class ColorPanel : public HostPanel {
public:
    ColorPanel() : HostPanel(L"Light") {}
    void Fill();
    // Once the panel has its size.
    void Align();
    PanelColorSlider& Slider(int index) { return m_sliders[static_cast<std::size_t>(index)]; }

    void TurnLightOff() override;
    void ShowValues() override;

    // Whether the host agrees to a power, or to a band, which is then held and told.
    bool Agrees(PanelColorSlider& slider, double power, const CKxStringW& told);
    bool AgreesToBand(double from, double to, const CKxStringW& told);

protected:
    bool OnUser(int, int, HWND) override { return false; }
    LRESULT OnMouseWheel(WPARAM wParam, LPARAM lParam) override;

private:
    void FillColumn();
    void FillLine();
    void FillBand();
    void Add(PanelColorSlider& slider, int x, int y);
    double& Power(const PanelColorSlider& slider) const;
    bool Grants(const Asked& asked, const CKxStringW& told);

    // Six in the column, then the line and the band.
    static constexpr std::size_t Column = 6;
    std::array<PanelColorSlider, 8> m_sliders;
};
