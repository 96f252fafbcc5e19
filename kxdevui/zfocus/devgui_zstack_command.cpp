// What the user does to the Z stack panel's controls.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxdevui/zfocus/zstack_window.h>

using kx::ui::Alive;
using kx::ui::Handled;
using kx::zstack::ShownOf;

namespace {

constexpr bool IsValidated(int id) { return id >= IDC_ZS_EDIT_STEP && id <= IDC_ZS_EDIT_ABOVE; }

constexpr bool IsPositionButton(int id) { return id >= IDC_ZS_TOP && id <= IDC_ZS_RELATIVE; }

}  // namespace

Handled CKxDevUI_ZStack::OnCommand(int id, int code) {
    switch (code) {
    case BN_CLICKED: return OnClicked(id);
    case EN_SETFOCUS: return OnEditFocus(id);
    case EN_KILLFOCUS: return OnEditLeft(id);
    case EN_CHANGE: ShownOf(m_hWnd)->typed = true; return std::nullopt;
    case CBN_SELCHANGE: return id == IDC_ZS_DEVICE ? OnDeviceChosen() : std::nullopt;
    default: return std::nullopt;
    }
}

// ---- Buttons -------------------------------------------------------------------------------------------------------

Handled CKxDevUI_ZStack::OnClicked(int id) {
    double z = 0;
    switch (id) {
    case IDC_ZS_TOP:
        if (m_data->GetZPosition(&z) == eKxZStack_Ok) m_data->SetTop(z, true);
        OnZStackChanged(RefreshAll);
        return 0;
    case IDC_ZS_HOME:
        if (m_data->GetZPosition(&z) == eKxZStack_Ok) m_data->SetHome(z);
        OnZStackChanged(RefreshAll);
        return 0;
    case IDC_ZS_BOTTOM:
        if (m_data->GetZPosition(&z) == eKxZStack_Ok) m_data->SetBottom(z, true);
        OnZStackChanged(RefreshAll);
        return 0;
    case IDC_ZS_RELATIVE: MakeRelative(); return 0;
    case IDC_ZS_SUGGESTED: TakeSuggestedStep(); return 0;
    case IDC_ZS_TYPE_ENDS: ChooseType(0); return 0;
    case IDC_ZS_TYPE_SYMMETRIC: ChooseType(2); return 0;
    case IDC_ZS_TYPE_ASYMMETRIC: ChooseType(3); return 0;
    case IDC_ZS_PIEZO: DoCommand(m_piezoMenu.GetCommand(static_cast<int>(m_piezoEntry))); return 0;
    default: return std::nullopt;
    }
}

void CKxDevUI_ZStack::MakeRelative() {
    int type = 0;
    if (m_data->GetType(&type) == eKxZStack_Ok && kx::zstack::IsHeldByEnds(type)) {
        m_data->ResetTop();
        m_data->ResetBottom();
    }
    m_data->ResetHome();
    const Alive alive(this);
    OnZStackChanged(RefreshAll);
    if (alive && m_hWnd) SetFocus(m_hWnd);
}

// The upper four types are a set of their own, which a change of layout does not leave.
void CKxDevUI_ZStack::ChooseType(int type) {
    int current = 0;
    if (m_data->GetType(&current) != eKxZStack_Ok) return;
    m_data->SetType(current >= 4 ? type + 4 : type);
    const Alive alive(this);
    OnZStackChanged(RefreshAll);
    if (alive) UpdateGUI(RefreshAll);
}

void CKxDevUI_ZStack::TakeSuggestedStep() {
    const Alive alive(this);
    double step = 0;
    if (m_data->GetStepSuggested(&step) != eKxZStack_Ok) return OnZStackChanged(RefreshAll);
    if (m_data->SetStep(step) == eKxZStack_Ok) {
        OnStepChanged(step, false);
    } else {
        Complain(Verdict::OutOfRange, true);
    }
    if (alive) OnZStackChanged(RefreshStep);
}

// A device that the record refuses is shown no longer: the list goes back with the refresh.
Handled CKxDevUI_ZStack::OnDeviceChosen() {
    const LRESULT index = SendMessageW(Item(IDC_ZS_DEVICE), CB_GETCURSEL, 0, 0);
    if (index < 0) return 0;
    m_data->SetZDevice(static_cast<unsigned int>(index));
    const Alive alive(this);
    OnZStackChanged(RefreshAll);
    if (alive) UpdateGUI(RefreshAll);
    return 0;
}

// ---- Edits ---------------------------------------------------------------------------------------------------------

// What stands for "not set" goes away for typing.
Handled CKxDevUI_ZStack::OnEditFocus(int id) {
    if (!IsValidated(id)) return std::nullopt;
    Dirty(id) = true;
    const auto isSet = [this, id] {
        switch (id) {
        case IDC_ZS_EDIT_STEP: return m_data->GetStep(nullptr) == eKxZStack_Ok;
        case IDC_ZS_EDIT_BELOW: {
            const int top = m_data->GetTop(nullptr), bottom = m_data->GetBottom(nullptr);
            return top == eKxZStack_Ok && bottom == eKxZStack_Ok;
        }
        case IDC_ZS_EDIT_RANGE: return m_data->GetBottom(nullptr) == eKxZStack_Ok;
        case IDC_ZS_EDIT_STEPS: return m_data->GetCount(nullptr) == eKxZStack_Ok;
        default: return m_data->GetTop(nullptr) == eKxZStack_Ok;
        }
    };
    if (!isSet()) SetWindowTextW(Item(id), L"");
    return 0;
}

Handled CKxDevUI_ZStack::OnEditLeft(int id) {
    if (!IsValidated(id)) return std::nullopt;
    // A refresh that hides the field takes the focus from it, and is nobody's wish.
    if (m_hidden == id) return 0;
    const HWND edit = Item(id), focus = GetFocus();
    const Alive alive(this);
    // A button that takes the focus by a press of the mouse still acts, and does so first. The refresh that follows
    // finds the edit dirty and leaves what was typed.
    if (focus && IsPositionButton(GetDlgCtrlID(focus)) && IsMyWindow(focus)) SendMessageW(focus, BM_CLICK, 0, 0);
    if (!alive || !m_hWnd) return 0;

    Dirty(id) = false;
    if (focus && focus == Item(IDC_ZS_DEVICE)) return 0;
    const bool accepted = ValidateEdit(id, !IsMyWindow(focus));
    if (!alive || !m_hWnd) return 0;
    if (!accepted) SetFocus(edit);
    // A text that the refresh has given to the field with the focus is not selected any more, and what is typed next
    // would be added to it.
    if (alive && m_hWnd) SelectFocused();
    return 0;
}

bool& CKxDevUI_ZStack::Dirty(int id) {
    switch (id) {
    case IDC_ZS_EDIT_STEP: return m_dirty.step;
    case IDC_ZS_EDIT_BELOW: return m_dirty.below;
    case IDC_ZS_EDIT_RANGE: return m_dirty.range;
    case IDC_ZS_EDIT_STEPS: return m_dirty.count;
    default: return m_dirty.above;
    }
}

bool CKxDevUI_ZStack::ValidateEdit(int id, bool showErrors) {
    switch (id) {
    case IDC_ZS_EDIT_STEP: return ValidateStep(showErrors);
    case IDC_ZS_EDIT_BELOW: return ValidateRangeMin(showErrors);
    case IDC_ZS_EDIT_RANGE: return ValidateRange(showErrors);
    case IDC_ZS_EDIT_STEPS: return ValidateSteps(showErrors);
    default: return ValidateRangeMax(showErrors);
    }
}

bool CKxDevUI_ZStack::IsMyWindow(HWND window) const {
    return m_hWnd && window && (window == m_hWnd || IsChild(m_hWnd, window));
}
