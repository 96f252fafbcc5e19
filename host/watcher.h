// Tells the log's file what can be seen, for a test that drives the host from outside: where every control stands,
// which one has the focus, and what the status line says. A line each, whenever it has changed and then stood still.
// "Place: " and a name, with x, y, width and height on the screen:
//
// - Optical path/Nosepiece/10202: page, panel and id of the control
//
// - Lasers/Laser engine/10202#3: the third of these ids there
//
// - Host/501, Dialog/1301: outside of the pages
//
// - Menu/TEXT: an entry of a menu that is open
//
// "Places: told" comes after the last of them. "Focus: Dialog/1301" and "Status: Series cancelled" stand for
// themselves.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

class MainWindow;

class Watcher {
public:
    explicit Watcher(MainWindow& window) : m_window(window) {}
    // One watcher a process.
    void Start();

private:
    using Places = std::vector<std::wstring>;

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void Look();
    Places AllPlaces() const;
    // The page and panel, or whatever else a control belongs to.
    std::wstring OwnerOf(HWND control) const;
    std::wstring NameOf(HWND control) const;
    void AddControls(HWND top, Places& places) const;

    MainWindow& m_window;
    Places m_seen, m_told;
    std::wstring m_focus, m_status;
};
