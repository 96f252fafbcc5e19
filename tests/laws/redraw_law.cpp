// What is on the screen after a change is what a full repaint draws: a missing redraw shows at once.
#include <subjects/law.h>

#include <optional>
#include <set>

#include <kxdevui/framework/devgui.h>

namespace kx::test {
namespace {

struct RedrawLaw : LawOf<Law::Redraw> {
    // Whether there is something else to be seen than the last time.
    bool Look(const std::string& after, const State& state) {
        if (!Control().Window()) return false;
        bool isAnother = false;
        const std::string wrong = NotRedrawn(Parent().Window(), &isAnother);
        // What it has not drawn is not to be found missing in what comes next.
        if (!IsExcepted(after)) ExpectNothing(wrong, "after " + after + ", " + TextOf(state));
        return isAnother;
    }
    // A notice that the mouse has left must not come between the two pictures of a comparison. The display's own
    // pointer stays behind injected moves, and after a tenth of a second without any Wine takes it for where the mouse
    // is; so mouse and pointer are taken away together, and who is left by them hears of it at once.
    void Do(const Act& act) {
        act.run();
        MoveAway(Parent().Window());
        POINT at{};
        GetCursorPos(&at);
        SetCursorPos(at.x, at.y);
        const auto noticeIsDue = [&] {
            TRACKMOUSEEVENT tracking{sizeof(tracking), TME_QUERY, nullptr, 0};
            return TrackMouseEvent(&tracking) && IsWindow(tracking.hwndTrack);
        };
        // A disabled window never hears of it.
        static_cast<void>(PumpUntil([&] { return !noticeIsDue(); }, std::chrono::milliseconds(100)));
    }
};

constexpr int mostTries = 8;

// Zoomed, dark and disabled or none of it for operations; all pairs of zoom and enabling for what all have.
std::vector<State> Few() { return {States()[0], States()[5]}; }
std::vector<State> Some() { return {States()[0], States()[2], States()[5], States()[7]}; }

TEST_P(RedrawLaw, HoldsAfterOperations) {
    for (const State& state : Few()) {
        Begin(state);
        Look("creation", state);
        std::set<std::string> seen;
        ForEachOperation([&](const Operation& operation, Random& random) {
            // Parameters that change nothing show nothing: once, further ones are tried.
            for (int i = 0; Ready() && i < (seen.contains(operation.name) ? 1 : mostTries); ++i) {
                operation.run(random);
                if (Look(operation.name + (state.enabled ? "" : " while disabled"), state)) break;
            }
            seen.insert(operation.name);
        });
    }
}

// What every host may do, and the platform.
TEST_P(RedrawLaw, HoldsAfterWhatAllHave) {
    for (const State& state : Some()) {
        Begin(state);
        const auto after = [&](const std::string& what, const std::function<void()>& change) {
            if (!Ready()) return;
            doing_ = what;
            change();
            Look(what, state);
        };
        after("enabling", [&] { Control().Enable(!state.enabled); });
        after("enabling back", [&] { Control().Enable(state.enabled); });
        after("the window's enabling", [&] { EnableWindow(Control().Window(), FALSE); });
        after("the window's enabling back", [&] { EnableWindow(Control().Window(), TRUE); });
        after("hiding", [&] { ShowWindow(Control().Window(), SW_HIDE); });
        after("showing", [&] { ShowWindow(Control().Window(), SW_SHOWNA); });
        after("another scheme", [&] {
            KX_SetColorScheme(state.scheme == eKxColorScheme_Dark ? eKxColorScheme_Light : eKxColorScheme_Dark);
        });
        after("the scheme back", [&] { KX_SetColorScheme(state.scheme); });
        if (state.scheme == eKxColorScheme_System) {
            std::optional<WithoutStyles> without;
            after("no visual styles", [&] { without.emplace(Parent().Window()); });
            after("the styles back", [&] { without.reset(); });
        }
        after("another zoom", [&] { CKxGUILayoutManager::SetGuiZoom(1.25); });
        after("the zoom back", [&] { CKxGUILayoutManager::SetGuiZoom(state.zoom); });
        RECT place{};
        GetWindowRect(Control().Window(), &place);
        for (const int more : {14, -30}) {
            after("another size", [&] {
                SetWindowPos(Control().Window(), nullptr, 0, 0, place.right - place.left + more,
                             place.bottom - place.top + more / 2, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
            });
        }
        if (CKxDevUI_Base* const base = Control().Control()) {
            after("SetTitle", [&] { base->SetTitle(L"Another title"); });
            after("ResizeWindow", [&] { base->ResizeWindow(180, 60); });
            after("MoveWindow", [&] { base->MoveWindow(30, 40); });
            after("SetVisible", [&] { base->SetVisible(false), base->SetVisible(true); });
        }
        if (!Ready()) return;
        Control().End(End::Windows);
        ExpectNothing(NotRedrawn(Parent().Window()), "where it was, " + TextOf(state));
    }
}

TEST_P(RedrawLaw, HoldsWhileTheUserActs) {
    Begin();
    for (const std::size_t i : SomeWindows()) {
        const auto windows = Control().Windows();
        if (i >= windows.size()) break;
        for (const Act& act : ActsAt(windows[i].window)) {
            if (!Ready()) return;
            doing_ = act.name;
            Do(act);
            Look(act.name, States()[0]);
        }
    }
}

// In a scheme on dark ground nothing stays light: no area larger than the strokes of text, and where lines are dark
// too, no line.
struct DarkLaw : LawOf<Law::Dark> {
    // Chooses the other dark scheme once, when the window gets this message.
    static LRESULT CALLBACK Choose(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR at) {
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        if (message == at && RemoveWindowSubclass(window, Choose, 1))
            KX_SetColorScheme(KX_GetColorScheme() == eKxColorScheme_Dark ? eKxColorScheme_HighContrast
                                                                         : eKxColorScheme_Dark);
        return result;
    }
};

TEST_P(DarkLaw, NothingStaysLight) {
    for (const State& state : States()) {
        if (state.scheme != eKxColorScheme_Dark && state.scheme != eKxColorScheme_HighContrast) continue;
        Begin(state);
        KX_FollowColorScheme(Parent().Window());
        // The outline of what has the focus is to be light.
        SetFocus(Parent().Window());
        Pump();
        const Picture picture = Picture::OnScreen(Parent().Window()).Part(RectInParent(Control().Window()));
        picture.Save("dark " + GetParam().name + " " + TextOf(state));
        if (!IsExcepted(TextOf(state)))
            ExpectNothing(picture.WhereLight(state.scheme == eKxColorScheme_HighContrast), TextOf(state));
    }
}

// What is around it is in the middle of painting then.
TEST_P(DarkLaw, AChangeAmidPaintingDoesNoHarm) {
    Begin(States()[4]);
    KX_FollowColorScheme(Parent().Window());
    std::vector<Target> windows = Control().Windows();
    windows.push_back({Parent().Window(), false});
    for (const UINT at : std::initializer_list<UINT>{WM_PAINT, WM_DRAWITEM, WM_CTLCOLORSTATIC, WM_CTLCOLOREDIT,
                                                     WM_ERASEBKGND, WM_SYSCOLORCHANGE}) {
        for (const Target& each : windows) {
            SetWindowSubclass(each.window, Choose, 1, at);
            // What is kept drawn is drawn anew.
            KX_SetColorScheme(KX_GetColorScheme() == eKxColorScheme_Dark ? eKxColorScheme_Light : eKxColorScheme_Dark);
            Pump();
            const bool isAsked = !RemoveWindowSubclass(each.window, Choose, 1);
            if (isAsked) ExpectNothing(NotRedrawn(Parent().Window()), NameOf(at) + " in " + NameOfWindow(each.window));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, RedrawLaw, testing::ValuesIn(Kinds()), NameOfKind);
INSTANTIATE_TEST_SUITE_P(All, DarkLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
