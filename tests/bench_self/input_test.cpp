#include <bench/bench.h>
#include <bench/window.h>

namespace {

using namespace kx::test;

class Input : public testing::Test {
protected:
    HWND Child(const wchar_t* className, DWORD style, int id, LONG y) {
        const HWND child = AddChild(parent.Window(), className, id, {20, y, 220, y + 24}, style);
        Pump();
        parent.Record().Clear();
        return child;
    }

    RecordingParent parent;
};

TEST_F(Input, ClicksReachTheButton) {
    const HWND button = Child(L"BUTTON", BS_NOTIFY, 7, 20);
    Click(button, 10, 10);
    EXPECT_EQ(GetFocus(), button);
    EXPECT_TRUE(parent.Record().Matches({Command(7, BN_SETFOCUS, button), Command(7, BN_CLICKED, button)}));
    Click(button, 10, 10);
    EXPECT_TRUE(parent.Record().Matches({Command(7, BN_CLICKED)})) << "two clicks are not a double click";
    DoubleClick(button, 10, 10);
    EXPECT_TRUE(parent.Record().Matches({Command(7, BN_CLICKED), Command(7, BN_DBLCLK)}));
    Press(button, 10, 10);
    MoveTo(button, 10, 100);
    Release();
    EXPECT_TRUE(parent.Record().Matches({})) << "released outside";
}

TEST_F(Input, MouseMessagesCarryTheirPoint) {
    parent.Watch({WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEWHEEL});
    MoveTo(parent.Window(), 300, 300);
    parent.Record().Clear();
    Press(parent.Window(), 100, 50);
    MoveTo(parent.Window(), 130, 80);
    Release();
    Wheel(-120);
    Wheel(240, MOD_SHIFT | MOD_CONTROL);
    EXPECT_TRUE(parent.Record().Matches({
        Msg(WM_MOUSEMOVE, 0, MAKELPARAM(100, 50)),
        Msg(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 50)),
        Msg(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(130, 80)),
        Msg(WM_LBUTTONUP, 0, MAKELPARAM(130, 80)),
        Msg(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120))),
        Msg(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT | MK_CONTROL, 240)),
    }));
}

TEST_F(Input, KeysAndTextReachTheFocus) {
    const HWND edit = Child(L"EDIT", ES_AUTOHSCROLL, 8, 60);
    Click(edit, 10, 10);
    Type(L"12,5 \u00B5mX\b\u4E2D");
    Key(VK_HOME);
    Key(VK_RIGHT, MOD_SHIFT);
    Key(VK_DELETE);
    wchar_t text[100];
    GetWindowTextW(edit, text, 100);
    EXPECT_STREQ(text, L"2,5 \u00B5m\u4E2D");
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "modifiers are let go";
}

TEST_F(Input, TabMovesOnlyWithDialogKeys) {
    const HWND first = Child(L"BUTTON", WS_TABSTOP, 1, 20), second = Child(L"BUTTON", WS_TABSTOP, 2, 60);
    Click(first, 5, 5);
    {
        const DialogKeys keys(parent.Window());
        Key(VK_TAB);
        EXPECT_EQ(GetFocus(), second);
    }
    Key(VK_TAB);
    EXPECT_EQ(GetFocus(), second);
}

}  // namespace
