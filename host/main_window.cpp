#include "main_window.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxdevui/framework/devgui_messages.h>
#include <kxsystem/kx_locale.h>
#include <kxsystem/kx_translation.h>

#include "event_log.h"

namespace {

constexpr int kStatusId = 1, kLogId = 2;
constexpr int kLogHeight = 170, kStatusHeight = 20, kBarHeight = 30, kPageButtonWidth = 110;  // unzoomed pixels

CKxStringW Text(const wchar_t* english) { return KX_GetTranslation(english, L"host"); }

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

void AppendPopup(HMENU menu, HMENU popup, const wchar_t* text) {
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), text);
}

}  // namespace

bool MainWindow::Create(HINSTANCE instance) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = WndProc;
    description.hInstance = instance;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = L"KxDevHost";
    if (!RegisterClassExW(&description)) return false;
    m_window = CreateWindowExW(0, description.lpszClassName, nullptr, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 10,
                               600, 640, nullptr, nullptr, instance, this);
    if (!m_window) return false;
    m_list = Log().Create(m_window, kLogId);
    m_status = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE | SS_SUNKEN | SS_CENTERIMAGE, 0, 0, 0, 0,
                               m_window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kStatusId)), instance, nullptr);
    SetStatusSink([this](const std::wstring& text) { Say(text); });
    BuildPages();
    ShowWindow(m_window, SW_SHOW);
    return true;
}

// ---- Building ------------------------------------------------------------------------------------------------------

void MainWindow::BuildPages() {
    m_pages = {};
    m_stand = std::make_unique<StandPage>();
    m_controls = std::make_unique<ControlsPage>();
    m_light = std::make_unique<LightPage>();
    m_pages = {m_stand.get(), m_controls.get(), m_light.get()};
    for (Page* page : m_pages) {
        page->Build(m_window);
        page->SetEnabled(m_enabled);
    }
    BuildPageButtons();
    TurnTo(m_page);
    BuildMenu();
    SetWindowTextW(m_window, Text(L"Microscope panels"));
    Say(Text(L"Ready").str());
    Restyle();
    FitToPages();
}

void MainWindow::BuildPageButtons() {
    for (int i = 0; i < static_cast<int>(m_pages.size()); ++i) {
        HWND& button = m_pageButtons[static_cast<std::size_t>(i)];
        if (button) DestroyWindow(button);
        const DWORD first = i == 0 ? WS_GROUP | WS_TABSTOP : 0;
        button = CreateWindowExW(0, L"BUTTON", Text(m_pages[static_cast<std::size_t>(i)]->Name()),
                                 WS_CHILD | WS_VISIBLE | BS_AUTORADIOBUTTON | BS_PUSHLIKE | first, 0, 0, 0, 0, m_window,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(cmdPage + i)), nullptr, nullptr);
        KX_FollowColorScheme(button);
    }
}

void MainWindow::TurnTo(int page) {
    m_page = page;
    for (int i = 0; i < static_cast<int>(m_pages.size()); ++i) {
        SendMessageW(m_pageButtons[static_cast<std::size_t>(i)], BM_SETCHECK, i == page ? BST_CHECKED : BST_UNCHECKED,
                     0);
        m_pages[static_cast<std::size_t>(i)]->SetVisible(i == page);
    }
}

void MainWindow::BuildMenu() {
    const HMENU menu = CreateMenu(), devices = CreatePopupMenu(), zoom = CreatePopupMenu(),
                language = CreatePopupMenu(), scheme = CreatePopupMenu();
    Append(devices, cmdSeries, Text(L"Time series..."), false);
    Append(devices, cmdEnabled, Text(L"Enabled"), m_enabled);
    Append(devices, cmdExit, Text(L"Exit"), false);
    for (const int percent : kZooms) {
        CKxStringW text;
        text.Format(20, L"%d %%", percent);
        Append(zoom, cmdZoom + percent / 25, text,
               percent == static_cast<int>(std::lround(CKxGUILayoutManager::GetGuiZoom() * 100)));
    }
    for (const Language& each : kLanguages) {
        Append(language, cmdLanguage + PRIMARYLANGID(each.id), each.name,
               PRIMARYLANGID(each.id) == PRIMARYLANGID(CKxLocale::GetModuleLangId()));
    }
    const std::array names{L"As the system", L"Light", L"Dark", L"High contrast"};
    for (int i = 0; i < static_cast<int>(names.size()); ++i) {
        Append(scheme, cmdScheme + i, Text(names[static_cast<std::size_t>(i)]), i == KX_GetColorScheme());
    }
    AppendPopup(menu, devices, Text(L"Devices"));
    AppendPopup(menu, zoom, Text(L"Zoom"));
    AppendPopup(menu, language, Text(L"Language"));
    AppendPopup(menu, scheme, Text(L"Colours"));
    const HMENU old = GetMenu(m_window);
    SetMenu(m_window, menu);
    if (old) DestroyMenu(old);
}

// ---- Layout --------------------------------------------------------------------------------------------------------

void MainWindow::FitToPages() {
    RECT frame{0, 0, CKxGUILayoutManager::Zoomed(Page::Width),
               CKxGUILayoutManager::Zoomed(kBarHeight + Page::Height + kStatusHeight) + kLogHeight};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(m_window, GWL_STYLE)), TRUE, 0);
    // On a small screen the log gives way.
    RECT work{}, own{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    GetWindowRect(m_window, &own);
    SetWindowPos(m_window, nullptr, 0, 0, frame.right - frame.left,
                 std::min(frame.bottom - frame.top, work.bottom - own.top), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Layout();
}

void MainWindow::Layout() {
    const auto zoomed = [](int pixels) { return CKxGUILayoutManager::Zoomed(pixels); };
    RECT client{};
    GetClientRect(m_window, &client);
    for (int i = 0; i < static_cast<int>(m_pages.size()); ++i) {
        MoveWindow(m_pageButtons[static_cast<std::size_t>(i)], zoomed(8 + i * (kPageButtonWidth + 4)), zoomed(4),
                   zoomed(kPageButtonWidth), zoomed(kBarHeight - 6), TRUE);
        SetWindowPos(*m_pages[static_cast<std::size_t>(i)], nullptr, 0, zoomed(kBarHeight), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    const int status = zoomed(kStatusHeight), top = zoomed(kBarHeight + Page::Height);
    const int log = std::max(0L, client.bottom - top - status);
    MoveWindow(m_list, 0, top, client.right, log, TRUE);
    MoveWindow(m_status, 0, top + log, client.right, status, TRUE);
}

void MainWindow::Restyle() {
    for (const HWND window : {m_list, m_status}) {
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(KX_GetDefaultGuiFont()), TRUE);
    }
    for (const HWND button : m_pageButtons) {
        SendMessageW(button, WM_SETFONT,
                     reinterpret_cast<WPARAM>(KX_GetDefaultGuiFontZoom(CKxGUILayoutManager::GetGuiZoom())), TRUE);
    }
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
    switch (message) {
    case WM_SIZE:
        if (m_pages[0]) Layout();
        return 0;
    case WM_ERASEBKGND: {
        RECT client{};
        GetClientRect(m_window, &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, KX_GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX: {
        const bool list = message == WM_CTLCOLORLISTBOX;
        SetTextColor(reinterpret_cast<HDC>(wParam), KX_GetSysColor(list ? COLOR_WINDOWTEXT : COLOR_BTNTEXT));
        SetBkColor(reinterpret_cast<HDC>(wParam), KX_GetSysColor(list ? COLOR_WINDOW : COLOR_BTNFACE));
        return reinterpret_cast<LRESULT>(KX_GetSysColorBrush(list ? COLOR_WINDOW : COLOR_BTNFACE));
    }
    case WM_COMMAND:
        // The page buttons send what the menu would.
        if (const int id = LOWORD(wParam); lParam == 0 || (id >= cmdPage && id < cmdPage + std::ssize(m_pages))) {
            OnCommand(id);
        } else if (LOWORD(wParam) != kLogId) {
            Log().Add(L"Host", L"WM_COMMAND id %d code 0x%04X", static_cast<int>(LOWORD(wParam)),
                      static_cast<unsigned>(HIWORD(wParam)));
        }
        return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
        Log().Add(L"Host", L"%ls code %d", message == WM_HSCROLL ? L"WM_HSCROLL" : L"WM_VSCROLL",
                  static_cast<int>(LOWORD(wParam)));
        return 0;
    case WM_MOUSEWHEEL: OnMouseWheel(wParam, lParam); return 0;
    case kx::ui::WM_KX_ZOOM_CHANGED:
        Restyle();
        BuildMenu();
        FitToPages();
        return 0;
    case WM_DESTROY:
        m_pages = {};
        m_stand.reset();
        m_controls.reset();
        m_light.reset();
        SetStatusSink(nullptr);
        PostQuitMessage(0);
        return 0;
    default: return DefWindowProcW(m_window, message, wParam, lParam);
    }
}

void MainWindow::OnMouseWheel(WPARAM wParam, LPARAM lParam) {
    const POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    if (CKxDevUI_Container* panel = m_pages[static_cast<std::size_t>(m_page)]->PanelAt(point)) {
        SendMessageW(*panel, kx::ui::WM_KX_MOUSE_WHEEL, wParam, lParam);
    }
}

void MainWindow::OnCommand(int command) {
    if (command == cmdSeries) {
        m_stand->AskForSeries(m_window);
    } else if (command == cmdEnabled) {
        m_enabled = !m_enabled;
        for (Page* page : m_pages)
            page->SetEnabled(m_enabled);
        BuildMenu();
    } else if (command == cmdExit) {
        DestroyWindow(m_window);
    } else if (command >= cmdPage) {
        TurnTo(command - cmdPage);
    } else if (command >= cmdScheme) {
        KX_SetColorScheme(static_cast<EKxColorScheme>(command - cmdScheme));
        BuildMenu();
    } else if (command >= cmdLanguage) {
        for (const Language& each : kLanguages) {
            if (PRIMARYLANGID(each.id) == command - cmdLanguage) CKxLocale::SetModuleLangId(each.id);
        }
        BuildPages();
    } else if (command >= cmdZoom) {
        CKxGUILayoutManager::SetGuiZoom((command - cmdZoom) / 4.0);
    }
}
