// The edit box: what it shows, what its parent hears, what it refuses.
#include <bench/bench.h>
#include <kxdevui/controls/devgui_editbox.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace kx::test;

class Box : public CKxDevUI_EditBox {
public:
    std::function<void(const char*)> act;
    using CKxDevUI_EditBox::Create;

protected:
    void OnEnter() override { CKxDevUI_EditBox::OnEnter(), Act("Enter"); }
    void OnSetFocus() override { CKxDevUI_EditBox::OnSetFocus(), Act("SetFocus"); }
    void OnKillFocus() override { CKxDevUI_EditBox::OnKillFocus(), Act("KillFocus"); }
    void OnChange() override { CKxDevUI_EditBox::OnChange(), Act("Change"); }
    void OnChar(int ch) override { CKxDevUI_EditBox::OnChar(ch), Act("Char"); }

private:
    void Act(const char* name) {
        if (const auto action = act) action(name);
    }
};

TEST(EditBox, TellsOfTypingEnterAndFocus) {
    RecordingParent parent;
    Box box;
    box.SetId(44);
    box.SetSize(60, 60, 20);
    ASSERT_TRUE(box.Create(parent.Window(), 10, 10, 120, 20, true, true));
    EXPECT_TRUE(parent.Record().Matches({})) << "making it is silent";
    const HWND window = box;
    Click(box.GetEditWindow(), 5, 5);
    EXPECT_TRUE(box.IsFocused());
    EXPECT_TRUE(parent.Record().Matches({Command(44, EN_SETFOCUS, window)}));
    Type(L"7\n");
    EXPECT_TRUE(parent.Record().Matches({Msg(WM_COMMAND, MAKEWPARAM(44, 0x0102), L'7'), Command(44, EN_CHANGE, window),
                                         Msg(WM_COMMAND, MAKEWPARAM(44, 0x0102), L'\r'), Command(44, 0x0401, window)}));
    SetFocus(parent.Window());
    EXPECT_TRUE(parent.Record().Matches({Command(44, EN_KILLFOCUS, window)}));
    box.SetText(L"7");
    EXPECT_TRUE(parent.Record().Matches({})) << "nothing has changed";
    box.SetNumber(8.25);
    EXPECT_TRUE(parent.Record().Matches({Command(44, EN_CHANGE, window)}));
    EXPECT_EQ(box.GetNumber(), 8.25);
    box.Destroy();
    EXPECT_TRUE(parent.Record().Matches({})) << "so is its end";
}

TEST(EditBox, MayBeEndedInEveryCallback) {
    for (const char* where : {"Enter", "SetFocus", "KillFocus", "Change", "Char"}) {
        for (int how = 0; how < 3; ++how) {
            auto parent = std::make_unique<RecordingParent>();
            auto box = std::make_unique<Box>();
            ASSERT_TRUE(box->Create(parent->Window(), 10, 10, 120, 20, true, true));
            const HWND other = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 200, 10, 20, 20,
                                               parent->Window(), nullptr, nullptr, nullptr);
            bool ended = false;
            box->act = [&](const char* name) {
                if (std::string(name) != where || ended) return;
                ended = true;
                switch (how) {
                case 0: box->Destroy(); break;
                case 1: box.reset(); break;
                default: parent.reset(); break;
                }
            };
            const HWND edit = box->GetEditWindow();
            BringToFront(parent->Window());
            // The mouse reaches the edit through the platform's own code.
            Click(edit, 5, 5);
            if (!ended) Type(L"1");
            if (!ended) SetWindowTextW(edit, L"2");
            if (!ended) Type(L"\n");
            if (!ended) SetFocus(other);
            EXPECT_TRUE(ended) << where;
            EXPECT_FALSE(IsWindow(edit)) << where << how;
            Pump();
        }
    }
}

}  // namespace
