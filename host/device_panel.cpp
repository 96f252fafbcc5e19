#include "device_panel.h"

#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_translation.h>

#include "resources/resource.h"

DevicePanel::DevicePanel(const wchar_t* name)
    : HostPanel(name), m_listener(CKxDeviceRegistry::AddListener([this](CDMApi_LogDevId device, EKxDeviceChange what) {
          const bool flags[] = {what == EKxDeviceChange::Structure, what != EKxDeviceChange::Position, true};
          if (m_hWnd && what != EKxDeviceChange::Removed)
              SendMessageW(m_hWnd, kx::ui::WM_KX_UPDATE_DEVICE_BAND, device, reinterpret_cast<LPARAM>(flags));
      })) {}

DevicePanel::~DevicePanel() { CKxDeviceRegistry::RemoveListener(m_listener); }

void DevicePanel::AddRefusal() {
    AddChild(L"BUTTON", KX_GetTranslation(L"The host refuses", L"host"), WS_TABSTOP | BS_AUTOCHECKBOX, IDC_DEVICE_REFUSE,
             6, m_height - 22, 140, 18);
}

bool DevicePanel::OnUser(int id, int code, HWND from) {
    if (id != IDC_DEVICE_REFUSE || code != BN_CLICKED) return false;
    m_refuses = SendMessageW(from, BM_GETCHECK, 0, 0) == BST_CHECKED;
    return true;
}

void DevicePanel::OnUpdateDeviceBand(WPARAM wParam, LPARAM lParam) {
    const auto* flags = reinterpret_cast<const bool*>(lParam);
    const Change position{false, false, true};
    OnDevice(static_cast<CDMApi_LogDevId>(wParam), flags ? Change{flags[0], flags[1], flags[2]} : position);
}
