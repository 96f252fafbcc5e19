#include "beam_switch.h"

#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"beam_switch";
constexpr int kTitleId = 10100, kButtonId = 10200;

}  // namespace

ATOM BeamSwitch::m_Atom = 0;

BeamSwitch::BeamSwitch() {
    m_width = 96;
    m_height = 44;
    m_title = KX_GetTranslation(L"Beam", kSource);
}

BeamSwitch::~BeamSwitch() { Binding::EndOwnWindow(this); }

// ---- The window ----------------------------------------------------------------------------------------------------

HWND BeamSwitch::Create(HWND parent, long x, long y, long cx, long cy, bool, bool) {
    return Creation::Of(this, [&](const Creation& creation) -> HWND {
        const HWND window =
            creation.Window(this, m_Atom, {.name = L"BeamSwitch", .object = L"BeamSwitch", .procedure = WndProc},
                            parent, {x, y}, {cx, cy});
        const Parts parts(window, this);
        if (!parts.Label(m_label, kTitleId, m_title, {0, 0, m_width, 16})) return nullptr;
        const CKxStringW text = KX_GetTranslation(L"Open", kSource);
        if (!parts.PushRadio(m_button, kButtonId, text, {0, 18, m_width, m_height}, false)) return nullptr;
        SendMessageW(m_button, BM_SETCHECK, m_open ? BST_CHECKED : BST_UNCHECKED, 0);
        RegisterZoom(window);
        return creation.Done(this, window);
    });
}

void BeamSwitch::Destroy() { Binding::EndWindow(this); }

// ---- State ---------------------------------------------------------------------------------------------------------

void BeamSwitch::SetEnabled(bool enable) {
    if (enable == m_enabled) return;
    m_enabled = enable;
    if (m_hWnd) EnableWindow(m_hWnd, enable);
}

void BeamSwitch::SetTitle(const wchar_t* title) {
    if (m_title == title) return;
    m_title = title;
    if (m_label) SetWindowTextW(m_label, m_title);
}

void BeamSwitch::SetOpen(bool open) {
    if (open == m_open) return;
    m_open = open;
    if (m_button) SendMessageW(m_button, BM_SETCHECK, open ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool BeamSwitch::Update(CDMApi_LogDevId device) {
    const auto* const shutter = FindDevice<IKxDeviceShutter>(device);
    bool open = false;
    if (!shutter || !AskDevice(kSource, device, [&] { open = shutter->GetState(); })) return false;
    SetOpen(open);
    return true;
}

// ---- The host ------------------------------------------------------------------------------------------------------

void BeamSwitch::OnOpenRequest(bool, bool&) {}

void BeamSwitch::Click() {
    const bool wanted = !m_open;
    const auto ask = [&](bool& veto) { OnOpenRequest(wanted, veto); };
    if (AskHost(this, ask) == Answer::Agreed) SetOpen(wanted);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK BeamSwitch::WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Entry<BeamSwitch, ByUserData<BeamSwitch>, WM_NCCREATE, Unbound::Default, &BeamSwitch::Handle>(
        {window, id, wParam, lParam});
}

Handled BeamSwitch::Handle(const Message& message) {
    switch (message.id) {
    case WM_COMMAND:
        if (message.wParam == MAKEWPARAM(kButtonId, BN_CLICKED)) Click();
        return 0;
    case WM_CTLCOLORSTATIC: return AnswerTextColor(message, IsWindowEnabled(message.window) != FALSE);
    case WM_ENABLE:
        Enable(m_label, message.wParam != FALSE);
        Enable(m_button, message.wParam != FALSE);
        return std::nullopt;
    case WM_SETFOCUS:
        if (m_button) ::SetFocus(m_button);
        return 0;
    case WM_KX_UPDATE_DEVICE_BAND: Update(static_cast<CDMApi_LogDevId>(message.wParam)); return 0;
    case WM_DESTROY: m_label = m_button = nullptr; return std::nullopt;
    default: return HandleFace(message, {.children = true, .buffered = false});
    }
}
