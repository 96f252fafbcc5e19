#include <kxdevui/controls/devgui_buttoncontrol.h>

#include <algorithm>
#include <utility>

#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxdevui/framework/ui_access.h>
#include <kxdevui/framework/ui_activity.h>
#include <kxdevui/framework/ui_control.h>

namespace kx::ui {

namespace {

constexpr int kButtonId = 10200;
constexpr long kSignGap = 2;  // unzoomed pixels between the button and the sign beside it

}  // namespace

void ButtonControl::Begin() {
    const bool beside = m_drawn == Drawn::ByPlatform;
    m_requests = std::make_unique<Activity>(
        ActivityHost{[this](HWND) { return long{m_state}; },
                     [this](HWND, long target) { return target <= BST_INDETERMINATE ? m_button : nullptr; },
                     [this](HWND) { return m_title; },
                     [this](HWND window) {
                         ShowTip();
                         Layout();
                         ShowState();
                         InvalidateRect(window, nullptr, FALSE);
                     },
                     [this, beside](HWND) { return beside ? SignPlace() : RECT{}; }});
}

ButtonControl::~ButtonControl() = default;

HWND ButtonControl::Create(HWND parent, HWND placeholder) { return CreateInPlaceOf(parent, placeholder); }

void ButtonControl::Adopt(HWND placeholder) { m_title = TextOf(placeholder); }

bool ButtonControl::MakeButton(const Parts& parts, DWORD style, WNDPROC procedure) {
    m_button = nullptr;
    m_requests->Attach(parts.Window());
    if (!parts.Add(m_button, L"BUTTON", kButtonId, m_title, {0, 0, m_width, m_height}, style)) return false;
    Subclass(m_button, procedure, nullptr);
    if (m_drawn == Drawn::ByControl) ByState<ButtonControl>::Bind(m_button, this);
    FollowScheme();
    ShowTip();
    if (m_state != 0) ShowState();
    m_requests->Show();
    return static_cast<bool>(parts);
}

// As late as can be: it costs as much as all the rest that is done for the button.
void ButtonControl::FollowScheme() const {
    if (m_drawn == Drawn::ByPlatform && KX_GetColorScheme() != eKxColorScheme_System) KX_FollowColorScheme(m_button);
}

void ButtonControl::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    if (!m_button) return;
    SetWindowTextW(m_button, m_title);
    if (m_drawn == Drawn::ByControl) InvalidateRect(m_button, nullptr, FALSE);
}

void ButtonControl::SetToolTip(const wchar_t* text) {
    m_toolTip = text ? text : L"";
    ShowTip();
}

// With what is wrong; where there is nothing to be told there is none.
void ButtonControl::ShowTip() {
    if (!m_button) return;
    const CKxStringW remark = m_requests->Remark();
    const bool both = !m_toolTip.IsEmpty() && !remark.IsEmpty();
    const CKxStringW tip = both ? m_toolTip + L"\r\n" + remark : m_toolTip + remark;
    KX_UpdateToolTipWindow(m_button, tip);
}

// ---- State ---------------------------------------------------------------------------------------------------------

bool ButtonControl::IsKnown() const {
    const EKxActivity activity = m_requests->Now().activity;
    return activity != EKxActivity::Unknown && activity != EKxActivity::Failed;
}

bool ButtonControl::Hold(int state) {
    ++m_sets;
    if (std::exchange(m_state, state) == state) return false;
    ShowState();
    // The platform's button tells of its mark itself.
    if (m_drawn == Drawn::ByControl) KX_TellAccess(m_button, EVENT_OBJECT_STATECHANGE);
    return true;
}

void ButtonControl::ShowState() const {
    if (!m_button) return;
    if (m_drawn == Drawn::ByPlatform) {
        SendMessageW(m_button, BM_SETCHECK, static_cast<WPARAM>(IsKnown() ? m_state : BST_UNCHECKED), 0);
    } else {
        InvalidateRect(m_button, nullptr, FALSE);
    }
}

bool ButtonControl::IsGranted(int state, const std::function<void(bool& veto)>& ask) {
    const Activity::Question question(*m_requests);
    const unsigned sets = m_sets;
    const auto answer = AskHost(this, ask);
    if (answer == kx::ui::Answer::Refused) m_requests->Refused(question, state);
    return answer == kx::ui::Answer::Agreed && sets == m_sets;
}

void ButtonControl::NotifyParent(int id) const {
    kx::ui::Notify(ParentOf(m_hWnd), id, 0, reinterpret_cast<LPARAM>(m_hWnd));
}

// ---- The window ----------------------------------------------------------------------------------------------------

RECT ButtonControl::SignPlace() const {
    RECT client{};
    GetClientRect(m_hWnd, &client);
    const long side = std::min(Activity::SignSide(), client.bottom), top = (client.bottom - side) / 2;
    return {client.right - side, top, client.right, top + side};
}

void ButtonControl::Layout() const {
    if (!m_button) return;
    RECT client{};
    GetClientRect(m_hWnd, &client);
    if (m_drawn == Drawn::ByPlatform && m_requests->HasSign())
        client.right = std::max(0L, SignPlace().left - CKxGUILayoutManager::Zoomed(kSignGap));
    SetWindowPos(m_button, nullptr, 0, 0, client.right, client.bottom, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK ButtonControl::ButtonProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    const LosingFocus losing(id, wParam, lParam);
    return CallPrevious({window, id, wParam, lParam});
}

Handled ButtonControl::HandleWindow(const Message& message) {
    if (message.id == WM_DESTROY) {
        m_requests->Detach(message.window);
        m_button = nullptr;
    }
    if (!m_button) return std::nullopt;
    const auto told = DescribePart(message, [this](HWND, KxAccess& access) {
        if (access.description.IsEmpty() && !(m_toolTip == m_title)) access.description = m_toolTip;
        return false;
    });
    if (told) return told;
    // A sign of the activity is told as the window's own text, to nobody but screen readers.
    const bool hasSign = m_requests->HasSign();
    const auto ofButton = [&] { return SendMessageW(m_button, message.id, message.wParam, message.lParam); };
    switch (message.id) {
    case WM_SIZE: Layout(); return std::nullopt;
    case WM_SYSCOLORCHANGE: FollowScheme(); return std::nullopt;
    case WM_GETFONT:
    case WM_SETFONT:
    case BM_CLICK:
    case BM_GETSTATE: return ofButton();
    case BM_GETCHECK: return m_state;
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH: return hasSign ? Handled() : ofButton();
    case WM_SETTEXT: {
        const auto* const text = reinterpret_cast<const wchar_t*>(message.lParam);
        if (hasSign || !text || !*text) return std::nullopt;
        SetTitle(text);
        return TRUE;
    }
    case WM_GETDLGCODE: return DLGC_BUTTON;
    default: return std::nullopt;
    }
}

}  // namespace kx::ui
