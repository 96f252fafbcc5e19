#include "main_window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/devgui_host.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_locale.h>

#include "device_panel.h"
#include "event_log.h"
#include "light_devices.h"
#include "pages/pages.h"
#include "pages/stand_page.h"
#include "requests.h"
#include "text.h"

namespace {

constexpr UINT kZoomed = WM_APP + 1;
constexpr UINT_PTR kDeviceTimer = 1;
constexpr UINT kDeviceMilliseconds = 40;
constexpr int kLogHeight = 200, kStatusHeight = 20, kBarHeight = 30, kPageButtonWidth = 108;  // unzoomed pixels
// The first size: three columns of the microscope's page, all of the host's own in them.
constexpr int kWidth = 1016, kHeight = kBarHeight + 472 + kStatusHeight + kLogHeight;

struct Language {
    WORD id;
    const wchar_t* name;
};
constexpr std::array kLanguages{
    Language{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), L"English"},
    Language{MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), L"Deutsch"},
    Language{MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH), L"Français"},
    Language{MAKELANGID(LANG_SPANISH, SUBLANG_SPANISH_MODERN), L"Español"},
    Language{MAKELANGID(LANG_JAPANESE, SUBLANG_JAPANESE_JAPAN), L"日本語"},
};

constexpr std::array kZooms{100, 125, 150, 200};

void Append(HMENU menu, int command, const wchar_t* text, bool checked) {
    AppendMenuW(menu, MF_STRING | (checked ? MF_CHECKED : 0u), static_cast<UINT_PTR>(command), text);
}

// The one that the key belongs to.
MainWindow* s_window = nullptr;

// Per cent.
int UserZoom() { return static_cast<int>(std::lround(CKxGUILayoutManager::GetUserZoom() * 100)); }

void AppendPopup(HMENU menu, HMENU popup, const wchar_t* text) {
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), text);
}

}  // namespace

bool MainWindow::Create(HINSTANCE instance, const kx::host::Settings& settings) {
    m_settings = settings;
    if (m_settings.width == 0) m_settings.width = kWidth, m_settings.height = kHeight;
    m_page = m_settings.page;
    for (const Language& each : kLanguages) {
        if (PRIMARYLANGID(each.id) == m_settings.language) CKxLocale::SetModuleLangId(each.id);
    }
    if (m_settings.scheme == kx::host::Settings::Automatic) {
        KX_FollowSystemColorScheme();
    } else {
        KX_SetColorScheme(static_cast<EKxColorScheme>(m_settings.scheme));
    }
    CKxGUILayoutManager::SetGuiZoom(m_settings.zoom / 100.0);
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = WndProc;
    description.hInstance = instance;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = L"KxDevHost";
    if (!RegisterClassExW(&description) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
    m_window = CreateWindowExW(0, description.lpszClassName, nullptr, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 10,
                               600, 640, nullptr, nullptr, instance, this);
    if (!m_window) return false;
    KX_FollowScaleOf(m_window);
    KX_FollowColorScheme(m_window);
    KX_SetFieldHabits(m_window, KxFieldHabits::All());
    m_status = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE | SS_SUNKEN | SS_CENTERIMAGE, 0, 0, 0, 0,
                               m_window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(StatusId)), instance, nullptr);
    KX_FollowColorScheme(m_status);
    // Dialogs and menus have loops of their own, which ask this hook.
    s_window = this;
    SetWindowsHookExW(WH_MSGFILTER, FilterProc, nullptr, GetCurrentThreadId());
    SetStatusSink([this](const std::wstring& text) { Say(text); });
    BuildPages();
    SetTimer(m_window, kDeviceTimer, kDeviceMilliseconds, nullptr);
    // As a dialog does: whether the focus is shown from the beginning depends on what the user has last used.
    SendMessageW(m_window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0), 0);
    ShowWindow(m_window, SW_SHOW);
    return true;
}

// ---- Building ------------------------------------------------------------------------------------------------------

void MainWindow::BuildPages() {
    // Before there is anything to lay out below it.
    BuildMenu();
    if (!m_pages.empty()) m_kept.Take(m_window);
    m_pages = MakePages(m_microscope, m_gallery);
    if (m_page >= std::ssize(m_pages)) m_page = 0;
    m_left.assign(m_pages.size(), nullptr);
    BuildPageButtons();
    m_log.Build(m_window);
    KX_FollowColorScheme(m_log);
    GiveBarLetters();
    SetWindowTextW(m_window, Text(L"Microscope panels"));
    Say(Text(L"Ready").str());
    Restyle();
    // Before the page, which is then placed once.
    FitToPages();
    TurnTo(m_page);
}

void MainWindow::BuildPageButtons() {
    for (const HWND button : m_pageButtons)
        DestroyWindow(button);
    m_pageButtons.clear();
    if (m_lightOff) DestroyWindow(m_lightOff);
    for (const auto& page : m_pages) {
        const std::size_t i = m_pageButtons.size();
        const DWORD first = i == 0 ? WS_GROUP | WS_TABSTOP : 0;
        m_pageButtons.push_back(CreateWindowExW(
            0, L"BUTTON", Text(page->Name()), WS_CHILD | WS_VISIBLE | BS_AUTORADIOBUTTON | BS_PUSHLIKE | first, 0, 0, 0,
            0, m_window, reinterpret_cast<HMENU>(cmdPage + i), nullptr, nullptr));
        KX_FollowColorScheme(m_pageButtons.back());
    }
    m_lightOff = CreateWindowExW(0, L"BUTTON", Text(L"All light off"), WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0,
                                 m_window, reinterpret_cast<HMENU>(INT_PTR{cmdLightOff}), nullptr, nullptr);
    KX_FollowColorScheme(m_lightOff);
}

LRESULT CALLBACK MainWindow::FilterProc(int code, WPARAM wParam, LPARAM lParam) {
    if (code >= 0 && s_window && s_window->TakesKey(*reinterpret_cast<const MSG*>(lParam))) return 1;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool MainWindow::TakesKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != LightOffKey) return false;
    TurnLightOff();
    return true;
}

bool MainWindow::TakesEditKey(const MSG& message) {
    TheRequests().Note(message);
    const bool undo = message.wParam == 'Z', redo = message.wParam == 'Y';
    if (message.message != WM_KEYDOWN || (!undo && !redo) || GetKeyState(VK_CONTROL) >= 0) return false;
    // AltGr is Ctrl and Alt.
    if (GetKeyState(VK_MENU) < 0 || GetKeyState(VK_SHIFT) < 0) return false;
    if (SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) return false;
    OnCommand(undo ? cmdUndo : cmdRedo);
    return true;
}

// A page is built when it is first turned to: all of them together take a second.
void MainWindow::TurnTo(int page) {
    if (const HWND focus = GetFocus(); IsChild(CurrentPage(), focus)) m_left[static_cast<std::size_t>(m_page)] = focus;
    m_page = page;
    if (Page& current = *m_pages[static_cast<std::size_t>(page)]; !current.IsBuilt()) {
        // What is kept for a page finds it by this number.
        current.SetId(cmdPage + static_cast<int>(m_pages.size()) + page);
        // The dialogs in it take the focus while they are made.
        const HWND focus = GetFocus();
        current.Build(m_window);
        if (GetFocus() != focus && IsWindow(focus)) SetFocus(focus);
        current.SetEnabled(m_enabled);
        current.FitTo(m_pagePlace);
        // The log stands below, and Tab comes to it after the page.
        SetWindowPos(m_log, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
    }
    for (int i = 0; i < static_cast<int>(m_pages.size()); ++i) {
        SendMessageW(m_pageButtons[static_cast<std::size_t>(i)], BM_SETCHECK, i == page ? BST_CHECKED : BST_UNCHECKED,
                     0);
        if (m_pages[static_cast<std::size_t>(i)]->IsBuilt())
            m_pages[static_cast<std::size_t>(i)]->SetVisible(i == page);
    }
    m_kept.GiveBack(m_window);
    KeepFocusUsable();
    FocusAsLeft(std::exchange(m_left[static_cast<std::size_t>(page)], nullptr));
}

// Unless the user has chosen another place meanwhile.
void MainWindow::FocusAsLeft(HWND left) {
    if (m_putAside && GetFocus() == m_putAside && IsChild(CurrentPage(), left) && IsWindowEnabled(left)) SetFocus(left);
}

// IsDialogMessage looks for the window with the focus among those that can be used, and would look for ever.
void MainWindow::KeepFocusUsable() {
    const HWND focus = GetFocus();
    if (!IsChild(m_window, focus)) return;
    for (HWND each = focus; each != m_window; each = GetParent(each)) {
        const LONG style = GetWindowLongW(each, GWL_STYLE);
        if ((style & WS_VISIBLE) && !(style & WS_DISABLED)) continue;
        m_putAside = m_pageButtons[static_cast<std::size_t>(m_page)];
        SetFocus(m_putAside);
        return;
    }
}

void MainWindow::BuildMenu() {
    const HMENU menu = CreateMenu(), devices = CreatePopupMenu(), zoom = CreatePopupMenu(),
                language = CreatePopupMenu(), scheme = CreatePopupMenu();
    Append(devices, cmdSeries, Text(L"Time series..."), false);
    Append(devices, cmdCondenser, Text(L"Condenser..."), false);
    Append(devices, cmdLightOff, (Text(L"All light off").str() + L"\tF12").c_str(), false);
    Append(devices, cmdEnabled, Text(L"Enabled"), m_enabled);
    Append(devices, cmdKeys, (Text(L"Keys").str() + L"\tF1").c_str(), false);
    Append(devices, cmdExit, Text(L"Exit"), false);
    for (const int percent : kZooms) {
        CKxStringW text;
        text.Format(20, L"%d %%", percent);
        Append(zoom, cmdZoom + percent / 25, text, percent == UserZoom());
    }
    for (const Language& each : kLanguages) {
        Append(language, cmdLanguage + PRIMARYLANGID(each.id), each.name,
               PRIMARYLANGID(each.id) == PRIMARYLANGID(CKxLocale::GetModuleLangId()));
    }
    const bool automatic = KX_IsFollowingSystemColorScheme();
    Append(scheme, cmdAutoScheme, Text(L"Automatic (light or dark)"), automatic);
    const std::array names{L"As the system", L"Light", L"Dark", L"High contrast"};
    for (int i = 0; i < static_cast<int>(names.size()); ++i) {
        Append(scheme, cmdScheme + i, Text(names[static_cast<std::size_t>(i)]), !automatic && i == KX_GetColorScheme());
    }
    // Filled when it opens.
    m_edit = CreatePopupMenu();
    Append(m_edit, cmdUndo, Text(L"Undo"), false);
    AppendPopup(menu, devices, Text(L"Devices"));
    AppendPopup(menu, m_edit, Text(L"Edit"));
    AppendPopup(menu, SimulationMenu(), Text(L"Simulation"));
    AppendPopup(menu, zoom, Text(L"Zoom"));
    AppendPopup(menu, language, Text(L"Language"));
    AppendPopup(menu, scheme, Text(L"Colours"));
    GiveLetters(menu);
    m_barTexts = TextsOf(menu);
    const HMENU old = GetMenu(m_window);
    SetMenu(m_window, menu);
    // Where the bar stays as high as it was, the platform draws the new items alone, and before they follow the scheme.
    RedrawWindow(m_window, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
    if (old) DestroyMenu(old);
}

void MainWindow::FillEditMenu() const {
    const auto literal = [](std::wstring text) {
        for (std::size_t i = 0; (i = text.find(L'&', i)) != std::wstring::npos; i += 2)
            text.insert(i, 1, L'&');
        return text;
    };
    const auto append = [&](int command, const wchar_t* verb, const std::wstring& name, const wchar_t* key) {
        const std::wstring text = Text(verb).str() + (name.empty() ? L"" : L": " + literal(name)) + key;
        AppendMenuW(m_edit, MF_STRING | (name.empty() ? MF_GRAYED : 0u), static_cast<UINT_PTR>(command), text.c_str());
    };
    while (DeleteMenu(m_edit, 0, MF_BYPOSITION))
        continue;
    append(cmdUndo, L"Undo", TheRequests().NameToUndo(), L"\tCtrl+Z");
    append(cmdRedo, L"Redo", TheRequests().NameToRedo(), L"\tCtrl+Y");
    AppendMenuW(m_edit, MF_SEPARATOR, 0, nullptr);
    const std::vector<std::wstring> names = TheRequests().Names();
    const HMENU all = CreatePopupMenu();
    for (const std::wstring& each : names)
        Append(all, cmdUndoTo + GetMenuItemCount(all), literal(each).c_str(), false);
    AppendMenuW(m_edit, MF_POPUP | (names.empty() ? MF_GRAYED : 0u), reinterpret_cast<UINT_PTR>(all),
                Text(L"Undo back to"));
    GiveLetters(m_edit);
}

HMENU MainWindow::SimulationMenu() const {
    const HMENU menu = CreatePopupMenu();
    const std::array names{L"The host refuses", L"The device decides", L"The devices are slow", L"The devices fail"};
    for (std::size_t i = 0; i < names.size(); ++i)
        Append(menu, cmdSimulation + static_cast<int>(i), Text(names[i]), m_simulation[i]);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    Append(menu, cmdSimulation + simStop, Text(L"Stop all"), false);
    return menu;
}

// ---- Layout --------------------------------------------------------------------------------------------------------

void MainWindow::FitToPages() {
    RECT frame{0, 0, CKxGUILayoutManager::Zoomed(m_settings.width), CKxGUILayoutManager::Zoomed(m_settings.height)};
    AdjustWindowRectExForDpi(&frame, static_cast<DWORD>(GetWindowLongW(m_window, GWL_STYLE)), TRUE, 0,
                             GetDpiForWindow(m_window));
    // On a small screen the log gives way first.
    RECT own{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(m_window, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    GetWindowRect(m_window, &own);
    const SIZE size{std::min(frame.right - frame.left, work.right - own.left),
                    std::min(frame.bottom - frame.top, work.bottom - own.top)};
    // A new size brings the layout with it.
    if (size.cx == own.right - own.left && size.cy == own.bottom - own.top) return Layout();
    SetWindowPos(m_window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindow::Layout() {
    const auto zoomed = [](int pixels) { return static_cast<int>(CKxGUILayoutManager::Zoomed(pixels)); };
    RECT client{};
    GetClientRect(m_window, &client);
    const int status = zoomed(kStatusHeight), top = zoomed(kBarHeight);
    const int room = std::max(0, static_cast<int>(client.bottom) - top - status);
    const int page = std::max(room - zoomed(kLogHeight), std::min(room, zoomed(Page::Height)));
    m_pagePlace = {0, top, client.right, top + page};
    // All of them are to be seen in a narrow window too.
    const int pages = static_cast<int>(m_pages.size()), gap = zoomed(4);
    const int button =
        std::clamp((static_cast<int>(client.right) - 5 * gap) / (pages + 1) - gap, 0, zoomed(kPageButtonWidth));
    for (int i = 0; i < pages; ++i) {
        MoveWindow(m_pageButtons[static_cast<std::size_t>(i)], zoomed(8) + i * (button + gap), zoomed(4), button,
                   zoomed(kBarHeight - 6), TRUE);
        if (Page& each = *m_pages[static_cast<std::size_t>(i)]; each.IsBuilt()) each.FitTo(m_pagePlace);
    }
    MoveWindow(m_lightOff, static_cast<int>(client.right) - zoomed(8) - button, zoomed(4), button,
               zoomed(kBarHeight - 6), TRUE);
    m_log.PlaceAt(0, top + page, client.right, room - page);
    MoveWindow(m_status, 0, top + room, client.right, status, TRUE);
}

void MainWindow::Restyle() {
    const auto font = reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont());
    SendMessageW(m_status, WM_SETFONT, font, TRUE);
    for (const HWND button : m_pageButtons)
        SendMessageW(button, WM_SETFONT, font, TRUE);
    SendMessageW(m_lightOff, WM_SETFONT, font, TRUE);
}

void MainWindow::Say(const std::wstring& text) { SetWindowTextW(m_status, (L" " + text).c_str()); }

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT CALLBACK MainWindow::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<MainWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->Handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT MainWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (KX_RelayScale(m_window, message, wParam, lParam)) return 0;
    switch (message) {
    case WM_SIZE:
        if (m_pages.empty() || wParam == SIZE_MINIMIZED) return 0;
        // The first show tells of a size too.
        if (const LPARAM size = std::exchange(m_size, lParam); size != lParam) Layout();
        return 0;
    case WM_EXITSIZEMOVE:
        // Only what the user has done: the menu's changes send WM_SIZE too.
        if (!IsZoomed(m_window)) NoteSettings();
        return 0;
    case WM_ERASEBKGND: {
        RECT client{};
        GetClientRect(m_window, &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, KX_GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    case WM_CTLCOLORSTATIC:
        SetTextColor(reinterpret_cast<HDC>(wParam), KX_GetSysColor(COLOR_BTNTEXT));
        SetBkColor(reinterpret_cast<HDC>(wParam), KX_GetSysColor(COLOR_BTNFACE));
        return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(COLOR_BTNFACE));
    case WM_COMMAND:
        // The page buttons send what the menu would.
        if (const int id = LOWORD(wParam);
            lParam == 0 || id == cmdLightOff || (id >= cmdPage && id < cmdPage + std::ssize(m_pages))) {
            OnCommand(id);
        } else {
            Log().Add(L"Host", L"WM_COMMAND id %d code 0x%04X", static_cast<int>(LOWORD(wParam)),
                      static_cast<unsigned>(HIWORD(wParam)));
        }
        return 0;
    case WM_INITMENUPOPUP:
        if (reinterpret_cast<HMENU>(wParam) == m_edit) FillEditMenu();
        return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
        Log().Add(L"Host", L"%ls code %d", message == WM_HSCROLL ? L"WM_HSCROLL" : L"WM_VSCROLL",
                  static_cast<int>(LOWORD(wParam)));
        return 0;
    case WM_MOUSEWHEEL: OnMouseWheel(wParam, lParam); return 0;
    case WM_TIMER:
        for (CKxSimMicroscope* each : Microscopes())
            each->Tick();
        return 0;
    case kx::ui::WM_KX_ZOOM_CHANGED:
        // When all windows have been told: before, the pane's would be zoomed once more.
        PostMessageW(m_window, kZoomed, 0, 0);
        return 0;
    case kZoomed: {
        Restyle();
        BuildMenu();
        // With the monitor's scale the platform offers a size; with the user's zoom it is ours to choose.
        const int zoom = UserZoom();
        if (std::exchange(m_settings.zoom, zoom) == zoom)
            Layout();
        else
            FitToPages();
        return 0;
    }
    case WM_DESTROY:
        s_window = nullptr;
        m_settings.zoom = UserZoom();
        m_settings.scheme =
            KX_IsFollowingSystemColorScheme() ? kx::host::Settings::Automatic : static_cast<int>(KX_GetColorScheme());
        m_settings.page = m_page;
        DevicePanel::SetHostRefuses(false);
        KillTimer(m_window, kDeviceTimer);
        m_pages.clear();
        TheRequests().Clear();
        m_log.Destroy();
        SetStatusSink(nullptr);
        PostQuitMessage(0);
        return 0;
    default: return DefWindowProcW(m_window, message, wParam, lParam);
    }
}

void MainWindow::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    auto& page = *m_pages[static_cast<std::size_t>(m_page)];
    const CKxDevUI_Container* panel = page.PanelAt(point);
    if (panel && KX_RelayWheel(*panel, wParam, lParam)) return;
    page.Wheel(GET_WHEEL_DELTA_WPARAM(wParam));
}

void MainWindow::OnCommand(int command) {
    if (command == cmdSeries) {
        PageOf<StandPage>().AskForSeries(m_window);
    } else if (command == cmdCondenser) {
        PageOf<StandPage>().AskForCondenser(m_window);
    } else if (command == cmdEnabled) {
        m_enabled = !m_enabled;
        for (const auto& page : m_pages) {
            if (page->IsBuilt()) page->SetEnabled(m_enabled);
        }
        KeepFocusUsable();
        BuildMenu();
    } else if (command == cmdLightOff) {
        TurnLightOff();
    } else if (command == cmdKeys) {
        ShowKeys();
    } else if (command == cmdExit) {
        DestroyWindow(m_window);
    } else if (command == cmdUndo) {
        Undo(1);
    } else if (command == cmdRedo) {
        Redo();
    } else if (command >= cmdUndoTo) {
        Undo(command - cmdUndoTo + 1);
    } else if (command >= cmdSimulation) {
        Simulate(command - cmdSimulation);
    } else if (command >= cmdPage) {
        TurnTo(command - cmdPage);
    } else if (command >= cmdScheme) {
        if (command == cmdAutoScheme) {
            KX_FollowSystemColorScheme();
        } else {
            KX_SetColorScheme(static_cast<EKxColorScheme>(command - cmdScheme));
        }
        BuildMenu();
    } else if (command >= cmdLanguage) {
        for (const Language& each : kLanguages) {
            if (PRIMARYLANGID(each.id) == command - cmdLanguage) CKxLocale::SetModuleLangId(each.id);
        }
        m_settings.language = command - cmdLanguage;
        BuildPages();
    } else if (command >= cmdZoom) {
        CKxGUILayoutManager::SetGuiZoom((command - cmdZoom) / 4.0);
    }
}

// Remembers what the next run starts with; the size as it would be without zoom.
void MainWindow::NoteSettings() {
    RECT client{};
    GetClientRect(m_window, &client);
    m_settings.width = std::clamp(static_cast<int>(CKxGUILayoutManager::Unzoomed(client.right)), 300, 10000);
    m_settings.height = std::clamp(static_cast<int>(CKxGUILayoutManager::Unzoomed(client.bottom)), 300, 10000);
}

std::array<CKxSimMicroscope*, 3> MainWindow::Microscopes() {
    return {&m_microscope.Devices(), &m_gallery.Devices(), &TheLight().Devices()};
}

// Back to one of those listed, and no further than the first that cannot be.
void MainWindow::Undo(int count) {
    Requests::Outcome outcome{{}, true};
    for (int i = 0; i < count && outcome.done; ++i)
        ShowOutcome((outcome = TheRequests().Undo()).told);
}

void MainWindow::Redo() { ShowOutcome(TheRequests().Redo().told); }

void MainWindow::ShowOutcome(const std::wstring& told) {
    for (const auto& page : m_pages) {
        for (CKxDevUI_Container* each : page->Panels()) {
            if (auto* const panel = dynamic_cast<HostPanel*>(each); panel && *panel) panel->ShowValues();
        }
    }
    Say(told);
    Log().Add(L"Host", L"%ls", told.c_str());
}

void MainWindow::TurnLightOff() {
    for (CKxSimMicroscope* each : Microscopes())
        each->TurnLightOff();
    for (const auto& page : m_pages) {
        for (CKxDevUI_Container* each : page->Panels()) {
            if (auto* const panel = dynamic_cast<HostPanel*>(each)) panel->TurnLightOff();
        }
    }
    Say(Text(L"All light is off").str());
    Log().Add(L"Host", L"All light is off");
}

void MainWindow::Simulate(int entry) {
    constexpr unsigned kSlowness = 10;
    const auto on = [&]() -> bool& { return m_simulation[static_cast<std::size_t>(entry)]; };
    if (entry < simStop) on() = !on();
    for (CKxSimMicroscope* each : Microscopes()) {
        if (entry == simSlow) each->SetSlowness(on() ? kSlowness : 1);
        if (entry == simFail) each->SetFails(on(), Text(L"No answer from the device"));
        if (entry == simStop) each->Stop();
    }
    if (entry == simRefuse) DevicePanel::SetHostRefuses(on());
    if (entry == simDeviceDecides) DecideByDevice(on());
    BuildMenu();
}

void MainWindow::DecideByDevice(bool decides) {
    std::vector<CDMApi_LogDevId> turrets = m_microscope.Roles().turrets;
    turrets.push_back(m_gallery.Nosepiece().GetLogDevId());
    for (const CDMApi_LogDevId id : turrets) {
        kx::config::Simulated<CKxSimNosepiece>(id)->SetDeviceDriven(decides, false);
        CKxDeviceRegistry::Notify(id, EKxDeviceChange::Structure);
    }
}
