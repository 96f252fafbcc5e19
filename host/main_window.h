// The host's window: the pages with their panels and the buttons that turn to them, the log pane, the status line, and
// the menu that changes zoom, language, colours and state.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include <kxbaseui/kx_colors.h>

#include "log_pane.h"
#include "gallery_devices.h"
#include "pages/page.h"

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

    // The child that is the status line.
    static constexpr int StatusId = 1;

    bool Create(HINSTANCE instance);
    HWND Handle() const { return m_window; }

    // The page of the class P, and the menu command that turns to it; every page of pages/pages.cpp is there once.
    template <class P>
    P& PageOf() {
        return static_cast<P&>(*m_pages[IndexOf<P>()]);
    }
    template <class P>
    int CommandOf() {
        return cmdPage + static_cast<int>(IndexOf<P>());
    }
    const std::vector<std::unique_ptr<Page>>& Pages() const { return m_pages; }
    GalleryDevices& Gallery() { return m_gallery; }

private:
    static LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    template <class P>
    std::size_t IndexOf() const {
        std::size_t i = 0;
        while (!dynamic_cast<P*>(m_pages[i].get()))
            ++i;
        return i;
    }
    void OnCommand(int command);
    void OnMouseWheel(WPARAM wParam, LPARAM lParam);
    void BuildMenu();
    void BuildPages();
    void BuildPageButtons();
    void TurnTo(int page);
    void KeepFocusUsable();
    void FitToPages();
    void Layout();
    void Restyle();
    void Say(const std::wstring& text);

    HWND m_window = nullptr;
    LogPane m_log;
    HWND m_status = nullptr;
    GalleryDevices m_gallery;
    std::vector<std::unique_ptr<Page>> m_pages;
    std::vector<HWND> m_pageButtons;
    int m_page = 0;
    bool m_enabled = true;
};
