// A lamp: its rules, what it asks for and what it makes of its device.
#include <controls/control_test.h>

#include <bench/reader.h>

#include <stdexcept>

#include <kxdevices/kx_simlamp.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/light/devgui_lightslider.h>
#include <kxsystem/kx_time.h>

using namespace kx::test;

namespace {

struct Device : CKxSimLamp {
    Device()
        : CKxSimLamp(L"Lamp", {.kind = eKxLampKind_Halogen,
                               .unit = eKxLampUnit_Volts,
                               .maximum = 12,
                               .step = 0.5,
                               .fullTemperature = 3200}) {
        CKxDeviceRegistry::Add(*this);
        SetSpeed(0);
    }
    void GetRange(double& minimum, double& maximum) const override {
        if (throws) throw std::runtime_error("lamp");
        minimum = 0, maximum = most;
    }
    bool GetHours(double& burnt, double& rated) const override { return burnt = hours, rated = 2000, true; }
    bool GetWarmUp(double& done, double& seconds) const override { return done = 0.4, seconds = warmUp, warmUp != 0; }
    double GetCoolDown() const override { return coolDown; }
    double most = 12, hours = 2100, warmUp = 0, coolDown = 0;
    bool throws = false;
};

struct Lamp : Asking<CKxDevUI_LightSlider> {
    using Asking::Asking;
    void OnIntensityChangeRequest(double intensity, bool& veto) override { Asked(veto, "Intensity", intensity); }
    void OnStateChangeRequest(bool on, bool& veto) override { Asked(veto, "State", on); }
    void OnPresetStoreRequest(int preset, double at, bool& veto) override { Asked(veto, "Store", preset, at); }
    HWND Part(int id) const { return PartAt(id); }
    HWND Find(const wchar_t* name) const { return FindWindowExW(m_hWnd, nullptr, name, nullptr); }
    HWND Edit() const { return GetWindow(PartAt(10201), GW_CHILD); }
};

unsigned s_now = 0;

struct LightSlider : ControlTest {
    LightSlider() {
        KX_SetTimeSource([] { return s_now; });
        lamp.SetPreset(0, 3), lamp.SetPreset(1, 15);
        lamp.Create(parent.Window(), 10, 10, -1, -1, true, true);
        lamp.Update(device.GetLogDevId());
        parent.Record().Clear();
        BringToFront(lamp);
    }
    ~LightSlider() override { KX_SetTimeSource(nullptr); }
    std::string See() override {
        return Told() + CallText("", lamp.IsOn(), lamp.GetIntensity(), TextOf(lamp.Edit()), TextOf(lamp.Part(10101)));
    }
    // Time passes while a preset is held.
    void Hold(unsigned milliseconds) { s_now += milliseconds, SendMessageW(lamp.Part(10300), WM_TIMER, 1, 0); }
    void PressPreset() { Press(lamp.Part(10300), 9, 9); }

    Device device;
    Lamp lamp{parent.Record()};
};

TEST_F(LightSlider, AsksAndObeysTheAnswer) {
    const HWND slider = lamp.Find(L"KxDevUI_HPot"), arrows = lamp.Find(L"msctls_updown32");
    const auto key = [&](WORD which) { SetFocus(slider), Key(which); };
    const auto type = [&](const wchar_t* text) {
        Click(lamp.Edit(), 5, 5), SendMessageW(lamp.Edit(), EM_SETSEL, 0, -1), Type(text);
    };
    Play({
        {[] {}, "(false, 0, \"0\", \"\")"},
        {[&] { Click(arrows, 8, 3); }, "Intensity(0.5)(false, 0.5, \"0.5\", \"\")"},
        {[&] { key(VK_END); }, "Intensity(12)(false, 12, \"12\", \"\")"},
        {[&] { Click(lamp.Part(10200), 5, 5); }, "State(true)(true, 12, \"12\", \"3200 K\")"},
        {[&] { type(L"5.8\n"); }, "Intensity(6)(true, 6, \"6\", \"2390 K\")"},
        {[&] { type(L"12.1\n"); }, "(true, 6, \"6\", \"2390 K\")"},
        {[&] { Click(arrows, 8, 16); }, "Intensity(5.5)(true, 5.5, \"5.5\", \"2310 K\")"},
        {[&] { Click(lamp.Part(10300), 9, 9); }, "Intensity(3)(true, 3, \"3\", \"1790 K\")"},
        // What is off the scale, or nothing.
        {[&] { Click(lamp.Part(10301), 9, 9), Click(lamp.Part(10302), 9, 9); }, "(true, 3, \"3\", \"1790 K\")"},
        // What the device has told before the host agrees.
        {[&] { lamp.meanwhile = [&] { lamp.SetIntensity(4); }, key(VK_END); },
         "Intensity(12)(true, 4, \"4\", \"2020 K\")"},
        {[&] { lamp.meanwhile = nullptr, key(VK_HOME); }, "Intensity(0)(true, 0, \"0\", \"\")"},
        {[&] { Click(lamp.Part(10300), 9, 9); }, "Intensity(3)(true, 3, \"3\", \"1790 K\")"},
        // A screen reader: what is off the scale is nothing here either.
        {[&] { Reader(slider).Set(L"13"), Reader(lamp.Edit()).Set(L"12.5"); }, "(true, 3, \"3\", \"1790 K\")"},
        {[&] { Reader(slider).Set(L"4"); }, "Intensity(4)(true, 4, \"4\", \"2020 K\")"},
        {[&] { Reader(lamp.Edit()).Set(L"5,8"); }, "Intensity(6)(true, 6, \"6\", \"2390 K\")"},
        {[&] { Reader(lamp.Part(10300)).Act(); }, "Intensity(3)(true, 3, \"3\", \"1790 K\")"},
        {[&] { lamp.answer = true, Reader(slider).Set(L"12"), Reader(lamp.Edit()).Set(L"12"); },
         "Intensity(12) Intensity(12)(true, 3, \"3\", \"1790 K\")"},
        {[&] { lamp.answer = true, key(VK_END); }, "Intensity(12)(true, 3, \"3\", \"1790 K\")"},
        {[&] { Click(arrows, 8, 3); }, "Intensity(3.5)(true, 3, \"3\", \"1790 K\")"},
        {[&] { Click(lamp.Part(10200), 5, 5); }, "State(false)(true, 3, \"3\", \"1790 K\")"},
        {[&] {
             lamp.answer = false, lamp.SetOn(false);
             lamp.meanwhile = [&] { KX_TellActivity(lamp, {EKxActivity::Failed, -1, {}}); };
             Click(lamp.Part(10200), 5, 5);
         },
         "State(true)(false, 3, \"3\", \"\")"},
    });
}

TEST_F(LightSlider, StoresWhatIsHeldForASecond) {
    lamp.SetIntensity(8);
    const auto kept = [&] {
        return Told() + CallText("", lamp.GetPreset(0).value_or(-1), lamp.GetPreset(2).has_value());
    };
    const auto enter = [&](int preset) { SetFocus(lamp.Part(10300 + preset)), Key(VK_RETURN, MOD_SHIFT); };
    const std::vector<Step> steps{
        {[&] { PressPreset(), Hold(999); }, "(3, false)"},
        {[&] { Hold(1); }, "Store(0, 8)(8, false)"},
        {[&] { Release(), lamp.SetPreset(0, 3); }, "(3, false)"},
        {[&] { PressPreset(), Hold(900), MoveTo(lamp, 200, 5), MoveTo(lamp.Part(10300), 9, 9), Hold(900), Release(); },
         "(3, false)"},
        {[&] { PressPreset(), Hold(900), Key(VK_ESCAPE), Hold(900), Release(); }, "(3, false)"},
        {[&] { PressPreset(), lamp.SetEnabled(false), Hold(1100), lamp.SetEnabled(true), Release(); }, "(3, false)"},
        {[&] { enter(2); }, "Store(2, 8)(3, true)"},
        {[&] { lamp.answer = true, enter(0); }, "Store(0, 8)(3, true)"},
        // The parts go while one is held, and with them the hold.
        {[&] { PressPreset(), device.most = 0, lamp.Update(device.GetLogDevId()), s_now += 1100, Release(); },
         "(3, true)"}};
    kx::test::Play(steps, kept);
    EXPECT_FALSE(lamp.Part(10300) || lamp.Find(L"KxDevUI_HPot") || lamp.Edit());
}

TEST_F(LightSlider, ShowsItsDeviceAndBearsAnOddOne) {
    const auto update = [&](bool done) { EXPECT_EQ(lamp.Update(device.GetLogDevId()), done); };
    const auto times = [&] { return update(true), TextOf(lamp.Part(10101)) + L"|" + TextOf(lamp.Part(10103)); };
    EXPECT_EQ(times(), L"|Worn: 2100 / 2000 h");
    device.hours = -1, device.coolDown = 40;
    EXPECT_EQ(times(), L"Cooling down, 40 s|");
    device.coolDown = kNaN, device.warmUp = kNaN, device.hours = kNaN, device.SetOn(true), device.Tick();
    EXPECT_EQ(times(), L"Warming up, 40 %|");
    device.SetSpeed(150), device.SetIntensity(6), update(true);
    const auto measured = [&] { return KX_GetMeasured(lamp).measured.value_or(-1); };
    EXPECT_EQ(See(), "(true, 6, \"6\", \"Warming up, 40 %\")");
    EXPECT_EQ(measured(), 0);
    s_now += 2000, device.Tick(), device.warmUp = 0, update(true);
    EXPECT_EQ(See(), "(true, 6, \"6\", \"2390 K\")");
    device.SetFails(true), device.SetIntensity(7), s_now += 2000, device.Tick(), update(true);
    EXPECT_EQ(See() + CallText("", static_cast<int>(KX_GetActivity(lamp).activity)), "(false, 7, \"7\", \"\")(4)");
    device.throws = true, device.SetFails(false), device.SetIntensity(2), update(false);
    EXPECT_EQ(lamp.GetIntensity(), 7);
    device.throws = false;
    for (const double most : {0.0, -1.0, kNaN, kInf}) {
        device.most = most, update(true);
        EXPECT_FALSE(lamp.Find(L"KxDevUI_HPot")) << most;
    }
    device.most = 1, update(true);
    EXPECT_EQ(See(), "(false, 1, \"1\", \"\")") << "moved onto the scale";
    device.coolDown = 40, update(true), Click(lamp.Part(10200), 5, 5);
    EXPECT_EQ(Told(), "") << "the device has said why not";
    EXPECT_EQ(KX_GetActivity(lamp).activity, EKxActivity::Refused);
    EXPECT_FALSE(lamp.Update(0) || lamp.Update(device.GetLogDevId() + 1));
}

TEST(LampRules, AreThoseOfLamps) {
    using namespace kx::lamp;
    const std::tuple<int, double, double, double> colors[] = {
        // Unit, part of the largest, of 3200 K; by exact arithmetic.
        {eKxLampUnit_Volts, 1, 3200, 3200},
        {eKxLampUnit_Volts, 0.5, 3200, 2391.7587978159017},
        {eKxLampUnit_Percent, 0.5, 3200, 2937.4056104015285},
        {eKxLampUnit_Percent, 0.01, 3200, 1811.7203177032727},
        {eKxLampUnit_Volts, 0, 3200, 0},
        {eKxLampUnit_Volts, 0.5, 0, 0},
        {eKxLampUnit_Volts, kNaN, 3200, 0},
        {7, 0.5, 3200, 0}};
    for (const auto& [unit, part, full, kelvin] : colors)
        EXPECT_NEAR(ColorTemperature(unit, full, 12, 12 * part), kelvin, 1e-9) << part;
    const std::tuple<Scale, double, double, long, double> steps[] = {
        // A scale as told, an intensity, the nearest one, and where so many strides lead to.
        {{0, 12, 0.1}, 0.26, 0.3, 1, 0.3}, {{0, 100, 0}, 43.25, 43.25, -1, 42.25},
        {{0, 12, 0}, 3, 3, 2, 3.2},        {{0, 10, 3}, 9.6, 10, -1, 9},
        {{0, 10, 3}, 10, 10, -1, 9},       {{0, 10, 3}, 9, 9, 1, 10},
        {{5, 6, 2}, 4, 5, 1, 5.01},        {{kNaN, 10, kNaN}, -3, 0, 1, 0.1},
        {{-5, 10, -1}, kInf, 10, 5, 10}};
    for (const auto& [told, from, nearest, strides, to] : steps) {
        const Scale scale = ScaleOf(told.minimum, told.maximum, told.step);
        EXPECT_EQ(CallText("", Nearest(scale, from), After(scale, Clamped(scale, from), strides)),
                  CallText("", nearest, to));
    }
    EXPECT_FALSE(ScaleOf(5, 5, 0).IsThere() || ScaleOf(0, kInf, 1).IsThere() || Has({}, 0) || Has({0, 9, 0}, kNaN));
    const std::tuple<double, double, const wchar_t*, const wchar_t*> texts[] = {
        // Seconds that are left, hours of 2000, both in words.
        {0.1, 0, L"1 s", L"0 / 2000 h"},
        {90, 412.9, L"90 s", L"412 / 2000 h"},
        {90.1, 2000, L"2 min", L"2000 / 2000 h"},
        {-1, -1, L"40 %", L""},
        {kNaN, kNaN, L"40 %", L""},
        {kInf, kInf, L"40 %", L""}};
    for (const auto& [seconds, hours, left, burnt] : texts) {
        EXPECT_EQ(LeftText(0.4, seconds), left);
        EXPECT_EQ(HoursText(hours, 2000), burnt);
    }
    EXPECT_EQ(LeftText(kNaN, -1) + HoursText(5, kNaN) + KelvinText(1234.9) + KelvinText(kInf), L"5 h1230 K");
}

}  // namespace
