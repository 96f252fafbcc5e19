// What a control does unasked: nothing. Made, filled and refreshed, it asks the host for nothing; settled, it paints
// nothing; gone, it leaves nothing.
#include "law.h"

#include <kxbaseui/kx_layoutmanager.h>

namespace kx::test {
namespace {

class SilenceLaw : public LawTest {
protected:
    SilenceLaw() : LawTest(Law::Silence) {}

    void Heard(const std::string& after) {
        Expect(true, "", "");
        for (const Entry& entry : Parent().Record().Entries())
            if (entry.message != WM_DRAWITEM && !IsExcepted(entry.text))
                Expect(false, after, "the host hears " + entry.text);
        Parent().Record().Clear();
    }
};

TEST_P(SilenceLaw, TheHostIsAskedForNothing) {
    for (const State& state : {States()[0], States()[5]}) {
        Begin(state);
        Control().Create(Parent());
        Heard("creating again");
        ForEachOperation([&](const Operation& operation, Random& random) {
            operation.run(random);
            Pump();
            if (IsExcepted(operation.name)) Parent().Record().Clear();
            Heard(operation.name);
        });
        if (!Ready()) return;
        Control().Enable(!state.enabled), Control().Enable(state.enabled), Heard("enabling");
        CKxGUILayoutManager::SetGuiZoom(2), Heard("zoom");
        KX_SetColorScheme(eKxColorScheme_Light), Heard("scheme");
        SetWindowPos(Control().Window(), nullptr, 0, 0, 200, 90, SWP_NOMOVE | SWP_NOZORDER), Heard("size");
        RedrawWindow(Control().Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        Heard("painting");
        Control().Destroy(), Heard("the end");
    }
}

class RestLaw : public LawTest {
protected:
    RestLaw() : LawTest(Law::Rest) {}

    // Whether there comes a while in which nothing is painted. What comes of a move of the mouse, a leave notice also,
    // is on its way before; who paints without being asked never rests.
    static bool ComesToRest() {
        for (int i = 0; i < 20; ++i)
            if (Paintings(250) == 0) return true;
        return false;
    }

private:
    // How many windows are told to paint in this time.
    static int Paintings(ULONGLONG time) {
        int count = 0;
        const auto end = GetTickCount64() + time;
        for (MSG message; GetTickCount64() < end; MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT)) {
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                count += message.message == WM_PAINT;
                DispatchMessageW(&message);
            }
        }
        return count;
    }
};

TEST_P(RestLaw, NothingIsPainted) {
    for (const State& state : {States()[0], States()[5]}) {
        Begin(state);
        Expect(ComesToRest(), TextOf(state), "it paints at rest");
        for (const Target& each : Control().Windows()) {
            if (!IsWindowVisible(each.window)) continue;
            RECT client{};
            GetClientRect(each.window, &client);
            if (IsRectEmpty(&client)) continue;
            MoveTo(each.window, client.right / 2, client.bottom / 2);
            const std::string at = "the mouse over " + NameOfWindow(each.window) + ", " + TextOf(state);
            if (!IsExcepted(NameOfWindow(each.window))) Expect(ComesToRest(), at, "it paints at rest");
            break;
        }
    }
}

class GrowthLaw : public LawTest {
protected:
    GrowthLaw() : LawTest(Law::Rest) {}
};

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
