// The image button and the check box: what they ask for on which act, and what a dialog sees of them.
#include "control_test.h"

#include <kxbaseui/kx_menu.h>
#include <kxdevui/controls/devgui_checkbox.h>
#include <kxdevui/controls/imagebutton_rules.h>
#include <kxdevui/framework/devgui_activity.h>
#include <kxdevui/framework/devgui_container.h>

namespace {

using namespace kx::test;

// ---- The image button ----------------------------------------------------------------------------------------------

struct AskedButton : Asking<CKxDevUI_ImageButton> {
    using Asking::Asking;
    void OnClickRequest(bool& veto) override { Asked(veto, "Click"); }
    void OnStateChangeRequest(bool state, bool& veto) override { Asked(veto, "State", state); }
    void OnMenuRequest(int command) override { Told("Menu", command); }
};

struct ImageButton : ControlTest {
    ImageButton() {
        button.SetTitle(L"Up");
        button.SetTextPlace(EKxButtonText::Beside);
        button.SetImages({.normal = L"LIGHTPATH", .hovered = L"WINDOWOPEN", .checked = L"SHUTTER_OPEN"});
        button.Create(parent.Window(), 10, 10, 60, 28, true, true);
        Pump();
        Told();
    }
    ~ImageButton() override { KX_SetMenuHandler(nullptr, nullptr); }
    std::string See() override { return (button.GetState() ? "on " : "off ") + Told(); }
    // Asked so often, and not once more.
    bool Repeats(int times) {
        return PumpUntil([&] { return static_cast<int>(parent.Record().Entries().size()) >= times; });
    }
    bool HasStopped() {
        Pump();
        Told();
        const auto until = GetTickCount64() + 60;
        (void)PumpUntil([&] { return GetTickCount64() > until; });
        return Told().empty() && !button.IsRepeating();
    }

    AskedButton button{parent.Record()};
};

TEST_F(ImageButton, AsksOncePerClickAndObeys) {
    const DialogKeys keys(parent.Window());
    const HWND inner = button.GetButtonHandle();
    Play({{[&] { Click(inner, 5, 5); }, "off Click()"},
          {[&] { DoubleClick(inner, 5, 5); }, "off Click() Click()"},
          {[&] { Press(inner, 5, 5), MoveTo(inner, 200, 5), Release(); }, "off "},
          {[&] { Key(VK_SPACE), Key(VK_RETURN); }, "off Click() Click()"},
          {[&] { button.SetToggle(true), Click(inner, 5, 5); }, "on State(true)"},
          {[&] { button.answer = true, Key(VK_SPACE); }, "on State(false)"},
          {[&] { button.SetState(false), button.SetState(true); }, "on "},
          {[&] { button.meanwhile = [&] { button.SetState(true); }, button.answer = false, Key(VK_RETURN); },
           "on State(false)"}});
    EXPECT_EQ(KX_GetActivity(button).activity, EKxActivity::Refused) << "it was, and is said beside the button";
}

TEST_F(ImageButton, RepeatsUntilSomethingEndsIt) {
    const HWND inner = button.GetButtonHandle();
    button.SetAutoRepeat(20, 10);
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"let go", [] { Release(); }},
        {"the mouse leaves", [&] { MoveTo(inner, 200, 5), MoveTo(inner, 5, 5); }},
        {"the capture is taken", [] { ReleaseCapture(); }},
        {"disabled", [&] { button.SetEnabled(false); }},
        {"hidden", [&] { button.SetVisible(false); }},
        {"refused", [&] { button.answer = true, (void)Repeats(5); }},
    };
    for (const auto& [name, end] : ends) {
        Press(inner, 5, 5);
        EXPECT_EQ(parent.Record().Entries().size(), 1u) << "at once";
        EXPECT_TRUE(Repeats(4) && button.IsRepeating()) << name;
        end();
        EXPECT_TRUE(HasStopped()) << name;
        Release();
        EXPECT_EQ(Told(), "") << name;
        button.SetEnabled(true), button.SetVisible(true), button.answer = false;
    }
    SetFocus(button);
    SendMessageW(inner, BM_CLICK, 0, 0);
    EXPECT_EQ(Told(), "Click()") << "by a screen reader";
    // With the buttons swapped, on a platform that calls them by where they are.
    std::array<BYTE, 256> keys{};
    keys[VK_RBUTTON] = 0x80;
    SetKeyboardState(keys.data());
    SendMessageW(inner, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_TRUE(Repeats(4));
    keys[VK_RBUTTON] = 0;
    SetKeyboardState(keys.data());
    EXPECT_TRUE(HasStopped()) << "somebody has swallowed the release";
}

TEST_F(ImageButton, OpensItsMenu) {
    const DialogKeys keys(parent.Window());
    KX_SetMenuHandler([](HWND, const CKxMenu& menu, int, int, void*) { return menu.GetCommand(1); }, nullptr);
    CKxMenu menu;
    menu.AppendMenuItem(5, L"Home");
    menu.AppendMenuItem(6, L"Load");
    button.SetMenu(menu);
    const HWND inner = button.GetButtonHandle();
    Play({{[&] { Click(inner, 55, 5); }, "off Menu(6)"},
          {[&] { Click(inner, 40, 5); }, "off Click()"},
          {[] { Key(VK_DOWN), Key(VK_F4), Key(VK_DOWN, MOD_ALT); }, "off Menu(6) Menu(6) Menu(6)"},
          {[&] { button.SetMenu({}), Click(inner, 55, 5); }, "off Click()"}});
}

TEST(ImageButtonRules, PlaceAndChoose) {
    using namespace kx::imagebutton;
    using enum EKxButtonText;
    const auto text = [](const RECT& r) { return CallText("", r.left, r.top, r.right, r.bottom); };
    const struct {
        Contents contents;
        double zoom;
        std::string arrow, image, text;
    } rows[] = {
        {{None, 0, true, false}, 1, "(100, 0, 100, 40)", "(34, 4, 66, 36)", "(0, 0, 0, 0)"},
        {{Beside, 0, true, true}, 1, "(84, 0, 100, 40)", "(4, 4, 36, 36)", "(40, 4, 80, 36)"},
        {{Below, 12, true, false}, 1.5, "(100, 0, 100, 40)", "(42, 6, 58, 22)", "(6, 22, 94, 34)"},
        {{Below, 12, false, false}, 1, "(100, 0, 100, 40)", "(0, 0, 0, 0)", "(4, 4, 96, 36)"},
        {{Beside, 0, true, true}, 8, "(0, 0, 100, 40)", "(0, 0, 0, 0)", "(0, 0, 0, 0)"},
    };
    for (const auto& row : rows) {
        const Places places = Arrange({100, 40}, row.contents, row.zoom);
        EXPECT_EQ(text(places.arrow) + text(places.image) + text(places.text), row.arrow + row.image + row.text);
    }
    const KxButtonImages<int> all{1, 2, 3, 4, 5};
    EXPECT_EQ(ImageOf(all, {.enabled = false, .pressed = true}), 5);
    EXPECT_EQ(ImageOf(all, {.pressed = true, .on = true}), 3);
    EXPECT_EQ(ImageOf(all, {.on = true, .hovered = true}), 4);
    EXPECT_EQ(ImageOf({1, 2, 0, 0, 0}, {.pressed = true, .hovered = true}), 2);
    EXPECT_EQ(ImageOf({1, 0, 0, 0, 0}, {.enabled = false}), 1);
}

// ---- The check box -------------------------------------------------------------------------------------------------

struct AskedCheck : Asking<CKxDevUI_CheckBox> {
    using Asking::Asking;
    void OnStateChangeRequest(int state, bool& veto) override { Asked(veto, "State", state); }
};

using CheckBox = ControlTest;

TEST_F(CheckBox, AsksForTheNextState) {
    const DialogKeys keys(parent.Window());
    AskedCheck box(parent.Record());
    box.SetThreeState(true);
    box.Create(parent.Window(), 10, 10, -1, -1, true, true);
    SetFocus(box);
    Told();
    const auto see = [&] {
        const auto shown = SendMessageW(box.GetButtonHandle(), BM_GETCHECK, 0, 0);
        return std::to_string(box.GetState()) + std::to_string(shown) + " " + Told();
    };
    kx::test::Play({{[&] { Click(box.GetButtonHandle(), 5, 5); }, "11 State(1)"},
                    {[] { Key(VK_SPACE); }, "22 State(2)"},
                    {[] { Key(VK_SPACE); }, "00 State(0)"},
                    {[&] { box.SetState(2), box.SetState(3), box.SetState(-1); }, "22 "},
                    {[&] {
                         KX_TellActivity(box, {EKxActivity::Unknown, -1, {}});
                     },
                     "20 "},
                    {[&] { KX_TellActivity(box, KxActivity{}); }, "22 "},
                    {[&] { box.answer = true, Key(VK_SPACE); }, "22 State(0)"},
                    {[&] { box.SetThreeState(false); }, "11 "},
                    {[&] { box.SetState(2), Key(VK_SPACE); }, "11 State(0)"}},
                   see);
}

constexpr int kTaken[] = {20, 21, 23, 24, 25};

// What a dialog knows of its controls, and the order of Tab.
std::string KnownOf(HWND dialog) {
    std::string known;
    for (const int id : kTaken) {
        const HWND control = GetDlgItem(dialog, id);
        const LONG style = GetWindowLongW(control, GWL_STYLE) & (WS_TABSTOP | WS_GROUP | WS_VISIBLE | WS_DISABLED);
        const LRESULT font = SendMessageW(control, WM_GETFONT, 0, 0);
        known += PlaceOf(control) + CallText(" ", TextOf(control), IsDlgButtonChecked(dialog, id), style, font) + "\n";
    }
    HWND stop = GetDlgItem(dialog, 26);
    for (int i = 0; i < 7; ++i)
        known += std::to_string(GetDlgCtrlID(stop = GetNextDlgTabItem(dialog, stop, FALSE))) + " ";
    return known;
}

TEST_F(CheckBox, IsTakenOverWholeFromAForeignDialog) {
    CKxDevUI_Container dialog;
    ASSERT_TRUE(dialog.CreateFromDlg(parent.Window(), 10, 10, L"CHECK_DIALOG", GetModuleHandleW(nullptr), false));
    ShowWindow(dialog, SW_SHOW);
    CheckDlgButton(dialog, 20, BST_CHECKED);
    CheckDlgButton(dialog, 21, BST_INDETERMINATE);
    const std::string known = KnownOf(dialog);
    SetFocus(GetDlgItem(dialog, 21));
    CKxDevUI_CheckBox boxes[5];
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(boxes[i].Create(parent.Window(), GetDlgItem(dialog, kTaken[i])), nullptr) << "not its parent";
        ASSERT_TRUE(boxes[i].Create(dialog, GetDlgItem(dialog, kTaken[i])));
        EXPECT_EQ(GetDlgItem(dialog, kTaken[i]), boxes[i]);
    }
    EXPECT_EQ(KnownOf(dialog), known);
    EXPECT_EQ(GetFocus(), boxes[1].GetButtonHandle());
    CKxDevUI_CheckBox other;
    EXPECT_FALSE(other.Create(dialog, boxes[0]) || other.Create(boxes[0], boxes[0].GetButtonHandle())) << "taken";
    EXPECT_TRUE(other.Create(nullptr, GetDlgItem(dialog, 26)));
    EXPECT_EQ(CallText("", other.GetState(), other.GetTitle().c_str()), "(0, \"Push\")") << "of another class";

    // A handler of the dialog's finds what it found before: the new state, and the last word.
    dialog.Init(true);
    parent.Answer(WM_COMMAND, [&](WPARAM wParam, LPARAM) {
        parent.Record().Call("finds", IsDlgButtonChecked(dialog, LOWORD(wParam)));
        if (LOWORD(wParam) == 21) CheckDlgButton(dialog, 21, BST_CHECKED);
        return 0;
    });
    const DialogKeys keys(dialog);
    Told();
    Play({{[] { Key(VK_SPACE); }, "21:0#21 finds(0)"},
          {[] { Key('L', MOD_ALT); }, "20:0#20 finds(0)"},
          {[&] { CheckDlgButton(dialog, 20, BST_CHECKED), SetDlgItemTextW(dialog, 20, L"On"); }, ""}});
    EXPECT_EQ(CallText("", boxes[0].GetState(), boxes[1].GetState(), boxes[0].GetTitle().c_str()), "(1, 1, \"On\")");
}

TEST_F(CheckBox, LooksMixed) {
    CKxDevUI_CheckBox box;
    box.SetThreeState(true);
    box.Create(parent.Window(), 10, 10, 84, 16, true, true);
    for (const auto scheme :
         {eKxColorScheme_System, eKxColorScheme_Light, eKxColorScheme_Dark, eKxColorScheme_HighContrast}) {
        for (const double zoom : {1.0, 1.5, 2.0}) {
            for (const bool enabled : {true, false}) {
                KX_SetColorScheme(scheme), CKxGUILayoutManager::SetGuiZoom(zoom), box.SetEnabled(enabled);
                const auto look = [&](int state) { return box.SetState(state), Picture::OnScreen(box); };
                const Picture mixed = look(2);
                // Without styles the platform's own, disabled, looks as if it were on.
                EXPECT_TRUE(mixed != look(0) && (!enabled || mixed != look(1))) << scheme << zoom << enabled;
            }
        }
    }
}

}  // namespace
