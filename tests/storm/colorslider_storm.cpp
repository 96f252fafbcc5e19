// Storms against the colour slider: every type and layout, any tables and sizes, changed and ended by its host in the
// middle of things.
#include "storm.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include <kxdevui/light/devgui_colorslider.h>

namespace kx::test::storm {
namespace {

class Slider : public CKxDevUI_ColorSlider {
public:
    std::function<void(double&)> told;  // by each callback; may end this object
    std::vector<double> table;          // what Init was given, without what is no number

    std::string Wrong() {
        double minimum = 0, maximum = 0;
        GetRange(&minimum, &maximum);
        if (!std::isfinite(GetPower() + minimum + maximum)) return "something held is no finite number";
        if (minimum > maximum && std::is_sorted(table.begin(), table.end())) return "the thumbs have crossed";
        if (m_editInProgress) return "nothing is being typed";
        const HWND thumb = GetDlgItem(m_hWnd, eColorSliderId_HPot);
        if (m_hWnd && !thumb) return "there is no thumb";
        return "";
    }

protected:
    void OnPowerChanged(double& value, bool& veto) override {
        veto = std::fmod(value, 3) == 0;
        Tell(value);
    }
    void OnRangeChanged(double& minimum, double&) override { Tell(minimum); }
    void OnLeftButtonUp() override {
        double none = 0;
        Tell(none);
    }

private:
    void Tell(double& value) {
        if (const auto tell = told) tell(value);
    }
};

double AnyNumber(Random& random) {
    if (!random.OneIn(8)) return random.Between(-40, 240) / 2.0;
    return random.Of({0.0, 1e-300, -1e300, DBL_MAX, -DBL_MAX, std::numeric_limits<double>::infinity(),
                      std::numeric_limits<double>::quiet_NaN()});
}

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

class ColorSliderSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        if (!slider_) {
            slider_ = std::make_unique<Slider>();
            slider_->Init(120, 10, nullptr, 0, L"Lamp", false, L"%", L"%g", true, eColorSliderType_LineDraw,
                          eColorSliderLayout_OneRowSpin, 40);
        }
        slider_->told = [this](double& value) { Told(value); };
        slider_->Create(parent.Window(), 5, 5, -1, -1, true, true);
    }

    CKxDevUI_Base* Control() override { return slider_.get(); }

    std::vector<Target> Windows() override {
        if (!slider_ || !HWND{*slider_}) return {};
        std::vector<Target> targets{{*slider_, true}};
        for (const int id : {10000, 10000, 10000, 10001, 10005, 10004, 10003, 10002}) {
            if (const HWND part = GetDlgItem(*slider_, id))
                targets.push_back({part, id == 10000 || id == 10001 || id == 10005});
        }
        return targets;
    }

    Step Operate(Random& random) override {
        const double a = AnyNumber(random), b = AnyNumber(random);
        const int number = random.OneIn(5) ? random.AnyInt() : random.Between(-3, 45);
        const bool on = random.OneIn(2);
        switch (random.Below(16)) {
        case 0:
        case 1: return {"filling", "", [this, f = AnyFilling(random)] { Fill(f); }};
        case 2: return {"a rainbow", "", [=, this] { slider_->SetHorizontalRainbow(a, b); }};
        case 3: return {"rows", "", [=, this] { slider_->SetVerticalRainbow(a, b, number, a); }};
        case 4: return {"a gradient", "", [=, this] { slider_->SetGradient(static_cast<unsigned>(number), 0xFFFFFF); }};
        case 5: return {"a line", "", [=, this] { slider_->SetLineDrawSliderVorColors(number, 37, on); }};
        case 6:
        case 7: return {"a power", "", [=, this] { slider_->SetPower(a, on); }};
        case 8:
        case 9: return {"a range", "", [=, this] { slider_->SetRange(a, b); }};
        case 10: return {"a move", "", [=, this] { slider_->CalculateMove(number), slider_->SetPointColor(number); }};
        case 11:
            return {"the column", "", [=, this] { slider_->SetHPotLeft(number), slider_->SetHPotLeftRange(number); }};
        case 12: return {"a name", "", [=, this] { slider_->SetName(on ? L"&" : L"Lamp 2"); }};
        case 13: return {"creating again", "", [this] { Create(*parent_); }};
        default: return {"what is to come", "", [this, number, f = AnyFilling(random)] { Plan(number, f); }};
        }
    }

    std::string Check() override {
        if (!wrong_.empty()) return wrong_;
        return slider_ ? slider_->Wrong() : "";
    }

    void Destroy() override {
        next_ = nullptr;
        if (slider_) slider_->Destroy();
        slider_.reset();
    }

private:
    void Fill(Filling f) {
        slider_->table.clear();
        for (const auto& each : f.table) {
            if (std::isfinite(each.value)) slider_->table.push_back(each.value);
        }
        slider_->Init(f.width, f.height, f.table.data(), static_cast<int>(f.table.size()), f.name, f.bold, f.unit,
                      L"%g", f.showEdit, f.type, f.layout, f.editWidth);
    }

    // Comes with the next callback, in the middle of whatever causes it.
    void Plan(int what, const Filling& filling) {
        next_ = [=, this] {
            switch (what % 4) {
            case 0: End([this] { slider_.reset(); }); break;
            case 1: End([this] { slider_->Destroy(); }); break;
            case 2: slider_->SetPower(what, true), slider_->SetRange(what, 2); break;
            default: Fill(filling); break;
            }
        };
    }
    void End(const std::function<void()>& end) {
        parent_->Record().Clear();
        end();
        if (!parent_->Record().Entries().empty()) wrong_ = "the parent was told of a destruction";
    }
    void Told(double& value) {
        if (std::fmod(value, 7) == 0) value = value * 1e305;
        if (const auto next = std::exchange(next_, nullptr); next && slider_) next();
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<Slider> slider_;
    std::function<void()> next_;
    std::string wrong_;
};

TEST(ColorSliderStorm, Survives) {
    Rage("colorslider", [] { return std::make_unique<ColorSliderSubject>(); });
}

}  // namespace
}  // namespace kx::test::storm
