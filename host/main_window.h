// The host's window: the pages with their panels and the buttons that turn to them, the log pane, the status line, and
// the menu that changes zoom, language, colours and state.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include <kxbaseui/kx_colors.h>
#include <kxdevui/framework/devgui_keep.h>

#include "log_pane.h"
#include "gallery_devices.h"
#include "host_microscope.h"
#include "pages/page.h"
#include "rules/settings.h"

class MainWindow {
public:
    // Menu commands.
    static constexpr int cmdSeries = 100;
    static constexpr int cmdEnabled = 101;
    static constexpr int cmdExit = 102;
    static constexpr int cmdLightOff = 103;
    static constexpr int cmdUndo = 104;
    static constexpr int cmdRedo = 105;
    static constexpr int cmdCondenser = 106;
    static constexpr int cmdKeys = 107;
    static constexpr int cmdZoom = 200;        // + percent / 25
    static constexpr int cmdLanguage = 300;    // + primary language
    static constexpr int cmdScheme = 400;      // + EKxColorScheme
    static constexpr int cmdAutoScheme = 450;  // light or dark, as the system asks
    static constexpr int cmdPage = 500;        // + index of the page
    static constexpr int cmdSimulation = 600;  // + Simulation
    static constexpr int cmdUndoTo = 700;      // + index among what can be undone, the latest first

    // The child that is the status line; the key that turns all light off, whatever has the focus, dialogs and open
    // menus too.
    static constexpr int StatusId = 1;
    static constexpr WPARAM LightOffKey = VK_F12;

    // The entries of the menu that says how all simulated devices behave.
    enum Simulation { simRefuse, simDeviceDecides, simSlow, simFail, simStop };

    // The microscope has to outlive the window.
    explicit MainWindow(HostMicroscope& microscope) : m_microscope(microscope) {}

    // Makes and shows the window as the settings want it.
    bool Create(HINSTANCE instance, const kx::host::Settings& settings);
    // The settings that the window has now, or had when it was closed.
    const kx::host::Settings& CurrentSettings() const { return m_settings; }
    HWND Handle() const { return m_window; }
    // For the message loop, first of all: true when it was the key that turns all light off.
    bool TakesKey(const MSG& message);
    // For the message loop: true when it was one of the keys that undo and redo requests. In a field they are the
    // field's, also when it has nothing to undo.
    bool TakesEditKey(const MSG& message);
    // For the message loop: true when it was one of the keys that go from panel to panel (F6) or from page to page
    // (Ctrl+Tab), backwards with Shift, or F1, which shows all keys.
    bool TakesPanelKey(const MSG& message);
    // For the message loop, after each message: what has the focus now is scrolled to where it can be seen.
    void KeepFocusInSight();

    // The page of the class P, and the menu command that turns to it; every page of pages/pages.cpp is there once.
    template <class P>
    P& PageOf() {
        return static_cast<P&>(*m_pages[IndexOf<P>()]);
    }
    template <class P>
    int CommandOf() {
        return cmdPage + static_cast<int>(IndexOf<P>());
    }
    // A page has no window before it has been turned to.
    const std::vector<std::unique_ptr<Page>>& Pages() const { return m_pages; }
    const Page& CurrentPage() const { return *m_pages[static_cast<std::size_t>(m_page)]; }
    GalleryDevices& Gallery() { return m_gallery; }
    HostMicroscope& Microscope() { return m_microscope; }
    // All simulated devices behind the pages.
    std::array<CKxSimMicroscope*, 3> Microscopes();

private:
    static LRESULT CALLBACK FilterProc(int code, WPARAM wParam, LPARAM lParam);
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
    void FillEditMenu() const;
    static std::vector<std::wstring> TextsOf(HMENU menu);
    static void GiveLetters(HMENU menu);
    void GiveBarLetters() const;
    void Undo(int count);
    void Redo();
    void ShowOutcome(const std::wstring& told);
    HMENU SimulationMenu() const;
    void Simulate(int entry);
    void TurnLightOff();
    void DecideByDevice(bool decides);
    void NoteSettings();
    void BuildPages();
    void BuildPageButtons();
    void TurnTo(int page);
    void KeepFocusUsable();
    void FocusAsLeft(HWND left);
    void ShowKeys() const;
    void GoToPanel(bool backwards);
    void GoToPage(bool backwards);
    void FitToPages();
    void Layout();
    void Restyle();
    void Say(const std::wstring& text);

    HWND m_window = nullptr;
    LogPane m_log;
    HWND m_status = nullptr;
    HWND m_lightOff = nullptr;
    HMENU m_edit = nullptr;
    std::vector<std::wstring> m_barTexts;
    HostMicroscope& m_microscope;
    GalleryDevices m_gallery;
    std::vector<std::unique_ptr<Page>> m_pages;
    std::vector<HWND> m_pageButtons;
    int m_page = 0;
    // What waits for pages that have not been made anew yet; for each page, which window had the focus when it was
    // turned away; and where the focus was put then.
    KxKeptInput m_kept;
    std::vector<HWND> m_left;
    HWND m_putAside = nullptr;
    HWND m_followed = nullptr;  // had the focus when it was last looked for
    RECT m_pagePlace{};
    LPARAM m_size = -1;  // of the last WM_SIZE
    bool m_enabled = true;
    std::array<bool, simStop> m_simulation{false, true, false, false};
    kx::host::Settings m_settings;
};
