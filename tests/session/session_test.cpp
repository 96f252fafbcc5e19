// The host's window: what a user has set, selected, scrolled and half typed on every page is there after all that
// changes how the pages look.
#include <bench/bench.h>
#include <bench/modal_answer.h>

#include <commctrl.h>

#include <cwchar>

#include "host_window.h"
#include <host/event_log.h>
#include <host/pages/light_page.h>
#include <host/pages/optics_page.h>
#include <host/pages/stand_page.h>
#include <host/resources/resource.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxdevui/setup/setup_ids.h>

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
    const std::pair<const wchar_t*, std::vector<UINT>> asked[] = {{L"BUTTON", {BM_GETCHECK}},
                                                                  {L"COMBOBOX", {CB_GETCURSEL}},
                                                                  {L"SCROLLBAR", {SBM_GETPOS}},
                                                                  {L"LISTBOX", {LB_GETCURSEL, LB_GETTOPINDEX}},
                                                                  {WC_LISTVIEWW, {LVM_GETTOPINDEX}}};
    const bool hasFocus = GetFocus() == window;
    std::string state = PlaceOf(window) + (hasFocus ? " focus " : " ") + Narrow(TextOf(window)) + ' ';
    const auto add = [&](LRESULT value) { state += std::to_string(value) + ' '; };
    const auto ask = [&](UINT message, int item, LPARAM lParam) {
        add(SendMessageW(window, message, static_cast<WPARAM>(item), lParam));
    };
    add(GetScrollPos(window, SB_HORZ)), add(GetScrollPos(window, SB_VERT));
    for (const auto& [name, messages] : asked)
        for (const UINT message : messages)
            if (IsOf(window, name)) ask(message, 0, 0);
    if (IsOf(window, WC_LISTVIEWW)) {
        ask(LVM_GETCOLUMNWIDTH, 1, 0);
        for (int i = 0; i < ListView_GetItemCount(window); ++i)
            ask(LVM_GETITEMSTATE, i, LVIS_SELECTED | LVIS_FOCUSED | LVIS_STATEIMAGEMASK);
    }
    if (!IsOf(window, L"EDIT")) return state;
    const LRESULT selection = SendMessageW(window, EM_GETSEL, 0, 0);
    if (hasFocus) add(selection);
    if (!SendMessageW(window, EM_GETMODIFY, 0, 0)) return state;
    SendMessageW(window, EM_UNDO, 0, 0);
    state += " over " + Narrow(TextOf(window));
    SendMessageW(window, EM_UNDO, 0, 0);
    SendMessageW(window, EM_SETSEL, LOWORD(selection), HIWORD(selection));
    return state;
}

// Sets, selects and scrolls what a window lets a user set.
void Use(HWND window) {
    const HWND parent = GetParent(window);
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    if (IsOf(window, L"BUTTON")) {
        const LONG type = style & BS_TYPEMASK;
        const bool last = type == BS_AUTORADIOBUTTON && !(style & WS_GROUP);
        if (type == BS_AUTOCHECKBOX || type == BS_CHECKBOX || last) SendMessageW(window, BM_CLICK, 0, 0);
    } else if (IsOf(window, L"COMBOBOX")) {
        SendMessageW(window, CB_SETCURSEL, 1, 0);
        SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), CBN_SELCHANGE), LPARAM(window));
    } else if (IsOf(window, L"SCROLLBAR")) {
        SendMessageW(parent, style & SBS_VERT ? WM_VSCROLL : WM_HSCROLL, SB_PAGERIGHT,
                     reinterpret_cast<LPARAM>(window));
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
    } else if (style & WS_TABSTOP) {
        SendMessageW(window, WM_KEYDOWN, VK_RIGHT, 0);
    }
}

bool IsField(HWND window) {
    return IsOf(window, L"EDIT") && IsWindowEnabled(window) && !(GetWindowLongW(window, GWL_STYLE) & ES_READONLY);
}

// What a user has in hand: nothing any more, a field, a field that is half typed.
enum Hand { Left, Focused, Typed };

struct Session : HostWindow {
    Session() : HostWindow({640, 600}) {}
    std::vector<std::string> State() const {
        std::vector<std::string> state{StateOf(window.CurrentPage())};
        for (const HWND each : WindowsIn(window.CurrentPage()))
            state.push_back(std::to_string(GetDlgCtrlID(each)) + ": " + StateOf(each));
        return state;
    }
    // What moves would come to rest amid the changes.
    bool IsAtRest() {
        for (CKxSimMicroscope* const each : window.Microscopes())
            for (CKxSimDevice* const device : each->Devices())
                if (device->SetSpeed(0), device->Device().GetDeviceState() == eKxDeviceState_Moving) return false;
        return true;
    }
    void UseAndTakeBack();
    void Scale(WPARAM dpi) const {
        SendMessageW(window.Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
        Pump();
    }
};

// Where lists and buttons have told the host something, it is all taken back.
void Session::UseAndTakeBack() {
    Do(window.CommandOf<LightPage>());
    const auto state = [this] {
        SetFocus(window.Handle());
        return State();
    };
    const auto before = state();
    for (const HWND each : WindowsIn(window.CurrentPage())) {
        const HWND control = GetParent(each);
        const bool isList = IsOf(control, L"KxDevUI_ComboBox") || IsOf(control, L"KxDevUI_ListBox");
        const bool isButton = IsOf(control, L"KxDevUI_ImageButton") || IsOf(control, L"KxDevUI_CheckBox");
        if (isList) SendMessageW(each, WM_KEYDOWN, VK_UP, 0);
        if (isButton && TextOf(each) != L"The host refuses") SendMessageW(each, BM_CLICK, 0, 0);
    }
    int changes = 0;
    for (; !TheRequests().NameToUndo().empty(); ++changes)
        Do(MainWindow::cmdUndo);
    EXPECT_EQ(changes, 7) << "four lists, the opening, the centring, the following";
    EXPECT_EQ(state(), before);
}

TEST_F(Session, NothingIsLostThatIsSetSelectedScrolledOrHalfTyped) {
    // The process has one window: first of all, while everything is as at first.
    UseAndTakeBack();
    const int pages = static_cast<int>(window.Pages().size());
    for (int page = 0; page < pages; ++page) {
        const int here = MainWindow::cmdPage + page, there = MainWindow::cmdPage + (page + 1) % pages;
        using W = MainWindow;
        // By a command the page is turned under the user's hands; who clicks its button has left the field before.
        const std::tuple<const char*, Hand, std::vector<int>> changes[] = {
            {"turned", Focused, {there, here}},
            {"made anew later", Left, {there, W::cmdLanguage + LANG_JAPANESE, W::cmdLanguage + LANG_ENGLISH, here}},
            {"language", Typed, {W::cmdLanguage + LANG_GERMAN, W::cmdLanguage + LANG_ENGLISH}},
            {"scheme", Typed, {W::cmdScheme + eKxColorScheme_Dark, W::cmdScheme}},
            {"zoom", Typed, {W::cmdZoom + 6, W::cmdZoom + 4}},
            {"scale", Typed, {-144, -96}}};
        Do(here);
        for (const HWND each : WindowsIn(window.CurrentPage()))
            Use(each);
        SendMessageW(window.CurrentPage(), WM_VSCROLL, SB_LINEDOWN, 0);
        EXPECT_TRUE(PumpUntil([this] { return IsAtRest(); }));
        for (const auto& [what, field, commands] : changes) {
            SetFocus(GetDlgItem(window.Handle(), here));
            HWND first = nullptr;
            for (const HWND each : WindowsIn(window.CurrentPage())) {
                if (field == Left || !IsField(each)) continue;
                if (!first) first = each;
                if (field != Typed) continue;
                SendMessageW(each, EM_SETSEL, 0, -1);
                SendMessageW(each, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"12"));
            }
            if (first) SetFocus(first);
            if (first && field == Typed) SendMessageW(first, EM_SETSEL, 1, 2);
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

// By an arrow, by its fields, back to a mark also in another language; each way is one step to undo.
TEST_F(Session, TheStageGoesWhereItIsSent) {
    Do(window.CommandOf<StandPage>());
    const auto part = [this](int id, const wchar_t* inside) {
        const HWND control = GetDlgItem(window.PageOf<StandPage>().Stage(), id);
        const HWND list = FindWindowExW(control, nullptr, L"ComboBox", nullptr);
        const HWND found = FindWindowExW(list ? list : control, nullptr, inside, nullptr);
        SetFocus(found ? found : list);
        return found;
    };
    const auto enter = [&](int id, std::wstring text) {
        SendMessageW(part(id, L"Edit"), EM_SETSEL, 0, -1);
        Type(text + L"\n");
    };
    const auto undo = [this] { Do(MainWindow::cmdUndo); };
    // What the user's hands do is told by the loop, which is not run here.
    const auto press = [] { TheRequests().Note({nullptr, WM_LBUTTONDOWN, 0, 0, 0, {}}); };
    Play({{[&] { press(), SendMessageW(part(IDC_STAGE_RIGHT, L"Button"), BM_CLICK, 0, 0); }, "(10, 0)"},
          {[&] { enter(IDC_STAGE_MARKS, L"Corner"), press(), enter(IDC_STAGE_Y, L"-35000.5"); }, "(10, 0)"},
          {[&] { press(), enter(IDC_STAGE_Y, L"2.25"), press(), enter(IDC_STAGE_X, L"-7"); }, "(-7, 2.25)"},
          {[&] { press(), Do(MainWindow::cmdLanguage + LANG_FRENCH), enter(IDC_STAGE_MARKS, L"Corner"); }, "(10, 0)"},
          {undo, "(-7, 2.25)"},
          {undo, "(10, 2.25)"},
          {undo, "(10, 0)"},
          {undo, "(0, 0)"}},
         [] { return CallText("", Held().stage.x.to, Held().stage.y.to); });
    Do(MainWindow::cmdLanguage + LANG_ENGLISH);
}

TEST_F(Session, ASetupThatTheHostAcceptsIsOnItsDevicesAndPanels) {
    Do(window.CommandOf<OpticsPage>());
    CKxDevUI_Nosepiece& panel = window.PageOf<OpticsPage>().Nosepiece().Panel();
    KX_SetMessageBoxHandler([](HWND, const wchar_t*, const wchar_t*, UINT, int, void*) { return IDOK; }, nullptr);
    // Another one behind, and none in the light.
    for (const auto& [row, key, name, expected] :
         {std::tuple{2, VK_END, L"Apo TIRF 100x/1.49 Oil", L"100x"}, {0, VK_HOME, L"Plan Apo 4x/0.20", L"4x"}}) {
        const ModalAnswer answer([row = row, key = key](HWND dialog) {
            ShowWindow(dialog, SW_SHOW);
            ListView_SetItemState(GetWindow(GetDlgItem(dialog, IDC_SETUP_TABLE), GW_CHILD), row, LVIS_SELECTED,
                                  LVIS_SELECTED);
            SendMessageW(GetWindow(GetDlgItem(dialog, IDC_SETUP_LIST), GW_CHILD), WM_KEYDOWN, WPARAM(key), 0);
            for (const int button : {IDOK, IDCANCEL})
                if (IsWindowVisible(dialog)) PressButton(dialog, button);
        });
        SendMessageW(panel, WM_COMMAND, 10500, 0);
        EXPECT_EQ(panel.GetName(row).str(), name);
        EXPECT_EQ(panel.GetMagnification(row).str(), expected);
    }
    // In one step there and back.
    EXPECT_EQ(TheRequests().NameToUndo(), L"Objectives 3: Plan Apo 20x/0.75 → Apo TIRF 100x/1.49 Oil");
    for (const auto& [command, expected] : {std::pair(MainWindow::cmdUndo, L"20x"), {MainWindow::cmdRedo, L"100x"}}) {
        Do(command);
        EXPECT_EQ(panel.GetMagnification(2).str(), expected);
    }
    KX_SetMessageBoxHandler(nullptr, nullptr);
}

}  // namespace
