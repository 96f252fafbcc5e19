// What a device reports, beside what was asked of it: which light is on, also seen from across a room, and where it
// stands.
#include "lamps.h"

#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_readings.h>
#include <kxdevui/light/devgui_modeshutter.h>
#include <kxdevui/light/devgui_shutter.h>

namespace {

using namespace kx::test;

// Pixels of the picture at a fifth of its size that are far from those of another.
int SeenFromAfar(const Picture& a, const Picture& b) {
    constexpr int fifth = 5, different = 32;
    int seen = 0;
    for (int y = 0; y + fifth <= a.Height(); y += fifth) {
        for (int x = 0; x + fifth <= a.Width(); x += fifth) {
            int sums[3]{};
            for (int i = 0; i < fifth * fifth; ++i) {
                const COLORREF one = a.Pixel(x + i % fifth, y + i / fifth), two = b.Pixel(x + i % fifth, y + i / fifth);
                for (int part = 0; part < 3; ++part)
                    sums[part] += int(one >> 8 * part & 255) - int(two >> 8 * part & 255);
            }
            const int most = std::max({std::abs(sums[0]), std::abs(sums[1]), std::abs(sums[2])});
            seen += most >= different * fifth * fifth;
        }
    }
    return seen;
}

struct Line : CKxDevUI_ColorSlider {
    Line(HWND parent, long y, EColorSliderType type, COLORREF color = RGB(97, 0, 205)) {
        Fill(*this, Entries(101, 1), L"Line", 25, type);
        if (type == eColorSliderType_Gradient) SetGradient(RGB(0, 0, 0), color);
        Create(parent, 10, y, -1, -1, true, true);
        SetPower(5, true);
    }
    HWND Thumb() const { return GetDlgItem(m_hWnd, 10000); }
};

RECT Invalid(HWND window) {
    RECT rect{};
    GetUpdateRect(window, &rect, FALSE);
    return rect;
}

using Readings = ControlTest;

TEST_F(Readings, AreSeenFromAcrossARoom) {
    Line violet(parent.Window(), 10, eColorSliderType_Gradient), lamp(parent.Window(), 90, eColorSliderType_LineDraw),
        white(parent.Window(), 50, eColorSliderType_Gradient, RGB(255, 255, 255));
    CKxDevUI_HPot plain;
    plain.Create(parent.Window(), 10, 130, 200, 40, true, true);
    plain.SetValue(5, false);
    Lamp device(eKxShutterType_Epi, std::vector<double>{5, 20, 100});
    CKxDevUI_ModeShutter row;
    row.Init(device.GetLogDevId());
    row.Create(parent.Window(), 10, 180, 256, 32, true, true);
    CKxDevUI_Shutter shutter;
    shutter.Create(parent.Window(), 10, 220, 40, 40, true, true);
    const HWND all[] = {violet, white, lamp, plain, row, shutter};
    for (const auto scheme : {eKxColorScheme_Light, eKxColorScheme_Dark, eKxColorScheme_HighContrast}) {
        KX_SetColorScheme(scheme);
        for (const bool enabled : {true, false}) {
            for (CKxDevUI_Base* const each : std::initializer_list<CKxDevUI_Base*>{&violet, &white, &lamp, &plain})
                each->SetEnabled(enabled);
            for (const HWND each : all) {
                const auto look = [&](EKxLight light) {
                    device.Open(light == EKxLight::On);
                    shutter.Update(&device, false, false, true);
                    EXPECT_TRUE(each == shutter || (KX_TellLight(each, light) && KX_GetLight(each) == light));
                    return Picture::OnScreen(each);
                };
                look(EKxLight::None);
                const Picture off = look(EKxLight::Off);
                EXPECT_GE(SeenFromAfar(off, look(EKxLight::On)), 6) << scheme << enabled << PlaceOf(each);
            }
        }
    }
}

TEST_F(Readings, MarkWhatWasMeasured) {
    Line line(parent.Window(), 10, eColorSliderType_HorizontalRainbow);
    const Picture bare = Picture::OnScreen(line.Thumb());
    const std::tuple<std::optional<double>, long> rows[] = {{5, -1},   {5.5, -1},  {std::nullopt, -1}, {kNaN, -1},
                                                            {50, 101}, {1e9, 202}, {-1e9, 0},          {kInf, -1}};
    for (const auto& [measured, column] : rows) {
        KX_TellMeasured(line, {.measured = 30});
        Picture::OnScreen(line.Thumb());
        EXPECT_TRUE(KX_TellMeasured(line, {.measured = measured}));
        const RECT told = Invalid(line.Thumb());
        EXPECT_LE(told.bottom - told.top, 17) << "the strip alone";
        const RECT at = Picture::OnScreen(line.Thumb()).Difference(bare);
        EXPECT_EQ(column < 0 ? -1 : (at.left + at.right) / 2 - 4, column) << measured.value_or(-2);
        KX_TellMeasured(line, {.measured = measured});
        EXPECT_FALSE(GetUpdateRect(line.Thumb(), nullptr, FALSE)) << "told again";
    }
    EXPECT_EQ(KX_GetMeasured(line), KxMeasured{}) << "no number is none";
}

struct Laser : CKxSimLaserOutput {
    Laser() : CKxSimLaserOutput(L"Laser", std::vector<std::wstring>{L"A"}, true) {}
    bool IsPortUsed(long port) const override {
        return fails ? throw std::runtime_error("gone") : CKxSimLaserOutput::IsPortUsed(port);
    }
    bool GetMeasuredPower(double& power) const override {
        return fails ? throw std::runtime_error("gone") : CKxSimLaserOutput::GetMeasuredPower(power);
    }
    bool fails = false;
};

TEST_F(Readings, ComeFromTheDevice) {
    Line line(parent.Window(), 10, eColorSliderType_Gradient), range(parent.Window(), 60, eColorSliderType_Range);
    Laser laser;
    laser.SetSpeed(60000), laser.SetPower(80);
    for (const bool on : {true, false}) {
        laser.SetPortUsed(0, on);
        EXPECT_TRUE(KX_TellLight(line, laser) && KX_TellMeasured(line, laser));
        EXPECT_EQ(KX_GetLight(line), on ? EKxLight::On : EKxLight::Off);
    }
    EXPECT_LT(*KX_GetMeasured(line).measured, 80);
    laser.fails = true;
    const CKxSimStage stage(L"Stage", {0, 1}, {0, 1});
    for (const IKxDevice* each : std::initializer_list<const IKxDevice*>{&stage, &laser})
        EXPECT_FALSE(KX_TellLight(line, *each) || KX_TellMeasured(line, *each));
    EXPECT_EQ(KX_GetLight(line), EKxLight::Off);
    for (const HWND each : {HWND{range}, parent.Window(), HWND{nullptr}})
        EXPECT_FALSE(KX_TellLight(each, EKxLight::On) || KX_TellMeasured(each, {.measured = 3}));
}

TEST_F(Readings, OfAModeShutterFollowItsState) {
    Lamp device(eKxShutterType_Epi, std::vector<double>{5, 20, 100});
    CKxDevUI_ModeShutter row;
    row.Init(device.GetLogDevId());
    row.Create(parent.Window(), 10, 10, 256, 32, true, true);
    KX_TellLight(row, EKxLight::Off), KX_TellMeasured(row, {.measured = 60});
    for (const bool open : {false, true}) {
        device.Open(open);
        row.Update(&device, true, true, true, true);
        EXPECT_EQ(KX_GetLight(row), open ? EKxLight::On : EKxLight::Off);
    }
    EXPECT_EQ(KX_GetMeasured(row).measured, 60) << "the slider was made anew";
}

// Around the thumb, which is where the light goes.
TEST_F(Readings, HaveARingWhileTheyMove) {
    Line line(parent.Window(), 10, eColorSliderType_Gradient);
    line.SetPower(50, true);
    const Picture rest = Picture::OnScreen(line.Thumb());
    KX_TellActivity(line, {EKxActivity::Moving, -1, {}});
    const RECT ring = Picture::OnScreen(line.Thumb()).Difference(rest);
    EXPECT_TRUE(ring.left > 90 && ring.right < 130) << ring.left << " " << ring.right;
    MSG tick{};
    for (const auto end = GetTickCount64() + 2000; tick.message != WM_TIMER && GetTickCount64() < end;)
        PeekMessageW(&tick, line, WM_TIMER, WM_TIMER, PM_REMOVE);
    DispatchMessageW(&tick);
    const RECT step = Invalid(line.Thumb());
    EXPECT_TRUE(step.left <= ring.left && step.right >= ring.right && step.right - step.left < 20) << "the ring alone";
    line.SetPower(10, true);
    EXPECT_EQ(Picture::OnScreen(line.Thumb()), Picture::Printed(line.Thumb())) << "the old place is left";
}

}  // namespace
