// The registry of devices, the answers of DMApi, and the simulated microscope.
#include <bench/bench.h>
#include <kxdevices/kx_simlamp.h>
#include <kxdevices/kx_simlaserengine.h>
#include <kxdevices/kx_simlight.h>
#include <kxsystem/kx_time.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

using namespace kx::test;

struct Clock {
    explicit Clock(unsigned start) {
        now = start;
        KX_SetTimeSource([] { return now; });
    }
    ~Clock() { KX_SetTimeSource(nullptr); }
    static inline unsigned now = 0;
};

struct Listener {
    ~Listener() { CKxDeviceRegistry::RemoveListener(number); }

    Recorder record;
    const int number =
        CKxDeviceRegistry::AddListener([this](unsigned id, EKxDeviceChange what) { record.Call("told", id, what); });
};

TEST(DeviceRegistry, NumbersDevicesAndTells) {
    Listener listener;
    auto shutter = std::make_unique<CKxSimShutter>(L"Epi shutter", eKxShutterType_Epi);
    EXPECT_EQ(shutter->GetLogDevId(), 0u);
    const unsigned id = CKxDeviceRegistry::Add(*shutter);
    EXPECT_EQ(CKxDeviceRegistry::Add(*shutter), id);
    EXPECT_EQ(DMApi::LogDev_GetInstance(id), shutter.get());
    EXPECT_EQ(DMApi::LogDev_GetKey(id), L"Epi shutter");
    CKxDeviceRegistry::Notify(id, EKxDeviceChange::Names);
    CKxDeviceRegistry::Notify(id + 1, EKxDeviceChange::Names);
    const int thrower =
        CKxDeviceRegistry::AddListener([](unsigned, EKxDeviceChange) { throw std::runtime_error("x"); });
    int once = 0;
    once = CKxDeviceRegistry::AddListener([&](unsigned, EKxDeviceChange) { CKxDeviceRegistry::RemoveListener(once); });
    const int last = CKxDeviceRegistry::AddListener([&](unsigned told, EKxDeviceChange) {
        EXPECT_EQ(DMApi::LogDev_GetInstance(told), nullptr) << "half of it is gone when its end is told";
    });
    shutter.reset();
    CKxDeviceRegistry::RemoveListener(last);
    CKxDeviceRegistry::RemoveListener(thrower);
    EXPECT_EQ(listener.record.Take(), CallText("told", id, EKxDeviceChange::Added) + " " +
                                          CallText("told", id, EKxDeviceChange::Names) + " " +
                                          CallText("told", id, EKxDeviceChange::Removed));
    CKxSimShutter next(L"Next", eKxShutterType_Dia);
    EXPECT_GT(CKxDeviceRegistry::Add(next), id);
}

TEST(DMApi, AnswersFromWhatStandsInTheLight) {
    const Clock clock(0u - 200);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    CKxSimIris iris(L"Iris", {5, 50, nan, 100}, {eKxDiaphragm_Aperture, eKxIrisUnit_Millimetres, 0.9, true});
    CKxSimNDFilter filter(L"Filters", {{1, 0.5}, {1, 0.1, 0.01}}, false);
    const unsigned i = CKxDeviceRegistry::Add(iris), n = CKxDeviceRegistry::Add(filter);
    double at = 7, to = 7;
    EXPECT_FALSE(iris.SetAperture(nan) || DMApi::Iris_GetAperture(n, &at) || at != 7);
    EXPECT_TRUE(iris.SetAperture(40) && iris.SetShutter(true) && DMApi::Iris_GetTarget(i, &to));
    Clock::now += 300;  // half of four steps
    EXPECT_TRUE(DMApi::Iris_GetAperture(i, &at) && DMApi::Iris_HasShutter(i) && DMApi::Iris_IsShutterOpen(i));
    EXPECT_EQ(CallText("", at, to, DMApi::Iris_GetStepCount(i), DMApi::Iris_GetStepAperture(i, 1),
                       DMApi::Iris_GetWidestNA(i)),
              "(75, 50, 4, 50, 0.9)");
    EXPECT_TRUE(DMApi::Iris_GetDiaphragm(i) == eKxDiaphragm_Aperture && DMApi::Iris_GetUnit(i) == 1);
    iris.Stop(), iris.TurnLightOff();
    EXPECT_FALSE(DMApi::Iris_GetAperture(i, &at) || at != 75 || DMApi::Iris_IsShutterOpen(i));

    long in = 7, next = 7;
    EXPECT_FALSE(filter.MoveTo(0, 2) || filter.MoveTo(2, 0) || filter.SetShutter(true));
    EXPECT_TRUE(filter.MoveTo(1, 2) && DMApi::NDFilter_GetTarget(n, 1, &next));
    EXPECT_FALSE(DMApi::NDFilter_GetPosition(n, 1, &in) || in != 7 || next != 2) << "on its way";
    Clock::now += 300, filter.Tick();
    EXPECT_TRUE(DMApi::NDFilter_GetPosition(n, 1, &in) && in == 2 && !DMApi::NDFilter_GetPosition(n, 2, &in));
    EXPECT_EQ(CallText("", DMApi::NDFilter_GetWheelCount(n), DMApi::NDFilter_GetPositionCount(n, 1),
                       DMApi::NDFilter_GetTransmission(n, 1, 2), DMApi::NDFilter_GetTransmission(n, 1, 3)),
              "(2, 3, 0.01, 0)");
    EXPECT_FALSE(DMApi::NDFilter_HasShutter(n) || DMApi::NDFilter_IsShutterOpen(n));
}

TEST(DMApi, AsksLamps) {
    const Clock clock(0u - 200);
    CKxSimLamp lamp(L"Arc", {.kind = eKxLampKind_Arc,
                             .minimum = 10,
                             .step = 20,
                             .warmUp = 6000,
                             .coolDown = 4000,
                             .burnt = 7,
                             .rated = 300,
                             .hour = 1000,
                             .shutter = true});
    const unsigned id = CKxDeviceRegistry::Add(lamp);
    Listener listener;
    const auto see = [&] {
        double at = -1, done = -1, left = -1, burnt = 0, rated = 0;
        DMApi::Lamp_GetMeasured(id, &at), DMApi::Lamp_GetWarmUp(id, &done, &left);
        EXPECT_TRUE(DMApi::Lamp_GetHours(id, &burnt, &rated) && rated == 300);
        return CallText("", DMApi::Lamp_IsOn(id), at, done, left, DMApi::Lamp_GetCoolDown(id), burnt);
    };
    const auto pass = [&](unsigned milliseconds) { Clock::now += milliseconds, lamp.Tick(); };
    EXPECT_EQ(see(), "(false, 0, -1, -1, 0, 7)");
    EXPECT_TRUE(lamp.SetIntensity(85) && !lamp.SetIntensity(9) && !lamp.SetIntensity(std::nan("")) && lamp.SetOn(true));
    pass(3000);
    EXPECT_EQ(see(), "(true, 60, 0.5, 3, 0, 10)");
    listener.record.Clear(), pass(400);
    EXPECT_EQ(listener.record.Take(), "") << "nothing is to be seen of less than a second";
    pass(2600);
    EXPECT_EQ(see(), "(true, 90, -1, -1, 0, 13)");
    EXPECT_TRUE(lamp.SetOn(false) && !lamp.SetOn(true));
    pass(3999);
    EXPECT_EQ(see(), "(false, 0, -1, -1, 0.001, 13)");
    pass(1), lamp.SetFails(true);
    EXPECT_TRUE(lamp.SetOn(true) && !lamp.SetShutter(true));
    pass(3000);
    EXPECT_FALSE(DMApi::Lamp_IsOn(id) || DMApi::Lamp_GetMeasured(id, nullptr)) << "it has gone out";
    double from = 0, to = 0;
    EXPECT_TRUE(DMApi::Lamp_GetRange(id, &from, &to) && DMApi::Lamp_HasShutter(id) && !DMApi::Lamp_IsShutterOpen(id));
    EXPECT_EQ(CallText("", DMApi::Lamp_GetKind(id), DMApi::Lamp_GetUnit(id), from, to, DMApi::Lamp_GetStep(id),
                       DMApi::Lamp_GetFullTemperature(id)),
              "(2, 0, 10, 100, 20, 0)");
    EXPECT_TRUE(DMApi::Lamp_GetIntensity(id, &to) && to == 90);
}

// An engine of three lines, of which the first two may leave by A and the last two by B.
struct LaserEngine : testing::Test {
    LaserEngine() {
        CKxDeviceRegistry::Add(engine);
        told.record.Clear();
    }
    // Of each line its power, "*" while it is on, what is measured of its light; how often listeners were told.
    std::string See() const {
        std::ostringstream seen;
        for (long i = 0; i < DMApi::LaserEngine_GetLineCount(id()); ++i) {
            SKxLaserLine line;
            EXPECT_TRUE(DMApi::LaserEngine_GetLine(id(), i, &line));
            seen << line.power << (line.on ? "*" : "") << ':' << (line.measured ? CallText("", *line.measured) : "?")
                 << (line.state == eKxDeviceState_Ready ? "" : "~") << (line.interlock ? "!" : "") << ' ';
        }
        std::string changes = told.record.Take();
        seen << '|' << std::count(changes.begin(), changes.end(), 't');
        return seen.str();
    }
    unsigned id() const { return engine.GetLogDevId(); }

    const Clock clock{0u - 100};  // wraps around on the way
    mutable Listener told;
    CKxSimLaserEngine engine{L"Engine",
                             {{.wavelength = 488}, {.power = 10, .limit = 60}, {.wavelength = 640}},
                             {{.name = L"A", .lines = {0, 1}}, {.name = L"B", .lines = {1, 2}}}};
};

TEST_F(LaserEngine, KeepsItsRules) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto pass = [](unsigned milliseconds) { return [=] { return Clock::now += milliseconds, true; }; };
    const std::tuple<std::function<bool()>, bool, std::string> acts[] = {
        {[&] { return engine.SetLineOn(2, true) || engine.SetLineOn(3, true) || engine.SetLineOn(-1, false); }, false,
         "0:(0) 10:(0) 0:(0) |0"},  // in no active subset
        {[&] { return engine.SetLinePower(1, 60.1) || engine.SetLinePower(1, -1) || engine.SetLinePower(0, nan); },
         false, "0:(0) 10:(0) 0:(0) |0"},
        {[&] { return engine.SetLinePower(1, 60); }, true, "0:(0) 60:(0) 0:(0) |1"},
        {[&] { return engine.SetLineOn(1, true); }, true, "0:(0) 60*:(0)~ 0:(0) |1"},
        {pass(225), true, "0:(0) 60*:(30)~ 0:(0) |0"},
        {pass(225), true, "0:(0) 60*:(60)~ 0:(0) |0"},
        {[&] { return engine.Tick(), true; }, true, "0:(0) 60*:(60) 0:(0) |1"},
        {[&] { return engine.SetSubsetActive(1, true); }, true, "0:(0) 60*:(60) 0:(0) |1"},  // it is in both
        {[&] { return engine.SetSubsetActive(1, false) || engine.SetSubsetActive(2, true); }, false,
         "0:(0) 60*:(60) 0:(0) |0"},
        {[&] { return engine.SetLinePower(2, 20) && engine.SetLineOn(2, true); }, true, "0:(0) 60*:(60) 20*:(0)~ |2"},
        {[&] { return engine.SetInterlock(true, L"Door"), engine.SetLineOn(2, true); }, false,
         "0:(0)! 60:(0)! 20:(0)! |1"},  // dark at once
        {[&] { return engine.SetInterlock(false), true; }, true, "0:(0) 60:(0) 20:(0) |1"},
        {[&] { return engine.SetLineOn(1, true) && engine.SetSubsetActive(0, true); }, true,
         "0:(0) 60*:(0)~ 20:(0) |2"},
        {[&] { return Clock::now += 225, engine.Stop(), true; }, true, "0:(0) 30*:(30) 20:(0) |1"},
        {[&] { return engine.RemoveLine(0) && !engine.RemoveLine(7); }, true, "30*:(30) 20:(0) |1"},
        {[&] { return engine.TurnLightOff(), true; }, true, "0:(0) 0:(0) |1"},
        {[&] { return engine.SetFails(true), engine.SetLinePower(0, 5) || engine.SetLineOn(0, true); }, false,
         "0:(0) 0:(0) |0"},
    };
    for (const auto& [act, done, seen] : acts) {
        EXPECT_EQ(act(), done) << seen;
        EXPECT_EQ(See(), seen);
    }
    SKxLaserSubset subset{.name = L"?"};
    EXPECT_FALSE(DMApi::LaserEngine_GetSubset(id(), 2, &subset) || subset.name != L"?");
    EXPECT_TRUE(DMApi::LaserEngine_GetSubset(id(), 1, &subset) && subset.lines == std::vector<long>({0, 1}));
    SKxLaserLine line{.power = 7};
    EXPECT_FALSE(DMApi::LaserEngine_GetLine(id(), 2, &line) || DMApi::LaserEngine_GetLine(0, 0, &line) ||
                 line.power != 7);
    EXPECT_EQ(DMApi::LaserEngine_GetSubsetCount(id()) + DMApi::LaserEngine_GetLineCount(0), 2);
}

TEST(DMApi, AnswersWhatItCannotKnowWithNothing) {
    CKxSimShutter shutter(L"Shutter", eKxShutterType_Aux1);
    for (const unsigned id : {0u, 4711u, CKxDeviceRegistry::Add(shutter)}) {
        bool enabled = true;
        EXPECT_FALSE(DMApi::LaserOutput_GetPortEnable(id, 0, &enabled) || !enabled);
        EXPECT_EQ(CallText("", DMApi::FilterChanger_GetFilterCount(id), DMApi::FilterChanger_GetMotorized(id),
                           DMApi::LaserOutput_GetPortName(id, 0).str()),
                  "(0, false, \"\")");
        if (id == shutter.GetLogDevId()) continue;
        EXPECT_TRUE(!DMApi::LogDev_GetInstance(id) && DMApi::LogDev_GetType(id) == eKxDeviceType_Unknown);
        EXPECT_TRUE(DMApi::Shutter_GetApertureSteps(id) == 0 && !DMApi::LogDev_GetCapability(id, 154));
    }
    EXPECT_EQ(DMApi::Shutter_GetShutterType(shutter.GetLogDevId()), eKxShutterType_Aux1);
}

TEST(DMApi, AsksNosepiecesDrivesAndLightPaths) {
    struct Thrower : CKxSimZDrive {
        using CKxSimZDrive::CKxSimZDrive;
        bool GetPosition(double&) const override { throw std::runtime_error("gone"); }
    };
    CKxSimMicroscope microscope;
    auto& nosepiece = microscope.Add<CKxSimNosepiece>(
        L"N", std::vector<SKxSimObjective>{{L"Plan 10x", L"10x", L"key"}, {L"", L"", L""}});
    auto& drive = microscope.Add<CKxSimZDrive>(L"Z", SKxSimRange{10, 2000});
    auto& path = microscope.Add<CKxSimLightPath>(L"P", std::vector<std::wstring>{L"Eye", L"Left"});
    nosepiece.SetAvailable(1, false);
    const unsigned n = nosepiece.GetLogDevId(), z = drive.GetLogDevId(), p = path.GetLogDevId();
    long position = -1;
    double low = 0, high = 0, at = 0;
    CKxStringW reason;
    EXPECT_TRUE(DMApi::Nosepiece_GetPosition(n, &position) && DMApi::ZDrive_GetPosition(z, &at) &&
                DMApi::ZDrive_GetRange(z, &low, &high));
    EXPECT_EQ(CallText("", position, at, low, high, DMApi::Nosepiece_GetPositionCount(n),
                       DMApi::Nosepiece_GetDeviceDriven(n), DMApi::Nosepiece_GetLocalSelect(n),
                       DMApi::Nosepiece_GetPositionAvailable(n, 0, nullptr),
                       DMApi::Nosepiece_GetMagnification(n, DMApi::Nosepiece_GetObjectiveName(n, 0)).str(),
                       DMApi::Nosepiece_GetObjectiveName(n, 7).str(), DMApi::Nosepiece_GetObjectiveKey(n, 0).str(),
                       DMApi::LightPath_GetPositionCount(p), DMApi::LightPath_GetPositionName(p, 1).str()),
              "(0, 10, 10, 2000, 2, true, false, true, \"10x\", \"\", \"key\", 2, \"Left\")");
    EXPECT_TRUE(!DMApi::Nosepiece_GetPositionAvailable(n, 1, &reason) && !reason.IsEmpty() && !nosepiece.MoveTo(1));
    path.MoveTo(1);
    EXPECT_FALSE(DMApi::LightPath_GetPosition(p, &(position = 7)) || position != 7) << "on its way";
    EXPECT_FALSE(DMApi::ZDrive_GetPosition(p, &(at = 3)) || at != 3) << "of another kind";
    bool locked = true;
    EXPECT_FALSE(DMApi::ZDrive_GetUpperLimit(z, &(at = 3)) || DMApi::ZDrive_GetHome(z, &at) || at != 3) << "none yet";
    drive.SetLowerLimit(20), drive.SetUpperLimit(900), drive.SetHome(500), drive.SetInverted(true);
    EXPECT_TRUE(DMApi::ZDrive_GetUpperLimit(z, &high) && DMApi::ZDrive_GetLowerLimit(z, &low) &&
                DMApi::ZDrive_GetHome(z, &at) && DMApi::ZDrive_GetJoystickLock(z, &locked) &&
                DMApi::ZDrive_GetInverted(z) && DMApi::ZDrive_GetTarget(z, nullptr));
    EXPECT_EQ(CallText("", low, high, at, locked), "(20, 900, 500, false)");
    EXPECT_TRUE(drive.SetTravelSpeed(300) && DMApi::ZDrive_GetSpeed(z, &at, &low, &high));
    EXPECT_EQ(CallText("", at, low, high), "(300, 10, 10000)");
    at = 3;
    const unsigned failures = CKxDeviceRegistry::GetFailureCount();
    Thrower thrower(L"T", SKxSimRange{0, 1});
    EXPECT_FALSE(DMApi::ZDrive_GetPosition(CKxDeviceRegistry::Add(thrower), &at) || at != 3);
    EXPECT_EQ(CKxDeviceRegistry::GetFailureCount(), failures + 1);
}

TEST(SimulatedDevices, TakeTimeStopAndFail) {
    Clock clock(std::numeric_limits<unsigned>::max() - 400);  // wraps around on the way
    Listener listener;
    CKxSimMicroscope microscope;
    auto& wheel = microscope.Add<CKxSimFilterChanger>(L"Wheel", std::vector<std::wstring>(8, L"525/50"),
                                                      SKxSimFilterChangerKind{});
    wheel.SetSpeed(100);
    listener.record.Clear();
    // State and position afterwards.
    const auto pass = [&](unsigned milliseconds) {
        Clock::now += milliseconds;
        microscope.Tick();
        long position = -1;
        const bool known = wheel.GetPosition(position);
        EXPECT_EQ(known, position >= 0);
        return std::pair(wheel.GetDeviceState(), position);
    };
    EXPECT_EQ(pass(0), std::pair(eKxDeviceState_Ready, 0L));
    EXPECT_FALSE(wheel.MoveTo(-1) || wheel.MoveTo(8));
    const auto told = CallText("told", wheel.GetLogDevId(), EKxDeviceChange::Position);
    // The shorter way round.
    for (const auto& [target, duration] : {std::pair{3L, 300u}, {7L, 400u}, {0L, 100u}, {0L, 100u}}) {
        EXPECT_TRUE(wheel.MoveTo(target));
        EXPECT_EQ(pass(duration - 1), std::pair(eKxDeviceState_Moving, -1L));
        EXPECT_EQ(pass(1), std::pair(eKxDeviceState_Ready, target));
        microscope.Tick();
        EXPECT_EQ(listener.record.Take(), told + " " + told);
    }
    wheel.MoveTo(4);
    // Who hears of it asks at once.
    auto seen = eKxDeviceState_Ready;
    const int asking =
        CKxDeviceRegistry::AddListener([&](unsigned, EKxDeviceChange) { seen = wheel.GetDeviceState(); });
    microscope.Stop();
    EXPECT_EQ(seen, eKxDeviceState_Unknown);
    CKxDeviceRegistry::RemoveListener(asking);
    EXPECT_EQ(listener.record.Take(), told + " " + told);
    EXPECT_EQ(pass(1000), std::pair(eKxDeviceState_Unknown, -1L));
    microscope.SetFails(true);
    wheel.MoveTo(5);
    EXPECT_EQ(pass(1000).first, eKxDeviceState_Faulty);
}

TEST(SimulatedDevices, DrivesGoOverADistanceWithinTheirRange) {
    Clock clock(std::numeric_limits<unsigned>::max() - 40);
    CKxSimMicroscope microscope;
    auto& drive = microscope.Add<CKxSimZDrive>(L"Z", SKxSimRange{10, 2000});
    auto& stage = microscope.Add<CKxSimStage>(L"XY", SKxSimRange{-1000, 1000}, SKxSimRange{-500, -5});
    microscope.SetSpeed(10);
    double x = 0, y = 0;
    EXPECT_TRUE(drive.GetPosition(x) && x == 10);
    EXPECT_TRUE(stage.GetPosition(x, y) && x == 0 && y == -5);
    for (const double wrong : {9.9, 2000.1, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(drive.MoveTo(wrong) || stage.MoveTo(0, wrong));
    EXPECT_TRUE(drive.MoveTo(260) && stage.MoveTo(100, -305));
    Clock::now += 29;
    microscope.Tick();
    EXPECT_TRUE(!stage.GetPosition(x = -1, y) && x == -1);
    EXPECT_TRUE(drive.GetPosition(x));
    EXPECT_NEAR(x, 10 + 250 * 29 / 30.0, 0.01) << "on its way it is somewhere between";
    Clock::now += 1;
    microscope.Tick();
    EXPECT_TRUE(drive.GetPosition(x) && x == 260);
    EXPECT_TRUE(stage.GetPosition(x, y) && x == 100 && y == -305);
    EXPECT_FALSE(CKxSimZDrive(L"None", SKxSimRange{5, 1}).MoveTo(3));
    EXPECT_TRUE(drive.MoveTo(560));
    Clock::now += 15;  // the counter wraps around meanwhile
    EXPECT_TRUE(drive.MoveTo(10) && drive.GetPosition(x) && x == 410) << "turned round half way";
    EXPECT_TRUE(drive.GetTarget(x) && x == 10);
    Clock::now += 1000;
    microscope.Tick();
    EXPECT_TRUE(drive.SetLowerLimit(5) == false && drive.SetLowerLimit(20) && drive.SetUpperLimit(300));
    EXPECT_FALSE(drive.SetLowerLimit(301) || drive.SetUpperLimit(19) || drive.SetHome(9) || drive.SetTravelSpeed(0));
    EXPECT_FALSE(drive.MoveTo(19) || drive.MoveTo(301) || drive.TurnByHand(301));
    EXPECT_TRUE(drive.SetLowerLimit({}) && drive.TurnByHand(15) && drive.GetPosition(x) && x == 15);
    drive.SetJoystickLock(true), drive.SetDrift(6);
    Clock::now += 20000;
    EXPECT_TRUE(!drive.TurnByHand(16) && drive.GetPosition(x) && drive.GetTarget(y) && x == 17 && y == 15) << x;
    EXPECT_TRUE(drive.MoveTo(20) && drive.GetPosition(x) && x == 17) << "from where it has crept to";
    Clock::now += 10000;
    microscope.Tick();
    EXPECT_TRUE(drive.GetPosition(x) && x > 20.9 && x < 21) << x;
    auto& laser = microscope.Add<CKxSimLaserOutput>(L"Laser", std::vector<std::wstring>{L"A"}, true);
    laser.SetSpeed(10);
    EXPECT_TRUE(laser.SetPower(50) && laser.GetPower() == 50);
    Clock::now += 10;
    EXPECT_TRUE(laser.GetMeasuredPower(x) && x == 25) << "it settles";
    laser.Stop();
    EXPECT_TRUE(laser.GetPower() == 25 && laser.GetDeviceState() == eKxDeviceState_Ready);
    laser.SetPower(80), laser.TurnLightOff();
    EXPECT_TRUE(laser.GetMeasuredPower(x) && x == 0) << "at once";
}

TEST(SimulatedDevices, KeepTheirRules) {
    CKxSimMicroscope microscope;
    for (const bool several : {false, true}) {
        auto& laser = microscope.Add<CKxSimLaserOutput>(L"Laser", std::vector<std::wstring>{L"A", L"B", L"C"}, several);
        EXPECT_TRUE(laser.SetPortUsed(2, true));
        EXPECT_EQ(laser.IsPortUsed(0), several);
        EXPECT_EQ(laser.SetPortUsed(2, false), several);
        laser.SetPortEnabled(1, false);
        EXPECT_FALSE(laser.SetPortUsed(1, true));
        EXPECT_EQ(bool(DMApi::LogDev_GetCapability(laser.GetLogDevId(), 152)), !several);
    }
    auto& power = microscope.Add<CKxSimLaserOutput>(L"Power", std::vector<std::wstring>{L"A"}, true);
    power.SetPowerRange({5, 50});
    power.SetPowerRange({9, 9});
    EXPECT_TRUE(power.GetPower() == 5 && power.SetPower(50) && !power.SetPower(50.1) && power.GetPower() == 50);
    power.SetFails(true);
    EXPECT_TRUE(!power.SetPower(10) && !power.SetPortUsed(0, false) && power.IsPortUsed(0));
    auto& smart = microscope.Add<CKxSimShutter>(L"Smart", eKxShutterType_Epi, std::vector<double>{10, 40, 100});
    EXPECT_TRUE(smart.SetAperture(60) && smart.GetAperture() == 40);
    EXPECT_FALSE(smart.SetAperture(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(DMApi::Shutter_GetStepAperture(smart.GetLogDevId(), 3), 0);
    EXPECT_TRUE(smart.SetMode(eKxShutterMode_Aperture) && !smart.SetMode(static_cast<EKxShutterMode>(3)));
    EXPECT_FALSE(microscope.Add<CKxSimShutter>(L"Plain", eKxShutterType_Dia).SetMode(eKxShutterMode_Soft));
}

}  // namespace
