// Storms against the slider: every type, any values, ended by its host in the middle of things.
#include "storm.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include <kxdevui/controls/devgui_hpot.h>

namespace kx::test::storm {
namespace {

class Slider : public CKxDevUI_HPot {
public:
    std::function<void()> told;  // by the callbacks that tell the parent nothing; may end this object
    std::string Wrong() const {
        if (!std::isfinite(m_held.value)) return "the held value is no finite number";
        const auto count = static_cast<int>(m_scale.values.size());
        if (m_held.index < 0 || (count > 0 && m_held.index >= count)) return "the current entry is not in the list";
        if (m_hWnd && m_Instances.at(m_hWnd) != this) return "the window belongs to another slider";
        RECT client{}, thumb = ThumbRect();
        GetClientRect(m_hWnd, &client);
        const bool inside = thumb.left >= 0 && thumb.right <= client.right && thumb.bottom <= client.bottom;
        return m_hWnd && !inside ? "the thumb lies outside of the window" : "";
    }

protected:
    void OnLeftButtonUp() override { Tell(); }
    void OnHoverForPad() override { Tell(); }
    void UnHoverForPad() override { Tell(); }

#ifdef KX_PLANT_FAULT
    // The planted fault: a bitmap a scale that nobody deletes.
    HBITMAP CreateLinearBitmap(bool enabled) override {
        CreateScaleBitmap(enabled);
        return CreateScaleBitmap(enabled);
    }
#endif

private:
    void Tell() {
        if (const auto tell = told) tell();
    }
};

double AnyNumber(Random& random) {
    if (!random.OneIn(8)) return random.Between(-40, 240) / 2.0;
    return random.Of({0.0, 1e-300, -1e300, DBL_MAX, -DBL_MAX, std::numeric_limits<double>::infinity(),
                      std::numeric_limits<double>::quiet_NaN()});
}

std::vector<double> AnyList(Random& random) {
    std::vector<double> list(static_cast<std::size_t>(random.OneIn(30) ? 2000 : random.Below(9)));
    for (double& value : list)
        value = random.OneIn(40) ? AnyNumber(random) : random.Between(-10, 200);
    return list;
}

class SliderSubject : public Subject {
public:
    void Create(RecordingParent& parent) override {
        parent_ = &parent;
        parent.Answer(WM_HSCROLL, [this](WPARAM wParam, LPARAM) { return End(), wParam % 3; });
        if (!slider_) slider_ = std::make_unique<Slider>();
        slider_->told = [this] { End(); };
        slider_->Create(parent.Window(), 5, 5, 220, 40, true, true);
    }

    CKxDevUI_Base* Control() override { return slider_.get(); }

    std::vector<Target> Windows() override {
        if (!slider_ || !HWND{*slider_}) return {};
        return {{*slider_, true}};
    }

    Step Operate(Random& random) override {
        const double a = AnyNumber(random), b = AnyNumber(random), c = AnyNumber(random);
        const int number = random.OneIn(5) ? random.AnyInt() : random.Between(-3, 12);
        const bool on = random.OneIn(2);
        switch (random.Below(16)) {
        case 0: return {"a range", "", [=, this] { slider_->InitValues(a, b, c, number, 0); }};
        case 1: return {"a list", "", [this, list = AnyList(random)] { TakeList(list); }};
        case 2: return {"regions", "", [this, a, list = AnyList(random)] { TakeRegions(list, a); }};
        case 3: return {"a type", "", [=, this] { slider_->SetType(static_cast<eHPotType>(number)); }};
        case 4:
        case 5: return {"a value", "", [=, this] { slider_->SetValue(a, on); }};
        case 6: return {"a marker", "", [=, this] { slider_->SetMarker(a, number, on); }};
        case 7: return {"granularity", "", [=, this] { slider_->SetMouseWheelGranularity(number, -number, 3); }};
        case 8: return {"a size", "", [=, this, cx = random.Length()] { slider_->SetSize(cx, 40, number); }};
        case 9: return {"updating", "", [=, this] { slider_->Update(on, !on, true); }};
        case 10: return {"looks", "", [=, this] { slider_->SetTransparent(on), slider_->SetHover(!on); }};
        case 11: return {"the filter's mode", "", [=, this] { slider_->SetbAOTF(on); }};
        case 12: return {"creating again", "", [this] { Create(*parent_); }};
        case 13: return {"a copy", "", [this] { const Slider copy(*slider_); }};
        default: return {"an end to come", "", [this, on] { PlanEnd(on); }};
        }
    }

    std::string Check() override {
        if (!wrong_.empty()) return wrong_;
        return slider_ ? slider_->Wrong() : "";
    }

    void Destroy() override {
        end_ = nullptr;
        if (slider_) slider_->Destroy();
        slider_.reset();
    }

private:
    void TakeList(std::vector<double> list) { slider_->InitValues(list.data(), static_cast<int>(list.size()), 1); }
    void TakeRegions(std::vector<double> list, double step) {
        slider_->InitValues(list.data(), list.data(), static_cast<int>(list.size()), step);
    }

    // Comes with the next callback or notification, in the middle of whatever causes it.
    void PlanEnd(bool object) {
        end_ = [this, object] {
            parent_->Record().Clear();
            if (object) {
                slider_.reset();
            } else {
                slider_->Destroy();
            }
            if (!parent_->Record().Entries().empty()) wrong_ = "the parent was told of a destruction";
        };
    }
    void End() {
        if (const auto end = std::exchange(end_, nullptr); end && slider_) end();
    }

    RecordingParent* parent_ = nullptr;
    std::unique_ptr<Slider> slider_;
    std::function<void()> end_;
    std::string wrong_;
};

TEST(SliderStorm, Survives) {
    Rage("slider", [] { return std::make_unique<SliderSubject>(); });
}

}  // namespace
}  // namespace kx::test::storm
