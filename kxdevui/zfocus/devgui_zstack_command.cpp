// What the user does to the Z stack panel's controls.
#include <kxdevui/zfocus/devgui_zstack.h>

#include <kxdevui/zfocus/zstack_ids.h>
#include <kxdevui/zfocus/zstack_rules.h>
#include <kxdevui/zfocus/zstack_window.h>

#include <utility>

using kx::ui::Alive;
using kx::ui::Handled;
using kx::zstack::Ask;
using kx::zstack::ShownOf;

namespace {

constexpr bool IsValidated(int id) { return id >= IDC_ZS_EDIT_STEP && id <= IDC_ZS_EDIT_ABOVE; }

constexpr bool IsPosition(int id) { return id == IDC_ZS_EDIT_TOP || id == IDC_ZS_EDIT_BOTTOM; }

constexpr bool IsPositionButton(int id) { return id >= IDC_ZS_TOP && id <= IDC_ZS_RELATIVE; }

// The window from which a refused field takes the focus back. It may be in another panel.
thread_local HWND s_displaced = nullptr;

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
    CKxZStackData& data = *m_data;
    const auto take = [this, &data](auto set) -> Handled {
        double z = 0;
        if (Ask([&] { return data.GetZPosition(&z); }) == eKxZStack_Ok) Ask([&] { return set(z); });
        OnZStackChanged(RefreshAll);
        return 0;
    };
    switch (id) {
    case IDC_ZS_TOP: return take([&](double z) { return data.SetTop(z, true); });
    case IDC_ZS_HOME: return take([&](double z) { return data.SetHome(z); });
    case IDC_ZS_BOTTOM: return take([&](double z) { return data.SetBottom(z, true); });
    case IDC_ZS_RELATIVE: MakeRelative(); return 0;
    case IDC_ZS_SUGGESTED: TakeSuggestedStep(); return 0;
    case IDC_ZS_TYPE_ENDS: ChooseType(0); return 0;
    case IDC_ZS_TYPE_SYMMETRIC: ChooseType(2); return 0;
    case IDC_ZS_TYPE_ASYMMETRIC: ChooseType(3); return 0;
    case IDC_ZS_PIEZO: DoCommand(m_piezo.GetName()); return 0;
    default: return std::nullopt;
    }
}

void CKxDevUI_ZStack::MakeRelative() {
    int type = 0;
    if (Ask([&] { return m_data->GetType(&type); }) == eKxZStack_Ok && kx::zstack::IsHeldByEnds(type)) {
        Ask([this] { return m_data->ResetTop(); });
        Ask([this] { return m_data->ResetBottom(); });
    }
    Ask([this] { return m_data->ResetHome(); });
    const Alive alive(this);
    OnZStackChanged(RefreshAll);
    if (alive && m_hWnd) SetFocus(m_hWnd);
}

// The upper four types are a set of their own, which a change of layout does not leave.
void CKxDevUI_ZStack::ChooseType(int type) {
    int current = 0;
    if (Ask([&] { return m_data->GetType(&current); }) != eKxZStack_Ok) return;
    Ask([&] { return m_data->SetType(current >= 4 ? type + 4 : type); });
    const Alive alive(this);
    OnZStackChanged(RefreshAll);
    if (alive) UpdateGUI(RefreshAll);
}

// A device that the record refuses is shown no longer: the list goes back with the refresh.
Handled CKxDevUI_ZStack::OnDeviceChosen() {
    const LRESULT index = SendMessageW(Item(IDC_ZS_DEVICE), CB_GETCURSEL, 0, 0);
    if (index < 0) return 0;
    Ask([&] { return m_data->SetZDevice(static_cast<unsigned int>(index)); });
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
    if (!IsValidated(id) && !(IsPosition(id) && IsWritable(id))) return std::nullopt;
    // The panel's message box takes the focus, and gives it back.
    if (IsComplaining()) return 0;
    // The focus was on its way to this field, which is not left by the user.
    if (s_displaced == Item(id)) {
        s_displaced = nullptr;
        if (IsValidated(id)) Dirty(id) = false;
        return 0;
    }
    if (IsPosition(id)) return OnPositionLeft(id);
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
    if (!accepted) GiveBackFocus(edit);
    // A text that the refresh has given to the field with the focus is not selected any more, and what is typed next
    // would be added to it.
    if (alive && m_hWnd) SelectFocused();
    return 0;
}

// The host alone knows what it has made the field writable for.
Handled CKxDevUI_ZStack::OnPositionLeft(int id) {
    const HWND edit = Item(id);
    const Alive alive(this);
    m_refused = false;
    SendMessageW(GetAncestor(m_hWnd, GA_PARENT), WM_COMMAND, MAKEWPARAM(id, EN_KILLFOCUS),
                 reinterpret_cast<LPARAM>(edit));
    if (alive && m_hWnd && m_refused) GiveBackFocus(edit);
    if (alive && m_hWnd) SelectFocused();
    return 0;
}

// The field that the focus was to have loses it again and would be validated in its turn, and two that are refused
// would pass the focus to and fro.
void CKxDevUI_ZStack::GiveBackFocus(HWND edit) {
    // Another's message box may have taken the focus, and keeps it.
    if (kx::ui::WhoComplains(m_hWnd)) return;
    // A field that has been hidden or disabled meanwhile is none to go back to.
    if ((GetWindowLongW(edit, GWL_STYLE) & (WS_VISIBLE | WS_DISABLED)) != WS_VISIBLE) return;
    const HWND outer = std::exchange(s_displaced, GetFocus());
    SetFocus(edit);
    s_displaced = outer;
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
