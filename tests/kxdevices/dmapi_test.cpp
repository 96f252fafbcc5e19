// The registry of devices, the answers of DMApi, and the simulated microscope.
#include <bench/bench.h>
#include <kxdevices/kx_simdevices.h>
#include <kxsystem/kx_time.h>

#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace {

using namespace kx::test;

// The time counter in the test's hand.
class Clock {
public:
    explicit Clock(unsigned start) {
        s_now = start;
        KX_SetTimeSource([] { return s_now; });
    }
    ~Clock() { KX_SetTimeSource(nullptr); }
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    void Pass(unsigned milliseconds) { s_now += milliseconds; }

private:
    static inline unsigned s_now = 0;
};

// Writes down what the registry tells.
class Listener {
public:
    Listener()
        : m_number(CKxDeviceRegistry::AddListener(
              [this](unsigned id, EKxDeviceChange what) { record.Call("told", id, static_cast<int>(what)); })) {}
    ~Listener() { CKxDeviceRegistry::RemoveListener(m_number); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    Recorder record;

private:
    int m_number;
};

Expected Told(unsigned id, EKxDeviceChange what) { return Call("told", id, static_cast<int>(what)); }

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
    shutter.reset();
    CKxDeviceRegistry::RemoveListener(thrower);
    EXPECT_TRUE(listener.record.Matches(
        {Told(id, EKxDeviceChange::Added), Told(id, EKxDeviceChange::Names), Told(id, EKxDeviceChange::Removed)}));
    CKxSimShutter next(L"Next", eKxShutterType_Dia);
    EXPECT_GT(CKxDeviceRegistry::Add(next), id);
}

TEST(DMApi, AnswersWhatItCannotKnowWithNothing) {
    CKxSimShutter shutter(L"Shutter", eKxShutterType_Aux1);
    for (const unsigned id : {0u, 4711u, CKxDeviceRegistry::Add(shutter)}) {
        bool enabled = true;
        EXPECT_EQ(DMApi::FilterChanger_GetFilterCount(id), 0);
        EXPECT_FALSE(DMApi::FilterChanger_GetMotorized(id));
        EXPECT_FALSE(DMApi::LaserOutput_GetPortEnable(id, 0, &enabled));
        EXPECT_TRUE(enabled);
        EXPECT_EQ(DMApi::LaserOutput_GetPortName(id, 0), L"");
        if (id == shutter.GetLogDevId()) continue;
        EXPECT_EQ(DMApi::LogDev_GetInstance(id), nullptr);
        EXPECT_EQ(DMApi::LogDev_GetType(id), eKxDeviceType_Unknown);
        EXPECT_EQ(DMApi::Shutter_GetApertureSteps(id), 0);
        EXPECT_FALSE(DMApi::LogDev_GetCapability(id, 154));
    }
    EXPECT_EQ(DMApi::Shutter_GetShutterType(shutter.GetLogDevId()), eKxShutterType_Aux1);
}

TEST(SimulatedDevices, TakeTimeStopAndFail) {
    Clock clock(std::numeric_limits<unsigned>::max() - 400);  // wraps around on the way
    Listener listener;
    CKxSimMicroscope microscope;
    auto& wheel = microscope.Add<CKxSimFilterChanger>(L"Wheel", std::vector<std::wstring>(8, L"525/50"),
                                                      SKxSimFilterChangerKind{});
    const unsigned id = wheel.GetLogDevId();
    wheel.SetSpeed(100);
    listener.record.Clear();
    long position = -1;
    EXPECT_TRUE(wheel.GetPosition(position));
    EXPECT_EQ(position, 0);
    for (const long wrong : {-1L, 8L})
        EXPECT_FALSE(wheel.MoveTo(wrong));

    const struct {
        long target;
        unsigned duration;  // the shorter way round
    } moves[] = {{3, 300}, {7, 400}, {0, 100}, {0, 100}};
    for (const auto& move : moves) {
        EXPECT_TRUE(wheel.MoveTo(move.target));
        clock.Pass(move.duration - 1);
        microscope.Tick();
        EXPECT_EQ(wheel.GetDeviceState(), eKxDeviceState_Moving);
        EXPECT_FALSE(wheel.GetPosition(position = -1));
        EXPECT_EQ(position, -1);
        clock.Pass(1);
        microscope.Tick();
        EXPECT_TRUE(wheel.GetPosition(position));
        EXPECT_EQ(position, move.target);
        microscope.Tick();
        EXPECT_TRUE(
            listener.record.Matches({Told(id, EKxDeviceChange::Position), Told(id, EKxDeviceChange::Position)}));
    }
    wheel.MoveTo(4);
    microscope.Stop();
    EXPECT_EQ(wheel.GetDeviceState(), eKxDeviceState_Unknown);
    EXPECT_FALSE(wheel.GetPosition(position));
    microscope.SetFails(true);
    wheel.MoveTo(5);
    clock.Pass(1000);
    microscope.Tick();
    EXPECT_EQ(wheel.GetDeviceState(), eKxDeviceState_Faulty);
    microscope.SetFails(false);
    wheel.MoveTo(5);
    clock.Pass(1000);
    microscope.Tick();
    EXPECT_TRUE(wheel.GetPosition(position));
    EXPECT_EQ(position, 5);
}

TEST(SimulatedDevices, DrivesGoOverADistanceWithinTheirRange) {
    Clock clock(0);
    CKxSimMicroscope microscope;
    auto& drive = microscope.Add<CKxSimZDrive>(L"Z", SKxSimRange{10, 2000});
    auto& stage = microscope.Add<CKxSimStage>(L"XY", SKxSimRange{-1000, 1000}, SKxSimRange{-500, -5});
    microscope.SetSpeed(10);
    double x = 0, y = 0;
    EXPECT_TRUE(drive.GetPosition(x) && x == 10);
    EXPECT_TRUE(stage.GetPosition(x, y) && x == 0 && y == -5);
    for (const double wrong : {9.9, 2000.1, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(drive.MoveTo(wrong));
        EXPECT_FALSE(stage.MoveTo(0, wrong));
    }
    EXPECT_TRUE(drive.MoveTo(260) && stage.MoveTo(100, -305));
    clock.Pass(29);
    microscope.Tick();
    EXPECT_FALSE(stage.GetPosition(x = -1, y));
    EXPECT_EQ(x, -1);
    EXPECT_TRUE(drive.GetPosition(x));
    EXPECT_NEAR(x, 10 + 250 * 29 / 30.0, 0.01) << "on its way it is somewhere between";
    clock.Pass(1);
    microscope.Tick();
    EXPECT_TRUE(drive.GetPosition(x) && x == 260);
    EXPECT_TRUE(stage.GetPosition(x, y) && x == 100 && y == -305);
    EXPECT_FALSE(CKxSimZDrive(L"None", SKxSimRange{5, 1}).MoveTo(3));
    EXPECT_TRUE(drive.MoveTo(560));
    clock.Pass(15);
    EXPECT_TRUE(drive.MoveTo(10));
    EXPECT_TRUE(drive.GetPosition(x) && x == 410) << "turned round half way";
    microscope.SetSlowness(10);
    EXPECT_TRUE(stage.MoveTo(0, -305));
    clock.Pass(99);
    microscope.Tick();
    EXPECT_FALSE(stage.GetPosition(x, y));
}

TEST(SimulatedDevices, KeepTheirRules) {
    CKxSimMicroscope microscope;
    auto& nosepiece = microscope.Add<CKxSimNosepiece>(
        L"Nosepiece", std::vector<SKxSimObjective>{{L"Plan Apo 10x/0.45", L"10x", L"A"}, {L"", L"", L""}});
    CKxStringW text;
    nosepiece.GetMagnification(L"Plan Apo 10x/0.45", text);
    EXPECT_EQ(text, L"10x");
    nosepiece.GetObjectiveName(7, text);
    EXPECT_EQ(text, L"");
    nosepiece.SetAvailable(1, false);
    EXPECT_FALSE(nosepiece.MoveTo(1));
    EXPECT_FALSE(nosepiece.GetPositionAvailable(1, text));
    EXPECT_NE(text, L"");

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
    EXPECT_TRUE(smart.SetAperture(60));
    EXPECT_EQ(smart.GetAperture(), 40);
    EXPECT_FALSE(smart.SetAperture(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(DMApi::Shutter_GetStepAperture(smart.GetLogDevId(), 3), 0);
    EXPECT_TRUE(smart.SetMode(eKxShutterMode_Aperture));
    EXPECT_FALSE(smart.SetMode(static_cast<EKxShutterMode>(3)));
    EXPECT_FALSE(microscope.Add<CKxSimShutter>(L"Plain", eKxShutterType_Dia).SetMode(eKxShutterMode_Soft));
}

TEST(SimulatedDevices, TravelEvenlyAlongZ) {
    SKxSimZDrive drive{.rangeMin = 0, .rangeMax = 100, .speed = 10, .from = 50, .to = 50};
    // The counter wraps around on the way.
    const unsigned start = 0xFFFFFF00u;
    for (const auto& [to, after, stands] : {std::tuple{60.0, 500u, 55.0},
                                            {60.0, 5000u, 60.0},
                                            {-9.0, 2000u, 30.0},
                                            {-9.0, 60000u, 0.0},
                                            {std::nan(""), 1000u, 50.0}}) {
        drive.from = drive.to = 50;
        drive.Start(to, start);
        EXPECT_EQ(drive.Position(start + after), stands);
        EXPECT_EQ(drive.IsMoving(start + after), stands != drive.to);
    }
}

}  // namespace
