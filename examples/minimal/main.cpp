// The smallest good host: what every program that shows panels needs, and nothing else.
#include <windows.h>

#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevices/kx_dmapi.h>
#include <kxdevui/controls/devgui_hpot.h>
#include <kxdevui/framework/devgui_container.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxdevui/optics/devgui_filterwheel.h>

#include <array>

#include "resource.h"

namespace {

// ---- A device of the program's own ---------------------------------------------------------------------------------

// A filter wheel that takes half a second to turn. Panels read it; only the program moves it.
class Wheel : public IKxDeviceFilterChanger {
public:
    CKxStringW GetKey() const override { return L"Emission"; }
    long GetFilterCount() const override { return static_cast<long>(c_filters.size()); }
    bool IsIntelligent() const override { return true; }
    bool IsMotorized() const override { return true; }
    EKxFilterType GetFilterType() const override { return eKxFilterType_Emission; }
    void GetFilterName(long position, CKxStringW& name) const override {
        name = c_filters[static_cast<std::size_t>(position)];
    }
    EKxDeviceState GetDeviceState() const override { return m_moving ? eKxDeviceState_Moving : eKxDeviceState_Ready; }
    // Not known while it turns.
    bool GetPosition(long& position) const override {
        if (!m_moving) position = m_position;
        return !m_moving;
    }

    void MoveTo(long position) {
        m_position = position;
        m_moving = true;
        CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    }
    void Arrive() {
        m_moving = false;
        CKxDeviceRegistry::Notify(GetLogDevId(), EKxDeviceChange::Position);
    }

private:
    static constexpr std::array c_filters{L"460/50", L"525/50", L"605/70", L""};
    long m_position = 0;
    bool m_moving = false;
};

// ---- Panels: each learns what the user wants through a callback, acts, and shows what is ----------------------------

// The controls of a dialog template, with a slider of the library added.
class LampPanel : public CKxDevUI_Container {
public:
    LampPanel() : m_power(*this) {}
    void Show() {
        CKxStringW text;
        text.Format(40, IsOn() ? L"%.0f %%" : L"off", m_power.GetValue());
        SetDlgItemTextW(*this, IDC_LAMP_TEXT, text);
    }

protected:
    LRESULT OnInit(UINT message, WPARAM wParam, LPARAM lParam) override {
        m_power.SetSize(174, 44, -1);
        m_power.Create(*this, 92, 56, -1, -1, true, true);
        m_power.SetTabStop(true);
        m_power.SetValue(40, false);
        InsertElement(&m_power);
        Show();
        return CKxDevUI_Container::OnInit(message, wParam, lParam);
    }
    LRESULT OnCommand(UINT, WPARAM wParam, LPARAM) override {
        if (LOWORD(wParam) == IDC_LAMP_FULL) m_power.SetValue(100, false);
        Show();
        return 1;
    }

private:
    class Power : public CKxDevUI_HPot {
    public:
        explicit Power(LampPanel& lamp) : m_lamp(lamp) {}

    protected:
        // A lamp that is off cannot be made brighter.
        void OnHPotChange(double&, bool& skip) override { skip = !m_lamp.IsOn(); }
        void OnHPotDragDrop() override { m_lamp.Show(); }

    private:
        LampPanel& m_lamp;
    };

    bool IsOn() const { return IsDlgButtonChecked(*this, IDC_LAMP_ON) == BST_CHECKED; }
    Power m_power;
};

class WheelPanel : public CKxDevUI_FilterWheel {
public:
    explicit WheelPanel(Wheel& wheel) : m_wheel(wheel) {}

protected:
    void OnPositionChangeRequest(long position, bool&) override { m_wheel.MoveTo(position); }

private:
    Wheel& m_wheel;
};

// ---- The window ----------------------------------------------------------------------------------------------------

constexpr UINT_PTR c_arrival = 1;

class MainWindow {
public:
    MainWindow() { CKxDeviceRegistry::Add(m_wheel); }
    ~MainWindow() { CKxDeviceRegistry::RemoveListener(m_listener); }
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    HWND Create(HINSTANCE instance) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = WndProc;
        windowClass.hInstance = instance;
        windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
        windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        windowClass.lpszClassName = L"Minimal";
        RegisterClassW(&windowClass);
        return CreateWindowW(L"Minimal", L"Microscope", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, 0, 320,
                             240, nullptr, nullptr, instance, this);
    }

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
        if (id == WM_NCCREATE) {
            const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
        }
        if (KX_RelayScale(window, id, wParam, lParam)) return 0;
        auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        switch (id) {
        case WM_CREATE: self->Fill(window); return 0;
        case WM_TIMER:
            KillTimer(window, c_arrival);
            self->m_wheel.Arrive();
            return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcW(window, id, wParam, lParam);
        }
    }

    // Unzoomed pixels, but for the place of a control that zooms itself; the scale of the monitor is applied in the
    // end.
    void Fill(HWND window) {
        KX_FollowScaleOf(window);
        m_lamp.CreateFromDlg(window, 8, 8, IDD_LAMP, GetModuleHandleW(nullptr), false);
        m_lamp.SetTabInside(true);
        m_filters.Create(window, CKxGUILayoutManager::Zoomed(8), CKxGUILayoutManager::Zoomed(122), 284, -1);
        m_filters.SetTabStop(true);
        m_filters.Update(&m_wheel, {.structure = true, .names = true, .position = true});
        // What changes on the device, whoever has changed it, comes back this way.
        m_listener = CKxDeviceRegistry::AddListener([this, window](CDMApi_LogDevId id, EKxDeviceChange) {
            if (m_wheel.GetDeviceState() == eKxDeviceState_Moving) SetTimer(window, c_arrival, 500, nullptr);
            kx::ui::SendDeviceBand(m_filters, id, kx::ui::FilterWheelBand{.position = true});
        });
        CKxGUILayoutManager::ResizeWindowToGuiZoom(window, 1.0);
    }

    // Objects live as long as their windows; a device longer than its panel.
    Wheel m_wheel;
    LampPanel m_lamp;
    WheelPanel m_filters{m_wheel};
    int m_listener = 0;
};

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int show) {
    MainWindow main;
    const HWND window = main.Create(instance);
    if (!window) return 1;
    ShowWindow(window, show);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // Tab, the arrow keys and Enter, within the panels.
        if (KX_IsPanelMessage(window, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
