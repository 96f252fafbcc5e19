// The host's first page, with all panels of a microscope, against the platform's windows alone.
#include <windows.h>

#include <string>
#include <vector>

#include <host/pages/bench_page.h>
#include <kxbaseui/kx_layoutmanager.h>

#include "bench_windows.h"
#include "harness.h"

namespace kx::bench {

namespace {

// Beside this program.
std::wstring ProgramNamed(const wchar_t* name) {
    wchar_t own[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring path = own;
    return path.substr(0, path.find_last_of(L'\\') + 1) + name;
}

void RunProgram(const std::wstring& program, const wchar_t* arguments) {
    std::wstring line = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    Require(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process),
            "a program could not be started");
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    Require(code == 0, "a program has failed");
}

Ratio FirstPicture() {
    const std::wstring host = ProgramNamed(L"kxdevhost.exe"), empty = ProgramNamed(L"kxemptywindow.exe");
    return Measure([&] { RunProgram(host, L"--first-picture"); }, [&] { RunProgram(empty, L""); });
}

// The host's own microscope and its page, filled and shown.
class AllPanels {
public:
    explicit AllPanels(HWND parent) : m_microscope(L""), m_page(m_microscope) {
        m_page.Build(parent);
        m_page.FitTo({0, 0, 880, 640});
        m_page.SetVisible(true);
        Require(m_page.Panels().size() > 10, "panels are missing");
    }
    HWND Page() const { return m_page; }
    const kx::config::Microscope& Roles() const { return m_microscope.Roles(); }

private:
    HostMicroscope m_microscope;
    BenchPage m_page;
};

std::vector<HWND> WindowsBelow(HWND window) {
    std::vector<HWND> windows;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM list) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

struct Placed {
    HWND window;
    RECT place;  // in its parent
    HFONT font;
};

std::vector<Placed> PlacesBelow(HWND window) {
    std::vector<Placed> places;
    for (const HWND below : WindowsBelow(window)) {
        RECT place{};
        GetWindowRect(below, &place);
        MapWindowPoints(HWND_DESKTOP, GetAncestor(below, GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
        places.push_back({below, place, reinterpret_cast<HFONT>(SendMessageW(below, WM_GETFONT, 0, 0))});
    }
    return places;
}

// The very same windows are moved and get their fonts, by the zoom and by hand, and are painted.
Ratio ZoomAll() {
    const Frame frame;
    const AllPanels panels(frame);
    const auto byZoom = [](double zoom) { CKxGUILayoutManager::SetGuiZoom(zoom); };
    byZoom(1.5);
    const std::vector<Placed> large = PlacesBelow(panels.Page());
    byZoom(1.0);
    const std::vector<Placed> small = PlacesBelow(panels.Page());
    const auto byHand = [&](const std::vector<Placed>& places) {
        for (const auto& [window, place, font] : places) {
            if (font) SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
            SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
        }
        RedrawWindow(panels.Page(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    };
    const auto all = [&] { RedrawWindow(panels.Page(), nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW); };
    return Measure([&] { byZoom(1.5), all(), byZoom(1.0), all(); }, [&] { byHand(large), byHand(small); });
}

// Every device tells of a change, and nothing has changed.
Ratio RefreshAll() {
    const Frame frame;
    const AllPanels panels(frame);
    std::vector<CDMApi_LogDevId> devices;
    const auto& roles = panels.Roles();
    for (const auto* ids : {&roles.turrets, &roles.wheels, &roles.lightPaths, &roles.tirfMirrors, &roles.shutters})
        devices.insert(devices.end(), ids->begin(), ids->end());
    for (const auto& laser : roles.lasers)
        devices.push_back(laser.id);
    for (const auto& drive : roles.zDrives)
        devices.push_back(drive.id);
    const std::vector<HWND> windows = WindowsBelow(panels.Page());
    const auto refresh = [&] {
        for (const CDMApi_LogDevId id : devices)
            CKxDeviceRegistry::Notify(id, EKxDeviceChange::Position);
        RedrawWindow(panels.Page(), nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW);
    };
    const auto rewrite = [&] {
        wchar_t text[100] = L"";
        for (const HWND window : windows) {
            GetWindowTextW(window, text, 100);
            SetWindowTextW(window, text);
        }
        RedrawWindow(panels.Page(), nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW);
    };
    return Measure(refresh, rewrite);
}

// clang-format off
const Rows s_rows{{
    {"host, from start to first complete picture", "a program with an empty window", 6, FirstPicture},
    {"all panels, zoom to 1.5 and back, painted", "the same windows moved, fonts set, by hand", 1.5, ZoomAll},
    {"all panels, refresh when nothing changed", "their texts written again", 0.05, RefreshAll},
}};
// clang-format on

}  // namespace
}  // namespace kx::bench
