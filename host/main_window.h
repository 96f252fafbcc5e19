// The host's window: the device area with its panels, the log pane, the status line, and the menu that changes zoom,
// language, colours and state.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include <kxbaseui/kx_colors.h>

#include "device_area.h"

class MainWindow {
public:
    // Menu commands.
    static constexpr int cmdSeries = 100;
    static constexpr int cmdEnabled = 101;
    static constexpr int cmdExit = 102;
    static constexpr int cmdZoom = 200;      // + percent / 25
    static constexpr int cmdLanguage = 300;  // + primary language
    static constexpr int cmdScheme = 400;    // + EKxColorScheme

    bool Create(HINSTANCE instance);
    HWND Handle() const { return m_window; }
    DeviceArea& Devices() { return *m_devices; }

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int command);
    void OnMouseWheel(WPARAM wParam, LPARAM lParam);
    void BuildMenu();
    void BuildDevices();
    void FitToDevices();
    void Layout();
    void Restyle();
    void Say(const std::wstring& text);

    HWND m_window = nullptr;
    HWND m_list = nullptr;
    HWND m_status = nullptr;
    std::unique_ptr<DeviceArea> m_devices;
    bool m_enabled = true;
};
