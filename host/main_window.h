// The host's window: the pages with their panels and the buttons that turn to them, the log pane, the status line, and
// the menu that changes zoom, language, colours and state.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>

#include <kxbaseui/kx_colors.h>

#include "pages/controls_page.h"
#include "pages/light_page.h"
#include "pages/stand_page.h"

class MainWindow {
public:
    // Menu commands.
    static constexpr int cmdSeries = 100;
    static constexpr int cmdEnabled = 101;
    static constexpr int cmdExit = 102;
    static constexpr int cmdZoom = 200;      // + percent / 25
    static constexpr int cmdLanguage = 300;  // + primary language
    static constexpr int cmdScheme = 400;    // + EKxColorScheme
    static constexpr int cmdPage = 500;      // + index of the page

    bool Create(HINSTANCE instance);
    HWND Handle() const { return m_window; }
    StandPage& Stand() { return *m_stand; }
    ControlsPage& Controls() { return *m_controls; }
    LightPage& Light() { return *m_light; }

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int command);
    void OnMouseWheel(WPARAM wParam, LPARAM lParam);
    void BuildMenu();
    void BuildPages();
    void BuildPageButtons();
    void TurnTo(int page);
    void FitToPages();
    void Layout();
    void Restyle();
    void Say(const std::wstring& text);

    HWND m_window = nullptr;
    HWND m_list = nullptr;
    HWND m_status = nullptr;
    std::unique_ptr<StandPage> m_stand;
    std::unique_ptr<ControlsPage> m_controls;
    std::unique_ptr<LightPage> m_light;
    std::array<Page*, 3> m_pages{};
    std::array<HWND, 3> m_pageButtons{};
    int m_page = 0;
    bool m_enabled = true;
};
