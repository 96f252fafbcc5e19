// In a scheme on dark ground nothing stays light: no area larger than the strokes of text, and where lines are dark
// too, no line.
#include <subjects/law.h>

#include <commctrl.h>

#include <kxbaseui/kx_schemecontrols.h>
#include <subjects/redraw.h>

namespace kx::test {
namespace {

class DarkLaw : public LawTest {
protected:
    DarkLaw() : LawTest({Law::Dark}) {}

    // Chooses the other dark scheme once, when the window gets this message.
    static LRESULT CALLBACK Choose(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR at) {
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        if (message == at && RemoveWindowSubclass(window, Choose, 1)) {
            KX_SetColorScheme(KX_GetColorScheme() == eKxColorScheme_Dark ? eKxColorScheme_HighContrast
                                                                         : eKxColorScheme_Dark);
        }
        return result;
    }
};

TEST_P(DarkLaw, NothingStaysLight) {
    for (const State& state : States()) {
        if (state.scheme != eKxColorScheme_Dark && state.scheme != eKxColorScheme_HighContrast) continue;
        Begin(state);
        KX_FollowColorScheme(Parent().Window());
        RECT place{};
        GetWindowRect(Control().Window(), &place);
        MapWindowPoints(nullptr, Parent().Window(), reinterpret_cast<POINT*>(&place), 2);
        Pump();
        const Picture picture = Picture::OnScreen(Parent().Window()).Part(place);
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

INSTANTIATE_TEST_SUITE_P(All, DarkLaw, testing::ValuesIn(Kinds()), NameOfKind);

}  // namespace
}  // namespace kx::test
