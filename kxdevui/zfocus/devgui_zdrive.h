// CKxDevUI_ZDrive: where a Z drive stands, and how it is sent elsewhere.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_control.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/zfocus/zdrive_rules.h>

namespace kx::ui {
class Activity;
enum class Answer;
}  // namespace kx::ui

// The two sizes of a step.
enum class EKxZStep { Fine, Coarse };
// The two limits that the user may set within the range.
enum class EKxZLimit { Lower, Upper };

// A Z drive: a gauge of its range with limits, home and Z stack, its position in large digits, and a trace of how it
// has drifted in the last minute; a text that says what is to be known before a move; below it everything by which the
// user moves it.
//
//     the user                                 the host is asked                      the veto
//     holds a step button                      OnMoveRequest, again and again         ends that
//     turns the wheel* with Ctrl or Shift      OnMoveRequest, by fine or coarse steps leaves it where it is
//     enters a position, presses Home, Return  OnMoveRequest                          the same
//     presses Escape                           OnEscapeRequest, here OnMoveRequest    the same
//     enters, sets here or lifts a limit       OnLimitChangeRequest                   leaves the limit as it is
//     enters the size of a step                OnStepChangeRequest                    keeps the old one
//     enters a speed                           OnSpeedChangeRequest                   keeps the old one
//     presses the joystick's button            OnJoystickLockRequest                  leaves it as it is
//
// * while the focus is in the control: a wheel that scrolls past a drive moves nothing, and neither does one without a
// key. A position that was typed is asked for by Enter alone, not by leaving the field.
//
// What lies beyond a limit or the range is never asked for, and told beside the control instead. A step that would lead
// there ends at the limit, which is told before it is asked for; the next one is not asked for. Limits that cross leave
// no position, and nothing is asked for until one of them is lifted.
//
// An escape leads to the end at which the objective is farthest from the sample, as far as the limits let it: the lower
// one, of an inverted drive the upper. A return leads back to where the escape began; a second escape on the way does
// not change that, and the first other move after a return forgets it.
//
// The drive steps from where it is going. That is what was agreed to last, until the device tells otherwise: one that
// answers late, twice or never has the last word all the same. Setters tell nobody, and nothing is shown anew that is
// shown already. Positions are in micrometres; what is no number, or farther than a kilometre, counts as not known.
class KXDEVUI_API CKxDevUI_ZDrive : public kx::ui::Control {
public:
    // The sizes of steps at first.
    static constexpr double kFineStep = 0.1;
    static constexpr double kCoarseStep = 10;

    // How fast it goes, and what it can be set to, in micrometres a second.
    struct Speed {
        // In this order.
        double speed = 0;
        double slowest = 0;
        double fastest = 0;
        // All of it the same.
        bool operator==(const Speed&) const = default;
    };

    // 256 by 300 unzoomed pixels, titled "Z drive", of a drive of which nothing is known. Wider, the picture is;
    // narrower, it is cut.
    CKxDevUI_ZDrive();
    ~CKxDevUI_ZDrive() override;

    // Shows what the device with this number tells: `structure` reads range, limits, home, speed, joystick and
    // direction anew, `state` where it stands and goes, whether it moves or has failed. False, and nothing is shown,
    // for a number that no Z drive has, and where it throws. Without flags both; the message 0x0500 brings them
    // (ZDriveBand in devgui_messages.h).
    bool Update(CDMApi_LogDevId device) { return Update(device, {true, true}); }
    bool Update(CDMApi_LogDevId device, const kx::ui::ZDriveBand& what);

    // ---- What is shown; a host whose drive is no device of the registry sets it ----

    // All of the drive at once; what cannot be is left out.
    void SetDrive(const kx::zdrive::Drive& drive);
    const kx::zdrive::Drive& GetDrive() const noexcept { return m_drive; }
    // Where it stands: a sample of the trace, and an answer to what was asked.
    void SetPosition(std::optional<double> position);
    // The limits; empty for none.
    void SetLimits(std::optional<double> lower, std::optional<double> upper);
    // The ends of the Z stack, which the limits are not to cut; the piezo on the drive.
    void SetStack(std::optional<double> bottom, std::optional<double> top);
    void SetPiezo(const std::optional<kx::zdrive::Piezo>& piezo);
    // The sizes of steps; what is none (0, negative, below a nanometre) is ignored.
    void SetStep(EKxZStep which, double size);
    double GetStep(EKxZStep which) const noexcept { return m_steps[which == EKxZStep::Coarse]; }
    // Empty where it cannot be set; the same of the joystick, whether that is locked.
    void SetSpeed(const std::optional<Speed>& speed);
    void SetJoystickLock(std::optional<bool> locked);
    // What is remembered of an escape, for a host that makes the control anew.
    void SetEscape(const kx::zdrive::Retreat& escape);
    const kx::zdrive::Retreat& GetEscape() const noexcept { return m_escape; }

    // A device that cannot be operated from here keeps it disabled.
    void SetEnabled(bool enable) override;
    // Steps by whole notches, Ctrl for fine and Shift for coarse; true when there was one and the focus is in here.
    bool HandleMouseWheel(WPARAM wParam, LPARAM lParam) override;

protected:
    // ---- Callbacks: each may delete the control. Setting `veto` leaves things as they are. ----

    // The user wants the drive there.
    virtual void OnMoveRequest(double position, bool& veto);
    // The same to the safe end. Here: OnMoveRequest.
    virtual void OnEscapeRequest(double position, bool& veto);
    // The user wants a limit there, or none.
    virtual void OnLimitChangeRequest(EKxZLimit which, std::optional<double> limit, bool& veto);
    // The user wants steps of this size; this speed; the joystick locked, or not.
    virtual void OnStepChangeRequest(EKxZStep which, double size, bool& veto);
    virtual void OnSpeedChangeRequest(double speed, bool& veto);
    virtual void OnJoystickLockRequest(bool lock, bool& veto);
    // What is remembered of an escape is something else now.
    virtual void OnEscapeChanged();

private:
    friend class kx::ui::Control;
    struct Told;
    struct Inside;

    bool Make(const kx::ui::Parts& parts);
    void Command(int id, int code);
    std::optional<LRESULT> Handle(const kx::ui::Message& message);
    bool MakeSteps(const kx::ui::Parts& parts);
    bool MakeLimits(const kx::ui::Parts& parts);
    bool MakeSpeed(const kx::ui::Parts& parts);

    using Outcome = kx::ui::Answer;
    Outcome Press(int button);
    Outcome AskJoystick(bool lock);
    void Asking(const std::function<Outcome()>& act);
    Outcome Say(const CKxStringW& why) const;
    Outcome Move(const kx::zdrive::Move& move, const kx::zdrive::Retreat& then, bool escapes = false);
    Outcome Step(EKxZStep which, int times);
    Outcome AskLimit(EKxZLimit which, std::optional<double> limit);
    Outcome AskStep(EKxZStep which, double size);
    Outcome AskSpeed(double speed);

    void Follow(const KxActivity& now, CDMApi_LogDevId device);
    void TakePosition(std::optional<double> position);
    void TakeTarget(std::optional<double> target);
    void Remember(const kx::zdrive::Retreat& escape);
    void ShowAll();
    void Show();
    void ShowSettings();
    CKxStringW NotesText() const;
    void ShowNotes();
    std::array<std::pair<CKxDevUI_Base*, bool>, 4> Usable() const;
    void ShowUsable();
    RECT SignPlace() const;

    kx::zdrive::Drive m_drive;
    kx::zdrive::Retreat m_escape;
    double m_steps[2] = {kFineStep, kCoarseStep};
    std::optional<Speed> m_speed;
    std::optional<bool> m_joystickLock;
    unsigned m_answers = 0;  // how often the drive was told
    unsigned m_usable = 0;   // which parts can be used, a bit for each
    int m_wheelRest = 0;
    bool m_locked = false;
    CKxStringW m_notes;
    std::unique_ptr<kx::ui::Activity> m_requests;
    std::unique_ptr<Inside> m_inside;
};
