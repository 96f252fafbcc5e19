// Fonts, colours, message boxes, alignment, tooltips, the zoom's rules.
#include <bench/bench.h>
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

namespace {

using namespace kx::test;

using Manager = CKxGUILayoutManager;

struct Windows : testing::Test {
    ~Windows() override { Manager::SetGuiZoom(1.0); }
    HWND Add(const wchar_t* windowClass, const RECT& place, DWORD style = 0) {
        return AddChild(m_parent.Window(), windowClass, 0, place, style, L"text");
    }

    RecordingParent m_parent{{400, 300}};
};

// ---- Fonts ---------------------------------------------------------------------------------------------------------

TEST(Fonts, AreMadeOnceAndScale) {
    const auto describe = [](HFONT font) {
        LOGFONTW description{};
        GetObjectW(font, sizeof description, &description);
        return description;
    };
    EXPECT_EQ(KX_GetDefaultGuiFont(), KX_GetDefaultGuiFontZoom(1.0));
    EXPECT_EQ(describe(KX_GetDefaultGuiFontZoom(2.0)).lfHeight, -21);
    EXPECT_EQ(KX_GetDefaultGuiFontZoom(std::nan("")), KX_GetDefaultGuiFont());
    EXPECT_EQ(KX_GetDefaultGuiFontZoom(1000.0), KX_GetDefaultGuiFontZoom(Manager::MaximumZoom));

    // There and back is the very same font, for a stranger's too.
    const HFONT bold = KX_GetDefaultGuiFontBold();
    EXPECT_EQ(describe(bold).lfWeight, FW_BOLD);
    EXPECT_EQ(KX_GetFontAtZoom(KX_GetFontAtZoom(bold, 1.0, 1.5), 1.5, 1.0), bold);
    const HFONT stranger = CreateFontW(-15, 0, 0, 0, 400, TRUE, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    const HFONT larger = KX_GetFontAtZoom(stranger, 1.0, 2.0);
    EXPECT_TRUE(describe(larger).lfHeight == -30 && describe(larger).lfItalic);
    EXPECT_EQ(describe(KX_GetFontAtZoom(larger, 2.0, 1.0)).lfHeight, -15);
    DeleteObject(stranger);
    EXPECT_EQ(KX_GetFontAtZoom(nullptr, 1.0, 2.0), nullptr);
}

// ---- Colours -------------------------------------------------------------------------------------------------------

TEST(Colors, FollowTheSchemeAndKeepTextLegible) {
    const auto brightness = [](int index) {
        const COLORREF color = KX_GetSysColor(index);
        return (299 * GetRValue(color) + 587 * GetGValue(color) + 114 * GetBValue(color)) / 1000;
    };
    constexpr int legible[][3] = {{COLOR_BTNTEXT, COLOR_BTNFACE, 180},
                                  {COLOR_WINDOWTEXT, COLOR_WINDOW, 180},
                                  {COLOR_HIGHLIGHTTEXT, COLOR_HIGHLIGHT, 140},
                                  {COLOR_GRAYTEXT, COLOR_BTNFACE, 90}};
    for (const auto scheme : {eKxColorScheme_Light, eKxColorScheme_Dark, eKxColorScheme_HighContrast}) {
        KX_SetColorScheme(scheme);
        for (const auto& [text, back, least] : legible)
            EXPECT_GE(std::abs(brightness(text) - brightness(back)), least) << scheme << " " << text;
        for (int index = 0; index <= COLOR_MENUBAR; ++index) {
            LOGBRUSH brush{};
            GetObjectW(KX_GetSysColorBrush(index), sizeof brush, &brush);
            EXPECT_EQ(brush.lbColor, KX_GetSysColor(index)) << scheme << " " << index;
        }
    }
    KX_SetColorScheme(static_cast<EKxColorScheme>(9));
    EXPECT_EQ(KX_GetColorScheme(), eKxColorScheme_HighContrast);
    KX_SetColorScheme(eKxColorScheme_System);
    EXPECT_EQ(KX_GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(KX_GetSysColor(-1), 0u);
    EXPECT_EQ(KX_GetSysColorBrush(99), GetStockObject(NULL_BRUSH));
}

TEST_F(Windows, HearOfAnotherSchemeOnce) {
    const HWND group = Add(L"BUTTON", {0, 0, 200, 100}, BS_GROUPBOX);
    const HWND check = Add(L"BUTTON", {10, 30, 150, 50}, BS_AUTOCHECKBOX | BS_NOTIFY);
    for (const HWND window : {m_parent.Window(), m_parent.Window(), HWND{}})
        KX_FollowColorScheme(window);
    m_parent.Watch(WM_SYSCOLORCHANGE);
    KX_SetColorScheme(eKxColorScheme_Dark);
    KX_SetColorScheme(eKxColorScheme_Dark);
    EXPECT_EQ(m_parent.Record().Take(), "0x15");
    const int before = Picture::OnScreen(check).Count(KX_GetSysColor(COLOR_WINDOWTEXT));
    Click(check, 5, 10);
    EXPECT_GT(Picture::OnScreen(check).Count(KX_GetSysColor(COLOR_WINDOWTEXT)), before + 5) << "the mark shows";
    EXPECT_GT(Picture::OnScreen(group).Count(KX_GetSysColor(COLOR_BTNSHADOW)), 100);
    // Also in the middle of a message it is as visible as its host has made it.
    m_parent.Answer(WM_COMMAND, [&](WPARAM wParam, LPARAM) {
        EXPECT_TRUE(IsWindowVisible(check));
        return HIWORD(wParam) == BN_KILLFOCUS ? ShowWindow(check, SW_HIDE) : 0;
    });
    SetFocus(m_parent.Window());
    EXPECT_FALSE(IsWindowVisible(check));
    ShowWindow(check, SW_SHOW);
    KX_SetColorScheme(eKxColorScheme_System);
    Pump();
    EXPECT_EQ(Picture::OnScreen(check).Pixel(138, 3), GetSysColor(COLOR_BTNFACE));
}

TEST_F(Windows, LeaveNothingUnderAnEtchedLine) {
    const HWND line = Add(L"STATIC", {10, 10, 110, 12}, SS_ETCHEDHORZ);
    KX_FollowColorScheme(m_parent.Window());
    SetWindowPos(line, nullptr, 0, 0, 100, 4, SWP_NOMOVE);
    for (const auto& [scheme, light] :
         {std::pair{eKxColorScheme_System, COLOR_BTNHIGHLIGHT}, {eKxColorScheme_Dark, COLOR_BTNFACE}}) {
        KX_SetColorScheme(scheme);
        Pump();
        const HDC dc = GetWindowDC(line);
        PatBlt(dc, 0, 0, 100, 4, BLACKNESS);
        ReleaseDC(line, dc);
        RedrawWindow(line, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const Picture picture = Picture::OnScreen(line);
        EXPECT_EQ(picture.Count(KX_GetSysColor(COLOR_BTNSHADOW)), 200) << scheme;
        EXPECT_EQ(picture.Count(KX_GetSysColor(light)), 200) << scheme;
    }
    KX_SetColorScheme(eKxColorScheme_System);
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
    KX_SetMessageBoxHandler([](HWND, auto, auto, UINT, int, void*) -> int { throw std::runtime_error("no"); }, nullptr);
    EXPECT_EQ(KX_MessageBox(nullptr, nullptr, nullptr, MB_OK, 5), IDCANCEL);
    KX_SetMessageBoxHandler(nullptr, nullptr);

    const ModalAnswer answer([](HWND box) {
        EXPECT_EQ(TextOf(box), L"Question");
        PressButton(box, IDNO);
    });
    EXPECT_EQ(KX_MessageBox(nullptr, L"Really?", L"Question", MB_YESNO, -1), IDNO);
    EXPECT_EQ(answer.Count(), 1u);
}

TEST_F(Windows, AreCentredAndKeptInside) {
    const HWND anchor = Add(L"STATIC", {100, 100, 200, 200}), child = Add(L"STATIC", {0, 0, 20, 40});
    const auto centre = [&](int mode, HWND on, bool inside) {
        return CKxUIHelper::AlignWnd(child, on, mode, inside, nullptr);
    };
    EXPECT_TRUE(centre(eKxAlign_CenterAnchor, anchor, true));
    EXPECT_EQ(PlaceOf(child), "140 130 20 40");
    ShowWindow(anchor, SW_HIDE);
    EXPECT_TRUE(centre(eKxAlign_CenterAnchor, anchor, true));
    EXPECT_EQ(PlaceOf(child), "190 130 20 40") << "where nothing shows, in the parent";
    ShowWindow(anchor, SW_SHOW);
    SetWindowPos(child, nullptr, 0, 0, 4000, 4000, SWP_NOMOVE);
    EXPECT_TRUE(centre(eKxAlign_CenterAnchor, anchor, true));
    EXPECT_EQ(PlaceOf(child), "0 0 4000 4000") << "the top-left corner is the part worth seeing";
    EXPECT_FALSE(centre(77, anchor, true));
    EXPECT_FALSE(CKxUIHelper::AlignWnd(nullptr, anchor, eKxAlign_CenterAnchor, true, nullptr));
}

TEST_F(Windows, ShareTheToolTipOfTheirWindow) {
    const HWND a = Add(L"BUTTON", {0, 0, 20, 20}), b = Add(L"BUTTON", {30, 0, 50, 20});
    EXPECT_EQ(KX_CreateToolTipWindow(a, nullptr), nullptr) << "nothing to show, nothing to make";
    const HWND tip = KX_CreateToolTipWindow(a, L"one");
    ASSERT_TRUE(tip);
    EXPECT_EQ(KX_CreateToolTipWindow(b, L"two"), tip);
    KX_UpdateToolTipWindow(a, L"three");
    EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 2);
    CKxGUILayoutManager::SetGuiZoom(2);
    LOGFONTW grown{}, font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(tip, WM_GETFONT, 0, 0)), sizeof grown, &grown);
    GetObjectW(KX_GetDefaultGuiFontZoom(2), sizeof font, &font);
    EXPECT_EQ(grown.lfHeight, font.lfHeight);
    CKxGUILayoutManager::SetGuiZoom(1);
    KX_DeleteToolTip(b);
    EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 1);
    const HWND panel = Add(L"STATIC", {0, 40, 90, 70}), inside = AddChild(panel, L"BUTTON", 1, {0, 0, 20, 20});
    EXPECT_EQ(KX_CreateToolTipWindow(inside, L"four"), tip);
    SetParent(panel, nullptr);
    SetWindowLongW(panel, GWL_STYLE, static_cast<LONG>(WS_POPUP));
    const HWND other = KX_CreateToolTipWindow(inside, L"five");
    EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 1) << "it stands in another window";
    DestroyWindow(panel);
    EXPECT_TRUE(other != tip && !IsWindow(other) && !KX_GetToolTipWindow(inside));
    KX_CreateToolTipWindow(b, L"six");
    DestroyWindow(b);
    EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 1) << "a tool that is gone";
}

// ---- The zoom ------------------------------------------------------------------------------------------------------

TEST_F(Windows, HearOfAnotherZoomOnce) {
    std::string told;
    m_parent.Answer(0x83FA, [&](WPARAM, LPARAM) { return told += "parent ", 0; });
    RecordingParent child;
    SetParent(child.Window(), m_parent.Window());
    child.Answer(0x83FA, [&](WPARAM, LPARAM) { return told += "child ", 0; });
    EXPECT_TRUE(Manager::SetGuiZoom(1.5));
    EXPECT_TRUE(Manager::SetGuiZoom(1.5));
    EXPECT_EQ(std::exchange(told, {}), "parent child ") << "parents before their children";
    EXPECT_EQ(Manager::GetPreviousGuiZoom(), 1.0);
    for (const double bad : {0.0, -2.0, 100.0, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_FALSE(Manager::SetGuiZoom(bad));
    EXPECT_EQ(Manager::GetGuiZoom(), 1.5);
    EXPECT_TRUE(Manager::Zoomed(1) == 2 && Manager::Zoomed(-1) == -2);
    EXPECT_TRUE(Manager::SetGuiZoom(1.0));
    EXPECT_EQ(told, "parent child ");
    m_parent.Answer(0x83FA, [](WPARAM, LPARAM) { return Manager::SetGuiZoom(2.0), 0; });
    EXPECT_FALSE(Manager::SetGuiZoom(1.5)) << "another zoom is in force by now";
    m_parent.Answer(0x83FA, LRESULT{0});
}

TEST_F(Windows, AreZoomedFromWhereTheyBelong) {
    const HWND child = Add(L"BUTTON", {11, 13, 58, 36});
    const auto zoom = [&](double factor) {
        Manager::SetGuiZoom(factor);
        for (int i = 0; i < 3; ++i)
            Manager::ResizeWindowToGuiZoom(m_parent.Window(), Manager::GetPreviousGuiZoom());
        return PlaceOf(child);
    };
    EXPECT_EQ(zoom(1.25), "14 16 59 29");
    EXPECT_EQ(zoom(2), "22 26 94 46");
    // The host moves the child: from now on it belongs there.
    MoveWindow(child, 110, 22, 33, 44, TRUE);
    EXPECT_EQ(zoom(1), "55 11 17 22");
    // Laid out anew, in unzoomed pixels.
    zoom(2);
    MoveWindow(child, 10, 10, 20, 20, TRUE);
    Manager::DeleteWindowDimsForGuiZoom(m_parent.Window());
    for (const double previous : {1.0, std::nan("")})
        Manager::ResizeWindowToGuiZoom(m_parent.Window(), previous);
    EXPECT_EQ(PlaceOf(child), "20 20 40 40");
}

}  // namespace
