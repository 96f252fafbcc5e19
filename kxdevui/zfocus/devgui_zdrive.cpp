#include <kxdevui/zfocus/devgui_zdrive.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/controls/devgui_imagebutton.h>
#include <kxdevui/controls/devgui_numberfield.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxdevui/zfocus/devgui_zdrive_texts.h>
#include <kxdevui/zfocus/devgui_zdrive_view.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_time.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;
using namespace kx::zdrive;

namespace {

constexpr wchar_t kSource[] = L"devgui_zdrive";

// To itself: all who had something to say to a new control have said it.
constexpr UINT kLookAgain = WM_USER + 1;

// The ids of labels, fields and buttons; the buttons are in the order of Tab.
enum Label { kNotes = kTitleId + 1, kGoToText, kFineText, kCoarseText, kUpperText, kLowerText, kSpeedText, kUnits };
enum Field { kGoTo = 10200, kFine, kCoarse, kUpper, kLower, kSpeed };
constexpr int kView = 10210, kButtons = 10220;
enum MoveButton { kCoarseDown, kFineDown, kFineUp, kCoarseUp, kHome, kEscape, kReturn };
enum SettingButton { kUpperHere = kReturn + 1, kUpperLift, kLowerHere, kLowerLift, kJoystick, kButtonCount };

struct Look {
    const wchar_t* image;
    const wchar_t* title;
};
constexpr Look kLooks[kButtonCount] = {
    {L"ZDRIVE_DOWN_COARSE", L"Coarse step down"},
    {L"ZDRIVE_DOWN", L"Fine step down"},
    {L"ZDRIVE_UP", L"Fine step up"},
    {L"ZDRIVE_UP_COARSE", L"Coarse step up"},
    {L"ZDRIVE_HOME", L"Home"},
    {L"ZDRIVE_ESCAPE", L"Escape"},
    {L"ZDRIVE_RETURN", L"Return"},
    {L"ZDRIVE_UPPER_HERE", L"Upper limit here"},
    {L"ZDRIVE_LIFT", L"Lift the upper limit"},
    {L"ZDRIVE_LOWER_HERE", L"Lower limit here"},
    {L"ZDRIVE_LIFT", L"Lift the lower limit"},
    {L"ZDRIVE_JOYSTICK", L"Lock the joystick"},
};

// Unzoomed pixels: around all, of texts, fields and buttons, and where the rows begin.
constexpr long kWidth = 256, kEdge = 4, kText = 16, kField = 20, kSide = 28, kGap = 2, kBeside = 3;
constexpr long kViewTop = 20, kViewBottom = 96, kNotesTop = 99, kGoTop = 132, kSizesTop = 166, kMovesTop = 194,
               kUpperTop = 228, kLowerTop = 252, kSpeedTop = 276;
constexpr int kDelay = 400, kInterval = 100;  // of held buttons, in milliseconds

// Of any number: what is no good is told, and not left out in silence.
class NumberOf : public NumberField {
public:
    explicit NumberOf(int id)
        : NumberField(id, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()) {
        SetNumber(0, L"%.9g");
    }
};

}  // namespace

struct CKxDevUI_ZDrive::Inside {
    class Button : public PartControl<CKxDevUI_ImageButton> {
    public:
        void Belong(CKxDevUI_ZDrive& owner, int number) {
            m_owner = &owner;
            m_number = number;
            SetId(kButtons + number);
            SetImages({.normal = kLooks[number].image});
        }

    protected:
        void OnClickRequest(bool& veto) override { veto = m_owner->Press(m_number) == Outcome::Refused; }
        void OnStateChangeRequest(bool lock, bool& veto) override {
            veto = m_owner->AskJoystick(lock) == Outcome::Refused;
        }

    private:
        CKxDevUI_ZDrive* m_owner = nullptr;
        int m_number = 0;
    };

    HWND notes = nullptr;
    PartControl<View> view;
    NumberOf goTo{kGoTo}, fine{kFine}, coarse{kCoarse}, upper{kUpper}, lower{kLower}, speed{kSpeed};
    std::array<Button, kButtonCount> buttons;
};

// What a device has told; what is not wanted stays empty.
struct CKxDevUI_ZDrive::Told {
    Drive drive;
    std::optional<Speed> speed;
    std::optional<bool> joystickLock;
    KxActivity activity;

    static Told Of(const IKxDeviceZDrive& device, const ZDriveBand& what) {
        const auto ask = [&](bool (IKxDeviceZDrive::*get)(double&) const) {
            double value = 0;
            return (device.*get)(value) ? Cleaned(value) : Position();
        };
        Told told;
        if (what.structure) {
            double minimum = 0, maximum = 0;
            device.GetRange(minimum, maximum);
            told.drive.minimum = minimum, told.drive.maximum = maximum;
            told.drive.lower = ask(&IKxDeviceZDrive::GetLowerLimit);
            told.drive.upper = ask(&IKxDeviceZDrive::GetUpperLimit);
            told.drive.home = ask(&IKxDeviceZDrive::GetHome);
            told.drive.inverted = device.IsInverted();
            Speed speed;
            if (device.GetSpeed(speed.speed, speed.slowest, speed.fastest)) told.speed = speed;
            bool locked = false;
            if (device.GetJoystickLock(locked)) told.joystickLock = locked;
        }
        told.drive.position = ask(&IKxDeviceZDrive::GetPosition);
        told.drive.target = ask(&IKxDeviceZDrive::GetTarget);
        told.activity = ReadActivity(device);
        return told;
    }
};

CKxDevUI_ZDrive::CKxDevUI_ZDrive()
    : Control(this, {.name = L"KxDEVGUI_ZDrive",
                     .size = {kWidth, 300},
                     .title = KX_GetTranslation(L"Z drive", kSource),
                     .tabsInside = true}),
      m_requests(std::make_unique<Activity>(ActivityHost{
          [](HWND) { return -1L; }, [](HWND, long) -> HWND { return nullptr; }, [this](HWND) { return m_title; },
          [](HWND window) { InvalidateRect(window, nullptr, TRUE); }, [this](HWND) { return SignPlace(); }})),
      m_inside(std::make_unique<Inside>()) {
    m_inside->view.SetId(kView);
    for (int i = 0; i < kButtonCount; ++i)
        m_inside->buttons[static_cast<std::size_t>(i)].Belong(*this, i);
    for (int i = kCoarseDown; i <= kCoarseUp; ++i)
        m_inside->buttons[static_cast<std::size_t>(i)].SetAutoRepeat(kDelay, kInterval);
    for (int i = kHome; i <= kReturn; ++i)
        m_inside->buttons[static_cast<std::size_t>(i)].SetTextPlace(EKxButtonText::Beside);
    m_inside->buttons[kJoystick].SetToggle(true);
}

CKxDevUI_ZDrive::~CKxDevUI_ZDrive() { Destroy(); }

// ---- The parts -----------------------------------------------------------------------------------------------------

bool CKxDevUI_ZDrive::Make(const Parts& parts) {
    const long right = std::max(m_width, kWidth) - kEdge;
    m_requests->Attach(parts.Window());
    // What was typed before the control was made anew comes back without a word.
    PostMessageW(parts.Window(), kLookAgain, 0, 0);
    Enable(parts.Window(), m_enabled && !m_locked);
    if (!parts) return false;
    // What is held without a window is set before there is one: each text and each state once.
    ShowSettings();
    for (const auto& [part, use] : Usable())
        part->SetEnabled(use);
    for (int i = 0; i < kButtonCount; ++i) {
        auto& each = m_inside->buttons[static_cast<std::size_t>(i)];
        const CKxStringW title = Translated(kLooks[i].title);
        each.SetTitle(title);
        if (i < kHome || i > kReturn) each.SetToolTip(title);
    }
    if (!parts.Label(m_label, kTitleId, m_title, {kEdge, 2, right - kEdge - kText, 2 + kText}, SS_ENDELLIPSIS) ||
        !m_inside->view.Make(parts, {kEdge, kViewTop, right, kViewBottom})) {
        return false;
    }
    m_inside->view.SetTabStop(false);
    m_inside->notes = nullptr;
    m_notes = NotesText();
    m_usable = 0;
    if (!parts.Label(m_inside->notes, kNotes, m_notes, {kEdge, kNotesTop, right, kNotesTop + 2 * kText - kGap}) ||
        !MakeSteps(parts) || !MakeLimits(parts) || !MakeSpeed(parts)) {
        return false;
    }
    Show();
    if (parts) m_requests->Show();
    return static_cast<bool>(parts);
}

bool CKxDevUI_ZDrive::MakeSteps(const Parts& parts) {
    const long right = std::max(m_width, kWidth) - kEdge;
    const long goTop = kGoTop + (kSide - kField) / 2, buttons = right - 4 * kSide - 3 * kGap;
    if (!parts.Label(kGoToText, Translated(L"Go to"), {kEdge, goTop + kBeside, 48, goTop + kBeside + kText}) ||
        !m_inside->goTo.Make(parts, {50, goTop, 108, goTop + kField}) ||
        !parts.Label(kUnits, L"\u00B5m", {110, goTop + kBeside, buttons - kGap, goTop + kBeside + kText})) {
        return false;
    }
    for (int i = kCoarseDown; i <= kCoarseUp; ++i) {
        const long left = buttons + (i - kCoarseDown) * (kSide + kGap);
        auto& each = m_inside->buttons[static_cast<std::size_t>(i)];
        if (!each.Make(parts, {left, kGoTop, left + kSide, kGoTop + kSide})) return false;
    }
    const long text = kSizesTop + kBeside, half = (right - kEdge) / 2;
    if (!parts.Label(kFineText, Translated(L"Fine"), {kEdge, text, 48, text + kText}) ||
        !m_inside->fine.Make(parts, {50, kSizesTop, 96, kSizesTop + kField}) ||
        !parts.Label(kUnits + 1, L"\u00B5m", {98, text, 120, text + kText}) ||
        !parts.Label(kCoarseText, Translated(L"Coarse"), {half, text, half + 54, text + kText}) ||
        !m_inside->coarse.Make(parts, {half + 56, kSizesTop, half + 102, kSizesTop + kField}) ||
        !parts.Label(kUnits + 2, L"\u00B5m", {half + 104, text, half + 126, text + kText})) {
        return false;
    }
    const long width = (right - kEdge - 2 * kEdge) / 3;
    for (int i = kHome; i <= kReturn; ++i) {
        const long left = kEdge + (i - kHome) * (width + kEdge);
        auto& each = m_inside->buttons[static_cast<std::size_t>(i)];
        if (!each.Make(parts, {left, kMovesTop, left + width, kMovesTop + kSide})) return false;
    }
    return true;
}

bool CKxDevUI_ZDrive::MakeLimits(const Parts& parts) {
    const long right = std::max(m_width, kWidth) - kEdge;
    const auto row = [&](long top, int label, const wchar_t* text, NumberField& field, int unit, int here) {
        auto& first = m_inside->buttons[static_cast<std::size_t>(here)];
        auto& second = m_inside->buttons[static_cast<std::size_t>(here) + 1];
        return parts.Label(label, Translated(text), {kEdge, top + kBeside, 94, top + kBeside + kText}) &&
               field.Make(parts, {96, top, 166, top + kField}) &&
               parts.Label(unit, L"\u00B5m", {168, top + kBeside, 189, top + kBeside + kText}) &&
               first.Make(parts, {right - 62, top - 1, right - 32, top + kField + 1}) &&
               second.Make(parts, {right - 30, top - 1, right, top + kField + 1});
    };
    return row(kUpperTop, kUpperText, L"Upper limit", m_inside->upper, kUnits + 3, kUpperHere) &&
           row(kLowerTop, kLowerText, L"Lower limit", m_inside->lower, kUnits + 4, kLowerHere);
}

bool CKxDevUI_ZDrive::MakeSpeed(const Parts& parts) {
    const long text = kSpeedTop + kBeside, right = std::max(m_width, kWidth) - kEdge;
    return parts.Label(kSpeedText, Translated(L"Speed"), {kEdge, text, 94, text + kText}) &&
           m_inside->speed.Make(parts, {96, kSpeedTop, 166, kSpeedTop + kField}) &&
           parts.Label(kUnits + 5, L"\u00B5m/s", {168, text, 206, text + kText}) &&
           m_inside->buttons[kJoystick].Make(parts, {right - 30, kSpeedTop - 1, right, kSpeedTop + kField + 1});
}

RECT CKxDevUI_ZDrive::SignPlace() const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long side = Activity::SignSide(), gap = CKxGUILayoutManager::Zoomed(2);
    return {client.right - 2 * gap - side, gap, client.right - 2 * gap, gap + side};
}

// ---- The device ----------------------------------------------------------------------------------------------------

bool CKxDevUI_ZDrive::Update(CDMApi_LogDevId id, const ZDriveBand& what) {
    const auto ask = [&](const IKxDeviceZDrive& device) { return Told::Of(device, what); };
    return UpdateFrom<IKxDeviceZDrive>(this, kSource, id, ask, [&](const Told& told) {
        const Alive alive(static_cast<CKxDevUI_Base*>(this));
        if (what.structure) {
            Drive drive = told.drive;
            drive.position = m_drive.position, drive.target = m_drive.target;
            drive.stackTop = m_drive.stackTop, drive.stackBottom = m_drive.stackBottom, drive.piezo = m_drive.piezo;
            m_drive = drive;
            m_speed = told.speed;
            m_joystickLock = told.joystickLock;
            ShowSettings();
        }
        if (what.state) {
            ++m_answers;
            Follow(told.activity, id);
            if (!alive) return;
            TakeTarget(told.drive.target);
            TakePosition(told.drive.position);
        }
        Show();
    });
}

void CKxDevUI_ZDrive::Follow(const KxActivity& now, CDMApi_LogDevId device) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    m_locked = now.activity == EKxActivity::Locked;
    if (m_hWnd) Enable(m_hWnd, m_enabled && !m_locked);
    if (alive) m_requests->Tell(now, device);
}

void CKxDevUI_ZDrive::SetEnabled(bool enable) {
    m_enabled = enable;
    // What loses the focus may end this object.
    if (m_hWnd) Enable(m_hWnd, enable && !m_locked);
}

// ---- Setters -------------------------------------------------------------------------------------------------------

void CKxDevUI_ZDrive::SetDrive(const Drive& drive) {
    Drive cleaned = drive;
    for (Position* const each : {&cleaned.lower, &cleaned.upper, &cleaned.position, &cleaned.target, &cleaned.home,
                                 &cleaned.stackTop, &cleaned.stackBottom})
        *each = Cleaned(*each);
    const Position position = std::exchange(cleaned.position, m_drive.position);
    const Position target = std::exchange(cleaned.target, m_drive.target);
    m_drive = cleaned;
    TakeTarget(target);
    if (position != m_drive.position) TakePosition(position);
    ShowAll();
}

void CKxDevUI_ZDrive::SetPosition(std::optional<double> position) {
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    ++m_answers;
    TakePosition(Cleaned(position));
    m_requests->Answer();
    if (alive) Show();
}

void CKxDevUI_ZDrive::SetLimits(std::optional<double> lower, std::optional<double> upper) {
    m_drive.lower = Cleaned(lower);
    m_drive.upper = Cleaned(upper);
    ShowAll();
}

void CKxDevUI_ZDrive::SetStack(std::optional<double> bottom, std::optional<double> top) {
    m_drive.stackBottom = Cleaned(bottom);
    m_drive.stackTop = Cleaned(top);
    Show();
}

void CKxDevUI_ZDrive::SetPiezo(const std::optional<Piezo>& piezo) {
    m_drive.piezo = piezo;
    Show();
}

void CKxDevUI_ZDrive::SetStep(EKxZStep which, double size) {
    if (!IsStep(size)) return;
    m_steps[which == EKxZStep::Coarse] = size;
    ShowAll();
}

void CKxDevUI_ZDrive::SetSpeed(const std::optional<Speed>& speed) {
    m_speed = speed;
    ShowAll();
}

void CKxDevUI_ZDrive::SetJoystickLock(std::optional<bool> locked) {
    m_joystickLock = locked;
    ShowAll();
}

void CKxDevUI_ZDrive::SetEscape(const Retreat& escape) {
    m_escape = {Cleaned(escape.from), escape.away, escape.back};
    Show();
}

// ---- What is shown -------------------------------------------------------------------------------------------------

// A drive that is on its way, or nobody knows where, does not drift.
void CKxDevUI_ZDrive::TakePosition(Position position) {
    m_drive.position = position;
    const EKxActivity activity = m_requests->Now().activity;
    if (!position || activity == EKxActivity::Moving || m_requests->IsLost())
        m_inside->view.Forget();
    else
        m_inside->view.Sample(KX_GetTimeCounter(), *position);
}

void CKxDevUI_ZDrive::TakeTarget(Position target) {
    if (target != m_drive.target) m_inside->view.Forget();
    m_drive.target = target;
}

void CKxDevUI_ZDrive::ShowSettings() {
    m_inside->fine.Show(m_steps[0]);
    m_inside->coarse.Show(m_steps[1]);
    m_inside->upper.Show(m_drive.upper);
    m_inside->lower.Show(m_drive.lower);
    m_inside->speed.Show(m_speed ? Position(m_speed->speed) : Position());
    m_inside->buttons[kJoystick].SetState(m_joystickLock.value_or(false));
}

void CKxDevUI_ZDrive::ShowAll() {
    ShowSettings();
    Show();
}

// The last of them may move the focus, and so end the control.
void CKxDevUI_ZDrive::Show() {
    m_inside->view.Show(m_drive, !m_requests->IsLost(), m_steps[0]);
    ShowNotes();
    ShowUsable();
}

std::array<std::pair<CKxDevUI_Base*, bool>, 4> CKxDevUI_ZDrive::Usable() const {
    return {{{&m_inside->buttons[kHome], m_drive.home.has_value()},
             {&m_inside->buttons[kReturn], m_escape.from.has_value()},
             {&m_inside->speed, m_speed.has_value()},
             {&m_inside->buttons[kJoystick], m_joystickLock.has_value()}}};
}

// Asked at every step of the live position: windows are touched only where one is to be another way.
void CKxDevUI_ZDrive::ShowUsable() {
    const HWND window = m_hWnd;
    const Parts parts(window, this);
    if (!parts) return;
    const bool enabled = IsWindowEnabled(window) != FALSE;
    unsigned now = enabled;
    for (const auto& each : Usable())
        now = now << 1 | unsigned{each.second};
    if (std::exchange(m_usable, now) == now) return;
    const KeepsFocus keeps(window);
    for (const auto& [part, use] : Usable()) {
        if (!parts) return;
        Enable(*part, enabled && use);
    }
}

CKxStringW CKxDevUI_ZDrive::NotesText() const {
    Position considered;
    double typed = 0;
    if (m_inside->goTo.IsTyped() && KX_StringToDouble(m_inside->goTo.GetText(), typed)) considered = typed;
    CKxStringW text;
    constexpr std::size_t kLines = 2;
    const auto notes = NotesOf(m_drive, m_escape, considered);
    for (std::size_t i = 0; i < std::min(notes.size(), kLines); ++i)
        text = i == 0 ? NoteText(notes[i]) : text + L"\n" + NoteText(notes[i]);
    return text;
}

void CKxDevUI_ZDrive::ShowNotes() {
    CKxStringW text = NotesText();
    if (!m_inside->notes || text == m_notes) return;
    m_notes = std::move(text);
    SetWindowTextW(m_inside->notes, m_notes);
}

// ---- The host ------------------------------------------------------------------------------------------------------

void CKxDevUI_ZDrive::OnMoveRequest(double, bool&) {}
void CKxDevUI_ZDrive::OnEscapeRequest(double position, bool& veto) { OnMoveRequest(position, veto); }
void CKxDevUI_ZDrive::OnLimitChangeRequest(EKxZLimit, std::optional<double>, bool&) {}
void CKxDevUI_ZDrive::OnStepChangeRequest(EKxZStep, double, bool&) {}
void CKxDevUI_ZDrive::OnSpeedChangeRequest(double, bool&) {}
void CKxDevUI_ZDrive::OnJoystickLockRequest(bool, bool&) {}
void CKxDevUI_ZDrive::OnEscapeChanged() {}

// A button asks, and tells of a refusal, by itself; what comes otherwise asks here.
void CKxDevUI_ZDrive::Asking(const std::function<Outcome()>& act) {
    const Activity::Question question(*m_requests);
    if (act() == Outcome::Refused) m_requests->Refused(question, -1);
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::Say(const CKxStringW& why) const {
    KX_SayWhyRefused(why);
    return Outcome::Refused;
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::Move(const kx::zdrive::Move& move, const Retreat& then, bool escapes) {
    // The nearer bound on each side.
    const double low = m_drive.lower.value_or(m_drive.minimum.value_or(0));
    const double high = m_drive.upper.value_or(m_drive.maximum.value_or(0));
    if (move.verdict == Verdict::BeyondRange)
        return Say(WhyNot(move.verdict, m_drive.minimum.value_or(0), m_drive.maximum.value_or(0)));
    if (move.verdict != Verdict::Goes) return Say(WhyNot(move.verdict, low, high));
    if (move.end != Verdict::Goes) ShowAnswer(m_hWnd, (Translated(L"Ends at") + L" " + Micrometres(*move.to)).str());
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    const unsigned answers = m_answers;
    const Outcome outcome =
        AskHost(this, [&](bool& veto) { escapes ? OnEscapeRequest(*move.to, veto) : OnMoveRequest(*move.to, veto); });
    if (outcome != Outcome::Agreed) return outcome;
    // Who has told of the drive meanwhile knows better.
    if (m_answers == answers) {
        TakeTarget(move.to);
        m_requests->Tell({EKxActivity::Asked, -1, {}});
    }
    if (alive) Remember(then);
    if (alive) Show();
    return alive ? outcome : Outcome::Gone;
}

void CKxDevUI_ZDrive::Remember(const Retreat& escape) {
    if (escape == m_escape) return;
    m_escape = escape;
    Guarded([&]() -> Handled { return OnEscapeChanged(), 0; });
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::Step(EKxZStep which, int times) {
    return Move(StepFrom(m_drive, GetStep(which) * times), AfterMove(m_escape));
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::AskLimit(EKxZLimit which, Position limit) {
    const bool upper = which == EKxZLimit::Upper;
    Position& held = upper ? m_drive.upper : m_drive.lower;
    if (limit == held) return Outcome::Agreed;
    const Verdict verdict = JudgeLimit(m_drive, upper, limit);
    if (verdict != Verdict::Goes) return Say(WhyNot(verdict, m_drive.minimum.value_or(0), m_drive.maximum.value_or(0)));
    const Outcome outcome = AskHost(this, [&](bool& veto) { OnLimitChangeRequest(which, limit, veto); });
    if (outcome != Outcome::Agreed) return outcome;
    const Alive alive(static_cast<CKxDevUI_Base*>(this));
    upper ? SetLimits(m_drive.lower, limit) : SetLimits(limit, m_drive.upper);
    return alive ? outcome : Outcome::Gone;
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::AskStep(EKxZStep which, double size) {
    if (!IsStep(size)) return Say(Translated(L"No step is of that size"));
    const Outcome outcome = AskHost(this, [&](bool& veto) { OnStepChangeRequest(which, size, veto); });
    if (outcome == Outcome::Agreed) SetStep(which, size);
    return outcome;
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::AskSpeed(double speed) {
    if (!m_speed) return Outcome::Agreed;
    if (!(speed >= m_speed->slowest && speed <= m_speed->fastest))
        return Say(Translated(L"Beyond the range") + InBrackets(NumberText(m_speed->slowest) + L" \u2013 " +
                                                                NumberText(m_speed->fastest) + L" \u00B5m/s"));
    const Outcome outcome = AskHost(this, [&](bool& veto) { OnSpeedChangeRequest(speed, veto); });
    if (outcome == Outcome::Agreed && m_speed) SetSpeed(Speed{speed, m_speed->slowest, m_speed->fastest});
    return outcome;
}

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::AskJoystick(bool lock) {
    const Outcome outcome = AskHost(this, [&](bool& veto) { OnJoystickLockRequest(lock, veto); });
    if (outcome == Outcome::Agreed) m_joystickLock = lock;
    return outcome;
}

// ---- The user ------------------------------------------------------------------------------------------------------

CKxDevUI_ZDrive::Outcome CKxDevUI_ZDrive::Press(int button) {
    const auto to = [&](Position position) {
        return kx::zdrive::Move{position, Judge(m_drive, position), Verdict::Goes};
    };
    const Position here = m_requests->IsLost() ? Position() : m_drive.position;
    const auto limitHere = [&](EKxZLimit which) {
        return here ? AskLimit(which, std::round(*here * 1000) / 1000) : Say(Translated(L"The position is not known"));
    };
    switch (button) {
    case kCoarseDown: return Step(EKxZStep::Coarse, -1);
    case kFineDown: return Step(EKxZStep::Fine, -1);
    case kFineUp: return Step(EKxZStep::Fine, 1);
    case kCoarseUp: return Step(EKxZStep::Coarse, 1);
    case kHome: return Move(to(m_drive.home), AfterMove(m_escape));
    case kEscape: return Move(EscapeOf(m_drive), AfterEscape(m_escape, here ? ReturnPlace(m_drive) : here), true);
    case kReturn: return Move(to(m_escape.from), AfterReturn(m_escape));
    case kUpperHere: return limitHere(EKxZLimit::Upper);
    case kUpperLift: return AskLimit(EKxZLimit::Upper, {});
    case kLowerHere: return limitHere(EKxZLimit::Lower);
    case kLowerLift: return AskLimit(EKxZLimit::Lower, {});
    default: return Outcome::Agreed;
    }
}

void CKxDevUI_ZDrive::Command(int id, int code) {
    Inside& inside = *m_inside;
    if (id == kGoTo) {
        if (code != EN_CHANGE && code != kEditEnter && code != EN_KILLFOCUS) return;
        const auto position = code == EN_CHANGE ? Position() : inside.goTo.TypedBy(id, code);
        // One that is left behind in the field moves nothing.
        if (position && code == kEditEnter)
            return Asking([&] {
                return Move({position, Judge(m_drive, position), Verdict::Goes}, AfterMove(m_escape));
            });
        ShowNotes();
    } else if (const auto fine = inside.fine.TypedBy(id, code)) {
        Asking([&] { return AskStep(EKxZStep::Fine, *fine); });
    } else if (const auto coarse = inside.coarse.TypedBy(id, code)) {
        Asking([&] { return AskStep(EKxZStep::Coarse, *coarse); });
    } else if (const auto upper = inside.upper.TypedBy(id, code)) {
        Asking([&] { return AskLimit(EKxZLimit::Upper, *upper); });
    } else if (const auto lower = inside.lower.TypedBy(id, code)) {
        Asking([&] { return AskLimit(EKxZLimit::Lower, *lower); });
    } else if (const auto speed = inside.speed.TypedBy(id, code)) {
        Asking([&] { return AskSpeed(*speed); });
    }
}

bool CKxDevUI_ZDrive::HandleMouseWheel(WPARAM wParam, LPARAM) {
    const WORD keys = GET_KEYSTATE_WPARAM(wParam);
    const bool fine = (keys & MK_CONTROL) != 0, coarse = (keys & MK_SHIFT) != 0;
    if ((!fine && !coarse) || !m_hWnd || !IsChild(m_hWnd, GetFocus()) || !IsWindowEnabled(m_hWnd)) return false;
    const int notches = NotchesOf(GET_WHEEL_DELTA_WPARAM(wParam), m_wheelRest);
    // With both keys the smaller one: it does less harm.
    if (notches != 0) Asking([&] { return Step(fine ? EKxZStep::Fine : EKxZStep::Coarse, notches); });
    return true;
}

Handled CKxDevUI_ZDrive::Handle(const Message& message) {
    switch (message.id) {
    case WM_ENABLE: {
        const Parts parts(message.window, this);
        EnableAll(message.window, message.wParam != FALSE);
        if (!parts) return 0;
        m_usable = 0;
        ShowUsable();
        if (IsWindow(message.window)) InvalidateRect(message.window, nullptr, TRUE);
        return message.Default();
    }
    case WM_DESTROY: m_inside->notes = nullptr; return std::nullopt;
    case kLookAgain: ShowNotes(); return 0;
    case WM_MOUSEWHEEL: return HandleMouseWheel(message.wParam, message.lParam) ? Handled(0) : std::nullopt;
    default: return std::nullopt;
    }
}
