// What every position panel bears from its host, and that it leaves nothing behind.
#include "panel_test.h"

#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

#include <kxdevui/framework/devgui_messages.h>

#include <memory>
#include <stdexcept>

namespace {

using namespace kx::test;

// A device whose position cannot always be had.
template <class Sim>
struct Failing : Registered<Sim> {
    using Registered<Sim>::Registered;
    bool GetPosition(long& position) const override {
        if (fails) throw std::runtime_error("gone");
        return Sim::GetPosition(position);
    }
    bool fails = false;
};
struct FailingLaser : Registered<CKxSimLaserOutput> {
    using Registered::Registered;
    bool IsPortUsed(long port) const override {
        if (fails) throw std::runtime_error("gone");
        return CKxSimLaserOutput::IsPortUsed(port);
    }
    bool fails = false;
};

// Two devices to be shown, the flags for that, and the second position's button.
struct Nosepieces {
    using Panel = Asking<CKxDevUI_Nosepiece>;
    using Objectives = std::vector<SKxSimObjective>;
    static constexpr int kSecond = 10201;
    static constexpr kx::ui::NosepieceBand kPosition{.position = true};
    Failing<CKxSimNosepiece> few{L"Few", Objectives{2, {L"Plan 10x/0.25", L"10x", L""}}},
        many{L"Many", Objectives{5, {L"Plan", L"60x", L""}}};
    static bool Show(Panel& panel, IKxDeviceNosepiece& device) {
        return panel.Update(&device, true, true, true, true, false);
    }
    static void Move(CKxSimNosepiece& device) { device.SetSpeed(0), device.MoveTo(1), device.Tick(); }
};

struct Wheels {
    using Panel = Asking<CKxDevUI_FilterWheel>;
    static constexpr int kSecond = 10202;
    static constexpr kx::ui::FilterWheelBand kPosition{.position = true};
    Failing<CKxSimFilterChanger> few{L"Few", Names(2, L"525/50"), SKxSimFilterChangerKind{}};
    Failing<CKxSimFilterChanger> many{L"Many", Names(12, L""), SKxSimFilterChangerKind{}};
    static bool Show(Panel& panel, IKxDeviceFilterChanger& device) { return panel.Update(&device, true, true, true); }
    static void Move(CKxSimFilterChanger& device) { device.SetSpeed(0), device.MoveTo(1), device.Tick(); }
};

struct Switchers {
    using Panel = Asking<CKxDevUI_Switcher>;
    static constexpr int kSecond = 10202;
    static constexpr kx::ui::SwitcherBand kPosition{.state = true};
    FailingLaser few{L"Few", Names(2, L"A"), true}, many{L"Many", Names(5, L"A"), true};
    static bool Show(Panel& panel, IKxDeviceLaserOutput& device) { return panel.Update(&device, true, true, true); }
    static void Move(CKxSimLaserOutput& device) { device.SetPortUsed(1, true); }
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

TYPED_TEST(PositionPanelLife, TakesADoubleClickForOneAndDevicesAtTheirWord) {
    typename TypeParam::Panel panel(this->parent.Record());
    this->Open(panel);
    EXPECT_EQ((std::remove_reference_t<decltype(panel)>::m_Instances.count(panel)), 1u);
    DoubleClick(ChildOf(panel, TypeParam::kSecond), 5, 5);
    const bool gear = ChildOf(panel, 10500);
    if (gear) DoubleClick(ChildOf(panel, 10500), 5, 5);
    EXPECT_TRUE(this->parent.Record().Matches(gear ? std::vector{Call("position", 1), Call("setup", 0)}
                                                   : std::vector{Call("position", 1)}));

    // The message 0x0500 brings the position alone; a device that throws, or is no such device, changes nothing.
    panel.SetPosition(0);
    auto& [few, many] = this->devices;
    TypeParam::Move(few);
    few.fails = many.fails = true;
    CKxSimStage stage(L"XY", SKxSimRange{0, 1}, SKxSimRange{0, 1});
    const auto send = [&](unsigned device) { kx::ui::SendDeviceBand(panel, device, TypeParam::kPosition); };
    for (const unsigned device : {few.GetLogDevId(), CKxDeviceRegistry::Add(stage), 0u, 4711u})
        send(device);
    SendMessageW(panel, 0x0500, few.GetLogDevId(), 0);
    panel.SetTitle(L"held");
    EXPECT_FALSE(TypeParam::Show(panel, many));
    EXPECT_EQ(panel.GetPosition(), 0);
    EXPECT_STREQ(panel.GetTitle(), L"held");
    EXPECT_FALSE(ChildOf(panel, TypeParam::kSecond + 1));
    few.fails = false;
    send(few.GetLogDevId());
    EXPECT_EQ(panel.GetPosition(), 1);
    EXPECT_STREQ(panel.GetTitle(), L"held");
    EXPECT_TRUE(this->parent.Record().Matches({}));
}

}  // namespace
