// Irises: their rules, what they ask for and what they make of their devices.
#include <controls/control_test.h>

#include <climits>
#include <stdexcept>

#include <kxdevices/kx_simlight.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/framework/ui_paint.h>
#include <kxdevui/light/devgui_lightiris2.h>
#include <kxdevui/light/devgui_lightiris.h>

using namespace kx::test;

namespace {

constexpr int kField = 10201;

struct Device : CKxSimIris {
    explicit Device(std::vector<double> steps) : CKxSimIris(L"Iris", std::move(steps), {.shutter = true}) {
        CKxDeviceRegistry::Add(*this);
        SetSpeed(0);
    }
    long GetStepCount() const override {
        if (throws) throw std::runtime_error("iris");
        return lie ? lie : CKxSimIris::GetStepCount();
    }
    long lie = 0;
    bool throws = false;
};

struct Iris : Asking<CKxDevUI_LightIris> {
    using Asking::Asking;
    void OnApertureChangeRequest(double aperture, bool& veto) override { Asked(veto, "Aperture", aperture); }
    void OnShutterChangeRequest(bool open, bool& veto) override { Asked(veto, "Shutter", open); }
    HWND Find(const wchar_t* name) const { return FindWindowExW(m_hWnd, nullptr, name, nullptr); }
    HWND Edit() const { return GetWindow(PartAt(kField), GW_CHILD); }
};

struct LightIris : ControlTest {
    LightIris() {
        iris.Create(parent.Window(), 10, 10, -1, -1, true, true);
        iris.Update(device.GetLogDevId());
        parent.Record().Clear();
        BringToFront(iris);
    }
    std::string See() override {
        return Told() + CallText("", iris.GetAperture(), iris.GetShutter(), TextOf(iris.Edit()));
    }

    Device device{{10, 30, 40, 20, 100, 20, kNaN, -5}};
    Iris iris{parent.Record()};
};

TEST_F(LightIris, AsksForEveryStepAndObeysTheAnswer) {
    const HWND slider = iris.Find(L"KxDevUI_HPot");
    const auto key = [&](WORD which) { SetFocus(slider), Key(which); };
    const auto type = [&](const wchar_t* text) {
        Click(iris.Edit(), 5, 5), SendMessageW(iris.Edit(), EM_SETSEL, 0, -1), Type(text);
    };
    Play({
        {[&] { key(VK_LEFT); }, "Aperture(40)(40, false, \"40\")"},
        {[&] { Click(slider, 3, 5); }, "Aperture(10)(10, false, \"10\")"},
        // The later of two equally near; what is held already is not asked for.
        {[&] { type(L"25\n"); }, "Aperture(30)(30, false, \"30\")"},
        {[&] { type(L"31\n"); }, "(30, false, \"30\")"},
        {[&] { type(L"101\n"); }, "(30, false, \"30\")"},
        {[&] { Click(FindWindowExW(iris.Find(L"KxDevUI_Shutter"), nullptr, L"Button", nullptr), 9, 9); },
         "Shutter(true)(30, true, \"30\")"},
        {[&] { iris.answer = true, key(VK_END); }, "Aperture(100)(30, true, \"30\")"},
        {[&] { Click(slider, 3, 5); }, "Aperture(10)(30, true, \"30\")"},
        {[&] { type(L"20\n"); }, "Aperture(20)(30, true, \"30\")"},
    });
}

TEST_F(LightIris, ShowsItsDeviceAndBearsAnOddOne) {
    const auto update = [&](bool done) { EXPECT_EQ(iris.Update(device.GetLogDevId()), done); };
    const auto measured = [&] { return KX_GetMeasured(iris).measured; };
    EXPECT_EQ(iris.GetApertures(), (std::vector<double>{10, 20, 30, 40, 100}));
    device.SetSpeed(150), device.SetAperture(20), device.SetShutter(true), update(true);
    EXPECT_EQ(See(), "(20, true, \"20\")");
    EXPECT_GT(measured(), 90) << "the thumb is where it goes, the mark where it is";
    device.Stop(), update(true);
    EXPECT_EQ(KX_GetActivity(iris).activity, EKxActivity::Unknown);
    EXPECT_FALSE(measured());
    device.SetLocked(true), device.SetSpeed(0), device.SetAperture(30), device.Tick(), update(true);
    EXPECT_FALSE(IsWindowEnabled(iris) || (iris.SetEnabled(true), IsWindowEnabled(iris)));
    device.SetLocked(false), update(true);
    EXPECT_TRUE(IsWindowEnabled(iris));
    device.throws = true, device.SetAperture(40), update(false);
    EXPECT_EQ(See(), "(30, true, \"30\")");
    device.throws = false, device.lie = LONG_MAX, update(true);
    EXPECT_FALSE(iris.Find(L"KxDevUI_HPot") || iris.Edit());
    for (const long steps : {1, 10000}) {
        device.lie = steps, update(true);
        EXPECT_TRUE(iris.Find(L"KxDevUI_HPot")) << steps;
    }
    EXPECT_FALSE(iris.Update(0) || iris.Update(device.GetLogDevId() + 1));
}

struct Pair : Asking<CKxDevUI_LightIris2> {
    using Asking::Asking;
    void OnApertureChangeRequest(EKxDiaphragm which, double aperture, bool& veto) override {
        Asked(veto, which == eKxDiaphragm_Field ? "Field" : "Aperture", aperture);
    }
    void OnCoupleRequest(bool couple, bool& veto) override { Asked(veto, "Couple", couple); }
    HWND Slider(int number) const {
        HWND slider = nullptr;
        for (int i = 0; i <= number; ++i)
            slider = FindWindowExW(m_hWnd, slider, L"KxDevUI_HPot", nullptr);
        return slider;
    }
    HWND Box() const { return GetDlgItem(PartAt(10220), 10200); }
};

struct LightIris2 : ControlTest {
    LightIris2() {
        pair.Create(parent.Window(), 10, 10, -1, -1, true, true);
        pair.SetApertures(eKxDiaphragm_Field, {10, 50, 100}, eKxIrisUnit_Percent);
        pair.SetApertures(eKxDiaphragm_Aperture, {5, 10, 15, 20, 25, 30}, eKxIrisUnit_Millimetres, 0.9);
        parent.Record().Clear();
        BringToFront(pair);
    }
    std::string See() override {
        return Told() + CallText("", pair.GetAperture(eKxDiaphragm_Field), pair.GetAperture(eKxDiaphragm_Aperture),
                                 pair.IsCoupled(), TextOf(GetDlgItem(pair, 10103)));
    }

    Pair pair{parent.Record()};
};

TEST_F(LightIris2, CouplesTheApertureToTheObjective) {
    const auto key = [&](int slider, WORD which) { SetFocus(pair.Slider(slider)), Key(which); };
    Play({
        {[&] { key(0, VK_END); }, "Field(100)(100, 0, false, \"\")"},
        // Of an objective that nobody knows there is nothing to be matched.
        {[&] { Click(pair.Box(), 5, 5); }, "Couple(true)(100, 0, true, \"\")"},
        {[&] { pair.SetObjectiveNA(0.75); }, "(100, 0, true, \"\")"},
        // By hand it is coupled no more.
        {[&] { key(1, VK_HOME); }, "Couple(false) Aperture(5)(100, 5, false, \"NA 0.15 / 0.75\")"},
        {[&] { Click(pair.Box(), 5, 5); }, "Couple(true) Aperture(20)(100, 20, true, \"NA 0.60 / 0.75\")"},
        {[&] { pair.answer = true, key(1, VK_END); }, "Couple(false)(100, 20, true, \"NA 0.60 / 0.75\")"},
        {[&] { Click(pair.Box(), 5, 5); }, "Couple(false)(100, 20, true, \"NA 0.60 / 0.75\")"},
        {[&] { pair.SetObjectiveNA(kNaN); }, "(100, 20, true, \"NA 0.60\")"},
    });
}

TEST_F(LightIris2, ShowsTheDeviceThatIsWorseOff) {
    CKxSimIris field(L"Field", {10, 50, 100}), aperture(L"Aperture", {5, 30}, {.diaphragm = eKxDiaphragm_Aperture});
    CKxSimNosepiece turret(L"Turret", {{L"Plan", L"20x", L"PlanApo20x075"}});
    for (IKxDevice* each : std::initializer_list<IKxDevice*>{&field, &aperture, &turret})
        EXPECT_TRUE(pair.Update(CKxDeviceRegistry::Add(*each)));
    EXPECT_EQ(pair.GetObjectiveNA(), 0.75);
    const auto see = [&](CKxSimIris& of) {
        pair.Update(of.GetLogDevId());
        return CallText("", static_cast<int>(KX_GetActivity(pair).activity), IsWindowEnabled(pair.Slider(0)) != FALSE,
                        IsWindowEnabled(pair.Slider(1)) != FALSE);
    };
    aperture.SetAperture(5);
    EXPECT_EQ(see(aperture), "(2, true, true)");
    EXPECT_EQ(see(field), "(2, true, true)") << "one at rest says nothing of the other";
    aperture.Stop();
    EXPECT_EQ(see(aperture), "(3, true, true)");
    aperture.SetSpeed(0), aperture.SetAperture(30), aperture.Tick();
    EXPECT_EQ(see(aperture), "(0, true, true)");
    field.SetLocked(true);
    EXPECT_EQ(see(field), "(0, false, true)");
    aperture.SetLocked(true);
    EXPECT_EQ(see(aperture), "(6, false, false)");
    field.SetLocked(false);
    EXPECT_EQ(see(field), "(0, true, false)");
}

TEST(IrisRules, AreThoseOfPhysics) {
    using namespace kx::iris;
    const std::vector<double> table{0, 10, 20};
    const std::tuple<int, double, double, double, double> rows[] = {
        // Unit, widest NA, aperture, its NA, the aperture for three quarters of 0.8.
        {eKxIrisUnit_Millimetres, 0.9, 10, 0.45, 0.6 / 0.9 * 20},
        {eKxIrisUnit_Percent, 1.4, 5, 0.35, 0.6 / 1.4 * 20},
        {eKxIrisUnit_Percent, 0.55, 25, 0.55, 20},
        {eKxIrisUnit_Steps, 0.9, 10, 0, -1},
        {eKxIrisUnit_Percent, 0, 10, 0, -1},
        {eKxIrisUnit_Percent, kNaN, 10, 0, -1}};
    for (const auto& [unit, widest, aperture, na, matched] : rows) {
        EXPECT_DOUBLE_EQ(NAOf(table, unit, widest, aperture), na) << widest;
        EXPECT_DOUBLE_EQ(ApertureFor(table, unit, widest, 0.8, 0.75), matched) << widest;
    }
    EXPECT_EQ(ApertureFor(table, eKxIrisUnit_Percent, 0.9, kInf, 0.75), -1);
    EXPECT_EQ(CallText("", Nearest(table, 15), Nearest(table, -1), Nearest({}, 3), Opening({0}, 0), Opening(table, 5)),
              "(20, 0, 3, 0, 0.25)");
}

}  // namespace
