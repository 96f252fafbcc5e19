#pragma once

#include <controls/control_test.h>
#include <kxdevices/kx_simdevices.h>

namespace kx::test {

template <class Panel>
struct AskingPanel : Asking<Panel> {
    using Asking<Panel>::Asking;

    void OnPositionChangeRequest(long position, bool& flag) { this->Asked(flag, "position", position); }
    // Not all panels have one to be overridden.
    virtual void OnSetupRequest() { this->Told("setup"); }
};

template <class Device>
struct Registered : Device {
    template <class... Arguments>
    explicit Registered(Arguments&&... arguments) : Device(std::forward<Arguments>(arguments)...) {
        CKxDeviceRegistry::Add(*this);
    }
};

template <class Panel>
struct PanelTest : ControlTest {
    HWND Open(long width = -1) { return panel.Create(parent.Window(), 10, 10, width, -1, true, true); }
    HWND Part(int id) { return GetDlgItem(panel, id); }
    bool IsUsable(int id) { return IsWindowEnabled(Part(id)) != FALSE; }
    void ClickPart(int id) { Click(Part(id), 8, 8); }
    long Height() { return RectInParent(panel).bottom - RectInParent(panel).top; }

    Panel panel{parent.Record()};
};

inline std::vector<std::wstring> Names(int count, const wchar_t* name) {
    return std::vector<std::wstring>(static_cast<std::size_t>(count), name);
}

}  // namespace kx::test
