// What a control does unasked: nothing. Made, filled and refreshed, it asks the host for nothing; settled, it paints
// nothing; gone, it leaves nothing.
#include <subjects/law.h>

#include <cstdio>

#include <kxbaseui/kx_visualstyles.h>
#include <kxdevui/framework/devgui_container.h>

namespace kx::test {
namespace {

using SilenceLaw = LawOf<Law::Silence>;

TEST_P(SilenceLaw, TheHostIsAskedForNothing) {
    for (const State& state : {States()[0], States()[5]}) {
        Begin(state);
        Control().Create(Parent());
        ExpectUnheard("creating again");
        ForEachOperation([&](const Operation& operation, Random& random) {
            operation.run(random);
            Pump();
            if (IsExcepted(operation.name)) Parent().Record().Clear();
            ExpectUnheard(operation.name);
        });
        if (!Ready()) return;
        Control().Enable(!state.enabled), Control().Enable(state.enabled), ExpectUnheard("enabling");
        CKxGUILayoutManager::SetGuiZoom(2), ExpectUnheard("zoom");
        KX_SetColorScheme(eKxColorScheme_Light), ExpectUnheard("scheme");
        SetWindowPos(Control().Window(), nullptr, 0, 0, 200, 90, SWP_NOMOVE | SWP_NOZORDER), ExpectUnheard("size");
        RedrawWindow(Control().Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        ExpectUnheard("painting");
        Control().Destroy(), ExpectUnheard("the end");
    }
}

// Whether nothing is told to paint in this time, by the queue or past it, though the queue was empty: with messages in
// it, nobody would be.
bool IsQuiet(ULONGLONG time) {
    static bool painted = false;
    painted = false;
    const HHOOK sent = SetWindowsHookExW(
        WH_CALLWNDPROC,
        [](int code, WPARAM wParam, LPARAM lParam) {
            painted |= reinterpret_cast<const CWPSTRUCT*>(lParam)->message == WM_PAINT;
            return CallNextHookEx(nullptr, code, wParam, lParam);
        },
        nullptr, GetCurrentThreadId());
    bool idle = false;
    const auto end = GetTickCount64() + time;
    for (MSG message; !painted && GetTickCount64() < end;) {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            painted |= message.message == WM_PAINT;
            DispatchMessageW(&message);
        } else {
            idle = true;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
    }
    UnhookWindowsHookEx(sent);
    return idle && !painted;
}

// Whether there comes half a second in which nothing is painted. What comes of a move of the mouse, a leave notice
// also, is on its way before; who paints without being asked never rests.
bool ComesToRest() {
    for (int i = 0; i < 20; ++i)
        if (IsQuiet(500)) return true;
    return false;
}

// Painting that has no end never comes back to say so: a container that paints its children in answer to their question
// has each ask again. So the process ends with a failure while it lives too long.
struct Deadline {
    Deadline() { CreateTimerQueueTimer(&timer_, nullptr, Miss, nullptr, 60000, 0, WT_EXECUTEONLYONCE); }
    ~Deadline() { DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    static void CALLBACK Miss(void*, BOOLEAN) {
        std::puts("[  FAILED  ] the painting does not come to an end");
        std::fflush(stdout);
        TerminateProcess(GetCurrentProcess(), 1);
    }

    HANDLE timer_ = nullptr;
};

// One of each scheme.
std::vector<State> AllSchemes() { return {States()[0], States()[3], States()[4], States()[7]}; }

struct RestLaw : LawOf<Law::Rest> {
    Deadline deadline_;
};

TEST_P(RestLaw, NothingIsPainted) {
    for (const State& state : AllSchemes()) {
        Begin(state);
        InvalidateRect(Parent().Window(), nullptr, FALSE);
        EXPECT_FALSE(IsQuiet(500)) << "what is painted is not seen";
        Expect(ComesToRest(), TextOf(state), "it paints at rest");
    }
    Begin();
    for (const Target& each : Control().Windows()) {
        if (!IsWindowVisible(each.window)) continue;
        RECT client{};
        GetClientRect(each.window, &client);
        if (IsRectEmpty(&client)) continue;
        MoveTo(each.window, client.right / 2, client.bottom / 2);
        const std::string at = "the mouse over " + NameOfWindow(each.window);
        if (!IsExcepted(NameOfWindow(each.window))) Expect(ComesToRest(), at, "it paints at rest");
        break;
    }
}

// A container with each class of the platform's controls: those with a visual style ask it for their background. On
// dark ground they are dark.
TEST(PlatformRestLaw, NothingIsPaintedAndNothingLight) {
    static constexpr std::pair<const wchar_t*, DWORD> kinds[] = {
        // clang-format off
        {L"Button", BS_PUSHBUTTON}, {L"Button", BS_AUTOCHECKBOX}, {L"Button", BS_AUTORADIOBUTTON}, {L"Button", BS_GROUPBOX},
        {L"Edit", WS_BORDER}, {L"ComboBox", CBS_DROPDOWNLIST}, {L"ComboBox", CBS_DROPDOWN}, {L"ListBox", WS_BORDER},
        {WC_LISTVIEWW, LVS_REPORT}, {UPDOWN_CLASSW, 0}, {TRACKBAR_CLASSW, 0}, {WC_TABCONTROLW, 0}, {L"Static", 0},
        {L"ScrollBar", SBS_HORZ}, {PROGRESS_CLASSW, 0}, {L"ComboBox", CBS_SIMPLE}, {L"Edit", ES_READONLY | WS_BORDER},
        {L"Static", SS_SUNKEN}, {L"Static", SS_WHITERECT}, {UPDOWN_CLASSW, UDS_HORZ},
        {TRACKBAR_CLASSW, TBS_AUTOTICKS | TBS_VERT}, {L"ScrollBar", SBS_VERT},
        // clang-format on
    };
    const Deadline deadline;
    for (const State& state : AllSchemes()) {
        KX_SetColorScheme(state.scheme);
        CKxGUILayoutManager::SetGuiZoom(state.zoom);
        const RecordingParent parent;
        CKxDevUI_Container panel;
        panel.Create(parent.Window(), 5, 5, 560, 390, true, true);
        long at = 0;
        for (const auto& [name, style] : kinds) {
            const RECT place{10 + at % 5 * 110, 10 + at / 5 * 75, 110 + at % 5 * 110, 75 + at / 5 * 75};
            panel.InsertWindow(AddChild(panel, name, static_cast<int>(++at), place, style, L"text"));
        }
        AddColumn(GetDlgItem(panel, 9), 60);
        TCITEMW tab{};
        tab.mask = TCIF_TEXT, tab.pszText = const_cast<wchar_t*>(L"tab");
        SendMessageW(GetDlgItem(panel, 12), TCM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&tab));
        KX_FollowColorScheme(panel);
        // The white rectangle and the large arrow: lines and letters may be light.
        for (const int id : {19, 20})
            SetWindowPos(GetDlgItem(panel, id), nullptr, 0, 0, 30, 10, SWP_NOMOVE | SWP_NOZORDER);
        MoveAway(parent.Window());
        for (const BOOL enabled : {TRUE, FALSE}) {
            // Without a style the platform draws a group box that is disabled at once, in its own colours.
            for (int id = 1; id <= at; ++id)
                if (id != 4 || KX_HasVisualStyles()) EnableWindow(GetDlgItem(panel, id), enabled);
            ASSERT_TRUE(ComesToRest()) << TextOf(state);
            ShowWindow(GetDlgItem(panel, 15), SW_HIDE);  // has no look of ours
            const Picture seen = Picture::OnScreen(panel);
            seen.Save("platform-" + TextOf(state) + (enabled ? "" : " disabled"));
            const bool isHighContrast = state.scheme == eKxColorScheme_HighContrast;
            const bool isDark = isHighContrast || state.scheme == eKxColorScheme_Dark;
            EXPECT_EQ(isDark ? seen.WhereLight(isHighContrast) : "", "") << TextOf(state);
        }
    }
    KX_SetColorScheme(eKxColorScheme_System);
    CKxGUILayoutManager::SetGuiZoom(1);
}

// To the platform, no window is all windows of the desktop.
TEST_P(RestLaw, OthersAreLeftAloneByWhatHasNoWindow) {
    Begin();
    ForEachOperation([&](const Operation& operation, Random& random) {
        Control().End(End::Windows);
        RedrawWindow(Parent().Window(), nullptr, nullptr, RDW_VALIDATE);
        operation.run(random);
        RECT all{}, stale{};
        GetClientRect(Parent().Window(), &all);
        GetUpdateRect(Parent().Window(), &stale, FALSE);
        Expect(!EqualRect(&stale, &all), operation.name, "all is drawn anew");
    });
}

using GrowthLaw = LawOf<Law::Rest>;

TEST_P(GrowthLaw, NothingIsLeft) {
    Begin();
    bool bright = false;
    const auto growth = NoGrowth(
        50,
        [&] {
            const auto subject = GetParam().make();
            subject->Create(Parent());
            subject->Enable(bright = !bright);
            RedrawWindow(subject->Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
            subject->Rebuild();
            if (bright) subject->End(End::Windows);
            subject->Destroy();
            Parent().Record().Clear();
        },
        10);
    Expect(bool(growth), "50 rounds", growth.message());
}

INSTANTIATE_TEST_SUITE_P(All, SilenceLaw, testing::ValuesIn(Kinds()), NameOfKind);
INSTANTIATE_TEST_SUITE_P(All, RestLaw, testing::ValuesIn(Kinds()), NameOfKind);
INSTANTIATE_TEST_SUITE_P(All, GrowthLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
