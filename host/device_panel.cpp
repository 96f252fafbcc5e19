#include "device_panel.h"

#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_messages.h>

#include "resources/resource.h"

namespace {

bool s_hostRefuses = false;

// Empty for a device that stands where it says.
CKxStringW StateText(EKxDeviceState state) {
    switch (state) {
    case eKxDeviceState_Moving: return Text(L"moving...");
    case eKxDeviceState_Unknown: return Text(L"position unknown");
    case eKxDeviceState_Faulty: return Text(L"failed");
    case eKxDeviceState_Ready: break;
    }
    return {};
}

}  // namespace

DevicePanel::DevicePanel(const wchar_t* name, IKxDevice& device)
    : HostPanel(name), m_device(device),
      m_listener(CKxDeviceRegistry::AddListener([this](CDMApi_LogDevId id, EKxDeviceChange what) {
          if (!m_hWnd || what == EKxDeviceChange::Removed || id != m_device.GetLogDevId()) return;
          const bool structure = what == EKxDeviceChange::Structure, names = what != EKxDeviceChange::Position;
          kx::ui::SendDeviceBand(m_hWnd, id, Change{structure, names, true});
      })) {}

DevicePanel::~DevicePanel() { CKxDeviceRegistry::RemoveListener(m_listener); }

void DevicePanel::SetHostRefuses(bool refuses) { s_hostRefuses = refuses; }

bool DevicePanel::HostRefuses() { return s_hostRefuses; }

void DevicePanel::ShowCaption(const wchar_t* caption) { SetDlgItemTextW(m_hWnd, IDC_DEVICE_CAPTION, caption); }

void DevicePanel::ShowState() {
    CKxStringW caption = m_device.GetKey();
    if (const CKxStringW state = StateText(m_device.GetDeviceState()); state.Length() > 0) {
        caption.Format(200, L"%ls - %ls", m_device.GetKey().c_str(), state.c_str());
    }
    // A drive tells all the way where it is, and not every time of another state.
    if (caption == m_caption) return;
    m_caption = caption;
    ShowCaption(caption);
}

bool DevicePanel::Grants(const Wish& wish, double value, const wchar_t* done, const wchar_t* refused) {
    const bool granted = Asks(wish, value);
    if (!granted)
        TellRefused(refused);
    else if (*done)
        Tell(Text(done).str());
    return granted;
}

void DevicePanel::TellRefused(const wchar_t* what) {
    CKxStringW text;
    text.Format(200, L"%ls: %ls", Text(what).c_str(),
                Text(Refuses() ? L"the host refuses" : L"the device refuses").c_str());
    Tell(text.str());
    // Beside the control, too, if it is one that asks.
    KX_SayWhyRefused(text);
}

void DevicePanel::AddRefusal() {
    if (m_ownRefusal) HostPanel::AddRefusal(IDC_DEVICE_REFUSE);
}

void DevicePanel::OnUpdateDeviceBand(WPARAM wParam, LPARAM lParam) {
    if (static_cast<CDMApi_LogDevId>(wParam) != m_device.GetLogDevId()) return;
    const auto* change = reinterpret_cast<const Change*>(lParam);
    OnDevice(change ? *change : Change{false, false, true});
    ShowState();
}
