// The radio group: made of a dialog's controls, worked by mouse and keys, and what its owner hears.
#include "control_test.h"

#include <kxdevui/controls/devgui_radio.h>
#include <kxdevui/framework/ui_gdi.h>

namespace {

using namespace kx::test;

// A dialog's controls: an edit, a title and three texts that become a group, an edit.
struct Radio : ControlTest {
    Radio() {
        group.SetId(40);
        group.Create(first, 3, title);
        Pump();
    }
    HWND ButtonOf(int index) { return GetDlgItem(group, 85 + index); }
    HWND AddText() { return AddChild(parent.Window(), L"STATIC", 7, {10, 200, 60, 220}, 0, L"only"); }
    // Which is chosen, which can be, where the focus is, what was told.
    std::string See() override {
        std::string seen = std::to_string(group.GetSelectionIndex()) + " of ";
        for (int i = 0; i < group.GetValuesCount(); ++i)
            seen += IsWindowEnabled(ButtonOf(i)) ? '1' : '0';
        return seen + ", at " + std::to_string(GetFocus() ? GetDlgCtrlID(GetFocus()) : -1) + ": " + Told();
    }

    HWND before = AddChild(parent.Window(), L"EDIT", 1, {10, 5, 90, 25}, WS_TABSTOP);
    HWND title = AddChild(parent.Window(), L"STATIC", 2, {22, 45, 90, 61}, 0, L"Binning:");
    HWND first = AddChild(parent.Window(), L"BUTTON", 3, {10, 70, 110, 90}, BS_AUTOCHECKBOX, L"1x1");
    HWND second = AddChild(parent.Window(), L"STATIC", 4, {10, 95, 110, 115}, 0, L"2x2");
    HWND third = AddChild(parent.Window(), L"BUTTON", 5, {30, 120, 150, 140}, BS_AUTORADIOBUTTON, L"4.5 x");
    HWND after = AddChild(parent.Window(), L"EDIT", 6, {10, 150, 90, 170}, WS_TABSTOP);
    CKxDevUI_Radio group;
};

TEST_F(Radio, TakesTheDialogsControls) {
    EXPECT_FALSE(IsWindow(first) || IsWindow(second) || IsWindow(third));
    // The title is 12 from the left as it was, and so from the top.
    EXPECT_EQ(PlaceOf(group) + ", " + PlaceOf(title) + ", " + PlaceOf(ButtonOf(2)),
              "10 45 140 95, 12 12 68 16, 20 75 120 20");
    EXPECT_TRUE(GetWindow(before, GW_HWNDNEXT) == group && GetWindow(group, GW_HWNDNEXT) == after);
    group.SetTitle(L"Pixels");
    EXPECT_EQ(TextOf(title), L"Pixels");
    for (const HWND wrong : {HWND{nullptr}, parent.Window(), ButtonOf(1)})
        EXPECT_EQ(group.Create(wrong, 3, nullptr), nullptr);
    EXPECT_EQ(group.GetValuesCount(), 3) << "the group of before stays";
    const std::string place = PlaceOf(parent.Window());
    const HWND only = AddText();
    SetWindowPos(group, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_TRUE(group.Create(only, 9, parent.Window())) << "itself among them, and its parent as the title";
    EXPECT_EQ(CallText("", group.GetValuesCount(), PlaceOf(parent.Window())), CallText("", 1, place));
}

// A title that is a group box stands on the group's face; it does not paint what it frames.
TEST_F(Radio, PaintsWhatTheTitleFrames) {
    const HWND box = AddChild(parent.Window(), L"BUTTON", 1, {10, 200, 130, 280}, BS_GROUPBOX, L"Gain");
    const HWND low = AddChild(parent.Window(), L"BUTTON", 2, {20, 230, 70, 250}, BS_AUTORADIOBUTTON, L"low");
    ASSERT_TRUE(group.Create(low, 1, box));
    KX_SetColorScheme(eKxColorScheme_Dark);
    Pump();
    const RECT all{0, 0, 200, 300};
    FillRect(kx::ui::WindowDC(parent.Window()), &all, GetSysColorBrush(COLOR_HIGHLIGHT));
    group.RefreshWindow();
    const Picture picture = Picture::OnScreen(group);
    EXPECT_EQ(picture.Pixel(100, 60), KX_GetSysColor(COLOR_BTNFACE));
    EXPECT_NE(picture.Pixel(0, 40), picture.Pixel(100, 60)) << "the frame";
}

TEST_F(Radio, AnswersByIndexAndText) {
    wchar_t text[8] = L"-";
    EXPECT_EQ(group.GetSelection(text, 8), -1);
    EXPECT_EQ(group.GetSelection(), 0.0);
    SetFocus(parent.Window());
    Told();
    const auto select = [this](const wchar_t* name, bool found) { EXPECT_EQ(group.SetSelection(name), found); };
    Play({{[&] { select(L"3x3", false), select(L"2X2", false), select(nullptr, false); }, "-1 of 111, at 0: "},
          {[&] { group.SetSelection(3), group.SetSelection(-1), group.SetSelection(1 << 30); }, "-1 of 111, at 0: "},
          {[&] { select(L"4.5 x", true); }, "2 of 111, at 87: 40:1025#87"},
          {[&] { group.SetSelection(2); }, "2 of 111, at 87: 40:1025#87"},
          {[&] { group.SetValueEnabled(1, false), group.SetSelection(1); }, "1 of 101, at 87: 40:1025#86"},
          {[&] { group.SetSelection(2); }, "2 of 101, at 87: 40:1025#87"}});
    EXPECT_EQ(group.GetSelection(), 4.5);
    for (const auto& [size, copied] : {std::pair{6, 5}, {5, 4}, {4, -1}, {-5, -1}})
        EXPECT_EQ(group.GetSelection(text, size), copied) << size;
    EXPECT_STREQ(text, L"4.5 ");
    group.SetUserData(1, std::int64_t{-1} << 40);
    group.SetUserData(9, 1);
    EXPECT_EQ(group.GetUserData(1), std::int64_t{-1} << 40);
    group.SetValueName(1, L"8x8");
    EXPECT_EQ(group.GetIndex(L"8x8"), 1);
    EXPECT_EQ(group.InsertValue(1.0, 0), -1);
    // Somebody types in another window.
    const RecordingParent other;
    SetFocus(AddChild(other.Window(), L"EDIT", 9, {0, 0, 50, 20}));
    Play({{[&] { group.SetSelection(0); }, "0 of 101, at 9: 40:1025#85"}});
}

TEST_F(Radio, SaysThatOneHasToBeChosen) {
    std::string said;
    const ModalAnswer answer([&](HWND box) {
        const HWND text = FindWindowExW(box, FindWindowExW(box, nullptr, L"STATIC", nullptr), L"STATIC", nullptr);
        said += Narrow(TextOf(text));
        PressButton(box, IDOK);
    });
    const auto check = [&](bool show, bool chosen) { EXPECT_EQ(group.CheckRestriction(show), chosen); };
    Told();
    // One that is selected and cannot be used gets no focus.
    Play({{[&] { check(true, false); }, "-1 of 111, at 85: "},
          {[&] { check(false, false), group.SetSelection(1), check(true, true); }, "1 of 111, at 86: 40:1025#86"},
          {[&] { group.SetValueEnabled(1, false), group.SetFocus(); }, "1 of 101, at 85: "}});
    EXPECT_EQ(said, "Binning: You have to choose value.");
}

TEST_F(Radio, FollowsMouseAndKeys) {
    const DialogKeys keys(parent.Window());
    SetFocus(before);
    Told();
    Play({{[] { Key(VK_TAB); }, "-1 of 111, at 85: 1:512#1"},
          {[] { Key(VK_SPACE); }, "0 of 111, at 85: 40:1025#85"},
          {[] { Key(VK_UP); }, "2 of 111, at 87: 40:1025#87"},
          {[] { Key(VK_DOWN), Key(VK_DOWN); }, "1 of 111, at 86: 40:1025#85 40:1025#86"},
          {[] { Key(VK_TAB); }, "1 of 111, at 6: 6:256#6"},
          {[] { Key(VK_TAB, MOD_SHIFT); }, "1 of 111, at 86: 6:512#6"},
          {[&] { Click(ButtonOf(0), 5, 8); }, "0 of 111, at 85: 40:1025#85"},
          {[&] { group.SetValueEnabled(1, false), Click(group, 5, 60); }, "0 of 101, at 85: "},
          {[] { Key(VK_RIGHT); }, "2 of 101, at 87: 40:1025#87"}});
}

// A container takes the group for a plain window and enables that; the buttons show it, and come back as they were.
TEST_F(Radio, IsEnabledWithItsWindow) {
    SetFocus(parent.Window());
    Told();
    const auto enable = [this](bool on) { EnableWindow(group, on); };
    Play({{[&] { group.SetValueEnabled(0, false); }, "-1 of 011, at 0: "},
          {[&] { enable(false); }, "-1 of 000, at 0: "},
          {[&] { group.SetValueEnabled(0, true), group.SetValueEnabled(1, false); }, "-1 of 000, at 0: "},
          {[&] { enable(true); }, "-1 of 101, at 0: "},
          {[&] { group.SetEnabled(false), enable(false), enable(true); }, "-1 of 000, at 0: "},
          {[&] { group.SetEnabled(true); }, "-1 of 111, at 0: "},
          // The first that can be chosen gets the focus.
          {[&] { group.SetValueEnabled(0, false), SetFocus(group); }, "-1 of 011, at 86: "},
          // Made while it is disabled, and enabled later.
          {[&] { SetFocus(parent.Window()), group.SetEnabled(false); }, "-1 of 000, at 0: "},
          {[&] { group.Create(AddText(), 1, nullptr); }, "-1 of 0, at 0: "},
          {[&] { group.SetEnabled(true), Click(ButtonOf(0), 5, 8); }, "0 of 1, at 85: 40:1025#85"}});
}

// The one button more that the commands let through.
TEST_F(Radio, KeepsItsOldHabits) {
    for (const int id : {84, 85, 87, 88, 89})
        EXPECT_EQ(SendMessageW(group, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0), 0);
    EXPECT_EQ(Told(), "40:1025#85 40:1025#87 40:1025=0");
    SendMessageW(group, WM_COMMAND, MAKEWPARAM(85, BN_SETFOCUS), 0);
    EXPECT_EQ(Told(), "");
}

}  // namespace
