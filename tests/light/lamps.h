// What the tests of the shutters share.
#pragma once

#include <bench/bench.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/framework/devgui.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

namespace kx::test {

struct Zoom {
    explicit Zoom(double zoom) { CKxGUILayoutManager::SetGuiZoom(zoom); }
    ~Zoom() { CKxGUILayoutManager::SetGuiZoom(1); }
};

inline std::string PlaceOf(HWND window) {
    const RECT r = RectInParent(window);
    return !window ? ""
                   : std::to_string(r.left) + " " + std::to_string(r.top) + " " + std::to_string(r.right - r.left) +
                         " " + std::to_string(r.bottom - r.top);
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
