// The colour slider, of a value and of a range: every type and layout, any tables and sizes.
#include "subject.h"

#include <algorithm>
#include <cmath>

#include <kxdevui/light/devgui_colorslider.h>

namespace kx::test {
namespace {

struct Filling {
    std::vector<SColorSliderValue> table;
    EColorSliderType type = eColorSliderType_LineDraw;
    EColorSliderLayoutType layout = eColorSliderLayout_OneRowSpin;
    int width = 120, height = 10, editWidth = 40;
    bool showEdit = true, bold = false;
    const wchar_t *name = L"Lamp", *unit = L"%";
};

struct Slider : Telling<CKxDevUI_ColorSlider> {
    std::vector<double> table;  // what Init was given, without what is no number

    // A copy: what is filled in may tell the host, who fills in something else.
    void Fill(Filling f) {
        table.clear();
        for (const auto& each : f.table) {
            if (std::isfinite(each.value)) table.push_back(each.value);
        }
        Init(f.width, f.height, f.table.data(), static_cast<int>(f.table.size()), f.name, f.bold, f.unit, L"%g",
             f.showEdit, f.type, f.layout, f.editWidth);
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

    void OnPowerChanged(double& value, bool& veto) override {
        veto = std::fmod(value, 3) == 0;
        Spoil(value);
        Tell("OnPowerChanged");
    }
    void OnRangeChanged(double& minimum, double&) override { Spoil(minimum), Tell("OnRangeChanged"); }
    void OnLeftButtonUp() override { Tell("OnLeftButtonUp"); }

    static void Spoil(double& value) {
        if (std::fmod(value, 7) == 0) value *= 1e305;
    }
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

struct ColorSliderSubject : SubjectOf<Slider> {
    ColorSliderSubject(EColorSliderType type, EColorSliderLayoutType layout) : type_(type), layout_(layout) {}

    std::vector<std::wstring> OwnTexts() const override {
        return {L"Lamp", L"  Lamp", L"R&D <svg>", L"  R&D <svg>", L"A name", L"  A name", L"nm"};
    }
    std::vector<Exception> Exceptions() const override {
        return {{Law::Disabled, "by its window", "what is in a container follows SetEnabled"},
                {Law::Zoom, "the column", "is given in pixels of the screen"},
                {Law::Later, "the column", "moves parts over the name"},
                {Law::Later, "a name", "is shown in the room of another"},
                {Law::Zoom, "a quiet power", "asks for no redraw"},
                {Law::Redraw, "a quiet power", "asks for no redraw"},
                {Law::Redraw, "a power while disabled", "a line is drawn when it is enabled"}};
    }

    // Around the point four pixels are free at any zoom.
    int Coarseness() const override { return layout_ == eColorSliderLayout_ColorPoint ? 110 : 36; }

    void Change(int n) override {
        Random random(static_cast<std::uint64_t>(n));
        if (n % 2) {
            control_->Fill(AnyFilling(random));
        } else {
            control_->SetPower(n, true), control_->SetRange(n, 2);
        }
    }

    void Make(HWND parent) override {
        if (!filled_) {
            Filling filling;
            for (int value = 0; value <= 100; value += 5)
                filling.table.push_back({double(value), value % 20 == 0, value % 40 == 0});
            filling.type = type_, filling.layout = layout_;
            control_->Fill(filling);
        }
        control_->Create(parent, 5, 5, -1, -1, true, true);
        if (control_) control_->SetPower(40, true), control_->SetRange(20, 80);
    }

    std::vector<Operation> MakeOperations() override {
        const auto number = [](Random& r) { return r.OneIn(5) ? r.AnyInt() : r.Between(-3, 45); };
        const auto fill = [this](Random& r) { filled_ = true, control_->Fill(AnyFilling(r)); };
        return {
            {"a life of requests", [this](Random& r) { TellAnyActivity(*control_, r); }},
            {"readings", [this](Random& r) { TellAnyReadings(*control_, r); }},
            {"a filling", fill},
            {"another filling", fill},
            {"a rainbow", Do(&Slider::SetHorizontalRainbow, AnyNumber, AnyNumber)},
            {"rows", Do(&Slider::SetVerticalRainbow, AnyNumber, AnyNumber, number, AnyNumber)},
            {"a gradient", Do(&Slider::SetGradient, number, number)},
            {"a line", [=, this](Random& r) { control_->SetLineDrawSliderVorColors(number(r), 37, r.OneIn(2)); }},
            {"a power", [this](Random& r) { control_->SetPower(AnyNumber(r), true); }},
            {"a quiet power", [this](Random& r) { control_->SetPower(AnyNumber(r), false); }},
            {"a range", Do(&Slider::SetRange, AnyNumber, AnyNumber)},
            {"a move", Do(&Slider::CalculateMove, number)},
            {"a point", Do(&Slider::SetPointColor, number)},
            {"the column",
             [=, this](Random& r) { control_->SetHPotLeft(number(r)), control_->SetHPotLeftRange(number(r)); }},
            {"a name", Do(&Slider::SetName, OneOf({L"&", L"Lamp 2"}))},
        };
    }

    std::string CheckOwn() override { return control_->Wrong(); }

    EColorSliderType type_;
    EColorSliderLayoutType layout_;
    bool filled_ = false;
};

const Registered<ColorSliderSubject> value("colour slider", eColorSliderType_LineDraw, eColorSliderLayout_OneRowSpin);
const Registered<ColorSliderSubject> rainbow("colour slider with a rainbow", eColorSliderType_HorizontalRainbow,
                                             eColorSliderLayout_ColorPoint);
const Registered<ColorSliderSubject> range("colour slider of a range", eColorSliderType_Range,
                                           eColorSliderLayout_OneRowSpin);

}  // namespace
}  // namespace kx::test
