// The host's window by the keyboard: Tab comes to everything that can be used, in the order in which it is read, F6 to
// every panel, Ctrl+Tab to every page, and every menu and button has a letter of its own in all languages.
#include <bench/bench.h>

#include <set>

#include "host_window.h"
#include <host/rules/mnemonics.h>

namespace {

using namespace kx::test;

struct HostKeys : HostWindow {
    HostKeys() : HostWindow({1016, 800}) {}
    // What gets the focus from Tab, until it comes round.
    std::vector<HWND> Stops(bool backwards) const {
        std::vector<HWND> stops;
        SetFocus(GetNextDlgTabItem(window.Handle(), nullptr, FALSE));
        for (HWND at = GetFocus(); std::find(stops.begin(), stops.end(), at) == stops.end(); at = GetFocus()) {
            stops.push_back(at);
            SetFocus(GetNextDlgTabItem(window.Handle(), at, backwards));
        }
        return stops;
    }
    bool Press(WORD key) { return window.TakesPanelKey({window.Handle(), WM_KEYDOWN, key, 0, 0, {}}); }
};

std::string NameOf(HWND control) {
    wchar_t name[64] = L"";
    GetClassNameW(control, name, 64);
    return Narrow(name) + " #" + std::to_string(GetDlgCtrlID(control)) + " at " + PlaceOf(control) + " '" +
           Narrow(TextOf(control)) + "'";
}

RECT PlaceOnScreen(HWND control) {
    RECT rect{};
    GetWindowRect(control, &rect);
    return rect;
}

bool IsPart(HWND control) {
    const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    const std::string name = NameOf(control);
    // A head is its list's; the laser lines scroll with the focus.
    return IsWindowVisible(control) && IsWindowEnabled(control) && code != 0 && !(code & DLGC_STATIC) &&
           !name.starts_with("SysHeader32") && !name.starts_with("ScrollBar #10205");
}

// Whether a key leads there from what Tab has come to: the same, what it has in it, or a neighbour in its row.
bool IsReached(HWND control, const std::vector<HWND>& stops) {
    return std::any_of(stops.begin(), stops.end(), [control](HWND stop) {
        constexpr auto isButton = [](HWND window) {
            return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & (DLGC_RADIOBUTTON | DLGC_BUTTON)) != 0;
        };
        const bool isRow = GetParent(stop) == GetParent(control) && isButton(stop) && isButton(control);
        const bool moves = !(GetWindowLongW(control, GWL_STYLE) & WS_TABSTOP);
        return stop == control || IsChild(control, stop) || (isRow && moves);
    });
}

TEST_F(HostKeys, TabComesToAllInReadingOrder) {
    const int pages = static_cast<int>(window.Pages().size());
    // In another language all is made anew.
    for (int round = 0; round < 2; ++round) {
        if (round > 0) Do(MainWindow::cmdLanguage + LANG_GERMAN);
        for (int page = 0; page < pages; ++page) {
            Do(MainWindow::cmdPage + page);
            const HWND here = window.CurrentPage();
            const std::vector<HWND> stops = Stops(false);
            std::vector<HWND> back = Stops(true);
            std::reverse(back.begin() + 1, back.end());
            EXPECT_EQ(back, stops) << "page " << page;
            const auto look = [](HWND control, LPARAM param) -> BOOL {
                const auto& [reached, number] = *reinterpret_cast<const std::pair<std::vector<HWND>, int>*>(param);
                EXPECT_TRUE(!IsPart(control) || IsReached(control, reached)) << "page " << number << NameOf(control);
                return TRUE;
            };
            const std::pair<std::vector<HWND>, int> given(stops, page);
            EnumChildWindows(window.Handle(), look, reinterpret_cast<LPARAM>(&given));
            for (std::size_t i = 1; i < stops.size(); ++i) {
                if (!IsChild(here, stops[i - 1]) || !IsChild(here, stops[i])) continue;
                const RECT from = PlaceOnScreen(stops[i - 1]), to = PlaceOnScreen(stops[i]);
                EXPECT_FALSE(to.bottom <= from.top && to.right <= from.left)
                    << "page " << page << ": back from " << NameOf(stops[i - 1]) << " to " << NameOf(stops[i]);
            }
        }
    }
    Do(MainWindow::cmdLanguage + LANG_ENGLISH);
}

TEST_F(HostKeys, F6ComesToEachPanelAndCtrlTabToEachPage) {
    const std::size_t pages = window.Pages().size();
    std::set<const Page*> seen;
    for (std::size_t i = 0; i < pages; ++i) {
        const auto& panels = window.CurrentPage().Panels();
        seen.insert(&window.CurrentPage());
        SetFocus(GetDlgItem(window.Handle(), MainWindow::cmdPage));
        std::set<const CKxDevUI_Container*> visited;
        // And the bar, and the log.
        for (std::size_t presses = 0; presses < panels.size() + 2; ++presses) {
            EXPECT_TRUE(Press(VK_F6));
            for (const CKxDevUI_Container* each : panels)
                if (IsChild(*each, GetFocus())) visited.insert(each);
        }
        EXPECT_EQ(visited.size(), panels.size()) << "page " << i;
        // From amid the controls to amid the controls.
        SetFocus(GetNextDlgTabItem(window.CurrentPage(), nullptr, FALSE));
        keybd_event(VK_CONTROL, 0, 0, 0);
        EXPECT_TRUE(PumpUntil([] { return GetKeyState(VK_CONTROL) < 0; }));
        EXPECT_TRUE(Press(VK_TAB));
        keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
        EXPECT_TRUE(PumpUntil([] { return GetKeyState(VK_CONTROL) >= 0; }));
        EXPECT_TRUE(IsChild(window.CurrentPage(), GetFocus())) << "page " << i;
    }
    EXPECT_EQ(seen.size(), pages);
}

void ExpectLetters(HMENU menu, std::vector<std::wstring> others, const std::string& where) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[200] = L"";
        GetMenuStringW(menu, static_cast<UINT>(i), text, 200, MF_BYPOSITION);
        if (text[0] != L'\0') others.emplace_back(text);
        if (const HMENU popup = GetSubMenu(menu, i)) ExpectLetters(popup, {}, where);
    }
    std::set<wchar_t> letters;
    for (const std::wstring& each : others)
        EXPECT_TRUE(letters.insert(kx::host::MnemonicOf(each)).second) << where << ": " << Narrow(each);
    EXPECT_FALSE(letters.contains(0)) << where;
}

TEST_F(HostKeys, LettersAreThereOnceInEveryLanguage) {
    for (const int language : {LANG_ENGLISH, LANG_GERMAN, LANG_FRENCH, LANG_SPANISH, LANG_JAPANESE}) {
        Do(MainWindow::cmdLanguage + language);
        std::vector<std::wstring> texts;
        for (std::size_t i = 0; i < window.Pages().size(); ++i)
            texts.push_back(TextOf(GetDlgItem(window.Handle(), MainWindow::cmdPage + static_cast<int>(i))));
        texts.push_back(TextOf(GetDlgItem(window.Handle(), MainWindow::cmdLightOff)));
        ExpectLetters(GetMenu(window.Handle()), texts, "language " + std::to_string(language));
    }
    Do(MainWindow::cmdLanguage + LANG_ENGLISH);
}

}  // namespace
