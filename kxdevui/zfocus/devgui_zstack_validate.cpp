// The validations of the Z stack panel: from a typed text to the record.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/framework/ui_complaint.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxdevui/zfocus/zstack_window.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

#include <cstdlib>
#include <iterator>

using kx::ui::Alive;
using kx::zstack::Ask;
using kx::zstack::Entry;
using kx::zstack::Meaning;
using kx::zstack::ShownOf;

namespace {

constexpr wchar_t kSource[] = L"devgui_zstack";

// The room for a typed text, its end included: what is longer is cut.
constexpr int kTextRoom = 16;

// Sets a flag until the end of the scope, if the object that it belongs to is there that long.
class Raised {
public:
    Raised(bool& flag, const Alive& alive) : m_flag(flag), m_alive(alive) { m_flag = true; }
    ~Raised() {
        if (m_alive) m_flag = false;
    }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& m_flag;
    const Alive& m_alive;
};

// What has been typed.
std::optional<double> NumberIn(const wchar_t* text, Meaning meaning) {
    if (meaning == Meaning::Count) return kx::zstack::ReadCount(text);
    double value = 0;
    return KX_StringToDouble(text, value) ? std::optional(value) : std::nullopt;
}

}  // namespace

int CKxDevUI_ZStack::iKeepRange = 0;

// ---- What they share -----------------------------------------------------------------------------------------------

// The message comes before the refresh, and both while further validations are held off: a box that opens takes the
// focus from an edit, and a host that refreshes may move it.
bool CKxDevUI_ZStack::Validate(int edit, Meaning meaning, bool showErrors, const Refresh& refresh, const Apply& apply) {
    if (m_validating || IsComplaining()) return false;
    const Alive alive(this);
    const Raised validating(m_validating, alive);

    wchar_t text[kTextRoom] = L"";
    GetWindowTextW(Item(edit), text, kTextRoom);
    const std::wstring typed = kx::ui::TextOf(Item(edit)).str();
    auto value = NumberBehind(edit, meaning);
    // With the habit, what nobody has typed is not entered.
    if (value && KX_GetFieldHabits(Item(edit)).revert) {
        m_refused = false;
        return UpdateGUI(RefreshAll), true;
    }
    Verdict verdict = Verdict::Taken;
    if (!kx::zstack::IsNoEntry(text)) {
        if (!value && CanBeRead(Item(edit))) value = NumberIn(text, meaning);
        verdict = value ? Verdict::OutOfRange : Verdict::NotANumber;
        // A getter that throws says nothing of what may be asked for next.
        if (value) kx::ui::Guarded([&]() -> kx::ui::Handled { return verdict = apply(*value), 0; });
    }
    if (alive) m_refused = verdict != Verdict::Taken;
    if (alive) Complain(edit, verdict, showErrors, typed);
    if (alive) kx::ui::Guarded([&]() -> kx::ui::Handled { return refresh(), 0; });
    return verdict == Verdict::Taken;
}

// Nobody has typed a text that is as the panel wrote it. What it was made of may have more digits.
CKxDevUI_ZStack::Position CKxDevUI_ZStack::NumberBehind(int edit, Meaning meaning) const {
    const HWND item = Item(edit);
    if (!item || SendMessageW(item, EM_GETMODIFY, 0, 0) != FALSE) return std::nullopt;
    const Entry& entry = ShownOf(m_hWnd)->entries[static_cast<std::size_t>(edit - IDC_ZS_EDIT_TOP)];
    wchar_t text[64] = L"";
    GetWindowTextW(item, text, static_cast<int>(std::size(text)));
    return entry.meaning == meaning && entry.text == text ? entry.value : std::nullopt;
}

// With the habit of answers: whether what is read of the text is all of it.
bool CKxDevUI_ZStack::CanBeRead(HWND edit) const {
    const std::wstring text = kx::ui::TextOf(edit).str();
    if (!KX_GetFieldHabits(edit).answer || !SendMessageW(edit, EM_GETMODIFY, 0, 0)) return true;
    if (kx::zstack::IsNoEntry(text.c_str())) return true;
    const Meaning meaning = GetDlgCtrlID(edit) == IDC_ZS_EDIT_STEPS ? Meaning::Count : Meaning::Position;
    double whole = 0;
    return KX_StringToDouble(text.c_str(), whole) && NumberIn(text.substr(0, kTextRoom - 1).c_str(), meaning) == whole;
}

kx::ui::Allowed CKxDevUI_ZStack::AllowedIn(int edit) const {
    kx::zstack::Bounds known;
    const auto ask = [&]() -> kx::ui::Handled {
        m_data->GetType(&known.type);
        known.top = Known(&CKxZStackData::GetTop);
        known.bottom = Known(&CKxZStackData::GetBottom);
        known.home = Known(&CKxZStackData::GetHome);
        m_data->GetZRangeMin(&known.lowest);
        m_data->GetZRangeMax(&known.highest);
        return 0;
    };
    if (m_data) kx::ui::Guarded(ask);
    return kx::zstack::AllowedIn(edit, known);
}

void CKxDevUI_ZStack::Complain(int edit, Verdict verdict, bool showErrors, const std::wstring& refused) {
    if (verdict == Verdict::Taken) return;
    const bool isNumber = verdict != Verdict::NotANumber;
    const CKxStringW text =
        KX_GetTranslation(isNumber ? L"Value is out of range." : L"Invalid value entered.", kSource);
    if (KX_GetFieldHabits(Item(edit)).answer) {
        // In nobody's way, so that it comes wherever the focus has gone, and also when the other end is not to move.
        const kx::ui::Allowed allowed = AllowedIn(edit);
        const bool isRecordAlone = isNumber && kx::ui::MayBeEntered(refused, allowed);
        kx::ui::ShowAnswer(Item(edit),
                           kx::ui::RefusedText(refused, isRecordAlone ? text.str() : kx::ui::AllowedText(allowed)));
        return;
    }
    if (verdict == Verdict::Declined || !showErrors || !CKxGUIElement::IsVisible()) return;
    kx::ui::Complain(m_hWnd, Item(edit), text, KX_GetTranslation(L"Z Series", kSource), MB_ICONEXCLAMATION);
}

bool CKxDevUI_ZStack::IsComplaining() const { return m_hWnd && kx::ui::WhoComplains(m_hWnd) == m_hWnd; }

CKxDevUI_ZStack::Verdict CKxDevUI_ZStack::VerdictOf(int status) {
    return status == eKxZStack_Ok ? Verdict::Taken : Verdict::OutOfRange;
}

CKxDevUI_ZStack::Refresh CKxDevUI_ZStack::Telling(unsigned int flags) {
    return [this, flags] { OnZStackChanged(flags); };
}

// ---- One setter ----------------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::ValidateTop(bool showErrors) {
    return Validate(IDC_ZS_EDIT_TOP, Meaning::Position, showErrors, Telling(RefreshAll),
                    [this](double top) { return VerdictOf(m_data->SetTop(top, true)); });
}

bool CKxDevUI_ZStack::ValidateBottom(bool showErrors) {
    return Validate(IDC_ZS_EDIT_BOTTOM, Meaning::Position, showErrors, Telling(RefreshAll),
                    [this](double bottom) { return VerdictOf(m_data->SetBottom(bottom, true)); });
}

bool CKxDevUI_ZStack::ValidateHome(bool showErrors) {
    return Validate(
        IDC_ZS_EDIT_BOTTOM, Meaning::Position, showErrors, [this] { UpdateGUI(RefreshAll); },
        [this](double home) { return VerdictOf(m_data->SetHome(home)); });
}

bool CKxDevUI_ZStack::ValidateStep(bool showErrors) {
    Position taken;
    const auto tell = [this, &taken] { taken ? TellStep(*taken, true) : OnZStackChanged(RefreshStep); };
    return Validate(IDC_ZS_EDIT_STEP, Meaning::Step, showErrors, tell, [this, &taken](double step) {
        if (m_data->SetStep(step) != eKxZStack_Ok) return Verdict::OutOfRange;
        taken = step;
        return Verdict::Taken;
    });
}

bool CKxDevUI_ZStack::ValidateSteps(bool showErrors) {
    return Validate(IDC_ZS_EDIT_STEPS, Meaning::Count, showErrors, Telling(RefreshAll), [this](double count) {
        return VerdictOf(m_data->SetCount(static_cast<unsigned int>(static_cast<long long>(count))));
    });
}

// As guarded as the typed step: its message box may have the button pressed again.
void CKxDevUI_ZStack::TakeSuggestedStep() {
    if (m_validating || IsComplaining()) return;
    const Alive alive(this);
    const Raised validating(m_validating, alive);
    double step = 0;
    if (Ask([&] { return m_data->GetStepSuggested(&step); }) != eKxZStack_Ok) return OnZStackChanged(RefreshAll);
    if (Ask([&] { return m_data->SetStep(step); }) == eKxZStack_Ok) return TellStep(step, false);
    Complain(IDC_ZS_EDIT_STEP, Verdict::OutOfRange, true, KX_FormatNumber(L"%g", step).str());
    if (alive) OnZStackChanged(RefreshStep);
}

void CKxDevUI_ZStack::TellStep(double step, bool typed) {
    const Alive alive(this);
    kx::ui::Guarded([&]() -> kx::ui::Handled { return OnStepChanged(step, typed), 0; });
    if (alive) OnZStackChanged(RefreshStep);
}

// ---- The range -----------------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::ValidateRange(bool showErrors) {
    int type = 0;
    if (!m_data || Ask([&] { return m_data->GetType(&type); }) != eKxZStack_Ok || !kx::zstack::HasRange(type)) {
        return false;
    }
    return Validate(IDC_ZS_EDIT_RANGE, Meaning::Range, showErrors, Telling(RefreshAll),
                    [this](double range) { return SetRange(range); });
}

CKxDevUI_ZStack::Verdict CKxDevUI_ZStack::SetRange(double range) {
    CKxZStackData& data = *m_data;
    const Position home = Known(&CKxZStackData::GetHome);
    const Position oldTop = Known(&CKxZStackData::GetTop);
    const Position oldBottom = Known(&CKxZStackData::GetBottom);

    const auto top = [&data](double z) { return Ask([&] { return data.SetTop(z, true); }) == eKxZStack_Ok; };
    const auto bottom = [&data](double z) { return Ask([&] { return data.SetBottom(z, true); }) == eKxZStack_Ok; };

    bool taken = bottom(home.value_or(0.0) - range * 0.5);
    if (!taken && home) {
        // The lower end of the device is where the stack fits.
        double lowest = 0;
        taken = Ask([&] { return data.GetZRangeMin(&lowest); }) == eKxZStack_Ok &&
                Ask([&] { return data.SetHome(range * 0.5 + lowest); }) == eKxZStack_Ok && bottom(lowest);
    }
    double begin = 0;
    Ask([&] { return data.GetBottom(&begin); });
    if (taken && top(begin + range)) return Verdict::Taken;

    // The home is not put back: hosts rely on it having gone where the stack would fit.
    if (oldBottom) {
        bottom(*oldBottom);
    } else {
        Ask([&] { return data.ResetBottom(); });
    }
    if (oldTop) {
        top(*oldTop);
    } else {
        Ask([&] { return data.ResetTop(); });
    }
    return Verdict::OutOfRange;
}

// ---- Above and below -----------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::ValidateRangeMax(bool showErrors) { return ValidateEnd(true, showErrors); }

bool CKxDevUI_ZStack::ValidateRangeMin(bool showErrors) { return ValidateEnd(false, showErrors); }

bool CKxDevUI_ZStack::ValidateEnd(bool above, bool showErrors) {
    int type = 0;
    if (!m_data || Ask([&] { return m_data->GetType(&type); }) != eKxZStack_Ok) return false;
    const Meaning meaning = kx::zstack::HasDistances(type) ? Meaning::Distance : Meaning::Position;
    return Validate(above ? IDC_ZS_EDIT_ABOVE : IDC_ZS_EDIT_BELOW, meaning, showErrors, Telling(RefreshAll),
                    [this, above, type](double entry) {
                        const Position home = Known(&CKxZStackData::GetHome);
                        return SetEnd(above, above ? kx::zstack::PositionAbove(type, home, entry)
                                                   : kx::zstack::PositionBelow(type, home, entry));
                    });
}

CKxDevUI_ZStack::Verdict CKxDevUI_ZStack::SetEnd(bool above, double position) {
    const auto set = [above, position](CKxZStackData& data, bool adjust) {
        return above ? data.SetTop(position, adjust) : data.SetBottom(position, adjust);
    };
    const int status = set(*m_data, false);
    if (status != eKxZStack_OutOfRange) return VerdictOf(status);

    const Alive alive(this);
    const bool move = MayMoveOtherEnd(above);
    // While the question was open, the panel may have gone, or lost its record.
    if (!move || !alive || !m_data) return Verdict::Declined;
    return VerdictOf(set(*m_data, true));
}

bool CKxDevUI_ZStack::MayMoveOtherEnd(bool above) {
    if (iKeepRange != 0) return iKeepRange == 1;
    const CKxStringW question =
        KX_GetTranslation(above ? L"Value is out of Z device range. Do you want to move the bottom to match the range?"
                                : L"Value is out of Z device range. Do you want to move the top to match the range?",
                          kSource);
    const INT_PTR result = DialogBoxParamW(kx::ui::ModuleOf(WndProc), L"YESNOKEEPDLG", m_hWnd, YesNoKeepDlg,
                                           reinterpret_cast<LPARAM>(question.c_str()));
    // A dialog that could not be shown answers -1, which is kept like a No: asking again would fail again.
    const bool yes = std::abs(result) == IDC_YNK_YES;
    if (result < 0) iKeepRange = yes ? 1 : -1;
    return yes;
}
