// Storms against the slider: every type, any values, ended by its host in the middle of things.
#include "storm.h"

#include <cmath>

#include <kxdevui/controls/devgui_hpot.h>

namespace kx::test::storm {
namespace {

class Slider : public Telling<CKxDevUI_HPot> {
public:
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
};

std::vector<double> AnyList(Random& random) {
    std::vector<double> list(static_cast<std::size_t>(random.OneIn(30) ? 2000 : random.Below(9)));
    for (double& value : list)
        value = random.OneIn(40) ? AnyNumber(random) : random.Between(-10, 200);
    return list;
}

class SliderSubject : public SubjectOf<Slider> {
protected:
    void Make(HWND parent) override {
        Hear({WM_HSCROLL});
        control_->Create(parent, 5, 5, 220, 40, true, true);
    }

    Step Own(Random& random) override {
        const double a = AnyNumber(random), b = AnyNumber(random), c = AnyNumber(random);
        const int number = random.OneIn(5) ? random.AnyInt() : random.Between(-3, 12);
        const bool on = random.OneIn(2);
        switch (random.Below(12)) {
        case 0: return {"a range", [=, this] { control_->InitValues(a, b, c, number, 0); }};
        case 1: return {"a list", [this, list = AnyList(random)] { TakeList(list); }};
        case 2: return {"regions", [this, a, list = AnyList(random)] { TakeRegions(list, a); }};
        case 3: return {"a type", [=, this] { control_->SetType(static_cast<eHPotType>(number)); }};
        case 4: return {"a marker", [=, this] { control_->SetMarker(a, number, on); }};
        case 5: return {"granularity", [=, this] { control_->SetMouseWheelGranularity(number, -number, 3); }};
        case 6: return {"a size", [=, this, cx = random.Length()] { control_->SetSize(cx, 40, number); }};
        case 7: return {"updating", [=, this] { control_->Update(on, !on, true); }};
        case 8: return {"looks", [=, this] { control_->SetTransparent(on), control_->SetHover(!on); }};
        case 9: return {"the filter's mode", [=, this] { control_->SetbAOTF(on); }};
        default: return {"a value", [=, this] { control_->SetValue(a, on); }};
        }
    }

    std::string CheckOwn() override { return control_->Wrong(); }

private:
    void TakeList(std::vector<double> list) { control_->InitValues(list.data(), static_cast<int>(list.size()), 1); }
    void TakeRegions(std::vector<double> list, double step) {
        control_->InitValues(list.data(), list.data(), static_cast<int>(list.size()), step);
    }
};

TEST(SliderStorm, Survives) { Rage<SliderSubject>("slider"); }

}  // namespace
}  // namespace kx::test::storm
