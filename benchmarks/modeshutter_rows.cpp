// The mode shutter's updates against setting the same windows anew, and its creation.
#include <windows.h>

#include <kxbaseui/kx_fonts.h>
#include <kxdevices/kx_simdevices.h>
#include <kxdevui/light/devgui_modeshutter.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

constexpr SIZE kSize{300, 36};

struct Smart : CKxSimShutter {
    Smart() : CKxSimShutter(L"Smart", eKxShutterType_Epi, {5, 10, 20, 30, 40, 60, 80, 100}) {
        CKxDeviceRegistry::Add(*this);
    }
};

class Panel : public CKxDevUI_ModeShutter {
public:
    void Make(HWND parent, unsigned id) {
        Init(id);
        Require(Create(parent, 0, 0, kSize.cx, kSize.cy, true, true) && m_modeList && HWND{m_slider},
                "there is no mode shutter");
    }
};

// Against a panel that writes what it is told, changed or not.
Ratio UpdateUnchanged() {
    const Frame frame;
    Smart device;
    Panel row;
    row.Make(frame, device.GetLogDevId());
    const HWND list = MakeChild(frame, Child(0));
    return Measure([&] { row.Update(device.GetLogDevId(), false, true, true, true); },
                   [&] { SetWindowTextW(list, L"Fast"), SetWindowTextW(list, L"100"); });
}

const Rows s_rows{
    {{"mode shutter, update with nothing changed", "writing mode and aperture anew", 0.05, UpdateUnchanged}}};

}  // namespace
}  // namespace kx::bench
