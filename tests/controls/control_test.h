// What the tests of all controls share: a parent that records, steps over what is to be seen, everything put back.
#pragma once

#include <bench/asking.h>
#include <bench/bench.h>
#include <kxbaseui/kx_bitmappool.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/framework/devgui.h>
#include <kxsystem/kx_locale.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace kx::test {

inline constexpr double kInf = std::numeric_limits<double>::infinity(), kNaN = std::numeric_limits<double>::quiet_NaN();

struct ControlTest : testing::Test {
    ~ControlTest() override {
        CKxGUILayoutManager::SetGuiZoom(1);
        KX_SetColorScheme(eKxColorScheme_System);
        CKxLocale::SetModuleLangId(0);
        KX_SetMessageBoxHandler(nullptr, nullptr);
    }
    std::string Told() { return parent.Record().Take(); }
    virtual std::string See() { return Told(); }
    void Play(const std::vector<Step>& steps) {
        kx::test::Play(steps, [this] { return See(); });
    }

    RecordingParent parent;
};

}  // namespace kx::test
