// What every position panel bears from its host, and that it leaves nothing behind.
#include "panel_test.h"

#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

#include <memory>

namespace {

using namespace kx::test;

// Two devices to be shown, and the second position's button.
struct Nosepieces {
    using Panel = Asking<CKxDevUI_Nosepiece>;
    static constexpr int kSecond = 10201;
    CKxSimNosepiece few{L"Few", {2, {L"Plan 10x/0.25", L"10x", L""}}}, many{L"Many", {5, {L"Plan", L"60x", L""}}};
    static void Show(Panel& panel, IKxDeviceNosepiece& device) { panel.Update(&device, true, true, true, true, false); }
};

struct Wheels {
    using Panel = Asking<CKxDevUI_FilterWheel>;
    static constexpr int kSecond = 10202;
    Registered<CKxSimFilterChanger> few{L"Few", Names(2, L"525/50"), SKxSimFilterChangerKind{}};
    Registered<CKxSimFilterChanger> many{L"Many", Names(12, L""), SKxSimFilterChangerKind{}};
    static void Show(Panel& panel, IKxDeviceFilterChanger& device) { panel.Update(&device, true, true, true); }
};

struct Switchers {
    using Panel = Asking<CKxDevUI_Switcher>;
    static constexpr int kSecond = 10202;
    Registered<CKxSimLaserOutput> few{L"Few", Names(2, L"A"), true}, many{L"Many", Names(5, L"A"), true};
    static void Show(Panel& panel, IKxDeviceLaserOutput& device) { panel.Update(&device, true, true, true); }
};

template <class Kind>
class PositionPanelLife : public testing::Test {
protected:
    void Open(typename Kind::Panel& panel) {
        panel.Create(parent.Window(), 0, 0, -1, -1, true, true);
        Kind::Show(panel, devices.few);
    }
    RecordingParent parent;
    Kind devices;
};

using Kinds = testing::Types<Nosepieces, Wheels, Switchers>;
TYPED_TEST_SUITE(PositionPanelLife, Kinds);

TYPED_TEST(PositionPanelLife, EndsAndChangesInItsCallbacks) {
    for (const int id : {TypeParam::kSecond, 10500}) {
        for (int what = 0; what < 4; ++what) {
            auto panel = std::make_unique<typename TypeParam::Panel>(this->parent.Record());
            this->Open(*panel);
            const HWND window = *panel;
            if (!ChildOf(window, id)) continue;
            panel->meanwhile = [&] {
                if (what == 0) panel.reset();
                if (what == 1) panel->Destroy();
                if (what == 2) TypeParam::Show(*panel, this->devices.many);
                if (what == 3) DestroyWindow(window);
            };
            ClickChild(window, id);
            EXPECT_EQ(IsWindow(window) != FALSE, what == 2);
            EXPECT_EQ(panel == nullptr, what == 0);
            EXPECT_TRUE(this->parent.Record().Matches({id == 10500 ? Call("setup", 0) : Call("position", 1)}));
        }
    }
}

TYPED_TEST(PositionPanelLife, LeavesNothing) {
    EXPECT_TRUE(NoGrowth(1000, [this] {
        typename TypeParam::Panel panel(this->parent.Record());
        this->Open(panel);
        UpdateWindow(panel);
    }));
}

}  // namespace
