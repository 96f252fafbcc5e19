#pragma once

#include <controls/control_test.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_colorslider.h>

#include <stdexcept>

namespace kx::test {

// 0, step, 2 * step ...
inline std::vector<double> Entries(int count, double step) {
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(i * step);
    return values;
}

// With a mark at the values that are multiples of `marks`, a label at those of twice that; none for 0.
inline void Fill(CKxDevUI_ColorSlider& slider, const std::vector<double>& values, const wchar_t* name, double marks,
                 EColorSliderType type, EColorSliderLayoutType layout = eColorSliderLayout_OneRow, int width = 200) {
    std::vector<SColorSliderValue> table;
    const auto isAt = [](double value, double step) { return step > 0 && std::fmod(value, step) == 0; };
    for (const double value : values)
        table.push_back({value, isAt(value, marks), isAt(value, 2 * marks)});
    slider.Init(width, 10, table.data(), static_cast<int>(table.size()), name, false, L"mW", L"%g", true, type, layout,
                40);
}

// A registered lamp that opens and closes at once, and may fail.
struct Lamp : CKxSimShutter {
    template <class... Args>
    explicit Lamp(Args&&... args) : CKxSimShutter(L"Lamp & shutter", std::forward<Args>(args)...) {
        SetSpeed(0);
        CKxDeviceRegistry::Add(*this);
    }
    void Open(bool open) { SetOpen(open), Tick(); }
    CKxStringW GetGUIText(int context) const override {
        if (fails) throw std::runtime_error("gone");
        return context == 6 ? title : CKxSimShutter::GetGUIText(context);
    }
    CKxStringW title;
    bool fails = false;
};

}  // namespace kx::test
