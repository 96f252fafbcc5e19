// What KxKeptInput takes finds its own window again, and no other.
#include <bench/bench.h>

#include <kxdevui/framework/devgui_keep.h>

using namespace kx::test;

TEST(KeptInput, FindsItsWindowByIdClassAndOrder) {
    RecordingParent parent;
    const auto make = [&](int id, const wchar_t* typed) {
        const HWND edit = AddChild(parent.Window(), L"EDIT", id, {0, 0, 50, 20});
        SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(typed));
        return edit;
    };
    const HWND old[] = {make(1, L"a"), make(1, L"b"), make(2, L"c")};
    KxKeptInput kept;
    kept.Take(parent.Window());
    kept.Take(nullptr);
    for (const HWND each : old)
        DestroyWindow(each);
    // The second of id 1 and the one of id 2 come later; what is there has been set meanwhile.
    const HWND first = AddChild(parent.Window(), L"EDIT", 1, {0, 0, 50, 20});
    SetWindowTextW(first, L"set");
    kept.GiveBack(parent.Window());
    const HWND second = make(1, L""), other = make(3, L""), last = make(2, L"");
    // It has something else by now; the others still wait.
    SendMessageW(first, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"d"));
    kept.GiveBack(parent.Window());
    EXPECT_EQ(Narrow(TextOf(first) + L' ' + TextOf(second) + L' ' + TextOf(last) + L'.' + TextOf(other)), "ad b c.");
    EXPECT_TRUE(kept.IsEmpty());
    SendMessageW(second, EM_UNDO, 0, 0);
    EXPECT_EQ(TextOf(second), L"");
}

TEST(KeptInput, KeepsWhereAListBoxWasScrolled) {
    RecordingParent parent;
    const auto make = [&] {
        const HWND list = AddChild(parent.Window(), L"LISTBOX", 1, {0, 0, 50, 40});
        for (int i = 0; i < 20; ++i)
            SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"x"));
        return list;
    };
    const HWND old = make();
    SendMessageW(old, LB_SETTOPINDEX, 7, 0);
    KxKeptInput kept;
    kept.Take(parent.Window());
    DestroyWindow(old);
    const HWND list = make();
    kept.GiveBack(parent.Window());
    EXPECT_EQ(SendMessageW(list, LB_GETTOPINDEX, 0, 0), 7);
}
