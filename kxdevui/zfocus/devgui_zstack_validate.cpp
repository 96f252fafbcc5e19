// The validations of the Z stack panel: from a typed text to the record.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxsystem/kx_number.h>
#include <kxsystem/kx_translation.h>

#include <cstdlib>

using kx::ui::Alive;

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

}  // namespace

int CKxDevUI_ZStack::iKeepRange = 0;

// ---- What they share -----------------------------------------------------------------------------------------------

// The message comes before the refresh, and both while further validations are held off: a box that opens takes the
// focus from an edit, and a host that refreshes may move it.
bool CKxDevUI_ZStack::Validate(int edit, bool showErrors, const Refresh& refresh, const Apply& apply) {
    if (m_validating) return false;
    const Alive alive(this);
    const Raised validating(m_validating, alive);

    wchar_t text[kTextRoom] = L"";
    GetWindowTextW(Item(edit), text, kTextRoom);
    const Verdict verdict = kx::zstack::IsNoEntry(text) ? Verdict::Taken : apply(text);
    if (alive) Complain(verdict, showErrors);
    if (alive) refresh();
    return verdict == Verdict::Taken;
}

bool CKxDevUI_ZStack::ValidateNumber(int edit, bool showErrors, const Refresh& refresh,
                                     const std::function<Verdict(double)>& apply) {
    return Validate(edit, showErrors, refresh, [&apply](const wchar_t* text) {
        double value = 0;
        return KX_StringToDouble(text, value) ? apply(value) : Verdict::NotANumber;
    });
}

void CKxDevUI_ZStack::Complain(Verdict verdict, bool showErrors) {
    if (verdict == Verdict::Taken || verdict == Verdict::Declined) return;
    if (!showErrors || !CKxGUIElement::IsVisible()) return;
    const wchar_t* text = verdict == Verdict::NotANumber ? L"Invalid value entered." : L"Value is out of range.";
    KX_MessageBox(m_hWnd, KX_GetTranslation(text, kSource), KX_GetTranslation(L"Z Series", kSource), MB_ICONEXCLAMATION,
                  -1);
}

CKxDevUI_ZStack::Verdict CKxDevUI_ZStack::VerdictOf(int status) {
    return status == eKxZStack_Ok ? Verdict::Taken : Verdict::OutOfRange;
}

CKxDevUI_ZStack::Refresh CKxDevUI_ZStack::Telling(unsigned int flags) {
    return [this, flags] { OnZStackChanged(flags); };
}

// ---- One setter ----------------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::ValidateTop(bool showErrors) {
    return ValidateNumber(IDC_ZS_EDIT_TOP, showErrors, Telling(RefreshAll),
                          [this](double top) { return VerdictOf(m_data->SetTop(top, true)); });
}

bool CKxDevUI_ZStack::ValidateBottom(bool showErrors) {
    return ValidateNumber(IDC_ZS_EDIT_BOTTOM, showErrors, Telling(RefreshAll),
                          [this](double bottom) { return VerdictOf(m_data->SetBottom(bottom, true)); });
}

bool CKxDevUI_ZStack::ValidateHome(bool showErrors) {
    return ValidateNumber(
        IDC_ZS_EDIT_BOTTOM, showErrors, [this] { UpdateGUI(RefreshAll); },
        [this](double home) { return VerdictOf(m_data->SetHome(home)); });
}

bool CKxDevUI_ZStack::ValidateStep(bool showErrors) {
    return ValidateNumber(IDC_ZS_EDIT_STEP, showErrors, Telling(RefreshStep), [this](double step) {
        if (m_data->SetStep(step) != eKxZStack_Ok) return Verdict::OutOfRange;
        OnStepChanged(step, true);
        return Verdict::Taken;
    });
}

bool CKxDevUI_ZStack::ValidateSteps(bool showErrors) {
    return Validate(IDC_ZS_EDIT_STEPS, showErrors, Telling(RefreshAll), [this](const wchar_t* text) {
        const auto count = kx::zstack::ReadCount(text);
        return count ? VerdictOf(m_data->SetCount(static_cast<unsigned int>(*count))) : Verdict::NotANumber;
    });
}

// ---- The range -----------------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::ValidateRange(bool showErrors) {
    int type = 0;
    if (!m_data || m_data->GetType(&type) != eKxZStack_Ok || !kx::zstack::HasRange(type)) return false;
    return ValidateNumber(IDC_ZS_EDIT_RANGE, showErrors, Telling(RefreshAll),
                          [this](double range) { return SetRange(range); });
}

CKxDevUI_ZStack::Verdict CKxDevUI_ZStack::SetRange(double range) {
    CKxZStackData& data = *m_data;
    const Position home = Known(&CKxZStackData::GetHome);
    const Position oldTop = Known(&CKxZStackData::GetTop);
    const Position oldBottom = Known(&CKxZStackData::GetBottom);

    bool taken = data.SetBottom(home.value_or(0.0) - range * 0.5, true) == eKxZStack_Ok;
    if (!taken && home) {
        // The lower end of the device is where the stack fits.
        const Position lowest = Known(&CKxZStackData::GetZRangeMin);
        taken = lowest && data.SetHome(range * 0.5 + *lowest) == eKxZStack_Ok &&
                data.SetBottom(*lowest, true) == eKxZStack_Ok;
    }
    double bottom = 0;
    data.GetBottom(&bottom);
    if (taken && data.SetTop(bottom + range, true) == eKxZStack_Ok) return Verdict::Taken;

    // The home is not put back: hosts rely on it having gone where the stack would fit.
    if (oldBottom) {
        data.SetBottom(*oldBottom, true);
    } else {
        data.ResetBottom();
    }
    if (oldTop) {
        data.SetTop(*oldTop, true);
    } else {
        data.ResetTop();
    }
    return Verdict::OutOfRange;
}

// ---- Above and below -----------------------------------------------------------------------------------------------

bool CKxDevUI_ZStack::ValidateRangeMax(bool showErrors) { return ValidateEnd(true, showErrors); }

bool CKxDevUI_ZStack::ValidateRangeMin(bool showErrors) { return ValidateEnd(false, showErrors); }

bool CKxDevUI_ZStack::ValidateEnd(bool above, bool showErrors) {
    int type = 0;
    if (!m_data || m_data->GetType(&type) != eKxZStack_Ok) return false;
    return ValidateNumber(above ? IDC_ZS_EDIT_ABOVE : IDC_ZS_EDIT_BELOW, showErrors, Telling(RefreshAll),
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
    if (status != eKxZStack_Refused) return VerdictOf(status);

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
