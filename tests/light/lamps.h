// What the tests of lights share.
#pragma once

#include <bench/bench.h>
#include <bench/slot.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/framework/devgui.h>

#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

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

inline std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
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
    EKxShutterType GetShutterType() const override {
        if (fails) throw std::runtime_error("gone");
        return CKxSimShutter::GetShutterType();
    }
    CKxStringW title;
    bool fails = false;
};

// A shutter that ends, changes or throws in each of its callbacks, which it does as its member `act`.
template <class Shutter>
void BearCallbacks(IKxDeviceShutter& device, const std::vector<std::function<void(Shutter&)>>& ways) {
    for (const auto& way : ways) {
        for (int what = 0; what < 9; ++what) {
            RecordingParent parent;
            auto shutter = std::make_unique<Shutter>(&parent.Record());
            shutter->Make(parent.Window());
            shutter->Reread(device);
            parent.Record().Clear();
            shutter->act = [&] {
                switch (what) {
                case 0: shutter.reset(); break;
                case 1: shutter->Destroy(); break;
                case 2: DestroyWindow(parent.Window()); break;
                case 3: shutter->DestroyControls(); break;
                case 4: shutter->CreateControls(); break;
                case 5: shutter->Make(parent.Window()); break;
                case 6: shutter->Reread(device); break;
                case 7: shutter->SetEnabled(false); break;
                default: throw std::runtime_error("host");
                }
            };
            way(*shutter);
            Pump();
            EXPECT_TRUE(!shutter || !HWND{*shutter} || IsWindow(*shutter)) << what;
            EXPECT_FALSE(parent.Record().Entries().empty());
        }
    }
}

}  // namespace kx::test
