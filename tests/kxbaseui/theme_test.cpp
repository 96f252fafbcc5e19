// What the library draws beside the platform's controls, in a program with visual styles and in one without.
#include <bench/bench.h>
#include <kxbaseui/kx_buttonbackground.h>
#include <kxbaseui/kx_guiscale.h>
#include <kxbaseui/kx_schemecontrols.h>
#include <kxbaseui/kx_visualstyles.h>
#include <kxsystem/kx_log.h>

#include <uxtheme.h>

#include <cstring>

#include "manifest.h"

namespace {

using namespace kx::test;

constexpr SIZE kSize{80, 24};

// A button of the platform's with a blank, and beside it one that we draw.
struct Buttons : testing::Test {
    Buttons() {
        m_parent.Answer(WM_DRAWITEM, [this](WPARAM, LPARAM lParam) {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            KX_DrawButtonBackground(item.hDC, item.rcItem, m_flags, COLOR_BTNFACE);
            return 1;
        });
    }
    HWND Add(DWORD style, long x) {
        return AddChild(m_parent.Window(), L"BUTTON", 1, {x, 10, x + kSize.cx, 10 + kSize.cy}, style, L" ");
    }
    Picture Ours(int flags) {
        m_flags = flags;
        InvalidateRect(m_ours, nullptr, TRUE);
        Pump();
        return Picture::OnScreen(m_ours);
    }

    RecordingParent m_parent{{300, 60}};
    HWND m_ours = Add(BS_OWNERDRAW, 110);
    int m_flags = 0;
};

TEST_F(Buttons, CannotBeToldFromThePlatforms) {
    const auto nothing = [](HWND) {};
    const auto hover = [](HWND button) {
        // Hovered a while; one without a style never is. A late news of the real pointer takes it back, so it is moved
        // again.
        (void)PumpUntil([&, x = 9]() mutable {
            MoveTo(button, x ^= 1, 9);
            return (SendMessageW(button, BM_GETSTATE, 0, 0) & BST_HOT) || !KX_HasVisualStyles();
        });
    };
    const auto press = [](HWND button) { SendMessageW(button, BM_SETSTATE, TRUE, 0); };
    const auto disable = [](HWND button) { EnableWindow(button, FALSE); };
    const auto focus = [](HWND button) { SetFocus(button); };
    const struct {
        const char* name;
        DWORD style;
        std::function<void(HWND)> bring;
        int flags;
    } rows[] = {
        {"normal", 0, nothing, 0},
        {"hot", 0, hover, eKxButtonLook_Hot},
        {"pressed", 0, press, eKxButtonLook_Pressed},
        {"disabled", 0, disable, eKxButtonLook_Disabled},
        {"focused, pressed", 0, [&](HWND b) { focus(b), press(b); }, eKxButtonLook_Focused | eKxButtonLook_Pressed},
        {"focused", 0, focus, eKxButtonLook_Focused},
        {"default", BS_DEFPUSHBUTTON, nothing, eKxButtonLook_Default},
        {"default, pressed", BS_DEFPUSHBUTTON, press, eKxButtonLook_Default | eKxButtonLook_Pressed},
        {"default, disabled", BS_DEFPUSHBUTTON, disable, eKxButtonLook_Default | eKxButtonLook_Disabled},
        {"default, focused", BS_DEFPUSHBUTTON, focus, eKxButtonLook_Default | eKxButtonLook_Focused},
    };
    for (const auto& row : rows) {
        BringToFront(m_parent.Window());
        SetFocus(m_parent.Window());
        MoveTo(m_parent.Window(), 290, 50);
        const HWND stock = Add(row.style, 10);
        Pump();
        row.bring(stock);
        // As it is drawn as a whole: a classic one has drawn its changes over itself.
        InvalidateRect(stock, nullptr, TRUE);
        Pump();
        const Picture theirs = Picture::OnScreen(stock);
        // Within, the platform's has its dots, and ours the outline that all have.
        const RECT alike{0, 0, kSize.cx, GetFocus() == stock ? 2 : kSize.cy};
        EXPECT_EQ(theirs.Part(alike).Differences(Ours(row.flags).Part(alike)), 0) << row.name;
        DestroyWindow(stock);
    }
}

// ---- What is asked of the platform ---------------------------------------------------------------------------------

constexpr const char* kNoted[] = {"OpenThemeData", "CloseThemeData", "DrawThemeBackground", "OpenThemeDataForDpi"};
std::string s_asked;              // of what has been looked up, what is called: "OCD", or "O144" for a scale
const char* s_missing = nullptr;  // what is not to be found

template <int N, class Result, class... Arguments>
void* Noting(Result(WINAPI*)(Arguments...)) {
    return reinterpret_cast<void*>(+[](Arguments... arguments) -> Result {
        s_asked += *kNoted[N];
        if constexpr (N == 3) s_asked += std::to_string(std::get<2>(std::tuple(arguments...)));
        const FARPROC real = GetProcAddress(GetModuleHandleW(L"uxtheme.dll"), kNoted[N]);
        return reinterpret_cast<Result(WINAPI*)(Arguments...)>(reinterpret_cast<void*>(real))(arguments...);
    });
}

FARPROC WINAPI LookUp(HMODULE module, const char* name) {
    void* const noting[] = {Noting<0>(decltype(&OpenThemeData){}), Noting<1>(decltype(&CloseThemeData){}),
                            Noting<2>(decltype(&DrawThemeBackground){}),
                            Noting<3>(static_cast<HTHEME(WINAPI*)(HWND, const wchar_t*, UINT)>(nullptr))};
    if (s_missing && std::strcmp(name, s_missing) == 0) return nullptr;
    for (int i = 0; i < 4; ++i)
        if (std::strcmp(name, kNoted[i]) == 0) return reinterpret_cast<FARPROC>(noting[i]);
    return GetProcAddress(module, name);
}

TEST_F(Buttons, AreDrawnOnceAStyle) {
    const bool styled = KX_HasVisualStyles();
    const Import import(L"kxbaseui.dll", &GetProcAddress, &LookUp);
    KX_VisualStylesChanged();
    s_asked.clear();
    const Picture first = Ours(0);
    for (const int flags : {0, +eKxButtonLook_Pressed, 0, +eKxButtonLook_Pressed})
        Ours(flags);
    EXPECT_EQ(std::exchange(s_asked, {}), styled ? "ODD" : "");
    KX_VisualStylesChanged();
    EXPECT_EQ(first, Ours(0));
    EXPECT_EQ(s_asked, styled ? "COD" : "");
}

TEST_F(Buttons, AreDrawnAtTheMonitorsScale) {
    const bool styled = KX_HasVisualStyles();
    const Import import(L"kxbaseui.dll", &GetProcAddress, &LookUp);
    KX_VisualStylesChanged();
    KX_FollowScaleOf(m_parent.Window());
    Ours(0);
    const std::tuple<UINT, const char*, const char*> rows[] = {
        {144, nullptr, "CO144D"}, {144, nullptr, ""}, {192, "OpenThemeDataForDpi", "COD"}};
    for (const auto& [dpi, missing, asked] : rows) {
        s_asked.clear();
        if ((s_missing = missing)) KX_VisualStylesChanged();
        KX_RelayScale(m_parent.Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
        Ours(0);
        EXPECT_EQ(s_asked, styled ? asked : "") << dpi;
    }
    s_missing = nullptr;
    KX_VisualStylesChanged();
    KX_FollowScaleOf(nullptr);
}

TEST_F(Buttons, AreClassicWhereTheStyleCannotBeDrawn) {
    const Picture before = Ours(0);
    int logged = 0;
    CKxLogFile::SetSink([](const wchar_t*, void* count) { ++*static_cast<int*>(count); }, &logged);
    for (const char* missing : {"DrawThemeBackground", "GetWindowTheme"}) {
        s_missing = missing;
        const Import import(L"kxbaseui.dll", &GetProcAddress, &LookUp);
        KX_VisualStylesChanged();
        EXPECT_FALSE(KX_HasVisualStyles());
        EXPECT_EQ(Ours(0).Pixel(0, kSize.cy - 1), GetSysColor(COLOR_3DDKSHADOW)) << missing;
    }
    s_missing = nullptr;
    KX_VisualStylesChanged();
    EXPECT_EQ(before, Ours(0)) << "it comes back with the style";
    CKxLogFile::SetSink(nullptr, nullptr);
    EXPECT_EQ(logged, 1);
}

TEST(ChangedStyles, ReachTheEdges) {
    RecordingParent parent({200, 60});
    const HWND field = AddChild(parent.Window(), L"EDIT", 1, {10, 10, 90, 50}, WS_BORDER | WS_VSCROLL, L"text");
    KX_FollowColorScheme(parent.Window());
    Pump();
    const HDC dc = GetWindowDC(field);
    PatBlt(dc, 0, 0, 80, 40, BLACKNESS);
    SendMessageW(field, WM_THEMECHANGED, 0, 0);
    Pump();
    // On the edge, and on the scroll bar's lower button.
    for (const POINT at : {POINT{2, 0}, POINT{72, 31}})
        EXPECT_NE(GetPixel(dc, at.x, at.y), RGB(0, 0, 0));
    ReleaseDC(field, dc);
}

// A plug-in activates a manifest of its own while it makes its windows, in a program that may have none. (Asked first
// in its process.)
TEST(PluginStyles, AreThoseOfItsFirstWindow) {
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.lpSource = kStylesManifest;
    const HANDLE manifest = CreateActCtxW(&description);
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(manifest, &cookie)) << GetLastError();
    EXPECT_TRUE(KX_HasVisualStyles());
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(manifest);
    KX_VisualStylesChanged();
    EXPECT_TRUE(KX_HasVisualStyles());
}

}  // namespace
