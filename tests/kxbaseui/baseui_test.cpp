// Fonts, colours, message boxes, alignment, tooltips, the zoom's rules.
#include <bench/bench.h>
#include <commctrl.h>
#include <kxbaseui/kx_colors.h>
#include <kxbaseui/kx_fonts.h>
#include <kxbaseui/kx_layoutmanager.h>
#include <kxbaseui/kx_messagebox.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_tooltip.h>
#include <kxbaseui/kx_uihelper.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kx::test;

using Manager = CKxGUILayoutManager;

HWND AddChild(HWND parent, const wchar_t* windowClass, const RECT& place, DWORD style = 0) {
    return CreateWindowExW(0, windowClass, L"text", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr, nullptr, nullptr);
}

RECT Place(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(HWND_DESKTOP, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

// ---- Fonts ---------------------------------------------------------------------------------------------------------

LOGFONTW Describe(HFONT font) {
    LOGFONTW description{};
    GetObjectW(font, sizeof description, &description);
    return description;
}

TEST(Fonts, AreMadeOnceAndScale) {
    EXPECT_EQ(KX_GetDefaultGuiFont(), KX_GetDefaultGuiFontZoom(1.0));
    EXPECT_EQ(Describe(KX_GetDefaultGuiFontZoom(2.0)).lfHeight, -21);
    EXPECT_EQ(Describe(KX_GetDefaultGuiFontBold()).lfWeight, FW_BOLD);
    EXPECT_EQ(KX_GetDefaultGuiFontZoom(std::nan("")), KX_GetDefaultGuiFont());
    EXPECT_EQ(KX_GetDefaultGuiFontZoom(1000.0), KX_GetDefaultGuiFontZoom(Manager::MaximumZoom));

    // There and back is the very same font, for a stranger's too.
    const HFONT bold = KX_GetDefaultGuiFontBold();
    EXPECT_EQ(KX_GetFontAtZoom(KX_GetFontAtZoom(bold, 1.0, 1.5), 1.5, 1.0), bold);
    const HFONT stranger = CreateFontW(-15, 0, 0, 0, 400, TRUE, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    const HFONT larger = KX_GetFontAtZoom(stranger, 1.0, 2.0);
    EXPECT_EQ(Describe(larger).lfHeight, -30);
    EXPECT_TRUE(Describe(larger).lfItalic);
    EXPECT_EQ(Describe(KX_GetFontAtZoom(larger, 2.0, 1.0)).lfHeight, -15);
    DeleteObject(stranger);
    EXPECT_EQ(KX_GetFontAtZoom(nullptr, 1.0, 2.0), nullptr);
}

// ---- Colours -------------------------------------------------------------------------------------------------------

COLORREF BrushColor(HBRUSH brush) {
    LOGBRUSH description{};
    GetObjectW(brush, sizeof description, &description);
    return description.lbColor;
}

TEST(Colors, FollowTheSchemeAndKeepTextLegible) {
    const auto luminance = [](COLORREF color) {
        const auto linear = [](int level) {
            const double part = level / 255.0;
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
               0.0722 * linear(GetBValue(color));
    };
    const auto contrast = [&](int text, int back) {
        const double a = luminance(KX_GetSysColor(text)), b = luminance(KX_GetSysColor(back));
        return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
    };
    for (const auto scheme : {eKxColorScheme_Light, eKxColorScheme_Dark, eKxColorScheme_HighContrast}) {
        KX_SetColorScheme(scheme);
        EXPECT_GE(contrast(COLOR_BTNTEXT, COLOR_BTNFACE), 7.0) << scheme;
        EXPECT_GE(contrast(COLOR_WINDOWTEXT, COLOR_WINDOW), 7.0) << scheme;
        EXPECT_GE(contrast(COLOR_HIGHLIGHTTEXT, COLOR_HIGHLIGHT), 4.5) << scheme;
        EXPECT_GE(contrast(COLOR_GRAYTEXT, COLOR_BTNFACE), 3.0) << scheme;
        for (int index = 0; index <= COLOR_MENUBAR; ++index) {
            EXPECT_EQ(BrushColor(KX_GetSysColorBrush(index)), KX_GetSysColor(index)) << scheme << " " << index;
        }
    }
    KX_SetColorScheme(static_cast<EKxColorScheme>(9));
    EXPECT_EQ(KX_GetColorScheme(), eKxColorScheme_HighContrast);
    KX_SetColorScheme(eKxColorScheme_System);
    EXPECT_EQ(KX_GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(KX_GetSysColor(-1), 0u);
    EXPECT_EQ(KX_GetSysColorBrush(99), GetStockObject(NULL_BRUSH));
}

TEST(Colors, TellTheWindowsOnceForAChange) {
    RecordingParent parent;
    parent.Watch({WM_SYSCOLORCHANGE});
    KX_SetColorScheme(eKxColorScheme_Dark);
    KX_SetColorScheme(eKxColorScheme_Dark);
    EXPECT_TRUE(parent.Record().Matches({Msg(WM_SYSCOLORCHANGE)}));
    KX_SetColorScheme(eKxColorScheme_System);
}

TEST(Colors, ReachThePlatformsControls) {
    RecordingParent parent;
    const HWND group = AddChild(parent.Window(), L"BUTTON", {0, 0, 200, 100}, BS_GROUPBOX);
    const HWND check = AddChild(parent.Window(), L"BUTTON", {10, 30, 150, 50}, BS_AUTOCHECKBOX);
    KX_FollowColorScheme(parent.Window());
    KX_FollowColorScheme(parent.Window());
    KX_FollowColorScheme(nullptr);
    KX_SetColorScheme(eKxColorScheme_Dark);
    Pump();
    const COLORREF face = KX_GetSysColor(COLOR_BTNFACE);
    EXPECT_EQ(Picture::OnScreen(check).Pixel(138, 3), face);
    const int before = Picture::OnScreen(check).Count(KX_GetSysColor(COLOR_WINDOWTEXT));
    Click(check, 5, 10);
    EXPECT_EQ(SendMessageW(check, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_GT(Picture::OnScreen(check).Count(KX_GetSysColor(COLOR_WINDOWTEXT)), before + 5) << "the mark shows";
    EXPECT_GT(Picture::OnScreen(group).Count(KX_GetSysColor(COLOR_BTNSHADOW)), 100);
    KX_SetColorScheme(eKxColorScheme_System);
    Pump();
    EXPECT_EQ(Picture::OnScreen(check).Pixel(138, 3), GetSysColor(COLOR_BTNFACE));
}

// ---- Boxes, places, tips -------------------------------------------------------------------------------------------

TEST(Boxes, GoesToTheHandlerOrThePlatform) {
    std::wstring got;
    const auto handler = [](HWND, const wchar_t* text, const wchar_t* caption, UINT, int timeout, void* to) {
        *static_cast<std::wstring*>(to) = std::wstring(text) + L"|" + caption + L"|" + std::to_wstring(timeout);
        return IDYES;
    };
    KX_SetMessageBoxHandler(handler, &got);
    EXPECT_EQ(KX_MessageBox_(nullptr, L"text", nullptr, MB_YESNO, -1), IDYES);
    EXPECT_EQ(got, L"text||-1");
    const auto throwing = [](HWND, const wchar_t*, const wchar_t*, UINT, int, void*) -> int {
        throw std::runtime_error("no");
    };
    KX_SetMessageBoxHandler(throwing, nullptr);
    EXPECT_EQ(KX_MessageBox(nullptr, nullptr, nullptr, MB_OK, 5), IDCANCEL);
    KX_SetMessageBoxHandler(nullptr, nullptr);

    ModalAnswer answer(IDNO);
    EXPECT_EQ(KX_MessageBox(nullptr, L"Really?", L"Question", MB_YESNO, -1), IDNO);
    ASSERT_EQ(answer.Count(), 1);
    EXPECT_EQ(answer.Dialogs()[0].title, L"Question");
}

TEST(Align, CentresAndKeepsInside) {
    RecordingParent parent({400, 300});
    const HWND anchor = AddChild(parent.Window(), L"STATIC", {100, 100, 200, 200});
    const HWND child = AddChild(parent.Window(), L"STATIC", {0, 0, 20, 40});
    EXPECT_TRUE(CKxUIHelper::AlignWnd(child, anchor, eKxAlign_CenterAnchor, true, nullptr));
    EXPECT_EQ(Place(child).left, 140);
    EXPECT_EQ(Place(child).top, 130);
    EXPECT_TRUE(CKxUIHelper::AlignWnd(child, nullptr, eKxAlign_CenterOwner, false, nullptr));
    SetWindowPos(child, nullptr, 0, 0, 4000, 4000, SWP_NOMOVE);
    EXPECT_TRUE(CKxUIHelper::AlignWnd(child, anchor, eKxAlign_CenterAnchor, true, nullptr));
    EXPECT_EQ(Place(child).left, 0) << "the top-left corner is the part worth seeing";
    EXPECT_FALSE(CKxUIHelper::AlignWnd(child, anchor, 77, true, nullptr));
    EXPECT_FALSE(CKxUIHelper::AlignWnd(nullptr, anchor, eKxAlign_CenterAnchor, true, nullptr));
}

TEST(ToolTips, ShareOneWindowOfTheParent) {
    RecordingParent parent;
    const HWND a = AddChild(parent.Window(), L"BUTTON", {0, 0, 20, 20});
    const HWND b = AddChild(parent.Window(), L"BUTTON", {30, 0, 50, 20});
    EXPECT_EQ(KX_CreateToolTipWindow(a, nullptr), nullptr) << "nothing to show, nothing to make";
    const HWND tip = KX_CreateToolTipWindow(a, L"one");
    ASSERT_TRUE(tip);
    EXPECT_EQ(KX_CreateToolTipWindow(b, L"two"), tip);
    KX_UpdateToolTipWindow(a, L"three");
    EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 2);
    KX_DeleteToolTip(b);
    EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 1);
    EXPECT_EQ(KX_CreateToolTipWindow(nullptr, L"x"), nullptr);
    KX_DeleteToolTip(nullptr);
}

// ---- The zoom ------------------------------------------------------------------------------------------------------

struct UnitZoom {
    ~UnitZoom() { Manager::SetGuiZoom(1.0); }
};

TEST(Zoom, TellsParentsBeforeChildrenAndOnlyOfChanges) {
    const UnitZoom restore;
    Recorder record;
    RecordingParent parent(record);
    parent.Watch({0x83FA});
    EXPECT_TRUE(Manager::SetGuiZoom(1.5));
    EXPECT_TRUE(Manager::SetGuiZoom(1.5));
    EXPECT_TRUE(record.Matches({Msg(0x83FA, 0, 0)}));
    EXPECT_EQ(Manager::GetPreviousGuiZoom(), 1.0);
    for (const double bad : {0.0, -2.0, 100.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_FALSE(Manager::SetGuiZoom(bad));
    }
    EXPECT_EQ(Manager::GetGuiZoom(), 1.5);
    EXPECT_EQ(Manager::Zoomed(1), 2);
    EXPECT_EQ(Manager::Zoomed(-1), -2);
}

TEST(Zoom, IsAbsoluteWhoeverAppliesItHoweverOften) {
    const UnitZoom restore;
    RecordingParent parent;
    const HWND child = AddChild(parent.Window(), L"BUTTON", {11, 13, 58, 36});
    for (const double zoom : {1.25, 2.0, 1.1}) {
        Manager::SetGuiZoom(zoom);
        for (int i = 0; i < 3; ++i) Manager::ResizeWindowToGuiZoom(parent.Window(), Manager::GetPreviousGuiZoom());
        EXPECT_EQ(Place(child).left, Manager::Zoomed(11)) << zoom;
        EXPECT_EQ(Place(child).right - Place(child).left, Manager::Zoomed(47)) << zoom;
    }
    // The host moves the child: from now on it belongs there.
    MoveWindow(child, 110, 22, 33, 44, TRUE);
    Manager::SetGuiZoom(2.2);
    Manager::ResizeWindowToGuiZoom(parent.Window(), 1.1);
    EXPECT_EQ(Place(child).left, 220);
    EXPECT_EQ(Place(child).bottom, 44 + 88);
    // Laid out anew, in unzoomed pixels.
    MoveWindow(child, 10, 10, 20, 20, TRUE);
    Manager::DeleteWindowDimsForGuiZoom(parent.Window());
    Manager::ResizeWindowToGuiZoom(parent.Window(), 1.0);
    EXPECT_EQ(Place(child).left, 22);
    Manager::ResizeWindowToGuiZoom(nullptr, 1.0);
    Manager::ResizeWindowToGuiZoom(parent.Window(), std::nan(""));
    EXPECT_EQ(Place(child).left, 22);
}

TEST(Zoom, MayBeChangedWhileItIsChanging) {
    const UnitZoom restore;
    RecordingParent parent;
    const HWND child = AddChild(parent.Window(), L"BUTTON", {10, 10, 110, 30});
    const RECT first = Place(child);
    int told = 0;
    parent.Answer(0x83FA, [&](WPARAM, LPARAM) {
        if (++told == 1) {
            EXPECT_TRUE(Manager::SetGuiZoom(2.0));
        }
        Manager::ResizeWindowToGuiZoom(parent.Window(), Manager::GetPreviousGuiZoom());
        return 0;
    });
    EXPECT_FALSE(Manager::SetGuiZoom(1.5)) << "another zoom is in force by now";
    EXPECT_EQ(Manager::GetGuiZoom(), 2.0);
    EXPECT_EQ(Place(child).left, 20);
    Manager::SetGuiZoom(1.0);
    const RECT last = Place(child);
    EXPECT_TRUE(EqualRect(&first, &last));
}

} // namespace
