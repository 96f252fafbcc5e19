// A panel with one control, which shows one device. What is written by hand is the control's answer to its host's
// callbacks; everything else is here:
//
//     class AskingLamp : public Asks<CKxDevUI_Lamp, CKxSimLamp> {
//     public:
//         using Asks::Asks;
//         void Prepare() { SetSteps(5); }                                 // before the window is made, if need be
//     protected:
//         void OnPowerRequest(double power, bool& veto) override {
//             Log().Add(m_panel.Name(), L"OnPowerRequest(%g)", power);
//             veto = !m_panel.Grants(PowerOf(m_device, L"%"), power);
//         }
//     };
//     using LampPanel = ControlPanel<AskingLamp>;
#pragma once

#include <type_traits>

#include <kxbaseui/kx_layoutmanager.h>

#include "device_panel.h"
#include "event_log.h"
#include "resources/resource.h"

// Where things stand in such a panel, in unzoomed pixels; what is -1 large is as large as it likes, 0 fills the panel.
struct ControlLayout {
    POINT control{6, 24};
    SIZE size{0, -1};
    POINT caption{6, 4};  // of elements; what is no element has the caption for its title,
    bool titled = false;  // and an element that says so
    bool refusal = true;  // a switch that makes the host refuse
};

// A control whose callbacks have panel and device at hand. What it has public here is hidden by what a control needs in
// its place.
template <class Control, class Device>
class Asks : public Control {
public:
    using Shown = Device;
    static constexpr ControlLayout kLayout{};

    Asks(DevicePanel& panel, Device& device) : m_panel(panel), m_device(device) {}

    void Prepare() {}
    void Show(const DevicePanel::Change&) { this->Update(m_device.GetLogDevId()); }

protected:
    DevicePanel& m_panel;
    Device& m_device;
};

template <class Asking>
class ControlPanel : public DevicePanel {
public:
    ControlPanel(const wchar_t* name, typename Asking::Shown& device)
        : DevicePanel(name, device), m_control(*this, device) {}

    void Fill() {
        const ControlLayout& layout = Asking::kLayout;
        m_control.Prepare();
        // First, so that its windows are made once.
        m_control.Show({true, true, true});
        if constexpr (!kTitled)
            AddChild(L"STATIC", L"", SS_NOPREFIX, IDC_DEVICE_CAPTION, layout.caption.x, layout.caption.y,
                     m_width - layout.caption.x - 6, 16);
        // It sizes itself by the zoom, so it is placed by it too.
        m_control.Create(
            m_hWnd, CKxGUILayoutManager::Zoomed(layout.control.x), CKxGUILayoutManager::Zoomed(layout.control.y),
            layout.size.cx == 0 ? m_width - 2 * layout.control.x : layout.size.cx, layout.size.cy, true, true);
        if constexpr (kIsElement) {
            InsertElement(&m_control);
        } else {
            m_control.SetTabStop(true);
            InsertWindow(m_control);
        }
        m_control.Show({false, true, true});
        if (layout.refusal) AddRefusal();
        ShowState();
    }
    Asking& Panel() { return m_control; }

protected:
    void OnDevice(const Change& change) override { m_control.Show(change); }
    void ShowCaption(const wchar_t* caption) override {
        if constexpr (kTitled)
            m_control.SetTitle(caption);
        else
            DevicePanel::ShowCaption(caption);
    }

    Asking m_control;

private:
    static constexpr bool kIsElement = std::is_base_of_v<CKxDevUI_Base, Asking>;
    static constexpr bool kTitled = !kIsElement || Asking::kLayout.titled;
};
