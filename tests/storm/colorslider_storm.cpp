// Storms against the colour slider: every type and layout, any tables and sizes, changed and ended by its host in the
// middle of things.
#include "storm.h"

#include <algorithm>
#include <cmath>

#include <kxdevui/light/devgui_colorslider.h>

namespace kx::test::storm {
namespace {

class Slider : public Telling<CKxDevUI_ColorSlider> {
public:
    std::vector<double> table;  // what Init was given, without what is no number

    Slider() {
        Init(120, 10, nullptr, 0, L"Lamp", false, L"%", L"%g", true, eColorSliderType_LineDraw,
             eColorSliderLayout_OneRowSpin, 40);
    }

    std::string Wrong() {
        double minimum = 0, maximum = 0;
        GetRange(&minimum, &maximum);
        if (!std::isfinite(GetPower() + minimum + maximum)) return "something held is no finite number";
        if (minimum > maximum && std::is_sorted(table.begin(), table.end())) return "the thumbs have crossed";
        if (m_editInProgress) return "nothing is being typed";
        if (m_hWnd && !GetDlgItem(m_hWnd, eColorSliderId_HPot)) return "there is no thumb";
        return "";
    }

protected:
    void OnPowerChanged(double& value, bool& veto) override {
        veto = std::fmod(value, 3) == 0;
        TellSpoilt(value);
    }
    void OnRangeChanged(double& minimum, double&) override { TellSpoilt(minimum); }
    void OnLeftButtonUp() override { Tell(); }

private:
    void TellSpoilt(double& value) {
        if (std::fmod(value, 7) == 0) value *= 1e305;
        Tell();
    }
};

struct Filling {
    std::vector<SColorSliderValue> table;
    EColorSliderType type;
    EColorSliderLayoutType layout;
    int width, height, editWidth;
    bool showEdit, bold;
    const wchar_t *name, *unit;
};

Filling AnyFilling(Random& random) {
    Filling f;
    f.table.resize(static_cast<std::size_t>(random.OneIn(40) ? 2000 : random.Below(30)));
    double value = random.Between(-20, 20);
    for (SColorSliderValue& each : f.table) {
        value = random.OneIn(60) ? AnyNumber(random) : value + random.Below(5);
        each = {value, random.OneIn(3), random.OneIn(5)};
    }
    f.type = static_cast<EColorSliderType>(random.Below(random.OneIn(9) ? 9 : 5));
    f.layout = static_cast<EColorSliderLayoutType>(random.Below(random.OneIn(9) ? 9 : 4));
    f.width = random.OneIn(5) ? random.Length() : 120;
    f.height = random.OneIn(5) ? random.Length() : 10;
    f.editWidth = random.OneIn(5) ? random.Length() : 40;
    f.showEdit = !random.OneIn(4);
    f.bold = random.OneIn(3);
    f.name = random.Of({L"", L"Lamp", L"R&D <svg>", L"A name that is longer than the control has room for"});
    f.unit = random.Of({L"", L"%", L"nm"});
    return f;
}

class ColorSliderSubject : public SubjectOf<Slider> {
protected:
    void Make(HWND parent) override { control_->Create(parent, 5, 5, -1, -1, true, true); }

    Step Own(Random& random) override {
        const double a = AnyNumber(random), b = AnyNumber(random);
        const int number = random.OneIn(5) ? random.AnyInt() : random.Between(-3, 45);
        const bool on = random.OneIn(2);
        // For a change to come.
        filling_ = AnyFilling(random);
        switch (random.Below(13)) {
        case 0:
        case 1: return {"filling", [this] { Fill(filling_); }};
        case 2: return {"a rainbow", [=, this] { control_->SetHorizontalRainbow(a, b); }};
        case 3: return {"rows", [=, this] { control_->SetVerticalRainbow(a, b, number, a); }};
        case 4: return {"a gradient", [=, this] { control_->SetGradient(static_cast<unsigned>(number), 0xFFFFFF); }};
        case 5: return {"a line", [=, this] { control_->SetLineDrawSliderVorColors(number, 37, on); }};
        case 6:
        case 7: return {"a power", [=, this] { control_->SetPower(a, on); }};
        case 8:
        case 9: return {"a range", [=, this] { control_->SetRange(a, b); }};
        case 10: return {"a move", [=, this] { control_->CalculateMove(number), control_->SetPointColor(number); }};
        case 11:
            return {"the column", [=, this] { control_->SetHPotLeft(number), control_->SetHPotLeftRange(number); }};
        default: return {"a name", [=, this] { control_->SetName(on ? L"&" : L"Lamp 2"); }};
        }
    }

    std::string CheckOwn() override { return control_->Wrong(); }

    void Change(int n) override {
        if (n % 2) {
            Fill(filling_);
        } else {
            control_->SetPower(n, true), control_->SetRange(n, 2);
        }
    }

private:
    // A copy: what is filled in may tell the host, who fills in something else.
    void Fill(Filling f) {
        control_->table.clear();
        for (const auto& each : f.table) {
            if (std::isfinite(each.value)) control_->table.push_back(each.value);
        }
        control_->Init(f.width, f.height, f.table.data(), static_cast<int>(f.table.size()), f.name, f.bold, f.unit,
                       L"%g", f.showEdit, f.type, f.layout, f.editWidth);
    }

    Filling filling_{};
};

TEST(ColorSliderStorm, Survives) { Rage<ColorSliderSubject>("colour slider"); }

}  // namespace
}  // namespace kx::test::storm
