#include "beam_switch.h"

#include <kxdevui/framework/ui_control.h>
#include <kxdevui/framework/ui_device.h>
#include <kxsystem/kx_translation.h>

using namespace kx::ui;

namespace {

constexpr wchar_t kSource[] = L"beam_switch";
constexpr int kButtonId = 10200;

}  // namespace

BeamSwitch::BeamSwitch()
    : Control(this, {.name = L"BeamSwitch", .size = {96, 44}, .title = KX_GetTranslation(L"Beam", kSource)}) {}

bool BeamSwitch::Make(const Parts& parts) {
    if (!parts.Label(m_label, kTitleId, m_title, {0, 0, m_width, 16})) return false;
    const CKxStringW text = KX_GetTranslation(L"Open", kSource);
    if (!parts.PushRadio(kButtonId, text, {0, 18, m_width, m_height}, false)) return false;
    Show();
    return true;
}

void BeamSwitch::SetOpen(bool open) {
    if (open == m_open) return;
    m_open = open;
    Show();
}

void BeamSwitch::Show() const { SendMessageW(PartAt(kButtonId), BM_SETCHECK, m_open ? BST_CHECKED : BST_UNCHECKED, 0); }

bool BeamSwitch::Update(CDMApi_LogDevId device) {
    return UpdateFrom<IKxDeviceShutter>(
        this, kSource, device, [](const auto& shutter) { return shutter.GetState(); },
        [this](bool open) { SetOpen(open); });
}

void BeamSwitch::OnOpenRequest(bool, bool&) {}

void BeamSwitch::Command(int id, int code) {
    if (id == kButtonId && code == BN_CLICKED) AskHost(this, &BeamSwitch::OnOpenRequest, !m_open, &BeamSwitch::SetOpen);
}
