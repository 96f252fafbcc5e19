#include <kxdevui/controls/devgui_checkbox.h>

#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>
#include <kxsystem/kx_log.h>

using namespace kx::ui;

namespace {

// What of a placeholder's style is about how the text stands.
constexpr DWORD kAlignment = BS_LEFTTEXT | BS_LEFT | BS_RIGHT | BS_TOP | BS_BOTTOM | BS_PUSHLIKE | BS_MULTILINE;

}  // namespace

CKxDevUI_CheckBox::CKxDevUI_CheckBox()
    : ButtonControl(this, {.name = L"KxDevUI_CheckBox", .size = {120, 16}, .title = {}, .ownLayout = true},
                    Drawn::ByPlatform) {}

CKxDevUI_CheckBox::~CKxDevUI_CheckBox() { Binding::EndOwnWindow(this); }

// Never an automatic one: the host is asked before it changes.
DWORD CKxDevUI_CheckBox::Style() const noexcept {
    return m_alignment | (m_threeState ? DWORD{BS_3STATE} : DWORD{BS_CHECKBOX});
}

bool CKxDevUI_CheckBox::Make(const Parts& parts) { return MakeButton(parts, Style()); }

void CKxDevUI_CheckBox::Adopt(HWND placeholder) {
    ButtonControl::Adopt(placeholder);
    wchar_t name[16] = L"";
    GetClassNameW(placeholder, name, 16);
    if (lstrcmpiW(name, L"Button") != 0) return;
    const auto style = static_cast<DWORD>(GetWindowLongW(placeholder, GWL_STYLE));
    const DWORD type = style & BS_TYPEMASK;
    const bool three = type == BS_3STATE || type == BS_AUTO3STATE;
    if (!three && type != BS_CHECKBOX && type != BS_AUTOCHECKBOX) return;
    m_threeState = three;
    m_alignment = style & kAlignment;
    m_state = static_cast<int>(SendMessageW(placeholder, BM_GETCHECK, 0, 0));
}

void CKxDevUI_CheckBox::SetThreeState(bool threeState) {
    if (threeState == m_threeState) return;
    m_threeState = threeState;
    if (!threeState && m_state == eKxCheckState_Mixed) m_state = eKxCheckState_On;
    if (!m_button) return;
    SendMessageW(m_button, BM_SETSTYLE, Style(), TRUE);
    ShowState();
}

void CKxDevUI_CheckBox::SetState(int state) {
    if (state < eKxCheckState_Off || state > (m_threeState ? eKxCheckState_Mixed : eKxCheckState_On)) {
        KX_LOG(L"devgui_checkbox", L"there is no state %d", state);
        return;
    }
    Hold(state);
}

void CKxDevUI_CheckBox::OnStateChangeRequest(int, bool&) { NotifyParent(m_id); }

void CKxDevUI_CheckBox::Command(int, int code) {
    if (code != BN_CLICKED) return;
    const int wanted = m_state == (m_threeState ? eKxCheckState_Mixed : eKxCheckState_On) ? 0 : m_state + 1;
    const Alive alive(this);
    m_wanted = wanted;
    const bool granted = IsGranted(wanted, [&](bool& veto) { OnStateChangeRequest(wanted, veto); });
    if (!alive) return;
    m_wanted.reset();
    if (granted) Hold(wanted);
}

Handled CKxDevUI_CheckBox::Handle(const Message& message) {
    switch (message.id) {
    case BM_GETCHECK: return m_wanted.value_or(m_state);
    case BM_SETCHECK: SetState(static_cast<int>(message.wParam)); return 0;
    default: return HandleWindow(message);
    }
}
