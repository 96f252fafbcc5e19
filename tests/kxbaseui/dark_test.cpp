// In our own schemes the platform's windows are in the scheme's colours, also where it has none to set: menus, lists
// that drop down, tooltips, edges. And which scheme the system asks for.
#include <bench/bench.h>
#include <oleacc.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_menu.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_tooltip.h>

namespace {

using namespace kx::test;

// What Wine draws in the system's colours whatever it is asked, beside scroll bars of windows: title, with a line
// below, and frame.
Picture WithoutFrame(const Picture& picture) {
    const int title = GetSystemMetrics(SM_CYCAPTION), edge = GetSystemMetrics(SM_CXSIZEFRAME);
    return picture.Part({edge, edge + title + 1, picture.Width() - edge, picture.Height() - edge});
}

void ExpectDark(const Picture& picture, const std::string& name) {
    const bool isHighContrast = KX_GetColorScheme() == eKxColorScheme_HighContrast;
    picture.Save(name + (isHighContrast ? " high contrast" : " dark"));
    EXPECT_EQ(picture.WhereLight(isHighContrast), "") << name;
}

HWND OpenMenu() { return FindWindowW(MAKEINTRESOURCEW(32768), nullptr); }

// Looks at what a modal loop shows, as soon as it does, and ends the loop.
struct WhileOpen {
    explicit WhileOpen(std::function<bool()> look) {
        s_look = std::move(look);
        SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR timer, DWORD) {
            if (!s_look()) return;
            KillTimer(nullptr, timer);
            EndMenu();
        });
    }

    static inline std::function<bool()> s_look;
};

struct DarkWindows : testing::TestWithParam<EKxColorScheme> {
    DarkWindows() {
        KX_SetColorScheme(GetParam());
        m_parent->Answer(WM_ERASEBKGND, [this](WPARAM dc, LPARAM) {
            RECT client{};
            GetClientRect(Window(), &client);
            return FillRect(reinterpret_cast<HDC>(dc), &client, KX_GetSysColorBrush(COLOR_BTNFACE));
        });
    }
    ~DarkWindows() override {
        CKxGUILayoutManager::SetGuiZoom(1.0);
        KX_SetColorScheme(eKxColorScheme_System);
    }
    HWND Window() const { return m_parent->Window(); }
    HWND Add(const wchar_t* name, const RECT& place, DWORD style = 0) {
        return AddChild(Window(), name, 0, place, style, L"Text");
    }

    std::unique_ptr<RecordingParent> m_parent = std::make_unique<RecordingParent>(SIZE{400, 320});
};

// Under a mouse or at a key the platform's drop-down draws what it shows then, without waiting.
LRESULT CALLBACK DrawAtOnce(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if ((message >= WM_MOUSEFIRST && message <= WM_MOUSELEAVE) || (message >= WM_KEYFIRST && message <= WM_KEYLAST)) {
        RECT client{};
        GetClientRect(window, &client);
        const HDC dc = GetDC(window);
        FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        ReleaseDC(window, dc);
    }
    return result;
}

TEST_P(DarkWindows, StayDarkWhereThePlatformDrawsAtOnce) {
    const HWND combo = Add(WC_COMBOBOXW, {10, 10, 130, 200}, CBS_DROPDOWNLIST);
    SetWindowSubclass(combo, DrawAtOnce, 1, 0);
    KX_FollowColorScheme(Window());
    for (const UINT message : std::initializer_list<UINT>{WM_MOUSEMOVE, WM_MOUSELEAVE, WM_MOUSEWHEEL, WM_RBUTTONDOWN,
                                                          WM_LBUTTONUP, WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_MOUSEMOVE}) {
        SendMessageW(combo, message, 0, 0);
        ExpectDark(Picture::OnScreen(combo), "closed list after " + std::to_string(message));
    }
}

// Wine hides nothing by itself, and its DrawText underlines the letter whatever it is asked.
UINT s_format = 0;
int WINAPI DrawAndTell(HDC dc, LPCWSTR text, int length, LPRECT rect, UINT format) {
    if (!(format & DT_CALCRECT)) s_format = format;
    return DrawTextW(dc, text, length, rect, format);
}

TEST_P(DarkWindows, UnderlineNoLetterBeforeAKey) {
    const Import drawn(L"kxbaseui.dll", &DrawTextW, &DrawAndTell);
    const auto answer = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) -> LRESULT {
        return message == WM_QUERYUISTATE ? UISF_HIDEACCEL : DefSubclassProc(window, message, wParam, lParam);
    };
    for (const long kind : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_GROUPBOX}) {
        const HWND button = Add(L"BUTTON", {10, 10, 100, 40}, static_cast<DWORD>(kind));
        KX_FollowColorScheme(Window());
        Pump();
        EXPECT_EQ(s_format & (DT_NOPREFIX | DT_HIDEPREFIX), 0u) << kind;
        SetWindowSubclass(button, answer, 1, 0);
        SendMessageW(button, WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEACCEL), 0);
        EXPECT_EQ(s_format & (DT_NOPREFIX | DT_HIDEPREFIX), UINT{DT_HIDEPREFIX}) << kind;
        DestroyWindow(button);
    }
}

TEST_P(DarkWindows, HaveDarkMenus) {
    const HMENU bar = CreateMenu(), popup = CreatePopupMenu(), below = CreatePopupMenu();
    AppendMenuW(popup, MF_STRING | MF_CHECKED, 1, L"&Checked\tCtrl+C");
    AppendMenuW(popup, MF_STRING | MF_GRAYED, 2, L"Grayed");
    AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(popup, MF_POPUP, reinterpret_cast<UINT_PTR>(below), L"Below");
    AppendMenuW(below, MF_STRING, 3, L"Deep");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), L"&File");
    AppendMenuW(bar, MF_STRING, 4, L"Edit");
    KX_FollowColorScheme(Window());
    SetMenu(Window(), bar);
    int width = 0;
    for (const double zoom : {1.0, 1.5}) {
        CKxGUILayoutManager::SetGuiZoom(zoom);
        Pump();
        ExpectDark(WithoutFrame(Picture::OnScreen(Window(), true)), zoom > 1 ? "menu bar 150" : "menu bar");
        // By its letter, which the platform asks for where it does not draw.
        const WhileOpen open([&] {
            const HWND menu = OpenMenu();
            if (!IsWindowVisible(menu)) return false;
            const Picture picture = Picture::OnScreen(menu, true);
            ExpectDark(picture, zoom > 1 ? "menu 150" : "menu");
            EXPECT_GT(picture.Width(), width) << "it is measured anew";
            width = picture.Width();
            return true;
        });
        SendMessageW(Window(), WM_SYSCOMMAND, SC_KEYMENU, L'f');
        EXPECT_EQ(width > 0, true);
    }
    // As it was, for who asks for it, and in the system's own scheme.
    KX_SetColorScheme(eKxColorScheme_System);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info, info.fMask = MIIM_FTYPE | MIIM_DATA;
    wchar_t text[32] = L"";
    GetMenuItemInfoW(popup, 0, TRUE, &info);
    GetMenuStringW(popup, 0, text, 32, MF_BYPOSITION);
    EXPECT_TRUE(info.fType == MFT_STRING && info.dwItemData == 0);
    EXPECT_STREQ(text, L"&Checked\tCtrl+C");
}

TEST_P(DarkWindows, OpenDarkMenusListsAndTips) {
    CKxMenu menu;
    menu.AppendMenuItem(1, L"Command");
    menu.AppendMenuItem(0, nullptr);
    menu.AppendMenuItem(2, L"Another", false);
    // The window that shows it draws what has an image; screen readers look for the name at the head of the data.
    menu.AppendMenuItem(L"NAME", L"Pictured", nullptr);
    std::wstring name;
    m_parent->Answer(WM_MEASUREITEM, [&](WPARAM, LPARAM item) {
        return menu.MeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(item));
    });
    m_parent->Answer(WM_DRAWITEM, [&](WPARAM, LPARAM item) {
        const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(item);
        name = reinterpret_cast<const MSAAMENUINFO*>(draw.itemData)->pszWText;
        return menu.DrawItem(draw);
    });
    bool looked = false;
    const WhileOpen open([&] {
        if (!IsWindowVisible(OpenMenu())) return false;
        ExpectDark(Picture::OnScreen(OpenMenu(), true), "context menu");
        return looked = true;
    });
    EXPECT_EQ(menu.TrackContextMenu(eKxMenuTrack_ReturnCommand, 60, 60, Window()), 0);
    EXPECT_TRUE(looked);
    EXPECT_EQ(name, L"Pictured");

    const HWND combo = Add(WC_COMBOBOXW, {10, 10, 130, 200}, CBS_DROPDOWNLIST);
    for (const wchar_t* text : {L"One", L"Two", L"Three"})
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    KX_FollowColorScheme(Window());
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    ASSERT_TRUE(PumpUntil([&] { return IsWindowVisible(info.hwndList) != FALSE; }));
    ExpectDark(Picture::OnScreen(info.hwndList, true), "list");
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);

    const HWND button = Add(L"BUTTON", {10, 60, 130, 84});
    const HWND tip = KX_CreateToolTipWindow(button, L"What it is for");
    SendMessageW(tip, TTM_SETDELAYTIME, TTDT_INITIAL, 1);
    MoveTo(button, 5, 5);
    MoveTo(button, 9, 9);
    ASSERT_TRUE(PumpUntil([&] { return IsWindowVisible(tip) != FALSE; }));
    const Picture picture = Picture::OnScreen(tip, true);
    ExpectDark(picture, "tip");
    EXPECT_GT(picture.Count(KX_GetSysColor(COLOR_INFOBK)), 100);
}

// What the platform's controls bring with them: the editor of a label, tooltips.
TEST_P(DarkWindows, BringDarkWindows) {
    const HWND list = Add(WC_LISTVIEWW, {10, 50, 190, 140}, LVS_LIST | LVS_EDITLABELS);
    EXPECT_TRUE(NoGrowth(3, [&] {
        const HWND other = Add(WC_LISTVIEWW, {});
        KX_FollowColorScheme(other);
        DestroyWindow(other);
    }));
    // Here it shows no tooltip, and has none unless it is given one.
    SendMessageW(list, LVM_SETTOOLTIPS,
                 reinterpret_cast<WPARAM>(
                     CreateWindowW(TOOLTIPS_CLASSW, L"", WS_POPUP, 0, 0, 0, 0, Window(), nullptr, nullptr, nullptr)),
                 0);
    const std::pair<HWND, UINT> owners[] = {{list, LVM_GETTOOLTIPS},
                                            {Add(WC_TABCONTROLW, {}, TCS_TOOLTIPS), TCM_GETTOOLTIPS},
                                            {Add(TRACKBAR_CLASSW, {}, TBS_TOOLTIPS), TBM_GETTOOLTIPS}};
    KX_FollowColorScheme(Window());
    for (const auto& [owner, get] : owners) {
        const HWND tip = reinterpret_cast<HWND>(SendMessageW(owner, get, 0, 0));
        NMHDR shown{tip, 0, TTN_SHOW};
        SendMessageW(owner, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&shown));
        EXPECT_EQ(static_cast<COLORREF>(SendMessageW(tip, TTM_GETTIPBKCOLOR, 0, 0)), KX_GetSysColor(COLOR_INFOBK))
            << get;
    }

    LVITEMW item{};
    item.mask = LVIF_TEXT, item.pszText = const_cast<wchar_t*>(L"A long label");
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SetFocus(list);
    SendMessageW(list, LVM_EDITLABELW, 0, 0);
    const HWND editor = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETEDITCONTROL, 0, 0));
    SendMessageW(editor, EM_SETSEL, 0, 0);
    Pump();
    ExpectDark(Picture::OnScreen(editor), "editor");
}

INSTANTIATE_TEST_SUITE_P(Schemes, DarkWindows, testing::Values(eKxColorScheme_Dark, eKxColorScheme_HighContrast));

// ---- What the system asks for --------------------------------------------------------------------------------------

TEST(SystemScheme, IsFollowedUntilOneIsChosen) {
    for (const bool light : {false, true})
        EXPECT_EQ(KX_SchemeForSettings({true, light}), eKxColorScheme_HighContrast);
    constexpr const wchar_t* key = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    const auto set = [&](DWORD light, HWND window) {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
        SendMessageW(window, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
        return KX_GetColorScheme();
    };
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"AppsUseLightTheme");
    RecordingParent parent({200, 100});
    KX_FollowColorScheme(parent.Window());
    KX_FollowSystemColorScheme();
    EXPECT_EQ(KX_GetColorScheme(), eKxColorScheme_Light) << "where nothing is set";
    EXPECT_EQ(set(0, parent.Window()), eKxColorScheme_Dark);
    EXPECT_EQ(set(1, parent.Window()), eKxColorScheme_Light);
    KX_SetColorScheme(eKxColorScheme_Light);
    EXPECT_EQ(set(0, parent.Window()), eKxColorScheme_Light) << "the user has chosen";
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"AppsUseLightTheme");
    KX_SetColorScheme(eKxColorScheme_System);
}

}  // namespace
