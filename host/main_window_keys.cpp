// The window's keys that go from panel to panel and from page to page, the letters for Alt, and the focus that is kept
// in sight.
#include "main_window.h"

#include <algorithm>

#include <kxbaseui/kx_cues.h>
#include <kxbaseui/kx_messagebox.h>

#include "resources/resource.h"
#include "rules/mnemonics.h"
#include "text.h"

namespace {

// As docs/keys.md has them.
constexpr const wchar_t* kKeys[] = {
    L"Tab, Shift+Tab: to the next control, and back",
    L"F6, Shift+F6: to the next panel, and back",
    L"Ctrl+Tab, Ctrl+Shift+Tab: to the next page, and back",
    L"Alt with an underlined letter: the menu or button that has it",
    L"Arrow keys: within a row of buttons or a list; a slider by one step",
    L"Ctrl, Shift with an arrow key: a slider by the fine, the coarse step of the wheel",
    L"Page Up, Page Down: a slider by a large step",
    L"Home, End: to the first or the last",
    L"A digit on a slider: begins its number",
    L"Space, Enter: press the button",
    L"Enter in a field: takes what was typed",
    L"Escape: takes back what was typed, ends a drag, closes what is open",
    L"F2: edits the cell of a table",
    L"F4, Alt+Down: open a list",
    L"Menu key, Shift+F10: open the menu of the right mouse button",
    L"Ctrl+Z, Ctrl+Y: undo, redo",
    L"F12: all light off",
    L"F1: this page"};

bool IsDown(int key) { return GetKeyState(key) < 0; }

// As the dialog manager does it for Tab.
void FocusByKey(HWND stop) {
    KX_ShowFocusFromNowOn(stop);
    SetFocus(stop);
    const HWND focus = GetFocus();
    if (SendMessageW(focus, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) SendMessageW(focus, EM_SETSEL, 0, -1);
}

HWND FirstStopIn(HWND area) {
    const HWND stop = GetNextDlgTabItem(area, nullptr, FALSE);
    return IsChild(area, stop) ? stop : nullptr;
}

}  // namespace

bool MainWindow::TakesPanelKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || GetCapture() || IsDown(VK_MENU)) return false;
    if (message.wParam == VK_F1) return ShowKeys(), true;
    if (message.wParam == VK_F6) return GoToPanel(IsDown(VK_SHIFT)), true;
    if (message.wParam == VK_TAB && IsDown(VK_CONTROL)) return GoToPage(IsDown(VK_SHIFT)), true;
    return false;
}

void MainWindow::ShowKeys() const {
    std::wstring all;
    for (const wchar_t* const each : kKeys)
        all += (all.empty() ? L"" : L"\n") + Text(each).str();
    KX_MessageBox_(m_window, all.c_str(), Text(L"Keys"), MB_OK, -1);
}

// The bar with the page buttons, the panels of the page, the log, and round again.
void MainWindow::GoToPanel(bool backwards) {
    std::vector<HWND> stops{m_pageButtons[static_cast<std::size_t>(m_page)]}, areas{nullptr};
    const auto add = [&](HWND area) {
        const HWND stop = FirstStopIn(area);
        if (stop) stops.push_back(stop), areas.push_back(area);
    };
    for (CKxDevUI_Container* const each : CurrentPage().PanelsAsRead())
        add(*each);
    add(m_log);
    const HWND focus = GetFocus();
    const auto isAround = [focus](HWND area) { return area && (area == focus || IsChild(area, focus)); };
    const auto found = std::find_if(areas.begin(), areas.end(), isAround);
    const std::size_t here = found == areas.end() ? 0 : static_cast<std::size_t>(found - areas.begin());
    FocusByKey(stops[(here + (backwards ? stops.size() - 1 : 1)) % stops.size()]);
}

// Whoever is amid the controls stays amid them.
void MainWindow::GoToPage(bool backwards) {
    const int count = static_cast<int>(m_pages.size());
    const HWND focus = GetFocus();
    const bool isInside = IsChild(CurrentPage(), focus) != FALSE;
    const bool isOnButton = focus == m_pageButtons[static_cast<std::size_t>(m_page)];
    TurnTo((m_page + (backwards ? count - 1 : 1)) % count);
    if (isInside && !IsChild(CurrentPage(), GetFocus())) {
        if (const HWND stop = FirstStopIn(CurrentPage())) FocusByKey(stop);
    } else if (isOnButton) {
        FocusByKey(m_pageButtons[static_cast<std::size_t>(m_page)]);
    }
}

void MainWindow::KeepFocusInSight() {
    const HWND focus = GetFocus();
    if (focus == m_followed) return;
    m_followed = focus;
    Page& page = *m_pages[static_cast<std::size_t>(m_page)];
    if (IsChild(page, focus)) page.Reveal(focus);
}

// As long as they are the platform's to draw.
std::vector<std::wstring> MainWindow::TextsOf(HMENU menu) {
    std::vector<std::wstring> texts;
    for (UINT i = 0; i < static_cast<UINT>(std::max(0, GetMenuItemCount(menu))); ++i) {
        wchar_t text[200] = L"";
        GetMenuStringW(menu, i, text, 200, MF_BYPOSITION);
        texts.emplace_back(text);
    }
    return texts;
}

// In this menu and those that open from it.
void MainWindow::GiveLetters(HMENU menu) {
    std::vector<std::wstring> texts = TextsOf(menu);
    // A line between has no text, and takes no letter.
    std::erase(texts, L"");
    texts = kx::host::WithMnemonics(std::move(texts));
    auto text = texts.begin();
    for (UINT i = 0; text != texts.end(); ++i) {
        if (const HMENU popup = GetSubMenu(menu, static_cast<int>(i))) GiveLetters(popup);
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STRING;
        if (GetMenuStringW(menu, i, nullptr, 0, MF_BYPOSITION) == 0) continue;
        info.dwTypeData = (text++)->data();
        SetMenuItemInfoW(menu, i, TRUE, &info);
    }
}

// The buttons beside the menu, whose letters come first.
void MainWindow::GiveBarLetters() const {
    std::vector<HWND> buttons = m_pageButtons;
    buttons.push_back(m_lightOff);
    for (const int id : {IDC_LOG_PAUSE, IDC_LOG_COPY, IDC_LOG_SAVE, IDC_LOG_CLEAR})
        buttons.push_back(GetDlgItem(m_log, id));
    std::vector<std::wstring> texts = m_barTexts;
    const std::size_t menus = texts.size();
    for (const HWND button : buttons) {
        wchar_t text[200] = L"";
        GetWindowTextW(button, text, 200);
        texts.emplace_back(text);
    }
    texts = kx::host::WithMnemonics(std::move(texts), menus);
    for (std::size_t i = 0; i < buttons.size(); ++i)
        SetWindowTextW(buttons[i], texts[menus + i].c_str());
}
