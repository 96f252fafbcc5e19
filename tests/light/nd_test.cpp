// Neutral density: its numbers, what it asks for and what it makes of its devices.
#include <controls/control_test.h>

#include <climits>
#include <stdexcept>

#include <kxdevices/kx_simlight.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/light/devgui_lightnd.h>
#include <kxdevui/light/nd_rules.h>

using namespace kx::test;

namespace {

struct Device : CKxSimNDFilter {
    Device() : CKxSimNDFilter(L"ND", {{1, 0.5, 0.25, 0.125}, {1, 0.1, 0}}, true) {
        CKxDeviceRegistry::Add(*this);
        SetSpeed(0);
    }
    long GetPositionCount(long wheel) const override {
        if (throws) throw std::runtime_error("wheel");
        return lie ? lie : CKxSimNDFilter::GetPositionCount(wheel);
    }
    long lie = 0;
    bool throws = false;
};

struct ND : Asking<CKxDevUI_LightND> {
    using Asking::Asking;
    void OnAttenuationChangeRequest(int wheel, long at, bool& veto) override { Asked(veto, "Attenuation", wheel, at); }
    void OnShutterChangeRequest(bool open, bool& veto) override { Asked(veto, "Shutter", open); }
    HWND Button(int wheel, int position) const { return PartAt(10300 + 20 * wheel + position); }
};

struct LightND : ControlTest {
    LightND() {
        nd.Create(parent.Window(), 10, 10, 268, 100, true, true);
        nd.Update(device.GetLogDevId());
        parent.Record().Clear();
    }
    std::string See() override {
        return Told() + CallText("", nd.GetPosition(0), nd.GetPosition(1), TextOf(GetDlgItem(nd, 10101)));
    }

    Device device;
    ND nd{parent.Record()};
};

TEST_F(LightND, AsksAndShowsTheProduct) {
    Play({
        {[] {}, "(0, 0, \"100 %   OD 0\")"},
        {[&] { Click(nd.Button(0, 3), 9, 9); }, "Attenuation(0, 3)(3, 0, \"12.5 %   OD 0.9\")"},
        {[&] { Click(nd.Button(1, 1), 9, 9); }, "Attenuation(1, 1)(3, 1, \"1.25 %   OD 1.9\")"},
        {[&] { Click(nd.Button(1, 1), 9, 9); }, "(3, 1, \"1.25 %   OD 1.9\")"},
        {[&] { nd.answer = true, Click(nd.Button(0, 0), 9, 9); }, "Attenuation(0, 0)(3, 1, \"1.25 %   OD 1.9\")"},
        {[&] { nd.SetPosition(1, 2); }, "(3, 2, \"0 %   OD \u221E\")"},
        {[&] { nd.SetPosition(1, 9); }, "(3, -1, \"\")"},
    });
}

TEST_F(LightND, ShowsItsDeviceAndBearsAnOddOne) {
    const auto update = [&](bool done) { EXPECT_EQ(nd.Update(device.GetLogDevId()), done); };
    device.SetSpeed(150), device.MoveTo(0, 2), update(true);
    EXPECT_EQ(KX_GetActivity(nd).activity, EKxActivity::Moving);
    EXPECT_EQ(See(), "(2, 0, \"25 %   OD 0.6\")") << "where it goes";
    device.Stop(), update(true);
    EXPECT_EQ(See(), "(-1, -1, \"\")");
    device.SetSpeed(0), device.MoveTo(0, 1), device.Tick(), device.SetShutter(true), update(true);
    EXPECT_EQ(See() + CallText("", nd.GetShutter()), "(1, 0, \"50 %   OD 0.3\")(true)");
    device.throws = true, device.MoveTo(0, 0), update(false);
    EXPECT_EQ(See(), "(1, 0, \"50 %   OD 0.3\")");
    device.throws = false;
    // What a position lets through that is not there, is nothing.
    const std::pair<long, int> counts[] = {{LONG_MAX, 16}, {1, 1}, {-1, 0}};
    for (const auto& [told, buttons] : counts) {
        device.lie = told, update(true);
        EXPECT_TRUE((nd.Button(0, buttons - 1) || !buttons) && !nd.Button(0, buttons)) << told;
    }
}

TEST(NDRules, AreThoseOfOpticalDensity) {
    using namespace kx::nd;
    const std::tuple<double, const wchar_t*, const wchar_t*> rows[] = {{1, L"100 %", L"OD 0"},
                                                                       {0.5, L"50 %", L"OD 0.3"},
                                                                       {0.125, L"12.5 %", L"OD 0.9"},
                                                                       {0.063, L"6.3 %", L"OD 1.2"},
                                                                       {0.001, L"0.1 %", L"OD 3"},
                                                                       {1e-8, L"1e-06 %", L"OD 8"},
                                                                       {0, L"0 %", L"OD \u221E"},
                                                                       {-0.1, L"?", L"?"},
                                                                       {1.01, L"?", L"?"},
                                                                       {kNaN, L"?", L"?"}};
    for (const auto& [through, percent, density] : rows) {
        EXPECT_EQ(PercentText(through), percent);
        EXPECT_EQ(DensityText(through), density);
        EXPECT_TRUE(!IsTransmission(through) || std::abs(TransmissionOf(DensityOf(through)) - through) < 1e-15);
    }
    EXPECT_DOUBLE_EQ(DensityOf(0.5), 0.30102999566398119521);
    EXPECT_DOUBLE_EQ(InSeries(std::array{0.125, 0.1}), 0.0125);
    EXPECT_TRUE(std::isnan(InSeries(std::array{0.5, kNaN})) && std::isnan(TransmissionOf(-1)));
}

}  // namespace
