#include "subject.h"

#include <cmath>

#include <kxdevui/controls/devgui_hpot.h>

namespace kx::test {
namespace {

struct Slider : Telling<CKxDevUI_HPot> {
    using CKxDevUI_HPot::ThumbRect;

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

    void OnLeftButtonUp() override { Tell("OnLeftButtonUp"); }
    void OnHoverForPad() override { Tell("OnHoverForPad"); }
    void UnHoverForPad() override { Tell("UnHoverForPad"); }

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

struct SliderSubject : SubjectOf<Slider> {
    std::vector<Exception> Exceptions() const override {
        return {{Law::Silence, "updating", "Update asks where it is told to notify"},
                {Law::Zoom, "a size", "gives the window that many pixels, whatever the zoom"},
                {Law::Zoom, "a type", "SetType stores it and nothing else: the next zoom places the thumb by it"}};
    }
    // The upper part has the thumb, the lower one ticks and digits.
    std::vector<RECT> Parts() override {
        RECT thumb = control_->ThumbRect(), scale{};
        GetClientRect(Window(), &scale);
        scale.top = thumb.bottom;
        return {thumb, scale};
    }

    void Make(HWND parent) override {
        Hear({WM_HSCROLL});
        control_->SetTitle(L"brightness");
        control_->Create(parent, 5, 5, 220, 40, true, true);
        control_->SetValue(30, false);
    }

    std::vector<Operation> MakeOperations() override {
        return {
            {"a value", Do(&Slider::SetValue, AnyNumber, Flag)},
            {"a range",
             [this](Random& r) {
                 const double a = AnyNumber(r), b = AnyNumber(r);
                 control_->InitValues(a, b, AnyNumber(r), r.Between(-3, 12), 0);
             }},
            {"a list",
             [this](Random& r) {
                 std::vector<double> list = AnyList(r);
                 control_->InitValues(list.data(), static_cast<int>(list.size()), 1);
             }},
            {"regions",
             [this](Random& r) {
                 std::vector<double> list = AnyList(r);
                 control_->InitValues(list.data(), list.data(), static_cast<int>(list.size()), AnyNumber(r));
             }},
            {"a type", Do(&Slider::SetType, Within(-3, 12))},
            {"a marker", Do(&Slider::SetMarker, AnyNumber, Within(-3, 12), Flag)},
            {"a marker's use", Do(&Slider::SetMarkerUsed, Flag)},
            {"granularity", Do(&Slider::SetMouseWheelGranularity, AnyInt, Within(-3, 12), Within(0, 3))},
            {"a size", Do(&Slider::SetSize, Length, Within(40, 40), Within(-3, 12))},
            {"updating", [this](Random& r) { control_->Update(r.OneIn(2), r.OneIn(2), true); }},
            {"looks", [this](Random& r) { control_->SetTransparent(r.OneIn(2)), control_->SetHover(r.OneIn(2)); }},
            {"readings", [this](Random& r) { TellAnyReadings(*control_, r); }},
            {"the filter's mode", Do(&Slider::SetbAOTF, Flag)},
        };
    }

    std::string CheckOwn() override { return control_->Wrong(); }
};

const Registered<SliderSubject> slider("slider");

}  // namespace
}  // namespace kx::test
