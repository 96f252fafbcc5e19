// The host's window: what a user has set, selected, scrolled and half typed on every page is there after all that
// changes how the pages look.
#include <bench/bench.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>

#include <host/event_log.h>
#include <host/main_window.h>
#include <host/resources/resource.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/framework/ui_parts.h>

namespace {

using namespace kx::test;

bool IsOf(HWND window, const wchar_t* name) {
    wchar_t own[80] = L"";
    GetClassNameW(window, own, 80);
    return _wcsicmp(own, name) == 0;
}

std::vector<HWND> WindowsIn(HWND top) {
    std::vector<HWND> windows;
    const auto collect = [](HWND window, LPARAM list) -> BOOL {
        if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    };
    EnumChildWindows(top, collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Of a window, as a user would tell it. What is typed over, Ctrl+Z brings back.
std::string StateOf(HWND window) {
    const auto ask = [window](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return std::to_string(SendMessageW(window, message, wParam, lParam)) + ' ';
    };
    const RECT place = RectInParent(window);
    std::string state = std::to_string(place.left) + ',' + std::to_string(place.top) + ' ' +
                        (GetFocus() == window ? "focus " : "") + Narrow(kx::ui::TextOf(window).str()) + ' ';
    for (const int bar : {SB_HORZ, SB_VERT, SB_CTL})
        if (bar != SB_CTL || IsOf(window, L"SCROLLBAR")) state += std::to_string(GetScrollPos(window, bar)) + ' ';
    if (IsOf(window, L"EDIT")) {
        const LRESULT selection = SendMessageW(window, EM_GETSEL, 0, 0);
        if (GetFocus() == window) state += std::to_string(selection);
        if (!SendMessageW(window, EM_GETMODIFY, 0, 0)) return state;
        SendMessageW(window, EM_UNDO, 0, 0);
        state += " over " + Narrow(kx::ui::TextOf(window).str());
        SendMessageW(window, EM_UNDO, 0, 0);
        SendMessageW(window, EM_SETSEL, LOWORD(selection), HIWORD(selection));
    } else if (IsOf(window, L"BUTTON")) {
        state += ask(BM_GETCHECK);
    } else if (IsOf(window, L"COMBOBOX")) {
        state += ask(CB_GETCURSEL);
    } else if (IsOf(window, L"LISTBOX")) {
        state += ask(LB_GETCURSEL) + ask(LB_GETTOPINDEX);
    } else if (IsOf(window, WC_LISTVIEWW)) {
        state += ask(LVM_GETTOPINDEX) + ask(LVM_GETCOLUMNWIDTH, 1);
        for (int i = 0; i < ListView_GetItemCount(window); ++i)
            state += ask(LVM_GETITEMSTATE, static_cast<WPARAM>(i), LVIS_SELECTED | LVIS_FOCUSED | LVIS_STATEIMAGEMASK);
    }
    return state;
}

// Sets, selects and scrolls what a window lets a user set.
void Use(HWND window) {
    const HWND parent = GetParent(window);
    const auto tell = [&](int code) {
        SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), code), reinterpret_cast<LPARAM>(window));
    };
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    if (IsOf(window, L"BUTTON")) {
        const LONG type = style & BS_TYPEMASK;
        const bool last = type == BS_AUTORADIOBUTTON && !(GetWindowLongW(window, GWL_STYLE) & WS_GROUP);
        if (type == BS_AUTOCHECKBOX || type == BS_CHECKBOX || last) SendMessageW(window, BM_CLICK, 0, 0);
    } else if (IsOf(window, L"COMBOBOX")) {
        SendMessageW(window, CB_SETCURSEL, 1, 0);
        tell(CBN_SELCHANGE);
    } else if (IsOf(window, L"SCROLLBAR")) {
        SendMessageW(parent, WM_HSCROLL, SB_PAGERIGHT, reinterpret_cast<LPARAM>(window));
    } else if (IsOf(window, L"LISTBOX")) {
        SendMessageW(window, LB_SETCURSEL, 4, 0);
        SendMessageW(window, LB_SETTOPINDEX, 2, 0);
    } else if (IsOf(window, WC_LISTVIEWW)) {
        ListView_SetItemState(window, 2, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ListView_SetItemState(window, 5, LVIS_SELECTED, LVIS_SELECTED);
        if (ListView_GetExtendedListViewStyle(window) & LVS_EX_CHECKBOXES) ListView_SetCheckState(window, 1, FALSE);
        ListView_SetColumnWidth(window, 1, 84);
        ListView_EnsureVisible(window, ListView_GetItemCount(window) - 3, FALSE);
    } else if (style & WS_VSCROLL) {
        SendMessageW(window, WM_VSCROLL, SB_LINEDOWN, 0);
    } else if (GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) {
        SendMessageW(window, WM_KEYDOWN, VK_RIGHT, 0);
    }
}

bool IsField(HWND window) {
    return IsOf(window, L"EDIT") && IsWindowEnabled(window) && !(GetWindowLongW(window, GWL_STYLE) & ES_READONLY);
}

// What a user has in hand: nothing any more, a field, a field that is half typed.
enum Hand { Left, Focused, Typed };

struct Session : testing::Test {
    Session() {
        window.Create(GetModuleHandleW(nullptr), {.zoom = 100, .width = 640, .height = 600});
        SetForegroundWindow(window.Handle());
        Pump();
    }
    ~Session() override {
        DestroyWindow(window.Handle());
        MSG quit{};
        while (PeekMessageW(&quit, nullptr, 0, 0, PM_REMOVE))
            continue;
    }
    void Do(int command) const {
        SendMessageW(window.Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        Pump();
    }
    std::vector<std::string> State() const {
        std::vector<std::string> state{StateOf(window.CurrentPage())};
        for (const HWND each : WindowsIn(window.CurrentPage()))
            state.push_back(std::to_string(GetDlgCtrlID(each)) + ": " + StateOf(each));
        return state;
    }
    HWND FirstField() const {
        const auto windows = WindowsIn(window.CurrentPage());
        const auto first = std::find_if(windows.begin(), windows.end(), IsField);
        return first == windows.end() ? nullptr : *first;
    }
    void Scale(WPARAM dpi) const {
        SendMessageW(window.Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
        Pump();
    }

    HostMicroscope microscope{L""};
    MainWindow window{microscope};
};

TEST_F(Session, NothingIsLostThatIsSetSelectedScrolledOrHalfTyped) {
    const int pages = static_cast<int>(window.Pages().size());
    for (int page = 0; page < pages; ++page) {
        const int here = MainWindow::cmdPage + page, there = MainWindow::cmdPage + (page + 1) % pages;
        // By a command the page is turned under the user's hands; who clicks its button has left the field before.
        const std::tuple<const char*, Hand, std::vector<int>> changes[] = {
            {"turned", Focused, {there, here}},
            {"made anew later",
             Left,
             {there, MainWindow::cmdLanguage + LANG_JAPANESE, MainWindow::cmdLanguage + LANG_ENGLISH, here}},
            {"language", Typed, {MainWindow::cmdLanguage + LANG_GERMAN, MainWindow::cmdLanguage + LANG_ENGLISH}},
            {"scheme", Typed, {MainWindow::cmdScheme + eKxColorScheme_Dark, MainWindow::cmdScheme}},
            {"zoom", Typed, {MainWindow::cmdZoom + 6, MainWindow::cmdZoom + 4}},
            {"scale", Typed, {-144, -96}}};
        Do(here);
        for (const HWND each : WindowsIn(window.CurrentPage()))
            Use(each);
        SendMessageW(window.CurrentPage(), WM_VSCROLL, SB_LINEDOWN, 0);
        Pump();
        for (const auto& [what, field, commands] : changes) {
            SetFocus(GetDlgItem(window.Handle(), here));
            for (const HWND each : WindowsIn(window.CurrentPage())) {
                if (field != Typed || !IsField(each)) continue;
                SendMessageW(each, EM_SETSEL, 0, -1);
                SendMessageW(each, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"12"));
            }
            if (const HWND first = FirstField(); first && field != Left) {
                SetFocus(first);
                if (field == Typed) SendMessageW(first, EM_SETSEL, 1, 2);
            }
            const auto before = State();
            Log().Clear();
            for (const int command : commands)
                command < 0 ? Scale(static_cast<WPARAM>(-command)) : Do(command);
            // Only a field that is left asks.
            for (const std::wstring& line : Log().Lines()) {
                const bool asks = line.find(L"Changed(") != line.npos || line.find(L"Request(") != line.npos;
                EXPECT_FALSE(asks && field == Typed) << what << ": " << Narrow(line);
            }
            const auto after = State();
            ASSERT_EQ(after.size(), before.size());
            for (std::size_t i = 0; i < before.size(); ++i)
                EXPECT_EQ(after[i], before[i]) << what << ", page " << page;
        }
    }
}

}  // namespace
