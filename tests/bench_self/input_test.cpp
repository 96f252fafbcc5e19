#include <bench/bench.h>
#include <bench/window.h>

namespace {

using namespace kx::test;

// Whose input reached nobody would see no control fail.
TEST(Input, MouseMessagesCarryTheirPoint) {
    RecordingParent parent;
    parent.Watch({WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEWHEEL});
    MoveTo(parent.Window(), 300, 300);
    parent.Record().Clear();
    Press(parent.Window(), 100, 50);
    MoveTo(parent.Window(), 130, 80);
    Release();
    Wheel(240, MOD_SHIFT | MOD_CONTROL);
    EXPECT_TRUE(parent.Record().Matches({
        Msg(WM_MOUSEMOVE, 0, MAKELPARAM(100, 50)),
        Msg(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 50)),
        Msg(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(130, 80)),
        Msg(WM_LBUTTONUP, 0, MAKELPARAM(130, 80)),
        Msg(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT | MK_CONTROL, 240)),
    }));
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "modifiers are let go";
}

}  // namespace
