#pragma once

#include <controls/control_test.h>
#include <kxdevices/kx_simdevices.h>

#include <stdexcept>

namespace kx::test {

// 0, step, 2 * step ...
inline std::vector<double> Entries(int count, double step) {
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(i * step);
    return values;
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
