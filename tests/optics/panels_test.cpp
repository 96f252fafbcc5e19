// What every position panel takes from its user and its device.
#include "panel_test.h"

#include <kxdevui/optics/devgui_filterwheel.h>
#include <kxdevui/optics/devgui_nosepiece.h>
#include <kxdevui/optics/devgui_switcher.h>

#include <stdexcept>

namespace {

using namespace kx::test;

// Devices whose position cannot always be had.
template <class Sim>
struct Failing : Registered<Sim> {
    using Registered<Sim>::Registered;
    bool GetPosition(long& position) const override {
        if (fails) throw std::runtime_error("gone");
        return Sim::GetPosition(position);
    }
    void Move() { this->SetSpeed(0), this->MoveTo(1), this->Tick(); }
    bool fails = false;
};
struct FailingLaser : Registered<CKxSimLaserOutput> {
    using Registered::Registered;
    bool IsPortUsed(long port) const override {
        if (fails) throw std::runtime_error("gone");
        return CKxSimLaserOutput::IsPortUsed(port);
    }
    void Move() { SetPortUsed(1, true); }
    bool fails = false;
};

// A device to be shown, and the second position's button.
struct Nosepieces {
    using Panel = CKxDevUI_Nosepiece;
    static constexpr int kSecond = 10201;
    Failing<CKxSimNosepiece> device{L"N", std::vector<SKxSimObjective>(2)};
};
struct Wheels {
    using Panel = CKxDevUI_FilterWheel;
    static constexpr int kSecond = 10202;
    Failing<CKxSimFilterChanger> device{L"F", Names(2, L"525/50"), SKxSimFilterChangerKind{}};
};
struct Switchers {
    using Panel = CKxDevUI_Switcher;
    static constexpr int kSecond = 10202;
    FailingLaser device{L"L", Names(2, L"A"), true};
};

template <class Kind>
class PositionPanelLife : public PanelTest<AskingPanel<typename Kind::Panel>> {
protected:
    bool Show() {
        if constexpr (requires { this->panel.Update(&kind.device, true, true, true); })
            return this->panel.Update(&kind.device, true, true, true);
        else
            return this->panel.Update(&kind.device, true, true, true, true, false);
    }
    Kind kind;
};

using Kinds = testing::Types<Nosepieces, Wheels, Switchers>;
TYPED_TEST_SUITE(PositionPanelLife, Kinds);

TYPED_TEST(PositionPanelLife, TakesADoubleClickForOneAndDevicesAtTheirWord) {
    auto& control = this->panel;
    auto& device = this->kind.device;
    this->Open();
    EXPECT_TRUE(this->Show());
    EXPECT_EQ(control.m_Instances.count(control), 1u);
    const bool gear = this->Part(10500);
    for (const int id : {TypeParam::kSecond, 10500})
        if (this->Part(id)) DoubleClick(this->Part(id), 5, 5);
    EXPECT_EQ(this->Heard(), gear ? "position(1) setup()" : "position(1)");

    // The message 0x0500 brings the position alone; a device that throws, or is no such device, changes nothing.
    control.SetPosition(0);
    control.SetTitle(L"held");
    device.Move();
    device.fails = true;
    CKxSimStage stage(L"XY", SKxSimRange{0, 1}, SKxSimRange{0, 1});
    const bool position[5] = {false, false, true};
    const auto send = [&](unsigned id) { SendMessageW(control, 0x0500, id, reinterpret_cast<LPARAM>(position)); };
    for (const unsigned id : {device.GetLogDevId(), CKxDeviceRegistry::Add(stage), 0u, 4711u})
        send(id);
    SendMessageW(control, 0x0500, device.GetLogDevId(), 0);
    EXPECT_FALSE(this->Show());
    EXPECT_EQ(control.GetPosition(), 0);
    device.fails = false;
    send(device.GetLogDevId());
    EXPECT_EQ(control.GetPosition(), 1);
    EXPECT_STREQ(control.GetTitle(), L"held");
    EXPECT_EQ(this->Heard(), "");
}

}  // namespace
