// The controls of what stands in the light.
#include <windows.h>

#include <kxdevui/light/devgui_lightiris.h>
#include <kxdevui/light/devgui_lightiris2.h>
#include <kxdevui/light/devgui_lightnd.h>
#include <kxdevui/light/devgui_lightslider.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

struct Iris : CKxDevUI_LightIris {
    Iris() {
        SetHasShutter(true);
        SetApertures({5, 10, 20, 30, 40, 60, 80, 100}, eKxIrisUnit_Percent);
    }
};

struct Irises : CKxDevUI_LightIris2 {
    Irises() {
        for (const EKxDiaphragm each : {eKxDiaphragm_Field, eKxDiaphragm_Aperture})
            SetApertures(each, {5, 10, 20, 30, 40, 60, 80, 100}, eKxIrisUnit_Percent, 0.9);
    }
};

struct ND : CKxDevUI_LightND {
    ND() { SetHasShutter(true), SetTransmissions(0, {1, 0.5, 0.25, 0.125}); }
};

struct Lamp : CKxDevUI_LightSlider {
    Lamp() { SetHasShutter(true), SetPreset(0, 20), SetIntensity(20); }
};

const Rows s_rows{{CreationRow<Iris>("light iris"), CreationRow<Irises>("light irises"),
                   CreationRow<ND>("neutral density"), CreationRow<Lamp>("lamp")}};

}  // namespace
}  // namespace kx::bench
