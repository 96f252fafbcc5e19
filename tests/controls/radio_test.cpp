// The radio group: made of a dialog's controls, worked by mouse and keys, and what its owner hears.
#include <bench/bench.h>
#include <bench/window.h>
#include <kxbaseui/kx_colors.h>
#include <kxdevui/controls/devgui_radio.h>
#include <kxdevui/framework/ui_gdi.h>
#include <kxsystem/kx_log.h>

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace kx::test;

constexpr int kId = 40, kChosen = 0x0401;

// A dialog's controls: an edit, a title and three texts that become a group, an edit.
struct Dialog {
    Dialog() {
        group->SetId(kId);
        group->Create(first, 3, title);
        Pump();
    }
    HWND ButtonOf(int index) const { return GetDlgItem(*group, 85 + index); }
    Expected Chosen(int index) const { return Command(kId, kChosen, ButtonOf(index)); }
    auto Told(const std::vector<Expected>& expected) { return parent.Record().Matches(expected); }

    RecordingParent parent;
    HWND before = AddChild(parent.Window(), L"EDIT", 1, {10, 5, 90, 25}, WS_TABSTOP);
    HWND title = AddChild(parent.Window(), L"STATIC", 2, {22, 45, 90, 61}, 0, L"Binning:");
    HWND first = AddChild(parent.Window(), L"BUTTON", 3, {10, 70, 110, 90}, BS_AUTOCHECKBOX, L"1x1");
    HWND second = AddChild(parent.Window(), L"STATIC", 4, {10, 95, 110, 115}, 0, L"2x2");
    HWND third = AddChild(parent.Window(), L"BUTTON", 5, {30, 120, 150, 140}, BS_AUTORADIOBUTTON, L"4.5 x");
    HWND after = AddChild(parent.Window(), L"EDIT", 6, {10, 150, 90, 170}, WS_TABSTOP);
    std::unique_ptr<CKxDevUI_Radio> group = std::make_unique<CKxDevUI_Radio>();
};

TEST(RadioCreation, TakesTheDialogsControls) {
    Dialog dialog;
    EXPECT_EQ(PlaceOf(*dialog.group), "10 45 140 95");
    for (const HWND gone : {dialog.first, dialog.second, dialog.third})
        EXPECT_FALSE(IsWindow(gone));
    EXPECT_EQ(PlaceOf(dialog.ButtonOf(2)), "20 75 120 20");
    EXPECT_EQ(PlaceOf(dialog.title).substr(0, 6), "12 12 ") << "12 from the left it was, and at the top";
    EXPECT_EQ(dialog.group->GetValuesCount(), 3);
    EXPECT_EQ(dialog.group->GetIndex(L"2x2"), 1);
    EXPECT_EQ(GetWindow(dialog.before, GW_HWNDNEXT), HWND{*dialog.group});
    EXPECT_EQ(GetWindow(*dialog.group, GW_HWNDNEXT), dialog.after);
    EXPECT_TRUE(dialog.Told({}));
}

TEST(RadioCreation, StopsAtTheEndAndRefusesNothing) {
    RecordingParent parent;
    CKxDevUI_Radio group;
    EXPECT_EQ(group.Create(nullptr, 3, nullptr), nullptr);
    EXPECT_EQ(group.Create(parent.Window(), 3, nullptr), nullptr);
    const HWND only = AddChild(parent.Window(), L"STATIC", 1, {0, 0, 50, 20}, 0, L"only");
    EXPECT_EQ(group.Create(only, 0, nullptr), nullptr);
    EXPECT_TRUE(IsWindow(only));
    EXPECT_TRUE(group.Create(only, 9, nullptr));
    EXPECT_EQ(group.GetValuesCount(), 1);
    group.Destroy();
    EXPECT_EQ(group.GetValuesCount(), 0);
    EXPECT_EQ(group.GetIndex(L"only"), -1);
    EXPECT_EQ(group.GetSelectionIndex(), -1);
}

// A title that is a group box stands on the group's face; it does not paint what it frames.
TEST(RadioCreation, PaintsWhatTheTitleFrames) {
    RecordingParent parent;
    const HWND box = AddChild(parent.Window(), L"BUTTON", 1, {10, 10, 130, 90}, BS_GROUPBOX, L"Gain");
    const HWND first = AddChild(parent.Window(), L"BUTTON", 2, {20, 40, 70, 60}, BS_AUTORADIOBUTTON, L"low");
    CKxDevUI_Radio group;
    ASSERT_TRUE(group.Create(first, 1, box));
    for (const EKxColorScheme scheme : {eKxColorScheme_Dark, eKxColorScheme_System}) {
        KX_SetColorScheme(scheme);
        Pump();
        const kx::ui::WindowDC screen(parent.Window());
        const RECT all{0, 0, 200, 200};
        FillRect(screen, &all, GetSysColorBrush(COLOR_HIGHLIGHT));
        group.RefreshWindow();
        const Picture picture = Picture::OnScreen(group);
        picture.Save("radio-group-box-" + std::to_string(scheme));
        EXPECT_EQ(picture.Pixel(100, 60), KX_GetSysColor(COLOR_BTNFACE));
        EXPECT_NE(picture.Pixel(0, 40), picture.Pixel(100, 60)) << "the frame";
    }
}

TEST(RadioCreation, BearsWhatAHostDoesMeanwhile) {
    for (const bool object : {false, true}) {
        Dialog dialog;
        const HWND first = AddChild(dialog.parent.Window(), L"EDIT", 7, {0, 200, 50, 220}, 0, L"a");
        AddChild(dialog.parent.Window(), L"EDIT", 8, {0, 220, 50, 240}, 0, L"b");
        dialog.parent.Answer(WM_PARENTNOTIFY, [&](WPARAM wParam, LPARAM) {
            if (LOWORD(wParam) == WM_DESTROY && dialog.group && GetWindow(*dialog.group, GW_CHILD))
                object ? dialog.group.reset() : dialog.group->Destroy();
            return 0;
        });
        EXPECT_EQ(dialog.group->Create(first, 2, nullptr), nullptr);
    }
    Dialog dialog;
    CKxDevUI_Radio& group = *dialog.group;
    EXPECT_EQ(group.Create(dialog.ButtonOf(1), 2, nullptr), nullptr) << "a button of its own";
    EXPECT_EQ(group.GetValuesCount(), 3);
    const std::string place = PlaceOf(dialog.parent.Window());
    const HWND first = AddChild(dialog.parent.Window(), L"STATIC", 7, {0, 200, 50, 220}, 0, L"a");
    SetWindowPos(group, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_TRUE(group.Create(first, 9, dialog.parent.Window())) << "itself among them, and its parent as the title";
    EXPECT_EQ(group.GetValuesCount(), 1);
    EXPECT_EQ(PlaceOf(dialog.parent.Window()), place);
}

TEST(RadioValues, AnswerByIndexAndText) {
    Dialog dialog;
    CKxDevUI_Radio& group = *dialog.group;
    wchar_t text[8] = L"-";
    EXPECT_EQ(group.GetSelection(text, 8), -1);
    EXPECT_EQ(group.GetSelection(), 0.0);
    EXPECT_FALSE(group.SetSelection(L"3x3"));
    EXPECT_FALSE(group.SetSelection(L"2X2"));
    EXPECT_FALSE(group.SetSelection(static_cast<const wchar_t*>(nullptr)));
    for (const int wrong : {3, -1, 1 << 30})
        group.SetSelection(wrong);
    EXPECT_TRUE(dialog.Told({}));

    EXPECT_TRUE(group.SetSelection(L"4.5 x"));
    EXPECT_EQ(group.GetSelectionIndex(), 2);
    EXPECT_EQ(group.GetSelection(), 4.5);
    group.SetSelection(2);
    EXPECT_TRUE(dialog.Told({dialog.Chosen(2), dialog.Chosen(2)}));
    const std::tuple<int, int, const wchar_t*> cases[] = {{8, 5, L"4.5 x"}, {6, 5, L"4.5 x"}, {5, 4, L"4.5 "},
                                                          {4, -1, L"?"},    {0, -1, L"?"},    {-5, -1, L"?"}};
    for (const auto& [size, copied, expected] : cases) {
        lstrcpyW(text, L"?");
        EXPECT_EQ(group.GetSelection(text, size), copied) << size;
        EXPECT_STREQ(text, expected) << size;
    }
    EXPECT_EQ(group.GetSelection(nullptr, 8), -1);

    group.SetUserData(1, std::int64_t{-1} << 40);
    group.SetUserData(9, 1);
    EXPECT_EQ(group.GetUserData(1), std::int64_t{-1} << 40);
    EXPECT_EQ(group.GetUserData(9), 0);
    group.SetValueName(1, L"8x8");
    group.SetValueName(-1, nullptr);
    EXPECT_EQ(group.GetIndex(L"8x8"), 1);
    const wchar_t* names[] = {L"a", L"b"};
    const double values[] = {1, 2};
    group.InsertValues(names, 2, 0);
    group.InsertValues(values, 2, -1);
    EXPECT_EQ(group.InsertValue(1.0, 0), -1);
    EXPECT_EQ(group.GetValuesCount(), 3);
    group.SetTitle(L"Pixels");
    wchar_t title[16] = L"";
    GetWindowTextW(dialog.title, title, 16);
    EXPECT_STREQ(title, L"Pixels");
    EXPECT_TRUE(dialog.Told({}));
}

TEST(RadioValues, SayThatOneHasToBeChosen) {
    Dialog dialog;
    ModalAnswer answer(IDOK);
    EXPECT_FALSE(dialog.group->CheckRestriction(true));
    ASSERT_EQ(answer.Count(), 1u);
    EXPECT_EQ(answer.Dialogs()[0].TextOf(0xFFFF), L"Binning: You have to choose value.");
    EXPECT_EQ(GetFocus(), dialog.ButtonOf(0));
    EXPECT_FALSE(dialog.group->CheckRestriction(false));
    dialog.group->SetSelection(1);
    EXPECT_TRUE(dialog.group->CheckRestriction(true));
    EXPECT_EQ(answer.Count(), 1u);
}

TEST(RadioInput, FollowsMouseAndKeys) {
    Dialog dialog;
    const DialogKeys keys(dialog.parent.Window());
    SetFocus(dialog.before);
    dialog.parent.Record().Clear();
    // clang-format off
    const struct { WORD key; UINT modifiers; HWND focus; int selected; } steps[] = {
        {VK_TAB, 0, dialog.ButtonOf(0), -1},        {VK_SPACE, 0, dialog.ButtonOf(0), 0},
        {VK_UP, 0, dialog.ButtonOf(2), 2},          {VK_DOWN, 0, dialog.ButtonOf(0), 0},
        {VK_DOWN, 0, dialog.ButtonOf(1), 1},        {VK_TAB, 0, dialog.after, 1},
        {VK_TAB, MOD_SHIFT, dialog.ButtonOf(1), 1}, {VK_TAB, MOD_SHIFT, dialog.before, 1},
    };
    // clang-format on
    for (const auto& step : steps) {
        Key(step.key, step.modifiers);
        EXPECT_EQ(GetFocus(), step.focus) << "step " << &step - steps;
        EXPECT_EQ(dialog.group->GetSelectionIndex(), step.selected) << "step " << &step - steps;
    }
    const Expected before = Command(1).Optional(), after = Command(6).Optional();
    EXPECT_TRUE(dialog.Told(
        {before, dialog.Chosen(0), dialog.Chosen(2), dialog.Chosen(0), dialog.Chosen(1), after, after, before}));
    Click(dialog.ButtonOf(0), 5, 8);
    EXPECT_TRUE(dialog.Told({before, dialog.Chosen(0)}));

    dialog.group->SetValueEnabled(1, false);
    dialog.parent.Record().Clear();
    Click(*dialog.group, 5, 60);
    EXPECT_EQ(dialog.group->GetSelectionIndex(), 0);
    SetFocus(dialog.ButtonOf(0));
    Key(VK_RIGHT);
    EXPECT_EQ(dialog.group->GetSelectionIndex(), 2);
    dialog.group->SetEnabled(false);
    dialog.group->SetEnabled(true);
    EXPECT_TRUE(IsWindowEnabled(dialog.ButtonOf(1)));
}

// A container takes the group for a plain window and enables that; the buttons show it, and come back as they were.
TEST(RadioInput, IsEnabledWithItsWindow) {
    Dialog dialog;
    const auto enabled = [&] {
        std::string buttons;
        for (int i = 0; i < 3; ++i)
            buttons += IsWindowEnabled(dialog.ButtonOf(i)) ? '1' : '0';
        return buttons;
    };
    CKxDevUI_Radio& group = *dialog.group;
    const std::tuple<const char*, std::function<void()>, const char*> steps[] = {
        {"one value off", [&] { group.SetValueEnabled(0, false); }, "011"},
        {"the window off", [&] { EnableWindow(group, FALSE); }, "000"},
        {"values meanwhile", [&] { group.SetValueEnabled(0, true), group.SetValueEnabled(1, false); }, "000"},
        {"the window on", [&] { EnableWindow(group, TRUE); }, "101"},
        {"the group off", [&] { group.SetEnabled(false); }, "000"},
        {"the window off and on", [&] { EnableWindow(group, FALSE), EnableWindow(group, TRUE); }, "000"},
        {"the group on", [&] { group.SetEnabled(true); }, "111"},
    };
    for (const auto& [name, step, expected] : steps) {
        step();
        EXPECT_EQ(enabled(), expected) << name;
    }
    group.SetValueEnabled(0, false);
    SetFocus(group);
    EXPECT_EQ(GetFocus(), dialog.ButtonOf(1)) << "the first that can be chosen";
    // A release that comes late.
    SendMessageW(dialog.ButtonOf(0), WM_LBUTTONDOWN, 0, 0);
    SendMessageW(dialog.ButtonOf(0), WM_LBUTTONUP, 0, 0);
    EXPECT_EQ(group.GetSelectionIndex(), -1);
    EXPECT_EQ(GetCapture(), nullptr);

    // Made while it is disabled, and enabled later.
    group.SetEnabled(false);
    ASSERT_TRUE(
        group.Create(AddChild(dialog.parent.Window(), L"STATIC", 7, {10, 200, 60, 220}, 0, L"only"), 1, nullptr));
    EXPECT_FALSE(IsWindowEnabled(dialog.ButtonOf(0)));
    group.SetEnabled(true);
    dialog.parent.Record().Clear();
    Click(dialog.ButtonOf(0), 5, 8);
    EXPECT_TRUE(dialog.Told({dialog.Chosen(0)}));
}

TEST(RadioLife, EndsInTheNotification) {
    for (const bool object : {false, true}) {
        Dialog dialog;
        dialog.parent.Answer(WM_COMMAND, [&](WPARAM wParam, LPARAM) {
            if (HIWORD(wParam) == kChosen) object ? dialog.group.reset() : dialog.group->Destroy();
            return 0;
        });
        Click(dialog.ButtonOf(1), 5, 8);
        EXPECT_EQ(GetWindow(dialog.before, GW_HWNDNEXT), dialog.after);
    }
}

// The one button more that the commands let through.
TEST(RadioLife, KeepsItsOldHabits) {
    RecordingParent parent;
    struct : CKxDevUI_Radio {
        using CKxDevUI_Radio::OnCommand;
    } group;
    group.SetId(kId);
    group.Create(parent.Window(), 0, 0, 50, 50, true, true);
    for (const int id : {84, 85, 86})
        EXPECT_EQ(group.OnCommand(MAKEWPARAM(id, BN_CLICKED), 0), 0);
    EXPECT_TRUE(parent.Record().Matches({Command(kId, kChosen, nullptr)}));
}

}  // namespace
