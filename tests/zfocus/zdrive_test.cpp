// The Z drive: its rules, what it asks for and never asks for, and what it makes of odd devices.
#include <controls/control_test.h>

#include <stdexcept>

#include <kxdevices/kx_simdevices.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_parts.h>
#include <kxdevui/zfocus/devgui_zdrive.h>
#include <kxsystem/kx_time.h>

using namespace kx::test;
using namespace kx::zdrive;

namespace {

// ---- Rules ---------------------------------------------------------------------------------------------------------

Drive Of(Position lower, Position upper, Position position, bool inverted = false) {
    return {.minimum = 0, .maximum = 1000, .lower = lower, .upper = upper, .inverted = inverted, .position = position};
}

TEST(ZDriveRules, StepEndsAtTheLimitAndNeverBeyond) {
    const std::tuple<Drive, double, Move> rows[] = {
        {Of({}, {}, 500), 10, {510, Verdict::Goes, Verdict::Goes}},
        {Of({}, {}, 500.00049), 0.1, {500.1, Verdict::Goes, Verdict::Goes}},
        {Of({}, 505.1234567, 500), 10, {505.1234567, Verdict::Goes, Verdict::AboveLimit}},
        {Of({}, 500, 500), 10, {{}, Verdict::AboveLimit, Verdict::AboveLimit}},
        {Of(495, {}, 500), -10, {495, Verdict::Goes, Verdict::BelowLimit}},
        {Of({}, {}, 995), 10, {1000, Verdict::Goes, Verdict::BeyondRange}},
        {Of({}, 2000, 995), 10, {1000, Verdict::Goes, Verdict::BeyondRange}},
        {Of({}, {}, 0), -10, {{}, Verdict::BeyondRange, Verdict::BeyondRange}},
        // From outside nothing is asked for that is still outside.
        {Of({}, 400, 500), -10, {490, Verdict::AboveLimit, Verdict::Goes}},
        {Of({}, 495, 500), -10, {490, Verdict::Goes, Verdict::Goes}},
        {Of({}, 400, 500), 10, {{}, Verdict::AboveLimit, Verdict::AboveLimit}},
        {Of({}, {}, 1200), -10, {1190, Verdict::BeyondRange, Verdict::Goes}},
        {Of(600, 400, 500), 10, {500, Verdict::LimitsCross, Verdict::Goes}},
        {Of({}, {}, {}), 10, {{}, Verdict::NoPosition, Verdict::Goes}},
        {Of({}, {}, 500), kNaN, {{}, Verdict::NoPosition, Verdict::Goes}},
        {Drive{.minimum = 5, .maximum = 5, .position = 5}, 1, {5, Verdict::NoRange, Verdict::Goes}},
        {Drive{.minimum = 0, .maximum = 9, .position = 5, .target = 7}, 1, {8, Verdict::Goes, Verdict::Goes}},
    };
    int row = 0;
    for (const auto& [drive, by, move] : rows)
        EXPECT_EQ(StepFrom(drive, by), move) << row++;
    for (const double to : {kNaN, kInf, 1e10})
        EXPECT_EQ(Judge(Of({}, {}, 5), to), Verdict::NoPosition);
    for (const double end : {kNaN, -1.0, 0.0})
        EXPECT_EQ(Judge({.minimum = 0, .maximum = end}, 0), Verdict::NoRange) << end;
}

TEST(ZDriveRules, EscapesToTheEndThatIsSafeAndReturnsToWhereThatBegan) {
    const std::tuple<Position, Position, bool, Position> rows[] = {{{}, {}, false, 0},
                                                                   {{}, {}, true, 1000},
                                                                   {100, 900, false, 100},
                                                                   {100, 900, true, 900},
                                                                   {-5, 2000, true, 1000}};
    for (const auto& [lower, upper, inverted, to] : rows)
        EXPECT_EQ(EscapeOf(Of(lower, upper, {}, inverted)), (Move{to, Verdict::Goes, Verdict::Goes}));
    EXPECT_EQ(EscapeOf(Of(900, 100, 5)).verdict, Verdict::LimitsCross);
    const Retreat away = AfterEscape({}, 400), again = AfterEscape(away, 300);
    EXPECT_EQ(again.from, 400) << "pressed twice on the way";
    EXPECT_EQ(ReturnPlace(Of(100, 900, 900.02)), 900) << "crept beyond its limit";
    EXPECT_EQ(ReturnPlace(Of(900, 100, 50)), 50);
    EXPECT_EQ(AfterEscape(AfterMove(away), 50).from, 50);
    EXPECT_EQ(AfterMove(away).from, 400);
    EXPECT_EQ(AfterMove(AfterReturn(away)), Retreat{});
}

TEST(ZDriveRules, SaysWhatIsWrongFirst) {
    const auto kinds = [](const Drive& drive, Position considered = {}) {
        std::string text;
        for (const Note& each : NotesOf(drive, {}, considered))
            text += std::to_string(static_cast<int>(each.kind)) + " ";
        return text;
    };
    const auto of = [](NoteKind kind) { return std::to_string(static_cast<int>(kind)) + " "; };
    Drive drive = Of({}, 900, 500);
    EXPECT_EQ(kinds(drive), "");
    drive.stackBottom = 880.2, drive.stackTop = 880;
    EXPECT_EQ(kinds(drive, 870), of(NoteKind::LeavesStack));
    EXPECT_EQ(kinds(drive, 880.1), "") << "whichever end is called the top";
    EXPECT_EQ(kinds(drive, 901), of(NoteKind::Refusal));
    drive.upper = 880.1, drive.piezo = Piezo{150, 0, 300};
    EXPECT_EQ(kinds(drive), of(NoteKind::StackBeyond) + of(NoteKind::PiezoInMiddle));
    drive.piezo->position = 500;  // the drive's middle
    drive.position = 880.1;
    EXPECT_EQ(kinds(drive), of(NoteKind::AtUpperLimit) + of(NoteKind::StackBeyond) + of(NoteKind::PiezoOffMiddle));
    drive = Of(600, 400, 500);
    EXPECT_EQ(kinds(drive, 500), of(NoteKind::LimitsCross));
    EXPECT_EQ(kinds(Of(0, 400, 500)) + kinds(Of({}, {}, 1500)),
              of(NoteKind::OutsideLimits) + of(NoteKind::OutsideRange));
    EXPECT_EQ(OffMiddle({kNaN, 0, 300}), Position()) << "and none of no way:";
    EXPECT_EQ(OffMiddle({5, 300, 0}), Position());
    EXPECT_EQ(JudgeLimit(Of(300, {}, 0), true, 299), Verdict::LimitsCross);
    EXPECT_EQ(JudgeLimit(Of(300, {}, 0), true, 300), Verdict::Goes);
    EXPECT_EQ(JudgeLimit(Of({}, 100, 0), false, 101), Verdict::LimitsCross);
}

TEST(ZDriveRules, TraceKeepsAMinuteHoweverManySamplesCome) {
    Trace trace;
    unsigned now = 0xFFFFFF00u;  // the counter wraps around on the way
    for (int i = 0; i < 100000; ++i, now += 7)
        trace.Add(now, i * 0.001);
    EXPECT_TRUE(trace.Count() <= Trace::kSlots && trace.Count() > Trace::kSlots - 3) << trace.Count();
    EXPECT_NEAR(trace.Drift(), 0.001 * Trace::kWindow / 7, 0.2);
    EXPECT_EQ(trace.At(trace.Count() - 1).age, 0u);
    EXPECT_TRUE(trace.Add(now, 3) && !trace.Add(now, 3) && !trace.Add(now, kNaN)) << "the same is no other picture";
    EXPECT_TRUE(trace.Add(now + 10 * Trace::kWindow, 4) && trace.Count() == 1) << "all before is too old";
    EXPECT_TRUE(trace.Clear() && !trace.Clear() && SpanOf(trace).low == 0);
    int rest = 0;
    std::string notches;
    for (const int delta : {100, 40, -100, -20, 360})
        notches += std::to_string(NotchesOf(delta, rest)) + " ";
    EXPECT_EQ(notches, "0 1 0 -1 3 ");
    EXPECT_EQ(CallText("", PositionText(4012.345, 0.1).str(), PositionText(4012.345, 0.005).str(),
                       PositionText(-0.001, 1).str(), PositionText({}, 1).str()),
              "(\"4012.35\", \"4012.345\", \"0.00\", \"\u2013\")");
}

// ---- The control ---------------------------------------------------------------------------------------------------

struct Device : CKxSimZDrive {
    Device() : CKxSimZDrive(L"Z", {0, 1000}) {
        CKxDeviceRegistry::Add(*this);
        SetSpeed(0);
        MoveTo(400), Tick();
    }
    bool GetPosition(double& position) const override {
        if (throws) throw std::runtime_error("encoder");
        return CKxSimZDrive::GetPosition(position);
    }
    bool throws = false;
};

struct Driven : Asking<CKxDevUI_ZDrive> {
    using Asking::Asking;
    void OnMoveRequest(double to, bool& veto) override { Asked(veto, "Move", to); }
    void OnLimitChangeRequest(EKxZLimit which, std::optional<double> at, bool& veto) override {
        Asked(veto, which == EKxZLimit::Upper ? "Upper" : "Lower", at.value_or(-1));
    }
    void OnStepChangeRequest(EKxZStep which, double size, bool& veto) override {
        Asked(veto, "Step", which == EKxZStep::Coarse, size);
    }
    void OnSpeedChangeRequest(double speed, bool& veto) override { Asked(veto, "Speed", speed); }
    void OnJoystickLockRequest(bool lock, bool& veto) override { Asked(veto, "Joystick", lock); }
    HWND Part(int id) const { return PartAt(id); }
};

enum { kGoTo = 10200, kFine, kCoarse, kUpper, kLower, kSpeed };
enum {
    kCoarseDown = 10220,
    kFineDown,
    kFineUp,
    kCoarseUp,
    kHome,
    kEscape,
    kReturn,
    kUpperHere,
    kUpperLift,
    kJoystick = 10231
};

struct ZDrive : ControlTest {
    ZDrive() {
        drive.Create(parent.Window(), 10, 10, -1, -1, true, true);
        drive.Update(device.GetLogDevId());
        parent.Record().Clear();
    }
    void Press(int id) { Click(drive.Part(id), 8, 8); }
    void Enter(int id, const wchar_t* text) {
        const HWND edit = GetWindow(drive.Part(id), GW_CHILD);
        SetFocus(edit);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        Type(text);
    }
    CKxStringW Notes() const { return kx::ui::TextOf(drive.Part(kx::ui::kTitleId + 1)); }
    std::string Said() {
        const HWND answer = kx::ui::AnswerWindow();
        return answer ? CallText("", kx::ui::TextOf(answer).str()) : "";
    }
    // What was asked, and where the drive is going.
    std::string See() override {
        const auto target = drive.GetDrive().target;
        return Told() + CallText("", target.value_or(-1));
    }

    Device device;
    Driven drive{parent.Record()};
};

TEST_F(ZDrive, AsksForNothingBeyondALimitAndSaysSo) {
    Play({
        {[&] { Press(kFineUp); }, "Move(400.1)(400.1)"},
        {[&] { Press(kCoarseUp); }, "Move(410.1)(410.1)"},
        {[&] { Enter(kUpper, L"415\n"); }, "Upper(415)(410.1)"},
        {[&] { Press(kCoarseUp); }, "Move(415)(415)"},
        {[&] {
             EXPECT_NE(Said().find("415"), std::string::npos);
             Press(kCoarseUp);
         },
         "(415)"},
        {[&] { EXPECT_NE(Said().find("Above the upper limit (415"), std::string::npos) << Said(); }, "(415)"},
        {[&] { Enter(kGoTo, L"416"); }, "(415)"},
        {[&] {
             EXPECT_EQ(Notes(), L"Above the upper limit (415 \u00B5m)");
             Type(L"\n");
         },
         "(415)"},
        {[&] { Enter(kLower, L"420\n"); }, "(415)"},
        {[&] { Enter(kGoTo, L"300,5\n"); }, "Move(300.5)(300.5)"},
        {[&] { Enter(kGoTo, L"200"), SetFocus(drive.Part(kFineUp)); }, "(300.5)"},
        {[&] { drive.answer = true, Enter(kGoTo, L"250\n"); }, "Move(250)(300.5)"},
        {[&] { Press(kUpperLift); }, "Upper(-1)(300.5)"},
        {[&] { drive.answer = false, Press(kUpperLift), Press(kUpperLift); }, "Upper(-1)(300.5)"},
        {[&] { Press(kUpperHere); }, "Upper(400)(300.5)"},
        {[&] { Enter(kCoarse, L"0\n"), Enter(kCoarse, L"25\n"); }, "Step(true, 25)(300.5)"},
        {[&] { Enter(kSpeed, L"5\n"), Enter(kSpeed, L"300\n"), Press(kJoystick); }, "Speed(300) Joystick(true)(300.5)"},
    });
}

TEST_F(ZDrive, EscapesAndReturns) {
    device.SetHome(700), drive.Update(device.GetLogDevId());
    Play({
        {[&] {
             EXPECT_FALSE(IsWindowEnabled(drive.Part(kReturn)));
             Press(kEscape);
         },
         "Move(0)(0)"},
        {[&] { drive.SetPosition(350), Press(kEscape), Press(kReturn); }, "Move(0) Move(400)(400)"},
        {[&] {
             Press(kHome);
             EXPECT_FALSE(IsWindowEnabled(drive.Part(kReturn)));
         },
         "Move(700)(700)"},
        {[&] { device.SetInverted(true), drive.Update(device.GetLogDevId()), Press(kEscape); }, "Move(1000)(1000)"},
        // The place where the escape began lies beyond the limit by now.
        {[&] { drive.SetLimits(500, {}), Press(kReturn); }, "(1000)"},
    });
}

TEST_F(ZDrive, TurnsByTheWheelWithAKeyAndTheFocusAlone) {
    const auto turn = [&](int keys, int delta) { return drive.HandleMouseWheel(MAKEWPARAM(keys, delta), 0); };
    SetFocus(parent.Window());
    EXPECT_FALSE(turn(MK_CONTROL, 120));
    SetFocus(drive.Part(kFineUp));
    EXPECT_FALSE(turn(0, 120));
    EXPECT_TRUE(turn(MK_CONTROL, 240) && turn(MK_SHIFT, -120) && turn(MK_SHIFT | MK_CONTROL, 60));
    EXPECT_EQ(See(), "Move(400.2) Move(390.2)(390.2)");
    drive.SetEnabled(false);
    EXPECT_FALSE(turn(MK_SHIFT, 120));
}

unsigned s_now = 0;

TEST_F(ZDrive, PaintsForAStepOfThePositionWhatHasChangedAlone) {
    KX_SetTimeSource([] { return s_now; });
    drive.SetLimits(100, 900), drive.SetStack(395, 420), drive.SetPosition(400);
    for (int i = 0; i < 110; ++i, s_now += 500)
        drive.SetPosition(400 + 0.2 * std::sin(i * 0.1) + i * 0.004);
    const HWND view = drive.Part(10210);
    RedrawWindow(drive, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const auto stale = [&] {
        RECT all{};
        for (HWND part = GetWindow(drive, GW_CHILD); part; part = GetWindow(part, GW_HWNDNEXT)) {
            RECT update{};
            EXPECT_TRUE(!GetUpdateRect(part, &update, FALSE) || part == view) << GetDlgCtrlID(part);
            UnionRect(&all, &all, &update);
        }
        UpdateWindow(view);
        return all;
    };
    drive.SetPosition(400.441);
    const RECT step = stale();
    EXPECT_TRUE(step.left > 20 && step.right > 200) << "neither the gauge, nor nothing: " << step.left;
    drive.SetPosition(400.441);
    const RECT none = stale();
    EXPECT_TRUE(IsRectEmpty(&none)) << "it stands where it stood";
    drive.SetEscape({410, true, false});
    SetFocus(parent.Window());
    for (const auto& [scheme, name] :
         {std::pair(eKxColorScheme_Light, "zdrive"), std::pair(eKxColorScheme_Dark, "zdrive dark")}) {
        KX_SetColorScheme(scheme);
        Pump();
        Picture::OnScreen(drive).Save(name);
    }
    KX_SetColorScheme(eKxColorScheme_Light);
    RedrawWindow(drive, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    drive.SetPosition(800);
    EXPECT_LT(stale().left, 10) << "the gauge as well";
    KX_SetTimeSource(nullptr);
}

TEST_F(ZDrive, BearsADeviceThatAnswersLateTwiceNeverOrNotAtAll) {
    const auto update = [&] { return drive.Update(device.GetLogDevId()); };
    Press(kCoarseUp), Press(kCoarseUp);
    EXPECT_EQ(See(), "Move(410) Move(420)(420)") << "it never answers";
    EXPECT_EQ(KX_GetActivity(drive).activity, EKxActivity::Asked);
    EXPECT_TRUE(update() && update());
    EXPECT_EQ(See() + CallText("", drive.GetDrive().position.value_or(-1)), "(400)(400)") << "it has the last word";
    drive.meanwhile = [&] { device.SetSpeed(100), device.MoveTo(430), update(); };
    Press(kCoarseUp);
    EXPECT_EQ(See(), "Move(410)(430)") << "told during the question";
    EXPECT_EQ(KX_GetActivity(drive).activity, EKxActivity::Moving);
    drive.meanwhile = nullptr;
    // Typing is not disturbed by a drive that moves by itself.
    Enter(kGoTo, L"12"), device.TurnByHand(77), update();
    EXPECT_EQ(kx::ui::TextOf(drive.Part(kGoTo)), L"12");
    EXPECT_EQ(drive.GetDrive().position, 77);
    device.throws = true;
    EXPECT_FALSE(update());
    EXPECT_EQ(drive.GetDrive().position, 77);
    device.throws = false, device.MoveTo(90), device.Stop(), update();
    Press(kFineUp), Press(kUpperHere);
    EXPECT_EQ(See(), "(-1)") << "nobody knows where it stands";
    const unsigned gone = device.GetLogDevId();
    CKxDeviceRegistry::Remove(device);
    EXPECT_FALSE(drive.Update(gone));
    drive.meanwhile = [&] { drive.Destroy(); };
    Enter(kGoTo, L"500\n");
    EXPECT_FALSE(HWND{drive}) << "ended by its host";
}

}  // namespace
